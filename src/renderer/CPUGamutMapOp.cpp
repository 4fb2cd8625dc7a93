// Renderer of the gamut map.
#include "renderer/CPUGamutMapOp.h"

#include "renderer/appendRenderer.h"
#include "renderer/opRenderers.h"
#include "transform/gamutMapOp.h"

namespace Rendering
{

// Style none adds no renderer.
void GamutMapRenderer::addAlgorithm(Color::GamutMapOp const& op, TransformProcessor& processor)
{
    if (op.getStyle() != Color::GamutMapOp::GamutMapStyle::DW3)
        return;
    GamutMapParameters const parameters = {Tavrin::getBitDepthMaxValue(op.getOutputBitDepth()) /
                                           Tavrin::getBitDepthMaxValue(op.getInputBitDepth())};
    appendStatic<RendererKind::GamutMapRendererDW3>(op, processor, ArithmeticKernel::GamutMapDW3, parameters);
}

} // namespace Rendering
