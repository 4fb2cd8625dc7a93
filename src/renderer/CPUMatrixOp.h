// Parameters of the matrix kernels.
#ifndef TAVRIN_RENDERER_CPU_MATRIX_OP_H
#define TAVRIN_RENDERER_CPU_MATRIX_OP_H

namespace Rendering
{

// Each channel times its scale.
struct ScaleParameters
{
    static constexpr bool kIsChannelwise = true;

    float scale[4]; // red, green, blue, alpha

    bool keepsAlpha() const { return scale[3] == 1.0F; }
};

struct ScaleWithOffsetParameters
{
    static constexpr bool kIsChannelwise = true;

    float scale[4];
    float offset[4];
};

// column[c][r] is what input channel c contributes to output channel r.
struct MatrixParameters
{
    static constexpr bool kMixesAlpha = true;

    float column[4][4];
};

struct MatrixWithOffsetParameters
{
    static constexpr bool kMixesAlpha = true;

    float column[4][4];
    float offset[4];
};

} // namespace Rendering

#endif
