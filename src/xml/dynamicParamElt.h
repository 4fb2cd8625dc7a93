// The element <DynamicParameter>.
#ifndef TAVRIN_XML_DYNAMIC_PARAM_ELT_H
#define TAVRIN_XML_DYNAMIC_PARAM_ELT_H

#include "xml/xmlReaderElements.h"

namespace Color::Xml::Reader
{

// Makes a property of the operator around it dynamic: "LOOK_SWITCH" is the bypass that all operators have, the others are up to
// the operator.
class DynamicParamElt : public PlainElt
{
public:
    // The parent is an OpElt.
    using PlainElt::PlainElt;

    void start(char const** attributes) override;
};

} // namespace Color::Xml::Reader

#endif
