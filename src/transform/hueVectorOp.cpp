// Chroma around a chosen hue.
#include "transform/hueVectorOp.h"

#include "transform/parameterBounds.h"
#include "transform/styleTable.h"
#include "utils/errorMessage.h"
#include "utils/utils.h"

namespace Color
{

namespace
{

constexpr StyleTable<HueVectorOp::HueVectorStyle, 2> kStyles{"YCH_Fwd", "YCH_Rev"};
constexpr StyleTable<HueVectorOp::HueVectorParamStyle, 3> kParamStyles{"chroma", "luma", "hue"};

constexpr ParameterBounds kChromaBounds[HueVectorOp::kParameterCount] = {{0.0, 360.0}, {0.0, 1000.0}, {0.0, 100.0}};

} // namespace

void validateHueParams(HueVectorOp::Params const& params)
{
    validateParams(params, kChromaBounds, ErrorIds::kHueVectorParameterCount, Module::kHueVector);
}

HueVectorOp::HueVectorOp() : TypedOp(Tavrin::BIT_DEPTH_32f, Tavrin::BIT_DEPTH_32f) {}

HueVectorOp::HueVectorOp(BitDepth in, BitDepth out, HueVectorStyle style, HueVectorParamStyle paramStyle, Params const& params)
    : TypedOp(in, out), m_style(style), m_paramStyle(paramStyle), m_params(params)
{
    HueVectorOp::validate();
}

void HueVectorOp::validate() const
{
    Op::validate();
    if (m_paramStyle != HueVectorParamStyle::Chroma)
        throw failure(ErrorIds::kHueVectorStyleUnrecognized, Module::kHueVector, getParamStyleName(m_paramStyle));
    validateHueParams(m_params);
}

bool HueVectorOp::operator==(Op const& other) const
{
    if (this == &other)
        return true;
    auto const* const hueVector = dynamic_cast<HueVectorOp const*>(&other);
    return hueVector != nullptr && Op::operator==(other) && m_style == hueVector->m_style &&
           m_paramStyle == hueVector->m_paramStyle && m_params == hueVector->m_params;
}

HueVectorOp::HueVectorStyle HueVectorOp::getHueVectorStyle(char const* name)
{
    return kStyles.parse(name, ErrorIds::kHueVectorStyleUnrecognized, Module::kHueVector);
}

HueVectorOp::HueVectorParamStyle HueVectorOp::getHueVectorParamStyle(char const* name)
{
    return kParamStyles.parse(name, ErrorIds::kHueVectorStyleUnrecognized, Module::kHueVector);
}

char const* HueVectorOp::getStyleName(HueVectorStyle style)
{
    return kStyles.getName(style);
}

char const* HueVectorOp::getParamStyleName(HueVectorParamStyle style)
{
    return kParamStyles.getName(style);
}

std::string HueVectorOp::getParamString(ParamType type) const
{
    return Utils::valueString(getParam(type));
}

void HueVectorOp::invert()
{
    m_style = m_style == HueVectorStyle::YCH_Fwd ? HueVectorStyle::YCH_Rev : HueVectorStyle::YCH_Fwd;
}

} // namespace Color
