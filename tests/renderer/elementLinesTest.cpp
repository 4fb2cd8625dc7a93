// Lines whose channels are treated alike and stay in their places are rendered element by element: the same bytes as by way of
// blocks.
#include "renderer/pixelModel.h"
#include "renderer/rendererHarness.h"

#include "renderer/CPUSelector.h"
#include "renderer/kernelsElements.h"
#include "renderer/opRenderers.h"
#include "transform/ditherOp.h"
#include "transform/matrixOp.h"
#include "utils/utils.h"

#include <gtest/gtest.h>

#include <memory>

using namespace RendererHarness;
using Rendering::ROI;
using Rendering::TransformProcessor;
using Rendering::VirtualRenderer;

namespace
{

// A renderer that does not tell what it does to elements.
class ByWayOfBlocks : public VirtualRenderer
{
public:
    ByWayOfBlocks(Color::Op const& op, VirtualRenderer const& renderer) : VirtualRenderer(op), m_renderer(renderer) {}

    RendererKind getOpType() const override { return m_renderer.getOpType(); }
    bool dependsOnPosition() const override { return m_renderer.dependsOnPosition(); }
    Rendering::LineKernel prepareLine(Rendering::LineParameters& room) const override
    {
        Rendering::LineKernel kernel = m_renderer.prepareLine(room);
        kernel.elementArithmetic = nullptr;
        return kernel;
    }

private:
    VirtualRenderer const& m_renderer;
};

// An operator with both ways to render it.
class BothWays
{
public:
    BothWays(Color::MatrixOp const& op, PixelFormat from, PixelFormat to) : m_from(from), m_to(to)
    {
        Rendering::MatrixRenderer::addAlgorithm(op, m_elements);
        m_blocks.append(std::make_unique<ByWayOfBlocks>(op, m_elements[0]));
    }
    BothWays(Color::DitherOp const& op, PixelFormat from, PixelFormat to) : m_from(from), m_to(to)
    {
        Rendering::DitherRenderer::addAlgorithm(op, m_elements);
        m_blocks.append(std::make_unique<ByWayOfBlocks>(op, m_elements[0]));
    }

    // Lines of the region behind so many bytes of a buffer, with as many between lines; whatever is not written keeps its bytes.
    std::vector<unsigned char> byElements(std::vector<unsigned char> const& source, ROI const& roi, std::size_t shift) const
    {
        return _apply(m_elements, source, roi, shift);
    }
    std::vector<unsigned char> byBlocks(std::vector<unsigned char> const& source, ROI const& roi, std::size_t shift) const
    {
        return _apply(m_blocks, source, roi, shift);
    }
    void inPlace(std::vector<unsigned char>& pixels, unsigned int count) const
    {
        Rendering::CPUEngine(m_from, m_to).apply(pixels.data(), pixels.data(), ROI(0, 0, count, 1), 0, 0, m_elements);
    }

private:
    std::vector<unsigned char> _apply(TransformProcessor const& processor, std::vector<unsigned char> const& source, ROI const& roi,
                                      std::size_t shift) const
    {
        std::size_t const stride = roi.imageWidth * PixelModel::pixelBytes(m_to) + shift;
        std::vector<unsigned char> out(roi.imageHeight * stride, 0xcd);
        Rendering::CPUEngine(m_from, m_to)
            .apply(source.data(), out.data() + shift, roi, 0, static_cast<unsigned int>(shift), processor);
        return out;
    }

    PixelFormat m_from;
    PixelFormat m_to;
    TransformProcessor m_elements;
    TransformProcessor m_blocks;
};

constexpr BitDepth kDepths[] = {Tavrin::BIT_DEPTH_8i,  Tavrin::BIT_DEPTH_10i, Tavrin::BIT_DEPTH_12i,
                                Tavrin::BIT_DEPTH_16i, Tavrin::BIT_DEPTH_16f, Tavrin::BIT_DEPTH_32f};
constexpr unsigned int kLayouts[] = {0x17, 0x1f, 0x27, 0x2f, 0x4f};

PixelFormat formatOf(unsigned int layout, BitDepth depth)
{
    return static_cast<PixelFormat>(layout | static_cast<unsigned int>(depth));
}

// All channels times the ratio of the depths' maxima, and this factor.
Color::MatrixOp depthChange(BitDepth in, BitDepth out, float factor = 1.0F)
{
    Color::MatrixOp op(in, out, "", "", Color::Descriptions());
    float const scale = factor * Tavrin::getBitDepthMaxValue(out) / Tavrin::getBitDepthMaxValue(in);
    for (unsigned int channel = 0; channel < 4; ++channel)
        op.setArrayValue(5 * channel, scale);
    return op;
}

template <class T>
std::vector<unsigned char> bytesOf(std::vector<T> const& values)
{
    std::vector<unsigned char> bytes(values.size() * sizeof(T));
    std::memcpy(bytes.data(), values.data(), bytes.size());
    return bytes;
}

// What decides how codes of 16 bits come out: the floats in the middle between them and beside it; and all that is not a code.
std::vector<float> floatsBetweenCodes()
{
    std::vector<float> floats = nastyFloats(65536, 5);
    for (unsigned int code = 0; code <= 65536; ++code)
    {
        float const middle = (static_cast<float>(code) - 0.5F) / 65535.0F;
        for (float const value : {std::nextafterf(middle, 0.0F), middle, std::nextafterf(middle, 2.0F)})
            floats.push_back(value);
    }
    for (std::uint32_t const bits : {0x7f800001U, 0xff800001U, 0x7fc12345U, 0xffffffffU, 0x4f000000U, 0xcf000000U, 0x7f7fffffU})
    {
        floats.emplace_back();
        std::memcpy(&floats.back(), &bits, sizeof bits);
    }
    return floats;
}

// Every code and half there is, more than once; of floats those that matter. A whole number of pixels of three channels and of
// four.
std::vector<unsigned char> allElements(BitDepth depth)
{
    std::vector<unsigned char> bytes;
    if (depth == Tavrin::BIT_DEPTH_32f)
    {
        bytes = bytesOf(floatsBetweenCodes());
    }
    else
    {
        std::vector<std::uint16_t> codes(3 * 65536);
        for (std::size_t i = 0; i < codes.size(); ++i)
            codes[i] = static_cast<std::uint16_t>(i);
        bytes = bytesOf(codes);
    }
    bytes.resize(bytes.size() / 48 * 48);
    return bytes;
}

unsigned int pixelsIn(std::vector<unsigned char> const& bytes, PixelFormat format)
{
    return static_cast<unsigned int>(bytes.size() / PixelModel::pixelBytes(format));
}

template <class Body>
void forEveryPairOfDepths(Body const& body)
{
    for (BitDepth const in : kDepths)
    {
        for (BitDepth const out : kDepths)
        {
            SCOPED_TRACE(std::string(Tavrin::getBitDepthName(in)) + " to " + Tavrin::getBitDepthName(out));
            body(in, out);
        }
    }
}

} // namespace

TEST(ElementLines, ServeAllPairsOfDepthsOfOneLayoutButFloatsToFloats)
{
    forEveryTarget(
        []
        {
            Rendering::SimdTarget const target = Rendering::getSimdTarget();
            bool const hasLines = target != Rendering::SimdTarget::Scalar && target != Rendering::SimdTarget::Neon;
            forEveryPairOfDepths(
                [=](BitDepth in, BitDepth out)
                {
                    bool const areFloats = in == Tavrin::BIT_DEPTH_32f && out == Tavrin::BIT_DEPTH_32f;
                    for (unsigned int const layout : kLayouts)
                        EXPECT_EQ(hasLines && !areFloats,
                                  Rendering::getElementLineFunction(formatOf(layout, in), formatOf(layout, out)) != nullptr);
                    EXPECT_EQ(nullptr, Rendering::getElementLineFunction(formatOf(0x1f, in), formatOf(0x2f, out)));
                    EXPECT_EQ(nullptr, Rendering::getElementLineFunction(formatOf(0x17, in), formatOf(0x1f, out)));
                });
            EXPECT_EQ(nullptr, Rendering::getElementLineFunction(Tavrin::PF_RGB_10iP, Tavrin::PF_RGB_8i));
            EXPECT_EQ(nullptr, Rendering::getElementLineFunction(Tavrin::PF_RGBA_8i, Tavrin::PF_RGBA_10iP));
        });
}

TEST(ElementLines, ChangeTheDepthOfEveryElementAsBlocksDo)
{
    forEveryPairOfDepths(
        [](BitDepth in, BitDepth out)
        {
            std::vector<unsigned char> const source = allElements(in);
            forEveryTarget(
                [&]
                {
                    for (unsigned int const layout : kLayouts)
                    {
                        PixelFormat const from = formatOf(layout, in);
                        for (float const factor : {1.0F, 0.37F})
                        {
                            BothWays const ways(depthChange(in, out, factor), from, formatOf(layout, out));
                            ROI const line(0, 0, pixelsIn(source, from), 1);
                            ASSERT_EQ(ways.byBlocks(source, line, 0), ways.byElements(source, line, 0)) << layout;
                        }
                    }
                });
        });
}

TEST(ElementLines, OfAnyWidthAndPlaceAreWrittenAndNothingElse)
{
    constexpr unsigned int kHeight = 3;
    forEveryPairOfDepths(
        [](BitDepth in, BitDepth out)
        {
            forEveryTarget(
                [&]
                {
                    for (unsigned int const layout : {0x17U, 0x1fU})
                    {
                        PixelFormat const from = formatOf(layout, in);
                        BothWays const ways(depthChange(in, out), from, formatOf(layout, out));
                        for (unsigned int width = 1; width <= 200; ++width)
                        {
                            unsigned int const x = width % 5;
                            ROI const roi(x, 1, width, kHeight - 1, x + width + 1, kHeight);
                            std::vector<unsigned char> const source =
                                PixelModel::sensiblePixels(from, roi.imageWidth * kHeight, width);
                            for (std::size_t const shift : {width % 7U, 0U})
                                ASSERT_EQ(ways.byBlocks(source, roi, shift), ways.byElements(source, roi, shift)) << width;
                        }
                    }
                });
        });
}

TEST(ElementLines, AreConvertedInPlaceWhereDepthsAreTheSame)
{
    for (BitDepth const depth : kDepths)
    {
        forEveryTarget(
            [depth]
            {
                for (unsigned int const layout : kLayouts)
                {
                    PixelFormat const format = formatOf(layout, depth);
                    BothWays const ways(depthChange(depth, depth, 0.7F), format, format);
                    for (unsigned int const count : {1U, 100U, 4099U})
                    {
                        std::vector<unsigned char> pixels = PixelModel::sensiblePixels(format, count, count);
                        std::vector<unsigned char> const expected = ways.byBlocks(pixels, ROI(0, 0, count, 1), 0);
                        ways.inPlace(pixels, count);
                        ASSERT_EQ(expected, pixels) << Tavrin::pfToStr(format) << ' ' << count;
                    }
                }
            });
    }
}

TEST(ElementLines, OfLargePicturesThatAreStreamedHaveTheBytesOfBlocks)
{
    // From 4 MiB of output on; lines start at all sorts of addresses.
    constexpr unsigned int kWidth = 1027;
    struct
    {
        PixelFormat from;
        PixelFormat to;
        unsigned int height;
    } const cases[] = {{Tavrin::PF_RGBA_16i, Tavrin::PF_RGBA_8i, 1040},
                       {Tavrin::PF_RGB_32f, Tavrin::PF_RGB_16i, 700},
                       {Tavrin::PF_BGR_8i, Tavrin::PF_BGR_16f, 700},
                       {Tavrin::PF_ABGR_10i, Tavrin::PF_ABGR_32f, 320}};
    for (auto const& c : cases)
    {
        std::vector<unsigned char> const source = PixelModel::sensiblePixels(c.from, kWidth * c.height, 9);
        ROI const whole(0, 0, kWidth, c.height);
        forEveryTarget(
            [&]
            {
                BothWays const ways(depthChange(Color::Utils::depthOf(c.from), Color::Utils::depthOf(c.to)), c.from, c.to);
                for (std::size_t const shift : {0U, 4U, 3U})
                    ASSERT_TRUE(ways.byBlocks(source, whole, shift) == ways.byElements(source, whole, shift))
                        << Tavrin::pfToStr(c.from) << " shifted by " << shift;
            });
    }
}

TEST(ElementLines, AddTheNoiseOfEachPlace)
{
    // More than four periods of the noise in every direction.
    constexpr unsigned int kWidth = 77;
    constexpr unsigned int kHeight = 70;
    forEveryPairOfDepths(
        [](BitDepth in, BitDepth out)
        {
            Color::DitherOp const op(in, out, Tavrin::BIT_DEPTH_8i);
            forEveryTarget(
                [&]
                {
                    for (unsigned int const layout : kLayouts)
                    {
                        PixelFormat const from = formatOf(layout, in);
                        BothWays const ways(op, from, formatOf(layout, out));
                        std::vector<unsigned char> const source = PixelModel::sensiblePixels(from, kWidth * kHeight, 6);
                        for (unsigned int const x : {0U, 1U, 13U, 18U})
                        {
                            ROI const roi(x, 3, kWidth - x, kHeight - 3, kWidth, kHeight);
                            ASSERT_EQ(ways.byBlocks(source, roi, 2), ways.byElements(source, roi, 2)) << layout << ' ' << x;
                        }
                    }
                });
        });
}

TEST(ElementLines, StandAsideWhereOneChannelHasAnotherScale)
{
    for (unsigned int channel = 0; channel < 4; ++channel)
    {
        Color::MatrixOp op = depthChange(Tavrin::BIT_DEPTH_16i, Tavrin::BIT_DEPTH_32f);
        op.setArrayValue(5 * channel, 2.0F);
        std::vector<std::uint16_t> const in = {1, 1, 1, 1};
        std::vector<float> expected(4, 1.0F / 65535.0F);
        expected[channel] = 2.0F;
        forEveryTarget(
            [&] { EXPECT_EQ(expected, (renderAs<std::uint16_t, float>(op, Tavrin::PF_RGBA_16i, Tavrin::PF_RGBA_32f, in, 1))); });
    }
}
