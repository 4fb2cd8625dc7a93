// Frames of one size in memory.
#include "shared/frame.h"

#include <cstdint>
#include <cstdlib>
#include <cstring>

namespace Bench
{

namespace
{

// The widest pixel: four floats.
constexpr std::size_t kFrameBytes = kPixels * 16;

// 0 to 1 in steps that do not repeat with the rows.
float rampValue(std::size_t i)
{
    return static_cast<float>(i % 1021) / 1020.0F;
}

// The half pattern of a value from 0 to 1, truncated; good enough to fill a frame.
std::uint16_t halfBits(float value)
{
    std::uint32_t bits;
    std::memcpy(&bits, &value, sizeof bits);
    return value < 6.2e-5F ? 0 : static_cast<std::uint16_t>((bits - 0x38000000U) >> 13);
}

} // namespace

unsigned char* touchedFrame()
{
    unsigned char* const frame = static_cast<unsigned char*>(std::aligned_alloc(4096, kFrameBytes));
    if (frame == nullptr)
        std::abort();
    std::memset(frame, 1, kFrameBytes);
    return frame;
}

unsigned char* sourceFrame()
{
    static unsigned char* const frame = touchedFrame();
    return frame;
}

unsigned char* destinationFrame()
{
    static unsigned char* const frame = touchedFrame();
    return frame;
}

void fillSource(Tavrin::PixelFormat format)
{
    std::size_t const bytes = kPixels * Tavrin::getPixelSizeInByte(format);
    unsigned int const depth = format & 0xff000U;
    for (std::size_t i = 0; depth == Tavrin::BIT_DEPTH_32f && i < bytes / 4; ++i)
        reinterpret_cast<float*>(sourceFrame())[i] = rampValue(i);
    for (std::size_t i = 0; depth == Tavrin::BIT_DEPTH_16f && i < bytes / 2; ++i)
        reinterpret_cast<std::uint16_t*>(sourceFrame())[i] = halfBits(rampValue(i));
    for (std::size_t i = 0; depth < Tavrin::BIT_DEPTH_16f && i < bytes; ++i)
        sourceFrame()[i] = static_cast<unsigned char>(i * 7 + (i >> 10));
}

std::string formatName(Tavrin::PixelFormat format)
{
    std::string name = std::string(Tavrin::pfToStr(format)).substr(3);
    name.erase(name.find('_'), 1);
    return name;
}

std::string formatNames(Tavrin::PixelFormat in, Tavrin::PixelFormat out)
{
    return formatName(in) + (in == out ? "" : " to " + formatName(out));
}

} // namespace Bench
