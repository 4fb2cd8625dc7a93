// Parameters of the logarithm's kernels, and how they follow from the operator.
#ifndef TAVRIN_RENDERER_CPU_LOG_OP_H
#define TAVRIN_RENDERER_CPU_LOG_OP_H

#include "transform/logOp.h"

namespace Rendering
{

// log2(max(in * inScale, smallest normal)) * outFactor. Alpha is only scaled, here and below.
struct LogParameters
{
    static constexpr bool kIsChannelwise = true;

    float inScale;
    float outFactor;
    float alphaScale;

    bool keepsAlpha() const { return alphaScale == 1.0F; }
};

// exp2(in * inScale * logScale) * outScale
struct AntiLogParameters
{
    static constexpr bool kIsChannelwise = true;

    float inScale;
    float logScale;
    float outScale;
    float alphaScale;

    bool keepsAlpha() const { return alphaScale == 1.0F; }
};

// Arrays hold red, green and blue. To log: log2(max(in * inScale + inOffset, smallest normal)) * outScale + outOffset.
// To linear: exp2((in * inScale + inOffset) * logScale) * outScale + outOffset.
struct FilmLogParameters
{
    static constexpr bool kIsChannelwise = true;

    float inScale[3];
    float inOffset[3];
    float logScale;
    float outScale[3];
    float outOffset[3];
    float alphaScale;

    bool keepsAlpha() const { return alphaScale == 1.0F; }
};

// These throw for styles that the kernel is not for.
LogParameters getLogParameters(Color::LogOp const& op);
AntiLogParameters getAntiLogParameters(Color::LogOp const& op);
FilmLogParameters getLinToLogParameters(Color::LogOp const& op);
FilmLogParameters getLogToLinParameters(Color::LogOp const& op);

} // namespace Rendering

#endif
