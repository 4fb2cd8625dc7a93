// The arithmetic kernels, written once and compiled for each target: parameters and formulas, pixel by pixel.
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "renderer/kernelsArithmetic.cpp"
#include "renderer/simdTargets-inl.h"

#include <hwy/foreach_target.h>

#include <hwy/highway.h>

#include "renderer/blockLoop-inl.h"
#include "renderer/kernelsArithmetic.h"
#include "renderer/vectorMath-inl.h"

#ifndef TAVRIN_RENDERER_KERNELS_ARITHMETIC_CPP_ONCE
#define TAVRIN_RENDERER_KERNELS_ARITHMETIC_CPP_ONCE
namespace Rendering
{

struct ArithmeticKernelTable
{
#define TAVRIN_KERNEL(name, Parameters) BlockFunction name;
#include "renderer/arithmeticKernels.def"
#undef TAVRIN_KERNEL
};

using ArrayFunction1 = void (*)(float const* x, float* result, unsigned int count);
using ArrayFunction2 = void (*)(float const* x, float const* y, float* result, unsigned int count);

struct VectorMathTable
{
    ArrayFunction2 power;
    ArrayFunction1 exp2;
    ArrayFunction1 log2;
};

} // namespace Rendering
#endif

HWY_BEFORE_NAMESPACE();
namespace Rendering::HWY_NAMESPACE
{

namespace hn = hwy::HWY_NAMESPACE;

// Multiplications and additions stay apart: a fused one would give other bits where the processor has it.
template <class D, class V>
HWY_INLINE V ScaleAndOffset(D d, V value, float scale, float offset)
{
    return hn::Add(hn::Mul(value, hn::Set(d, scale)), hn::Set(d, offset));
}

struct Scale : ScaleParameters
{
    template <class D, class V>
    HWY_INLINE void operator()(D d, V& r, V& g, V& b, V& a) const
    {
        r = hn::Mul(r, hn::Set(d, scale[0]));
        g = hn::Mul(g, hn::Set(d, scale[1]));
        b = hn::Mul(b, hn::Set(d, scale[2]));
        a = hn::Mul(a, hn::Set(d, scale[3]));
    }
};

struct ScaleWithOffset : ScaleWithOffsetParameters
{
    template <class D, class V>
    HWY_INLINE void operator()(D d, V& r, V& g, V& b, V& a) const
    {
        r = ScaleAndOffset(d, r, scale[0], offset[0]);
        g = ScaleAndOffset(d, g, scale[1], offset[1]);
        b = ScaleAndOffset(d, b, scale[2], offset[2]);
        a = ScaleAndOffset(d, a, scale[3], offset[3]);
    }
};

// One output channel: the sum of the products of red and green, and that of blue and alpha, are added.
template <class D, class V>
HWY_INLINE V MatrixRow(D d, float const (&column)[4][4], int row, V r, V g, V b, V a)
{
    const V redGreen = hn::Add(hn::Mul(hn::Set(d, column[0][row]), r), hn::Mul(hn::Set(d, column[1][row]), g));
    const V blueAlpha = hn::Add(hn::Mul(hn::Set(d, column[2][row]), b), hn::Mul(hn::Set(d, column[3][row]), a));
    return hn::Add(redGreen, blueAlpha);
}

struct Matrix : MatrixParameters
{
    template <class D, class V>
    HWY_INLINE void operator()(D d, V& r, V& g, V& b, V& a) const
    {
        const V red = MatrixRow(d, column, 0, r, g, b, a);
        const V green = MatrixRow(d, column, 1, r, g, b, a);
        const V blue = MatrixRow(d, column, 2, r, g, b, a);
        a = MatrixRow(d, column, 3, r, g, b, a);
        r = red;
        g = green;
        b = blue;
    }
};

struct MatrixWithOffset : MatrixWithOffsetParameters
{
    template <class D, class V>
    HWY_INLINE void operator()(D d, V& r, V& g, V& b, V& a) const
    {
        const V red = hn::Add(MatrixRow(d, column, 0, r, g, b, a), hn::Set(d, offset[0]));
        const V green = hn::Add(MatrixRow(d, column, 1, r, g, b, a), hn::Set(d, offset[1]));
        const V blue = hn::Add(MatrixRow(d, column, 2, r, g, b, a), hn::Set(d, offset[2]));
        a = hn::Add(MatrixRow(d, column, 3, r, g, b, a), hn::Set(d, offset[3]));
        r = red;
        g = green;
        b = blue;
    }
};

// Comparisons, not Min and Max, whose rule for NaN depends on the target: a NaN becomes the lower bound where there is one, and
// stays where there is only an upper bound.
template <bool kScales, bool kHasMin, bool kHasMax>
struct Range : RangeParameters
{
    template <class D, class V>
    HWY_INLINE V Limit(D d, V value) const
    {
        const V t = kScales ? ScaleAndOffset(d, value, scale, offset) : value;
        V result = t;
        if constexpr (kHasMin)
            result = hn::IfThenElse(hn::Gt(t, hn::Set(d, lowerBound)), t, hn::Set(d, lowerBound));
        if constexpr (kHasMax) // Wins where an integer depth put it below the lower bound.
            result = hn::IfThenElse(hn::Gt(t, hn::Set(d, upperBound)), hn::Set(d, upperBound), result);
        return result;
    }

    template <class D, class V>
    HWY_INLINE void operator()(D d, V& r, V& g, V& b, V& a) const
    {
        r = Limit(d, r);
        g = Limit(d, g);
        b = Limit(d, b);
        a = hn::Mul(a, hn::Set(d, alphaScale));
    }
};

using RangeScaleMinMax = Range<true, true, true>;
using RangeScaleMin = Range<true, true, false>;
using RangeScaleMax = Range<true, false, true>;
using RangeScale = Range<true, false, false>;
using RangeMinMax = Range<false, true, true>;
using RangeMin = Range<false, true, false>;
using RangeMax = Range<false, false, true>;

constexpr ArithmeticKernelTable kArithmeticKernels = {
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

constexpr VectorMathTable kVectorMath = {&ArrayPower, &ArrayExp2, &ArrayLog2};

} // namespace Rendering::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE

#include "renderer/simdTarget.h"

namespace Rendering
{

BlockFunction getArithmeticKernel(ArithmeticKernel kernel)
{
    static constexpr PerTarget<ArithmeticKernelTable> kTables TAVRIN_PER_TARGET(kArithmeticKernels);
    ArithmeticKernelTable const& table = *kTables[getSimdTarget()];
    switch (kernel)
    {
#define TAVRIN_KERNEL(name, Parameters) \
    case ArithmeticKernel::name:        \
        return table.name;
#include "renderer/arithmeticKernels.def"
#undef TAVRIN_KERNEL
    }
    return nullptr;
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

} // namespace Color::SSE2

#endif
