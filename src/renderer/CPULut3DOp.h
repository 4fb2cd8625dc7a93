// Parameters of the 3D table kernels.
#ifndef TAVRIN_RENDERER_CPU_LUT_3D_OP_H
#define TAVRIN_RENDERER_CPU_LUT_3D_OP_H

#include <cstdint>

namespace Rendering
{

struct Lut3DParameters
{
    // Four floats an entry (red, green, blue, 0), aligned to 16 bytes, blue varying fastest and red slowest.
    float const* entries;
    std::int32_t dimension;
    // From an input value to a grid position.
    float indexScale;
    // The last grid position.
    float maxIndex;
    float alphaScale;

    bool keepsAlpha() const { return alphaScale == 1.0F; }
};

} // namespace Rendering

#endif
