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
#include <utility>

HWY_BEFORE_NAMESPACE();
namespace Rendering::HWY_NAMESPACE
{

namespace hn = hwy::HWY_NAMESPACE;

// So many that the pipeline has enough to do, and so few that they find room in the registers.
inline constexpr std::size_t kCurveVectors = HWY_TARGET <= HWY_AVX3 ? 8 : 4;

// For kernels that gain more by eight vectors on AVX2 than they lose by the room that these take outside of the registers.
inline constexpr std::size_t kManyVectors = HWY_TARGET <= HWY_AVX2 ? 8 : 4;

// Kernels may tell how many they want.
template <class Kernel>
constexpr std::size_t CurveVectorsOf()
{
    if constexpr (requires { Kernel::kVectorsOfCurve; })
        return Kernel::kVectorsOfCurve;
    else
        return kCurveVectors;
}

// Replaces the values of a plane by those of a curve, an operation Curve(d, values, channel) on one vector or several.
template <class Kernel>
HWY_INLINE void RunCurve(Kernel const& kernel, int channel, float* plane, std::size_t count)
{
    const hn::ScalableTag<float> d;
    const std::size_t lanes = hn::Lanes(d);
    constexpr std::size_t kVectors = CurveVectorsOf<Kernel>();
    std::size_t i = 0;
    for (; i + kVectors * lanes <= count; i += kVectors * lanes)
        StoreVectors(kernel.Curve(d, LoadVectors<kVectors>(d, plane + i), channel), d, plane + i);
    for (; i < count; i += lanes)
        StoreVectors(kernel.Curve(d, LoadVectors<1>(d, plane + i), channel), d, plane + i);
}

// Red, green and blue.
template <class Kernel>
HWY_INLINE void RunColorCurves(Kernel const& kernel, Block& block, std::size_t count)
{
    float* const planes[] = {block.red, block.green, block.blue};
    for (int channel = 0; channel < 3; ++channel)
        RunCurve(kernel, channel, planes[channel], count);
}

// Whether the vectors that hold the values are bit for bit the same, and of one value.
HWY_INLINE bool IsUniform(float const* plane, std::size_t count)
{
    const hn::ScalableTag<std::int32_t> di;
    std::int32_t first;
    std::memcpy(&first, plane, sizeof first);
    bool isUniform = true;
    for (std::size_t i = 0; i < count && isUniform; i += hn::Lanes(di))
        isUniform = hn::AllTrue(di, hn::Eq(hn::Load(di, reinterpret_cast<std::int32_t const*>(plane + i)), hn::Set(di, first)));
    return isUniform;
}

// Pictures without holes have one alpha all over, which is worth one vector's work only.
template <class Kernel>
HWY_INLINE void RunAlphaCurve(Kernel const& kernel, float* plane, std::size_t count)
{
    constexpr int kAlpha = 3;
    if (!IsUniform(plane, count))
        return RunCurve(kernel, kAlpha, plane, count);
    const hn::ScalableTag<float> d;
    const auto alpha = kernel.Curve(d, hn::Load(d, plane), kAlpha);
    for (std::size_t i = 0; i < count; i += hn::Lanes(d))
        hn::Store(alpha, d, plane + i);
}

HWY_INLINE void ScalePlane(float* plane, std::size_t count, float scale)
{
    const hn::ScalableTag<float> d;
    for (std::size_t i = 0; i < count; i += hn::Lanes(d))
        hn::Store(hn::Mul(hn::Load(d, plane + i), hn::Set(d, scale)), d, plane + i);
}

// All channels of a kernel with curves. Where its parameters have a scale for alpha, that has no curve.
template <class Kernel>
HWY_INLINE void RunCurves(Kernel const& kernel, Block& block, std::size_t count, Outputs outputs)
{
    RunColorCurves(kernel, block, count);
    if (outputs == Outputs::Colors)
        return;
    if constexpr (requires { kernel.alphaScale; })
        ScalePlane(block.alpha, count, kernel.alphaScale);
    else
        RunAlphaCurve(kernel, block.alpha, count);
}

} // namespace Rendering::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif
