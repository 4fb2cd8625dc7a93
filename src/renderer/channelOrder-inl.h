// The channels of a pixel by size, and the hue that the middle one stands for: what keeps hue when the outer two change.
#if defined(TAVRIN_RENDERER_CHANNEL_ORDER_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef TAVRIN_RENDERER_CHANNEL_ORDER_INL_H
#undef TAVRIN_RENDERER_CHANNEL_ORDER_INL_H
#else
#define TAVRIN_RENDERER_CHANNEL_ORDER_INL_H
#endif

#include "renderer/nanOrder-inl.h"

#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace Rendering::HWY_NAMESPACE
{

namespace hn = hwy::HWY_NAMESPACE;

// Which of three channels is the largest, the middle and the smallest one, per pixel. Of equal channels the later one counts as
// the larger. The three are always three different channels: a NaN takes some place among them.
template <class D>
class ChannelOrder
{
public:
    using V = hn::VFromD<D>;
    using M = hn::Mask<D>;

    HWY_INLINE ChannelOrder(V r, V g, V b)
    {
        const M redAboveGreen = hn::Gt(r, g);
        const M greenAboveBlue = hn::Gt(g, b);
        m_redAboveBlue = hn::Gt(r, b);
        m_greenIsMax = hn::AndNot(redAboveGreen, greenAboveBlue);
        m_greenIsMin = hn::AndNot(greenAboveBlue, redAboveGreen);
    }

    // What stands in the largest, middle and smallest channel. Also for other values than those that were ordered.
    HWY_INLINE V Max(V r, V g, V b) const { return hn::IfThenElse(m_greenIsMax, g, LargerOfOthers(r, b)); }
    HWY_INLINE V Min(V r, V g, V b) const { return hn::IfThenElse(m_greenIsMin, g, SmallerOfOthers(r, b)); }
    HWY_INLINE V Mid(V r, V g, V b) const
    {
        return hn::IfThenElse(m_greenIsMax, LargerOfOthers(r, b), hn::IfThenElse(m_greenIsMin, SmallerOfOthers(r, b), g));
    }

    // Puts the value into the middle channel.
    HWY_INLINE void SetMid(V value, V& r, V& g, V& b) const
    {
        const M greenIsEnd = hn::Or(m_greenIsMax, m_greenIsMin);
        // Beside a largest green the middle one is the larger of the others, beside a smallest green the smaller.
        const M redIsMid = hn::And(greenIsEnd, hn::Not(hn::Xor(m_greenIsMax, m_redAboveBlue)));
        r = hn::IfThenElse(redIsMid, value, r);
        b = hn::IfThenElse(hn::AndNot(redIsMid, greenIsEnd), value, b);
        g = hn::IfThenElse(greenIsEnd, g, value);
    }

private:
    HWY_INLINE V LargerOfOthers(V r, V b) const { return hn::IfThenElse(m_redAboveBlue, r, b); }
    HWY_INLINE V SmallerOfOthers(V r, V b) const { return hn::IfThenElse(m_redAboveBlue, b, r); }

    M m_redAboveBlue;
    M m_greenIsMax;
    M m_greenIsMin;
};

// Where the middle channel lies between the smallest, 0, and the largest, 1; 0 for a grey. Asked as "equal", since a NaN is unequal
// to zero on some targets alone.
template <class D, class V = hn::VFromD<D>>
HWY_INLINE V ChromaOfMid(D d, V max, V mid, V min)
{
    const V range = hn::Sub(max, min);
    return hn::IfThenZeroElse(hn::Eq(range, hn::Zero(d)), hn::Div(hn::Sub(mid, min), range));
}

// The middle channel between other ends. Chroma may be a NaN, and so may the difference of infinities.
template <class V>
HWY_INLINE V MidOfChroma(V chroma, V max, V min)
{
    return hn::Add(MulInOrder(hn::Sub(max, min), chroma), min);
}

} // namespace Rendering::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif
