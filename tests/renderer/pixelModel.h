// A plain model of pixels in memory, in double precision, for tests: written from the layout of the formats alone and sharing no
// code with the engine.
#ifndef TAVRIN_TESTS_RENDERER_PIXEL_MODEL_H
#define TAVRIN_TESTS_RENDERER_PIXEL_MODEL_H

#include <tavrin/vocabulary.h>

#include <Imath/half.h>

#include <array>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>
#include <random>
#include <string>
#include <vector>

namespace PixelModel
{

using Tavrin::PixelFormat;

// Red, green, blue, alpha as code values.
using Pixel = std::array<double, 4>;

inline std::vector<PixelFormat> allFormats()
{
    std::vector<PixelFormat> formats;
    for (unsigned int layout : {0x17U, 0x1fU, 0x27U, 0x2fU, 0x4fU})
    {
        for (unsigned int depth : {0x1000U, 0x2000U, 0x4000U, 0x8000U, 0x10000U, 0x20000U})
        {
            formats.push_back(static_cast<PixelFormat>(layout | depth));
            if (depth == 0x2000U && (layout == 0x17U || layout == 0x1fU))
                formats.push_back(static_cast<PixelFormat>(layout | depth | 0x100U));
        }
    }
    return formats;
}

inline unsigned int depthBits(PixelFormat format)
{
    return static_cast<unsigned int>(format) & 0xff000U;
}
inline bool isPacked(PixelFormat format)
{
    return (static_cast<unsigned int>(format) & 0x100U) != 0;
}
inline bool isFloat(PixelFormat format)
{
    return depthBits(format) >= 0x10000U;
}

inline double maximum(PixelFormat format)
{
    switch (depthBits(format))
    {
    case 0x1000:
        return 255;
    case 0x2000:
        return 1023;
    case 0x4000:
        return 4095;
    case 0x8000:
        return 65535;
    default:
        return 1;
    }
}

// The colours in memory order.
inline std::string channels(PixelFormat format)
{
    switch (static_cast<unsigned int>(format) & 0xffU)
    {
    case 0x17:
        return "RGB";
    case 0x1f:
        return "RGBA";
    case 0x27:
        return "BGR";
    case 0x2f:
        return "BGRA";
    default:
        return "ABGR";
    }
}

inline bool hasAlpha(PixelFormat format)
{
    return channels(format).size() == 4;
}

inline std::size_t elementBytes(PixelFormat format)
{
    return depthBits(format) == 0x1000U ? 1 : depthBits(format) == 0x20000U ? 4 : 2;
}

inline std::size_t pixelBytes(PixelFormat format)
{
    return isPacked(format) ? 4 : channels(format).size() * elementBytes(format);
}

inline std::size_t indexOf(char channel)
{
    return std::string("RGBA").find(channel);
}

// A half pattern by its definition: sign, 5 bits of exponent, 10 of mantissa.
inline double halfValue(unsigned int bits)
{
    int const exponent = static_cast<int>((bits >> 10) & 31U);
    double const mantissa = bits & 0x3ffU;
    double const sign = (bits & 0x8000U) != 0 ? -1.0 : 1.0;
    if (exponent == 31)
        return mantissa == 0 ? sign * std::numeric_limits<double>::infinity() : std::numeric_limits<double>::quiet_NaN();
    return sign * (exponent == 0 ? std::ldexp(mantissa, -24) : std::ldexp(mantissa + 1024, exponent - 25));
}

template <class T>
T readAs(unsigned char const* p)
{
    T value;
    std::memcpy(&value, p, sizeof value);
    return value;
}

inline double readElement(PixelFormat format, unsigned char const* p)
{
    switch (depthBits(format))
    {
    case 0x1000:
        return *p;
    case 0x10000:
        return halfValue(readAs<std::uint16_t>(p));
    case 0x20000:
        return readAs<float>(p);
    default:
        return readAs<std::uint16_t>(p);
    }
}

inline std::uint32_t readPackedWord(unsigned char const* p)
{
    return std::uint32_t{p[0]} << 24 | std::uint32_t{p[1]} << 16 | std::uint32_t{p[2]} << 8 | p[3];
}

// A format without alpha gives the depth's maximum.
inline Pixel read(PixelFormat format, unsigned char const* p)
{
    Pixel pixel = {0, 0, 0, maximum(format)};
    if (isPacked(format))
    {
        std::uint32_t const word = readPackedWord(p);
        pixel = {double(word >> 22), double((word >> 12) & 1023U), double((word >> 2) & 1023U), maximum(format)};
        if (hasAlpha(format))
            pixel[3] = word & 3U;
        return pixel;
    }
    std::string const order = channels(format);
    for (std::size_t i = 0; i < order.size(); ++i)
        pixel[indexOf(order[i])] = readElement(format, p + i * elementBytes(format));
    return pixel;
}

// What an integer depth stores for a value: half a code is added in single precision, then it is clamped and truncated; a NaN is 0.
inline double storedCode(double value, double maximum)
{
    double const rounded = static_cast<float>(value) + 0.5F;
    if (rounded > maximum)
        return maximum;
    return rounded >= 0 ? std::floor(rounded) : 0.0;
}

// What a read of the stored value gives.
inline double storedValue(PixelFormat format, std::size_t channel, double value)
{
    if (isPacked(format) && channel == 3)
        return std::fmod(storedCode(value, 1023), 4);
    if (!isFloat(format))
        return storedCode(value, maximum(format));
    if (depthBits(format) == 0x10000U)
        return halfValue(half(static_cast<float>(value)).bits());
    return static_cast<float>(value);
}

// A picture of any bytes at all; halfs and floats take all patterns, so also NaN, infinities and denormals.
inline std::vector<unsigned char> randomBytes(std::size_t count, unsigned int seed)
{
    std::mt19937 generator(seed);
    std::vector<unsigned char> bytes(count);
    for (unsigned char& byte : bytes)
        byte = static_cast<unsigned char>(generator());
    return bytes;
}

// Pixels whose codes are in range, and whose floats are finite and between -1 and 2.
inline std::vector<unsigned char> sensiblePixels(PixelFormat format, std::size_t count, unsigned int seed)
{
    std::vector<unsigned char> bytes = randomBytes(count * pixelBytes(format), seed);
    std::mt19937 generator(seed + 1);
    std::uniform_real_distribution<float> floats(-1.0F, 2.0F);
    std::size_t const elements = isPacked(format) ? 0 : bytes.size() / elementBytes(format);
    for (std::size_t i = 0; i < elements; ++i)
    {
        unsigned char* const p = bytes.data() + i * elementBytes(format);
        float const value = floats(generator);
        if (depthBits(format) == 0x20000U)
        {
            std::memcpy(p, &value, 4);
        }
        else if (depthBits(format) == 0x10000U)
        {
            std::uint16_t const bits = half(value).bits();
            std::memcpy(p, &bits, 2);
        }
        else if (elementBytes(format) == 2)
        {
            std::uint16_t const code =
                static_cast<std::uint16_t>(readAs<std::uint16_t>(p) & static_cast<unsigned int>(maximum(format)));
            std::memcpy(p, &code, 2);
        }
    }
    return bytes;
}

} // namespace PixelModel

#endif
