// The writers of all operators.
#ifndef TAVRIN_XML_OP_WRITERS_H
#define TAVRIN_XML_OP_WRITERS_H

#include "transform/ops.h"
#include "xml/opWriter.h"

#include <memory>

namespace Color::Xml::Writer
{

// One overload for each operator, in a file of its own: an operator without a writer does not link.
#define TAVRIN_OP(number, Class, name, Family) std::unique_ptr<OpWriter> createWriter(Formatter& formatter, Class const& op);
#include "transform/opTypes.def"
#undef TAVRIN_OP

// The one that the type asks for.
std::unique_ptr<OpWriter> createOpWriter(Formatter& formatter, Op const& op);

} // namespace Color::Xml::Writer

#endif
