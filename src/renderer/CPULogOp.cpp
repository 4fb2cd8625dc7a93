// Renderers of the logarithm: plain, its reverse, and the film model in both directions. Single precision throughout.
#include "renderer/CPULogOp.h"

#include "renderer/appendRenderer.h"
#include "renderer/logOpUtil.h"
#include "renderer/opRenderers.h"
#include "utils/errorMessage.h"

namespace Rendering
{

namespace
{

using Color::LogOp;
using Style = LogOp::LogStyle;

constexpr float kLog10Of2 = 0.30103F;
constexpr float kLog2Of10 = 3.321928F;

float inScaleOf(LogOp const& op)
{
    return 1.0F / Tavrin::getBitDepthMaxValue(op.getInputBitDepth());
}

float outScaleOf(LogOp const& op)
{
    return Tavrin::getBitDepthMaxValue(op.getOutputBitDepth());
}

float alphaScaleOf(LogOp const& op)
{
    return outScaleOf(op) * inScaleOf(op);
}

Color::Exception illegalStyle(LogOp const& op, RendererKind kind)
{
    return Color::failure(Color::ErrorIds::kRendererLogStyle, Color::Module::kCpuRenderer, LogOp::getLogStyleName(op.getLogStyle()),
                          static_cast<unsigned int>(kind));
}

using FilmRecords = LogOpUtil::RendererParams[3];

void buildRecords(LogOp const& op, RendererKind kind, FilmRecords& records)
{
    if (!LogOp::hasParameters(op.getLogStyle()))
        throw illegalStyle(op, kind);
    LogOpUtil::buildRendererParameters(op.getRedParams(), records[0]);
    LogOpUtil::buildRendererParameters(op.getGrnParams(), records[1]);
    LogOpUtil::buildRendererParameters(op.getBluParams(), records[2]);
}

} // namespace

LogParameters getLogParameters(LogOp const& op)
{
    if (op.getLogStyle() != Style::Log10 && op.getLogStyle() != Style::Log2)
        throw illegalStyle(op, RendererKind::LogRenderer);
    float const logScale = op.getLogStyle() == Style::Log10 ? kLog10Of2 : 1.0F;
    return {inScaleOf(op), logScale * outScaleOf(op), alphaScaleOf(op)};
}

AntiLogParameters getAntiLogParameters(LogOp const& op)
{
    if (op.getLogStyle() != Style::AntiLog10 && op.getLogStyle() != Style::AntiLog2)
        throw illegalStyle(op, RendererKind::AntiLogRenderer);
    float const logScale = op.getLogStyle() == Style::AntiLog10 ? kLog2Of10 : 1.0F;
    return {inScaleOf(op), logScale, outScaleOf(op), alphaScaleOf(op)};
}

FilmLogParameters getLinToLogParameters(LogOp const& op)
{
    FilmRecords records;
    buildRecords(op, RendererKind::Lin2LogRenderer, records);
    float const outScale = outScaleOf(op);
    FilmLogParameters parameters{};
    for (unsigned int c = 0; c < 3; ++c)
    {
        LogOpUtil::RendererParams const& record = records[c];
        parameters.inScale[c] = inScaleOf(op) / record.gain;
        parameters.inOffset[c] = (record.offset - record.shadow) / record.gain;
        parameters.outScale[c] = kLog10Of2 * outScale / record.multFactor;
        parameters.outOffset[c] = record.refWhite * outScale;
    }
    parameters.alphaScale = alphaScaleOf(op);
    return parameters;
}

FilmLogParameters getLogToLinParameters(LogOp const& op)
{
    FilmRecords records;
    buildRecords(op, RendererKind::Log2LinRenderer, records);
    float const outScale = outScaleOf(op);
    FilmLogParameters parameters{};
    for (unsigned int c = 0; c < 3; ++c)
    {
        LogOpUtil::RendererParams const& record = records[c];
        parameters.inScale[c] = inScaleOf(op) * record.multFactor;
        parameters.inOffset[c] = -record.refWhite * record.multFactor;
        parameters.outScale[c] = record.gain * outScale;
        parameters.outOffset[c] = (record.shadow - record.offset) * outScale;
    }
    parameters.logScale = kLog2Of10;
    parameters.alphaScale = alphaScaleOf(op);
    return parameters;
}

void LogOpRenderer::addAlgorithm(LogOp const& op, TransformProcessor& processor)
{
    switch (op.getLogStyle())
    {
    case Style::Log10:
    case Style::Log2:
        return appendStatic<RendererKind::LogRenderer>(op, processor, ArithmeticKernel::Log, getLogParameters(op));
    case Style::AntiLog10:
    case Style::AntiLog2:
        return appendStatic<RendererKind::AntiLogRenderer>(op, processor, ArithmeticKernel::AntiLog, getAntiLogParameters(op));
    case Style::LogToLin:
        return appendStatic<RendererKind::Log2LinRenderer>(op, processor, ArithmeticKernel::LogToLin, getLogToLinParameters(op));
    case Style::LinToLog:
        return appendStatic<RendererKind::Lin2LogRenderer>(op, processor, ArithmeticKernel::LinToLog, getLinToLogParameters(op));
    }
}

} // namespace Rendering
