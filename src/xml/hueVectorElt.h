// The element <HueVector>, and that of its parameters.
#ifndef TAVRIN_XML_HUE_VECTOR_ELT_H
#define TAVRIN_XML_HUE_VECTOR_ELT_H

#include "transform/hueVectorOp.h"
#include "xml/paramsElt.h"
#include "xml/styledOpElt.h"

namespace Color::Xml::Reader
{

class HueVectorElt
    : public StyledOpElt<HueVectorOp, HueVectorOp::HueVectorStyle, &HueVectorOp::getHueVectorStyle, &HueVectorOp::setStyle>
{
};

// <HueVecParams>: what changes, and for which hues how much. A file may name more that changes than can be rendered, and is
// refused.
class HueVectorParamsElt : public ParamsElt
{
public:
    // The parent is a HueVectorElt.
    using ParamsElt::ParamsElt;

protected:
    void addRules(AttributeReader& reader) override;
    std::vector<Param> getParams() const override;
    std::string getStyleName() const override;
    void setParams(std::optional<unsigned int> channel, Values const& values) override;

private:
    HueVectorOp& _op() const { return parentAs<HueVectorElt>().op(); }
};

} // namespace Color::Xml::Reader

#endif
