// Each pixel is put together in one register of the processor and goes to memory as a whole. Vectors have no faster way to as many
// addresses, and would have to be filled and emptied besides.
#include "renderer/shortLines.h"

#include "renderer/CPULut1DOp.h"
#include "renderer/pixelLayout.h"

#include <hwy/cache_control.h>

namespace Rendering
{

#if HWY_ARCH_X86_64

namespace
{

constexpr std::size_t kPixelsOfCacheLine = 8;
// So many that the memory has answered when they are read.
constexpr std::size_t kPixelsAhead = 256;

// Of a line: the entries of red, green and blue, and the channel that each colour has in memory.
template <unsigned int kRed, unsigned int kGreen, unsigned int kBlue, unsigned int kAlpha>
class ShortLine
{
public:
    explicit ShortLine(Lut1DParameters const& tables)
        : m_red(_entriesOf(tables, 0)), m_green(_entriesOf(tables, 1)), m_blue(_entriesOf(tables, 2))
    {
    }

    void stream(std::uint16_t const* codes, long long* pixels, std::size_t count) const
    {
        for (; count >= kPixelsOfCacheLine; count -= kPixelsOfCacheLine)
        {
            hwy::Prefetch(codes + 4 * kPixelsAhead);
            _streamPixels(codes, pixels, kPixelsOfCacheLine);
            codes += 4 * kPixelsOfCacheLine;
            pixels += kPixelsOfCacheLine;
        }
        _streamPixels(codes, pixels, count);
    }

private:
    static std::uint16_t const* _entriesOf(Lut1DParameters const& tables, unsigned int channel)
    {
        return static_cast<std::uint16_t const*>(tables.table[channel]);
    }

    void _streamPixels(std::uint16_t const* codes, long long* pixels, std::size_t count) const
    {
        for (std::size_t i = 0; i < count; ++i)
            _mm_stream_si64(pixels + i, static_cast<long long>(_pixelOf(codes + 4 * i)));
    }

    std::uint64_t _pixelOf(std::uint16_t const* codes) const
    {
        return std::uint64_t{m_red[codes[kRed]]} << 16 * kRed | std::uint64_t{m_green[codes[kGreen]]} << 16 * kGreen |
               std::uint64_t{m_blue[codes[kBlue]]} << 16 * kBlue | std::uint64_t{codes[kAlpha]} << 16 * kAlpha;
    }

    std::uint16_t const* m_red;
    std::uint16_t const* m_green;
    std::uint16_t const* m_blue;
};

template <unsigned int... kOrder>
void streamLine(Lut1DParameters const& tables, std::uint8_t const* source, std::uint8_t* destination, std::size_t count)
{
    ShortLine<kOrder...>(tables).stream(reinterpret_cast<std::uint16_t const*>(source), reinterpret_cast<long long*>(destination),
                                        count);
}

} // namespace

ShortLineFunction getShortLineFunction(Tavrin::PixelFormat in, Tavrin::PixelFormat out)
{
    if (in != out)
        return nullptr;
    switch (in)
    {
    case Tavrin::PF_RGBA_16i:
        return &streamLine<0, 1, 2, 3>;
    case Tavrin::PF_BGRA_16i:
        return &streamLine<2, 1, 0, 3>;
    case Tavrin::PF_ABGR_16i:
        return &streamLine<3, 2, 1, 0>;
    default:
        return nullptr;
    }
}

#else

ShortLineFunction getShortLineFunction(Tavrin::PixelFormat, Tavrin::PixelFormat)
{
    return nullptr;
}

#endif

} // namespace Rendering
