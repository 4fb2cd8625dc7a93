// Power, exponential and logarithm on vectors, by polynomials whose values are the same on every target.
#if defined(TAVRIN_RENDERER_VECTOR_MATH_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef TAVRIN_RENDERER_VECTOR_MATH_INL_H
#undef TAVRIN_RENDERER_VECTOR_MATH_INL_H
#else
#define TAVRIN_RENDERER_VECTOR_MATH_INL_H
#endif

#include "renderer/truncate-inl.h"

#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace Rendering::HWY_NAMESPACE
{

namespace hn = hwy::HWY_NAMESPACE;

// 2 to the power x. Exponents that have no place in a normal float are decided before the conversion to integer, whose result for
// them differs from target to target: above 127 infinity, below -126 zero. A NaN gives the quiet NaN.
template <class D, class V = hn::VFromD<D>>
HWY_INLINE V Exp2(D d, V x)
{
    const hn::RebindToSigned<D> di;
    // The integer part is one below for what is not at least 0, so that the fraction is in 0 to 1; for negative whole numbers it
    // is 1.
    const V lowest = hn::Set(d, -200.0F);
    const V highest = hn::Set(d, 200.0F);
    V limited = hn::IfThenElse(hn::Gt(x, lowest), x, lowest); // NaN becomes the limit
    limited = hn::IfThenElse(hn::Lt(limited, highest), limited, highest);
    const auto notNegative = hn::Ge(limited, hn::Zero(d));
    const auto truncated = TruncateInRange(d, limited);
    const auto integer = hn::Add(truncated, hn::IfThenElseZero(hn::Not(hn::RebindMask(di, notNegative)), hn::Set(di, -1)));
    const V whole = hn::ConvertTo(d, integer);
    const V f = hn::Sub(limited, whole);

    V p = hn::Add(hn::Mul(hn::Set(d, 0.013534168F), f), hn::Set(d, 0.05201146F));
    p = hn::Add(hn::Mul(p, f), hn::Set(d, 0.24144275F));
    p = hn::Add(hn::Mul(p, f), hn::Set(d, 0.69300383F));
    p = hn::Add(hn::Mul(p, f), hn::Set(d, 1.0000026F));

    const V scale = hn::BitCast(d, hn::ShiftLeft<23>(hn::Add(integer, hn::Set(di, 127))));
    V result = hn::Mul(scale, p);
    result = hn::IfThenZeroElse(hn::Lt(whole, hn::Set(d, -126.0F)), result);
    result = hn::IfThenElse(hn::Gt(whole, hn::Set(d, 127.0F)), hn::Inf(d), result);
    const V nan = hn::BitCast(d, hn::Set(hn::RebindToUnsigned<D>(), 0x7fc00000U));
    return hn::IfThenElse(hn::Eq(x, x), result, nan);
}

// The logarithm to base 2 of a positive, normal x: a polynomial of the mantissa in 1 to 2, plus the exponent.
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

// x to the power e; +0 for every x that is not above 0, NaN included.
template <class D, class V = hn::VFromD<D>>
HWY_INLINE V Power(D d, V x, V e)
{
    return hn::IfThenElseZero(hn::Gt(x, hn::Zero(d)), Exp2(d, hn::Mul(e, Log2(d, x))));
}

} // namespace Rendering::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif
