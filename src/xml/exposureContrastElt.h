// The element <ExposureContrast>, and that of its parameters.
#ifndef TAVRIN_XML_EXPOSURE_CONTRAST_ELT_H
#define TAVRIN_XML_EXPOSURE_CONTRAST_ELT_H

#include "transform/exposureContrastOp.h"
#include "xml/paramsElt.h"
#include "xml/styledOpElt.h"

namespace Color::Xml::Reader
{

class ExposureContrastElt : public StyledOpElt<ExposureContrastOp, ExposureContrastOp::Style, &ExposureContrastOp::getECStyle,
                                               &ExposureContrastOp::setStyle>
{
public:
    bool makeDynamic(DynamicProperty::Ids id) override;
};

// <ECParams>: exposure, contrast and pivot.
class ECParamsElt : public ParamsElt
{
public:
    // The parent is an ExposureContrastElt.
    using ParamsElt::ParamsElt;

protected:
    std::vector<Param> getParams() const override;
    std::string getStyleName() const override;
    void setParams(std::optional<unsigned int> channel, Values const& values) override;
};

} // namespace Color::Xml::Reader

#endif
