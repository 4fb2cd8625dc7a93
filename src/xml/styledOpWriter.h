// The base of the writers of operators that have a style.
#ifndef TAVRIN_XML_STYLED_OP_WRITER_H
#define TAVRIN_XML_STYLED_OP_WRITER_H

#include "xml/ctfVocabulary.h"
#include "xml/opWriter.h"

namespace Color::Xml::Writer
{

template <class Operator, class Style, char const* (*kNameOf)(Style style), Style (Operator::*kGet)() const>
class StyledOpWriter : public TypedOpWriter<Operator>
{
public:
    using TypedOpWriter<Operator>::TypedOpWriter;

protected:
    void _getAttributes(Attributes& attributes) const override
    {
        OpWriter::_getAttributes(attributes);
        attributes.emplace_back(ATTR_STYLE, kNameOf((this->op().*kGet)()));
    }
};

} // namespace Color::Xml::Writer

#endif
