// Parameters of the gamma kernels. Arrays hold red, green, blue and alpha.
#ifndef TAVRIN_RENDERER_CPU_GAMMA_OP_H
#define TAVRIN_RENDERER_CPU_GAMMA_OP_H

namespace Rendering
{

// pow(in * inScale, exponent) * outScale; 0 for what is not above 0.
struct GammaBasicParameters
{
    static constexpr bool kIsChannelwise = true;

    float inScale;
    float outScale;
    float exponent[4];
};

// The values of gammaOpUtil::MoncurveParams, and the scale of the other depth. Powers are normal numbers where they are for all
// that is above the break.
struct GammaMoncurveParameters
{
    static constexpr bool kIsChannelwise = true;

    float gamma[4];
    float offset[4];
    float breakPoint[4];
    float slope[4];
    float scale[4];
    float depthScale;
    bool arePowersNormal;
};

} // namespace Rendering

#endif
