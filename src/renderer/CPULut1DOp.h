// Parameters of the 1D table kernels.
#ifndef TAVRIN_RENDERER_CPU_LUT_1D_OP_H
#define TAVRIN_RENDERER_CPU_LUT_1D_OP_H

namespace Rendering
{

// Tables of red, green and blue, of the entry type that the kernel's name tells, or else of floats. Those of floats repeat their
// last row once more, so that each row has a next one behind it.
struct Lut1DParameters
{
    static constexpr bool kIsChannelwise = true;

    void const* table[3];
    // From an input value to a row, for the kernels that interpolate.
    float indexScale;
    // The last row.
    float maxIndex;
    float alphaScale;

    bool keepsAlpha() const { return alphaScale == 1.0F; }
};

} // namespace Rendering

#endif
