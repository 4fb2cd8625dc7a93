// The logarithmic encoding that exposure and contrast of the log style work in, for the CPU and for shaders.
#ifndef TAVRIN_RENDERER_EXPOSURE_CONTRAST_OP_UTIL_H
#define TAVRIN_RENDERER_EXPOSURE_CONTRAST_OP_UTIL_H

namespace Rendering::ExposureContrastOpUtil
{

// Of linear light: log10(x / kLogWhite) * kLogSlope + kLogOffset.
inline constexpr double kLogWhite = 0.9;
inline constexpr double kLogSlope = 0.29325513196480935;
inline constexpr double kLogOffset = 0.6695992179863147;
inline constexpr double kLog10Of2 = 0.3010299956639812;

} // namespace Rendering::ExposureContrastOpUtil

#endif
