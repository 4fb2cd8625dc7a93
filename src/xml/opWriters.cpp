// The writers of all operators, by the operators' types.
#include "xml/opWriters.h"

#include <array>

namespace Color::Xml::Writer
{

namespace
{

using CreateWriter = std::unique_ptr<OpWriter> (*)(Formatter& formatter, Op const& op);

constexpr std::array kWriters = {
#define TAVRIN_OP(number, Class, name, Family) \
    CreateWriter([](Formatter& formatter, Op const& op) { return createWriter(formatter, static_cast<Class const&>(op)); }),
#include "transform/opTypes.def"
#undef TAVRIN_OP
};

} // namespace

std::unique_ptr<OpWriter> createOpWriter(Formatter& formatter, Op const& op)
{
    return kWriters.at(static_cast<std::size_t>(op.getOpType()))(formatter, op);
}

} // namespace Color::Xml::Writer
