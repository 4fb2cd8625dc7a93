// Kernels of the gamma.
#if defined(TAVRIN_RENDERER_CPU_GAMMA_OP_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef TAVRIN_RENDERER_CPU_GAMMA_OP_INL_H
#undef TAVRIN_RENDERER_CPU_GAMMA_OP_INL_H
#else
#define TAVRIN_RENDERER_CPU_GAMMA_OP_INL_H
#endif

#include "renderer/CPUGammaOp.h"
#include "renderer/curveLoop-inl.h"
#include "renderer/scaleAndOffset-inl.h"
#include "renderer/vectorMath-inl.h"

#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace Rendering::HWY_NAMESPACE
{

namespace hn = hwy::HWY_NAMESPACE;

// The curves come with scales for changes of depth and, for floats, without.
template <bool kScales>
struct GammaBasicCurves : GammaBasicParameters
{
    static constexpr std::size_t kVectorsOfCurve = kManyVectors;

    template <class D, class V>
    HWY_INLINE V Curve(D d, V in, int channel) const
    {
        const V x = ScaleUnlessOne<kScales>(d, in, inScale);
        return ScaleUnlessOne<kScales>(d, Power(d, x, exponent[channel]), outScale);
    }
};

struct GammaBasic : GammaBasicParameters
{
    void RunBlock(Block& block, unsigned int count, Outputs outputs) const
    {
        if (inScale == 1.0F && outScale == 1.0F)
            RunCurves(GammaBasicCurves<false>{*this}, block, count, outputs);
        else
            RunCurves(GammaBasicCurves<true>{*this}, block, count, outputs);
    }
};

// The line is for everything that is not above the break, NaN included.
template <bool kIsForward, bool kScales>
struct GammaMoncurveCurves : GammaMoncurveParameters
{
    template <class D, class V>
    HWY_INLINE V Curve(D d, V in, int channel) const
    {
        V p;
        if constexpr (kIsForward) // Above the break, which is not below 0, there is an offset to be above 0.
            p = ScaleUnlessOne<kScales>(
                d, PowerOfPositive(d, ScaleAndOffset(d, in, scale[channel], offset[channel]), gamma[channel]), depthScale);
        else
            p = wide::Sub(
                wide::Mul(Power(d, ScaleUnlessOne<kScales>(d, in, depthScale), gamma[channel]), hn::Set(d, scale[channel])),
                hn::Set(d, offset[channel]));
        return wide::IfThenElse(wide::Lt(hn::Set(d, breakPoint[channel]), in), p, wide::Mul(in, hn::Set(d, slope[channel])));
    }
};

template <bool kIsForward>
struct GammaMoncurve : GammaMoncurveParameters
{
    void RunBlock(Block& block, unsigned int count, Outputs outputs) const
    {
        if (depthScale == 1.0F)
            RunCurves(GammaMoncurveCurves<kIsForward, false>{*this}, block, count, outputs);
        else
            RunCurves(GammaMoncurveCurves<kIsForward, true>{*this}, block, count, outputs);
    }
};

using GammaMoncurveFwd = GammaMoncurve<true>;
using GammaMoncurveRev = GammaMoncurve<false>;

} // namespace Rendering::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif
