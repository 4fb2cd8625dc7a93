// The constants of the film model of the logarithm; pixels, shaders and other systems' formats share them.
#ifndef TAVRIN_RENDERER_LOG_OP_UTIL_H
#define TAVRIN_RENDERER_LOG_OP_UTIL_H

#include "transform/logOp.h"

namespace Rendering::LogOpUtil
{

// Of one channel, for values from 0 to 1. From linear to log: refWhite + log10((x + offset - shadow) / gain) / multFactor.
struct RendererParams
{
    float refWhite = 0.0F;
    float multFactor = 1.0F;
    float gain = 1.0F;
    float offset = 0.0F;
    float shadow = 0.0F;
};

// Single precision throughout. Throws unless there are five parameters.
void buildRendererParameters(Color::LogOp::Params const& params, RendererParams& result);

// The same curve as a * log10(b * x + c) + d.
void getOCIOLogParams(Color::LogOp::Params const& params, float& a, float& b, float& c, float& d);

} // namespace Rendering::LogOpUtil

#endif
