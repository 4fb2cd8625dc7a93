// Writes <ASC_CDL>.
#include "xml/opWriters.h"
#include "xml/styledOpWriter.h"

namespace Color::Xml::Writer
{

namespace
{

class CDLWriter : public StyledOpWriter<CDLOp, CDLOp::CDLStyle, &CDLOp::getCDLStyleName, &CDLOp::getCDLStyle>
{
public:
    using StyledOpWriter::StyledOpWriter;

protected:
    void _writeContent() const override
    {
        _writeNode(TAG_SOPNODE,
                   {{TAG_SLOPE, op().getSlopeString()}, {TAG_OFFSET, op().getOffsetString()}, {TAG_POWER, op().getPowerString()}});
        _writeNode(TAG_SATNODE, {{TAG_SATURATION, op().getSaturationString()}});
    }

private:
    using Numbers = std::vector<std::pair<char const*, std::string>>;

    void _writeNode(char const* tag, Numbers const& numbers) const
    {
        getFormatter().writeStartTag(tag);
        {
            ScopeIndent const indent(getFormatter());
            for (auto const& [name, text] : numbers)
            {
                getFormatter().writeContentTag(name, text);
            }
        }
        getFormatter().writeEndTag(tag);
    }
};

} // namespace

std::unique_ptr<OpWriter> createWriter(Formatter& formatter, CDLOp const& op)
{
    return std::make_unique<CDLWriter>(formatter, op);
}

} // namespace Color::Xml::Writer
