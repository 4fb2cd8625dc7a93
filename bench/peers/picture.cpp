// The picture that every participant is given, and how pixels are read back.
#include "peers/picture.h"

#include <Imath/half.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>

namespace Bench
{

namespace
{

// From -1 to 1, without a pattern. A multiplication by an odd number spreads the bits upwards, the shifts bring them down again.
double noise(std::uint32_t seed)
{
    seed = (seed ^ seed >> 16) * 0x7feb352dU;
    seed = (seed ^ seed >> 15) * 0x846ca68bU;
    return static_cast<double>(seed ^ seed >> 16) / 2147483648.0 - 1.0;
}

// Red grows along the rows, green down the columns, and blue falls along the diagonal; about two codes of 8 bits of noise, as a
// camera has it.
double pictureValue(std::size_t pixel, unsigned int channel)
{
    constexpr double kNoise = 2.0 / 255.0;
    if (channel == 3)
        return 1.0;
    double const across = static_cast<double>(pixel % kWidth) / (kWidth - 1);
    double const down = static_cast<double>(pixel / kWidth) / (kHeight - 1);
    double const ramps[] = {across, down, 1.0 - (across + down) / 2.0};
    return std::clamp(ramps[channel] + kNoise * noise(static_cast<std::uint32_t>(pixel * 3 + channel)), 0.0, 1.0);
}

template <class T>
void put(T value, unsigned char* to)
{
    std::memcpy(to, &value, sizeof value);
}

template <class T>
T get(unsigned char const* from)
{
    T value;
    std::memcpy(&value, from, sizeof value);
    return value;
}

std::uint32_t codeOf(double value, Tavrin::BitDepth depth)
{
    return static_cast<std::uint32_t>(std::lround(value * static_cast<double>(Tavrin::getBitDepthMaxValue(depth))));
}

void putChannel(double value, Tavrin::BitDepth depth, unsigned char* to)
{
    if (depth == Tavrin::BIT_DEPTH_32f)
        put(static_cast<float>(value), to);
    else if (depth == Tavrin::BIT_DEPTH_16f)
        put(Imath::half(static_cast<float>(value)), to);
    else if (depth == Tavrin::BIT_DEPTH_8i)
        put(static_cast<std::uint8_t>(codeOf(value, depth)), to);
    else
        put(static_cast<std::uint16_t>(codeOf(value, depth)), to);
}

double channelAt(unsigned char const* from, Tavrin::BitDepth depth)
{
    double const full = static_cast<double>(Tavrin::getBitDepthMaxValue(depth));
    if (depth == Tavrin::BIT_DEPTH_32f)
        return static_cast<double>(get<float>(from));
    if (depth == Tavrin::BIT_DEPTH_16f)
        return static_cast<double>(static_cast<float>(get<Imath::half>(from)));
    if (depth == Tavrin::BIT_DEPTH_8i)
        return *from / full;
    return get<std::uint16_t>(from) / full;
}

// A packed word has its most significant byte first: ten bits each of red, green and blue, and two of alpha.
constexpr unsigned int kPackedShifts[] = {22, 12, 2};

void putPacked(std::size_t pixel, unsigned char* to)
{
    std::uint32_t word = 3;
    for (unsigned int c = 0; c < 3; ++c)
        word |= codeOf(pictureValue(pixel, c), Tavrin::BIT_DEPTH_10i) << kPackedShifts[c];
    for (unsigned int byte = 0; byte < 4; ++byte)
        to[byte] = static_cast<unsigned char>(word >> (24 - 8 * byte));
}

Pixel packedAt(unsigned char const* from)
{
    std::uint32_t const word = from[0] << 24U | from[1] << 16U | from[2] << 8U | from[3];
    Pixel pixel = {{}, (word & 3U) / 3.0};
    for (unsigned int c = 0; c < 3; ++c)
        pixel.color[c] = (word >> kPackedShifts[c] & 1023U) / 1023.0;
    return pixel;
}

std::size_t channelOffset(Tavrin::PixelFormat format, Arrangement arrangement, std::size_t pixel, unsigned int channel)
{
    if (arrangement == Arrangement::Planes)
        return (channel * kPixels + pixel) * channelBytes(format);
    return pixel * Tavrin::getPixelSizeInByte(format) + channel * channelBytes(format);
}

void drawPixel(Tavrin::PixelFormat format, Arrangement arrangement, std::size_t pixel, unsigned char* frame)
{
    if (isPacked(format))
    {
        putPacked(pixel, frame + pixel * 4);
        return;
    }
    for (unsigned int c = 0; c < Tavrin::getNumChannels(format); ++c)
        putChannel(pictureValue(pixel, c), depthOf(format), frame + channelOffset(format, arrangement, pixel, c));
}

struct Drawn
{
    unsigned char* frame;
    Tavrin::PixelFormat format = Tavrin::PF_UNKNOWN;
};

} // namespace

Tavrin::BitDepth depthOf(Tavrin::PixelFormat format)
{
    return static_cast<Tavrin::BitDepth>(format & 0xff000U);
}

bool isPacked(Tavrin::PixelFormat format)
{
    return (format & 0x100U) != 0;
}

std::size_t channelBytes(Tavrin::PixelFormat format)
{
    return Tavrin::getPixelSizeInByte(format) / Tavrin::getNumChannels(format);
}

unsigned char* picture(Tavrin::PixelFormat format, Arrangement arrangement)
{
    static Drawn interleaved = {sourceFrame()};
    static Drawn planes = {touchedFrame()};
    Drawn& drawn = arrangement == Arrangement::Interleaved ? interleaved : planes;
    for (std::size_t pixel = 0; drawn.format != format && pixel < kPixels; ++pixel)
        drawPixel(format, arrangement, pixel, drawn.frame);
    drawn.format = format;
    return drawn.frame;
}

Pixel pixelAt(unsigned char const* frame, Tavrin::PixelFormat format, Arrangement arrangement, std::size_t pixel)
{
    if (isPacked(format))
        return packedAt(frame + pixel * 4);
    auto const channel = [&](unsigned int c)
    { return channelAt(frame + channelOffset(format, arrangement, pixel, c), depthOf(format)); };
    Rgb const color = {channel(0), channel(1), channel(2)};
    return Tavrin::getNumChannels(format) == 4 ? Pixel{color, channel(3)} : Pixel{color};
}

} // namespace Bench
