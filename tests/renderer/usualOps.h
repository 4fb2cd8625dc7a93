// Operators that several tests of renderers render: one that mixes the channels, and one that does not.
#ifndef TAVRIN_TESTS_RENDERER_USUAL_OPS_H
#define TAVRIN_TESTS_RENDERER_USUAL_OPS_H

#include "transform/gammaOp.h"
#include "transform/matrixOp.h"

#include <array>

namespace RendererHarness
{

// Its coefficients are exact in a float.
inline Color::MatrixOp mixing()
{
    Color::MatrixOp op;
    op.setRGBValues(std::array{0.5F, 0.25F, 0.25F, 0.125F, 0.75F, 0.125F, 0.0625F, 0.1875F, 0.75F}.data());
    return op;
}

// Another curve for each channel, alpha among them.
inline Color::GammaOp fourGammas()
{
    Color::GammaOp op;
    op.setRedParams({2.2});
    op.setGreenParams({1.7});
    op.setBlueParams({0.6});
    op.setAlphaParams({1.2});
    return op;
}

} // namespace RendererHarness

#endif
