// A logarithm or its reverse, plain or after the model of a film negative.
#ifndef TAVRIN_TRANSFORM_LOG_OP_H
#define TAVRIN_TRANSFORM_LOG_OP_H

#include "transform/channelParameters.h"
#include "transform/op.h"

#include <string>
#include <vector>

namespace Color
{

// Parameters are free of depths.
class LogOp : public TypedOp<LogOp, Op::OpType::LogOp>
{
public:
    enum class LogStyle : unsigned int
    {
        Log10 = 0,
        Log2 = 1,
        AntiLog10 = 2,
        AntiLog2 = 3,
        LogToLin = 4,
        LinToLog = 5
    };

    // Of one channel, for the last two styles: gamma, refWhite, refBlack, highlight, shadow; white and black are 10-bit codes. The
    // other styles have none.
    using Params = std::vector<double>;
    static constexpr unsigned int kParameterCount = 5;

    // 32f to 32f, log10, without parameters.
    LogOp();
    // Validates.
    LogOp(BitDepth in, BitDepth out, LogStyle style, Params const& red, Params const& green, Params const& blue);

    void validate() const override;
    // A logarithm never folds away.
    bool isNoop() const override { return false; }
    bool isIdentity() const override { return false; }

    // Names are compared without regard to case; throws on others and on null.
    static LogStyle getLogStyle(char const* name);
    // Empty for a value that is no style.
    static char const* getLogStyleName(LogStyle style);
    // Whether the style has parameters.
    static bool hasParameters(LogStyle style);

    LogStyle getLogStyle() const { return m_style; }
    Params const& getRedParams() const { return m_params[0]; }
    Params const& getGrnParams() const { return m_params[1]; }
    Params const& getBluParams() const { return m_params[2]; }

    // Plain stores; validate afterwards.
    void setLogStyle(LogStyle style) { m_style = style; }
    void setRedParams(Params const& params) { m_params[0] = params; }
    void setGrnParams(Params const& params) { m_params[1] = params; }
    void setBluParams(Params const& params) { m_params[2] = params; }
    void setParams(Params const& params) { m_params.setColour(params); }

    bool allComponentsEqual() const { return m_params.isAllEqual(); }

    // For files: one number when all channels are equal, otherwise three; empty without such a parameter.
    std::string getParameterString(unsigned int index) const { return m_params.getText(index); }
    std::string getGammaString() const { return getParameterString(0); }
    std::string getRefWhiteString() const { return getParameterString(1); }
    std::string getRefBlackString() const { return getParameterString(2); }
    std::string getHighlightString() const { return getParameterString(3); }
    std::string getShadowString() const { return getParameterString(4); }

private:
    LogStyle m_style = LogStyle::Log10;
    ChannelParameters<3> m_params;
};

} // namespace Color

#endif
