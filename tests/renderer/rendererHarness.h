// What tests of renderers share: an operator rendered alone, floats of every sort, and every instruction set in turn.
#ifndef TAVRIN_TESTS_RENDERER_RENDERER_HARNESS_H
#define TAVRIN_TESTS_RENDERER_RENDERER_HARNESS_H

#include "renderer/CPURenderer.h"
#include "renderer/simdTarget.h"
#include "transform/transform.h"

#include <Imath/half.h>
#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>
#include <memory>
#include <random>
#include <vector>

namespace RendererHarness
{

using Rendering::PixelFormat;
using Rendering::RendererKind;
using Tavrin::BitDepth;

inline std::shared_ptr<Color::Transform> transformOf(std::vector<Color::Op const*> const& ops)
{
    auto transform = std::make_shared<Color::Transform>();
    for (Color::Op const* op : ops)
        transform->getOps().append(op->clone());
    return transform;
}

inline Rendering::CPURenderer rendererOf(std::shared_ptr<Color::Transform> const& transform, PixelFormat in, PixelFormat out)
{
    Rendering::CPURenderer renderer;
    renderer.finalize(transform, in, out);
    return renderer;
}

// The kinds of the renderers that an operator alone is turned into.
inline std::vector<RendererKind> kindsOf(Color::Op const& op, PixelFormat in = Tavrin::PF_RGBA_32f,
                                         PixelFormat out = Tavrin::PF_RGBA_32f)
{
    Rendering::CPURenderer const renderer = rendererOf(transformOf({&op}), in, out);
    std::vector<RendererKind> kinds;
    for (unsigned int i = 0; i < renderer.getNumRenderers(); ++i)
        kinds.push_back(static_cast<RendererKind>(renderer.getRendererType(i)));
    return kinds;
}

// One line of so many pixels through the operators.
template <class In, class Out>
std::vector<Out> renderAs(std::vector<Color::Op const*> const& ops, PixelFormat in, PixelFormat out, std::vector<In> const& pixels,
                          unsigned int count)
{
    std::vector<Out> result(count * Tavrin::getPixelSizeInByte(out) / sizeof(Out));
    rendererOf(transformOf(ops), in, out).apply(pixels.data(), result.data(), Rendering::ROI(0, 0, count, 1), 0, 0);
    return result;
}

template <class In, class Out>
std::vector<Out> renderAs(Color::Op const& op, PixelFormat in, PixelFormat out, std::vector<In> const& pixels, unsigned int count)
{
    return renderAs<In, Out>(std::vector<Color::Op const*>{&op}, in, out, pixels, count);
}

// RGBA floats through one operator.
inline std::vector<float> render(Color::Op const& op, std::vector<float> const& rgba)
{
    return renderAs<float, float>(op, Tavrin::PF_RGBA_32f, Tavrin::PF_RGBA_32f, rgba, static_cast<unsigned int>(rgba.size() / 4));
}

// Mostly values between -2 and 2, some of any bit pattern, and each of the special ones.
inline std::vector<float> nastyFloats(std::size_t count, unsigned int seed)
{
    constexpr float kInfinity = std::numeric_limits<float>::infinity();
    static float const special[] = {0.0F,   -0.0F,   1.0F,  -1.0F,  kInfinity, -kInfinity,      std::nanf(""), -std::nanf(""),
                                    1e-45F, -1e-45F, 1e38F, -1e38F, 0.5F,      1.17549435e-38F, 3.4028235e38F, 65504.0F};
    std::mt19937 generator(seed);
    std::uniform_real_distribution<float> usual(-2.0F, 2.0F);
    std::vector<float> values(count);
    for (std::size_t i = 0; i < count; ++i)
    {
        std::uint32_t const bits = static_cast<std::uint32_t>(generator());
        switch (generator() % 8)
        {
        case 0:
            std::memcpy(&values[i], &bits, sizeof bits);
            break;
        case 1:
            values[i] = special[bits % std::size(special)];
            break;
        default:
            values[i] = usual(generator);
        }
    }
    return values;
}

// The same bits, or a NaN for a NaN.
inline void expectSameFloat(float expected, float actual, std::size_t index)
{
    if (std::isnan(expected))
    {
        ASSERT_TRUE(std::isnan(actual)) << "at " << index;
    }
    else
    {
        ASSERT_TRUE(expected == actual && std::signbit(expected) == std::signbit(actual))
            << "at " << index << ": expected " << expected << ", got " << actual;
    }
}

// All of them, by the same rule; tells the first difference alone.
inline void expectSameFloats(std::vector<float> const& expected, std::vector<float> const& actual)
{
    ASSERT_EQ(expected.size(), actual.size());
    for (std::size_t i = 0; i < expected.size(); ++i)
    {
        // The common case first: tests compare millions.
        if (std::bit_cast<std::uint32_t>(expected[i]) != std::bit_cast<std::uint32_t>(actual[i]))
        {
            ASSERT_NO_FATAL_FAILURE(expectSameFloat(expected[i], actual[i], i));
        }
    }
}

// Runs a body once for every instruction set that the processor has.
template <class Body>
void forEveryTarget(Body const& body)
{
    for (Rendering::SimdTarget target : Rendering::getSupportedSimdTargets())
    {
        SCOPED_TRACE(Rendering::getSimdTargetName(target));
        Rendering::ScopedSimdTarget const scope(target);
        body();
    }
}

} // namespace RendererHarness

#endif
