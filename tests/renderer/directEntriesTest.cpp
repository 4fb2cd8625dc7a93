// A lone 1D table between codes puts its entries straight into the destination: the same bytes as by way of values.
#include "renderer/pixelModel.h"
#include "renderer/rendererHarness.h"

#include "renderer/CPULut1DOp.h"
#include "renderer/CPUSelector.h"
#include "renderer/opRenderers.h"
#include "transform/lut1DOp.h"
#include "transform/matrixOp.h"
#include "utils/utils.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>

using namespace RendererHarness;
using Color::Lut1DOp;
using Rendering::VirtualRenderer;

namespace
{

// An odd count, so that the last pixels do not fill a vector, and more than a block.
constexpr unsigned int kCount = 128 + 16 * 3 + 7;

// A renderer that keeps its direct way to itself.
class WithoutDirectEntries : public VirtualRenderer
{
public:
    WithoutDirectEntries(Color::Op const& op, VirtualRenderer const& renderer) : VirtualRenderer(op), m_renderer(renderer) {}

    RendererKind getOpType() const override { return m_renderer.getOpType(); }
    Rendering::LineKernel prepareLine(Rendering::LineParameters& room) const override { return m_renderer.prepareLine(room); }
    bool takesCodes() const override { return m_renderer.takesCodes(); }

private:
    VirtualRenderer const& m_renderer;
};

// Three curves, one of them falling, with values below and above the depth.
Lut1DOp threeCurves(BitDepth in, BitDepth out)
{
    constexpr unsigned int kRows = 1024;
    Lut1DOp op(in, out, "", "", Color::Descriptions(), Lut1DOp::InterpolationAlgo::Linear, Tavrin::HALF_FLAGS_NONE, kRows);
    float const max = Tavrin::getBitDepthMaxValue(out);
    for (unsigned int i = 0; i < kRows; ++i)
    {
        float const x = static_cast<float>(i) / (kRows - 1);
        op.getArray().set(3 * i, max * (1.1F * x - 0.05F));
        op.getArray().set(3 * i + 1, max * (1.0F - x * x));
        op.getArray().set(3 * i + 2, max * std::sqrt(x));
    }
    return op;
}

std::vector<unsigned char> apply(Rendering::TransformProcessor const& processor, PixelFormat from, PixelFormat to,
                                 std::vector<unsigned char> const& source)
{
    std::vector<unsigned char> out(kCount * PixelModel::pixelBytes(to));
    Rendering::CPUEngine(from, to).apply(source.data(), out.data(), Rendering::ROI(0, 0, kCount, 1), 0, 0, processor);
    return out;
}

std::vector<PixelFormat> formatsOfDepth(BitDepth depth)
{
    std::vector<PixelFormat> formats = PixelModel::allFormats();
    std::erase_if(formats, [=](PixelFormat format) { return PixelModel::depthBits(format) != depth; });
    return formats;
}

class DirectEntries : public testing::TestWithParam<BitDepth>
{
};

} // namespace

TEST_P(DirectEntries, AreTheBytesThatTheWayThroughValuesGivesForEveryPairOfFormats)
{
    BitDepth const inDepth = GetParam();
    for (BitDepth const outDepth : {Tavrin::BIT_DEPTH_8i, Tavrin::BIT_DEPTH_10i, Tavrin::BIT_DEPTH_12i, Tavrin::BIT_DEPTH_16i,
                                    Tavrin::BIT_DEPTH_16f, Tavrin::BIT_DEPTH_32f})
    {
        Lut1DOp const op = threeCurves(inDepth, outDepth);
        forEveryTarget(
            [&]
            {
                Rendering::TransformProcessor direct;
                Rendering::Lut1DRenderer::addAlgorithm(op, direct);
                ASSERT_NE(nullptr, direct[0].getDirectEntries(inDepth, outDepth));
                Rendering::TransformProcessor throughValues;
                throughValues.append(std::make_unique<WithoutDirectEntries>(op, direct[0]));
                for (PixelFormat from : formatsOfDepth(inDepth))
                {
                    // Any bytes: codes beyond the depth, infinities and NaN among them.
                    std::vector<unsigned char> const source = PixelModel::randomBytes(kCount * PixelModel::pixelBytes(from), from);
                    for (PixelFormat to : formatsOfDepth(outDepth))
                        ASSERT_EQ(apply(throughValues, from, to, source), apply(direct, from, to, source))
                            << Tavrin::pfToStr(from) << " to " << Tavrin::pfToStr(to);
                }
            });
    }
}

INSTANTIATE_TEST_SUITE_P(EveryDepthOfCodes, DirectEntries,
                         testing::Values(Tavrin::BIT_DEPTH_8i, Tavrin::BIT_DEPTH_10i, Tavrin::BIT_DEPTH_12i, Tavrin::BIT_DEPTH_16i,
                                         Tavrin::BIT_DEPTH_16f));

TEST(DirectEntries, AreOnlyForTheDepthsOfTheTableAndNeitherForValuesNorForHueAdjust)
{
    auto const entriesOf = [](Lut1DOp const& op, BitDepth input, BitDepth output)
    {
        Rendering::TransformProcessor processor;
        Rendering::Lut1DRenderer::addAlgorithm(op, processor);
        return processor[0].getDirectEntries(input, output);
    };
    Lut1DOp op = threeCurves(Tavrin::BIT_DEPTH_8i, Tavrin::BIT_DEPTH_10i);
    EXPECT_NE(nullptr, entriesOf(op, Tavrin::BIT_DEPTH_8i, Tavrin::BIT_DEPTH_10i));
    EXPECT_EQ(nullptr, entriesOf(op, Tavrin::BIT_DEPTH_8i, Tavrin::BIT_DEPTH_16i));
    EXPECT_EQ(nullptr, entriesOf(op, Tavrin::BIT_DEPTH_10i, Tavrin::BIT_DEPTH_10i));
    op.setHueAdjust(Lut1DOp::HueAdjust::Dw3);
    EXPECT_EQ(nullptr, entriesOf(op, Tavrin::BIT_DEPTH_8i, Tavrin::BIT_DEPTH_10i));
    EXPECT_EQ(nullptr,
              entriesOf(threeCurves(Tavrin::BIT_DEPTH_32f, Tavrin::BIT_DEPTH_10i), Tavrin::BIT_DEPTH_32f, Tavrin::BIT_DEPTH_10i));
}

TEST(DirectEntries, OfAScaleBetweenBytesAreTheBytesThatItsArithmeticGives)
{
    Color::MatrixOp op(Tavrin::BIT_DEPTH_8i, Tavrin::BIT_DEPTH_8i, "", "", Color::Descriptions());
    for (unsigned int channel = 0; channel < 3; ++channel)
        op.setArrayValue(5 * channel, std::array{1.3F, 0.7F, -0.5F}[channel]);
    for (PixelFormat from : formatsOfDepth(Tavrin::BIT_DEPTH_8i))
    {
        std::vector<unsigned char> const source = PixelModel::randomBytes(kCount * PixelModel::pixelBytes(from), from);
        for (PixelFormat to : formatsOfDepth(Tavrin::BIT_DEPTH_8i))
        {
            std::vector<unsigned char> reference; // The scalar target comes first and has no tables.
            forEveryTarget(
                [&]
                {
                    std::vector<unsigned char> const out = renderAs<unsigned char, unsigned char>(op, from, to, source, kCount);
                    if (reference.empty())
                        reference = out;
                    ASSERT_EQ(reference, out) << Tavrin::pfToStr(from) << " to " << Tavrin::pfToStr(to);
                });
        }
    }
}

TEST(DirectEntries, StandAsideForABypass)
{
    Lut1DOp op = threeCurves(Tavrin::BIT_DEPTH_8i, Tavrin::BIT_DEPTH_8i);
    auto const bypass = std::make_shared<Color::BypassDynamicProperty>(true, true);
    op.setBypass(bypass);
    Rendering::TransformProcessor processor;
    Rendering::Lut1DRenderer::addAlgorithm(op, processor);
    std::vector<unsigned char> const source = PixelModel::randomBytes(kCount * 4, 5);
    EXPECT_EQ(source, apply(processor, Tavrin::PF_RGBA_8i, Tavrin::PF_RGBA_8i, source));
    bypass->setValue(false);
    EXPECT_NE(source, apply(processor, Tavrin::PF_RGBA_8i, Tavrin::PF_RGBA_8i, source));
}

TEST(DirectEntries, LargePicturesThatAreStreamedHaveTheSameBytesAsTheirRows)
{
    // From 4 MiB of output on; rows start at all sorts of addresses.
    constexpr unsigned int kWidth = 1027;
    constexpr unsigned int kHeight = 1040;
    for (auto [from, to] :
         {std::pair{Tavrin::PF_RGBA_8i, Tavrin::PF_ABGR_8i}, std::pair{Tavrin::PF_RGB_8i, Tavrin::PF_BGRA_8i},
          std::pair{Tavrin::PF_RGBA_16i, Tavrin::PF_RGBA_16i}, std::pair{Tavrin::PF_BGRA_16i, Tavrin::PF_BGRA_16i},
          std::pair{Tavrin::PF_ABGR_16i, Tavrin::PF_ABGR_16i}})
    {
        std::size_t const inStride = kWidth * PixelModel::pixelBytes(from);
        std::size_t const outBytes = kWidth * PixelModel::pixelBytes(to);
        std::vector<unsigned char> const source = PixelModel::randomBytes(kHeight * inStride, 9);
        Lut1DOp const op = threeCurves(Color::Utils::depthOf(from), Color::Utils::depthOf(to));
        Rendering::CPURenderer renderer = rendererOf(transformOf({&op}), from, to);
        for (unsigned int padding : {0U, 2U})
        {
            std::size_t const outStride = outBytes + padding;
            std::vector<unsigned char> whole(kHeight * outStride);
            renderer.apply(source.data(), whole.data(), Rendering::ROI(0, 0, kWidth, kHeight), 0, padding);
            std::vector<unsigned char> row(outBytes);
            for (unsigned int y = 0; y < kHeight; ++y)
            {
                renderer.apply(source.data() + y * inStride, row.data(), Rendering::ROI(0, 0, kWidth, 1), 0, 0);
                ASSERT_EQ(0, std::memcmp(row.data(), whole.data() + y * outStride, outBytes))
                    << Tavrin::pfToStr(from) << ", row " << y << ", padding " << padding;
            }
        }
    }
}
