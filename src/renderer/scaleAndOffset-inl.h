// What many kernels begin or end with: a multiplication and an addition, or a change of depth.
#if defined(TAVRIN_RENDERER_SCALE_AND_OFFSET_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef TAVRIN_RENDERER_SCALE_AND_OFFSET_INL_H
#undef TAVRIN_RENDERER_SCALE_AND_OFFSET_INL_H
#else
#define TAVRIN_RENDERER_SCALE_AND_OFFSET_INL_H
#endif

#include "renderer/several-inl.h"

#include <hwy/highway.h>

#include <type_traits>

HWY_BEFORE_NAMESPACE();
namespace Rendering::HWY_NAMESPACE
{

namespace hn = hwy::HWY_NAMESPACE;

// Multiplications and additions stay apart: a fused one would give other bits where the processor has it.
template <class D, class V>
HWY_INLINE V ScaleAndOffset(D d, V value, float scale, float offset)
{
    return wide::Add(wide::Mul(value, hn::Set(d, scale)), hn::Set(d, offset));
}

// Calls a function with whether any of the scales is other than 1, as a constant.
template <class Function, class... Scales>
HWY_INLINE void WithScalesIfAny(Function const& function, Scales... scales)
{
    const bool areAllOne = ((scales == 1.0F) && ...);
    if (areAllOne)
        function(std::false_type());
    else
        function(std::true_type());
}

// A multiplication that is left out where it is known to be by 1.
template <bool kScales, class D, class V>
HWY_INLINE V ScaleUnlessOne(D d, V value, float scale)
{
    if constexpr (kScales)
        return wide::Mul(value, hn::Set(d, scale));
    else
        return value;
}

} // namespace Rendering::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif
