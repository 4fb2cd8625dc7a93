// The angle of a point on vectors, with the same bits on every target.
#if defined(TAVRIN_RENDERER_ARC_TANGENT_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef TAVRIN_RENDERER_ARC_TANGENT_INL_H
#undef TAVRIN_RENDERER_ARC_TANGENT_INL_H
#else
#define TAVRIN_RENDERER_ARC_TANGENT_INL_H
#endif

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
    const V s = hn::Mul(q, q);
    V p = hn::Set(d, -0.00179362089F);
    p = hn::Add(hn::Mul(p, s), hn::Set(d, 0.0109146009F));
    p = hn::Add(hn::Mul(p, s), hn::Set(d, -0.0311778343F));
    p = hn::Add(hn::Mul(p, s), hn::Set(d, 0.0579575793F));
    p = hn::Add(hn::Mul(p, s), hn::Set(d, -0.0840344933F));
    p = hn::Add(hn::Mul(p, s), hn::Set(d, 0.109521854F));
    p = hn::Add(hn::Mul(p, s), hn::Set(d, -0.142642416F));
    p = hn::Add(hn::Mul(p, s), hn::Set(d, 0.199985483F));
    p = hn::Add(hn::Mul(p, s), hn::Set(d, -0.333332991F));
    return hn::Add(hn::Mul(hn::Mul(q, s), p), q);
}

// atan2 with its rules for signed zeros and infinities; a NaN gives the quiet NaN. Within 2 units in the last place of the exact
// angle.
template <class D, class V = hn::VFromD<D>>
HWY_INLINE V Atan2(D d, V y, V x)
{
    const hn::RebindToSigned<D> di;
    // Half of pi, as its nearest float and what that lacks.
    const V halfPi = hn::Set(d, 1.57079637F);
    const V halfPiRest = hn::Set(d, -4.37113883e-8F);

    // In the first octant the ratio is at most 1.
    const V width = hn::Abs(x);
    const V height = hn::Abs(y);
    const auto isSteep = hn::Gt(height, width);
    const V larger = hn::IfThenElse(isSteep, height, width);
    const V smaller = hn::IfThenElse(isSteep, width, height);
    V ratio = hn::IfThenZeroElse(hn::Eq(larger, hn::Zero(d)), hn::Div(smaller, larger));
    ratio = hn::IfThenElse(hn::Eq(smaller, hn::Inf(d)), hn::Set(d, 1.0F), ratio);
    const V angle = ArcTangentOfRatio(d, ratio);

    // The upper half plane: measured forwards or backwards from 0, half of pi or pi.
    const auto isLeft = hn::RebindMask(d, hn::Lt(hn::BitCast(di, x), hn::Zero(di))); // A negative zero is on the left.
    const V start = hn::IfThenElse(isSteep, halfPi, hn::IfThenElseZero(isLeft, hn::Add(halfPi, halfPi)));
    const V startRest = hn::IfThenElse(isSteep, halfPiRest, hn::IfThenElseZero(isLeft, hn::Add(halfPiRest, halfPiRest)));
    const V turned = hn::IfThenElse(hn::Xor(isSteep, isLeft), hn::Neg(angle), angle);
    const V magnitude = hn::Add(start, hn::Add(turned, startRest));

    const V nan = hn::BitCast(d, hn::Set(di, 0x7fc00000));
    const auto isNumber = hn::And(hn::Eq(x, x), hn::Eq(y, y));
    return hn::IfThenElse(isNumber, hn::CopySign(magnitude, y), nan);
}

} // namespace Rendering::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif
