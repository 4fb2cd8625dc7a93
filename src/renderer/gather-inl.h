// Entries of tables for a vector of row numbers, which come from memory: as many 32-bit integers as a vector of floats has lanes.
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

// Makes the compiler leave an array in memory. It would otherwise pull each element out of the vector that was stored there, which
// costs two to three instructions where a load costs one.
HWY_INLINE void KeepInMemory(void const* array)
{
#if HWY_COMPILER_GCC || HWY_COMPILER_CLANG
    asm volatile("" : : "r"(array) : "memory"); // NOLINT(hicpp-no-assembler)
#else
    (void)array;
#endif
}

#if HWY_TARGET != HWY_SCALAR && HWY_ARCH_X86

// Entries are loaded one by one into lanes. The gathers of the instruction sets are no faster than that at best, and with the
// microcode that keeps them from leaking data, which many processors run, less than half as fast.
template <class T>
HWY_INLINE __m128i FourEntries(T const* entries, std::int32_t const* row)
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

template <class T, class D>
HWY_INLINE hn::VFromD<hn::RebindToUnsigned<D>> GatherBits(D, void const* table, std::int32_t const* rows)
{
    using VU = hn::VFromD<hn::RebindToUnsigned<D>>;
    const auto four = [&](int i) { return FourEntries(static_cast<T const*>(table), rows + 4 * i); };
#if HWY_TARGET == HWY_AVX3
    const __m256i low = _mm256_inserti128_si256(_mm256_castsi128_si256(four(0)), four(1), 1);
    const __m256i high = _mm256_inserti128_si256(_mm256_castsi128_si256(four(2)), four(3), 1);
    return VU{_mm512_inserti64x4(_mm512_castsi256_si512(low), high, 1)};
#elif HWY_TARGET == HWY_AVX2
    return VU{_mm256_inserti128_si256(_mm256_castsi128_si256(four(0)), four(1), 1)};
#else
    return VU{four(0)};
#endif
}

#else

template <class T, class D>
HWY_INLINE hn::VFromD<hn::RebindToUnsigned<D>> GatherBits(D, void const* entries, std::int32_t const* rows)
{
    const hn::RebindToUnsigned<D> du;
    HWY_ALIGN std::uint32_t bits[hn::MaxLanes(D())];
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
template <class Entry, class D>
HWY_INLINE hn::VFromD<D> Gather(D d, void const* entries, std::int32_t const* rows)
{
    const auto bits = GatherBits<typename Entry::Type>(d, entries, rows);
    if constexpr (std::is_same_v<Entry, FloatEntry>)
        return hn::BitCast(d, bits);
    else if constexpr (std::is_same_v<Entry, HalfEntry>)
        return HalfBitsToFloat(d, bits);
    else
        return hn::ConvertTo(d, hn::BitCast(hn::RebindToSigned<D>(), bits));
}

// The same for rows in a register.
template <class Entry, class D, class VI>
requires(!std::is_pointer_v<VI>) HWY_INLINE hn::VFromD<D> Gather(D d, void const* entries, VI row)
{
    HWY_ALIGN std::int32_t rows[hn::MaxLanes(D())];
    hn::Store(row, hn::RebindToSigned<D>(), rows);
    KeepInMemory(rows);
    return Gather<Entry>(d, entries, static_cast<std::int32_t const*>(rows));
}

// Both halves of a pair come with one access.
template <class D, class V>
HWY_INLINE void GatherPairs(D d, EntryPair const* pairs, std::int32_t const* rows, V& difference, V& next)
{
#if HWY_TARGET != HWY_SCALAR && HWY_ARCH_X86
    double const* const base = reinterpret_cast<double const*>(pairs); // 64 bits alone are meant
    const auto two = [&](int i) { return _mm_loadh_pd(_mm_load_sd(base + rows[2 * i]), base + rows[2 * i + 1]); };
#if HWY_TARGET == HWY_AVX3
    const auto four = [&](int i) { return _mm256_insertf128_pd(_mm256_castpd128_pd256(two(2 * i)), two(2 * i + 1), 1); };
    const auto eight = [&](int i)
    { return V{_mm512_castpd_ps(_mm512_insertf64x4(_mm512_castpd256_pd512(four(2 * i)), four(2 * i + 1), 1))}; };
    const V low = eight(0);
    const V high = eight(1);
#elif HWY_TARGET == HWY_AVX2
    const auto four = [&](int i)
    { return V{_mm256_castpd_ps(_mm256_insertf128_pd(_mm256_castpd128_pd256(two(2 * i)), two(2 * i + 1), 1))}; };
    const V low = four(0);
    const V high = four(1);
#else
    const V low{_mm_castpd_ps(two(0))};
    const V high{_mm_castpd_ps(two(1))};
#endif
    difference = hn::ConcatEven(d, high, low);
    next = hn::ConcatOdd(d, high, low);
#else
    HWY_ALIGN float differences[hn::MaxLanes(D())];
    HWY_ALIGN float nexts[hn::MaxLanes(D())];
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
