// The base of the elements whose operator has a style.
#ifndef TAVRIN_XML_STYLED_OP_ELT_H
#define TAVRIN_XML_STYLED_OP_ELT_H

#include "xml/ctfVocabulary.h"
#include "xml/opElt.h"
#include "xml/xmlReaderAttributes.h"

namespace Color::Xml::Reader
{

// The style has to be there. The operator's own parser knows the names and throws for others.
template <class Operator, class Style, Style (*kParse)(char const* name), void (Operator::*kSet)(Style style)>
class StyledOpElt : public TypedOpElt<Operator>
{
public:
    void start(char const** attributes) override
    {
        OpElt::start(attributes);
        AttributeReader reader(*this);
        // Messages call it so too.
        reader.text(ATTR_STYLE, [this](char const* name) { (this->op().*kSet)(kParse(name)); }).required(ATTR_STYLE);
        reader.read(attributes);
    }
};

} // namespace Color::Xml::Reader

#endif
