// Kernels of the 1D table: the raw value of a pixel is a row, or two rows are interpolated.
#if defined(TAVRIN_RENDERER_CPU_LUT_1D_OP_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef TAVRIN_RENDERER_CPU_LUT_1D_OP_INL_H
#undef TAVRIN_RENDERER_CPU_LUT_1D_OP_INL_H
#else
#define TAVRIN_RENDERER_CPU_LUT_1D_OP_INL_H
#endif

#include "renderer/CPULut1DOp.h"
#include "renderer/channelOrder-inl.h"
#include "renderer/gather-inl.h"
#include "renderer/halfFloat-inl.h"
#include "renderer/limit-inl.h"
#include "renderer/truncate-inl.h"

#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace Rendering::HWY_NAMESPACE
{

namespace hn = hwy::HWY_NAMESPACE;

// Rows are reckoned by one of three rules; each gives the table's value for a vector of inputs.

// The input is a code, as an integer in the place of the float: that of an integer format, or the bit pattern of a half.
template <class Entry>
struct LookUp : Lut1DParameters
{
    template <class D, class V>
    HWY_INLINE V Value(D d, void const* entries, V code) const
    {
        return Gather<Entry>(d, entries, RowsOfCodes(d, code, maxIndex));
    }
};

// The input is a value. A NaN takes the first row: it is not above 0.
template <class D, class V>
HWY_INLINE V ClampToRows(D d, V x, float maxIndex)
{
    return AtMost(AtLeast(x, hn::Zero(d)), hn::Set(d, maxIndex));
}

struct Interpolate : Lut1DParameters
{
    template <class D, class V>
    HWY_INLINE V Value(D d, void const* entries, V in) const
    {
        const V x = ClampToRows(d, hn::Mul(in, hn::Set(d, indexScale)), maxIndex);
        const auto lower = TruncateInRange(d, x);
        const V next = hn::Add(hn::ConvertTo(d, lower), hn::Set(d, 1.0F));
        const V delta = hn::Sub(AtMost(next, hn::Set(d, maxIndex)), x);
        V low, high;
        GatherNeighbours(d, static_cast<float const*>(entries), lower, low, high);
        return hn::Add(hn::Mul(hn::Sub(low, high), delta), high);
    }
};

// The table has a row for each half: the two halfs around the value are interpolated.
struct HalfCode : Lut1DParameters
{
    template <class D, class V>
    HWY_INLINE V Value(D d, void const* entries, V in) const
    {
        const hn::RebindToUnsigned<D> du;
        const hn::RebindToSigned<D> di;
        const auto signBit = hn::Set(du, 0x8000U);
        const auto largest = hn::Set(du, 0x7bffU); // 65504

        auto code = FloatToHalfBits(d, in);
        const auto sign = hn::And(code, signBit);
        const auto isInfinite = hn::Eq(hn::Xor(code, sign), hn::Set(du, 0x7c00U));
        code = hn::IfThenElse(isInfinite, hn::Or(largest, sign), code);
        V value = HalfBitsToFloat(d, code);
        const V v = hn::IfThenElse(hn::RebindMask(d, isInfinite), value, in);

        // The half may lie beyond the value, or short of it, counted from zero.
        const auto isBeyond = hn::RebindMask(du, hn::Gt(hn::Abs(value), hn::Abs(v)));
        const auto one = hn::Set(du, 1U);
        const auto lower = hn::IfThenElse(isBeyond, hn::Sub(code, one), code);
        auto upper = hn::And(hn::IfThenElse(isBeyond, code, hn::Add(code, one)), hn::Set(du, 0xffffU));
        const auto upperIsInfinite = hn::Eq(hn::And(upper, hn::Set(du, 0x7fffU)), hn::Set(du, 0x7c00U));
        upper = hn::IfThenElse(upperIsInfinite, hn::Or(largest, hn::And(upper, signBit)), upper);

        const V lowValue = HalfBitsToFloat(d, lower);
        const V quotient = hn::Div(hn::Sub(v, lowValue), hn::Sub(HalfBitsToFloat(d, upper), lowValue));
        // Beyond 65504 both are the same half, and a NaN has no place between two.
        const auto isBetween = hn::And(hn::Eq(quotient, quotient), hn::RebindMask(d, hn::Ne(lower, upper)));
        const V ratio = hn::IfThenElseZero(isBetween, quotient);
        // The upper row is the one behind the lower, but for the ends: beyond 65504 both are the same, and behind a NaN of all ones
        // stands the first.
        V low, next;
        GatherNeighbours(d, static_cast<float const*>(entries), hn::BitCast(di, lower), low, next);
        const V first = hn::Set(d, *static_cast<float const*>(entries));
        const V wrapped = hn::IfThenElse(hn::RebindMask(d, hn::Eq(lower, hn::Set(du, 0xffffU))), first, next);
        const V high = hn::IfThenElse(hn::RebindMask(d, upperIsInfinite), low, wrapped);
        return hn::Add(hn::Mul(hn::Sub(low, high), hn::Sub(hn::Set(d, 1.0F), ratio)), high);
    }
};

// Each channel through its own table.
template <class Rows>
struct PerChannel : Rows
{
    template <class D, class V>
    HWY_INLINE void operator()(D d, V& r, V& g, V& b, V& a) const
    {
        r = Rows::Value(d, Rows::table[0], r);
        g = Rows::Value(d, Rows::table[1], g);
        b = Rows::Value(d, Rows::table[2], b);
        a = hn::Mul(a, hn::Set(d, Rows::alphaScale));
    }
};

// What the input of a rule is worth.
struct AsItIs
{
    template <class D, class V>
    static HWY_INLINE V Of(D, V in)
    {
        return in;
    }
};
struct OfCode
{
    template <class D, class V>
    static HWY_INLINE V Of(D d, V in)
    {
        return hn::ConvertTo(d, hn::BitCast(hn::RebindToSigned<D>(), in));
    }
};
struct OfHalfCode
{
    template <class D, class V>
    static HWY_INLINE V Of(D d, V in)
    {
        return HalfBitsToFloat(d, hn::BitCast(hn::RebindToUnsigned<D>(), in));
    }
};

// The middle channel keeps its place between the other two.
template <class Rows, class InputValue>
struct HueAdjusted : Rows
{
    template <class D, class V>
    HWY_INLINE void operator()(D d, V& r, V& g, V& b, V& a) const
    {
        const V red = InputValue::Of(d, r);
        const V green = InputValue::Of(d, g);
        const V blue = InputValue::Of(d, b);
        const ChannelOrder<D> order(red, green, blue);
        const V chroma = ChromaOfMid(d, order.Max(red, green, blue), order.Mid(red, green, blue), order.Min(red, green, blue));
        r = Rows::Value(d, Rows::table[0], r);
        g = Rows::Value(d, Rows::table[1], g);
        b = Rows::Value(d, Rows::table[2], b);
        order.SetMid(MidOfChroma(chroma, order.Max(r, g, b), order.Min(r, g, b)), r, g, b);
        a = hn::Mul(a, hn::Set(d, Rows::alphaScale));
    }
};

} // namespace Rendering::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif
