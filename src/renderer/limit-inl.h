// Limits by comparison, with one rule for NaN and for zeros on every target.
#if defined(TAVRIN_RENDERER_LIMIT_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef TAVRIN_RENDERER_LIMIT_INL_H
#undef TAVRIN_RENDERER_LIMIT_INL_H
#else
#define TAVRIN_RENDERER_LIMIT_INL_H
#endif

#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace Rendering::HWY_NAMESPACE
{

namespace hn = hwy::HWY_NAMESPACE;

// The value where it is above the limit, else the limit: that is what a NaN becomes, and a zero takes its sign.
template <class V>
HWY_INLINE V AtLeast(V value, V limit)
{
#if HWY_TARGET != HWY_SCALAR && HWY_ARCH_X86
    return hn::Max(value, limit); // The instruction is just this comparison, with the second operand for all that is not above.
#else
    return hn::IfThenElse(hn::Gt(value, limit), value, limit);
#endif
}

// The value where it is below the limit, else the limit.
template <class V>
HWY_INLINE V AtMost(V value, V limit)
{
#if HWY_TARGET != HWY_SCALAR && HWY_ARCH_X86
    return hn::Min(value, limit);
#else
    return hn::IfThenElse(hn::Lt(value, limit), value, limit);
#endif
}

} // namespace Rendering::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif
