// The curves among the arithmetic kernels, for getArithmeticKernel (kernelsArithmetic.h), which users ask for any of them.
#ifndef TAVRIN_RENDERER_KERNELS_CURVES_H
#define TAVRIN_RENDERER_KERNELS_CURVES_H

#include "renderer/block.h"

#include <cstddef>

namespace Rendering
{

// The function for the current target of the kernel in a row of curveKernels.def.
BlockFunction getCurveKernel(std::size_t row);

} // namespace Rendering

#endif
