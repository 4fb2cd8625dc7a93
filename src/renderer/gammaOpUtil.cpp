// The constants of the gamma with a toe.
#include "renderer/gammaOpUtil.h"

namespace Rendering::gammaOpUtil
{

using Color::GammaOp;

void computeParamsFwd(GammaOp::Params const& params, Color::BitDepth in, Color::BitDepth out, MoncurveParams& result)
{
    double const maxIn = Tavrin::getBitDepthMaxValue(in);
    double const maxOut = Tavrin::getBitDepthMaxValue(out);
    result.gamma = GammaOp::monCurveGammaFwd(params);
    result.offset = GammaOp::monCurveOffsetFwd(params);
    result.breakPoint = GammaOp::monCurveBreakFwd(params) * maxIn;
    result.slope = GammaOp::monCurveSlopeFwd(params) * maxOut / maxIn;
    result.scale = GammaOp::monCurveScaleFwd(params) / maxIn;
}

void computeParamsRev(GammaOp::Params const& params, Color::BitDepth in, Color::BitDepth out, MoncurveParams& result)
{
    double const maxIn = Tavrin::getBitDepthMaxValue(in);
    double const maxOut = Tavrin::getBitDepthMaxValue(out);
    result.gamma = GammaOp::monCurveGammaRev(params);
    result.offset = GammaOp::monCurveOffsetRev(params) * maxOut;
    result.breakPoint = GammaOp::monCurveBreakRev(params) * maxIn;
    result.slope = GammaOp::monCurveSlopeRev(params) * maxOut / maxIn;
    result.scale = GammaOp::monCurveScaleRev(params) * maxOut;
}

} // namespace Rendering::gammaOpUtil
