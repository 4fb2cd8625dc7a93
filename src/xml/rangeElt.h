// The element <Range>, and those of its limits.
#ifndef TAVRIN_XML_RANGE_ELT_H
#define TAVRIN_XML_RANGE_ELT_H

#include "transform/rangeOp.h"
#include "xml/opElt.h"

namespace Color::Xml::Reader
{

class RangeElt : public TypedOpElt<RangeOp>
{
};

// <minInValue>, <maxInValue>, <minOutValue> and <maxOutValue>: one number each.
class RangeValueElt : public PlainElt
{
public:
    // The parent is a RangeElt.
    using PlainElt::PlainElt;

    // Every line is taken alone; the last one counts.
    void setRawData(std::string const& text, unsigned int line) override;
};

} // namespace Color::Xml::Reader

#endif
