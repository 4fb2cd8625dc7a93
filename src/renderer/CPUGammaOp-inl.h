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
    static constexpr bool kWantsArgument = false;
    static constexpr bool kIsArgumentPositive = false;

    HWY_INLINE float Exponent(std::size_t channel) const { return exponent[channel]; }

    template <class D, class V>
    HWY_INLINE V Argument(D d, V const& in, std::size_t /*channel*/) const
    {
        return ScaleUnlessOne<kScales>(d, in, inScale);
    }

    template <class D, class V>
    HWY_INLINE V Finish(D d, V const& /*in*/, V const& power, std::size_t /*channel*/) const
    {
        return ScaleUnlessOne<kScales>(d, power, outScale);
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
    static constexpr bool kWantsArgument = false;
    // The power is for what is above the break, which is not below 0. Only a scale may make a number from there zero.
    static constexpr bool kIsArgumentPositive = kIsForward || !kScales;

    HWY_INLINE float Exponent(std::size_t channel) const { return gamma[channel]; }

    HWY_INLINE bool ArePowersNormal() const { return arePowersNormal; }

    template <class D, class V>
    HWY_INLINE V Argument(D d, V const& in, std::size_t channel) const
    {
        if constexpr (kIsForward)
            return ScaleAndOffset(d, in, scale[channel], offset[channel]);
        else
            return ScaleUnlessOne<kScales>(d, in, depthScale);
    }

    template <class D, class V>
    HWY_INLINE V Finish(D d, V const& in, V const& power, std::size_t channel) const
    {
        V curve;
        if constexpr (kIsForward)
            curve = ScaleUnlessOne<kScales>(d, power, depthScale);
        else
            curve = wide::Sub(wide::Mul(power, hn::Set(d, scale[channel])), hn::Set(d, offset[channel]));
        const V line = wide::Mul(in, hn::Set(d, slope[channel]));
        return wide::IfThenElse(wide::Lt(hn::Set(d, breakPoint[channel]), in), curve, line);
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
