// Kernels of the logarithm.
#if defined(TAVRIN_RENDERER_CPU_LOG_OP_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef TAVRIN_RENDERER_CPU_LOG_OP_INL_H
#undef TAVRIN_RENDERER_CPU_LOG_OP_INL_H
#else
#define TAVRIN_RENDERER_CPU_LOG_OP_INL_H
#endif

#include "renderer/CPULogOp.h"
#include "renderer/curveLoop-inl.h"
#include "renderer/limit-inl.h"
#include "renderer/scaleAndOffset-inl.h"
#include "renderer/vectorMath-inl.h"

#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace Rendering::HWY_NAMESPACE
{

namespace hn = hwy::HWY_NAMESPACE;

// Of what is below the smallest normal number, and of a NaN, the logarithm of that number.
template <class D, class V>
HWY_INLINE V FlooredLog2(D d, V x)
{
    return Log2(d, AtLeast(x, hn::Set(d, 1.17549435e-38F)));
}

struct Log : LogParameters
{
    template <class D, class V>
    HWY_INLINE V Curve(D d, V in, std::size_t /*channel*/) const
    {
        return wide::Mul(FlooredLog2(d, wide::Mul(in, hn::Set(d, inScale))), hn::Set(d, outFactor));
    }
};

struct AntiLog : AntiLogParameters
{
    template <class D, class V>
    HWY_INLINE V Curve(D d, V in, std::size_t /*channel*/) const
    {
        const V x = wide::Mul(wide::Mul(in, hn::Set(d, inScale)), hn::Set(d, logScale));
        return wide::Mul(Exp2(d, x), hn::Set(d, outScale));
    }
};

struct LinToLog : FilmLogParameters
{
    template <class D, class V>
    HWY_INLINE V Curve(D d, V in, std::size_t channel) const
    {
        const V x = ScaleAndOffset(d, in, inScale[channel], inOffset[channel]);
        return ScaleAndOffset(d, FlooredLog2(d, x), outScale[channel], outOffset[channel]);
    }
};

struct LogToLin : FilmLogParameters
{
    template <class D, class V>
    HWY_INLINE V Curve(D d, V in, std::size_t channel) const
    {
        const V x = wide::Mul(ScaleAndOffset(d, in, inScale[channel], inOffset[channel]), hn::Set(d, logScale));
        return ScaleAndOffset(d, Exp2(d, x), outScale[channel], outOffset[channel]);
    }
};

} // namespace Rendering::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif
