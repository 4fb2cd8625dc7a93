// The element <Dither>.
#ifndef TAVRIN_XML_DITHER_ELT_H
#define TAVRIN_XML_DITHER_ELT_H

#include "transform/ditherOp.h"
#include "xml/opElt.h"

namespace Color::Xml::Reader
{

class DitherElt : public TypedOpElt<DitherOp>
{
public:
    void start(char const** attributes) override;
};

} // namespace Color::Xml::Reader

#endif
