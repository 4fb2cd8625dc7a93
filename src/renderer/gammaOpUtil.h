// The constants of the gamma with a toe, with the scales of the depths worked in; pixels and shaders share them.
#ifndef TAVRIN_RENDERER_GAMMA_OP_UTIL_H
#define TAVRIN_RENDERER_GAMMA_OP_UTIL_H

#include "transform/gammaOp.h"

namespace Rendering::gammaOpUtil
{

// Of one channel.
struct MoncurveParams
{
    double gamma = 1.0;
    double offset = 0.0;
    double breakPoint = 0.0; // In the scale of the input; up to it the curve is the line in * slope.
    double slope = 1.0;
    double scale = 1.0;
};

// Above the break: pow(in * scale + offset, gamma), times the maximum of the output depth.
void computeParamsFwd(Color::GammaOp::Params const& params, Color::BitDepth in, Color::BitDepth out, MoncurveParams& result);
// Above the break: pow(in divided by the maximum of the input depth, gamma) * scale - offset.
void computeParamsRev(Color::GammaOp::Params const& params, Color::BitDepth in, Color::BitDepth out, MoncurveParams& result);

} // namespace Rendering::gammaOpUtil

#endif
