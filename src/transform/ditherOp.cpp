// Ordered noise before a reduction of depth.
#include "transform/ditherOp.h"

#include "utils/errorMessage.h"

namespace Color
{

DitherOp::DitherOp() : TypedOp(Tavrin::BIT_DEPTH_32f, Tavrin::BIT_DEPTH_32f) {}

DitherOp::DitherOp(BitDepth in, BitDepth out, BitDepth ditherBitDepth) : TypedOp(in, out), m_ditherBitDepth(ditherBitDepth)
{
    DitherOp::validate();
}

void DitherOp::validate() const
{
    Op::validate();
    if (m_ditherBitDepth == Tavrin::BIT_DEPTH_UNKNOWN)
        throw failure(ErrorIds::kOpAttributeMissing, Module::kTransform, "DitherBitDepth", getMeaningfullIdentifier());
}

bool DitherOp::isIdentity() const
{
    return wouldDitherBeBypassed(getInputBitDepth(), m_ditherBitDepth);
}

bool DitherOp::wouldDitherBeBypassed(BitDepth inDepth, BitDepth ditherDepth)
{
    if (inDepth == ditherDepth || Tavrin::isFloatDepth(ditherDepth))
        return true;
    return Tavrin::isIntegerDepth(inDepth) && Tavrin::getBitDepthPrecision(inDepth) < Tavrin::getBitDepthPrecision(ditherDepth);
}

} // namespace Color
