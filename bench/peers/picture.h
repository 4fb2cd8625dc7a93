// The picture that every participant is given, and how pixels are read back.
#ifndef TAVRIN_BENCH_PEERS_PICTURE_H
#define TAVRIN_BENCH_PEERS_PICTURE_H

#include "peers/work.h"
#include "shared/frame.h"

#include <tavrin/tavrin.h>

#include <cstddef>

namespace Bench
{

// How the channels of a frame lie: next to each other in the order of the format's name, or each in a plane of its own, in the same
// order and without a gap.
enum class Arrangement
{
    Interleaved,
    Planes
};

Tavrin::BitDepth depthOf(Tavrin::PixelFormat format);
bool isPacked(Tavrin::PixelFormat format);
// Bytes of one channel of a format that is not packed.
std::size_t channelBytes(Tavrin::PixelFormat format);

// Smooth ramps with some noise, values from 0 to 1, alpha 1. The frame is drawn anew when the format is another than that of the
// last call with the same arrangement.
unsigned char* picture(Tavrin::PixelFormat format, Arrangement arrangement);

// Full signal is 1, and so is alpha where there is none.
struct Pixel
{
    Rgb color;
    double alpha = 1.0;
};

Pixel pixelAt(unsigned char const* frame, Tavrin::PixelFormat format, Arrangement arrangement, std::size_t pixel);

} // namespace Bench

#endif
