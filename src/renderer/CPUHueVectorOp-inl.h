// Kernels of the hue vector.
#if defined(TAVRIN_RENDERER_CPU_HUE_VECTOR_OP_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef TAVRIN_RENDERER_CPU_HUE_VECTOR_OP_INL_H
#undef TAVRIN_RENDERER_CPU_HUE_VECTOR_OP_INL_H
#else
#define TAVRIN_RENDERER_CPU_HUE_VECTOR_OP_INL_H
#endif

#include "renderer/CPUHueVectorOp.h"
#include "renderer/arcTangent-inl.h"

#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace Rendering::HWY_NAMESPACE
{

namespace hn = hwy::HWY_NAMESPACE;

// A pixel as its luma and a point of the chroma plane: red lies on the first axis, yellow 60 degrees from it. Hues within the range
// have the point scaled; the weight follows a uniform cubic B-spline over the range's quarters, without its first quarter.
template <bool kIsReverse>
struct HueVector : HueVectorParameters
{
    // From the range's start, in quarters: the hue's distance lies in 1 to 4 where there is a weight.
    template <class D, class V>
    HWY_INLINE V Place(D d, V y, V x) const
    {
        const V pi = hn::Set(d, 3.1415927F);
        const V twoPi = hn::Set(d, 6.2831855F);
        V distance = hn::Sub(Atan2(d, y, x), hn::Set(d, center));
        distance = hn::IfThenElse(hn::Lt(distance, hn::Neg(pi)), hn::Add(distance, twoPi), distance);
        distance = hn::IfThenElse(hn::Gt(distance, pi), hn::Sub(distance, twoPi), distance);
        return hn::Add(hn::Mul(distance, hn::Set(d, widthScale)), hn::Set(d, 2.0F));
    }

    // The spline's piece that belongs to the place, which is in 1 to 4.
    template <class D, class V>
    HWY_INLINE V Weight(D d, V place) const
    {
        const auto isFirst = hn::Lt(place, hn::Set(d, 2.0F));
        const auto isSecond = hn::Lt(place, hn::Set(d, 3.0F));
        const auto pick = [&](float first, float second, float third) HWY_ATTR
        { return hn::IfThenElse(isFirst, hn::Set(d, first), hn::IfThenElse(isSecond, hn::Set(d, second), hn::Set(d, third))); };

        const V f = hn::Sub(place, pick(1.0F, 2.0F, 3.0F));
        V spline = hn::Add(hn::Mul(pick(-0.75F, 0.75F, -0.25F), f), pick(0.75F, -1.5F, 0.75F));
        spline = hn::Add(hn::Mul(spline, f), pick(0.75F, 0.0F, -0.75F));
        spline = hn::Add(hn::Mul(spline, f), pick(0.25F, 1.0F, 0.25F));
        return hn::Add(hn::Mul(spline, hn::Set(d, amountGain)), hn::Set(d, 1.0F));
    }

    template <class D, class V>
    HWY_INLINE void operator()(D d, V& r, V& g, V& b, V& a) const
    {
        const V scale = hn::Set(d, depthScale);
        const V y = hn::Mul(hn::Sub(g, b), hn::Set(d, 0.4330127F));
        const V luma = hn::Mul(hn::Add(hn::Add(r, g), b), hn::Set(d, 0.33333334F));
        const V x = hn::Sub(hn::Mul(r, hn::Set(d, 0.5F)), hn::Mul(hn::Add(g, b), hn::Set(d, 0.25F)));

        // Compared as it stands: a NaN and places beyond the integers are outside.
        const V place = Place(d, y, x);
        const auto isInside = hn::And(hn::Ge(place, hn::Set(d, 1.0F)), hn::Lt(place, hn::Set(d, 4.0F)));
        const V weight = Weight(d, place);
        const V weightedX = kIsReverse ? hn::Div(x, weight) : hn::Mul(x, weight);
        const V weightedY = kIsReverse ? hn::Div(y, weight) : hn::Mul(y, weight);

        const V red = hn::Add(hn::Mul(hn::Set(d, 1.3333334F), weightedX), luma);
        const V m = hn::Add(hn::Mul(hn::Set(d, -0.6666667F), weightedX), luma);
        const V n = hn::Mul(weightedY, hn::Set(d, 1.1547005F));
        r = hn::Mul(hn::IfThenElse(isInside, red, r), scale);
        g = hn::Mul(hn::IfThenElse(isInside, hn::Add(m, n), g), scale);
        b = hn::Mul(hn::IfThenElse(isInside, hn::Sub(m, n), b), scale);
        a = hn::Mul(a, scale);
    }
};

using HueVectorFwd = HueVector<false>;
using HueVectorRev = HueVector<true>;

} // namespace Rendering::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif
