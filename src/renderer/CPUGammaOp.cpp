// Renderers of the gamma: the plain power, and the curve with a toe in both directions.
#include "renderer/CPUGammaOp.h"

#include "renderer/appendRenderer.h"
#include "renderer/gammaOpUtil.h"
#include "renderer/opRenderers.h"
#include "transform/gammaOp.h"

#include <cmath>
#include <limits>

namespace Rendering
{

namespace
{

using Color::GammaOp;
using ChannelParams = GammaOp::Params const* [4];

void getChannels(GammaOp const& op, ChannelParams& channels)
{
    channels[0] = &op.getRedParams();
    channels[1] = &op.getGreenParams();
    channels[2] = &op.getBlueParams();
    channels[3] = &op.getAlphaParams();
}

void appendBasic(GammaOp const& op, TransformProcessor& processor, bool isForward)
{
    ChannelParams channels;
    getChannels(op, channels);
    GammaBasicParameters parameters;
    parameters.inScale = 1.0F / Tavrin::getBitDepthMaxValue(op.getInputBitDepth());
    parameters.outScale = Tavrin::getBitDepthMaxValue(op.getOutputBitDepth());
    for (unsigned int c = 0; c < 4; ++c)
    {
        double const gamma = channels[c]->front();
        parameters.exponent[c] = static_cast<float>(isForward ? gamma : 1.0 / gamma);
    }
    appendStatic<RendererKind::GammaBasicRenderer>(op, processor, ArithmeticKernel::GammaBasic, parameters);
}

using ComputeParams = void (*)(GammaOp::Params const& params, Color::BitDepth in, Color::BitDepth out,
                               gammaOpUtil::MoncurveParams& result);

// Whether the least argument is a normal number, and so are all powers from its own on. The kernels' logarithms are a little off.
bool isPowerNormal(float leastArgument, float exponent)
{
    constexpr float kAllowance = 1.0F;
    return leastArgument >= std::numeric_limits<float>::min() && exponent > 0.0F &&
           exponent * (std::log2(leastArgument) - kAllowance) > static_cast<float>(std::numeric_limits<float>::min_exponent);
}

GammaMoncurveParameters moncurveParameters(GammaOp const& op, ComputeParams compute)
{
    ChannelParams channels;
    getChannels(op, channels);
    GammaMoncurveParameters parameters;
    for (unsigned int c = 0; c < 4; ++c)
    {
        gammaOpUtil::MoncurveParams curve;
        compute(*channels[c], op.getInputBitDepth(), op.getOutputBitDepth(), curve);
        parameters.gamma[c] = static_cast<float>(curve.gamma);
        parameters.offset[c] = static_cast<float>(curve.offset);
        parameters.breakPoint[c] = static_cast<float>(curve.breakPoint);
        parameters.slope[c] = static_cast<float>(curve.slope);
        parameters.scale[c] = static_cast<float>(curve.scale);
    }
    return parameters;
}

GammaMoncurveParameters forwardParameters(GammaOp const& op)
{
    GammaMoncurveParameters p = moncurveParameters(op, &gammaOpUtil::computeParamsFwd);
    p.depthScale = Tavrin::getBitDepthMaxValue(op.getOutputBitDepth());
    p.arePowersNormal = true;
    for (unsigned int c = 0; c < 4; ++c)
        p.arePowersNormal &= isPowerNormal(p.breakPoint[c] * p.scale[c] + p.offset[c], p.gamma[c]);
    return p;
}

GammaMoncurveParameters reverseParameters(GammaOp const& op)
{
    GammaMoncurveParameters p = moncurveParameters(op, &gammaOpUtil::computeParamsRev);
    p.depthScale = 1.0F / Tavrin::getBitDepthMaxValue(op.getInputBitDepth());
    p.arePowersNormal = true;
    for (unsigned int c = 0; c < 4; ++c)
        p.arePowersNormal &= isPowerNormal(p.breakPoint[c] * p.depthScale, p.gamma[c]);
    return p;
}

} // namespace

void GammaRenderer::addAlgorithm(GammaOp const& op, TransformProcessor& processor)
{
    switch (op.getGammaStyle())
    {
    case GammaOp::GammaStyle::BasicFwd:
        return appendBasic(op, processor, true);
    case GammaOp::GammaStyle::BasicRev:
        return appendBasic(op, processor, false);
    case GammaOp::GammaStyle::MoncurveFwd:
        return appendStatic<RendererKind::GammaMoncurveRendererFwd>(op, processor, ArithmeticKernel::GammaMoncurveFwd,
                                                                    forwardParameters(op));
    case GammaOp::GammaStyle::MoncurveRev:
        return appendStatic<RendererKind::GammaMoncurveRendererRev>(op, processor, ArithmeticKernel::GammaMoncurveRev,
                                                                    reverseParameters(op));
    }
}

} // namespace Rendering
