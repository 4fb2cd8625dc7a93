// The look-up of bytes, compiled for each target; only AVX-512 with VBMI has it.
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "renderer/kernelsBytes.cpp"
#define TAVRIN_SIMD_WITH_VBMI
#include "renderer/simdTargets-inl.h"

#include <hwy/foreach_target.h>

#include <hwy/highway.h>

#include "renderer/kernelsBytes.h"

#ifndef TAVRIN_RENDERER_KERNELS_BYTES_CPP_ONCE
#define TAVRIN_RENDERER_KERNELS_BYTES_CPP_ONCE
namespace Rendering
{

struct ByteKernelTable
{
    ByteLineFunction line;
};

} // namespace Rendering
#endif

HWY_BEFORE_NAMESPACE();
namespace Rendering::HWY_NAMESPACE
{

#if HWY_TARGET == HWY_AVX3_DL

// A table of 256 bytes is four registers: two for bytes below 128, two for the others.
class ByteTable
{
public:
    HWY_INLINE explicit ByteTable(void const* table)
        : m_part{_mm512_loadu_si512(table), _mm512_loadu_si512(At(table, 64)), _mm512_loadu_si512(At(table, 128)),
                 _mm512_loadu_si512(At(table, 192))}
    {
    }

    // The bytes of one channel become their entries; the others stay.
    HWY_INLINE __m512i LookUp(__m512i bytes, __mmask64 channel, __mmask64 isUpper) const
    {
        const __m512i lower = _mm512_mask2_permutex2var_epi8(m_part[0], bytes, _kandn_mask64(isUpper, channel), m_part[1]);
        return _mm512_mask2_permutex2var_epi8(m_part[2], lower, _kand_mask64(isUpper, channel), m_part[3]);
    }

private:
    static HWY_INLINE void const* At(void const* table, std::size_t byte) { return static_cast<const std::uint8_t*>(table) + byte; }

    __m512i m_part[4];
};

class ByteLine
{
public:
    HWY_INLINE ByteLine(ByteLayouts const& layouts, void const* const (&table)[3])
        : m_inBytes(layouts.inPixelBytes),
          m_outBytes(layouts.outPixelBytes),
          m_fromMemory(_mm512_load_si512(layouts.fromMemory)),
          m_toMemory(_mm512_load_si512(layouts.toMemory)),
          m_added(_mm512_load_si512(layouts.added)),
          m_table{ByteTable(table[0]), ByteTable(table[1]), ByteTable(table[2])}
    {
    }

    HWY_INLINE void Run(const std::uint8_t* p, std::uint8_t* q, std::size_t count, bool streams) const
    {
        if (streams && m_outBytes == 4 && reinterpret_cast<std::uintptr_t>(q) % 4 == 0)
        {
            const std::size_t gap = (64 - reinterpret_cast<std::uintptr_t>(q) % 64) % 64 / 4;
            const std::size_t ordinary = gap < count ? gap : count;
            Part(p, q, ordinary);
            p += ordinary * m_inBytes;
            q += ordinary * 4;
            count -= ordinary;
            for (; count >= kPixels; count -= kPixels, p += kPixels * m_inBytes, q += 64)
                _mm512_stream_si512(reinterpret_cast<__m512i*>(q), Convert(Load(p, kPixels)));
        }
        for (; count >= kPixels; count -= kPixels, p += kPixels * m_inBytes, q += kPixels * m_outBytes)
            Store(Convert(Load(p, kPixels)), q);
        Part(p, q, count);
    }

private:
    static constexpr std::size_t kPixels = ByteLayouts::kPixels;

    static HWY_INLINE __mmask64 FirstBytes(std::size_t bytes) { return bytes == 64 ? ~__mmask64{0} : (__mmask64{1} << bytes) - 1; }

    HWY_INLINE __m512i Load(const std::uint8_t* p, std::size_t pixels) const
    {
        return _mm512_maskz_loadu_epi8(FirstBytes(pixels * m_inBytes), p);
    }

    HWY_INLINE __m512i Convert(__m512i memory) const
    {
        __m512i bytes = _mm512_or_si512(_mm512_permutexvar_epi8(m_fromMemory, memory), m_added);
        const __mmask64 isUpper = _mm512_movepi8_mask(bytes);
        bytes = m_table[0].LookUp(bytes, 0x1111111111111111U, isUpper);
        bytes = m_table[1].LookUp(bytes, 0x2222222222222222U, isUpper);
        bytes = m_table[2].LookUp(bytes, 0x4444444444444444U, isUpper);
        return _mm512_permutexvar_epi8(m_toMemory, bytes);
    }

    // 16 whole pixels, by stores without a mask, which are faster.
    HWY_INLINE void Store(__m512i v, std::uint8_t* q) const
    {
        if (m_outBytes == 4)
            return _mm512_storeu_si512(q, v);
        _mm256_storeu_si256(reinterpret_cast<__m256i*>(q), _mm512_castsi512_si256(v));
        _mm_storeu_si128(reinterpret_cast<__m128i*>(q + 32), _mm512_extracti32x4_epi32(v, 2));
    }

    // Fewer than 16 pixels.
    HWY_INLINE void Part(const std::uint8_t* p, std::uint8_t* q, std::size_t pixels) const
    {
        _mm512_mask_storeu_epi8(q, FirstBytes(pixels * m_outBytes), Convert(Load(p, pixels)));
    }

    std::size_t m_inBytes;
    std::size_t m_outBytes;
    __m512i m_fromMemory;
    __m512i m_toMemory;
    __m512i m_added;
    ByteTable m_table[3];
};

void LookUpLine(ByteLayouts const& layouts, void const* const (&table)[3], std::uint8_t const* source, std::uint8_t* destination,
                std::size_t count, bool streams)
{
    ByteLine(layouts, table).Run(source, destination, count, streams);
}

constexpr ByteKernelTable kByteKernels = {&LookUpLine};

#else

constexpr ByteKernelTable kByteKernels = {nullptr};

#endif

} // namespace Rendering::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE

#include "renderer/pixelLayout.h"
#include "renderer/simdTarget.h"

#include <array>

namespace Rendering
{

namespace
{

// Where red, green, blue and alpha stand in a pixel; -1 for none.
std::array<int, 4> placesOf(Tavrin::PixelFormat format)
{
    ChannelOrder const order = orderOf(layoutOf(format));
    return {order.red, order.green, order.blue, order.alpha};
}

} // namespace

ByteLayouts::ByteLayouts(Tavrin::PixelFormat in, Tavrin::PixelFormat out)
    : inPixelBytes(channelsOf(layoutOf(in))), outPixelBytes(channelsOf(layoutOf(out))), fromMemory(), toMemory(), added()
{
    constexpr std::uint8_t kBehindPixels = 63; // Zero where pixels have three bytes.
    std::array<int, 4> const source = placesOf(in);
    std::array<int, 4> const destination = placesOf(out);
    for (unsigned int byte = 0; byte < 4 * kPixels; ++byte)
    {
        unsigned int const pixel = byte / 4;
        int const from = source[byte % 4];
        int const to = destination[byte % 4];
        fromMemory[byte] =
            from >= 0 ? static_cast<std::uint8_t>(pixel * inPixelBytes + static_cast<unsigned int>(from)) : kBehindPixels;
        added[byte] = from >= 0 ? 0 : 255;
        if (to >= 0)
            toMemory[pixel * outPixelBytes + static_cast<unsigned int>(to)] = static_cast<std::uint8_t>(byte);
    }
}

ByteLineFunction getByteLineFunction()
{
    static constexpr PerTarget<ByteKernelTable> kTables TAVRIN_PER_TARGET(kByteKernels);
    return kTables[getSimdTarget()]->line;
}

} // namespace Rendering

#endif
