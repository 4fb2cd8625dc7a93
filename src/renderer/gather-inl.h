// Entries of tables for a vector of row numbers.
#if defined(TAVRIN_RENDERER_GATHER_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef TAVRIN_RENDERER_GATHER_INL_H
#undef TAVRIN_RENDERER_GATHER_INL_H
#else
#define TAVRIN_RENDERER_GATHER_INL_H
#endif

#include "renderer/CPULut1DOp.h"
#include "renderer/halfFloat-inl.h"

#include <hwy/highway.h>

#include <cstdint>

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

#if HWY_TARGET == HWY_AVX2 || HWY_TARGET == HWY_AVX3

// The processor gathers 32 bits from any address; what does not belong to the entry is masked off.
template <class T, class D, class VI>
HWY_INLINE hn::VFromD<hn::RebindToUnsigned<D>> GatherBits(D, void const* entries, VI row)
{
    const hn::RebindToUnsigned<D> du;
    const hn::RebindToSigned<D> di;
    constexpr int kShift = sizeof(T) == 1 ? 0 : sizeof(T) == 2 ? 1 : 2;
    const auto bits = hn::BitCast(du, hn::GatherOffset(di, static_cast<const std::int32_t*>(entries), hn::ShiftLeft<kShift>(row)));
    if constexpr (sizeof(T) == 4)
        return bits;
    else
        return hn::And(bits, hn::Set(du, (1U << (8 * sizeof(T))) - 1));
}

#else

template <class T, class D, class VI>
HWY_INLINE hn::VFromD<hn::RebindToUnsigned<D>> GatherBits(D, void const* entries, VI row)
{
    const hn::RebindToUnsigned<D> du;
    const hn::RebindToSigned<D> di;
    HWY_ALIGN std::int32_t rows[hn::MaxLanes(D())];
    HWY_ALIGN std::uint32_t bits[hn::MaxLanes(D())];
    hn::Store(row, di, rows);
    for (std::size_t i = 0; i < hn::Lanes(du); ++i)
    {
        T const entry = static_cast<T const*>(entries)[rows[i]];
        if constexpr (sizeof(T) == 4)
            hwy::CopyBytes<4>(&entry, &bits[i]);
        else
            bits[i] = entry;
    }
    return hn::Load(du, bits);
}

#endif

// The entry as a value.
template <class Entry, class D, class VI>
HWY_INLINE hn::VFromD<D> Gather(D d, void const* entries, VI row)
{
    const auto bits = GatherBits<typename Entry::Type>(d, entries, row);
    if constexpr (std::is_same_v<Entry, FloatEntry>)
        return hn::BitCast(d, bits);
    else if constexpr (std::is_same_v<Entry, HalfEntry>)
        return HalfBitsToFloat(d, bits);
    else
        return hn::ConvertTo(d, hn::BitCast(hn::RebindToSigned<D>(), bits));
}

// Both halves of a pair come with one access.
template <class D, class V, class VI>
HWY_INLINE void GatherPairs(D d, EntryPair const* pairs, VI row, V& difference, V& next)
{
#if HWY_TARGET == HWY_AVX3
    const __m256i low = _mm512_castsi512_si256(row.raw);
    const __m256i high = _mm512_extracti64x4_epi64(row.raw, 1);
    const __m512 first = _mm512_castpd_ps(_mm512_i32gather_pd(low, pairs, 8));
    const __m512 second = _mm512_castpd_ps(_mm512_i32gather_pd(high, pairs, 8));
    difference = hn::ConcatEven(d, V{second}, V{first});
    next = hn::ConcatOdd(d, V{second}, V{first});
#elif HWY_TARGET == HWY_AVX2
    double const* const base = reinterpret_cast<double const*>(pairs);
    const __m256 first = _mm256_castpd_ps(_mm256_i32gather_pd(base, _mm256_castsi256_si128(row.raw), 8));
    const __m256 second = _mm256_castpd_ps(_mm256_i32gather_pd(base, _mm256_extracti128_si256(row.raw, 1), 8));
    difference = hn::ConcatEven(d, V{second}, V{first});
    next = hn::ConcatOdd(d, V{second}, V{first});
#else
    HWY_ALIGN std::int32_t rows[hn::MaxLanes(D())];
    HWY_ALIGN float differences[hn::MaxLanes(D())];
    HWY_ALIGN float nexts[hn::MaxLanes(D())];
    hn::Store(row, hn::RebindToSigned<D>(), rows);
    for (std::size_t i = 0; i < hn::Lanes(d); ++i)
    {
        differences[i] = pairs[rows[i]].difference;
        nexts[i] = pairs[rows[i]].next;
    }
    difference = hn::Load(d, differences);
    next = hn::Load(d, nexts);
#endif
}

} // namespace Rendering::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif
