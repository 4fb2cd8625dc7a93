// Renderers of the hue vector.
#include "renderer/CPUHueVectorOp.h"

#include "renderer/appendRenderer.h"
#include "renderer/opRenderers.h"
#include "transform/hueVectorOp.h"

namespace Rendering
{

namespace
{

using Color::HueVectorOp;

HueVectorParameters parametersOf(HueVectorOp const& op)
{
    constexpr double kPi = 3.1415927;
    auto const radians = [&op](HueVectorOp::ParamType type) { return op.getParam(type) * kPi / 180.0; };
    return {Tavrin::getBitDepthMaxValue(op.getOutputBitDepth()) / Tavrin::getBitDepthMaxValue(op.getInputBitDepth()),
            static_cast<float>(radians(HueVectorOp::ParamType::Center)),
            static_cast<float>(4.0 / radians(HueVectorOp::ParamType::Width)),
            static_cast<float>(op.getParam(HueVectorOp::ParamType::Amount) - 1.0)};
}

} // namespace

void HueVectorRenderer::addAlgorithm(HueVectorOp const& op, TransformProcessor& processor)
{
    if (op.getStyle() == HueVectorOp::HueVectorStyle::YCH_Fwd)
        appendStatic<RendererKind::HueVectorRendererYCH_Fwd>(op, processor, ArithmeticKernel::HueVectorFwd, parametersOf(op));
    else
        appendStatic<RendererKind::HueVectorRendererYCH_Rev>(op, processor, ArithmeticKernel::HueVectorRev, parametersOf(op));
}

} // namespace Rendering
