// Kernels of the logarithm.
#if defined(TAVRIN_RENDERER_CPU_LOG_OP_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef TAVRIN_RENDERER_CPU_LOG_OP_INL_H
#undef TAVRIN_RENDERER_CPU_LOG_OP_INL_H
#else
#define TAVRIN_RENDERER_CPU_LOG_OP_INL_H
#endif

#include "renderer/CPULogOp.h"
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
    return Log2OfPositive(d, AtLeast(x, hn::Set(d, 1.17549435e-38F)));
}

// The curves work on red, green and blue alike.
template <class Curves>
struct LogKernel : Curves
{
    template <class D, class V>
    HWY_INLINE void operator()(D d, V& r, V& g, V& b, V& a) const
    {
        r = this->Curve(d, r, 0);
        g = this->Curve(d, g, 1);
        b = this->Curve(d, b, 2);
        a = hn::Mul(a, hn::Set(d, this->alphaScale));
    }
};

struct LogCurves : LogParameters
{
    template <class D, class V>
    HWY_INLINE V Curve(D d, V in, int /*channel*/) const
    {
        return hn::Mul(FlooredLog2(d, hn::Mul(in, hn::Set(d, inScale))), hn::Set(d, outFactor));
    }
};

struct AntiLogCurves : AntiLogParameters
{
    template <class D, class V>
    HWY_INLINE V Curve(D d, V in, int /*channel*/) const
    {
        const V x = hn::Mul(hn::Mul(in, hn::Set(d, inScale)), hn::Set(d, logScale));
        return hn::Mul(Exp2(d, x), hn::Set(d, outScale));
    }
};

struct LinToLogCurves : FilmLogParameters
{
    template <class D, class V>
    HWY_INLINE V Curve(D d, V in, int channel) const
    {
        const V x = ScaleAndOffset(d, in, inScale[channel], inOffset[channel]);
        return ScaleAndOffset(d, FlooredLog2(d, x), outScale[channel], outOffset[channel]);
    }
};

struct LogToLinCurves : FilmLogParameters
{
    template <class D, class V>
    HWY_INLINE V Curve(D d, V in, int channel) const
    {
        const V x = hn::Mul(ScaleAndOffset(d, in, inScale[channel], inOffset[channel]), hn::Set(d, logScale));
        return ScaleAndOffset(d, Exp2(d, x), outScale[channel], outOffset[channel]);
    }
};

using Log = LogKernel<LogCurves>;
using AntiLog = LogKernel<AntiLogCurves>;
using LinToLog = LogKernel<LinToLogCurves>;
using LogToLin = LogKernel<LogToLinCurves>;

} // namespace Rendering::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif
