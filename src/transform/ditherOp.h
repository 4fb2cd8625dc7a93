// Ordered noise before a reduction of depth.
#ifndef TAVRIN_TRANSFORM_DITHER_OP_H
#define TAVRIN_TRANSFORM_DITHER_OP_H

#include "transform/op.h"

namespace Color
{

// Adds noise of one step of the dither depth, which the picture is to be reduced to here or later, in a pattern fixed to the image.
class DitherOp : public TypedOp<DitherOp, Op::OpType::DitherOp>
{
public:
    // 32f to 32f, without a dither depth: not yet valid.
    DitherOp();
    // Validates.
    DitherOp(BitDepth in, BitDepth out, BitDepth ditherBitDepth);

    // A dither depth is needed.
    void validate() const override;
    // The input has no more steps than the dither depth, or the latter has no steps at all.
    bool isIdentity() const override;

    // No operator== of its own: two dithers that differ in the dither depth alone count as equal.

    BitDepth getDitherBitDepth() const { return m_ditherBitDepth; }
    void setDitherBitDepth(BitDepth depth) { m_ditherBitDepth = depth; }

    // Whether noise for the dither depth does nothing good to values of the input depth.
    static bool wouldDitherBeBypassed(BitDepth inDepth, BitDepth ditherDepth);

private:
    BitDepth m_ditherBitDepth = Tavrin::BIT_DEPTH_UNKNOWN;
};

} // namespace Color

#endif
