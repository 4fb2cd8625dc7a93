// Writes <Reference>: what it points at, not what that holds.
#include "xml/ctfVocabulary.h"
#include "xml/opWriters.h"

namespace Color::Xml::Writer
{

namespace
{

class ReferenceWriter : public TypedOpWriter<ReferenceOp>
{
public:
    using TypedOpWriter::TypedOpWriter;

protected:
    void _getAttributes(Attributes& attributes) const override
    {
        OpWriter::_getAttributes(attributes);
        if (!op().getAlias().empty())
        {
            attributes.emplace_back(ATTR_ALIAS, op().getAlias());
            return;
        }
        attributes.emplace_back(ATTR_PATH, op().getPath());
        if (op().getBasePath() != Tavrin::BASE_PATH_NONE)
        {
            attributes.emplace_back(ATTR_BASE_PATH, Tavrin::getBasePathName(op().getBasePath()));
        }
    }
};

} // namespace

std::unique_ptr<OpWriter> createWriter(Formatter& formatter, ReferenceOp const& op)
{
    return std::make_unique<ReferenceWriter>(formatter, op);
}

} // namespace Color::Xml::Writer
