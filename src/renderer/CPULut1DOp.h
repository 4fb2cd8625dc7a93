// Parameters of the 1D table kernels.
#ifndef TAVRIN_RENDERER_CPU_LUT_1D_OP_H
#define TAVRIN_RENDERER_CPU_LUT_1D_OP_H

namespace Rendering
{

// Tables of red, green and blue, of the entry type that the kernel's name tells; at least kTablePadding bytes behind the last entry
// can be read.
struct Lut1DParameters
{
    void const* table[3];
    // From an input value to a row, for the kernels that interpolate.
    float indexScale;
    // The last row.
    float maxIndex;
    float alphaScale;
};

// What InterpolatePairs finds in a row: the row's value less the next row's, and the next row's value. The last row is its own
// next.
struct EntryPair
{
    float difference;
    float next;
};

} // namespace Rendering

#endif
