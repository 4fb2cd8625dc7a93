// Exposure and contrast around a pivot.
#include "transform/exposureContrastOp.h"

#include "transform/styleTable.h"

namespace Color
{

namespace
{

using Style = ExposureContrastOp::Style;

constexpr StyleTable<Style, 3> kStyles{"video", "log", "linear"};

constexpr double kDefaultPivot = 0.18; // Middle grey.

template <class Property>
bool answersFor(Property const& property, DynamicProperty::Ids id)
{
    return property.getIdentifier() == id && property.isDynamic();
}

} // namespace

ExposureContrastOp::ExposureContrastOp() : ExposureContrastOp(Tavrin::BIT_DEPTH_32f, Tavrin::BIT_DEPTH_32f, Style::Video) {}

ExposureContrastOp::ExposureContrastOp(BitDepth in, BitDepth out, Style style)
    : TypedOp(in, out),
      m_style(style),
      m_exposure(std::make_shared<ExposureDynamicProperty>(0.0, false)),
      m_contrast(std::make_shared<ContrastDynamicProperty>(1.0, false)),
      m_pivot(kDefaultPivot)
{
}

ExposureContrastOp::ExposureContrastOp(ExposureContrastOp const& other)
    : TypedOp(other),
      m_style(other.m_style),
      m_exposure(shareOrCopy(other.m_exposure)),
      m_contrast(shareOrCopy(other.m_contrast)),
      m_pivot(other.m_pivot)
{
}

ExposureContrastOp& ExposureContrastOp::operator=(ExposureContrastOp const& other)
{
    if (this == &other)
        return *this;
    TypedOp::operator=(other);
    m_style = other.m_style;
    m_exposure = shareOrCopy(other.m_exposure);
    m_contrast = shareOrCopy(other.m_contrast);
    m_pivot = other.m_pivot;
    return *this;
}

void ExposureContrastOp::validate() const
{
    Op::validate();
    m_exposure->validate();
    m_contrast->validate();
}

bool ExposureContrastOp::isIdentity() const
{
    return m_exposure->getValue() == 0.0 && m_contrast->getValue() == 1.0;
}

bool ExposureContrastOp::isDynamic() const
{
    return Op::isDynamic() || m_exposure->isDynamic() || m_contrast->isDynamic();
}

bool ExposureContrastOp::hasDynamicProperty(DynamicProperty::Ids id) const
{
    return Op::hasDynamicProperty(id) || answersFor(*m_exposure, id) || answersFor(*m_contrast, id);
}

void ExposureContrastOp::setDynamicProperty(DynamicProperty const& property)
{
    if (answersFor(*m_exposure, property.id))
        m_exposure->setContent(property);
    else if (answersFor(*m_contrast, property.id))
        m_contrast->setContent(property);
    else
        Op::setDynamicProperty(property);
}

void ExposureContrastOp::getDynamicProperty(DynamicProperty& property) const
{
    if (answersFor(*m_exposure, property.id))
        m_exposure->getContent(property);
    else if (answersFor(*m_contrast, property.id))
        m_contrast->getContent(property);
    else
        Op::getDynamicProperty(property);
}

bool ExposureContrastOp::operator==(Op const& other) const
{
    if (this == &other)
        return true;
    if (other.getOpType() != getOpType() || !Op::operator==(other))
        return false;
    auto const& op = static_cast<ExposureContrastOp const&>(other);
    return m_style == op.m_style && sameProperty(m_exposure, op.m_exposure) && sameProperty(m_contrast, op.m_contrast) &&
           m_pivot == op.m_pivot;
}

ExposureContrastOp::Style ExposureContrastOp::getECStyle(char const* name)
{
    return kStyles.parse(name, ErrorIds::kExposureContrastStyleUnrecognized, Module::kExposureContrast);
}

char const* ExposureContrastOp::getStyleName(Style style)
{
    return kStyles.getName(style);
}

std::string ExposureContrastOp::getPivotString() const
{
    return Utils::valueString(m_pivot);
}

} // namespace Color
