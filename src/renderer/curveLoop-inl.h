// The loop of kernels whose channels do not know each other: plane by plane, several vectors together.
#if defined(TAVRIN_RENDERER_CURVE_LOOP_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef TAVRIN_RENDERER_CURVE_LOOP_INL_H
#undef TAVRIN_RENDERER_CURVE_LOOP_INL_H
#else
#define TAVRIN_RENDERER_CURVE_LOOP_INL_H
#endif

#include "renderer/block.h"
#include "renderer/several-inl.h"

#include <hwy/highway.h>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <type_traits>

HWY_BEFORE_NAMESPACE();
namespace Rendering::HWY_NAMESPACE
{

namespace hn = hwy::HWY_NAMESPACE;

// So many that the pipeline has enough to do, and so few that they find room in the registers.
inline constexpr std::size_t kCurveVectors = HWY_TARGET <= HWY_AVX3 ? 8 : 4;

// For kernels that gain more by eight vectors on AVX2 than they lose by the room that these take outside of the registers.
inline constexpr std::size_t kManyVectors = HWY_TARGET <= HWY_AVX2 ? 8 : 4;

// For short curves, as each of the two steps of a power is.
inline constexpr std::size_t kFewVectors = 4;

// Takes a step at all places of a plane: several vectors at a time, and what remains one by one.
template <std::size_t kVectors, class Step>
HWY_INLINE void TakeStep(Step const& step, std::size_t count)
{
    const std::size_t lanes = hn::Lanes(hn::ScalableTag<float>());
    std::size_t i = 0;
    for (; i + kVectors * lanes <= count; i += kVectors * lanes)
        step.template At<kVectors>(i);
    for (; i < count; i += lanes)
        step.template At<1>(i);
}

template <class Kernel>
inline constexpr bool kIsCurve = requires(Kernel const& kernel, hn::VFromD<hn::ScalableTag<float>> value)
{
    kernel.Curve(hn::ScalableTag<float>(), value, 0);
};

template <class Kernel>
inline constexpr bool kIsPower = requires(Kernel const& kernel, hn::VFromD<hn::ScalableTag<float>>& value)
{
    kernel.ToExponent(hn::ScalableTag<float>(), value, 0);
};

// A whole curve.
template <class Kernel>
struct CurveStep
{
    Kernel const& kernel;
    int channel;
    float* plane;

    template <std::size_t kVectors>
    HWY_INLINE void At(std::size_t i) const
    {
        const hn::ScalableTag<float> d;
        StoreVectors(kernel.Curve(d, LoadVectors<kVectors>(d, plane + i), channel), d, plane + i);
    }
};

// The two steps of a power.
template <class Kernel>
struct ToExponentStep
{
    Kernel const& kernel;
    int channel;
    float* plane;
    float* exponents;

    template <std::size_t kVectors>
    HWY_INLINE void At(std::size_t i) const
    {
        const hn::ScalableTag<float> d;
        auto values = LoadVectors<kVectors>(d, plane + i);
        const auto exponent = kernel.ToExponent(d, values, channel);
        StoreVectors(values, d, plane + i); // First, so that the compiler sees where they are what they were.
        StoreVectors(exponent, d, exponents + i);
    }
};

template <class Kernel>
struct FromExponentStep
{
    Kernel const& kernel;
    int channel;
    float* plane;
    float const* exponents;

    template <std::size_t kVectors>
    HWY_INLINE void At(std::size_t i) const
    {
        const hn::ScalableTag<float> d;
        const auto values = LoadVectors<kVectors>(d, plane + i);
        StoreVectors(kernel.FromExponent(d, values, LoadVectors<kVectors>(d, exponents + i), channel), d, plane + i);
    }
};

// Replaces the values of a plane by those of a curve, an operation Curve(d, values, channel) on one vector or several. A power has
// two instead: ToExponent(d, values, channel) gives the exponent of 2, and may change the values into what FromExponent(d, values,
// exponents, channel) wants to know of them. The loop of each needs so few registers, and its operations wait so little for each
// other, that both take less time than one loop.
template <class Kernel>
HWY_INLINE void RunCurve(Kernel const& kernel, int channel, float* plane, Block& block, std::size_t count)
{
    if constexpr (kIsPower<Kernel>)
    {
        TakeStep<kFewVectors>(ToExponentStep<Kernel>{kernel, channel, plane, block.interim}, count);
        TakeStep<kFewVectors>(FromExponentStep<Kernel>{kernel, channel, plane, block.interim}, count);
    }
    else
        TakeStep<VectorsOf<Kernel, kCurveVectors>()>(CurveStep<Kernel>{kernel, channel, plane}, count);
}

// Red, green and blue.
template <class Kernel>
HWY_INLINE void RunColorCurves(Kernel const& kernel, Block& block, std::size_t count)
{
    float* const planes[] = {block.red, block.green, block.blue};
    for (int channel = 0; channel < 3; ++channel)
        RunCurve(kernel, channel, planes[channel], block, count);
}

// Whether the vectors that hold the values are bit for bit the same, and of one value.
HWY_INLINE bool IsUniform(float const* plane, std::size_t count)
{
    const hn::ScalableTag<std::int32_t> di;
    std::int32_t first;
    std::memcpy(&first, plane, sizeof first);
    auto difference = hn::Zero(di);
    for (std::size_t i = 0; i < count; i += hn::Lanes(di))
    {
        const auto values = hn::Load(di, reinterpret_cast<std::int32_t const*>(plane + i));
        difference = hn::Or(difference, hn::Xor(values, hn::Set(di, first)));
    }
    return hn::AllTrue(di, hn::Eq(difference, hn::Zero(di)));
}

// Pictures without holes have one alpha all over, which is worth one vector's work only.
template <class Kernel>
HWY_INLINE void RunAlphaCurve(Kernel const& kernel, Block& block, std::size_t count)
{
    constexpr int kAlpha = 3;
    if (!IsUniform(block.alpha, count))
        return RunCurve(kernel, kAlpha, block.alpha, block, count);
    const hn::ScalableTag<float> d;
    RunCurve(kernel, kAlpha, block.alpha, block, 1);
    const auto alpha = hn::Load(d, block.alpha);
    for (std::size_t i = hn::Lanes(d); i < count; i += hn::Lanes(d))
        hn::Store(alpha, d, block.alpha + i);
}

HWY_INLINE void ScalePlane(float* plane, std::size_t count, float scale)
{
    const hn::ScalableTag<float> d;
    for (std::size_t i = 0; i < count; i += hn::Lanes(d))
        hn::Store(hn::Mul(hn::Load(d, plane + i), hn::Set(d, scale)), d, plane + i);
}

// Where the parameters have a scale for alpha, that has no curve.
template <class Kernel>
HWY_INLINE void RunAlpha(Kernel const& kernel, Block& block, std::size_t count)
{
    if constexpr (requires { kernel.alphaScale; })
        ScalePlane(block.alpha, count, kernel.alphaScale);
    else
        RunAlphaCurve(kernel, block, count);
}

// All channels of a kernel with curves. Alpha comes first: if one vector stands for all, the colours begin while that is reckoned.
template <class Kernel>
HWY_INLINE void RunCurves(Kernel const& kernel, Block& block, std::size_t count, Outputs outputs)
{
    if (outputs == Outputs::ColorsAndAlpha)
        RunAlpha(kernel, block, count);
    RunColorCurves(kernel, block, count);
}

} // namespace Rendering::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif
