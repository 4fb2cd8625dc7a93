// Kernels of the gamma.
#if defined(TAVRIN_RENDERER_CPU_GAMMA_OP_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef TAVRIN_RENDERER_CPU_GAMMA_OP_INL_H
#undef TAVRIN_RENDERER_CPU_GAMMA_OP_INL_H
#else
#define TAVRIN_RENDERER_CPU_GAMMA_OP_INL_H
#endif

#include "renderer/CPUGammaOp.h"
#include "renderer/scaleAndOffset-inl.h"
#include "renderer/vectorMath-inl.h"

#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace Rendering::HWY_NAMESPACE
{

namespace hn = hwy::HWY_NAMESPACE;

struct GammaBasic : GammaBasicParameters
{
    template <class D, class V>
    HWY_INLINE V Curve(D d, V in, int channel) const
    {
        const V x = hn::Mul(in, hn::Set(d, inScale));
        return hn::Mul(Power(d, x, exponent[channel]), hn::Set(d, outScale));
    }

    template <class D, class V>
    HWY_INLINE void operator()(D d, V& r, V& g, V& b, V& a) const
    {
        r = Curve(d, r, 0);
        g = Curve(d, g, 1);
        b = Curve(d, b, 2);
        a = Curve(d, a, 3);
    }
};

// The line is for everything that is not above the break, NaN included.
template <bool kIsForward>
struct GammaMoncurve : GammaMoncurveParameters
{
    template <class D, class V>
    HWY_INLINE V Curve(D d, V in, int channel) const
    {
        const auto isAbove = hn::Lt(hn::Set(d, breakPoint[channel]), in);
        V p;
        if constexpr (kIsForward) // Above the break, which is not below 0, there is an offset to be above 0.
            p = hn::Mul(PowerWhere(d, isAbove, ScaleAndOffset(d, in, scale[channel], offset[channel]), gamma[channel]),
                        hn::Set(d, depthScale));
        else
            p = hn::Sub(hn::Mul(Power(d, hn::Mul(in, hn::Set(d, depthScale)), gamma[channel]), hn::Set(d, scale[channel])),
                        hn::Set(d, offset[channel]));
        return hn::IfThenElse(isAbove, p, hn::Mul(in, hn::Set(d, slope[channel])));
    }

    template <class D, class V>
    HWY_INLINE void operator()(D d, V& r, V& g, V& b, V& a) const
    {
        r = Curve(d, r, 0);
        g = Curve(d, g, 1);
        b = Curve(d, b, 2);
        a = Curve(d, a, 3);
    }
};

using GammaMoncurveFwd = GammaMoncurve<true>;
using GammaMoncurveRev = GammaMoncurve<false>;

} // namespace Rendering::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif
