// Kernel of the inverse 1D table: a binary search for every pixel, begun in the right bucket.
#if defined(TAVRIN_RENDERER_CPU_INV_LUT_1D_OP_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef TAVRIN_RENDERER_CPU_INV_LUT_1D_OP_INL_H
#undef TAVRIN_RENDERER_CPU_INV_LUT_1D_OP_INL_H
#else
#define TAVRIN_RENDERER_CPU_INV_LUT_1D_OP_INL_H
#endif

#include "renderer/CPUInvLut1DOp.h"
#include "renderer/gather-inl.h"

#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace Rendering::HWY_NAMESPACE
{

namespace hn = hwy::HWY_NAMESPACE;

struct SearchInverse : InvLut1DParameters
{
    template <class D>
    static HWY_INLINE hn::VFromD<hn::RebindToSigned<D>> StartOfBucket(D d, InverseColumn const& column,
                                                                      hn::VFromD<hn::RebindToSigned<D>> bucket)
    {
        return hn::BitCast(hn::RebindToSigned<D>(), GatherBits<std::int32_t>(d, column.starts, bucket));
    }

    // The first row that is not less than v; v lies between the first and the last row's values.
    template <class D, class V>
    static HWY_INLINE hn::VFromD<hn::RebindToSigned<D>> LowerBound(D d, InverseColumn const& column, V v)
    {
        const hn::RebindToSigned<D> di;
        const auto one = hn::Set(di, 1);
        const auto number = hn::ShiftRight<kInverseIndexShift>(hn::BitCast(di, hn::Sub(v, hn::Set(d, column.first))));
        const auto above = hn::Sub(number, hn::Set(di, column.lowestNumber - 1));
        const auto bucket = hn::Min(hn::Max(above, hn::Zero(di)), hn::Set(di, column.lastBucket));

        auto begin = StartOfBucket(d, column, bucket);
        auto end = StartOfBucket(d, column, hn::Add(bucket, one)); // The answer is begin, end, or between them.
        for (std::int32_t step = 0; step < column.steps; ++step)
        {
            const auto middle = hn::ShiftRight<1>(hn::Add(begin, end));
            // Where begin has met end the middle may be the last row, whose value is then not less than v.
            const auto isLess = hn::RebindMask(di, hn::Lt(Gather<FloatEntry>(d, column.values, middle), v));
            const auto isOpen = hn::Lt(begin, end);
            begin = hn::IfThenElse(hn::And(isLess, isOpen), hn::Add(middle, one), begin);
            end = hn::IfThenElse(hn::AndNot(isLess, isOpen), middle, end);
        }
        return begin;
    }

    template <class D, class V>
    HWY_INLINE V Value(D d, InverseColumn const& column, V in) const
    {
        const hn::RebindToSigned<D> di;
        const V first = hn::Set(d, column.first);
        const V last = hn::Set(d, column.last);
        V v = hn::Mul(in, hn::Set(d, column.flipSign));
        v = hn::IfThenElse(hn::Gt(v, first), v, first); // A NaN becomes the start of the table.
        v = hn::IfThenElse(hn::Lt(v, last), v, last);

        auto low = LowerBound(d, column, v);
        low = hn::Sub(low, hn::IfThenElseZero(hn::Gt(low, hn::Zero(di)), hn::Set(di, 1)));
        const auto high = hn::Min(hn::Add(low, hn::Set(di, 1)), hn::Set(di, column.lastRow));
        const V lowValue = Gather<FloatEntry>(d, column.values, low);
        const V highValue = Gather<FloatEntry>(d, column.values, high);
        const V quotient = hn::Div(hn::Sub(v, lowValue), hn::Sub(highValue, lowValue));
        const V fraction = hn::IfThenElseZero(hn::Gt(highValue, lowValue), quotient);
        const V row = hn::Add(hn::Add(hn::ConvertTo(d, low), hn::Set(d, column.startOffset)), fraction);
        return hn::Mul(row, hn::Set(d, scale));
    }

    template <class D, class V>
    HWY_INLINE void operator()(D d, V& r, V& g, V& b, V& a) const
    {
        r = Value(d, column[0], r);
        g = Value(d, column[1], g);
        b = Value(d, column[2], b);
        a = hn::Mul(a, hn::Set(d, alphaScale));
    }
};

} // namespace Rendering::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif
