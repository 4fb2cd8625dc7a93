// Writes <ExposureContrast>.
#include "xml/opWriters.h"
#include "xml/styledOpWriter.h"

namespace Color::Xml::Writer
{

namespace
{

class ExposureContrastWriter : public StyledOpWriter<ExposureContrastOp, ExposureContrastOp::Style,
                                                     &ExposureContrastOp::getStyleName, &ExposureContrastOp::getStyle>
{
public:
    using StyledOpWriter::StyledOpWriter;

protected:
    void _writeContent() const override
    {
        getFormatter().writeEmptyTag(TAG_EC_PARAMS, {{ATTR_EXPOSURE, op().getExposure()->getValueString()},
                                                     {ATTR_CONTRAST, op().getContrast()->getValueString()},
                                                     {ATTR_PIVOT, op().getPivotString()}});
        if (op().getExposure()->isDynamic())
        {
            writeDynamicParameter(getFormatter(), TAG_EXPOSURE);
        }
        if (op().getContrast()->isDynamic())
        {
            writeDynamicParameter(getFormatter(), TAG_CONTRAST);
        }
    }
};

} // namespace

std::unique_ptr<OpWriter> createWriter(Formatter& formatter, ExposureContrastOp const& op)
{
    return std::make_unique<ExposureContrastWriter>(formatter, op);
}

} // namespace Color::Xml::Writer
