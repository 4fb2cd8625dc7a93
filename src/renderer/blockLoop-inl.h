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

// Where alpha is not wanted, the compiler leaves out all that only alpha needs.
template <Outputs kOutputs, class Kernel>
HWY_INLINE void RunOverVectorsFor(Kernel const& kernel, Block& block, unsigned int count, ImagePosition position)
{
    const hn::ScalableTag<float> d;
    const unsigned int lanes = static_cast<unsigned int>(hn::Lanes(d));
    for (unsigned int i = 0; i < count; i += lanes)
    {
        auto red = hn::Load(d, block.red + i);
        auto green = hn::Load(d, block.green + i);
        auto blue = hn::Load(d, block.blue + i);
        auto alpha = hn::Load(d, block.alpha + i);
        CallKernel(kernel, d, red, green, blue, alpha, ImagePosition{position.column + i, position.row});
        hn::Store(red, d, block.red + i);
        hn::Store(green, d, block.green + i);
        hn::Store(blue, d, block.blue + i);
        if constexpr (kOutputs == Outputs::ColorsAndAlpha)
            hn::Store(alpha, d, block.alpha + i);
    }
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
// other has an operation Curve(d, values, channel) instead, on one vector or several; one that works in several steps over many
// vectors has an operation RunBlock(block, count, outputs).
template <class Kernel, class Parameters>
void RunOverBlock(void const* parameters, Block& block, unsigned int count, ImagePosition position, Outputs outputs)
{
    const Kernel kernel{*static_cast<Parameters const*>(parameters)};
    if constexpr (requires { kernel.RunBlock(block, count, outputs); })
        kernel.RunBlock(block, count, outputs);
    else if constexpr (requires { &Kernel::template Curve<hn::ScalableTag<float>, hn::VFromD<hn::ScalableTag<float>>>; })
        RunCurves(kernel, block, count, outputs);
    else
        RunOverVectors(kernel, block, count, position, outputs);
}

} // namespace Rendering::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif
