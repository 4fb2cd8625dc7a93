// Shader text of the hue vector.
#include "renderer/GPUOps.h"

namespace Rendering
{

namespace
{

using Color::HueVectorOp;
using GPUShaderUtils::ShaderText;

// To a grey axis and a plane in which the hue is an angle, and back. In row order.
constexpr float kRgbToYab[] = {1.0F / 3.0F, 1.0F / 3.0F, 1.0F / 3.0F, 0.5F, -0.25F, -0.25F, 0.0F, 0.4330127F, -0.4330127F};
constexpr float kYabToRgb[] = {1.0F, 1.3333334F, 0.0F, 1.0F, -0.6666667F, 1.1547005F, 1.0F, -0.6666667F, -1.1547005F};

float radians(double degrees)
{
    return static_cast<float>(degrees) * 3.1415927F / 180.0F;
}

// The angle from the centre of the range, from -pi to pi.
void addHue(ShaderText& text, HueVectorOp const& op)
{
    std::string const lerp = text.getLerp();
    text.mat3Mul("vec3 yab", {std::begin(kRgbToYab), std::end(kRgbToYab)}, "outColor.rgb");
    text.addLine("float hue = atan( yab.b, yab.g)");
    text.addLine(ShaderText::ShaderLine() << "hue = hue - float(" << radians(op.getParam(HueVectorOp::ParamType::Center)) << ")");
    text.addLine("hue = " + lerp + "( hue, hue + 6.28318530717959, step( hue, -3.14159265358979))");
    text.addLine("hue = " + lerp + "( hue, hue - 6.28318530717959, step( 3.14159265358979, hue))");
}

// The weight: a quadratic spline over four quarters of the range, whose coefficients are chosen without an array.
void addWeight(ShaderText& text, HueVectorOp const& op)
{
    std::string const lerp = text.getLerp();
    float const knotScale = 4.0F / radians(op.getParam(HueVectorOp::ParamType::Width));
    float const gain = static_cast<float>(op.getParam(HueVectorOp::ParamType::Amount)) - 1.0F;
    text.addLine(ShaderText::ShaderLine() << "float knot_coord = clamp(2. + hue * float(" << knotScale << "),0.,4.)");
    text.addLine("int j = int(min(knot_coord,3.))");
    text.addLine("float t = knot_coord - float(j)");
    text.addLine("vec4 monomials = vec4( t*t*t, t*t, t, 1. )");
    text.addLine("vec4 m0 = vec4(  0.25,  0.00,  0.00,  0.00)");
    text.addLine("vec4 m1 = vec4( -0.75,  0.75,  0.75,  0.25)");
    text.addLine("vec4 m2 = vec4(  0.75, -1.50,  0.00,  1.00)");
    text.addLine("vec4 m3 = vec4( -0.25,  0.75, -0.75,  0.25 )");
    text.addLine("vec4 coefs = " + lerp + "( m0, m1, float(j == 1))");
    text.addLine("coefs = " + lerp + "( coefs, m2, float(j == 2))");
    text.addLine("coefs = " + lerp + "( coefs, m3, float(j == 3))");
    text.addLine("float f_H = dot(coefs, monomials)");
    text.addLine(ShaderText::ShaderLine() << "float chroma_scale = 1. + f_H * float(" << gain << ")");
}

void addChroma(ShaderText& text, std::string const& operation)
{
    text.addLine("yab.g = yab.g " + operation + " chroma_scale");
    text.addLine("yab.b = yab.b " + operation + " chroma_scale");
    text.mat3Mul("outColor.rgb", {std::begin(kYabToRgb), std::end(kYabToRgb)}, "yab");
}

} // namespace

// A style that does not exist does nothing.
class GPUHueVectorOp : public TypedGPUOp<HueVectorOp>
{
public:
    using TypedGPUOp::TypedGPUOp;

protected:
    void _addProcessingTextToShaderProgram(std::string& text) override
    {
        switch (_getTypedOp().getStyle())
        {
        case HueVectorOp::HueVectorStyle::YCH_Fwd:
            text += _chromaText("*");
            break;
        case HueVectorOp::HueVectorStyle::YCH_Rev:
            text += _chromaText("/");
            break;
        }
    }

private:
    std::string _chromaText(std::string const& operation) const
    {
        ShaderText text = _newText(2);
        addHue(text, _getTypedOp());
        addWeight(text, _getTypedOp());
        addChroma(text, operation);
        return text.getText();
    }
};

std::unique_ptr<GPUOp> makeGPUOp(Tavrin::GPUAdaptorPtr const& adaptor, HueVectorOp const& op, unsigned int index)
{
    return std::make_unique<GPUHueVectorOp>(adaptor, op, index);
}

} // namespace Rendering
