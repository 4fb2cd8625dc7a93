// Power, exponential and logarithm on vectors, by polynomials whose values are the same on every target.
#if defined(TAVRIN_RENDERER_VECTOR_MATH_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef TAVRIN_RENDERER_VECTOR_MATH_INL_H
#undef TAVRIN_RENDERER_VECTOR_MATH_INL_H
#else
#define TAVRIN_RENDERER_VECTOR_MATH_INL_H
#endif

#include "renderer/limit-inl.h"
#include "renderer/several-inl.h"
#include "renderer/truncate-inl.h"

#include <hwy/highway.h>

#include <array>
#include <cstddef>
#include <limits>

HWY_BEFORE_NAMESPACE();
namespace Rendering::HWY_NAMESPACE
{

namespace hn = hwy::HWY_NAMESPACE;

// The one NaN that these functions give.
template <class D, class V = hn::VFromD<D>>
HWY_INLINE V QuietNaN(D d)
{
    return hn::BitCast(d, hn::Set(hn::RebindToUnsigned<D>(), 0x7fc00000U));
}

// Polynomials, by their coefficients from that of the highest power on: 2 to the power f, from 0 to 1, and the logarithm to base 2
// of a mantissa, from 1 to 2.
constexpr std::array kExp2OfFraction = {0.013534168F, 0.05201146F, 0.24144275F, 0.69300383F, 1.0000026F};
constexpr std::array kLog2OfMantissa = {0.044873614F, -0.41656372F, 1.6311488F, -3.550793F, 5.091711F, -2.800364F};

template <class D, class V, std::size_t kCount>
HWY_INLINE V Polynomial(D d, std::array<float, kCount> const& coefficients, V const& x)
{
    V p = wide::Add(wide::Mul(hn::Set(d, coefficients[0]), x), hn::Set(d, coefficients[1]));
    for (std::size_t i = 2; i < kCount; ++i)
        p = wide::Add(wide::Mul(p, x), hn::Set(d, coefficients[i]));
    return p;
}

// Up to this exponent of 2 powers are zero.
constexpr float kLowestExponent = -126.0F;

// Exponents that have no place in a normal float become -126.5 or 128.5, whose powers are made of the bits of zero and of infinity:
// that is what the power is below -126 and from 128 on. A NaN counts as the lower limit.
template <class D, class V>
HWY_INLINE V Limited(D d, V const& x)
{
    return AtMost(AtLeast(x, hn::Set(d, -126.5F)), hn::Set(d, 128.5F));
}

// 2 to the power x, for every x but a NaN.
template <class D, class V>
HWY_INLINE V LimitedExp2(D d, V const& x)
{
    const hn::RebindToSigned<D> di;
    const V limited = Limited(d, x);
    // The integer part is one below for what is not at least 0, so that the fraction is in 0 to 1; for negative whole numbers it
    // is 1.
    const auto truncated = TruncateInRange(d, limited);
    const auto isNegative = wide::RebindMask(di, wide::Lt(limited, hn::Zero(d)));
    const auto integer = wide::Add(truncated, wide::VecFromMask(di, isNegative));
    const V p = Polynomial(d, kExp2OfFraction, wide::Sub(limited, wide::ConvertTo(d, integer)));
    const V scale = wide::BitCast(d, wide::ShiftLeft<23>(wide::Add(integer, hn::Set(di, 127))));
    return wide::Mul(scale, p);
}

#if HWY_TARGET <= HWY_AVX2
// Whether none is below 2^-63, of numbers from 0 to 1: from there on all have this bit, and so has a NaN.
template <class D, class V>
HWY_INLINE bool AreAboveZero(D d, V const& x)
{
    const hn::RebindToUnsigned<D> du;
    const auto bit = hn::Set(du, 1U << 29);
    auto all = bit;
    ForEach([&](auto number) HWY_ATTR { all = hn::And(all, hn::BitCast(du, number)); }, x);
    return hn::AllTrue(du, hn::Eq(all, bit));
}

// The integer part as above, as a float.
template <class D, class V>
HWY_INLINE V IntegerPart(D d, V const& x)
{
    const V floor = wide::Floor(x);
    const auto isNegativeWhole = wide::And(wide::Eq(x, floor), wide::Lt(x, hn::Zero(d)));
    return wide::Sub(floor, wide::IfThenElseZero(isNegativeWhole, hn::Set(d, 1.0F)));
}
#endif

#if HWY_TARGET <= HWY_AVX3
// Whether all numbers are above their floors. Whole numbers, infinity and NaN are not.
template <class V>
HWY_INLINE bool AreAboveFloors(V const& x, V const& floor)
{
    __mmask16 areAbove = 0xffff;
    ForEach([&](auto number, auto below) HWY_ATTR
            { areAbove = _mm512_mask_cmp_ps_mask(areAbove, number.raw, below.raw, _CMP_GT_OQ); },
            x, floor);
    return areAbove == 0xffff;
}

// Whether the floors are the integer parts of all numbers: also of whole ones from 0 on.
template <class D, class V>
HWY_INLINE bool AreFloorsIntegerParts(D d, V const& x, V const& floor)
{
    bool areAll = true;
    ForEach(
        [&](auto number, auto below) HWY_ATTR
        {
            const auto isSmall = hn::And(hn::Ge(number, hn::Zero(d)), hn::Lt(number, hn::Set(d, 128.0F)));
            areAll = areAll & hn::AllTrue(d, hn::Or(hn::Gt(number, below), isSmall));
        },
        x, floor);
    return areAll;
}

// A number times 2 to the power of the exponent's floor.
template <class V>
HWY_INLINE V Scaled(V const& numbers, V const& exponents)
{
    return AtEach([](auto number, auto exponent) HWY_ATTR { return hn::Vec512<float>{_mm512_scalef_ps(number.raw, exponent.raw)}; },
                  numbers, exponents);
}

// The same, or zero where the exponent is up to the lowest.
template <class V>
HWY_INLINE V ScaledIfNormal(V const& numbers, V const& exponents)
{
    return AtEach(
        [](auto number, auto exponent) HWY_ATTR
        {
            const __mmask16 isNormal = _mm512_cmp_ps_mask(exponent.raw, _mm512_set1_ps(kLowestExponent), _CMP_GT_OQ);
            return hn::Vec512<float>{_mm512_maskz_scalef_ps(isNormal, number.raw, exponent.raw)};
        },
        numbers, exponents);
}

// Rounding down and scaling by a power of two are one instruction each, which knows overflow. They do not fit for negative whole
// numbers, infinity and NaN.
template <class D, class V>
HWY_INLINE V QuickExp2(D d, V const& x)
{
    const V floor = wide::Floor(x);
    V fraction = wide::Sub(x, floor);
    V exponent = x;
    if (HWY_UNLIKELY(!AreAboveFloors(x, floor)) && !AreFloorsIntegerParts(d, x, floor))
    {
        const V limited = Limited(d, x);
        const V integer = IntegerPart(d, limited);
        fraction = wide::Sub(limited, integer);
        exponent = wide::Add(integer, hn::Set(d, 0.5F)); // Whose floor is the integer, though it be -127.
        const auto isNumber = wide::Eq(x, x);
        fraction = wide::IfThenElse(isNumber, fraction, QuietNaN(d));
        exponent = wide::IfThenElse(isNumber, exponent, hn::Zero(d));
    }
    return ScaledIfNormal(Polynomial(d, kExp2OfFraction, fraction), exponent);
}
#elif HWY_TARGET <= HWY_AVX2
// LimitedExp2 with a few instructions less, and with some more where there is a whole number.
template <class D, class V>
HWY_INLINE V QuickExp2(D d, V const& x)
{
    const V limited = Limited(d, x);
    V integer = wide::Floor(limited);
    if (HWY_UNLIKELY(!AreAboveZero(d, wide::Sub(limited, integer))))
        integer = IntegerPart(d, limited);
    const V p = Polynomial(d, kExp2OfFraction, wide::Sub(limited, integer));
    // In floats around 1.5 * 2^23 the last bits are those of an integer.
    const V sum = wide::Add(integer, hn::Set(d, 12582912.0F + 127.0F));
    return wide::Mul(wide::BitCast(d, wide::ShiftLeft<23>(wide::BitCast(hn::RebindToUnsigned<D>(), sum))), p);
}
#endif

// 2 to the power x. A NaN gives the quiet NaN.
template <class D, class V>
HWY_INLINE V Exp2(D d, V const& x)
{
#if HWY_TARGET <= HWY_AVX3
    if constexpr (sizeof(hn::VFromD<D>) == 64)
        return QuickExp2(d, x);
#endif
    return wide::IfThenElse(wide::Eq(x, x), LimitedExp2(d, x), QuietNaN(d));
}

// The mantissa of a positive, normal x, in 1 to 2.
template <class D, class V>
HWY_INLINE V MantissaOfNormal(D d, V const& x)
{
    return wide::Or(wide::AndNot(hn::Set(d, std::numeric_limits<float>::infinity()), x), hn::Set(d, 1.0F));
}

// The logarithm to base 2 of x from that of its mantissa.
template <class D, class V>
HWY_INLINE V PlusExponent(D d, V const& x, V const& mantissa, V const& log2OfMantissa)
{
    const hn::RebindToSigned<D> di;
    // What the mantissa lacks of the bits is the exponent times 2^23. Its product is exact, so that a fused addition, where there
    // is one, gives the same sum as any.
    const V exponent = wide::ConvertTo(d, wide::Sub(wide::BitCast(di, x), wide::BitCast(di, mantissa)));
    return wide::MulAdd(exponent, hn::Set(d, 0x1p-23F), log2OfMantissa);
}

// The logarithm to base 2 of a positive, normal x. What it gives for other x means nothing, but is finite.
template <class D, class V>
HWY_INLINE V Log2(D d, V const& x)
{
    const V mantissa = MantissaOfNormal(d, x);
    return PlusExponent(d, x, mantissa, Polynomial(d, kLog2OfMantissa, mantissa));
}

// The exponent of 2 for x to the power e, from the logarithm of x; where x is not above 0, one whose power is zero, or, if no x is
// so, anything.
template <bool kIsPositive, class D, class V>
HWY_INLINE V ExponentOfPower(D d, V const& x, V const& log2, float e)
{
    const V exponent = wide::Mul(hn::Set(d, e), log2);
    if constexpr (kIsPositive)
        return exponent;
    else
        return wide::IfThenElse(wide::Gt(x, hn::Zero(d)), exponent, hn::Set(d, -126.5F));
}

// The power from that. A NaN as e gives the quiet NaN. Exponents are hardly ever whole numbers: the logarithm of 1 is a bit off 0.
template <class D, class V>
HWY_INLINE V PowerOfExponent(D d, V const& exponent, float e)
{
    if (HWY_UNLIKELY(e != e))
        return wide::IfThenElseZero(wide::Gt(exponent, hn::Set(d, kLowestExponent)), QuietNaN(d));
#if HWY_TARGET <= HWY_AVX2 && HWY_TARGET > HWY_AVX3
    return QuickExp2(d, exponent);
#else
    return LimitedExp2(d, exponent);
#endif
}

// x to the power e; +0 for every x that is not above 0, NaN included.
template <class D, class V = hn::VFromD<D>>
HWY_INLINE V Power(D d, V x, V e)
{
    return wide::IfThenElseZero(wide::Gt(x, hn::Zero(d)), Exp2(d, wide::Mul(e, Log2(d, x))));
}

} // namespace Rendering::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif
