// Shader text of the gamma: the plain power, and the curve with a toe in both directions.
#include "renderer/GPUOps.h"
#include "renderer/gammaOpUtil.h"

#include <array>

namespace Rendering
{

namespace
{

using Color::GammaOp;
using gammaOpUtil::MoncurveParams;
using GPUShaderUtils::ShaderText;

// Red, green, blue and alpha.
template <class Value>
using Channels = std::array<Value, 4>;

Channels<GammaOp::Params const*> channelsOf(GammaOp const& op)
{
    return {&op.getRedParams(), &op.getGreenParams(), &op.getBlueParams(), &op.getAlphaParams()};
}

void declare(ShaderText& text, char const* name, Channels<double> const& values)
{
    text.declareVec4f(name, static_cast<float>(values[0]), static_cast<float>(values[1]), static_cast<float>(values[2]),
                      static_cast<float>(values[3]));
}

void addBasic(ShaderText& text, GammaOp const& op, bool isForward)
{
    Channels<double> gamma;
    for (unsigned int c = 0; c < 4; ++c)
    {
        double const value = channelsOf(op)[c]->front();
        gamma[c] = isForward ? value : 1.0 / value;
    }
    declare(text, "gamma", gamma);
    text.addLine("outColor = pow( max( vec4(0.), outColor), gamma);");
}

struct Moncurve
{
    void (*computeParams)(GammaOp::Params const& params, Color::BitDepth in, Color::BitDepth out, MoncurveParams& result);
    char const* power; // The curve above the break.
};

constexpr Moncurve kForward = {gammaOpUtil::computeParamsFwd,
                               "vec4 powSeg = pow( max( vec4(0.), scale * outColor + offset), gamma);"};
constexpr Moncurve kReverse = {gammaOpUtil::computeParamsRev,
                               "vec4 powSeg = pow( max( vec4(0.), outColor), gamma) * scale - offset;"};

void addMoncurve(ShaderText& text, GammaOp const& op, Moncurve const& moncurve)
{
    Channels<MoncurveParams> curves;
    for (unsigned int c = 0; c < 4; ++c)
        moncurve.computeParams(*channelsOf(op)[c], Tavrin::BIT_DEPTH_32f, Tavrin::BIT_DEPTH_32f, curves[c]);
    auto const declareEach = [&](char const* name, double MoncurveParams::*member) {
        declare(text, name, {curves[0].*member, curves[1].*member, curves[2].*member, curves[3].*member});
    };

    declareEach("breakPnt", &MoncurveParams::breakPoint);
    declareEach("slope", &MoncurveParams::slope);
    declareEach("scale", &MoncurveParams::scale);
    declareEach("offset", &MoncurveParams::offset);
    declareEach("gamma", &MoncurveParams::gamma);
    text.addLine("vec4 isAboveBreak = vec4( greaterThan(outColor, breakPnt) );");
    text.addLine("vec4 linSeg = outColor * slope;");
    text.addLine(moncurve.power);
    text.addLine("outColor = isAboveBreak * powSeg + ( vec4(1.) - isAboveBreak ) * linSeg;");
}

void addStyle(ShaderText& text, GammaOp const& op)
{
    switch (op.getGammaStyle())
    {
    case GammaOp::GammaStyle::BasicFwd:
        return addBasic(text, op, true);
    case GammaOp::GammaStyle::BasicRev:
        return addBasic(text, op, false);
    case GammaOp::GammaStyle::MoncurveFwd:
        return addMoncurve(text, op, kForward);
    case GammaOp::GammaStyle::MoncurveRev:
        return addMoncurve(text, op, kReverse);
    }
}

} // namespace

// Lines that are not declarations end in two semicolons, the second of which is an empty statement.
class GPUGammaOp : public TypedGPUOp<GammaOp>
{
public:
    using TypedGPUOp::TypedGPUOp;

protected:
    void _addProcessingTextToShaderProgram(std::string& text) override
    {
        ShaderText lines = _newText(2);
        addStyle(lines, _getTypedOp());
        text += lines.getText();
    }
};

std::unique_ptr<GPUOp> makeGPUOp(Tavrin::GPUAdaptorPtr const& adaptor, GammaOp const& op, unsigned int index)
{
    return std::make_unique<GPUGammaOp>(adaptor, op, index);
}

} // namespace Rendering
