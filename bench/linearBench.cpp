// Matrices, scales, ranges, chains of matrices and mere changes of format.
#include "cases.h"

#include <array>

namespace Bench
{

namespace
{

using Tavrin::PixelFormat;

constexpr PixelFormat kFormats[] = {Tavrin::PF_RGBA_8i, Tavrin::PF_RGBA_16i, Tavrin::PF_RGBA_16f, Tavrin::PF_RGBA_32f};

// Colours are mixed so that their sum stays the same; offsets may be all zero.
Tavrin::TransformPtr matrix(std::array<float, 3> const& offsets)
{
    float const values[9] = {0.8F, 0.1F, 0.1F, 0.15F, 0.7F, 0.15F, 0.1F, 0.2F, 0.7F};
    Tavrin::TransformPtr transform;
    Tavrin::CreateMatrixTransform(Tavrin::BIT_DEPTH_32f, Tavrin::BIT_DEPTH_32f, values, offsets.data(), false, transform);
    return transform;
}

Tavrin::TransformPtr scale(std::array<float, 3> const& factors)
{
    float const values[9] = {factors[0], 0, 0, 0, factors[1], 0, 0, 0, factors[2]};
    float const offsets[3] = {};
    Tavrin::TransformPtr transform;
    Tavrin::CreateMatrixTransform(Tavrin::BIT_DEPTH_32f, Tavrin::BIT_DEPTH_32f, values, offsets, false, transform);
    return transform;
}

Tavrin::TransformPtr identity()
{
    return scale({1, 1, 1});
}

Tavrin::TransformPtr range()
{
    return fromElements(
        R"(<Range inBitDepth="32f" outBitDepth="32f"><minInValue>0.05</minInValue>
<maxInValue>0.95</maxInValue><minOutValue>0</minOutValue><maxOutValue>1</maxOutValue></Range>)");
}

Tavrin::TransformPtr fourMatrices()
{
    Tavrin::TransformPtr two;
    Tavrin::TransformPtr four;
    Tavrin::concatenateTransforms(matrix({}), matrix({}), two);
    Tavrin::concatenateTransforms(two, two, four);
    return four;
}

} // namespace

void addLinear()
{
    for (PixelFormat format : kFormats)
    {
        for (Placement placement : {Placement::Separate, Placement::InPlace})
        {
            addRender("linear/matrix", matrix({}), format, format, placement);
            addRender("linear/matrix and offset", matrix({0.1F, 0.05F, -0.1F}), format, format, placement);
            addRender("linear/scale", scale({0.9F, 0.8F, 0.7F}), format, format, placement);
            addRender("linear/range", range(), format, format, placement);
            addRender("linear/four matrices", fourMatrices(), format, format, placement);
        }
    }
    for (PixelFormat format : kFormats)
        addRender("linear/copy", identity(), format, format);
    for (PixelFormat format : {Tavrin::PF_RGB_8i, Tavrin::PF_RGB_16i, Tavrin::PF_RGB_16f, Tavrin::PF_RGB_32f})
        addRender("linear/matrix", matrix({}), format, format);
    addRender("linear/conversion", identity(), Tavrin::PF_RGBA_8i, Tavrin::PF_RGBA_16f);
    addRender("linear/conversion", identity(), Tavrin::PF_RGB_16i, Tavrin::PF_RGBA_32f);
    addRender("linear/conversion", identity(), Tavrin::PF_RGB_10iP, Tavrin::PF_RGBA_32f);
    addRender("linear/conversion", identity(), Tavrin::PF_RGBA_32f, Tavrin::PF_RGB_10iP);
}

} // namespace Bench
