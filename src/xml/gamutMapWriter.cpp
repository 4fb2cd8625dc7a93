// Writes <GamutMap>.
#include "xml/opWriters.h"
#include "xml/styledOpWriter.h"

namespace Color::Xml::Writer
{

namespace
{

using GamutMapWriter = StyledOpWriter<GamutMapOp, GamutMapOp::GamutMapStyle, &GamutMapOp::getStyleName, &GamutMapOp::getStyle>;

} // namespace

std::unique_ptr<OpWriter> createWriter(Formatter& formatter, GamutMapOp const& op)
{
    return std::make_unique<GamutMapWriter>(formatter, op);
}

} // namespace Color::Xml::Writer
