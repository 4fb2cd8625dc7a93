// Parameters of the range kernels.
#ifndef TAVRIN_RENDERER_CPU_RANGE_OP_H
#define TAVRIN_RENDERER_CPU_RANGE_OP_H

namespace Rendering
{

// red, green, blue: value * scale + offset, then the bounds that the kernel's name tells; alpha is only scaled.
struct RangeParameters
{
    static constexpr bool kIsChannelwise = true;
    static constexpr bool kIsCheap = true;

    float scale;
    float offset;
    float lowerBound;
    float upperBound;
    float alphaScale;

    bool keepsAlpha() const { return alphaScale == 1.0F; }
};

} // namespace Rendering

#endif
