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
    static constexpr std::size_t kVectorsOfCurve = kManyVectors;

    HWY_INLINE void Run(Block& block, unsigned int count, Outputs outputs) const
    {
        if constexpr (!kIsReverse)
            RunColorCurves(*this, block, count);
        RunOverVectors(*this, block, count, {}, outputs);
        if constexpr (kIsReverse)
            RunColorCurves(*this, block, count);
    }

    template <class D, class V>
    HWY_INLINE V Curve(D d, V in, int channel) const
    {
        const auto slopes = hn::Set(d, slope[channel]);
        const auto offsets = hn::Set(d, offset[channel]);
        if constexpr (!kIsReverse)
        {
            const V scaled = ScaleUnlessOne<kScales>(d, in, inScale);
            return RaiseToPower(d, wide::Add(wide::Mul(scaled, slopes), offsets), power[channel]);
        }
        const V v = wide::Mul(wide::Add(RaiseToPower(d, in, power[channel]), offsets), slopes);
        return ScaleUnlessOne<kScales>(d, ClampIfAny(d, v), outScale);
    }

    // The saturation, with what else comes before the curves or after them.
    template <class D, class V>
    HWY_INLINE void operator()(D d, V& r, V& g, V& b, V& a) const
    {
        if constexpr (kIsReverse)
            ForEach([&](V& v) HWY_ATTR { v = ClampIfAny(d, ScaleUnlessOne<kScales>(d, v, inScale)); }, r, g, b);
        Saturate(d, r, g, b);
        if constexpr (!kIsReverse)
            ForEach([&](V& v) HWY_ATTR { v = ScaleUnlessOne<kScales>(d, ClampIfAny(d, v), outScale); }, r, g, b);
        a = hn::Mul(a, hn::Set(d, alphaScale));
    }

private:
    template <class Function, class... Vectors>
    static HWY_INLINE void ForEach(Function const& function, Vectors&... vectors)
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
    static HWY_INLINE V RaiseToPower(D d, V v, float exponent)
    {
        if constexpr (kClamps) // The power's own choice of what is above 0 does for the lower clamp.
            return PowerOfPositive(d, AtMost(v, hn::Set(d, 1.0F)), exponent, v, hn::Zero(d));
        else // Negative values pass through.
            return wide::IfThenElse(wide::Lt(v, hn::Zero(d)), v, Power(d, v, exponent));
    }

    template <class D, class V>
    HWY_INLINE void Saturate(D d, V& r, V& g, V& b) const
    {
        // Luma of ITU-R BT.709. The added zero is the fourth lane's share, and turns a negative zero around.
        const V red = hn::Mul(r, hn::Set(d, 0.2126F));
        const V green = hn::Mul(g, hn::Set(d, 0.7152F));
        const V blue = hn::Mul(b, hn::Set(d, 0.0722F));
        const V luma = hn::Add(hn::Add(red, green), hn::Add(blue, hn::Zero(d)));
        ForEach([&](V& v) HWY_ATTR { v = hn::Add(luma, hn::Mul(hn::Set(d, saturation), hn::Sub(v, luma))); }, r, g, b);
    }
};

template <bool kIsReverse, bool kClamps>
struct CDL : CDLParameters
{
    void RunBlock(Block& block, unsigned int count, Outputs outputs) const
    {
        if (inScale == 1.0F && outScale == 1.0F)
            CDLSteps<kIsReverse, kClamps, false>{*this}.Run(block, count, outputs);
        else
            CDLSteps<kIsReverse, kClamps, true>{*this}.Run(block, count, outputs);
    }
};

using CDLV1_2Fwd = CDL<false, true>;
using CDLV1_2Rev = CDL<true, true>;
using CDLNoClampFwd = CDL<false, false>;
using CDLNoClampRev = CDL<true, false>;

} // namespace Rendering::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif
