// Shader text of the colour decision. Alpha is left alone.
#include "renderer/CPUCDLOp.h"
#include "renderer/GPUOps.h"

namespace Rendering
{

namespace
{

using CDLOpUtil::RenderParams;
using Color::CDLOp;
using GPUShaderUtils::ShaderText;

constexpr char const* kClamp = "pix = clamp(pix, 0.0, 1.0)";

void declareColour(ShaderText& text, char const* name, float const* values)
{
    text.declareVec3f(name, values[0], values[1], values[2]);
}

void addDeclarations(ShaderText& text, RenderParams const& params)
{
    text.declareVec3f("lumaWeights", 0.2126F, 0.7152F, 0.0722F); // Of Rec. 709's primaries.
    declareColour(text, "slope", params.getSlope());
    declareColour(text, "offset", params.getOffset());
    declareColour(text, "power", params.getPower());
    text.declareVar("saturation", params.getSaturation());
}

// Without clamps, negative values pass the power as they are.
void addPower(ShaderText& text, RenderParams const& params)
{
    if (params.isNoClamp())
    {
        text.addLine("vec3 posPix = step(0.0, pix)");
        text.addLine("vec3 pixPower = pow(abs(pix), power)");
        text.addLine("pix = mix(pix, pixPower, posPix)");
    }
    else
    {
        text.addLine(kClamp);
        text.addLine("pix = pow(pix, power)");
    }
}

void addSaturation(ShaderText& text)
{
    text.addLine("float luma = dot(pix, lumaWeights)");
    text.addLine("pix = luma + saturation * (pix - luma)");
}

void addForward(ShaderText& text, RenderParams const& params)
{
    text.addLine("pix = pix * slope");
    text.addLine("pix = pix + offset");
    addPower(text, params);
    addSaturation(text);
}

void addReverse(ShaderText& text, RenderParams const& params)
{
    if (!params.isNoClamp())
        text.addLine(kClamp);
    addSaturation(text);
    addPower(text, params);
    text.addLine("pix = pix + offset");
    text.addLine("pix = pix * slope");
}

} // namespace

class GPUCDLOp : public TypedGPUOp<CDLOp>
{
public:
    GPUCDLOp(Tavrin::GPUAdaptorPtr const& adaptor, CDLOp const& op, unsigned int index) : TypedGPUOp(adaptor, op, index)
    {
        m_params.update(&op);
    }

protected:
    void _addProcessingTextToShaderProgram(std::string& text) override
    {
        ShaderText lines = _newText(2);
        addDeclarations(lines, m_params);
        lines.addLine("vec3 pix = outColor.xyz");
        if (m_params.isReverse())
            addReverse(lines, m_params);
        else
            addForward(lines, m_params);
        if (!m_params.isNoClamp())
            lines.addLine(kClamp);
        lines.addLine("outColor.xyz = pix");
        text += lines.getText();
    }

private:
    RenderParams m_params;
};

std::unique_ptr<GPUOp> makeGPUOp(Tavrin::GPUAdaptorPtr const& adaptor, CDLOp const& op, unsigned int index)
{
    return std::make_unique<GPUCDLOp>(adaptor, op, index);
}

} // namespace Rendering
