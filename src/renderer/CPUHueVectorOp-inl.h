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
    static constexpr std::size_t kVectors = 4;

    // From the range's start, in quarters: the hue's distance lies in 1 to 4 where there is a weight.
    template <class D, class V>
    HWY_INLINE V Place(D d, V y, V x) const
    {
        const auto pi = hn::Set(d, 3.1415927F);
        const auto twoPi = hn::Set(d, 6.2831855F);
        V distance = wide::Sub(Atan2(d, y, x), hn::Set(d, center));
        distance = wide::IfThenElse(wide::Lt(distance, wide::Neg(pi)), wide::Add(distance, twoPi), distance);
        distance = wide::IfThenElse(wide::Gt(distance, pi), wide::Sub(distance, twoPi), distance);
        return wide::Add(wide::Mul(distance, hn::Set(d, widthScale)), hn::Set(d, 2.0F));
    }

    // The spline's piece that belongs to the place, which is in 1 to 4.
    template <class D, class V>
    HWY_INLINE V Weight(D d, V place) const
    {
        const auto isFirst = wide::Lt(place, hn::Set(d, 2.0F));
        const auto isSecond = wide::Lt(place, hn::Set(d, 3.0F));
        const auto pick = [&](float first, float second, float third) HWY_ATTR
        { return wide::IfThenElse(isFirst, hn::Set(d, first), wide::IfThenElse(isSecond, hn::Set(d, second), hn::Set(d, third))); };

        const V f = wide::Sub(place, pick(1.0F, 2.0F, 3.0F));
        V spline = wide::Add(wide::Mul(pick(-0.75F, 0.75F, -0.25F), f), pick(0.75F, -1.5F, 0.75F));
        spline = wide::Add(wide::Mul(spline, f), pick(0.75F, 0.0F, -0.75F));
        spline = wide::Add(wide::Mul(spline, f), pick(0.25F, 1.0F, 0.25F));
        return wide::Add(wide::Mul(spline, hn::Set(d, amountGain)), hn::Set(d, 1.0F));
    }

    template <class D, class V>
    HWY_INLINE void operator()(D d, V& r, V& g, V& b, V& a) const
    {
        const auto scale = hn::Set(d, depthScale);
        const V y = wide::Mul(wide::Sub(g, b), hn::Set(d, 0.4330127F));
        const V luma = wide::Mul(wide::Add(wide::Add(r, g), b), hn::Set(d, 0.33333334F));
        const V x = wide::Sub(wide::Mul(r, hn::Set(d, 0.5F)), wide::Mul(wide::Add(g, b), hn::Set(d, 0.25F)));

        // Compared as it stands: a NaN and places beyond the integers are outside.
        const V place = Place(d, y, x);
        const auto isInside = wide::And(wide::Ge(place, hn::Set(d, 1.0F)), wide::Lt(place, hn::Set(d, 4.0F)));
        const V weight = Weight(d, place);
        const V weightedX = kIsReverse ? wide::Div(x, weight) : wide::Mul(x, weight);
        const V weightedY = kIsReverse ? wide::Div(y, weight) : wide::Mul(y, weight);

        const V red = wide::Add(wide::Mul(hn::Set(d, 1.3333334F), weightedX), luma);
        const V m = wide::Add(wide::Mul(hn::Set(d, -0.6666667F), weightedX), luma);
        const V n = wide::Mul(weightedY, hn::Set(d, 1.1547005F));
        r = wide::Mul(wide::IfThenElse(isInside, red, r), scale);
        g = wide::Mul(wide::IfThenElse(isInside, wide::Add(m, n), g), scale);
        b = wide::Mul(wide::IfThenElse(isInside, wide::Sub(m, n), b), scale);
        a = wide::Mul(a, scale);
    }
};

using HueVectorFwd = HueVector<false>;
using HueVectorRev = HueVector<true>;

} // namespace Rendering::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif
