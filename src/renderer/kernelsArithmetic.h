// Arithmetic on blocks of pixels: the functions that run each kernel on the current target. The operators' own headers
// (CPUMatrixOp.h and so on) hold the parameters.
#ifndef TAVRIN_RENDERER_KERNELS_ARITHMETIC_H
#define TAVRIN_RENDERER_KERNELS_ARITHMETIC_H

#include "renderer/block.h"

namespace Rendering
{

enum class ArithmeticKernel : unsigned int
{
#define TAVRIN_KERNEL(name, Parameters) name,
#include "renderer/arithmeticKernels.def"
#include "renderer/curveKernels.def"
#undef TAVRIN_KERNEL
};

// The kernel's function for the current target. Its parameters are those that the list names for the kernel.
BlockFunction getArithmeticKernel(ArithmeticKernel kernel);

} // namespace Rendering

namespace Color::SSE2
{

// The lane-wise functions that renderers share, over arrays of any length, on the current target. Their polynomials have about four
// correct decimal digits, and their exact values are part of the rendered result.

// x to the power exponent; +0 for x that is not above 0, NaN included.
void ssePower(float const* x, float const* exponent, float* result, unsigned int count);

// 2 to the power x: +0 below -126, infinity from 128 on; a NaN gives a NaN.
void sseExp2(float const* x, float* result, unsigned int count);

// The logarithm to base 2 of a positive, normal x.
void sseLog2(float const* x, float* result, unsigned int count);

// The angle of the point (x, y) in radians, as std::atan2 has it and within 2 units in the last place; a NaN gives a NaN. Unlike
// the others no rough approximation.
void sseAtan2(float const* y, float const* x, float* result, unsigned int count);

} // namespace Color::SSE2

#endif
