// Kernels of the colour decision.
#if defined(TAVRIN_RENDERER_CPU_CDL_OP_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef TAVRIN_RENDERER_CPU_CDL_OP_INL_H
#undef TAVRIN_RENDERER_CPU_CDL_OP_INL_H
#else
#define TAVRIN_RENDERER_CPU_CDL_OP_INL_H
#endif

#include "renderer/CPUCDLOp.h"
#include "renderer/blockLoop-inl.h"
#include "renderer/limit-inl.h"
#include "renderer/scaleAndOffset-inl.h"
#include "renderer/vectorMath-inl.h"

#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace Rendering::HWY_NAMESPACE
{

namespace hn = hwy::HWY_NAMESPACE;

// Each channel's slope, offset and power, before the saturation, which knows all channels, or after it in reverse. For floats it
// goes without the scales for changes of depth.
template <bool kIsReverse, bool kClamps, bool kScales>
struct CDLSteps : CDLParameters
{
    HWY_INLINE void Run(Block& block, unsigned int count, Outputs outputs) const
    {
        if constexpr (!kIsReverse)
            RunColorCurves(*this, block, count);
        RunOverVectors(*this, block, count, {}, outputs);
        if constexpr (kIsReverse)
            RunColorCurves(*this, block, count);
    }

    static constexpr bool kWantsArgument = !kClamps;
    static constexpr bool kIsArgumentPositive = false;

    HWY_INLINE float Exponent(std::size_t channel) const { return power[channel]; }

    // The power's own choice of what is above 0 does for the lower clamp.
    template <class D, class V>
    HWY_INLINE V Argument(D d, V const& in, std::size_t channel) const
    {
        V x = in;
        if constexpr (!kIsReverse)
            x = ScaleAndOffset(d, ScaleUnlessOne<kScales>(d, in, inScale), slope[channel], offset[channel]);
        if constexpr (kClamps)
            x = AtMostOrNaN(x, hn::Set(d, 1.0F));
        return x;
    }

    template <class D, class V>
    HWY_INLINE V Finish(D d, V const& argument, V const& raised, std::size_t channel) const
    {
        V result = raised;
        if constexpr (!kClamps) // Negative values pass through.
            result = wide::IfThenElse(wide::Lt(argument, hn::Zero(d)), argument, raised);
        if constexpr (kIsReverse)
        {
            result = wide::Mul(wide::Add(result, hn::Set(d, offset[channel])), hn::Set(d, slope[channel]));
            result = ScaleUnlessOne<kScales>(d, ClampIfAny(d, result), outScale);
        }
        return result;
    }

    // The saturation, with what else comes before the curves or after them.
    template <class D, class V>
    HWY_INLINE void operator()(D d, V& r, V& g, V& b, V& a) const
    {
        if constexpr (kIsReverse)
            OnColors([&](V& v) HWY_ATTR { v = ClampIfAny(d, ScaleUnlessOne<kScales>(d, v, inScale)); }, r, g, b);
        Saturate(d, r, g, b);
        if constexpr (!kIsReverse)
            OnColors([&](V& v) HWY_ATTR { v = ScaleUnlessOne<kScales>(d, ClampIfAny(d, v), outScale); }, r, g, b);
        a = hn::Mul(a, hn::Set(d, alphaScale));
    }

private:
    template <class Function, class... Vectors>
    static HWY_INLINE void OnColors(Function const& function, Vectors&... vectors)
    {
        (function(vectors), ...);
    }

    // To 0 to 1; a NaN becomes 0.
    template <class D, class V>
    static HWY_INLINE V ClampIfAny(D d, V v)
    {
        if constexpr (kClamps)
            return AtMost(AtLeast(v, hn::Zero(d)), hn::Set(d, 1.0F));
        else
            return v;
    }

    template <class D, class V>
    HWY_INLINE void Saturate(D d, V& r, V& g, V& b) const
    {
        // Luma of ITU-R BT.709. The added zero is the fourth lane's share, and turns a negative zero around.
        const V red = hn::Mul(r, hn::Set(d, 0.2126F));
        const V green = hn::Mul(g, hn::Set(d, 0.7152F));
        const V blue = hn::Mul(b, hn::Set(d, 0.0722F));
        const V luma = hn::Add(hn::Add(red, green), hn::Add(blue, hn::Zero(d)));
        OnColors([&](V& v) HWY_ATTR { v = hn::Add(luma, hn::Mul(hn::Set(d, saturation), hn::Sub(v, luma))); }, r, g, b);
    }
};

template <bool kIsReverse, bool kClamps>
struct CDL : CDLParameters
{
    void RunBlock(Block& block, unsigned int count, Outputs outputs) const
    {
        WithScalesIfAny([&](auto scales) HWY_ATTR { CDLSteps<kIsReverse, kClamps, scales>{*this}.Run(block, count, outputs); },
                        inScale, outScale);
    }
};

using CDLV1_2Fwd = CDL<false, true>;
using CDLV1_2Rev = CDL<true, true>;
using CDLNoClampFwd = CDL<false, false>;
using CDLNoClampRev = CDL<true, false>;

} // namespace Rendering::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif
