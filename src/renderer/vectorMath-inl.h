// Power, exponential and logarithm on vectors, by polynomials whose values are the same on every target.
#if defined(TAVRIN_RENDERER_VECTOR_MATH_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef TAVRIN_RENDERER_VECTOR_MATH_INL_H
#undef TAVRIN_RENDERER_VECTOR_MATH_INL_H
#else
#define TAVRIN_RENDERER_VECTOR_MATH_INL_H
#endif

#include "renderer/limit-inl.h"
#include "renderer/truncate-inl.h"

#include <hwy/highway.h>

#include <limits>

HWY_BEFORE_NAMESPACE();
namespace Rendering::HWY_NAMESPACE
{

namespace hn = hwy::HWY_NAMESPACE;

// The constant term of the exponential's polynomial.
inline constexpr float kExp2Constant = 1.0000026F;

// 2 to the power x, times what the polynomial's constant term is off its own. Exponents that have no place in a normal float are
// limited before the conversion to integer, whose result for them differs from target to target: at the limits the bits of the
// scale are those of zero and of infinity, which is what the power is below -126 and from 128 on. A NaN counts as the lower limit.
template <class D, class V = hn::VFromD<D>>
HWY_INLINE V LimitedExp2(D d, V x, V constantTerm)
{
    const hn::RebindToSigned<D> di;
    const V limited = AtMost(AtLeast(x, hn::Set(d, -126.5F)), hn::Set(d, 128.5F));
    // The integer part is one below for what is not at least 0, so that the fraction is in 0 to 1; for negative whole numbers it
    // is 1.
    const auto truncated = TruncateInRange(d, limited);
    const auto isNegative = hn::RebindMask(di, hn::Lt(limited, hn::Zero(d)));
    const auto integer = hn::IfThenElse(isNegative, hn::Sub(truncated, hn::Set(di, 1)), truncated);
    const V f = hn::Sub(limited, hn::ConvertTo(d, integer));

    V p = hn::Add(hn::Mul(hn::Set(d, 0.013534168F), f), hn::Set(d, 0.05201146F));
    p = hn::Add(hn::Mul(p, f), hn::Set(d, 0.24144275F));
    p = hn::Add(hn::Mul(p, f), hn::Set(d, 0.69300383F));
    p = hn::Add(hn::Mul(p, f), constantTerm);

    const V scale = hn::BitCast(d, hn::ShiftLeft<23>(hn::Add(integer, hn::Set(di, 127))));
    return hn::Mul(scale, p);
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
    return hn::IfThenElse(hn::Eq(x, x), LimitedExp2(d, x, hn::Set(d, kExp2Constant)), QuietNaN(d));
}

// The logarithm to base 2 of a positive, normal x: a polynomial of the mantissa in 1 to 2, plus the exponent. What it gives for
// other x means nothing, but is finite.
template <class D, class V = hn::VFromD<D>>
HWY_INLINE V Log2(D d, V x)
{
    const hn::RebindToUnsigned<D> du;
    const hn::RebindToSigned<D> di;
    const auto bits = hn::BitCast(du, x);
    const auto exponentField = hn::Set(du, 0x7f800000U);
    const V m = hn::BitCast(d, hn::Or(hn::AndNot(exponentField, bits), hn::Set(du, 0x3f800000U)));
    const auto exponent = hn::Sub(hn::BitCast(di, hn::ShiftRight<23>(hn::And(bits, exponentField))), hn::Set(di, 127));

    V p = hn::Sub(hn::Mul(hn::Set(d, 0.044873614F), m), hn::Set(d, 0.41656372F));
    p = hn::Add(hn::Mul(p, m), hn::Set(d, 1.6311488F));
    p = hn::Sub(hn::Mul(p, m), hn::Set(d, 3.550793F));
    p = hn::Add(hn::Mul(p, m), hn::Set(d, 5.091711F));
    p = hn::Sub(hn::Mul(p, m), hn::Set(d, 2.800364F));
    return hn::Add(p, hn::ConvertTo(d, exponent));
}

// x to the power e for x above 0; what it gives for other x means nothing. A NaN as exponent gives the quiet NaN, by way of the
// constant term, which does not cost anything where one exponent stands for many x.
template <class D, class V = hn::VFromD<D>>
HWY_INLINE V PowerOfPositive(D d, V x, float e)
{
    const float constantTerm = e == e ? kExp2Constant : std::numeric_limits<float>::quiet_NaN();
    return LimitedExp2(d, hn::Mul(hn::Set(d, e), Log2(d, x)), hn::Set(d, constantTerm));
}

// x to the power e; +0 for every x that is not above 0, NaN included.
template <class D, class V = hn::VFromD<D>>
HWY_INLINE V Power(D d, V x, float e)
{
    return hn::IfThenElseZero(hn::Gt(x, hn::Zero(d)), PowerOfPositive(d, x, e));
}
template <class D, class V = hn::VFromD<D>>
HWY_INLINE V Power(D d, V x, V e)
{
    return hn::IfThenElseZero(hn::Gt(x, hn::Zero(d)), Exp2(d, hn::Mul(e, Log2(d, x))));
}

} // namespace Rendering::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif
