// Powers on AVX-512, by the instructions that take floats apart and put them together. They serve the numbers that are met in
// pictures, and tell where there are others, for which those for any target are.
#if defined(TAVRIN_RENDERER_QUICK_POWER_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef TAVRIN_RENDERER_QUICK_POWER_INL_H
#undef TAVRIN_RENDERER_QUICK_POWER_INL_H
#else
#define TAVRIN_RENDERER_QUICK_POWER_INL_H
#endif

#include "renderer/several-inl.h"
#include "renderer/vectorMath-inl.h"

#include <hwy/highway.h>

#include <algorithm>
#include <limits>

HWY_BEFORE_NAMESPACE();
namespace Rendering::HWY_NAMESPACE
{

namespace hn = hwy::HWY_NAMESPACE;

#if HWY_TARGET <= HWY_AVX3
// The mantissa of x in 1 to 2; a NaN for those x that are below 0, or, if no x is so, anything.
template <bool kIsPositive, class D, class V>
HWY_INLINE V QuickMantissa(D d, V const& x)
{
    if constexpr (kIsPositive)
        return MantissaOfNormal(d, x);
    else
        return AtEach(
            [](auto v) HWY_ATTR { return hn::Vec512<float>{_mm512_getmant_ps(v.raw, _MM_MANT_NORM_1_2, _MM_MANT_SIGN_nan)}; }, x);
}

// Log2 by the instruction that tells an exponent: minus infinity for zeros, infinity for infinity, and a NaN for what is below
// zero, unless no x is so.
template <bool kIsPositive, class D, class V>
HWY_INLINE V QuickLog2(D d, V const& x)
{
    const V exponent = AtEach([](auto v) HWY_ATTR { return hn::Vec512<float>{_mm512_getexp_ps(v.raw)}; }, x);
    return wide::Add(Log2OfMantissa(d, QuickMantissa<kIsPositive>(d, x)), exponent);
}

// Whether any exponent has no quick power: it is up to the lowest, and yet neither minus infinity, nor a NaN, nor so low that its
// power is zero; or it is above, and its fraction is not.
template <class V>
HWY_INLINE bool IsAnyRare(V const& exponents, V const& fractions, float lowest)
{
    const float limit = lowest > kLowestExponent ? std::numeric_limits<float>::lowest() : lowest;
    __mmask16 areRare = 0;
    ForEach(
        [&](auto exponent, auto fraction) HWY_ATTR
        {
            const __mmask16 isAbove = _mm512_cmp_ps_mask(exponent.raw, _mm512_set1_ps(lowest), _CMP_GT_OQ);
            const __mmask16 isQuick = _mm512_mask_cmp_ps_mask(isAbove, fraction.raw, _mm512_setzero_ps(), _CMP_GT_OQ);
            const __mmask16 isOfNumber = _mm512_cmp_ps_mask(exponent.raw, _mm512_set1_ps(limit), _CMP_GE_OQ);
            areRare = static_cast<__mmask16>(areRare | (isOfNumber & ~isQuick));
        },
        exponents, fractions);
    return areRare != 0;
}

// A look at all exponents at once, which may find what is not there, but misses nothing that is rare. The fractions of those up to
// the lowest are the exponents themselves.
template <class D, class V>
HWY_INLINE bool MayAnyBeRare(D d, V const& exponents, V const& fractions)
{
    // Fractions from 2^-63 on have this bit, and so have minus infinity and a NaN; zero does not have it, nor has any number from
    // -2 to -2^64.
    const auto bit = hn::Set(d, 0x1p-63F);
    auto all = bit;
    ForEach([&](auto fraction) HWY_ATTR { all = hn::And(all, fraction); }, fractions);
    // As integers, floats from 0 on are in their order, with infinity after all numbers.
    const hn::RebindToSigned<D> di;
    auto greatest = hn::Zero(di);
    ForEach([&](auto exponent) HWY_ATTR { greatest = hn::Max(greatest, hn::BitCast(di, exponent)); }, exponents);
    const auto infinity = hn::BitCast(di, hn::Set(d, std::numeric_limits<float>::infinity()));
    const __mmask16 isBelow = _mm512_testn_epi32_mask(_mm512_castps_si512(all.raw), _mm512_castps_si512(bit.raw));
    const __mmask16 isInfinite = _mm512_cmpge_epi32_mask(greatest.raw, infinity.raw);
    return (isBelow | isInfinite) != 0;
}

// The least e for quick powers: those x that are below the normal numbers then have exponents below -2.
constexpr float kLeastQuickPower = 1.0F / 62.0F;

// The exponent of 2 for x to the power e, which is above 0. It means nothing for those x that are hardly ever met: infinity, and
// what is above 0 and below the normal numbers.
template <bool kIsPositive, class D, class V>
HWY_INLINE V QuickExponentOfPower(D d, V const& x, float e)
{
    return wide::Mul(hn::Set(d, e), QuickLog2<kIsPositive>(d, x));
}

// Exponents up to this one may be of those x, or their powers are below the normal numbers. The lesser e, the higher it lies.
HWY_INLINE float LowestQuickExponent(float e)
{
    return std::max(kLowestExponent, -125.0F * e);
}

// Gives the power from an exponent, if all are such that this is done quickly. They are not if x was as above, and where they are
// whole numbers.
template <class D, class V>
HWY_INLINE bool TryPowerOfExponent(D d, V const& exponents, float const& lowest, V& power)
{
    const auto areAbove = wide::Gt(exponents, hn::Set(d, lowest));
    const V fractions =
        AtEach([](auto isAbove, auto exponent, auto floor) HWY_ATTR
               { return hn::Vec512<float>{_mm512_mask_sub_ps(exponent.raw, isAbove.raw, exponent.raw, floor.raw)}; },
               areAbove, exponents, wide::Floor(exponents));
    power = AtEach([](auto isAbove, auto exponent, auto number) HWY_ATTR
                   { return hn::Vec512<float>{_mm512_maskz_scalef_ps(isAbove.raw, number.raw, exponent.raw)}; },
                   areAbove, exponents, Exp2OfFraction(d, fractions));
    return HWY_LIKELY(!MayAnyBeRare(d, exponents, fractions)) || !IsAnyRare(exponents, fractions, lowest);
}
#endif

} // namespace Rendering::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif
