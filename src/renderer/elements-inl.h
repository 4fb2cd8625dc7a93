// Elements of pixels in memory as floats, and back.
#if defined(TAVRIN_RENDERER_ELEMENTS_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef TAVRIN_RENDERER_ELEMENTS_INL_H
#undef TAVRIN_RENDERER_ELEMENTS_INL_H
#else
#define TAVRIN_RENDERER_ELEMENTS_INL_H
#endif

#include "renderer/cacheLine.h"
#include "renderer/gather-inl.h"
#include "renderer/halfFloat-inl.h"
#include "renderer/limit-inl.h"
#include "renderer/transpose-inl.h"
#include "renderer/truncate-inl.h"

#include <hwy/cache_control.h>
#include <hwy/highway.h>

#include <cstddef>
#include <cstdint>
#include <type_traits>

HWY_BEFORE_NAMESPACE();
namespace Rendering::HWY_NAMESPACE
{

namespace hn = hwy::HWY_NAMESPACE;

// Whether codes below 0 become 0 as 32-bit integers are packed.
#undef TAVRIN_PACKS_SATURATE
#if HWY_TARGET != HWY_SCALAR && HWY_ARCH_X86
#define TAVRIN_PACKS_SATURATE 1
#else
#define TAVRIN_PACKS_SATURATE 0
#endif

// As many elements as a vector of floats has lanes.
template <class T>
using Narrow = hn::VFromD<hn::Rebind<T, D>>;

// Elements of T in the low bits of 32-bit lanes.
template <class T>
HWY_INLINE VU Widen(Narrow<T> narrow)
{
    return hn::PromoteTo(DU(), narrow);
}

template <bool kStream>
HWY_INLINE void StoreVector(V v, float* p)
{
    const D d;
    if constexpr (kStream)
        hn::Stream(v, d, p);
    else
        hn::StoreU(v, d, p);
}

// Asks for a line of the cache. Beside a destination that streams the source is read once as well, and leaves what else is cached
// alone.
template <bool kStream>
HWY_INLINE void Prefetch(const std::uint8_t* p)
{
#if HWY_ARCH_X86
    if constexpr (kStream)
        return _mm_prefetch(reinterpret_cast<const char*>(p), _MM_HINT_NTA);
#endif
    hwy::Prefetch(p);
}

HWY_INLINE void PrefetchIntoSecondLevel(const std::uint8_t* p)
{
#if HWY_ARCH_X86
    _mm_prefetch(reinterpret_cast<const char*>(p), _MM_HINT_T1);
#else
    hwy::Prefetch(p);
#endif
}

// Unsigned integers of 8 or 16 bits; kMax is the depth's highest code.
template <class T, unsigned int kMax>
struct IntegerElement
{
    using Type = T;
    using Entry = std::conditional_t<sizeof(T) == 1, ByteEntry, ShortEntry>;
    static constexpr float kFullSignal = static_cast<float>(kMax);

    static HWY_INLINE V ToFloat(VU codes) { return hn::ConvertTo(D(), hn::BitCast(DI(), codes)); }

    // Codes for PackBytes or PackShorts where there are these: what they pack as 0, a NaN too, may come out below 0.
    static HWY_INLINE VU FromFloat(V value)
    {
        const D d;
        const V rounded = hn::Add(value, hn::Set(d, 0.5F));
        const V maximum = hn::Set(d, kFullSignal);
#if TAVRIN_TRANSPOSE_AVX512
        // The minimum, by a comparison, since the processor has something else to do where it takes minima.
        const __mmask16 isBelow = _mm512_cmp_ps_mask(rounded.raw, maximum.raw, _CMP_NGE_UQ);
        return VU{_mm512_mask_cvttps_epi32(TruncateInRange(d, maximum).raw, isBelow, rounded.raw)};
#elif TAVRIN_PACKS_SATURATE
        return hn::BitCast(DU(), TruncateInRange(d, AtMost(maximum, rounded)));
#else
        return hn::BitCast(DU(), TruncateInRange(d, ClampToCodes(d, rounded, maximum)));
#endif
    }
};

struct FloatElement
{
    using Type = float;
    using Entry = FloatEntry;
    static constexpr float kFullSignal = 1.0F;
};

struct HalfElement
{
    using Type = std::uint16_t;
    using Entry = HalfEntry;
    static constexpr float kFullSignal = 1.0F;

    static HWY_INLINE V ToFloat(VU codes) { return HalfBitsToFloat(D(), codes); }
    static HWY_INLINE VU FromFloat(V value) { return FloatToHalfBits(D(), value); }
};

using Element_8i = IntegerElement<std::uint8_t, 255>;
using Element_10i = IntegerElement<std::uint16_t, 1023>;
using Element_12i = IntegerElement<std::uint16_t, 4095>;
using Element_16i = IntegerElement<std::uint16_t, 65535>;
using Element_16f = HalfElement;
using Element_32f = FloatElement;

#if TAVRIN_PACKS_SATURATE

using Bytes = hn::VFromD<hn::Repartition<std::uint8_t, D>>;
using Shorts = hn::VFromD<hn::Repartition<std::uint16_t, D>>;

// In each block of 128 bits: those of the first vector, then those of the next. Codes that the elements cannot hold become the
// nearest that they can.
HWY_INLINE Bytes PackBytes(VU v0, VU v1, VU v2, VU v3)
{
    const DI di;
    const hn::Repartition<std::int16_t, D> di16;
    const auto low = hn::ReorderDemote2To(di16, hn::BitCast(di, v0), hn::BitCast(di, v1));
    const auto high = hn::ReorderDemote2To(di16, hn::BitCast(di, v2), hn::BitCast(di, v3));
#if TAVRIN_TRANSPOSE_AVX512
    return Bytes{_mm512_packus_epi16(low.raw, high.raw)};
#elif HWY_TARGET == HWY_AVX2
    return Bytes{_mm256_packus_epi16(low.raw, high.raw)};
#else
    return Bytes{_mm_packus_epi16(low.raw, high.raw)};
#endif
}

HWY_INLINE Shorts PackShorts(VU v0, VU v1)
{
#if TAVRIN_TRANSPOSE_AVX512
    return Shorts{_mm512_packus_epi32(v0.raw, v1.raw)};
#elif HWY_TARGET == HWY_AVX2
    return Shorts{_mm256_packus_epi32(v0.raw, v1.raw)};
#else
    return Shorts{_mm_packus_epi32(v0.raw, v1.raw)};
#endif
}

// All of the first vector, then all of the next.
HWY_INLINE Bytes BytesInOrder(VU v0, VU v1, VU v2, VU v3)
{
    const Bytes bytes = PackBytes(v0, v1, v2, v3);
#if TAVRIN_TRANSPOSE_AVX512
    const __m512i places = _mm512_setr_epi32(0, 4, 8, 12, 1, 5, 9, 13, 2, 6, 10, 14, 3, 7, 11, 15);
    return Bytes{_mm512_permutexvar_epi32(places, bytes.raw)};
#elif HWY_TARGET == HWY_AVX2
    return Bytes{_mm256_permutevar8x32_epi32(bytes.raw, _mm256_setr_epi32(0, 4, 1, 5, 2, 6, 3, 7))};
#else
    return bytes;
#endif
}

HWY_INLINE Shorts ShortsInOrder(VU v0, VU v1)
{
    const Shorts shorts = PackShorts(v0, v1);
#if TAVRIN_TRANSPOSE_AVX512
    return Shorts{_mm512_permutexvar_epi64(_mm512_setr_epi64(0, 2, 4, 6, 1, 3, 5, 7), shorts.raw)};
#elif HWY_TARGET == HWY_AVX2
    return Shorts{_mm256_permute4x64_epi64(shorts.raw, 0xd8)};
#else
    return shorts;
#endif
}

#endif

} // namespace Rendering::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif
