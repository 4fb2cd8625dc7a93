// The angle of a point on vectors, with the same bits on every target.
#if defined(TAVRIN_RENDERER_ARC_TANGENT_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef TAVRIN_RENDERER_ARC_TANGENT_INL_H
#undef TAVRIN_RENDERER_ARC_TANGENT_INL_H
#else
#define TAVRIN_RENDERER_ARC_TANGENT_INL_H
#endif

#include "renderer/several-inl.h"

#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace Rendering::HWY_NAMESPACE
{

namespace hn = hwy::HWY_NAMESPACE;

// The arc tangent of 0 to 1. The polynomial is the minimax one of (atan(q) / q - 1) / q^2 in q^2 for the relative error of the arc
// tangent, found by the Remez exchange; it is off by less than 2^-28.5, so roundings decide the error.
template <class D, class V = hn::VFromD<D>>
HWY_INLINE V ArcTangentOfRatio(D d, V q)
{
    const V s = wide::Mul(q, q);
    V p = wide::Add(wide::Mul(hn::Set(d, -0.00179362089F), s), hn::Set(d, 0.0109146009F));
    p = wide::Add(wide::Mul(p, s), hn::Set(d, -0.0311778343F));
    p = wide::Add(wide::Mul(p, s), hn::Set(d, 0.0579575793F));
    p = wide::Add(wide::Mul(p, s), hn::Set(d, -0.0840344933F));
    p = wide::Add(wide::Mul(p, s), hn::Set(d, 0.109521854F));
    p = wide::Add(wide::Mul(p, s), hn::Set(d, -0.142642416F));
    p = wide::Add(wide::Mul(p, s), hn::Set(d, 0.199985483F));
    p = wide::Add(wide::Mul(p, s), hn::Set(d, -0.333332991F));
    return wide::Add(wide::Mul(wide::Mul(q, s), p), q);
}

// atan2 with its rules for signed zeros and infinities; a NaN gives the quiet NaN. Within 2 units in the last place of the exact
// angle.
template <class D, class V = hn::VFromD<D>>
HWY_INLINE V Atan2(D d, V y, V x)
{
    const hn::RebindToSigned<D> di;
    // Half of pi, as its nearest float and what that lacks.
    const auto halfPi = hn::Set(d, 1.57079637F);
    const auto halfPiRest = hn::Set(d, -4.37113883e-8F);

    // In the first octant the ratio is at most 1.
    const V width = wide::Abs(x);
    const V height = wide::Abs(y);
    const auto isSteep = wide::Gt(height, width);
    const V larger = wide::IfThenElse(isSteep, height, width);
    const V smaller = wide::IfThenElse(isSteep, width, height);
    V ratio = wide::IfThenZeroElse(wide::Eq(larger, hn::Zero(d)), wide::Div(smaller, larger));
    ratio = wide::IfThenElse(wide::Eq(smaller, hn::Inf(d)), hn::Set(d, 1.0F), ratio);
    const V angle = ArcTangentOfRatio(d, ratio);

    // The upper half plane: measured forwards or backwards from 0, half of pi or pi.
    const auto isLeft = wide::RebindMask(d, wide::Lt(wide::BitCast(di, x), hn::Zero(di))); // A negative zero is on the left.
    const V start = wide::IfThenElse(isSteep, halfPi, wide::IfThenElseZero(isLeft, wide::Add(halfPi, halfPi)));
    const V startRest = wide::IfThenElse(isSteep, halfPiRest, wide::IfThenElseZero(isLeft, wide::Add(halfPiRest, halfPiRest)));
    const V turned = wide::IfThenElse(wide::Xor(isSteep, isLeft), wide::Neg(angle), angle);
    const V magnitude = wide::Add(start, wide::Add(turned, startRest));

    const auto nan = hn::BitCast(d, hn::Set(di, 0x7fc00000));
    const auto isNumber = wide::And(wide::Eq(x, x), wide::Eq(y, y));
    return wide::IfThenElse(isNumber, wide::CopySign(magnitude, y), nan);
}

} // namespace Rendering::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif
