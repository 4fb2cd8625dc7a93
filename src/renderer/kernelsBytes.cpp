// The look-up of bytes, compiled for each target; only AVX-512 with VBMI has it.
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "renderer/kernelsBytes.cpp"
#define TAVRIN_SIMD_WITH_VBMI
#include "renderer/simdTargets-inl.h"

#include <hwy/foreach_target.h>

#include <hwy/highway.h>

#include "renderer/kernelsBytes.h"

#include <utility>

HWY_BEFORE_NAMESPACE();
namespace Rendering::HWY_NAMESPACE
{

#if HWY_TARGET == HWY_AVX3_DL

// Of a register.
HWY_INLINE __mmask64 FirstBytes(std::size_t bytes)
{
    return _bzhi_u64(~std::uint64_t{0}, static_cast<unsigned int>(bytes));
}

// The next 16 pixels of so many that there are, arranged; nothing is read beyond those.
class CodeReader
{
public:
    HWY_INLINE explicit CodeReader(CodeArrangement const& arrangement)
        : m_pixelBytes(arrangement.pixelBytes),
          m_from(_mm512_load_si512(arrangement.from)),
          m_added(_mm512_load_si512(arrangement.added))
    {
    }

    HWY_INLINE std::size_t PixelBytes() const { return m_pixelBytes; }

    HWY_INLINE __m512i Read(std::uint8_t const* p, std::size_t pixels) const
    {
        const std::size_t bytes = pixels * m_pixelBytes;
        // Loads with a mask wait for stores that are on their way.
        const __m512i memory = bytes >= 64 ? _mm512_loadu_si512(p) : _mm512_maskz_loadu_epi8(FirstBytes(bytes), p);
        return _mm512_or_si512(_mm512_permutexvar_epi8(m_from, memory), m_added);
    }

private:
    std::size_t m_pixelBytes;
    __m512i m_from;
    __m512i m_added;
};

// A table of 256 bytes is four registers: two for codes below 128, two for the others.
class ByteTable
{
public:
    HWY_INLINE explicit ByteTable(std::uint8_t const* table)
        : m_part{_mm512_loadu_si512(table), _mm512_loadu_si512(table + 64), _mm512_loadu_si512(table + 128),
                 _mm512_loadu_si512(table + 192)}
    {
    }

    HWY_INLINE __m512i LookUp(__m512i codes, __mmask64 isUpper) const
    {
        const __m512i lower = _mm512_permutex2var_epi8(m_part[0], codes, m_part[1]);
        const __m512i upper = _mm512_permutex2var_epi8(m_part[2], codes, m_part[3]);
        return _mm512_mask_blend_epi8(isUpper, lower, upper);
    }

private:
    __m512i m_part[4];
};

// ---------------------------------------------------------------- codes to values

// 64 pixels a register: byte 4 * j + i of its 128-bit block b is that of pixel 16 * j + 4 * b + i. So what is taken apart into
// bytes comes together in the order of pixels, by unpacking alone.
struct CodePlanes
{
    static constexpr std::size_t kPixels = 64;

    __m512i channel[4];
};

HWY_INLINE CodePlanes ReadPlanes(CodeReader const& reader, std::uint8_t const* p, std::size_t pixels)
{
    constexpr std::size_t kPart = CodeArrangement::kPixels;
    const auto read = [&](std::size_t part) HWY_ATTR
    {
        const std::size_t first = HWY_MIN(part * kPart, pixels);
        return reader.Read(p + first * reader.PixelBytes(), pixels - first);
    };
    const __m512i part0 = read(0);
    const __m512i part1 = read(1);
    const __m512i part2 = read(2);
    const __m512i part3 = read(3);
    const __m512i redGreen01 = _mm512_unpacklo_epi32(part0, part1);
    const __m512i redGreen23 = _mm512_unpacklo_epi32(part2, part3);
    const __m512i blueAlpha01 = _mm512_unpackhi_epi32(part0, part1);
    const __m512i blueAlpha23 = _mm512_unpackhi_epi32(part2, part3);
    return {{_mm512_unpacklo_epi64(redGreen01, redGreen23), _mm512_unpackhi_epi64(redGreen01, redGreen23),
             _mm512_unpacklo_epi64(blueAlpha01, blueAlpha23), _mm512_unpackhi_epi64(blueAlpha01, blueAlpha23)}};
}

// The values of one channel.
class ValueTable
{
public:
    HWY_INLINE explicit ValueTable(std::uint8_t const (&table)[4][kCodes])
        : m_byte0(table[0]), m_byte1(table[1]), m_byte2(table[2]), m_byte3(table[3])
    {
    }

    // As many whole vectors as hold the pixels.
    HWY_INLINE void Store(__m512i codes, std::size_t pixels, float* values) const
    {
        const __mmask64 isUpper = _mm512_movepi8_mask(codes);
        const __m512i byte0 = m_byte0.LookUp(codes, isUpper);
        const __m512i byte1 = m_byte1.LookUp(codes, isUpper);
        const __m512i byte2 = m_byte2.LookUp(codes, isUpper);
        const __m512i byte3 = m_byte3.LookUp(codes, isUpper);
        const __m512i lower01 = _mm512_unpacklo_epi8(byte0, byte1);
        const __m512i lower23 = _mm512_unpacklo_epi8(byte2, byte3);
        const __m512i upper01 = _mm512_unpackhi_epi8(byte0, byte1);
        const __m512i upper23 = _mm512_unpackhi_epi8(byte2, byte3);
        _mm512_storeu_si512(values, _mm512_unpacklo_epi16(lower01, lower23));
        if (pixels > 16)
            _mm512_storeu_si512(values + 16, _mm512_unpackhi_epi16(lower01, lower23));
        if (pixels > 32)
            _mm512_storeu_si512(values + 32, _mm512_unpacklo_epi16(upper01, upper23));
        if (pixels > 48)
            _mm512_storeu_si512(values + 48, _mm512_unpackhi_epi16(upper01, upper23));
    }

private:
    ByteTable m_byte0;
    ByteTable m_byte1;
    ByteTable m_byte2;
    ByteTable m_byte3;
};

// A block's worth of pixels or fewer.
class ValueLoad
{
public:
    HWY_INLINE ValueLoad(CodeValues const& values, std::uint8_t const* p, std::size_t pixels)
        : m_values(values), m_first(HWY_MIN(pixels, CodePlanes::kPixels)), m_second(pixels - m_first)
    {
        static_assert(Block::kPixels == 2 * CodePlanes::kPixels);
        const CodeReader reader(values.arrangement);
        m_firstCodes = ReadPlanes(reader, p, m_first);
        m_secondCodes = ReadPlanes(reader, p + m_first * reader.PixelBytes(), m_second);
    }

    template <int kChannel>
    HWY_INLINE void Store(float* values) const
    {
        const ValueTable table(m_values.table[kChannel]);
        table.Store(m_firstCodes.channel[kChannel], m_first, values);
        if (m_second > 0)
            table.Store(m_secondCodes.channel[kChannel], m_second, values + CodePlanes::kPixels);
    }

private:
    CodeValues const& m_values;
    std::size_t m_first;
    std::size_t m_second;
    CodePlanes m_firstCodes;
    CodePlanes m_secondCodes;
};

void LoadValues(CodeValues const& values, void const* source, Places places, Block& block)
{
    const ValueLoad load(values, static_cast<const std::uint8_t*>(source), places.count);
    load.Store<0>(block.red + places.first);
    load.Store<1>(block.green + places.first);
    load.Store<2>(block.blue + places.first);
    if (values.arrangement.bytes[3] >= 0)
        return load.Store<3>(block.alpha + places.first);
    for (unsigned int i = 0; i < places.count; i += 16)
        _mm512_storeu_ps(block.alpha + places.first + i, _mm512_set1_ps(values.missingAlpha));
}

template <unsigned int kByte>
HWY_INLINE void SetBytes(__m512i values, std::uint8_t* table)
{
    _mm_storeu_si128(reinterpret_cast<__m128i*>(table), _mm512_cvtepi32_epi8(_mm512_srli_epi32(values, 8 * kByte)));
}

void SetValues(float const* values, std::uint8_t (&table)[4][kCodes], unsigned int firstCode)
{
    for (unsigned int i = 0; i < Block::kPixels; i += 16)
    {
        const __m512i v = _mm512_loadu_si512(values + i);
        SetBytes<0>(v, table[0] + firstCode + i);
        SetBytes<1>(v, table[1] + firstCode + i);
        SetBytes<2>(v, table[2] + firstCode + i);
        SetBytes<3>(v, table[3] + firstCode + i);
    }
}

// ---------------------------------------------------------------- codes to pixels

// The entries of some channels: their lower bytes, and the upper ones where they are of 16 bits.
template <unsigned int kEntryBytes>
class EntryTable
{
public:
    HWY_INLINE explicit EntryTable(CodeEntries::Table const& table)
        : m_lower(table.bytes), m_upper(table.bytes + (kEntryBytes - 1) * kCodes), m_places(table.places)
    {
    }

    // Puts the entries of the channels' codes in their places.
    HWY_INLINE void LookUp(__m512i codes, __mmask64 isUpper, __m512i& lower, __m512i& upper) const
    {
        lower = _mm512_mask_mov_epi8(lower, m_places, m_lower.LookUp(codes, isUpper));
        if constexpr (kEntryBytes == 2)
            upper = _mm512_mask_mov_epi8(upper, m_places, m_upper.LookUp(codes, isUpper));
    }

private:
    ByteTable m_lower;
    ByteTable m_upper;
    __mmask64 m_places;
};

// 16 pixels in memory order; entries of 8 bits need one register.
template <unsigned int kEntryBytes>
class EntryPixels
{
public:
    HWY_INLINE EntryPixels(__m512i lower, __m512i upper)
        : m_first(kEntryBytes == 1 ? lower : _mm512_unpacklo_epi8(lower, upper)), m_second(_mm512_unpackhi_epi8(lower, upper))
    {
    }

    // Four channels.
    HWY_INLINE void Stream(std::uint8_t* q) const
    {
        _mm512_stream_si512(reinterpret_cast<__m512i*>(q), m_first);
        if constexpr (kEntryBytes == 2)
            _mm512_stream_si512(reinterpret_cast<__m512i*>(q + 64), m_second);
    }

    // By stores without a mask, which are faster.
    HWY_INLINE void Store(std::uint8_t* q, std::size_t channels) const
    {
        if constexpr (kEntryBytes == 1)
            channels == 4 ? _mm512_storeu_si512(q, m_first) : StoreThreeQuarters(q);
        else
            StoreBoth(q, channels);
    }

    HWY_INLINE void StoreBytes(std::uint8_t* q, std::size_t bytes) const
    {
        const std::size_t first = HWY_MIN(bytes, std::size_t{64});
        _mm512_mask_storeu_epi8(q, FirstBytes(first), m_first);
        if constexpr (kEntryBytes == 2)
            _mm512_mask_storeu_epi8(q + first, FirstBytes(bytes - first), m_second);
    }

private:
    HWY_INLINE void StoreThreeQuarters(std::uint8_t* q) const
    {
        _mm256_storeu_si256(reinterpret_cast<__m256i*>(q), _mm512_castsi512_si256(m_first));
        _mm_storeu_si128(reinterpret_cast<__m128i*>(q + 32), _mm512_extracti32x4_epi32(m_first, 2));
    }

    HWY_INLINE void StoreBoth(std::uint8_t* q, std::size_t channels) const
    {
        _mm512_storeu_si512(q, m_first);
        if (channels == 4)
            _mm512_storeu_si512(q + 64, m_second);
        else
            _mm256_storeu_si256(reinterpret_cast<__m256i*>(q + 64), _mm512_castsi512_si256(m_second));
    }

    __m512i m_first;
    __m512i m_second;
};

template <unsigned int kEntryBytes, class TableNumbers>
class CodeLine;

// With so many tables, which stay in registers.
template <unsigned int kEntryBytes, std::size_t... kTables>
class CodeLine<kEntryBytes, std::index_sequence<kTables...>>
{
public:
    HWY_INLINE explicit CodeLine(CodeEntries const& entries)
        : m_reader(entries.arrangement), m_channels(entries.channels), m_table{EntryTable<kEntryBytes>(entries.table[kTables])...}
    {
    }

    HWY_INLINE void Run(const std::uint8_t* p, std::uint8_t* q, std::size_t count, bool streams) const
    {
        const std::size_t pixelBytes = m_channels * kEntryBytes;
        if (streams && m_channels == 4 && reinterpret_cast<std::uintptr_t>(q) % pixelBytes == 0)
        {
            const std::size_t gap = (64 - reinterpret_cast<std::uintptr_t>(q) % 64) % 64 / pixelBytes;
            const std::size_t ordinary = HWY_MIN(gap, count);
            RenderPart(p, q, ordinary);
            p += ordinary * m_reader.PixelBytes();
            q += ordinary * pixelBytes;
            count -= ordinary;
            for (; count >= kPixels; count -= kPixels, p += kPixels * m_reader.PixelBytes(), q += kPixels * pixelBytes)
                Render(p, count).Stream(q);
        }
        for (; count >= kPixels; count -= kPixels, p += kPixels * m_reader.PixelBytes(), q += kPixels * pixelBytes)
            Render(p, count).Store(q, m_channels);
        RenderPart(p, q, count);
    }

private:
    static constexpr std::size_t kPixels = CodeArrangement::kPixels;

    HWY_INLINE EntryPixels<kEntryBytes> Render(const std::uint8_t* p, std::size_t pixels) const
    {
        const __m512i codes = m_reader.Read(p, pixels);
        const __mmask64 isUpper = _mm512_movepi8_mask(codes);
        __m512i lower = codes;
        __m512i upper = codes;
        (m_table[kTables].LookUp(codes, isUpper, lower, upper), ...);
        return {lower, upper};
    }

    // Fewer than 16 pixels.
    HWY_INLINE void RenderPart(const std::uint8_t* p, std::uint8_t* q, std::size_t pixels) const
    {
        Render(p, pixels).StoreBytes(q, pixels * m_channels * kEntryBytes);
    }

    CodeReader m_reader;
    std::size_t m_channels;
    EntryTable<kEntryBytes> m_table[sizeof...(kTables)];
};

template <unsigned int kEntryBytes>
void RenderLineOf(CodeEntries const& entries, const std::uint8_t* source, std::uint8_t* destination, std::size_t count,
                  bool streams)
{
    switch (entries.count)
    {
    case 1:
        return CodeLine<kEntryBytes, std::make_index_sequence<1>>(entries).Run(source, destination, count, streams);
    case 2:
        return CodeLine<kEntryBytes, std::make_index_sequence<2>>(entries).Run(source, destination, count, streams);
    case 3:
        return CodeLine<kEntryBytes, std::make_index_sequence<3>>(entries).Run(source, destination, count, streams);
    default:
        return CodeLine<kEntryBytes, std::make_index_sequence<4>>(entries).Run(source, destination, count, streams);
    }
}

void RenderLine(CodeEntries const& entries, const std::uint8_t* source, std::uint8_t* destination, std::size_t count, bool streams)
{
    if (entries.entryBytes == 1)
        RenderLineOf<1>(entries, source, destination, count, streams);
    else
        RenderLineOf<2>(entries, source, destination, count, streams);
}

constexpr CodeFunctions kCodeFunctions = {&SetValues, &LoadValues, &RenderLine};

#else

constexpr CodeFunctions kCodeFunctions = {nullptr, nullptr, nullptr};

#endif

} // namespace Rendering::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE

#include "renderer/pixelLayout.h"
#include "renderer/simdTarget.h"
#include "utils/utils.h"

#include <algorithm>
#include <cstring>

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

// Where an entry of 16 pixels stands while it is taken apart into bytes. Those of 16 bits come together by unpacking the blocks of
// 128 bits: their lower halves give the first 32 entries.
unsigned int placeOfEntry(unsigned int index, unsigned int entryBytes)
{
    if (entryBytes == 1)
        return index;
    unsigned int const half = index / 32;
    unsigned int const block = index % 32 / 8;
    return 16 * block + 8 * half + index % 8;
}

} // namespace

CodeArrangement::CodeArrangement(Tavrin::PixelFormat in)
    : pixelBytes(channelsOf(layoutOf(in))), bytes(placesOf(in)), from(), added()
{
}

void CodeArrangement::put(unsigned int pixel, unsigned int channel, unsigned int place)
{
    if (bytes[channel] >= 0)
        from[place] = static_cast<std::uint8_t>(pixel * pixelBytes + static_cast<unsigned int>(bytes[channel]));
    else
        added[place] = 255;
}

CodeValues::CodeValues(Tavrin::PixelFormat in) : arrangement(in)
{
    for (unsigned int channel = 0; channel < 4; ++channel)
    {
        for (unsigned int pixel = 0; pixel < CodeArrangement::kPixels; ++pixel)
            arrangement.put(pixel, channel, 16 * (pixel / 4) + 4 * channel + pixel % 4);
    }
}

bool CodeEntries::serve(Tavrin::PixelFormat out)
{
    unsigned int const bytes = Color::Utils::depthOf(out) == Tavrin::BIT_DEPTH_8i ? 1 : 2;
    return Tavrin::getPixelSizeInByte(out) == bytes * channelsOf(layoutOf(out));
}

CodeEntries::CodeEntries(Tavrin::PixelFormat in, Tavrin::PixelFormat out)
    : arrangement(in),
      channels(channelsOf(layoutOf(out))),
      entryBytes(Tavrin::getPixelSizeInByte(out) / channels),
      placesOfChannel(),
      count(0),
      table()
{
    std::array<int, 4> const destination = placesOf(out);
    for (unsigned int channel = 0; channel < 4; ++channel)
    {
        for (unsigned int pixel = 0; destination[channel] >= 0 && pixel < CodeArrangement::kPixels; ++pixel)
        {
            unsigned int const entry = pixel * channels + static_cast<unsigned int>(destination[channel]);
            unsigned int const place = placeOfEntry(entry, entryBytes);
            arrangement.put(pixel, channel, place);
            placesOfChannel[channel] |= std::uint64_t{1} << place;
        }
    }
}

void CodeEntries::setTables(Tables const& tables)
{
    count = 0;
    for (unsigned int channel = 0; channel < 4; ++channel)
    {
        std::uint8_t const* const bytes = tables[channel];
        if (bytes == nullptr || placesOfChannel[channel] == 0)
            continue;
        auto const isSame = [&](Table const& other) { return std::memcmp(bytes, other.bytes, kCodes * entryBytes) == 0; };
        auto const known = std::find_if(table.begin(), table.begin() + count, isSame);
        if (known == table.begin() + count)
            table[count++] = {bytes, 0};
        known->places |= placesOfChannel[channel];
    }
}

CodeFunctions const* getCodeFunctions()
{
    static constexpr PerTarget<CodeFunctions> kTables TAVRIN_PER_TARGET(kCodeFunctions);
    CodeFunctions const* const functions = kTables[getSimdTarget()];
    return functions->load != nullptr ? functions : nullptr;
}

} // namespace Rendering

#endif
