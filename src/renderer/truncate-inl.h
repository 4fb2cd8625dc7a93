// Conversions of floats that are known to fit into integers, without the care that a general conversion takes for others.
#if defined(TAVRIN_RENDERER_TRUNCATE_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef TAVRIN_RENDERER_TRUNCATE_INL_H
#undef TAVRIN_RENDERER_TRUNCATE_INL_H
#else
#define TAVRIN_RENDERER_TRUNCATE_INL_H
#endif

#include "renderer/several-inl.h"

#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace Rendering::HWY_NAMESPACE
{

namespace hn = hwy::HWY_NAMESPACE;

// Truncates toward zero; values must be numbers within the range of 32-bit integers. One instruction on x86, where Highway's own
// conversion spends five more on values beyond the range.
template <class D, class V>
HWY_INLINE auto TruncateInRange(D, V const& values)
{
    using DI = hn::RebindToSigned<D>;
    return AtEach(
        [](auto value) HWY_ATTR
        {
#if HWY_TARGET == HWY_SCALAR || !HWY_ARCH_X86
            return hn::ConvertTo(DI(), value);
#else
            if constexpr (sizeof(value) == 16)
                return hn::VFromD<DI>{_mm_cvttps_epi32(value.raw)};
#if HWY_TARGET <= HWY_AVX2
            else if constexpr (sizeof(value) == 32)
                return hn::VFromD<DI>{_mm256_cvttps_epi32(value.raw)};
#endif
#if HWY_TARGET <= HWY_AVX3
            else if constexpr (sizeof(value) == 64)
                return hn::VFromD<DI>{_mm512_cvttps_epi32(value.raw)};
#endif
#endif
        },
        values);
}

// Values above the maximum become it, values below 0 become 0, and so does a NaN.
template <class D, class V = hn::VFromD<D>>
HWY_INLINE V ClampToCodes(D d, V value, V maximum)
{
#if HWY_TARGET != HWY_SCALAR && HWY_ARCH_X86
    // On x86 the second operand is what a comparison with a NaN gives.
    return hn::Min(hn::Max(value, hn::Zero(d)), maximum);
#else
    const V limited = hn::IfThenElse(hn::Gt(value, maximum), maximum, value);
    return hn::IfThenElseZero(hn::Ge(limited, hn::Zero(d)), limited);
#endif
}

} // namespace Rendering::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif
