// Loads and stores of the 32 pixel formats, compiled once for each target.
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "renderer/kernelsFormats.cpp"
#include "renderer/simdTargets-inl.h"

#include <hwy/foreach_target.h>

#include <hwy/highway.h>

#include "renderer/CPULut1DOp.h"
#include "renderer/cacheLine.h"
#include "renderer/elements-inl.h"
#include "renderer/formats-inl.h"
#include "renderer/gather-inl.h"
#include "renderer/kernelsFormats.h"
#include "renderer/pixelLayout.h"
#include "utils/errorMessage.h"
#include "utils/utils.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <type_traits>

#ifndef TAVRIN_RENDERER_KERNELS_FORMATS_CPP_ONCE
#define TAVRIN_RENDERER_KERNELS_FORMATS_CPP_ONCE
namespace Rendering
{

struct FormatTable
{
#define TAVRIN_PIXEL_FORMAT(layout, layoutCode, depth, depthCode, packed) FormatFunctions layout##_##depth;
#include <tavrin/pixelFormats.def>
#undef TAVRIN_PIXEL_FORMAT
};

} // namespace Rendering
#endif

HWY_BEFORE_NAMESPACE();
namespace Rendering::HWY_NAMESPACE
{

namespace hn = hwy::HWY_NAMESPACE;

constexpr std::size_t kMaxPixelBytes = 16;

// What a block is filled with.
struct Values
{
    template <class Format>
    static HWY_INLINE void LoadVector(const std::uint8_t* p, V& red, V& green, V& blue, V& alpha)
    {
        Format::Load(p, red, green, blue, alpha);
    }
};

struct Codes
{
    template <class Format>
    static HWY_INLINE void LoadVector(const std::uint8_t* p, V& red, V& green, V& blue, V& alpha)
    {
        VU r, g, b;
        Format::LoadCodes(p, r, g, b, alpha);
        red = hn::BitCast(D(), r);
        green = hn::BitCast(D(), g);
        blue = hn::BitCast(D(), b);
    }
};

static_assert(hn::MaxLanes(D()) <= Block::kGap);

// The last pixels of a line, fewer than a vector holds, on their way through a buffer that begins a line of the cache.
#if TAVRIN_TRANSPOSE_AVX512

// The bytes of a register that are among the first so many.
HWY_INLINE auto FirstBytes(std::size_t bytes)
{
    return hn::FirstN(hn::Repartition<std::uint8_t, D>(), std::min(bytes, kCacheLine));
}

HWY_INLINE void CopyIn(const std::uint8_t* p, std::size_t bytes, std::uint8_t* buffer)
{
    const hn::Repartition<std::uint8_t, D> du8;
    for (std::size_t i = 0; i < bytes; i += kCacheLine)
        hn::Store(hn::MaskedLoad(FirstBytes(bytes - i), du8, p + i), du8, buffer + i);
}

HWY_INLINE void CopyPartOut(const std::uint8_t* buffer, std::size_t bytes, std::uint8_t* p)
{
    const hn::Repartition<std::uint8_t, D> du8;
    for (std::size_t i = 0; i < bytes; i += kCacheLine)
        hn::BlendedStore(hn::Load(du8, buffer + i), FirstBytes(bytes - i), du8, p + i);
}

#else

HWY_INLINE void CopyIn(const std::uint8_t* p, std::size_t bytes, std::uint8_t* buffer)
{
    std::memcpy(buffer, p, bytes);
}

HWY_INLINE void CopyPartOut(const std::uint8_t* buffer, std::size_t bytes, std::uint8_t* p)
{
    std::memcpy(p, buffer, bytes);
}

#endif

// Whole registers are streamed too: lines of the cache that are written the ordinary way have to be read first.
template <bool kStream>
HWY_INLINE void CopyOut(const std::uint8_t* buffer, std::size_t bytes, std::uint8_t* p)
{
    const D d;
    const std::size_t registerBytes = hn::Lanes(d) * sizeof(float);
    std::size_t i = 0;
    for (; kStream && i + registerBytes <= bytes; i += registerBytes)
        StoreVector<kStream>(hn::Load(d, reinterpret_cast<const float*>(buffer + i)), reinterpret_cast<float*>(p + i));
    CopyPartOut(buffer + i, bytes - i, p + i);
}

template <class Format, class Content>
HWY_INLINE void LoadVector(const std::uint8_t* p, unsigned int at, Block& block)
{
    const D d;
    V red, green, blue, alpha;
    Content::template LoadVector<Format>(p, red, green, blue, alpha);
    hn::StoreU(red, d, block.red + at);
    hn::StoreU(green, d, block.green + at);
    hn::StoreU(blue, d, block.blue + at);
    hn::StoreU(alpha, d, block.alpha + at);
}

template <class Format, class Content>
void Load(void const* source, Places places, Block& block)
{
    const unsigned int lanes = static_cast<unsigned int>(hn::Lanes(D()));
    const std::uint8_t* p = static_cast<const std::uint8_t*>(source);
    const unsigned int end = places.first + places.count;
    unsigned int i = places.first;
    for (; i + lanes <= end; i += lanes, p += lanes * Format::kPixelBytes)
        LoadVector<Format, Content>(p, i, block);
    if (i < end)
    {
        alignas(64) std::uint8_t rest[hn::MaxLanes(D()) * kMaxPixelBytes] = {};
        CopyIn(p, (end - i) * Format::kPixelBytes, rest);
        LoadVector<Format, Content>(rest, i, block);
    }
}

// What is stored of a block, from some place on: its values, or the entries of tables that its codes stand for. The block's planes
// are read unaligned, since the first place may be any.
class ValuesOfBlock
{
public:
    HWY_INLINE ValuesOfBlock(Block const& block, unsigned int first) : m_block(block), m_first(first) {}

    template <class Format, bool kStream>
    HWY_INLINE void StoreVector(unsigned int index, std::uint8_t* p) const
    {
        const D d;
        const unsigned int at = m_first + index;
        Format::template Store<kStream>(hn::LoadU(d, m_block.red + at), hn::LoadU(d, m_block.green + at),
                                        hn::LoadU(d, m_block.blue + at), hn::LoadU(d, m_block.alpha + at), p);
    }

private:
    Block const& m_block;
    unsigned int m_first;
};

class EntriesOfBlock
{
public:
    HWY_INLINE EntriesOfBlock(Lut1DParameters const& tables, Block const& block, unsigned int first)
        : m_tables(tables), m_block(block), m_first(first)
    {
    }

    template <class Format, bool kStream>
    HWY_INLINE void StoreVector(unsigned int index, std::uint8_t* p) const
    {
        using T = typename Format::Entry::Type;
        const D d;
        const unsigned int at = m_first + index;
        const V alpha = hn::Mul(hn::LoadU(d, m_block.alpha + at), hn::Set(d, m_tables.alphaScale));
        Format::template StoreCodes<kStream>(Entries<T>(0, m_block.red + at), Entries<T>(1, m_block.green + at),
                                             Entries<T>(2, m_block.blue + at), alpha, p);
    }

private:
    template <class T>
    HWY_INLINE VU Entries(int channel, const float* codes) const
    {
        const D d;
        return GatherBits<T>(d, m_tables.table[channel], RowsOfCodes(d, hn::LoadU(d, codes), m_tables.maxIndex));
    }

    Lut1DParameters const& m_tables;
    Block const& m_block;
    unsigned int m_first;
};

// Asks for the source of so many pixels.
template <bool kStream>
HWY_INLINE void Prefetch(UpcomingPixels& upcoming, unsigned int pixels)
{
    const std::uint8_t* const begin = static_cast<const std::uint8_t*>(upcoming.begin);
    const std::size_t bytes = std::size_t{pixels} * upcoming.pixelBytes;
    if (upcoming.intoSecondLevel)
    {
        for (std::size_t i = 0; i < bytes; i += kCacheLine)
            PrefetchIntoSecondLevel(begin + i);
    }
    else
    {
        for (std::size_t i = 0; i < bytes; i += kCacheLine)
            Prefetch<kStream>(begin + i);
    }
    upcoming.begin = begin + bytes;
}

template <class Format, bool kStream, class Pixels>
HWY_INLINE void StorePart(Pixels const& pixels, unsigned int begin, unsigned int end, std::uint8_t* p, UpcomingPixels& upcoming)
{
    const unsigned int lanes = static_cast<unsigned int>(hn::Lanes(D()));
    unsigned int i = begin;
    for (; i + lanes <= end; i += lanes, p += lanes * Format::kPixelBytes)
    {
        Prefetch<kStream>(upcoming, lanes);
        pixels.template StoreVector<Format, kStream>(i, p);
    }
    if (i < end)
    {
        if (i > begin) // in lines of a few pixels it takes longer than it saves
            Prefetch<kStream>(upcoming, end - i);
        alignas(64) std::uint8_t rest[hn::MaxLanes(D()) * kMaxPixelBytes];
        pixels.template StoreVector<Format, false>(i, rest);
        CopyOut<kStream>(rest, (end - i) * Format::kPixelBytes, p);
    }
}

// Pixels up to the boundary go the ordinary way, and so does everything where no pixel begins on one.
template <class Format, bool kStream, class Pixels>
HWY_INLINE void StorePixels(Pixels const& pixels, unsigned int count, void* destination, UpcomingPixels& upcoming)
{
    std::uint8_t* const p = static_cast<std::uint8_t*>(destination);
    if constexpr (kStream)
    {
        const std::size_t gap = bytesToCacheLine(p, Format::kPixelBytes);
        const unsigned int ordinary = static_cast<unsigned int>(gap / Format::kPixelBytes);
        if (gap % Format::kPixelBytes == 0 && ordinary < count)
        {
            StorePart<Format, false>(pixels, 0, ordinary, p, upcoming);
            StorePart<Format, true>(pixels, ordinary, count, p + gap, upcoming);
            return;
        }
    }
    StorePart<Format, false>(pixels, 0, count, p, upcoming);
}

template <class Format, bool kStream>
void Store(Block const& block, Places places, void* destination, UpcomingPixels upcoming)
{
    StorePixels<Format, kStream>(ValuesOfBlock(block, places.first), places.count, destination, upcoming);
}

template <class Format, bool kStream>
void StoreEntries(Lut1DParameters const& tables, Block const& block, Places places, void* destination, UpcomingPixels upcoming)
{
    StorePixels<Format, kStream>(EntriesOfBlock(tables, block, places.first), places.count, destination, upcoming);
}

template <class Format>
constexpr LoadFunction loadCodesOf()
{
    if constexpr (std::is_same_v<typename Format::Entry, FloatEntry>)
        return &Load<Format, Values>;
    else
        return &Load<Format, Codes>;
}

template <class Format>
constexpr FormatFunctions functionsOf()
{
    constexpr bool kCanStream = Format::kCanStream && HWY_TARGET != HWY_SCALAR;
    return {&Load<Format, Values>,      loadCodesOf<Format>(),        &Store<Format, false>,
            &Store<Format, kCanStream>, &StoreEntries<Format, false>, &StoreEntries<Format, kCanStream>};
}

constexpr FormatTable kFormats = {
#define TAVRIN_PIXEL_FORMAT(layout, layoutCode, depth, depthCode, packed) functionsOf<Format_##depth<Layout::layout>>(),
#include <tavrin/pixelFormats.def>
#undef TAVRIN_PIXEL_FORMAT
};

} // namespace Rendering::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE

#include "renderer/simdTarget.h"

namespace Rendering
{

FormatFunctions const& getFormatFunctions(PixelFormat format)
{
    static constexpr PerTarget<FormatTable> kTables TAVRIN_PER_TARGET(kFormats);
    FormatTable const& table = *kTables[getSimdTarget()];
    switch (format)
    {
#define TAVRIN_PIXEL_FORMAT(layout, layoutCode, depth, depthCode, packed) \
    case Tavrin::PF_##layout##_##depth:                                   \
        return table.layout##_##depth;
#include <tavrin/pixelFormats.def>
#undef TAVRIN_PIXEL_FORMAT
    case Tavrin::PF_UNKNOWN:
        break;
    }
    throw Color::failure(Color::ErrorIds::kIllegalPixelFormat, Color::Module::kUtils);
}

void finishStreaming()
{
    hwy::FlushStream();
}

} // namespace Rendering

#endif
