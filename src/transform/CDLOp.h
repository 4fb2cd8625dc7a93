// A colour decision after the American Society of Cinematographers: slope, offset and power on each channel, and saturation.
#ifndef TAVRIN_TRANSFORM_CDL_OP_H
#define TAVRIN_TRANSFORM_CDL_OP_H

#include "transform/op.h"

#include <array>
#include <cstddef>
#include <string>

namespace Color
{

// Parameters are free of depths.
class CDLOp : public TypedOp<CDLOp, Op::OpType::CDLOp>
{
public:
    enum class CDLStyle : unsigned int
    {
        V1_2Fwd = 0,
        V1_2Rev = 1,
        NoClampFwd = 2,
        NoClampRev = 3
    };

    // Red, green, blue and alpha. Alpha is stored and compared but takes no part in the arithmetic; its value in an identity is 1,
    // for the offset too.
    class ChannelParams
    {
    public:
        constexpr ChannelParams(double red, double green, double blue, double alpha = 1.0) : m_values{red, green, blue, alpha} {}
        explicit constexpr ChannelParams(double colour) : ChannelParams(colour, colour, colour) {}

        constexpr double operator[](std::size_t channel) const { return m_values[channel]; }
        bool operator==(ChannelParams const& other) const = default;

    private:
        std::array<double, 4> m_values;
    };

    // 32f to 32f, version 1.2 forward, an identity.
    CDLOp();
    // Validates.
    CDLOp(BitDepth in, BitDepth out, std::string const& id, std::string const& name, Descriptions const& descriptions,
          CDLStyle style, ChannelParams const& slope, ChannelParams const& offset, ChannelParams const& power, double saturation);

    void validate() const override;
    bool isIdentity() const override;
    // The numbers stay, the style is exchanged with its opposite.
    void inverse(OpList& list) const override;

    // Names are compared without regard to case; throws on others and on null.
    static CDLStyle getCDLStyle(char const* name);
    // Empty for a value that is no style.
    static char const* getCDLStyleName(CDLStyle style);

    CDLStyle getCDLStyle() const { return m_style; }
    bool isReverse() const;
    ChannelParams const& getSlopeParams() const { return m_slope; }
    ChannelParams const& getOffsetParams() const { return m_offset; }
    ChannelParams const& getPowerParams() const { return m_power; }
    double getSaturation() const { return m_saturation; }

    // Plain stores; validate afterwards.
    void setCDLStyle(CDLStyle style) { m_style = style; }
    void setSlopeParams(ChannelParams const& slope) { m_slope = slope; }
    void setOffsetParams(ChannelParams const& offset) { m_offset = offset; }
    void setPowerParams(ChannelParams const& power) { m_power = power; }
    void setSaturation(double saturation) { m_saturation = saturation; }

    // For files: red, green and blue with ", " between.
    static std::string getChannelParametersString(ChannelParams const& params);
    std::string getSlopeString() const { return getChannelParametersString(m_slope); }
    std::string getOffsetString() const { return getChannelParametersString(m_offset); }
    std::string getPowerString() const { return getChannelParametersString(m_power); }
    std::string getSaturationString() const;

private:
    CDLStyle m_style = CDLStyle::V1_2Fwd;
    ChannelParams m_slope{1.0};
    ChannelParams m_offset{0.0};
    ChannelParams m_power{1.0};
    double m_saturation = 1.0;
};

} // namespace Color

#endif
