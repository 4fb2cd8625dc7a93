// Writes <LUT1D>, and what it shares with <InverseLUT1D>.
#include "xml/lut1DWriter.h"

#include "xml/arrayWriter.h"
#include "xml/ctfVocabulary.h"
#include "xml/opWriters.h"

#include <Imath/half.h>

#include <algorithm>

namespace Color::Xml::Writer
{

void Lut1DWriter::_getAttributes(Attributes& attributes) const
{
    OpWriter::_getAttributes(attributes);
    if (op().getInterpolation() != Lut1DOp::InterpolationAlgo::Default)
    {
        attributes.emplace_back(ATTR_INTERPOLATION, Lut1DOp::getInterpolationName(op().getInterpolation()));
    }
    if (op().isInputHalfDomain())
    {
        attributes.emplace_back(ATTR_HALF_DOMAIN, "true");
    }
    if (op().isOutputRawHalfs())
    {
        attributes.emplace_back(ATTR_RAW_HALFS, "true");
    }
    if (op().getHueAdjust() != Lut1DOp::HueAdjust::None)
    {
        attributes.emplace_back(ATTR_HUE_ADJUST, Lut1DOp::getHueAdjustName(op().getHueAdjust()));
    }
}

void Lut1DWriter::_writeContent() const
{
    Array const& array = op().getArray();
    Array::Values values = array.getValues();
    BitDepth depth = op().getOutputBitDepth();
    if (op().isOutputRawHalfs())
    {
        std::transform(values.begin(), values.end(), values.begin(), [](float value) { return half(value).bits(); });
        depth = Tavrin::BIT_DEPTH_16i; // The depth at which bit patterns are numbers.
    }
    // The columns in memory are three in any case.
    unsigned int const columns = array.getNumColorComponents();
    unsigned int const stride = columns == 1 ? array.getMaxColorComponents() : 1;
    writeArray(getFormatter(), {array.getDimension(), columns}, values, columns, depth, stride);
}

std::unique_ptr<OpWriter> createWriter(Formatter& formatter, Lut1DOp const& op)
{
    return std::make_unique<Lut1DWriter>(formatter, op);
}

} // namespace Color::Xml::Writer
