// The element <Reference>.
#ifndef TAVRIN_XML_REFERENCE_ELT_H
#define TAVRIN_XML_REFERENCE_ELT_H

#include "transform/referenceOp.h"
#include "xml/opElt.h"

namespace Color::Xml::Reader
{

class ReferenceElt : public TypedOpElt<ReferenceOp>
{
public:
    // Either an alias, or a path with or without a base path.
    void start(char const** attributes) override;
};

} // namespace Color::Xml::Reader

#endif
