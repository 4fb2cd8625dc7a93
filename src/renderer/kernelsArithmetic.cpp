// The arithmetic kernels of all operators but for curves (kernelsCurves.cpp), compiled for each target. The formulas stand in the
// operators' own files (CPUMatrixOp-inl.h and so on); here they come together, since the headers of the instruction sets are dear
// to compile.
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "renderer/kernelsArithmetic.cpp"
#include "renderer/simdTargets-inl.h"

#include <hwy/foreach_target.h>

#include <hwy/highway.h>

#include "renderer/CPUDitherOp-inl.h"
#include "renderer/CPUGamutMapOp-inl.h"
#include "renderer/CPUHueVectorOp-inl.h"
#include "renderer/CPUMatrixOp-inl.h"
#include "renderer/CPURangeOp-inl.h"
#include "renderer/arcTangent-inl.h"
#include "renderer/blockLoop-inl.h"
#include "renderer/kernelsArithmetic.h"
#include "renderer/vectorMath-inl.h"

#include <array>
#include <cstddef>

#ifndef TAVRIN_RENDERER_KERNELS_ARITHMETIC_CPP_ONCE
#define TAVRIN_RENDERER_KERNELS_ARITHMETIC_CPP_ONCE
namespace Rendering
{

using ArrayFunction1 = void (*)(float const* x, float* result, unsigned int count);
using ArrayFunction2 = void (*)(float const* x, float const* y, float* result, unsigned int count);

struct VectorMathTable
{
    ArrayFunction2 power;
    ArrayFunction1 exp2;
    ArrayFunction1 log2;
    ArrayFunction2 atan2;
};

} // namespace Rendering
#endif

HWY_BEFORE_NAMESPACE();
namespace Rendering::HWY_NAMESPACE
{

namespace hn = hwy::HWY_NAMESPACE;

// In the order of their numbers.
constexpr std::array kArithmeticKernels = {
#define TAVRIN_KERNEL(name, Parameters) &RunOverBlock<name, Parameters>,
#include "renderer/arithmeticKernels.def"
#undef TAVRIN_KERNEL
};

// ---------------------------------------------------------------- functions over arrays

template <class Function>
HWY_INLINE void OverArray(unsigned int count, float* result, Function const& function)
{
    const hn::ScalableTag<float> d;
    const unsigned int lanes = static_cast<unsigned int>(hn::Lanes(d));
    unsigned int i = 0;
    for (; i + lanes <= count; i += lanes)
        hn::StoreU(function(d, i), d, result + i);
    const hn::CappedTag<float, 1> one;
    for (; i < count; ++i)
        hn::StoreU(function(one, i), one, result + i);
}

void ArrayPower(float const* x, float const* exponent, float* result, unsigned int count)
{
    OverArray(count, result,
              [=](auto d, unsigned int i) HWY_ATTR { return Power(d, hn::LoadU(d, x + i), hn::LoadU(d, exponent + i)); });
}

void ArrayExp2(float const* x, float* result, unsigned int count)
{
    OverArray(count, result, [=](auto d, unsigned int i) HWY_ATTR { return Exp2(d, hn::LoadU(d, x + i)); });
}

void ArrayLog2(float const* x, float* result, unsigned int count)
{
    OverArray(count, result, [=](auto d, unsigned int i) HWY_ATTR { return Log2(d, hn::LoadU(d, x + i)); });
}

void ArrayAtan2(float const* y, float const* x, float* result, unsigned int count)
{
    OverArray(count, result, [=](auto d, unsigned int i) HWY_ATTR { return Atan2(d, hn::LoadU(d, y + i), hn::LoadU(d, x + i)); });
}

constexpr VectorMathTable kVectorMath = {&ArrayPower, &ArrayExp2, &ArrayLog2, &ArrayAtan2};

} // namespace Rendering::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE

#include "renderer/kernelsCurves.h"
#include "renderer/simdTarget.h"

namespace Rendering
{

BlockFunction getArithmeticKernel(ArithmeticKernel kernel)
{
    static constexpr PerTarget<decltype(HWY_NAMESPACE::kArithmeticKernels)> kTables TAVRIN_PER_TARGET(kArithmeticKernels);
    auto const& table = *kTables[getSimdTarget()];
    std::size_t const row = static_cast<std::size_t>(kernel);
    return row < table.size() ? table[row] : getCurveKernel(row - table.size());
}

namespace
{

VectorMathTable const& vectorMath()
{
    static constexpr PerTarget<VectorMathTable> kTables TAVRIN_PER_TARGET(kVectorMath);
    return *kTables[getSimdTarget()];
}

} // namespace

} // namespace Rendering

namespace Color::SSE2
{

void ssePower(float const* x, float const* exponent, float* result, unsigned int count)
{
    Rendering::vectorMath().power(x, exponent, result, count);
}

void sseExp2(float const* x, float* result, unsigned int count)
{
    Rendering::vectorMath().exp2(x, result, count);
}

void sseLog2(float const* x, float* result, unsigned int count)
{
    Rendering::vectorMath().log2(x, result, count);
}

void sseAtan2(float const* y, float const* x, float* result, unsigned int count)
{
    Rendering::vectorMath().atan2(y, x, result, count);
}

} // namespace Color::SSE2

#endif
