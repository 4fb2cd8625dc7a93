// Kernel of the gamut map.
#if defined(TAVRIN_RENDERER_CPU_GAMUT_MAP_OP_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef TAVRIN_RENDERER_CPU_GAMUT_MAP_OP_INL_H
#undef TAVRIN_RENDERER_CPU_GAMUT_MAP_OP_INL_H
#else
#define TAVRIN_RENDERER_CPU_GAMUT_MAP_OP_INL_H
#endif

#include "renderer/CPUGamutMapOp.h"
#include "renderer/channelOrder-inl.h"

#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace Rendering::HWY_NAMESPACE
{

namespace hn = hwy::HWY_NAMESPACE;

// Clips negative channels to 0, a NaN too, and puts the middle channel where it was between the other two.
struct GamutMapDW3 : GamutMapParameters
{
    template <class D, class V>
    HWY_INLINE void operator()(D d, V& r, V& g, V& b, V& a) const
    {
        const V scale = hn::Set(d, depthScale);
        for (V* const channel : {&r, &g, &b, &a})
            *channel = hn::Mul(*channel, scale);

        const ChannelOrder<D> order(r, g, b);
        const V chroma = ChromaOfMid(d, order.Max(r, g, b), order.Mid(r, g, b), order.Min(r, g, b));
        for (V* const channel : {&r, &g, &b})
            *channel = hn::IfThenElseZero(hn::Gt(*channel, hn::Zero(d)), *channel);
        order.SetMid(MidOfChroma(chroma, order.Max(r, g, b), order.Min(r, g, b)), r, g, b);
    }
};

} // namespace Rendering::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif
