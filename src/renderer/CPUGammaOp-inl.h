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
    template <class D, class V>
    HWY_INLINE V ToExponent(D d, V const& in, int channel) const
    {
        const V x = ScaleUnlessOne<kScales>(d, in, inScale);
        return ExponentOfPowerWhereAboveZero(d, x, x, exponent[channel]);
    }

    template <class D, class V>
    HWY_INLINE V FromExponent(D d, V const& /*in*/, V const& e, int channel) const
    {
        return ScaleUnlessOne<kScales>(d, PowerOfExponent(d, e, exponent[channel]), outScale);
    }
};

struct GammaBasic : GammaBasicParameters
{
    void RunBlock(Block& block, unsigned int count, Outputs outputs) const
    {
        WithScalesIfAny([&](auto scales) HWY_ATTR { RunCurves(GammaBasicCurves<scales>{*this}, block, count, outputs); }, inScale,
                        outScale);
    }
};

// The line is for everything that is not above the break, NaN included.
template <bool kIsForward, bool kScales>
struct GammaMoncurveCurves : GammaMoncurveParameters
{
    template <class D, class V>
    HWY_INLINE V ToExponent(D d, V const& in, int channel) const
    {
        if constexpr (kIsForward) // Above the break, which is not below 0, there is an offset to be above 0.
            return ExponentOfPower(d, ScaleAndOffset(d, in, scale[channel], offset[channel]), gamma[channel]);
        else if constexpr (!kScales)
            return ExponentOfPower(d, in, gamma[channel]);
        else // A number above the break may be so small that its scale makes it zero.
        {
            const V x = wide::Mul(in, hn::Set(d, depthScale));
            return ExponentOfPowerWhereAboveZero(d, x, x, gamma[channel]);
        }
    }

    template <class D, class V>
    HWY_INLINE V FromExponent(D d, V const& in, V const& e, int channel) const
    {
        V p = PowerOfExponent(d, e, gamma[channel]);
        if constexpr (kIsForward)
            p = ScaleUnlessOne<kScales>(d, p, depthScale);
        else
            p = wide::Sub(wide::Mul(p, hn::Set(d, scale[channel])), hn::Set(d, offset[channel]));
        return wide::IfThenElse(wide::Lt(hn::Set(d, breakPoint[channel]), in), p, wide::Mul(in, hn::Set(d, slope[channel])));
    }
};

template <bool kIsForward>
struct GammaMoncurve : GammaMoncurveParameters
{
    void RunBlock(Block& block, unsigned int count, Outputs outputs) const
    {
        WithScalesIfAny([&](auto scales) HWY_ATTR
                        { RunCurves(GammaMoncurveCurves<kIsForward, scales>{*this}, block, count, outputs); },
                        depthScale);
    }
};

using GammaMoncurveFwd = GammaMoncurve<true>;
using GammaMoncurveRev = GammaMoncurve<false>;

} // namespace Rendering::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif
