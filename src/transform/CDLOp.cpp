// A colour decision: slope, offset, power and saturation.
#include "transform/CDLOp.h"

#include "transform/channelParameters.h"
#include "transform/opList.h"
#include "transform/styleTable.h"

namespace Color
{

namespace
{

using Style = CDLOp::CDLStyle;

constexpr StyleTable<Style, 4> kStyles{"v1.2_Fwd", "v1.2_Rev", "noClampFwd", "noClampRev"};

void require(bool good, char const* name, double value)
{
    if (!good)
        throw failure(ErrorIds::kCdlParameterTooLow, Module::kCdl, name, value, 0.0);
}

Style oppositeOf(Style style)
{
    switch (style)
    {
    case Style::V1_2Fwd:
        return Style::V1_2Rev;
    case Style::V1_2Rev:
        return Style::V1_2Fwd;
    case Style::NoClampFwd:
        return Style::NoClampRev;
    case Style::NoClampRev:
        return Style::NoClampFwd;
    }
    return style;
}

} // namespace

CDLOp::CDLOp() : TypedOp(Tavrin::BIT_DEPTH_32f, Tavrin::BIT_DEPTH_32f) {}

CDLOp::CDLOp(BitDepth in, BitDepth out, std::string const& id, std::string const& name, Descriptions const& descriptions,
             CDLStyle style, ChannelParams const& slope, ChannelParams const& offset, ChannelParams const& power, double saturation)
    : TypedOp(in, out, id, name, descriptions),
      m_style(style),
      m_slope(slope),
      m_offset(offset),
      m_power(power),
      m_saturation(saturation)
{
    CDLOp::validate();
}

void CDLOp::validate() const
{
    Op::validate();
    for (std::size_t channel = 0; channel < 3; ++channel)
        require(m_slope[channel] >= 0.0, "slope", m_slope[channel]);
    for (std::size_t channel = 0; channel < 3; ++channel)
        require(m_power[channel] > 0.0, "power", m_power[channel]);
    require(m_saturation >= 0.0, "saturation", m_saturation);
}

bool CDLOp::isIdentity() const
{
    static constexpr ChannelParams kOne{1.0};
    static constexpr ChannelParams kZero{0.0};
    return m_slope == kOne && m_offset == kZero && m_power == kOne && m_saturation == 1.0;
}

void CDLOp::inverse(OpList& list) const
{
    list.append(new CDLOp(getOutputBitDepth(), getInputBitDepth(), {}, {}, {}, oppositeOf(m_style), m_slope, m_offset, m_power,
                          m_saturation));
}

CDLOp::CDLStyle CDLOp::getCDLStyle(char const* name)
{
    return kStyles.parse(name, ErrorIds::kCdlStyleUnrecognized, Module::kCdl);
}

char const* CDLOp::getCDLStyleName(CDLStyle style)
{
    return kStyles.getName(style);
}

bool CDLOp::isReverse() const
{
    return m_style == CDLStyle::V1_2Rev || m_style == CDLStyle::NoClampRev;
}

std::string CDLOp::getChannelParametersString(ChannelParams const& params)
{
    return joinValues({params[0], params[1], params[2]});
}

std::string CDLOp::getSaturationString() const
{
    return joinValues({m_saturation});
}

} // namespace Color
