// The constants of the film model of the logarithm.
#include "renderer/logOpUtil.h"

#include "utils/errorMessage.h"

#include <algorithm>
#include <cmath>

namespace Rendering::LogOpUtil
{

namespace
{

constexpr float kWhiteCode = 1023.0F; // Reference white and black are 10-bit codes.

// One code of a scan is 0.002 of printing density; over 1023 codes and per unit of gamma.
constexpr float kDensityRange = 2.046F;

// Black this close to white counts as this far below it, so that the gain stays finite.
constexpr float kHighestBlackExponent = -0.0001F;

} // namespace

void buildRendererParameters(Color::LogOp::Params const& params, RendererParams& result)
{
    if (params.size() != Color::LogOp::kParameterCount)
        throw Color::failure(Color::ErrorIds::kLogParameterCount, Color::Module::kCpuRenderer, Color::LogOp::kParameterCount);
    float const gamma = static_cast<float>(params[0]);
    float const refWhite = static_cast<float>(params[1]);
    float const refBlack = static_cast<float>(params[2]);
    float const highlight = static_cast<float>(params[3]);
    float const shadow = static_cast<float>(params[4]);

    result.refWhite = refWhite / kWhiteCode;
    result.multFactor = kDensityRange / gamma;
    float const exponent = std::min((refBlack / kWhiteCode - result.refWhite) * result.multFactor, kHighestBlackExponent);
    float const range = highlight - shadow;
    result.gain = range / (1.0F - std::pow(10.0F, exponent));
    result.offset = result.gain - range;
    result.shadow = shadow;
}

void getOCIOLogParams(Color::LogOp::Params const& params, float& a, float& b, float& c, float& d)
{
    RendererParams record;
    buildRendererParameters(params, record);
    a = 1.0F / record.multFactor;
    b = 1.0F / record.gain;
    c = (record.offset - record.shadow) / record.gain;
    d = record.refWhite;
}

} // namespace Rendering::LogOpUtil
