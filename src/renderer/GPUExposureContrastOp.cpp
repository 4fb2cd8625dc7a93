// Shader text of exposure and contrast, whose values are uniforms, so that a new one needs no new shader.
#include "renderer/GPUOps.h"
#include "renderer/exposureContrastOpUtil.h"

#include <algorithm>
#include <cmath>

namespace Rendering
{

namespace
{

using Color::ExposureContrastOp;
using namespace ExposureContrastOpUtil;
using GPUShaderUtils::formatText;
using GPUShaderUtils::preciseNumber;

constexpr double kLeastPivot = 0.001;
constexpr double kLeastContrast = 0.001;

constexpr double kVideoGamma = 0.5464480874316939; // 1 / 1.83, the exponent from linear light to video.

// A power around the pivot, which is in the encoding of the values, with the exposure as a factor before it.
std::string powerText(std::string const& exposureFactor, std::string const& contrast, double pivot)
{
    return formatText("    float alpha = outColor.a;\n"
                      "    float exposure = %s;\n"
                      "    float contrast = max( %s, %s );\n"
                      "    outColor = outColor * exposure;\n"
                      "    if( contrast != 1.0 )\n"
                      "    {\n"
                      "      outColor = pow( max( vec4(0), outColor / vec4(%4$s)), vec4(contrast) ) * vec4(%4$s);\n"
                      "    }\n"
                      "    outColor.a = alpha;\n",
                      exposureFactor, preciseNumber(kLeastContrast), contrast, preciseNumber(pivot));
}

// A straight line: exposure adds, contrast is the slope.
std::string logText(std::string const& exposure, std::string const& contrast, double pivot)
{
    double const logPivot = std::max(std::log10(pivot / kLogWhite) * kLogSlope + kLogOffset, 0.0);
    return formatText("    float exposure = %s * %s * %s;\n"
                      "    float contrast = max(%s, %s );\n"
                      "    float offset = ( exposure - %6$s) * contrast + %6$s;\n"
                      "    outColor.rgb = outColor.rgb * contrast + offset;\n",
                      preciseNumber(kLog10Of2), exposure, preciseNumber(kLogSlope), preciseNumber(kLeastContrast), contrast,
                      preciseNumber(logPivot));
}

std::string styleText(ExposureContrastOp const& op, std::string const& exposure, std::string const& contrast)
{
    double const pivot = std::max(op.getPivot(), kLeastPivot);
    switch (op.getStyle())
    {
    case ExposureContrastOp::Style::Video:
        return powerText(formatText("pow( pow( 2., %s ), %s)", exposure, preciseNumber(kVideoGamma)), contrast,
                         std::pow(pivot, kVideoGamma));
    case ExposureContrastOp::Style::Log:
        return logText(exposure, contrast, pivot);
    case ExposureContrastOp::Style::Linear:
        return powerText(formatText("pow( 2., %s )", exposure), contrast, pivot);
    }
    return {};
}

} // namespace

// The values are uniforms whether or not the operator lets them change.
class GPUExposureContrastOp : public TypedGPUOp<ExposureContrastOp>
{
public:
    using TypedGPUOp::TypedGPUOp;

protected:
    void _addResources() override
    {
        _addUniform(*_getTypedOp().getExposure(), false);
        _addUniform(*_getTypedOp().getContrast(), false);
    }

    void _addAttributeTextToShaderProgram(std::string& text) override
    {
        text += _declarationOf(*_getTypedOp().getExposure());
        text += _declarationOf(*_getTypedOp().getContrast());
    }

    void _addProcessingTextToShaderProgram(std::string& text) override
    {
        ExposureContrastOp const& op = _getTypedOp();
        text += styleText(op, _nameOf(*op.getExposure()), _nameOf(*op.getContrast()));
    }
};

std::unique_ptr<GPUOp> makeGPUOp(Tavrin::GPUAdaptorPtr const& adaptor, ExposureContrastOp const& op, unsigned int index)
{
    return std::make_unique<GPUExposureContrastOp>(adaptor, op, index);
}

} // namespace Rendering
