// Shader text of the logarithm. Alpha is put aside and restored.
#include "renderer/GPUOps.h"
#include "renderer/logOpUtil.h"

#include <array>
#include <limits>
#include <string_view>

namespace Rendering
{

namespace
{

using Color::LogOp;
using GPUShaderUtils::formatText;
using GPUShaderUtils::preciseNumber;
using LogOpUtil::RendererParams;

// Keeps zero and below away from a logarithm.
constexpr float kLeastValue = std::numeric_limits<float>::min();

// From the natural logarithm to that of base ten, in single precision throughout.
constexpr float kLn10 = 2.3025851F;
constexpr float kOneOverLn10 = 1.0F / kLn10;

std::string logText(std::string const& logarithm)
{
    return formatText("    float alpha = outColor.a;\n"
                      "    outColor = max( vec4(%s), outColor);\n"
                      "    outColor = %s;\n"
                      "    outColor.a = alpha;\n",
                      preciseNumber(kLeastValue), logarithm);
}

std::string antiLogText(char const* base)
{
    return formatText("    float alpha = outColor.a;\n"
                      "    outColor = pow( vec4( %s ), outColor);\n"
                      "    outColor.a = alpha;\n",
                      base);
}

// Red, green and blue.
using Channels = std::array<RendererParams, 3>;

Channels channelsOf(LogOp const& op)
{
    Channels channels;
    LogOpUtil::buildRendererParameters(op.getRedParams(), channels[0]);
    LogOpUtil::buildRendererParameters(op.getGrnParams(), channels[1]);
    LogOpUtil::buildRendererParameters(op.getBluParams(), channels[2]);
    return channels;
}

// The value of each channel, and what stands for alpha.
template <class Value>
std::string declaration(char const* name, Channels const& channels, Value const& value, float alpha)
{
    return formatText("    vec4 %s = vec4(%s, %s, %s, %s);\n", name, preciseNumber(value(channels[0])),
                      preciseNumber(value(channels[1])), preciseNumber(value(channels[2])), preciseNumber(alpha));
}

// The first declaration stands a little further to the right: its type is set in a field of 18 characters.
std::string setFirstTypeInField(std::string text)
{
    constexpr std::size_t kField = 18;
    constexpr std::size_t kType = std::string_view("    vec4 ").size();
    return text.insert(0, kField - kType, ' ');
}

std::string logToLinText(LogOp const& op)
{
    Channels const channels = channelsOf(op);
    return setFirstTypeInField(
        declaration(
            "refWhite", channels, [](RendererParams const& p) { return p.refWhite; }, 0.0F) +
        declaration(
            "multFactor", channels, [](RendererParams const& p) { return p.multFactor; }, 1.0F) +
        declaration(
            "gain", channels, [](RendererParams const& p) { return p.gain; }, 1.0F) +
        declaration(
            "shadowMinusOffset", channels, [](RendererParams const& p) { return p.shadow - p.offset; }, 0.0F) +
        "    float alpha = outColor.a;\n"
        "    outColor = pow( vec4( 10.0 ), (outColor - refWhite) * multFactor ) * gain + shadowMinusOffset;\n"
        "    outColor.a = alpha;\n");
}

std::string linToLogText(LogOp const& op)
{
    Channels const channels = channelsOf(op);
    return setFirstTypeInField(
        declaration(
            "minValue", channels, [](RendererParams const&) { return kLeastValue; }, kLeastValue) +
        declaration(
            "offsetMinusShadow", channels, [](RendererParams const& p) { return p.offset - p.shadow; }, 0.0F) +
        declaration(
            "oneOverGain", channels, [](RendererParams const& p) { return 1.0F / p.gain; }, 1.0F) +
        declaration(
            "oneOverLog10MultFactor", channels, [](RendererParams const& p) { return kOneOverLn10 / p.multFactor; }, 1.0F) +
        declaration(
            "refWhite", channels, [](RendererParams const& p) { return p.refWhite; }, 0.0F) +
        "    float alpha = outColor.a;\n"
        "    outColor = log( max(minValue, (outColor + offsetMinusShadow) * oneOverGain) ) * oneOverLog10MultFactor + refWhite;\n"
        "    outColor.a = alpha;\n");
}

std::string styleText(LogOp const& op)
{
    switch (op.getLogStyle())
    {
    case LogOp::LogStyle::Log10:
        return logText("log(outColor) * " + preciseNumber(kOneOverLn10));
    case LogOp::LogStyle::Log2:
        return logText("log2(outColor)");
    case LogOp::LogStyle::AntiLog10:
        return antiLogText("10.0");
    case LogOp::LogStyle::AntiLog2:
        return antiLogText("2.0");
    case LogOp::LogStyle::LogToLin:
        return logToLinText(op);
    case LogOp::LogStyle::LinToLog:
        return linToLogText(op);
    }
    return {};
}

} // namespace

class GPULogOp : public TypedGPUOp<LogOp>
{
public:
    using TypedGPUOp::TypedGPUOp;

protected:
    void _addProcessingTextToShaderProgram(std::string& text) override { text += styleText(_getTypedOp()); }
};

std::unique_ptr<GPUOp> makeGPUOp(Tavrin::GPUAdaptorPtr const& adaptor, LogOp const& op, unsigned int index)
{
    return std::make_unique<GPULogOp>(adaptor, op, index);
}

} // namespace Rendering
