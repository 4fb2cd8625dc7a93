// Writes <Dither>.
#include "xml/ctfVocabulary.h"
#include "xml/opWriters.h"

namespace Color::Xml::Writer
{

namespace
{

class DitherWriter : public TypedOpWriter<DitherOp>
{
public:
    using TypedOpWriter::TypedOpWriter;

    // Files state more than reading asks for.
    float getMinimumVersion() const override { return 1.4F; }

protected:
    void _getAttributes(Attributes& attributes) const override
    {
        OpWriter::_getAttributes(attributes);
        attributes.emplace_back(ATTR_DITHER_BIT_DEPTH, Tavrin::getBitDepthName(op().getDitherBitDepth()));
    }
};

} // namespace

std::unique_ptr<OpWriter> createWriter(Formatter& formatter, DitherOp const& op)
{
    return std::make_unique<DitherWriter>(formatter, op);
}

} // namespace Color::Xml::Writer
