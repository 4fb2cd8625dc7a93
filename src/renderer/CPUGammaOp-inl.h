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
    static constexpr std::size_t kVectorsOfCurve = kManyVectors;

    template <class D, class V>
    HWY_INLINE V Curve(D d, V in, int channel) const
    {
        const V x = wide::Mul(in, hn::Set(d, inScale));
        return wide::Mul(Power(d, x, exponent[channel]), hn::Set(d, outScale));
    }
};

// The line is for everything that is not above the break, NaN included.
template <bool kIsForward>
struct GammaMoncurve : GammaMoncurveParameters
{
    template <class D, class V>
    HWY_INLINE V Curve(D d, V in, int channel) const
    {
        V p;
        if constexpr (kIsForward) // Above the break, which is not below 0, there is an offset to be above 0.
            p = wide::Mul(PowerAbove(d, ScaleAndOffset(d, in, scale[channel], offset[channel]), gamma[channel], in,
                                     hn::Set(d, breakPoint[channel])),
                          hn::Set(d, depthScale));
        else
            p = wide::Sub(wide::Mul(Power(d, wide::Mul(in, hn::Set(d, depthScale)), gamma[channel]), hn::Set(d, scale[channel])),
                          hn::Set(d, offset[channel]));
        return wide::IfThenElse(wide::Lt(hn::Set(d, breakPoint[channel]), in), p, wide::Mul(in, hn::Set(d, slope[channel])));
    }
};

using GammaMoncurveFwd = GammaMoncurve<true>;
using GammaMoncurveRev = GammaMoncurve<false>;

} // namespace Rendering::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif
