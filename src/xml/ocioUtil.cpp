// Parameters of OpenColorIO's logarithm in terms of ours.
#include "xml/ocioUtil.h"

#include <cmath>
#include <numbers>

namespace Color::OCIOUtil
{

namespace
{

constexpr float kWhiteCode = 1023.0F;    // Reference white and black are 10-bit codes.
constexpr float kDensityRange = 2.046F;  // One code of a scan is 0.002 of printing density; over 1023 codes.
constexpr float kBlackCode = 95.0F;      // Of film, where the reference white is 685: the shadow that goes with
constexpr float kFilmWhiteCode = 685.0F; // a highlight is free, and is chosen in this ratio.

} // namespace

bool getLogParams(LogOp::Params& params, float k, float m, float b, float kb, float base)
{
    float const gamma = std::numbers::ln10_v<float> * kDensityRange * k / std::log(base);
    float const highlight = (1.0F - b) / m;
    float const shadow = highlight * kBlackCode / kFilmWhiteCode;
    float const refBlack = kWhiteCode * (std::log10(1.0F - (highlight - shadow) * m) * k + kb);
    float const refWhite = kWhiteCode * kb;
    params = {gamma, refWhite, refBlack, highlight, shadow};
    return k != 1.0F || m != 1.0F || b != 0.0F || kb != 0.0F;
}

} // namespace Color::OCIOUtil
