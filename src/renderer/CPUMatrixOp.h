// Parameters of the matrix kernels.
#ifndef TAVRIN_RENDERER_CPU_MATRIX_OP_H
#define TAVRIN_RENDERER_CPU_MATRIX_OP_H

namespace Rendering
{

// Each channel times its scale.
struct ScaleParameters
{
    float scale[4]; // red, green, blue, alpha
};

struct ScaleWithOffsetParameters
{
    float scale[4];
    float offset[4];
};

// column[c][r] is what input channel c contributes to output channel r.
struct MatrixParameters
{
    float column[4][4];
};

struct MatrixWithOffsetParameters
{
    float column[4][4];
    float offset[4];
};

} // namespace Rendering

#endif
