// Parameters of the hue vector's kernels.
#ifndef TAVRIN_RENDERER_CPU_HUE_VECTOR_OP_H
#define TAVRIN_RENDERER_CPU_HUE_VECTOR_OP_H

namespace Rendering
{

struct HueVectorParameters
{
    float depthScale; // from the input depth's code values to the output depth's
    float center;     // radians
    float widthScale; // quarters of the range of hues, per radian
    float amountGain; // the weight at the centre, less 1

    bool keepsAlpha() const { return depthScale == 1.0F; }
};

} // namespace Rendering

#endif
