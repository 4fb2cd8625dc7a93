// Negative components brought into range.
#include "transform/gamutMapOp.h"

#include "transform/styleTable.h"
#include "utils/errorMessage.h"

namespace Color
{

namespace
{

constexpr StyleTable<GamutMapOp::GamutMapStyle, 2> kStyles{"none", "dw3"};

} // namespace

GamutMapOp::GamutMapOp() : TypedOp(Tavrin::BIT_DEPTH_32f, Tavrin::BIT_DEPTH_32f) {}

GamutMapOp::GamutMapOp(BitDepth in, BitDepth out, GamutMapStyle style) : TypedOp(in, out), m_style(style) {}

bool GamutMapOp::operator==(Op const& other) const
{
    if (this == &other)
        return true;
    auto const* const gamutMap = dynamic_cast<GamutMapOp const*>(&other);
    return gamutMap != nullptr && Op::operator==(other) && m_style == gamutMap->m_style;
}

GamutMapOp::GamutMapStyle GamutMapOp::getGamutMapStyle(char const* name)
{
    return kStyles.parse(name, ErrorIds::kGamutMapStyleUnrecognized, Module::kGamutMap);
}

char const* GamutMapOp::getStyleName(GamutMapStyle style)
{
    return kStyles.getName(style);
}

} // namespace Color
