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
    static constexpr bool kWantsArgument = false;
    static constexpr bool kIsArgumentPositive = false;

    HWY_INLINE float Exponent(std::size_t /*channel*/) const { return contrast; }

    template <class D, class V>
    HWY_INLINE V Argument(D d, V const& in, std::size_t /*channel*/) const
    {
        return wide::Mul(in, hn::Set(d, inScale));
    }

    template <class D, class V>
    HWY_INLINE V Finish(D d, V const& /*in*/, V const& power, std::size_t /*channel*/) const
    {
        return wide::Mul(power, hn::Set(d, outScale));
    }
};

struct ExposureAlone : ExposureContrastParameters
{
    template <class D, class V>
    HWY_INLINE V Curve(D d, V in, std::size_t /*channel*/) const
    {
        return wide::Mul(wide::Mul(in, hn::Set(d, inScale)), hn::Set(d, outScale));
    }
};

} // namespace Rendering::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif
