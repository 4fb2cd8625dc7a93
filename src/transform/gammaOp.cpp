// A power function on each channel, plain or with a straight toe.
#include "transform/gammaOp.h"

#include "transform/parameterBounds.h"
#include "transform/styleTable.h"

#include <cmath>

namespace Color
{

namespace
{

using Params = GammaOp::Params;
using Style = GammaOp::GammaStyle;

constexpr StyleTable<Style, 4> kStyles{"basicFwd", "basicRev", "moncurveFwd", "moncurveRev"};

constexpr ParameterBounds kBounds[] = {{1.0, 10.0}, {0.0, 0.9}}; // gamma, offset

// Below these a curve has no toe to speak of, and its constants would divide by zero.
constexpr double kLeastGamma = 1.000001;
constexpr double kLeastOffset = 1e-6;

// 0 for a value that is no style.
unsigned int parameterCount(Style style)
{
    switch (style)
    {
    case Style::BasicFwd:
    case Style::BasicRev:
        return 1;
    case Style::MoncurveFwd:
    case Style::MoncurveRev:
        return 2;
    }
    return 0;
}

double limitedGamma(Params const& params)
{
    return params[0] > kLeastGamma ? params[0] : kLeastGamma;
}

double limitedOffset(Params const& params)
{
    return params[1] > kLeastOffset ? params[1] : kLeastOffset;
}

// The value of the curve at its break.
double breakValue(double g, double o)
{
    return std::pow(g * o / ((g - 1.0) * (1.0 + o)), g);
}

} // namespace

GammaOp::GammaOp() : TypedOp(Tavrin::BIT_DEPTH_32f, Tavrin::BIT_DEPTH_32f) {}

GammaOp::GammaOp(BitDepth in, BitDepth out, std::string const& id, std::string const& name, Descriptions const& descriptions,
                 GammaStyle style, Params const& red, Params const& green, Params const& blue, Params const& alpha)
    : TypedOp(in, out, id, name, descriptions), m_style(style)
{
    setRedParams(red);
    setGreenParams(green);
    setBlueParams(blue);
    setAlphaParams(alpha);
    GammaOp::validate();
}

void GammaOp::validate() const
{
    Op::validate();
    std::span<ParameterBounds const> const bounds(kBounds, parameterCount(m_style));
    for (std::size_t channel = 0; channel < 4; ++channel)
        validateParams(m_params[channel], bounds, ErrorIds::kGammaParameterCount, Module::kGamma);
}

bool GammaOp::isIdentity() const
{
    return areAllComponentsEqual() && isIdentityParameters(getRedParams(), m_style);
}

bool GammaOp::operator==(Op const& other) const
{
    if (this == &other)
        return true;
    if (other.getOpType() != getOpType() || !Op::operator==(other))
        return false;
    auto const& gamma = static_cast<GammaOp const&>(other);
    return m_style == gamma.m_style && m_params == gamma.m_params;
}

GammaOp::GammaStyle GammaOp::getGammaStyle(char const* name)
{
    return kStyles.parse(name, ErrorIds::kGammaStyleUnrecognized, Module::kGamma);
}

char const* GammaOp::getGammaStyleName(GammaStyle style)
{
    return kStyles.getName(style);
}

void GammaOp::setParams(Params const& params)
{
    m_params.setColour(params);
    setAlphaParams(getIdentityParameters(m_style));
}

void GammaOp::invert()
{
    switch (m_style)
    {
    case GammaStyle::BasicFwd:
        return setGammaStyle(GammaStyle::BasicRev);
    case GammaStyle::BasicRev:
        return setGammaStyle(GammaStyle::BasicFwd);
    case GammaStyle::MoncurveFwd:
        return setGammaStyle(GammaStyle::MoncurveRev);
    case GammaStyle::MoncurveRev:
        return setGammaStyle(GammaStyle::MoncurveFwd);
    }
}

GammaOp::Params GammaOp::getIdentityParameters(GammaStyle style)
{
    static Params const identity{1.0, 0.0};
    return Params(identity.begin(), identity.begin() + parameterCount(style));
}

bool GammaOp::isIdentityParameters(Params const& params, GammaStyle style)
{
    return parameterCount(style) != 0 && params == getIdentityParameters(style);
}

bool GammaOp::isAlphaComponentIdentity() const
{
    return isIdentityParameters(getAlphaParams(), m_style);
}

bool GammaOp::areAllComponentsEqual() const
{
    return m_params.isAllEqual();
}

bool GammaOp::isNonChannelDependent() const
{
    return m_params.isColourEqual() && isAlphaComponentIdentity();
}

std::string GammaOp::getGammaString() const
{
    return m_params.getText(0);
}

std::string GammaOp::getOffsetString() const
{
    return m_params.getText(1);
}

double GammaOp::monCurveGammaFwd(Params const& params)
{
    return limitedGamma(params);
}

double GammaOp::monCurveOffsetFwd(Params const& params)
{
    double const o = limitedOffset(params);
    return o / (1.0 + o);
}

double GammaOp::monCurveScaleFwd(Params const& params)
{
    return 1.0 / (1.0 + limitedOffset(params));
}

double GammaOp::monCurveBreakFwd(Params const& params)
{
    return limitedOffset(params) / (limitedGamma(params) - 1.0);
}

double GammaOp::monCurveSlopeFwd(Params const& params)
{
    double const g = limitedGamma(params);
    double const o = limitedOffset(params);
    return breakValue(g, o) * (g - 1.0) / o;
}

double GammaOp::monCurveGammaRev(Params const& params)
{
    return 1.0 / limitedGamma(params);
}

double GammaOp::monCurveOffsetRev(Params const& params)
{
    return limitedOffset(params);
}

double GammaOp::monCurveScaleRev(Params const& params)
{
    return 1.0 + limitedOffset(params);
}

double GammaOp::monCurveBreakRev(Params const& params)
{
    return breakValue(limitedGamma(params), limitedOffset(params));
}

double GammaOp::monCurveSlopeRev(Params const& params)
{
    double const g = limitedGamma(params);
    double const o = limitedOffset(params);
    return std::pow((g - 1.0) / o, g - 1.0) * std::pow((1.0 + o) / g, g);
}

} // namespace Color
