// Pictures of 8-bit codes are looked up in tables of what the first renderers make of the 256 codes: the same bytes as by way of
// the renderers themselves. A region of few pixels goes that way, so a picture is held against its rows.
#include "renderer/beforeAnAbyss.h"
#include "renderer/lut1DTables.h"
#include "renderer/pixelModel.h"
#include "renderer/rendererHarness.h"
#include "renderer/shaderSamples.h"
#include "renderer/usualOps.h"

#include "renderer/CPULut1DOp.h"
#include "renderer/CPUMatrixOp.h"
#include "renderer/CPUSelector.h"
#include "renderer/codeTables.h"
#include "renderer/kernelsArithmetic.h"
#include "renderer/runningRenderers.h"
#include "transform/exposureContrastOp.h"
#include "transform/gammaOp.h"
#include "transform/matrixOp.h"
#include "transform/rangeOp.h"
#include "utils/utils.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

using namespace RendererHarness;
using Rendering::ROI;
using Rendering::TransformProcessor;
using testing::Each;

namespace
{

constexpr unsigned int kEnough = 4096; // pixels, for tables
constexpr unsigned char kUntouched = 0xcd;

std::vector<PixelFormat> const kCodeFormats = {Tavrin::PF_RGBA_8i, Tavrin::PF_BGRA_8i, Tavrin::PF_ABGR_8i, Tavrin::PF_RGB_8i,
                                               Tavrin::PF_BGR_8i};

// A picture with some columns on each side of what is rendered, a row above it, and padding.
struct Picture
{
    static constexpr unsigned int kLeft = 3;
    static constexpr unsigned int kRight = 2;
    static constexpr unsigned int kPadding = 7;

    Picture(PixelFormat pixelFormat, unsigned int activeWidth)
        : format(pixelFormat),
          width(activeWidth),
          height(kEnough / activeWidth + 1),
          bytes(std::size_t{height + 1} * ((kLeft + width + kRight) * PixelModel::pixelBytes(format) + kPadding), kUntouched)
    {
    }

    // Among so many pixels each code comes some sixteen times in each channel.
    void fill() { bytes = PixelModel::randomBytes(bytes.size(), format); }

    // So many of its rows.
    ROI rows(unsigned int first, unsigned int count) const
    {
        return {kLeft, first + 1, width, count, kLeft + width + kRight, height + 1};
    }

    PixelFormat format;
    unsigned int width;
    unsigned int height;
    std::vector<unsigned char> bytes;
};

void apply(TransformProcessor const& renderers, Picture const& source, Picture& destination, unsigned int firstRow,
           unsigned int rows)
{
    Rendering::CPUEngine(source.format, destination.format)
        .apply(source.bytes.data(), destination.bytes.data(), source.rows(firstRow, rows), Picture::kPadding, Picture::kPadding,
               renderers);
}

Picture applyToRows(TransformProcessor const& renderers, Picture const& source, PixelFormat to)
{
    Picture destination(to, source.width);
    for (unsigned int y = 0; y < source.height; ++y)
        apply(renderers, source, destination, y, 1);
    return destination;
}

Picture applyToAll(TransformProcessor const& renderers, Picture const& source, PixelFormat to)
{
    Picture destination(to, source.width);
    apply(renderers, source, destination, 0, source.height);
    return destination;
}

void expectTheBytesOfItsRows(std::shared_ptr<Color::Transform> const& transform, PixelFormat from, PixelFormat to,
                             unsigned int width)
{
    Picture source(from, width);
    source.fill();
    auto const renderers = Rendering::makePipeline(transform, from, to).renderers;
    ASSERT_EQ(applyToRows(*renderers, source, to).bytes, applyToAll(*renderers, source, to).bytes)
        << Tavrin::pfToStr(from) << " to " << Tavrin::pfToStr(to) << ", width " << width;
}

// Scales every line by another factor, as if somebody turned a knob all the while.
class KnobRenderer : public Rendering::VirtualRenderer
{
public:
    explicit KnobRenderer(float scale) : VirtualRenderer(Color::MatrixOp()), m_scale(scale) {}

    RendererKind getOpType() const override { return RendererKind::ScaleRenderer; }

    Rendering::LineKernel prepareLine(Rendering::LineParameters& room) const override
    {
        float const scale = m_scale * static_cast<float>(++m_lines);
        Rendering::LineKernel kernel = makeLineKernel(getArithmeticKernel(Rendering::ArithmeticKernel::Scale),
                                                      room.hold(Rendering::ScaleParameters{{scale, scale, scale, scale}}));
        kernel.isCheap = false;
        return kernel;
    }

private:
    float m_scale;
    mutable unsigned int m_lines = 0;
};

class CodeTables : public testing::TestWithParam<ShaderSample>
{
};

// What is tabulated of a transform on the target that has tables; nothing where there is none.
std::optional<Rendering::CodeTables> tablesOf(std::vector<Color::Op const*> const& ops, PixelFormat from, PixelFormat to)
{
    std::optional<Rendering::CodeTables> tables;
    if (Rendering::getCodeFunctions() == nullptr)
        return tables;
    auto const renderers = Rendering::makePipeline(transformOf(ops), from, to).renderers;
    Rendering::RunningRenderers running(*renderers, from, to);
    Rendering::Block block;
    tables.emplace(from, to);
    tables->reckon(running, running.prepareLines(), block);
    return tables;
}

} // namespace

TEST_P(CodeTables, GiveTheBytesOfTheRenderers)
{
    auto const transform = GetParam().makeTransform();
    forEveryTarget(
        [&]
        {
            for (PixelFormat const from : {Tavrin::PF_RGBA_8i, Tavrin::PF_BGR_8i})
            {
                for (PixelFormat const to :
                     {Tavrin::PF_ABGR_8i, Tavrin::PF_RGB_16f, Tavrin::PF_RGBA_12i, Tavrin::PF_RGBA_10iP, Tavrin::PF_RGBA_32f})
                    ASSERT_NO_FATAL_FAILURE(expectTheBytesOfItsRows(transform, from, to, 200));
            }
        });
}

TEST_P(CodeTables, GiveTheBytesOfTheRenderersInFrontOfOneThatMixes)
{
    auto const transform = GetParam().makeTransform();
    transform->getOps().append(mixing().clone());
    GetParam().append(transform->getOps());
    forEveryTarget(
        [&]
        {
            for (PixelFormat const from : {Tavrin::PF_ABGR_8i, Tavrin::PF_RGB_8i})
            {
                for (PixelFormat const to : {Tavrin::PF_BGRA_8i, Tavrin::PF_RGB_32f})
                    ASSERT_NO_FATAL_FAILURE(expectTheBytesOfItsRows(transform, from, to, 200));
            }
        });
}

INSTANTIATE_TEST_SUITE_P(EveryOperator, CodeTables, testing::ValuesIn(shaderSamples()),
                         [](auto const& info) { return info.param.name; });

TEST(CodeTables, ServeEveryPairOfFormats)
{
    Color::GammaOp const gammas = fourGammas();
    Color::Lut1DOp const table = tableOf(Tavrin::BIT_DEPTH_8i, Tavrin::BIT_DEPTH_32f, 256, curve);
    Color::MatrixOp const unit;
    forEveryTarget(
        [&]
        {
            for (Color::Op const* const op : std::initializer_list<Color::Op const*>{&gammas, &table, &unit})
            {
                for (PixelFormat const from : kCodeFormats)
                {
                    for (PixelFormat const to : PixelModel::allFormats())
                        ASSERT_NO_FATAL_FAILURE(expectTheBytesOfItsRows(transformOf({op}), from, to, 131));
                }
            }
        });
}

TEST(CodeTables, ServeEveryWidthAndWriteNothingElse)
{
    Color::RangeOp const range(Tavrin::BIT_DEPTH_32f, Tavrin::BIT_DEPTH_32f, 0.125, 0.875, 0.25, 0.75);
    Color::GammaOp const gammas = fourGammas();
    Color::MatrixOp const matrix = mixing();
    forEveryTarget(
        [&]
        {
            for (unsigned int width = 1; width <= 200; ++width)
            {
                for (PixelFormat const from : {Tavrin::PF_RGBA_8i, Tavrin::PF_RGB_8i})
                {
                    for (PixelFormat const to : {Tavrin::PF_BGRA_8i, Tavrin::PF_RGB_8i, Tavrin::PF_ABGR_16f, Tavrin::PF_BGR_16i})
                        ASSERT_NO_FATAL_FAILURE(expectTheBytesOfItsRows(transformOf({&range}), from, to, width));
                    ASSERT_NO_FATAL_FAILURE(
                        expectTheBytesOfItsRows(transformOf({&gammas, &matrix}), from, Tavrin::PF_RGBA_32f, width));
                }
            }
        });
}

TEST(CodeTables, ServeInPlace)
{
    Color::GammaOp const gammas = fourGammas();
    Color::MatrixOp const matrix = mixing();
    for (auto const& ops : {std::vector<Color::Op const*>{&gammas}, {&gammas, &matrix}})
    {
        forEveryTarget(
            [&]
            {
                for (PixelFormat const format : kCodeFormats)
                {
                    Picture picture(format, 300);
                    picture.fill();
                    auto const renderers = Rendering::makePipeline(transformOf(ops), format, format).renderers;
                    Picture expected = picture;
                    for (unsigned int y = 0; y < picture.height; ++y)
                        apply(*renderers, picture, expected, y, 1);
                    apply(*renderers, picture, picture, 0, picture.height);
                    ASSERT_EQ(expected.bytes, picture.bytes) << Tavrin::pfToStr(format);
                }
            });
    }
}

TEST(CodeTables, TouchNothingBeyondThePixels)
{
    Color::GammaOp const gammas = fourGammas();
    Color::MatrixOp const matrix = mixing();
    forEveryTarget(
        [&]
        {
            for (unsigned int width : {1U, 15U, 21U, 22U, 63U, 65U, 129U})
            {
                unsigned int const height = kEnough / width + 1;
                for (PixelFormat const from : kCodeFormats)
                {
                    BeforeAnAbyss const source(std::size_t{width} * height * PixelModel::pixelBytes(from));
                    for (PixelFormat const to : {Tavrin::PF_RGBA_8i, Tavrin::PF_BGR_8i, Tavrin::PF_RGBA_16i, Tavrin::PF_RGB_16f})
                    {
                        BeforeAnAbyss const destination(std::size_t{width} * height * PixelModel::pixelBytes(to));
                        for (auto const& ops : {std::vector<Color::Op const*>{&gammas}, {&gammas, &matrix}})
                            rendererOf(transformOf(ops), from, to)
                                .apply(source.begin(), destination.begin(), ROI(0, 0, width, height), 0, 0);
                    }
                }
            }
        });
}

TEST(CodeTables, OfLargePicturesThatAreStreamedGiveTheSameBytes)
{
    // From 4 MiB of output on; rows start at all sorts of addresses.
    constexpr unsigned int kWidth = 1027;
    constexpr unsigned int kHeight = 1040;
    Color::GammaOp const gammas = fourGammas();
    for (auto [from, to] : {std::pair{Tavrin::PF_RGBA_8i, Tavrin::PF_ABGR_8i}, std::pair{Tavrin::PF_RGB_8i, Tavrin::PF_BGRA_16f},
                            std::pair{Tavrin::PF_BGR_8i, Tavrin::PF_RGB_16i}, std::pair{Tavrin::PF_BGRA_8i, Tavrin::PF_RGB_10i}})
    {
        std::size_t const inStride = kWidth * PixelModel::pixelBytes(from);
        std::size_t const outStride = kWidth * PixelModel::pixelBytes(to);
        std::vector<unsigned char> const source = PixelModel::randomBytes(kHeight * inStride, 9);
        for (std::size_t offset : {0, 2, 4, 24})
        {
            Rendering::CPURenderer renderer = rendererOf(transformOf({&gammas}), from, to);
            std::vector<unsigned char> whole(offset + kHeight * outStride + 1, kUntouched);
            renderer.apply(source.data(), whole.data() + offset, ROI(0, 0, kWidth, kHeight), 0, 0);
            std::vector<unsigned char> row(outStride);
            for (unsigned int y = 0; y < kHeight; ++y)
            {
                renderer.apply(source.data() + y * inStride, row.data(), ROI(0, 0, kWidth, 1), 0, 0);
                ASSERT_EQ(0, std::memcmp(row.data(), whole.data() + offset + y * outStride, outStride)) << y;
            }
            EXPECT_EQ(kUntouched, whole.back());
        }
    }
}

TEST(CodeTables, FollowDynamicValuesBetweenCalls)
{
    constexpr PixelFormat kFormat = Tavrin::PF_RGBA_8i;
    Color::ExposureContrastOp op(Tavrin::BIT_DEPTH_32f, Tavrin::BIT_DEPTH_32f, Color::ExposureContrastOp::Style::Video);
    op.getExposure()->setDynamic(true);
    auto const bypass = std::make_shared<Color::BypassDynamicProperty>(false, true);
    op.setBypass(bypass);
    auto const renderers = Rendering::makePipeline(transformOf({&op}), kFormat, kFormat).renderers;
    Picture source(kFormat, 200);
    source.fill();
    std::vector<Picture> seen;
    for (double const exposure : {0.0, 1.0, -0.5})
    {
        op.getExposure()->setValue(exposure);
        seen.push_back(applyToAll(*renderers, source, kFormat));
        EXPECT_EQ(applyToRows(*renderers, source, kFormat).bytes, seen.back().bytes) << exposure;
    }
    EXPECT_NE(seen[0].bytes, seen[1].bytes);
    EXPECT_NE(seen[1].bytes, seen[2].bytes);
    bypass->setValue(true);
    Picture unchanged(kFormat, 200);
    Rendering::copyBuffer(source.bytes.data(), kFormat, Picture::kPadding, source.rows(0, source.height), unchanged.bytes.data(),
                          kFormat, Picture::kPadding, source.rows(0, source.height));
    EXPECT_EQ(unchanged.bytes, applyToAll(*renderers, source, kFormat).bytes);
}

TEST(CodeTables, FollowDynamicValuesFromLineToLine)
{
    // Code 1 becomes the number of the line: 32 of them, so that alone and with a renderer behind they stay codes.
    constexpr unsigned int kWidth = 200;
    constexpr unsigned int kHeight = 32;
    static_assert(kWidth * kHeight > kEnough);
    std::vector<unsigned char> const source(kWidth * kHeight * 4, 1);
    forEveryTarget(
        [&]
        {
            for (bool const isAlone : {true, false})
            {
                Rendering::TransformProcessor renderers;
                renderers.append(std::make_unique<KnobRenderer>(1.0F));
                if (!isAlone)
                    renderers.append(
                        std::make_unique<Rendering::StaticRenderer<RendererKind::MatrixRenderer, Rendering::MatrixParameters>>(
                            Color::MatrixOp(), getArithmeticKernel(Rendering::ArithmeticKernel::Matrix),
                            Rendering::MatrixParameters{{{1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 1, 0}, {0, 0, 0, 1}}}));
                std::vector<unsigned char> out(source.size());
                Rendering::CPUEngine(Tavrin::PF_RGBA_8i, Tavrin::PF_RGBA_8i)
                    .apply(source.data(), out.data(), ROI(0, 0, kWidth, kHeight), 0, 0, renderers);
                for (unsigned int y = 0; y < kHeight; ++y)
                {
                    std::vector<unsigned char> const line(out.begin() + y * kWidth * 4, out.begin() + (y + 1) * kWidth * 4);
                    EXPECT_THAT(line, Each(y + 1)) << (isAlone ? "alone" : "before a matrix");
                }
            }
        });
}

TEST(CodeTables, AreReckonedAgainAfterEntriesOfATableStoodInThem)
{
    constexpr PixelFormat kFormat = Tavrin::PF_RGBA_8i;
    forEveryTarget(
        [&]
        {
            if (Rendering::getCodeFunctions() == nullptr)
                return;
            TransformProcessor renderers;
            renderers.append(std::make_unique<KnobRenderer>(1.0F));
            Rendering::RunningRenderers running(renderers, kFormat, kFormat);
            ASSERT_TRUE(running.prepareLines());
            Rendering::Block block;
            Rendering::CodeTables tables(kFormat, kFormat);
            auto const reckon = [&](bool areOther) { tables.reckon(running, areOther, block); };
            auto const rendered = [&]
            {
                std::vector<unsigned char> const source = {1, 2, 3, 4};
                std::vector<unsigned char> out(4);
                tables.renderLine(source.data(), out.data(), 1, false);
                return out;
            };
            std::vector<unsigned char> const nines(256, 9);
            Rendering::Lut1DParameters const entries{{nines.data(), nines.data(), nines.data()}, 0.0F, 255.0F, 1.0F};
            reckon(true);
            EXPECT_THAT(rendered(), testing::ElementsAre(1, 2, 3, 4));
            tables.setEntries(entries);
            EXPECT_THAT(rendered(), testing::ElementsAre(9, 9, 9, 4));
            reckon(false);
            EXPECT_THAT(rendered(), testing::ElementsAre(1, 2, 3, 4));
        });
}

TEST(CodeTables, StandForTheRenderersThatSeeEachChannelForItself)
{
    Color::GammaOp const gammas = fourGammas();
    Color::RangeOp const range(Tavrin::BIT_DEPTH_32f, Tavrin::BIT_DEPTH_32f, 0.125, 0.875, 0.25, 0.75);
    Color::Lut1DOp const table = tableOf(Tavrin::BIT_DEPTH_8i, Tavrin::BIT_DEPTH_32f, 256, curve);
    Color::Lut1DOp hueAdjusted = table;
    hueAdjusted.setHueAdjust(Color::Lut1DOp::HueAdjust::Dw3);
    Color::MatrixOp const matrix = mixing();
    auto const renderers = [](std::vector<Color::Op const*> const& ops)
    { return tablesOf(ops, Tavrin::PF_RGBA_8i, Tavrin::PF_RGBA_8i)->renderers(); };
    forEveryTarget(
        [&]
        {
            if (Rendering::getCodeFunctions() == nullptr)
                return;
            EXPECT_EQ(2U, renderers({&gammas, &range, &matrix, &gammas}));
            EXPECT_EQ(3U, renderers({&table, &gammas, &range}));
            EXPECT_EQ(0U, renderers({&matrix, &gammas}));
            EXPECT_EQ(0U, renderers({&range, &matrix})) << "not worth while";
            EXPECT_EQ(0U, renderers({&hueAdjusted, &gammas}));
        });
}

TEST(CodeTables, GivePixelsOf8And16BitsAChannel)
{
    Color::GammaOp const gammas = fourGammas();
    Color::MatrixOp const matrix = mixing();
    forEveryTarget(
        [&]
        {
            if (Rendering::getCodeFunctions() == nullptr)
                return;
            for (PixelFormat const to : PixelModel::allFormats())
            {
                bool const isSo = !PixelModel::isPacked(to) && PixelModel::elementBytes(to) <= 2;
                EXPECT_EQ(isSo, tablesOf({&gammas}, Tavrin::PF_RGB_8i, to)->givePixels()) << Tavrin::pfToStr(to);
                EXPECT_FALSE(tablesOf({&gammas, &matrix}, Tavrin::PF_RGB_8i, to)->givePixels()) << Tavrin::pfToStr(to);
            }
        });
}
