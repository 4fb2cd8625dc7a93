// A logarithm or its reverse, plain or after the model of a film negative.
#include "transform/logOp.h"

#include "transform/styleTable.h"

namespace Color
{

namespace
{

using Style = LogOp::LogStyle;

constexpr StyleTable<Style, 6> kStyles{"log10", "log2", "antiLog10", "antiLog2", "logToLin", "linToLog"};

constexpr double kGammaLimit = 0.01F; // A single-precision number, compared in double precision.

void requireAbove(char const* name, double value, char const* otherName, double other)
{
    if (!(value > other))
        throw failure(ErrorIds::kLogParameterOrder, Module::kLog, name, value, otherName, other);
}

void validateLogParams(LogOp::Params const& params)
{
    if (params.size() != LogOp::kParameterCount)
        throw failure(ErrorIds::kLogParameterCount, Module::kLog, LogOp::kParameterCount);
    if (!(params[0] > kGammaLimit))
        throw failure(ErrorIds::kLogParameterTooLow, Module::kLog, "gamma", params[0], kGammaLimit);
    requireAbove("refWhite", params[1], "refBlack", params[2]);
    requireAbove("highlight", params[3], "shadow", params[4]);
}

} // namespace

LogOp::LogOp() : TypedOp(Tavrin::BIT_DEPTH_32f, Tavrin::BIT_DEPTH_32f) {}

LogOp::LogOp(BitDepth in, BitDepth out, LogStyle style, Params const& red, Params const& green, Params const& blue)
    : TypedOp(in, out), m_style(style)
{
    setRedParams(red);
    setGrnParams(green);
    setBluParams(blue);
    LogOp::validate();
}

void LogOp::validate() const
{
    Op::validate();
    for (std::size_t channel = 0; hasParameters(m_style) && channel < 3; ++channel)
        validateLogParams(m_params[channel]);
}

LogOp::LogStyle LogOp::getLogStyle(char const* name)
{
    if (name == nullptr || *name == '\0')
        throw failure(ErrorIds::kLogStyleInvalid, Module::kLog);
    return kStyles.parse(name, ErrorIds::kLogStyleUnrecognized, Module::kLog);
}

char const* LogOp::getLogStyleName(LogStyle style)
{
    return kStyles.getName(style);
}

bool LogOp::hasParameters(LogStyle style)
{
    return style == LogStyle::LogToLin || style == LogStyle::LinToLog;
}

} // namespace Color
