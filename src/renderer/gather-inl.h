// Entries of tables for a vector of row numbers: as many 32-bit integers, none below 0, as a vector of floats has lanes.
#if defined(TAVRIN_RENDERER_GATHER_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef TAVRIN_RENDERER_GATHER_INL_H
#undef TAVRIN_RENDERER_GATHER_INL_H
#else
#define TAVRIN_RENDERER_GATHER_INL_H
#endif

#include "renderer/halfFloat-inl.h"

#include <hwy/highway.h>

#include <cstdint>
#include <type_traits>

HWY_BEFORE_NAMESPACE();
namespace Rendering::HWY_NAMESPACE
{

namespace hn = hwy::HWY_NAMESPACE;

// Types of entries. Widened entries are what a 32-bit lane holds of them.
struct ByteEntry
{
    using Type = std::uint8_t;
};
struct ShortEntry
{
    using Type = std::uint16_t;
};
struct HalfEntry
{
    using Type = std::uint16_t;
};
struct FloatEntry
{
    using Type = float;
};

#undef TAVRIN_GATHER_X86
#if HWY_TARGET != HWY_SCALAR && HWY_ARCH_X86_64
#define TAVRIN_GATHER_X86 1
#else
#define TAVRIN_GATHER_X86 0
#endif

#if TAVRIN_GATHER_X86

// Entries are loaded one by one into lanes. The gathers of the instruction sets are no faster than that at best, and with the
// microcode that keeps them from leaking data, which many processors run, less than half as fast.

// Four numbers out of a register, two with each move.
class FourRows
{
public:
    HWY_INLINE explicit FourRows(__m128i rows)
        : m_pairs{static_cast<std::uint64_t>(_mm_cvtsi128_si64(rows)), static_cast<std::uint64_t>(_mm_extract_epi64(rows, 1))}
    {
    }

    HWY_INLINE std::uint64_t operator[](int i) const { return i % 2 == 0 ? m_pairs[i / 2] & 0xffffffffU : m_pairs[i / 2] >> 32; }

private:
    std::uint64_t m_pairs[2];
};

// Those of a block of four lanes.
template <int kBlock, class VI>
HWY_INLINE FourRows RowsOfBlock(VI rows)
{
#if HWY_TARGET == HWY_AVX3
    return FourRows(_mm512_extracti32x4_epi32(rows.raw, kBlock));
#elif HWY_TARGET == HWY_AVX2
    return FourRows(_mm256_extracti128_si256(rows.raw, kBlock));
#else
    return FourRows(rows.raw);
#endif
}

// The rows of a vector's lanes.
template <class VI>
struct RowsOfVector
{
    VI rows;

    template <int kBlock>
    HWY_INLINE FourRows FourOf() const
    {
        return RowsOfBlock<kBlock>(rows);
    }
};

template <class T, class Four>
HWY_INLINE __m128i FourEntries(T const* entries, Four const& row)
{
    if constexpr (sizeof(T) == 1)
    {
        __m128i v = _mm_cvtsi32_si128(entries[row[0]]);
        v = _mm_insert_epi8(v, entries[row[1]], 1);
        v = _mm_insert_epi8(v, entries[row[2]], 2);
        return _mm_cvtepu8_epi32(_mm_insert_epi8(v, entries[row[3]], 3));
    }
    else if constexpr (sizeof(T) == 2)
    {
        __m128i v = _mm_cvtsi32_si128(entries[row[0]]);
        v = _mm_insert_epi16(v, entries[row[1]], 1);
        v = _mm_insert_epi16(v, entries[row[2]], 2);
        return _mm_cvtepu16_epi32(_mm_insert_epi16(v, entries[row[3]], 3));
    }
    else
    {
        float const* const floats = reinterpret_cast<float const*>(entries); // bits alone are meant
        __m128 v = _mm_load_ss(floats + row[0]);
        v = _mm_insert_ps(v, _mm_load_ss(floats + row[1]), 0x10);
        const __m128 upper = _mm_insert_ps(_mm_load_ss(floats + row[2]), _mm_load_ss(floats + row[3]), 0x10);
        return _mm_castps_si128(_mm_movelh_ps(v, upper));
    }
}

// Of lanes whose rows are told four by four.
template <class T, class D, class Rows>
HWY_INLINE hn::VFromD<hn::RebindToUnsigned<D>> GatherBitsOf(D, void const* table, Rows const& rows)
{
    using VU = hn::VFromD<hn::RebindToUnsigned<D>>;
    T const* const entries = static_cast<T const*>(table);
#if HWY_TARGET == HWY_AVX3
    const __m256i low = _mm256_inserti128_si256(_mm256_castsi128_si256(FourEntries(entries, rows.template FourOf<0>())),
                                                FourEntries(entries, rows.template FourOf<1>()), 1);
    const __m256i high = _mm256_inserti128_si256(_mm256_castsi128_si256(FourEntries(entries, rows.template FourOf<2>())),
                                                 FourEntries(entries, rows.template FourOf<3>()), 1);
    return VU{_mm512_inserti64x4(_mm512_castsi256_si512(low), high, 1)};
#elif HWY_TARGET == HWY_AVX2
    return VU{_mm256_inserti128_si256(_mm256_castsi128_si256(FourEntries(entries, rows.template FourOf<0>())),
                                      FourEntries(entries, rows.template FourOf<1>()), 1)};
#else
    return VU{FourEntries(entries, rows.template FourOf<0>())};
#endif
}

#else

// The rows of a vector's lanes.
template <class VI>
class RowsOfVector
{
public:
    HWY_INLINE explicit RowsOfVector(VI rows) { hn::Store(rows, hn::DFromV<VI>(), m_rows); }

    HWY_INLINE std::size_t operator[](std::size_t lane) const { return static_cast<std::size_t>(m_rows[lane]); }

private:
    HWY_ALIGN std::int32_t m_rows[hn::MaxLanes(hn::DFromV<VI>())];
};

template <class T, class D, class Rows>
HWY_INLINE hn::VFromD<hn::RebindToUnsigned<D>> GatherBitsOf(D, void const* table, Rows const& rows)
{
    const hn::RebindToUnsigned<D> du;
    HWY_ALIGN std::uint32_t bits[hn::MaxLanes(D())];
    for (std::size_t i = 0; i < hn::Lanes(du); ++i)
    {
        T const entry = static_cast<T const*>(table)[rows[i]];
        if constexpr (sizeof(T) == 4)
            hwy::CopyBytes<4>(&entry, &bits[i]);
        else
            bits[i] = entry;
    }
    return hn::Load(du, bits);
}

#endif

template <class T, class D>
HWY_INLINE hn::VFromD<hn::RebindToUnsigned<D>> GatherBits(D d, void const* table, hn::VFromD<hn::RebindToSigned<D>> rows)
{
    return GatherBitsOf<T>(d, table, RowsOfVector<decltype(rows)>{rows});
}

// The rows of lanes are elements in memory that are so many bytes apart.
template <class Element, std::size_t kStep>
struct RowsInMemory
{
    const std::uint8_t* first;

    template <int kBlock>
    HWY_INLINE RowsInMemory FourOf() const
    {
        return {first + 4 * kBlock * kStep};
    }

    HWY_INLINE std::size_t operator[](std::size_t lane) const
    {
        Element row;
        hwy::CopyBytes<sizeof row>(first + lane * kStep, &row);
        return row;
    }
};

// The entry as a value.
template <class Entry, class D>
HWY_INLINE hn::VFromD<D> Gather(D d, void const* entries, hn::VFromD<hn::RebindToSigned<D>> rows)
{
    const auto bits = GatherBits<typename Entry::Type>(d, entries, rows);
    if constexpr (std::is_same_v<Entry, FloatEntry>)
        return hn::BitCast(d, bits);
    else if constexpr (std::is_same_v<Entry, HalfEntry>)
        return HalfBitsToFloat(d, bits);
    else
        return hn::ConvertTo(d, hn::BitCast(hn::RebindToSigned<D>(), bits));
}

// Codes, as integers in the places of the floats, as rows. Codes beyond the table, which 16-bit words of 10 and 12-bit formats may
// hold, take its last row; so does whatever an unused lane holds.
template <class D>
HWY_INLINE hn::VFromD<hn::RebindToSigned<D>> RowsOfCodes(D, hn::VFromD<D> codes, float lastRow)
{
    const hn::RebindToUnsigned<D> du;
    return hn::BitCast(hn::RebindToSigned<D>(), hn::Min(hn::BitCast(du, codes), hn::Set(du, static_cast<std::uint32_t>(lastRow))));
}

// The entries of the rows and of the rows behind them; both come with one access.
template <class D, class V>
HWY_INLINE void GatherNeighbours(D d, float const* entries, hn::VFromD<hn::RebindToSigned<D>> rows, V& entry, V& next)
{
#if TAVRIN_GATHER_X86
    const auto load = [&](std::uint64_t first, std::uint64_t second)
    {
        const __m128i v = _mm_loadl_epi64(reinterpret_cast<const __m128i*>(entries + first));
        return _mm_loadh_pi(_mm_castsi128_ps(v), reinterpret_cast<const __m64*>(entries + second));
    };
    // Rows 0 and 1, or 2 and 3, of each block of four lanes, so that the shuffles at the end stay within these.
    const auto two = [&](FourRows const& row, int i) { return load(row[i], row[i + 1]); };
#if HWY_TARGET == HWY_AVX3
    const auto eight = [&](int i)
    {
        const __m256 low =
            _mm256_insertf128_ps(_mm256_castps128_ps256(two(RowsOfBlock<0>(rows), i)), two(RowsOfBlock<1>(rows), i), 1);
        const __m256 high =
            _mm256_insertf128_ps(_mm256_castps128_ps256(two(RowsOfBlock<2>(rows), i)), two(RowsOfBlock<3>(rows), i), 1);
        return _mm512_insertf32x8(_mm512_castps256_ps512(low), high, 1);
    };
    const __m512 first = eight(0);
    const __m512 second = eight(2);
    entry = V{_mm512_shuffle_ps(first, second, 0x88)};
    next = V{_mm512_shuffle_ps(first, second, 0xdd)};
#elif HWY_TARGET == HWY_AVX2
    const auto four = [&](int i)
    { return _mm256_insertf128_ps(_mm256_castps128_ps256(two(RowsOfBlock<0>(rows), i)), two(RowsOfBlock<1>(rows), i), 1); };
    const __m256 first = four(0);
    const __m256 second = four(2);
    entry = V{_mm256_shuffle_ps(first, second, 0x88)};
    next = V{_mm256_shuffle_ps(first, second, 0xdd)};
#else
    const __m128 first = two(RowsOfBlock<0>(rows), 0);
    const __m128 second = two(RowsOfBlock<0>(rows), 2);
    entry = V{_mm_shuffle_ps(first, second, 0x88)};
    next = V{_mm_shuffle_ps(first, second, 0xdd)};
#endif
#else
    entry = Gather<FloatEntry>(d, entries, rows);
    next = Gather<FloatEntry>(d, entries + 1, rows);
#endif
    (void)d;
}

} // namespace Rendering::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif
