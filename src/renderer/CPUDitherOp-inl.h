// Kernel of the dither.
#if defined(TAVRIN_RENDERER_CPU_DITHER_OP_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef TAVRIN_RENDERER_CPU_DITHER_OP_INL_H
#undef TAVRIN_RENDERER_CPU_DITHER_OP_INL_H
#else
#define TAVRIN_RENDERER_CPU_DITHER_OP_INL_H
#endif

#include "renderer/CPUDitherOp.h"
#include "renderer/block.h"

#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace Rendering::HWY_NAMESPACE
{

namespace hn = hwy::HWY_NAMESPACE;

struct Dither : DitherParameters
{
    template <class D, class V>
    HWY_INLINE void operator()(D d, V& r, V& g, V& b, V& a, ImagePosition position) const
    {
        static_assert(hn::MaxLanes(D()) <= DitherNoise::kRowExtension);
        const V n = hn::LoadU(d, ofPixels.row(position.row) + (position.column & (ofPixels.period - 1)));
        for (V* const channel : {&r, &g, &b, &a})
            *channel = hn::Mul(hn::Add(*channel, n), hn::Set(d, scale));
    }
};

} // namespace Rendering::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif
