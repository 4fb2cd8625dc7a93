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

#include <limits>

HWY_BEFORE_NAMESPACE();
namespace Rendering::HWY_NAMESPACE
{

namespace hn = hwy::HWY_NAMESPACE;

// The constant term of the exponential's polynomial.
inline constexpr float kExp2Constant = 1.0000026F;

// The polynomial of 2 to the power f, from 0 to 1.
template <class D, class V>
HWY_INLINE V Exp2OfFraction(D d, V f, hn::VFromD<D> constantTerm)
{
    V p = wide::Add(wide::Mul(hn::Set(d, 0.013534168F), f), hn::Set(d, 0.05201146F));
    p = wide::Add(wide::Mul(p, f), hn::Set(d, 0.24144275F));
    p = wide::Add(wide::Mul(p, f), hn::Set(d, 0.69300383F));
    return wide::Add(wide::Mul(p, f), constantTerm);
}

// 2 to the power x, times what the polynomial's constant term is off its own. Exponents that have no place in a normal float are
// limited before the conversion to integer, whose result for them differs from target to target: at the limits the bits of the
// scale are those of zero and of infinity, which is what the power is below -126 and from 128 on. A NaN counts as the lower limit.
template <class D, class V = hn::VFromD<D>>
HWY_INLINE V LimitedExp2(D d, V x, hn::VFromD<D> constantTerm)
{
    const hn::RebindToSigned<D> di;
    const V limited = AtMost(AtLeast(x, hn::Set(d, -126.5F)), hn::Set(d, 128.5F));
    // The integer part is one below for what is not at least 0, so that the fraction is in 0 to 1; for negative whole numbers it
    // is 1.
    const auto truncated = TruncateInRange(d, limited);
    const auto isNegative = wide::RebindMask(di, wide::Lt(limited, hn::Zero(d)));
    const auto integer = wide::Add(truncated, wide::VecFromMask(di, isNegative));
    const V p = Exp2OfFraction(d, wide::Sub(limited, wide::ConvertTo(d, integer)), constantTerm);
    const V scale = wide::BitCast(d, wide::ShiftLeft<23>(wide::Add(integer, hn::Set(di, 127))));
    return wide::Mul(scale, p);
}

#if HWY_TARGET <= HWY_AVX3
// Whether one of the numbers does not differ from its floor, or is a NaN.
template <class D, class V>
HWY_INLINE bool HasWhole(D d, V const& x, V const& floor)
{
    return !wide::AllFalse(d, AtEach([](auto number, auto below) HWY_ATTR
                                     { return hn::Mask512<float>{_mm512_cmp_ps_mask(number.raw, below.raw, _CMP_EQ_UQ)}; },
                                     x, floor));
}

HWY_INLINE __mmask16 WantedLanes()
{
    return 0xffff;
}
template <class V>
HWY_INLINE __mmask16 WantedLanes(V value, V limit)
{
    return _mm512_cmp_ps_mask(value.raw, limit.raw, _CMP_GT_OQ);
}

// x times 2 to the power of a whole number, where the sum of the exponents is above -126, and the value above the limit if there
// are these two; else zero.
template <class V, class... ValueAndLimit>
HWY_INLINE V ScaledWhereAbove(V const& x, V const& exponent, V const& floor, ValueAndLimit const&... valueAndLimit)
{
    return AtEach(
        [](auto number, auto e, auto whole, auto... condition) HWY_ATTR
        {
            const __mmask16 isWanted = WantedLanes(condition...);
            const __mmask16 isNormal = _mm512_mask_cmp_ps_mask(isWanted, e.raw, _mm512_set1_ps(-126.0F), _CMP_GT_OQ);
            return hn::Vec512<float>{_mm512_maskz_scalef_ps(isNormal, number.raw, whole.raw)};
        },
        x, exponent, floor, valueAndLimit...);
}
#endif

// LimitedExp2, or, with a value and a limit, LimitedExp2 where the value is above the limit and zero elsewhere.
template <class D, class V, class... ValueAndLimit>
HWY_INLINE V Exp2WhereAbove(D d, V const& x, hn::VFromD<D> constantTerm, ValueAndLimit const&... valueAndLimit)
{
#if HWY_TARGET <= HWY_AVX3
    if constexpr (sizeof(hn::VFromD<D>) == 64)
    {
        // Rounding down and scaling by a power of two are one instruction each, which knows overflow. Negative whole numbers,
        // infinity and NaN do not fit: they are among the numbers that do not differ from their floor.
        const V floor = wide::Floor(x);
        if (HWY_LIKELY(!HasWhole(d, x, floor)))
            return ScaledWhereAbove(Exp2OfFraction(d, wide::Sub(x, floor), constantTerm), x, floor, valueAndLimit...);
    }
#endif
    const V power = LimitedExp2(d, x, constantTerm);
    if constexpr (sizeof...(valueAndLimit) == 0)
        return power;
    else
        return wide::IfThenElseZero(wide::Gt(valueAndLimit...), power);
}

// The one NaN that these functions give.
template <class D, class V = hn::VFromD<D>>
HWY_INLINE V QuietNaN(D d)
{
    return hn::BitCast(d, hn::Set(hn::RebindToUnsigned<D>(), 0x7fc00000U));
}

// 2 to the power x. A NaN gives the quiet NaN.
template <class D, class V = hn::VFromD<D>>
HWY_INLINE V Exp2(D d, V x)
{
    return wide::IfThenElse(wide::Eq(x, x), Exp2WhereAbove(d, x, hn::Set(d, kExp2Constant)), QuietNaN(d));
}

// A polynomial of the mantissa in 1 to 2, plus the exponent, whose field is handed in with the bits of x above it cleared.
template <class D, class VU, class V = hn::VFromD<D>>
HWY_INLINE V Log2OfMantissaAndExponent(D d, V x, VU exponentBits)
{
    const hn::RebindToUnsigned<D> du;
    const hn::RebindToSigned<D> di;
    const VU mantissa = wide::AndNot(hn::Set(du, 0x7f800000U), wide::BitCast(du, x));
    const V m = wide::BitCast(d, wide::Or(mantissa, hn::Set(du, 0x3f800000U)));
    const auto exponent = wide::Sub(wide::BitCast(di, wide::ShiftRight<23>(exponentBits)), hn::Set(di, 127));

    V p = wide::Sub(wide::Mul(hn::Set(d, 0.044873614F), m), hn::Set(d, 0.41656372F));
    p = wide::Add(wide::Mul(p, m), hn::Set(d, 1.6311488F));
    p = wide::Sub(wide::Mul(p, m), hn::Set(d, 3.550793F));
    p = wide::Add(wide::Mul(p, m), hn::Set(d, 5.091711F));
    p = wide::Sub(wide::Mul(p, m), hn::Set(d, 2.800364F));
    return wide::Add(p, wide::ConvertTo(d, exponent));
}

// The logarithm to base 2 of a positive, normal x. What it gives for other x means nothing, but is finite.
template <class D, class V = hn::VFromD<D>>
HWY_INLINE V Log2(D d, V x)
{
    const hn::RebindToUnsigned<D> du;
    return Log2OfMantissaAndExponent(d, x, wide::And(wide::BitCast(du, x), hn::Set(du, 0x7f800000U)));
}

// The same where nobody asks for the logarithm of an x whose sign is set.
template <class D, class V = hn::VFromD<D>>
HWY_INLINE V Log2OfPositive(D d, V x)
{
    return Log2OfMantissaAndExponent(d, x, wide::BitCast(hn::RebindToUnsigned<D>(), x));
}

// x to the power e; what it gives for x that are not above 0 means nothing. With a value and a limit it is +0 where the value is
// not above the limit. A NaN as exponent gives the quiet NaN, by way of the constant term, which does not cost anything where one
// exponent stands for many x.
template <class D, class V, class... ValueAndLimit>
HWY_INLINE V PowerOfPositive(D d, V const& x, float e, ValueAndLimit const&... valueAndLimit)
{
    const float constantTerm = e == e ? kExp2Constant : std::numeric_limits<float>::quiet_NaN();
    const V exponent = wide::Mul(hn::Set(d, e), Log2OfPositive(d, x));
    return Exp2WhereAbove(d, exponent, hn::Set(d, constantTerm), valueAndLimit...);
}

// x to the power e; +0 for every x that is not above 0, NaN included.
template <class D, class V>
HWY_INLINE V Power(D d, V const& x, float e)
{
    return PowerOfPositive(d, x, e, x, hn::Zero(d));
}
template <class D, class V = hn::VFromD<D>>
HWY_INLINE V Power(D d, V x, V e)
{
    return wide::IfThenElseZero(wide::Gt(x, hn::Zero(d)), Exp2(d, wide::Mul(e, Log2OfPositive(d, x))));
}

} // namespace Rendering::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif
