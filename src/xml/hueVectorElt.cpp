// The element <HueVector>, and that of its parameters.
#include "xml/hueVectorElt.h"

#include "xml/ctfVocabulary.h"

namespace Color::Xml::Reader
{

void HueVectorParamsElt::addRules(AttributeReader& reader)
{
    reader
        .text(ATTR_HUE_VECTOR_PARAM_STYLE,
              [this](char const* name)
              {
                  HueVectorOp::HueVectorParamStyle const style = HueVectorOp::getHueVectorParamStyle(name);
                  _op().setParamStyle(style);
                  if (style != HueVectorOp::HueVectorParamStyle::Chroma)
                  {
                      throw Color::failure(ErrorIds::kHueVectorStyleUnrecognized, Module::kXmlReader, getStyleName());
                  }
              })
        .required("hue vector parameter style");
}

std::vector<ParamsElt::Param> HueVectorParamsElt::getParams() const
{
    return needed(ATTRS_HUE_VECTOR_PARAMS);
}

std::string HueVectorParamsElt::getStyleName() const
{
    return HueVectorOp::getParamStyleName(_op().getParamStyle());
}

void HueVectorParamsElt::setParams(std::optional<unsigned int>, Values const& values)
{
    _op().setParams(values);
}

} // namespace Color::Xml::Reader
