// Chroma around a chosen hue.
#ifndef TAVRIN_TRANSFORM_HUE_VECTOR_OP_H
#define TAVRIN_TRANSFORM_HUE_VECTOR_OP_H

#include "transform/op.h"

#include <string>
#include <vector>

namespace Color
{

// Multiplies (or divides) the chroma of hues within a range by a weight that is the amount at the centre and falls to 1 towards the
// range's ends. Parameters are free of depths.
class HueVectorOp : public TypedOp<HueVectorOp, Op::OpType::HueVectorOp>
{
public:
    // The weight multiplies, or divides.
    enum class HueVectorStyle : unsigned int
    {
        YCH_Fwd = 0,
        YCH_Rev = 1
    };
    // What changes. Files know all names; only chroma can be rendered.
    enum class HueVectorParamStyle : unsigned int
    {
        Chroma = 0,
        Luma = 1,
        Hue = 2
    };
    // Places in the parameters: centre and width of the range of hues in degrees, 0 being red, and the amount.
    enum class ParamType : unsigned int
    {
        Center = 0,
        Width = 1,
        Amount = 2
    };
    using Params = std::vector<double>;
    static constexpr unsigned int kParameterCount = 3;

    // 32f to 32f, forward, chroma, without parameters.
    HueVectorOp();
    // Validates.
    HueVectorOp(BitDepth in, BitDepth out, HueVectorStyle style, HueVectorParamStyle paramStyle, Params const& params);

    // Throws for a parameter style that can't be rendered, and for parameters that don't fit it.
    void validate() const override;
    // An amount of 1 changes nothing but roundings, and yet is no identity.
    bool isNoop() const override { return false; }
    bool isIdentity() const override { return false; }
    bool operator==(Op const& other) const override;
    float getMinimumVersion() const override { return 1.4F; }

    // Names are compared without regard to case; throws on others and on null.
    static HueVectorStyle getHueVectorStyle(char const* name);
    static HueVectorParamStyle getHueVectorParamStyle(char const* name);
    // Empty for a value that is no style.
    static char const* getStyleName(HueVectorStyle style);
    static char const* getParamStyleName(HueVectorParamStyle style);

    HueVectorStyle getStyle() const { return m_style; }
    void setStyle(HueVectorStyle style) { m_style = style; }
    HueVectorParamStyle getParamStyle() const { return m_paramStyle; }
    void setParamStyle(HueVectorParamStyle style) { m_paramStyle = style; }
    Params const& getParams() const { return m_params; }
    void setParams(Params const& params) { m_params = params; }
    // The parameters must hold the one that is asked for.
    double getParam(ParamType type) const { return m_params[static_cast<unsigned int>(type)]; }
    std::string getParamString(ParamType type) const;

    // Exchanges the two styles.
    void invert();

private:
    HueVectorStyle m_style = HueVectorStyle::YCH_Fwd;
    HueVectorParamStyle m_paramStyle = HueVectorParamStyle::Chroma;
    Params m_params;
};

// Throws unless there are a centre of 0 to 360 degrees, a width of 0 to 1000 degrees and an amount of 0 to 100.
void validateHueParams(HueVectorOp::Params const& params);

} // namespace Color

#endif
