// Limits by comparison, with one rule for NaN and for zeros on every target.
#if defined(TAVRIN_RENDERER_LIMIT_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef TAVRIN_RENDERER_LIMIT_INL_H
#undef TAVRIN_RENDERER_LIMIT_INL_H
#else
#define TAVRIN_RENDERER_LIMIT_INL_H
#endif

#include "renderer/several-inl.h"

#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace Rendering::HWY_NAMESPACE
{

namespace hn = hwy::HWY_NAMESPACE;

// The value where it is above the limit, else the limit: that is what a NaN becomes, and a zero takes its sign.
template <class V, class Limit>
HWY_INLINE V AtLeast(V const& value, Limit const& limit)
{
#if HWY_TARGET != HWY_SCALAR && HWY_ARCH_X86
    return wide::Max(value, limit); // The instruction is just this comparison, with the second operand for all that is not above.
#else
    return wide::IfThenElse(wide::Gt(value, limit), value, limit);
#endif
}

// The value where it is below the limit, else the limit.
template <class Value, class Limit>
HWY_INLINE auto AtMost(Value const& value, Limit const& limit)
{
#if HWY_TARGET != HWY_SCALAR && HWY_ARCH_X86
    return wide::Min(value, limit);
#else
    return wide::IfThenElse(wide::Lt(value, limit), value, limit);
#endif
}

// The same, but a NaN stays one: the limit where it is below the value, else the value.
template <class V, class Limit>
HWY_INLINE V AtMostOrNaN(V const& value, Limit const& limit)
{
    return AtMost(limit, value);
}

} // namespace Rendering::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif
