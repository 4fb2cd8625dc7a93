// Kernels of exposure and contrast.
#if defined(TAVRIN_RENDERER_CPU_EXPOSURE_CONTRAST_OP_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef TAVRIN_RENDERER_CPU_EXPOSURE_CONTRAST_OP_INL_H
#undef TAVRIN_RENDERER_CPU_EXPOSURE_CONTRAST_OP_INL_H
#else
#define TAVRIN_RENDERER_CPU_EXPOSURE_CONTRAST_OP_INL_H
#endif

#include "renderer/CPUExposureContrastOp.h"
#include "renderer/vectorMath-inl.h"

#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace Rendering::HWY_NAMESPACE
{

namespace hn = hwy::HWY_NAMESPACE;

template <bool kHasContrast>
struct ExposureContrast : ExposureContrastParameters
{
    template <class D, class V>
    HWY_INLINE V Curve(D d, V in) const
    {
        V v = hn::Mul(in, hn::Set(d, inScale));
        if constexpr (kHasContrast)
            v = Power(d, v, contrast);
        return hn::Mul(v, hn::Set(d, outScale));
    }

    template <class D, class V>
    HWY_INLINE void operator()(D d, V& r, V& g, V& b, V& a) const
    {
        r = Curve(d, r);
        g = Curve(d, g);
        b = Curve(d, b);
        a = hn::Mul(a, hn::Set(d, alphaScale));
    }
};

using ExposureAndContrast = ExposureContrast<true>;
using ExposureAlone = ExposureContrast<false>;

} // namespace Rendering::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif
