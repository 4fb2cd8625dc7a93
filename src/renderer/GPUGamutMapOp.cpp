// Shader text of the gamut map.
#include "renderer/GPUOps.h"
#include "renderer/hueKeepingText.h"

namespace Rendering
{

// A style other than DW3 does nothing.
class GPUGamutMapOp : public TypedGPUOp<Color::GamutMapOp>
{
public:
    using TypedGPUOp::TypedGPUOp;

protected:
    void _addProcessingTextToShaderProgram(std::string& text) override
    {
        if (_getTypedOp().getStyle() != Color::GamutMapOp::GamutMapStyle::DW3)
            return;
        GPUShaderUtils::ShaderText lines = _newText(2);
        addOldChroma(lines);
        lines.addLine("outColor = max(outColor, 0.)");
        addNewChroma(lines);
        text += lines.getText();
    }
};

std::unique_ptr<GPUOp> makeGPUOp(Tavrin::GPUAdaptorPtr const& adaptor, Color::GamutMapOp const& op, unsigned int index)
{
    return std::make_unique<GPUGamutMapOp>(adaptor, op, index);
}

} // namespace Rendering
