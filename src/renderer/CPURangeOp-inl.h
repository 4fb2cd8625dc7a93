// Kernels of the range.
#if defined(TAVRIN_RENDERER_CPU_RANGE_OP_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef TAVRIN_RENDERER_CPU_RANGE_OP_INL_H
#undef TAVRIN_RENDERER_CPU_RANGE_OP_INL_H
#else
#define TAVRIN_RENDERER_CPU_RANGE_OP_INL_H
#endif

#include "renderer/CPURangeOp.h"
#include "renderer/scaleAndOffset-inl.h"

#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace Rendering::HWY_NAMESPACE
{

namespace hn = hwy::HWY_NAMESPACE;

// Comparisons, not Min and Max, whose rule for NaN depends on the target: a NaN becomes the lower bound where there is one, and
// stays where there is only an upper bound.
template <bool kScales, bool kHasMin, bool kHasMax>
struct Range : RangeParameters
{
    template <class D, class V>
    HWY_INLINE V Limit(D d, V value) const
    {
        const V t = kScales ? ScaleAndOffset(d, value, scale, offset) : value;
        V result = t;
        if constexpr (kHasMin)
            result = hn::IfThenElse(hn::Gt(t, hn::Set(d, lowerBound)), t, hn::Set(d, lowerBound));
        if constexpr (kHasMax) // Wins where an integer depth put it below the lower bound.
            result = hn::IfThenElse(hn::Gt(t, hn::Set(d, upperBound)), hn::Set(d, upperBound), result);
        return result;
    }

    template <class D, class V>
    HWY_INLINE void operator()(D d, V& r, V& g, V& b, V& a) const
    {
        r = Limit(d, r);
        g = Limit(d, g);
        b = Limit(d, b);
        a = hn::Mul(a, hn::Set(d, alphaScale));
    }
};

using RangeScaleMinMax = Range<true, true, true>;
using RangeScaleMin = Range<true, true, false>;
using RangeScaleMax = Range<true, false, true>;
using RangeScale = Range<true, false, false>;
using RangeMinMax = Range<false, true, true>;
using RangeMin = Range<false, true, false>;
using RangeMax = Range<false, false, true>;

} // namespace Rendering::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif
