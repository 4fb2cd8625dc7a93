// Parameters of the matrix kernels.
#ifndef TAVRIN_RENDERER_CPU_MATRIX_OP_H
#define TAVRIN_RENDERER_CPU_MATRIX_OP_H

#include "renderer/block.h"
#include "renderer/elementArithmetic.h"

#include <algorithm>
#include <optional>

namespace Rendering
{

// Each channel times its scale.
struct ScaleParameters
{
    static constexpr bool kIsChannelwise = true;
    static constexpr bool kIsCheap = true;

    float scale[4]; // red, green, blue, alpha

    bool keepsAlpha() const { return scale[3] == 1.0F; }

    std::optional<ElementArithmetic> getElementArithmetic(unsigned int channels, ImagePosition) const
    {
        if (std::any_of(scale + 1, scale + channels, [this](float other) { return other != scale[0]; }))
            return std::nullopt;
        return ElementArithmetic{scale[0]};
    }
};

struct ScaleWithOffsetParameters
{
    static constexpr bool kIsChannelwise = true;
    static constexpr bool kIsCheap = true;

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
