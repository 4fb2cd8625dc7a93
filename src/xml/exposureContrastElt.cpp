// The element <ExposureContrast>, and that of its parameters.
#include "xml/exposureContrastElt.h"

#include "xml/ctfVocabulary.h"

namespace Color::Xml::Reader
{

bool ExposureContrastElt::makeDynamic(DynamicProperty::Ids id)
{
    switch (id)
    {
    case DynamicProperty::EXPOSURE:
        op().getExposure()->setDynamic(true);
        return true;
    case DynamicProperty::CONTRAST:
        op().getContrast()->setDynamic(true);
        return true;
    case DynamicProperty::BYPASS:
        break;
    }
    return OpElt::makeDynamic(id);
}

std::vector<ParamsElt::Param> ECParamsElt::getParams() const
{
    return {{ATTR_EXPOSURE}, {ATTR_CONTRAST}, {ATTR_PIVOT}};
}

std::string ECParamsElt::getStyleName() const
{
    return ExposureContrastOp::getStyleName(parentAs<ExposureContrastElt>().op().getStyle());
}

void ECParamsElt::setParams(std::optional<unsigned int>, Values const& values)
{
    ExposureContrastOp& op = parentAs<ExposureContrastElt>().op();
    op.getExposure()->setValue(values[0]);
    op.getContrast()->setValue(values[1]);
    op.setPivot(values[2]);
}

} // namespace Color::Xml::Reader
