// The one loop over a block: a kernel is a function on vectors of pixels, this runs it over the planes.
#if defined(TAVRIN_RENDERER_BLOCK_LOOP_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef TAVRIN_RENDERER_BLOCK_LOOP_INL_H
#undef TAVRIN_RENDERER_BLOCK_LOOP_INL_H
#else
#define TAVRIN_RENDERER_BLOCK_LOOP_INL_H
#endif

#include "renderer/block.h"
#include "renderer/curveLoop-inl.h"

#include <hwy/highway.h>

#include <type_traits>

HWY_BEFORE_NAMESPACE();
namespace Rendering::HWY_NAMESPACE
{

namespace hn = hwy::HWY_NAMESPACE;

// Most kernels do not care where a pixel stands.
template <class Kernel, class D, class V>
HWY_INLINE void CallKernel(Kernel const& kernel, D d, V& r, V& g, V& b, V& a, ImagePosition position)
{
    if constexpr (std::is_invocable_v<Kernel const&, D, V&, V&, V&, V&, ImagePosition>)
        kernel(d, r, g, b, a, position);
    else
        kernel(d, r, g, b, a);
}

// Runs a kernel over the vectors from a place on. Where alpha is not wanted, the compiler leaves out all that only alpha needs.
template <Outputs kOutputs, std::size_t kVectors, class Kernel>
HWY_INLINE void RunAt(Kernel const& kernel, Block& block, unsigned int i, ImagePosition position)
{
    const hn::ScalableTag<float> d;
    auto red = LoadVectors<kVectors>(d, block.red + i);
    auto green = LoadVectors<kVectors>(d, block.green + i);
    auto blue = LoadVectors<kVectors>(d, block.blue + i);
    auto alpha = LoadVectors<kVectors>(d, block.alpha + i);
    CallKernel(kernel, d, red, green, blue, alpha, ImagePosition{position.column + i, position.row});
    StoreVectors(red, d, block.red + i);
    StoreVectors(green, d, block.green + i);
    StoreVectors(blue, d, block.blue + i);
    if constexpr (kOutputs == Outputs::ColorsAndAlpha)
        StoreVectors(alpha, d, block.alpha + i);
}

template <Outputs kOutputs, class Kernel>
HWY_INLINE void RunOverVectorsFor(Kernel const& kernel, Block& block, unsigned int count, ImagePosition position)
{
    const unsigned int lanes = static_cast<unsigned int>(hn::Lanes(hn::ScalableTag<float>()));
    constexpr unsigned int kVectors = VectorsOf<Kernel, 1>();
    unsigned int i = 0;
    for (; i + kVectors * lanes <= count; i += kVectors * lanes)
        RunAt<kOutputs, kVectors>(kernel, block, i, position);
    for (; i < count; i += lanes)
        RunAt<kOutputs, 1>(kernel, block, i, position);
}

// Runs a kernel vector by vector.
template <class Kernel>
HWY_INLINE void RunOverVectors(Kernel const& kernel, Block& block, unsigned int count, ImagePosition position, Outputs outputs)
{
    if (outputs == Outputs::Colors)
        RunOverVectorsFor<Outputs::Colors>(kernel, block, count, position);
    else
        RunOverVectorsFor<Outputs::ColorsAndAlpha>(kernel, block, count, position);
}

// Kernel derives from Parameters and is called as kernel(d, red, green, blue, alpha), or, if it takes one more argument, with the
// image position of the vectors' first pixel, which the others follow in the same row. A kernel whose channels do not know each
// other has an operation Curve(d, values, channel) instead, on one vector or several, or Argument and Finish if that is a power;
// one that works in several steps over many vectors has an operation RunBlock(block, count, outputs). All of it becomes one
// function: what the compiler leaves outside reads its constants from memory again and again.
template <class Kernel, class Parameters>
HWY_FLATTEN void RunOverBlock(void const* parameters, Block& block, unsigned int count, ImagePosition position, Outputs outputs)
{
    const Kernel kernel{*static_cast<Parameters const*>(parameters)};
    if constexpr (requires { kernel.RunBlock(block, count, outputs); })
        kernel.RunBlock(block, count, outputs);
    else if constexpr (kIsPower<Kernel> || kIsCurve<Kernel>)
        RunCurves(kernel, block, count, outputs);
    else
        RunOverVectors(kernel, block, count, position, outputs);
}

} // namespace Rendering::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif
