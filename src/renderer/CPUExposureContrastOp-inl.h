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
    HWY_INLINE V Curve(D d, V in, int /*channel*/) const
    {
        V v = wide::Mul(in, hn::Set(d, inScale));
        if constexpr (kHasContrast)
            v = Power(d, v, contrast);
        return wide::Mul(v, hn::Set(d, outScale));
    }
};

using ExposureAndContrast = ExposureContrast<true>;
using ExposureAlone = ExposureContrast<false>;

} // namespace Rendering::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif
