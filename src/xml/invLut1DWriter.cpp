// Writes <InverseLUT1D>: like a forward table, under a tag of its own.
#include "xml/lut1DWriter.h"
#include "xml/opWriters.h"

namespace Color::Xml::Writer
{

std::unique_ptr<OpWriter> createWriter(Formatter& formatter, InvLut1DOp const& op)
{
    return std::make_unique<Lut1DWriter>(formatter, op);
}

} // namespace Color::Xml::Writer
