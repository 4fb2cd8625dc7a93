// Renderers of the colour decision: both directions, with and without clamps.
#include "renderer/CPUCDLOp.h"

#include "renderer/appendRenderer.h"
#include "renderer/opRenderers.h"

#include <algorithm>

namespace Rendering
{

namespace CDLOpUtil
{

namespace
{

constexpr float kLeastDivisor = 0.01F;

float reciprocal(float value)
{
    return 1.0F / std::max(value, kLeastDivisor);
}

} // namespace

void RenderParams::update(Color::CDLOp const* op)
{
    using Style = Color::CDLOp::CDLStyle;
    m_isReverse = op->isReverse();
    m_isNoClamp = op->getCDLStyle() == Style::NoClampFwd || op->getCDLStyle() == Style::NoClampRev;
    for (unsigned int c = 0; c < 4; ++c)
    {
        m_slope[c] = static_cast<float>(op->getSlopeParams()[c]);
        m_offset[c] = static_cast<float>(op->getOffsetParams()[c]);
        m_power[c] = static_cast<float>(op->getPowerParams()[c]);
        if (m_isReverse)
        {
            m_slope[c] = reciprocal(m_slope[c]);
            m_offset[c] = -m_offset[c];
            m_power[c] = reciprocal(m_power[c]);
        }
    }
    m_saturation = static_cast<float>(op->getSaturation());
    if (m_isReverse)
        m_saturation = reciprocal(m_saturation);
}

void RenderParams::setSlope(float red, float green, float blue, float alpha)
{
    std::copy_n(std::initializer_list<float>{red, green, blue, alpha}.begin(), 4, m_slope);
}

void RenderParams::setOffset(float red, float green, float blue, float alpha)
{
    std::copy_n(std::initializer_list<float>{red, green, blue, alpha}.begin(), 4, m_offset);
}

void RenderParams::setPower(float red, float green, float blue, float alpha)
{
    std::copy_n(std::initializer_list<float>{red, green, blue, alpha}.begin(), 4, m_power);
}

} // namespace CDLOpUtil

namespace
{

using Color::CDLOp;

CDLParameters parametersOf(CDLOp const& op)
{
    CDLOpUtil::RenderParams params;
    params.update(&op);
    CDLParameters result;
    result.inScale = 1.0F / Tavrin::getBitDepthMaxValue(op.getInputBitDepth());
    result.outScale = Tavrin::getBitDepthMaxValue(op.getOutputBitDepth());
    result.alphaScale = result.outScale * result.inScale;
    std::copy_n(params.getSlope(), 3, result.slope);
    std::copy_n(params.getOffset(), 3, result.offset);
    std::copy_n(params.getPower(), 3, result.power);
    result.saturation = params.getSaturation();
    return result;
}

} // namespace

void CDLOpRenderer::addAlgorithm(CDLOp const& op, TransformProcessor& processor)
{
    CDLParameters const parameters = parametersOf(op);
    switch (op.getCDLStyle())
    {
    case CDLOp::CDLStyle::V1_2Fwd:
        return appendStatic<RendererKind::CDLRendererV1_2Fwd>(op, processor, ArithmeticKernel::CDLV1_2Fwd, parameters);
    case CDLOp::CDLStyle::V1_2Rev:
        return appendStatic<RendererKind::CDLRendererV1_2Rev>(op, processor, ArithmeticKernel::CDLV1_2Rev, parameters);
    case CDLOp::CDLStyle::NoClampFwd:
        return appendStatic<RendererKind::CDLRendererNoClampFwd>(op, processor, ArithmeticKernel::CDLNoClampFwd, parameters);
    case CDLOp::CDLStyle::NoClampRev:
        return appendStatic<RendererKind::CDLRendererNoClampRev>(op, processor, ArithmeticKernel::CDLNoClampRev, parameters);
    }
}

} // namespace Rendering
