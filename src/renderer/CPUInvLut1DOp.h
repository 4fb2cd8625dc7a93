// Parameters of the inverse 1D table's kernel.
#ifndef TAVRIN_RENDERER_CPU_INV_LUT_1D_OP_H
#define TAVRIN_RENDERER_CPU_INV_LUT_1D_OP_H

#include <cstdint>

namespace Rendering
{

// One column to search: its useful rows, made increasing, and a first index into them.
//
// The index takes the bits of (value - first) as a number, which grows with the value, and drops the lowest: bucket b holds the
// rows whose number is b. starts[b] is the first row of bucket b or of a later one.
struct InverseColumn
{
    float const* values;
    std::int32_t const* starts;
    float first;       // values[0]
    float last;        // values[lastRow]
    float flipSign;    // +1 for an increasing table, -1 for a decreasing one
    float startOffset; // the row of the table that values begins with
    std::int32_t lastRow;
    std::int32_t lowestNumber; // of the second bucket; smaller numbers fall into the first one
    std::int32_t lastBucket;
    std::int32_t steps; // halvings that take the largest bucket down to one row
};

struct InvLut1DParameters
{
    static constexpr bool kIsChannelwise = true;

    InverseColumn column[3];
    float scale;
    float alphaScale;

    bool keepsAlpha() const { return alphaScale == 1.0F; }
};

// How many of the lowest bits the index drops: 256 buckets an octave.
inline constexpr int kInverseIndexShift = 15;

} // namespace Rendering

#endif
