// Work on alpha that nothing asks for, or that is the same for all pixels, is left out; what is stored stays the same.
#include "renderer/pixelModel.h"
#include "renderer/rendererHarness.h"
#include "renderer/shaderSamples.h"

#include "renderer/CPUSelector.h"
#include "transform/matrixOp.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstring>
#include <limits>
#include <memory>
#include <string>
#include <vector>

using namespace RendererHarness;
using Color::MatrixOp;
using Rendering::VirtualRenderer;

namespace
{

// An odd count, so that the last pixels do not fill a vector, and more than a block.
constexpr unsigned int kCount = 128 + 16 * 3 + 7;

// A renderer that reckons alpha whether or not it changes.
class WithAlpha : public VirtualRenderer
{
public:
    explicit WithAlpha(VirtualRenderer const& renderer) : VirtualRenderer(MatrixOp()), m_renderer(renderer) {}

    RendererKind getOpType() const override { return m_renderer.getOpType(); }
    Rendering::LineKernel prepareLine(Rendering::LineParameters& room) const override
    {
        Rendering::LineKernel kernel = m_renderer.prepareLine(room);
        kernel.keepsAlpha = false;
        return kernel;
    }
    bool takesCodes() const override { return m_renderer.takesCodes(); }
    bool mixesAlpha() const override { return true; }

private:
    VirtualRenderer const& m_renderer;
};

std::vector<unsigned char> apply(Rendering::TransformProcessor const& renderers, PixelFormat from, PixelFormat to,
                                 std::vector<unsigned char> const& source)
{
    std::vector<unsigned char> out(kCount * PixelModel::pixelBytes(to));
    Rendering::CPUEngine(from, to).apply(source.data(), out.data(), Rendering::ROI(0, 0, kCount, 1), 0, 0, renderers);
    return out;
}

std::vector<unsigned char> applyWithAlpha(Rendering::TransformProcessor const& renderers, PixelFormat from, PixelFormat to,
                                          std::vector<unsigned char> const& source)
{
    Rendering::TransformProcessor all;
    for (std::size_t i = 0; i < renderers.size(); ++i)
        all.append(std::make_unique<WithAlpha>(renderers[i]));
    return apply(all, from, to, source);
}

// The bytes without those of alpha, which stand last in a pixel.
std::vector<unsigned char> colorsOf(std::vector<unsigned char> const& pixels, std::size_t channelBytes)
{
    std::vector<unsigned char> colors;
    for (std::size_t i = 0; i < pixels.size(); i += 4 * channelBytes)
        colors.insert(colors.end(), pixels.begin() + static_cast<std::ptrdiff_t>(i),
                      pixels.begin() + static_cast<std::ptrdiff_t>(i + 3 * channelBytes));
    return colors;
}

// Bytes, but a NaN of 32 bits may have any.
void expectSamePixels(PixelFormat format, std::vector<unsigned char> const& expected, std::vector<unsigned char> const& actual)
{
    if (expected == actual)
        return;
    ASSERT_EQ(Tavrin::BIT_DEPTH_32f, PixelModel::depthBits(format)) << "other bytes";
    ASSERT_EQ(expected.size(), actual.size());
    for (std::size_t i = 0; i < expected.size(); i += sizeof(float))
        ASSERT_NO_FATAL_FAILURE(expectSameFloat(PixelModel::readAs<float>(&expected[i]), PixelModel::readAs<float>(&actual[i]), i));
}

std::vector<unsigned char> pixelsOf(PixelFormat format)
{
    if (PixelModel::depthBits(format) != Tavrin::BIT_DEPTH_32f)
        return PixelModel::randomBytes(kCount * PixelModel::pixelBytes(format), format);
    std::vector<float> const floats = nastyFloats(kCount * PixelModel::pixelBytes(format) / sizeof(float), 3);
    std::vector<unsigned char> bytes(floats.size() * sizeof(float));
    std::memcpy(bytes.data(), floats.data(), bytes.size());
    return bytes;
}

// With alpha and without.
struct Destination
{
    PixelFormat colorsAndAlpha;
    PixelFormat colors;
};

void expectSameColors(std::shared_ptr<Color::Transform> const& transform, PixelFormat from, Destination const& to)
{
    std::vector<unsigned char> const source = pixelsOf(from);
    auto const renderers = [&](PixelFormat out) { return Rendering::makePipeline(transform, from, out).renderers; };
    std::vector<unsigned char> const expected = applyWithAlpha(*renderers(to.colorsAndAlpha), from, to.colorsAndAlpha, source);
    expectSamePixels(to.colorsAndAlpha, expected, apply(*renderers(to.colorsAndAlpha), from, to.colorsAndAlpha, source));
    expectSamePixels(to.colors, colorsOf(expected, PixelModel::pixelBytes(to.colors) / 3),
                     apply(*renderers(to.colors), from, to.colors, source));
}

// Every so many pixels one has another alpha.
constexpr unsigned int kStrangers = 4;

// RGBA_32f, all of one alpha but for the strangers.
std::vector<unsigned char> pixelsOfAlpha(float alpha, float alphaOfStrangers)
{
    std::vector<unsigned char> pixels = pixelsOf(Tavrin::PF_RGBA_32f);
    for (unsigned int i = 0; i < kCount; ++i)
        std::memcpy(&pixels[(4 * i + 3) * sizeof(float)], i % kStrangers == 0 ? &alphaOfStrangers : &alpha, sizeof(float));
    return pixels;
}

// The pixels that are no strangers.
std::vector<unsigned char> locals(std::vector<unsigned char> const& pixels)
{
    constexpr std::size_t kPixelBytes = 4 * sizeof(float);
    std::vector<unsigned char> kept;
    for (unsigned int i = 0; i < kCount; ++i)
    {
        auto const pixel = pixels.begin() + static_cast<std::ptrdiff_t>(i * kPixelBytes);
        if (i % kStrangers != 0)
            kept.insert(kept.end(), pixel, pixel + kPixelBytes);
    }
    return kept;
}

// Alpha goes into the colours, and they into alpha.
void appendMixing(Color::OpList& ops)
{
    MatrixOp mixing;
    for (unsigned int i = 0; i < 16; ++i)
        mixing.setArrayValue(i, 0.1F + 0.05F * static_cast<float>(i));
    ops.append(mixing.clone());
}

class Alpha : public testing::TestWithParam<ShaderSample>
{
protected:
    static void expectSameColorsForEveryTarget(std::shared_ptr<Color::Transform> const& transform)
    {
        forEveryTarget(
            [&]
            {
                for (PixelFormat const from : {Tavrin::PF_RGBA_32f, Tavrin::PF_RGB_32f, Tavrin::PF_RGBA_16i, Tavrin::PF_RGB_8i})
                {
                    for (Destination const& to :
                         {Destination{Tavrin::PF_RGBA_32f, Tavrin::PF_RGB_32f},
                          Destination{Tavrin::PF_RGBA_16f, Tavrin::PF_RGB_16f}, Destination{Tavrin::PF_RGBA_8i, Tavrin::PF_RGB_8i}})
                    {
                        SCOPED_TRACE(std::string(Tavrin::pfToStr(from)) + " to " + Tavrin::pfToStr(to.colors));
                        ASSERT_NO_FATAL_FAILURE(expectSameColors(transform, from, to));
                    }
                }
            });
    }
};

} // namespace

TEST_P(Alpha, IsLeftOutWhereNothingReadsItOrItStaysTheSame)
{
    expectSameColorsForEveryTarget(GetParam().makeTransform());
}

TEST_P(Alpha, IsThereForALaterRendererThatMixesIt)
{
    auto const transform = GetParam().makeTransform();
    appendMixing(transform->getOps());
    GetParam().append(transform->getOps());
    expectSameColorsForEveryTarget(transform);
}

TEST_P(Alpha, ComesOutTheSameWhereAllPixelsHaveItAndAmongOthers)
{
    constexpr PixelFormat kFormat = Tavrin::PF_RGBA_32f;
    auto const transform = GetParam().makeTransform();
    auto const renderers = Rendering::makePipeline(transform, kFormat, kFormat).renderers;
    forEveryTarget(
        [&]
        {
            for (float const alpha : {1.0F, 0.3F, 0.0F, -0.0F, -0.5F, std::numeric_limits<float>::quiet_NaN()})
            {
                SCOPED_TRACE(alpha);
                std::vector<unsigned char> const mixed = apply(*renderers, kFormat, kFormat, pixelsOfAlpha(alpha, 0.7F));
                std::vector<unsigned char> const alike = apply(*renderers, kFormat, kFormat, pixelsOfAlpha(alpha, alpha));
                ASSERT_NO_FATAL_FAILURE(expectSamePixels(kFormat, locals(mixed), locals(alike)));
            }
        });
}

INSTANTIATE_TEST_SUITE_P(EveryOperator, Alpha, testing::ValuesIn(shaderSamples()),
                         [](auto const& info) { return info.param.name; });
