// Parameters of the exposure/contrast kernels, which hold for one line. The logarithmic style is a straight line in its domain and
// takes the range's kernel.
#ifndef TAVRIN_RENDERER_CPU_EXPOSURE_CONTRAST_OP_H
#define TAVRIN_RENDERER_CPU_EXPOSURE_CONTRAST_OP_H

namespace Rendering
{

// pow(in * inScale, contrast) * outScale; without the power where contrast is 1. Alpha is only scaled.
struct ExposureContrastParameters
{
    static constexpr bool kIsChannelwise = true;

    float inScale;
    float contrast;
    float outScale;
    float alphaScale;

    bool keepsAlpha() const { return alphaScale == 1.0F; }
};

} // namespace Rendering

#endif
