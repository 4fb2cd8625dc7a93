// Frames of one size in memory, for everything that is measured on pixels.
#ifndef TAVRIN_BENCH_SHARED_FRAME_H
#define TAVRIN_BENCH_SHARED_FRAME_H

#include <tavrin/tavrin.h>

#include <cstddef>
#include <string>

namespace Bench
{

constexpr unsigned int kWidth = 3840;
constexpr unsigned int kHeight = 2160;
constexpr std::size_t kPixels = std::size_t{kWidth} * kHeight;

// A new buffer that holds a frame of any format, page-aligned and touched; it lives to the end of the program.
unsigned char* touchedFrame();

// Two such buffers that all share.
unsigned char* sourceFrame();
unsigned char* destinationFrame();

// Fills the source frame with codes over the whole range of the format, or floats from 0 to 1.
void fillSource(Tavrin::PixelFormat format);

// "RGBA32f", and "RGBA32f to RGBA8i" where they differ.
std::string formatName(Tavrin::PixelFormat format);
std::string formatNames(Tavrin::PixelFormat in, Tavrin::PixelFormat out);

} // namespace Bench

#endif
