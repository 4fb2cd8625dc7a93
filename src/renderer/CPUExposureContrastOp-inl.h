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

struct ExposureAndContrast : ExposureContrastParameters
{
    template <class D, class V>
    HWY_INLINE V ToExponent(D d, V const& in, int /*channel*/) const
    {
        const V v = wide::Mul(in, hn::Set(d, inScale));
        return ExponentOfPowerWhereAboveZero(d, v, v, contrast);
    }

    template <class D, class V>
    HWY_INLINE V FromExponent(D d, V const& /*in*/, V const& exponent, int /*channel*/) const
    {
        return wide::Mul(PowerOfExponent(d, exponent, contrast), hn::Set(d, outScale));
    }
};

struct ExposureAlone : ExposureContrastParameters
{
    template <class D, class V>
    HWY_INLINE V Curve(D d, V in, int /*channel*/) const
    {
        return wide::Mul(wide::Mul(in, hn::Set(d, inScale)), hn::Set(d, outScale));
    }
};

} // namespace Rendering::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif
