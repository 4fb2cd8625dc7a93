// Writes <HueVector>.
#include "xml/opWriters.h"
#include "xml/paramsWriter.h"
#include "xml/styledOpWriter.h"

namespace Color::Xml::Writer
{

namespace
{

class HueVectorWriter
    : public StyledOpWriter<HueVectorOp, HueVectorOp::HueVectorStyle, &HueVectorOp::getStyleName, &HueVectorOp::getStyle>
{
public:
    using StyledOpWriter::StyledOpWriter;

protected:
    void _writeContent() const override
    {
        Attributes attributes{{ATTR_HUE_VECTOR_PARAM_STYLE, HueVectorOp::getParamStyleName(op().getParamStyle())}};
        addParams(attributes, ATTRS_HUE_VECTOR_PARAMS, op().getParams());
        getFormatter().writeEmptyTag(TAG_HUE_VECTOR_PARAMS, attributes);
    }
};

} // namespace

std::unique_ptr<OpWriter> createWriter(Formatter& formatter, HueVectorOp const& op)
{
    return std::make_unique<HueVectorWriter>(formatter, op);
}

} // namespace Color::Xml::Writer
