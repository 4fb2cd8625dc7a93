// Which element reads which tag of a transform file.
#ifndef TAVRIN_XML_CTF_ELEMENTS_H
#define TAVRIN_XML_CTF_ELEMENTS_H

#include "transform/op.h"
#include "xml/xmlReaderElements.h"

#include <memory>
#include <string>

namespace Color::Xml::Reader
{

// The operator that a tag stands for, in any case; null for a tag that is none.
Op::OpType const* findOperator(char const* tag);

// The tag of an operator, as it is written.
char const* getOperatorTag(Op::OpType type);

// The element for a child of a container other than an operator: one that reads it, or a dummy for a child that is unknown or has
// no place there. Throws for a tag that no file may hold.
std::unique_ptr<Element> createChild(std::string const& tag, ContainerElt& parent, unsigned int line, std::string const& file);

} // namespace Color::Xml::Reader

#endif
