// Negative components brought into range.
#ifndef TAVRIN_TRANSFORM_GAMUT_MAP_OP_H
#define TAVRIN_TRANSFORM_GAMUT_MAP_OP_H

#include "transform/op.h"

namespace Color
{

// Clips negative components to 0 and moves the middle one of the three, so that the hue stays. Free of depths.
class GamutMapOp : public TypedOp<GamutMapOp, Op::OpType::GamutMapOp>
{
public:
    enum class GamutMapStyle : unsigned int
    {
        None = 0,
        DW3 = 1
    };

    // 32f to 32f, none.
    GamutMapOp();
    GamutMapOp(BitDepth in, BitDepth out, GamutMapStyle style);

    bool isIdentity() const override { return m_style == GamutMapStyle::None; }
    bool operator==(Op const& other) const override;
    float getMinimumVersion() const override { return 1.4F; }

    // Names are compared without regard to case; throws on others and on null.
    static GamutMapStyle getGamutMapStyle(char const* name);
    // Empty for a value that is no style.
    static char const* getStyleName(GamutMapStyle style);

    GamutMapStyle getStyle() const { return m_style; }
    void setStyle(GamutMapStyle style) { m_style = style; }

    // There is no way back from a clip; none stands in for it.
    void invert() { m_style = GamutMapStyle::None; }

private:
    GamutMapStyle m_style = GamutMapStyle::None;
};

} // namespace Color

#endif
