// The 1D table renderers and the inverse: which one is chosen, and what it computes, against plain transcriptions of the rules.
#include "renderer/lut1DTables.h"
#include "renderer/pixelModel.h"
#include "renderer/rendererHarness.h"

#include "renderer/invLutUtil.h"
#include "transform/invLut1DOp.h"
#include "transform/lut1DOp.h"
#include "transform/matrixOp.h"
#include "utils/errorMessage.h"
#include "utils/logger.h"
#include "utils/utils.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

using namespace RendererHarness;
using Color::InvLut1DOp;
using Color::Lut1DOp;
using Tavrin::BIT_DEPTH_10i;
using Tavrin::BIT_DEPTH_16f;
using Tavrin::BIT_DEPTH_32f;
using Tavrin::BIT_DEPTH_8i;
using testing::ElementsAre;

namespace
{

Lut1DOp halfTable(BitDepth out)
{
    Lut1DOp op = table(BIT_DEPTH_32f, out, 65536, Tavrin::HALF_FLAGS_INPUT_HALF_DOMAIN);
    for (unsigned int i = 0; i < 65536; ++i)
    {
        for (unsigned int c = 0; c < 3; ++c)
            op.getArray().set(3 * i + c, static_cast<float>(i) * 0.25F + static_cast<float>(c));
    }
    return op;
}

// The table at 32f input as the rule has it, in single precision.
float interpolated(Lut1DOp const& op, unsigned int column, float in)
{
    float const last = static_cast<float>(op.getArray().getDimension() - 1);
    float const scale = 1.0F / Color::Op::getValueStepSize(op.getInputBitDepth(), op.getArray().getDimension());
    float x = in * scale;
    x = x > 0.0F ? x : 0.0F; // NaN too
    x = x < last ? x : last;
    float const lower = std::trunc(x);
    float const upper = std::min(lower + 1.0F, last);
    float const delta = upper - x;
    auto const entry = [&](float row) { return op.getArray().get(3 * static_cast<unsigned int>(row) + column); };
    return (entry(lower) - entry(upper)) * delta + entry(upper);
}

std::vector<std::string> g_log;

} // namespace

TEST(Lut1DRenderer, TheKindFollowsFromHalfDomainAndHueAdjust)
{
    Lut1DOp op = table(BIT_DEPTH_32f, BIT_DEPTH_32f, 16);
    EXPECT_THAT(kindsOf(op), ElementsAre(RendererKind::Lut1DRenderer));
    op.setHueAdjust(Lut1DOp::HueAdjust::Dw3);
    EXPECT_THAT(kindsOf(op), ElementsAre(RendererKind::Lut1DRendererHueAdjust));
    Lut1DOp half = halfTable(BIT_DEPTH_32f);
    EXPECT_THAT(kindsOf(half), ElementsAre(RendererKind::Lut1DRendererHalfCode));
    half.setHueAdjust(Lut1DOp::HueAdjust::Dw3);
    EXPECT_THAT(kindsOf(half), ElementsAre(RendererKind::Lut1DRendererHalfCodeHueAdjust));
}

TEST(Lut1DRenderer, InterpolatesInTheOrderThatDecidesTheLastBitOnEveryInstructionSet)
{
    std::vector<float> const in = nastyFloats(4 * 1003, 1);
    // The larger one is beyond what is stored in pairs.
    for (unsigned int rows : {2U, 3U, 17U, 1024U, 4096U, 40000U})
    {
        Lut1DOp const op = tableOf(BIT_DEPTH_32f, BIT_DEPTH_32f, rows, curve);
        forEveryTarget(
            [&]
            {
                std::vector<float> const out = render(op, in);
                for (std::size_t i = 0; i < in.size(); ++i)
                    expectSameFloat(i % 4 == 3 ? in[i] : interpolated(op, i % 4, in[i]), out[i], i);
            });
    }
}

TEST(Lut1DRenderer, FollowsTheCurveBetweenRows)
{
    // Linear interpolation of x^p errs by at most p (p - 1) h^2 / 8 times the largest power of the derivative; p is up to 2.3 here.
    constexpr unsigned int kRows = 4096;
    double const bound = 2.3 * 1.3 / (8.0 * (kRows - 1.0) * (kRows - 1.0)) + std::ldexp(4.0, -24);
    Lut1DOp const op = tableOf(BIT_DEPTH_32f, BIT_DEPTH_32f, kRows, curve);
    std::vector<float> in;
    for (int i = 100; i <= 4000; ++i)
        in.insert(in.end(), 4, static_cast<float>(i) / 4000.0F);
    std::vector<float> const out = render(op, in);
    for (std::size_t i = 0; i < in.size(); ++i)
    {
        double const expected = i % 4 == 3 ? in[i] : curve(in[i], i % 4);
        ASSERT_NEAR(expected, out[i], bound) << in[i];
    }
}

TEST(Lut1DRenderer, BeyondTheDomainTheEndRowsAnswerAndForNaNTheFirst)
{
    Lut1DOp const op = tableOf(BIT_DEPTH_32f, BIT_DEPTH_32f, 5, [](double x, unsigned int) { return 0.25 + 0.5 * x; });
    std::vector<float> const in = {2.0F, -1.0F, std::nanf(""), 0.5F, INFINITY, -INFINITY, 1.0F, 2.0F};
    EXPECT_THAT(render(op, in), ElementsAre(0.75F, 0.25F, 0.25F, 0.5F, 0.75F, 0.25F, 0.75F, 2.0F));
}

TEST(Lut1DRenderer, IntegerCodesIndexTheOperatorsRowsWhereThereIsOneForEach)
{
    Lut1DOp op = table(BIT_DEPTH_10i, BIT_DEPTH_10i, 1024);
    for (unsigned int i = 0; i < 1024; ++i)
    {
        for (unsigned int c = 0; c < 3; ++c)
            op.getArray().set(3 * i + c, static_cast<float>((i * 7 + c * 31) % 1024) + 0.4F); // 0.4 is cut off
    }
    std::vector<std::uint16_t> in;
    for (unsigned int i = 0; i < 1024; ++i)
        in.insert(in.end(), 4, static_cast<std::uint16_t>(i));
    forEveryTarget(
        [&]
        {
            std::vector<std::uint16_t> const out =
                renderAs<std::uint16_t, std::uint16_t>(op, Tavrin::PF_RGBA_10i, Tavrin::PF_RGBA_10i, in, 1024);
            for (unsigned int i = 0; i < 4096; ++i)
                ASSERT_EQ(i % 4 == 3 ? i / 4 : (i / 4 * 7 + i % 4 * 31) % 1024, out[i]) << i;
        });
}

TEST(Lut1DRenderer, CodesBeyondTheDepthTakeTheLastRow)
{
    Lut1DOp const op = tableOf(BIT_DEPTH_10i, BIT_DEPTH_10i, 1024, [](double x, unsigned int) { return x / 2; });
    std::vector<std::uint16_t> const in = {1024, 5000, 65535, 1023};
    forEveryTarget(
        [&]
        {
            EXPECT_THAT((renderAs<std::uint16_t, std::uint16_t>(op, Tavrin::PF_RGBA_10i, Tavrin::PF_RGBA_10i, in, 1)),
                        ElementsAre(512, 512, 512, 1023)); // 511.5 and half a code
        });
}

TEST(Lut1DRenderer, OtherTablesAreResampledForEveryCodeOfTheInput)
{
    // 512 rows for 10 bits, 33 rows for 8 bits: the same as rendering each code as a float.
    for (auto [rows, format] : {std::pair{512U, Tavrin::PF_RGBA_10i}, std::pair{33U, Tavrin::PF_RGBA_8i}})
    {
        Lut1DOp const op = tableOf(Color::Utils::depthOf(format), BIT_DEPTH_32f, rows, curve);
        unsigned int const codes = static_cast<unsigned int>(PixelModel::maximum(format)) + 1;
        std::size_t const bytes = PixelModel::elementBytes(format);
        std::vector<unsigned char> in(codes * 4 * bytes);
        for (unsigned int i = 0; i < codes * 4; ++i)
        {
            std::uint16_t const code = static_cast<std::uint16_t>(i / 4);
            std::memcpy(in.data() + i * bytes, &code, bytes);
        }
        Lut1DOp floatOp = op;
        floatOp.setInputBitDepth(BIT_DEPTH_32f);
        std::vector<float> const out = renderAs<unsigned char, float>(op, format, Tavrin::PF_RGBA_32f, in, codes);
        for (unsigned int i = 0; i < codes * 4; ++i)
        {
            float const value = static_cast<float>(i / 4) * (1.0F / static_cast<float>(codes - 1));
            float const expected = i % 4 == 3 ? value : interpolated(floatOp, i % 4, value);
            ASSERT_NEAR(expected, out[i], std::ldexp(1.0, -21)) << i;
        }
    }
}

TEST(Lut1DRenderer, HalfInputUsesATableOf65536RowsComposedFromAStandardOne)
{
    Lut1DOp const op = tableOf(BIT_DEPTH_16f, BIT_DEPTH_16f, 1024, curve);
    Lut1DOp floatOp = op;
    floatOp.setInputBitDepth(BIT_DEPTH_32f);
    floatOp.setOutputBitDepth(BIT_DEPTH_32f);
    std::vector<std::uint16_t> in(65536);
    for (unsigned int i = 0; i < 65536; ++i)
        in[i] = static_cast<std::uint16_t>(i);
    forEveryTarget(
        [&]
        {
            std::vector<std::uint16_t> const out =
                renderAs<std::uint16_t, std::uint16_t>(op, Tavrin::PF_RGB_16f, Tavrin::PF_RGB_16f, in, 65535 / 3);
            for (unsigned int i = 0; i < out.size(); ++i)
                ASSERT_EQ(half(interpolated(floatOp, i % 3, static_cast<float>(PixelModel::halfValue(i)))).bits(), out[i]) << i;
        });
}

TEST(Lut1DRenderer, OutputCodesAreRoundedInTheTable)
{
    Lut1DOp op = table(BIT_DEPTH_8i, BIT_DEPTH_8i, 256);
    op.getArray().set(0, 254.6F);
    op.getArray().set(1, -3.0F);
    op.getArray().set(2, std::nanf(""));
    std::vector<unsigned char> const in = {0, 0, 0, 7};
    EXPECT_THAT((renderAs<unsigned char, unsigned char>(op, Tavrin::PF_RGBA_8i, Tavrin::PF_RGBA_8i, in, 1)),
                ElementsAre(255, 0, 0, 7));
}

TEST(Lut1DRenderer, ValuesThatAreNotFiniteAreMadeSo)
{
    Lut1DOp op = table(BIT_DEPTH_32f, BIT_DEPTH_32f, 2);
    op.getArray().set(0, INFINITY);
    op.getArray().set(1, -INFINITY);
    op.getArray().set(2, std::nanf(""));
    EXPECT_THAT(render(op, {0, 0, 0, 1}), ElementsAre(3.4028235e38F, -3.4028235e38F, 0.0F, 1.0F));
}

TEST(Lut1DRenderer, CubicIsRenderedAsLinearAndLeavesOneLine)
{
    Lut1DOp op = tableOf(BIT_DEPTH_32f, BIT_DEPTH_32f, 7, curve);
    std::vector<float> const in = nastyFloats(64, 3);
    std::vector<float> const linear = render(op, in);
    op.setInterpolation(Lut1DOp::InterpolationAlgo::Cubic);
    op.setName("curve");
    g_log.clear();
    Color::Logger::LogFunction const previous = Color::Logger::setLogFunc([](Color::LogLevel level, char const* text)
                                                                          { g_log.push_back(std::to_string(level) + " " + text); });
    std::vector<float> const cubic = render(op, in);
    Color::Logger::setLogFunc(previous);
    for (std::size_t i = 0; i < in.size(); ++i)
        expectSameFloat(linear[i], cubic[i], i);
    EXPECT_THAT(g_log, ElementsAre("1 COLOR:RENDERER:CPU: Op 'curve' illegal attribute 'Interpolation'"));
}

TEST(Lut1DRenderer, MissingDepthsAreRefused)
{
    Lut1DOp const noInput = table(Tavrin::BIT_DEPTH_UNKNOWN, BIT_DEPTH_32f, 2);
    Lut1DOp const noOutput = table(BIT_DEPTH_32f, Tavrin::BIT_DEPTH_UNKNOWN, 2);
    auto const message = [](Lut1DOp const& op)
    {
        Rendering::TransformProcessor processor;
        try
        {
            Rendering::CPURenderer renderer;
            renderer.finalize(transformOf({&op}), static_cast<PixelFormat>(op.getInputBitDepth() | 0x1fU),
                              static_cast<PixelFormat>(op.getOutputBitDepth() | 0x1fU));
        }
        catch (Color::Exception const& e)
        {
            return e.getMessage();
        }
        return std::string();
    };
    EXPECT_EQ("Op 'LUT 1D' illegal attribute 'InputBitDepth'", message(noInput));
    EXPECT_EQ("Op 'LUT 1D' illegal attribute 'OutputBitDepth'", message(noOutput));
}

TEST(Lut1DRenderer, AHalfDomainInterpolatesBetweenNeighbouringHalfs)
{
    Lut1DOp const op = halfTable(BIT_DEPTH_32f);
    std::vector<float> in = nastyFloats(4 * 2003, 11);
    auto const expected = [&](unsigned int column, float value)
    {
        unsigned int code = half(value).bits();
        if ((code & 0x7fffU) == 0x7c00U)
        {
            code = (code & 0x8000U) | 0x7bffU;
            value = static_cast<float>(PixelModel::halfValue(code));
        }
        unsigned int lower = code;
        unsigned int upper = (code + 1) & 0xffffU;
        if (std::abs(PixelModel::halfValue(code)) > std::abs(value))
        {
            upper = code;
            lower = code - 1;
        }
        else if ((upper & 0x7fffU) == 0x7c00U)
        {
            upper = (upper & 0x8000U) | 0x7bffU;
        }
        float const low = static_cast<float>(PixelModel::halfValue(lower));
        float ratio = (value - low) / (static_cast<float>(PixelModel::halfValue(upper)) - low);
        if (std::isnan(ratio) || lower == upper)
            ratio = 0.0F;
        auto const entry = [&](unsigned int row) { return op.getArray().get(3 * row + column); };
        return (entry(lower) - entry(upper)) * (1.0F - ratio) + entry(upper);
    };
    forEveryTarget(
        [&]
        {
            std::vector<float> const out = render(op, in);
            for (std::size_t i = 0; i < in.size(); ++i)
            {
                // The bits of a NaN's payload decide its row; the processor may quiet it on the way.
                if (i % 4 != 3 && !std::isnan(in[i]))
                    expectSameFloat(expected(i % 4, in[i]), out[i], i);
            }
        });
}

TEST(Lut1DRenderer, BehindTheLastRowOfAHalfDomainStandsTheFirst)
{
    Lut1DOp const op = halfTable(BIT_DEPTH_32f);
    std::uint32_t const allOnes = 0xffffffffU; // a quiet NaN, whose half has all ones too
    float nan;
    std::memcpy(&nan, &allOnes, sizeof nan);
    forEveryTarget(
        [&]
        {
            std::vector<float> const out = render(op, {nan, nan, nan, 1.0F});
            for (unsigned int column = 0; column < 3; ++column)
            {
                float const first = op.getArray().get(column);
                expectSameFloat((op.getArray().get(3 * 65535 + column) - first) + first, out[column], column);
            }
        });
}

TEST(Lut1DRenderer, AHalfDomainAnswersFrom65504OnWithTheRowOf65504)
{
    Lut1DOp const op = halfTable(BIT_DEPTH_32f);
    float const top = op.getArray().get(3 * 0x7bff);
    float const bottom = op.getArray().get(3 * 0xfbff);
    for (float value : {65504.0F, 65510.0F, 65519.0F, 65520.0F, 1e30F, INFINITY})
    {
        EXPECT_EQ(top, render(op, {value, value, value, 1.0F})[0]) << value;
        EXPECT_EQ(bottom, render(op, {-value, value, value, 1.0F})[0]) << -value;
    }
}

TEST(Lut1DRenderer, HalfPixelsIndexAHalfDomainByTheirPatternAndSoDoesEachNaN)
{
    Lut1DOp op = halfTable(BIT_DEPTH_32f);
    op.setInputBitDepth(BIT_DEPTH_16f);
    std::vector<std::uint16_t> in(4 * 65536);
    for (unsigned int i = 0; i < in.size(); ++i)
        in[i] = static_cast<std::uint16_t>(i % 4 == 3 ? 0x3c00 : i / 4);
    forEveryTarget(
        [&]
        {
            std::vector<float> const out = renderAs<std::uint16_t, float>(op, Tavrin::PF_RGBA_16f, Tavrin::PF_RGBA_32f, in, 65536);
            for (unsigned int i = 0; i < out.size(); ++i)
                ASSERT_EQ(i % 4 == 3 ? 1.0F : op.getArray().get(3 * (i / 4) + i % 4), out[i]) << i;
        });
}

TEST(Lut1DRenderer, AFormatWithoutAlphaEndsUpOpaque)
{
    Lut1DOp const op = tableOf(BIT_DEPTH_16f, BIT_DEPTH_8i, 1024, curve);
    std::vector<std::uint16_t> const in = {half(0.5F).bits(), half(0.25F).bits(), half(1.0F).bits()};
    EXPECT_EQ(255, (renderAs<std::uint16_t, unsigned char>(op, Tavrin::PF_RGB_16f, Tavrin::PF_RGBA_8i, in, 1)[3]));
}

TEST(Lut1DRenderer, HueAdjustKeepsThePlaceOfTheMiddleChannel)
{
    Lut1DOp op = tableOf(BIT_DEPTH_32f, BIT_DEPTH_32f, 1025, [](double x, unsigned int) { return x * x; });
    op.setHueAdjust(Lut1DOp::HueAdjust::Dw3);
    // 0.25, 0.5 and 1 in every order: the middle one stands a third of the way up, and does so between 0.0625 and 1.
    float const middle = 0.0625F + (1.0F - 0.0625F) / 3.0F;
    float values[3] = {0.25F, 0.5F, 1.0F};
    std::sort(values, values + 3);
    do
    {
        std::vector<float> const out = render(op, {values[0], values[1], values[2], 0.5F});
        for (int c = 0; c < 3; ++c)
            EXPECT_NEAR(values[c] == 0.5F ? middle : values[c] * values[c], out[c], 1e-6) << values[c];
        EXPECT_EQ(0.5F, out[3]);
    } while (std::next_permutation(values, values + 3));
}

TEST(Lut1DRenderer, HueAdjustOfAGreyGivesTheMiddleTheMinimumsValue)
{
    Lut1DOp op = tableOf(BIT_DEPTH_32f, BIT_DEPTH_32f, 3, [](double x, unsigned int c) { return x + 0.25 * c; });
    op.setHueAdjust(Lut1DOp::HueAdjust::Dw3);
    // Of equal channels blue counts as the largest and red as the smallest, so green takes red's value.
    EXPECT_THAT(render(op, {0.5F, 0.5F, 0.5F, 1.0F}), ElementsAre(0.5F, 0.5F, 1.0F, 1.0F));
}

TEST(Lut1DRenderer, HueAdjustToAnIntegerStandsHalfACodeTooHigh)
{
    Lut1DOp op = table(BIT_DEPTH_8i, BIT_DEPTH_8i, 256);
    op.setHueAdjust(Lut1DOp::HueAdjust::Dw3);
    std::vector<unsigned char> const in = {10, 20, 30, 40, 200, 100, 0, 255};
    forEveryTarget(
        [&]
        {
            EXPECT_THAT((renderAs<unsigned char, unsigned char>(op, Tavrin::PF_RGBA_8i, Tavrin::PF_RGBA_8i, in, 2)),
                        ElementsAre(11, 21, 31, 40, 201, 101, 1, 255));
        });
}

TEST(Lut1DRenderer, HueAdjustOfHalfPixelsOrdersThemByValueAndNotByPattern)
{
    Lut1DOp op = table(BIT_DEPTH_16f, BIT_DEPTH_32f, 65536, Tavrin::HALF_FLAGS_INPUT_HALF_DOMAIN);
    op.setHueAdjust(Lut1DOp::HueAdjust::Dw3);
    // An identity: -2, the smallest value with the largest pattern, stays where it is, and the middle one keeps its place.
    std::vector<std::uint16_t> const in = {half(-2.0F).bits(), half(0.5F).bits(), half(1.0F).bits(), half(1.0F).bits()};
    forEveryTarget(
        [&]
        {
            EXPECT_THAT((renderAs<std::uint16_t, float>(op, Tavrin::PF_RGBA_16f, Tavrin::PF_RGBA_32f, in, 1)),
                        ElementsAre(-2.0F, testing::FloatNear(0.5F, 1e-6F), 1.0F, 1.0F));
        });
}

namespace
{

InvLut1DOp inverseOf(Lut1DOp const& op)
{
    return InvLut1DOp(op);
}

Lut1DOp columnTable(std::vector<float> const& column)
{
    Lut1DOp op = table(BIT_DEPTH_32f, BIT_DEPTH_32f, static_cast<unsigned int>(column.size()));
    for (unsigned int i = 0; i < column.size(); ++i)
    {
        for (unsigned int c = 0; c < 3; ++c)
            op.getArray().set(3 * i + c, column[i]);
    }
    return op;
}

float invert(std::vector<float> const& column, float value)
{
    return render(inverseOf(columnTable(column)), {value, value, value, 1.0F})[0];
}

} // namespace

TEST(InvLut1DRenderer, TheKindIsTheSearchOrThatOfTheFastTable)
{
    InvLut1DOp op = inverseOf(tableOf(BIT_DEPTH_32f, BIT_DEPTH_32f, 33, curve));
    EXPECT_THAT(kindsOf(op), ElementsAre(RendererKind::InvLut1DRenderer));
    op.setInvStyle(InvLut1DOp::InvStyle::Fast);
    EXPECT_THAT(kindsOf(op), ElementsAre(RendererKind::Lut1DRendererHalfCode));
    EXPECT_THAT(kindsOf(op, Tavrin::PF_RGBA_10i), ElementsAre(RendererKind::Lut1DRenderer));
}

TEST(InvLut1DRenderer, ValuesOutsideTheTableGiveTheEndsOfItsUsefulDomain)
{
    std::vector<float> const column = {0.25F, 0.25F, 0.5F, 0.75F, 0.75F}; // useful from row 1 to row 3
    EXPECT_EQ(0.25F, invert(column, -1.0F));
    EXPECT_EQ(0.25F, invert(column, 0.25F));
    EXPECT_EQ(0.5F, invert(column, 0.5F));
    EXPECT_EQ(0.75F, invert(column, 0.75F));
    EXPECT_EQ(0.75F, invert(column, 7.0F));
    EXPECT_EQ(0.25F, invert(column, std::nanf("")));
}

TEST(InvLut1DRenderer, ADecreasingTableIsSearchedBackwards)
{
    EXPECT_EQ(0.75F, invert({1.0F, 0.5F, 0.0F}, 0.25F)); // row 1.5 of 2
    EXPECT_EQ(0.0F, invert({1.0F, 0.5F, 0.0F}, 3.0F));
    EXPECT_EQ(1.0F, invert({1.0F, 0.5F, 0.0F}, -3.0F));
}

TEST(InvLut1DRenderer, ATableOfOneLevelGivesItsFirstRow)
{
    EXPECT_EQ(0.0F, invert({0.5F, 0.5F, 0.5F}, 0.5F));
}

TEST(InvLut1DRenderer, SearchesLikeAPlainBinarySearchOnEveryInstructionSet)
{
    std::vector<float> in = nastyFloats(4 * 1003, 17);
    std::mt19937 generator(4);
    for (unsigned int rows : {2U, 3U, 5U, 64U, 1000U, 4096U})
    {
        for (int shape = 0; shape < 4; ++shape)
        {
            // Smooth, steep at one end, of random steps with flat stretches, and decreasing.
            float level = -0.5F;
            Lut1DOp const forward =
                tableOf(BIT_DEPTH_32f, BIT_DEPTH_32f, rows,
                        [&](double x, unsigned int c) -> double
                        {
                            if (shape == 0)
                                return curve(x, c);
                            if (shape == 1)
                                return std::pow(x, 0.1 + c);
                            if (shape == 2)
                                return level += generator() % 3 == 0 ? 0.0F : static_cast<float>(generator() % 1000) * 1e-6F;
                            return 1.0 - x * x;
                        });
            InvLut1DOp const op = inverseOf(forward);
            for (std::size_t i = 0; i < in.size(); i += 5) // Values of the table itself, too.
                in[i] = op.getArray().get(static_cast<unsigned int>(generator() % (3 * rows)));
            auto const expected = [&](unsigned int c, float value)
            {
                InvLut1DOp::ComponentProperties const& p = op.getComponentProperties()[c];
                float const flip = p.isIncreasing ? 1.0F : -1.0F;
                std::vector<float> useful;
                for (unsigned int i = p.startDomain; i <= p.endDomain; ++i)
                    useful.push_back(op.getArray().get(3 * i + c) * flip);
                float v = value * flip;
                v = v > useful.front() ? v : useful.front();
                v = v < useful.back() ? v : useful.back();
                auto low = std::lower_bound(useful.begin(), useful.end() - 1, v);
                if (low > useful.begin())
                    --low;
                float const highValue = low < useful.end() - 1 ? low[1] : *low;
                float const fraction = highValue > *low ? (v - *low) / (highValue - *low) : 0.0F;
                float const row = static_cast<float>(low - useful.begin()) + static_cast<float>(p.startDomain);
                return (row + fraction) * (1.0F / static_cast<float>(rows - 1));
            };
            forEveryTarget(
                [&]
                {
                    std::vector<float> const out = render(op, in);
                    for (std::size_t i = 0; i < in.size(); ++i)
                        expectSameFloat(i % 4 == 3 ? in[i] : expected(i % 4, in[i]), out[i], i);
                });
        }
    }
}

TEST(InvLut1DRenderer, ASingleComponentServesAllChannels)
{
    Lut1DOp forward = columnTable({0.0F, 0.1F, 0.4F, 1.0F});
    forward.getArray().setNumColorComponents(1);
    InvLut1DOp const op = inverseOf(forward);
    std::vector<float> const out = render(op, {0.1F, 0.1F, 0.1F, 1.0F});
    EXPECT_FLOAT_EQ(1.0F / 3.0F, out[0]);
    EXPECT_EQ(out[0], out[1]);
    EXPECT_EQ(out[0], out[2]);
}

TEST(InvLut1DRenderer, FastAgreesWithExactWithinTheResolutionOfItsTable)
{
    InvLut1DOp op =
        inverseOf(tableOf(BIT_DEPTH_32f, BIT_DEPTH_32f, 4096, [](double x, unsigned int) { return 0.1 + 0.8 * x * x; }));
    std::vector<float> in;
    for (int i = 0; i <= 4000; ++i)
        in.insert(in.end(), 4, 0.15F + static_cast<float>(i) * 0.75F / 4000.0F);
    std::vector<float> const exact = render(op, in);
    op.setInvStyle(InvLut1DOp::InvStyle::Fast);
    std::vector<float> const fast = render(op, in);
    // Halfs between 0.15 and 0.9 lie at most 2^-11 apart; the inverse's slope there is at most 1 / (1.6 * 0.25) = 2.5, and its
    // chords leave it by less than a tenth of a step.
    for (std::size_t i = 0; i < in.size(); ++i)
        ASSERT_NEAR(exact[i], fast[i], 0.1 * 2.5 * std::ldexp(1.0, -11)) << in[i];
}

TEST(InvLut1DRenderer, FastFollowsTheDynamicBypassOfTheOperatorAndIsATableEvenIfBuiltWhileBypassed)
{
    InvLut1DOp op = inverseOf(tableOf(BIT_DEPTH_32f, BIT_DEPTH_32f, 33, [](double x, unsigned int) { return x * x; }));
    op.setInvStyle(InvLut1DOp::InvStyle::Fast);
    auto const bypass = std::make_shared<Color::BypassDynamicProperty>(true, true);
    op.setBypass(bypass);
    Rendering::CPURenderer renderer = rendererOf(transformOf({&op}), Tavrin::PF_RGBA_32f, Tavrin::PF_RGBA_32f);
    std::vector<float> const in = {0.25F, 0.25F, 0.25F, 1.0F};
    std::vector<float> out(4);
    renderer.apply(in.data(), out.data(), Rendering::ROI(0, 0, 1, 1), 0, 0);
    EXPECT_EQ(in, out);
    bypass->setValue(false);
    renderer.apply(in.data(), out.data(), Rendering::ROI(0, 0, 1, 1), 0, 0);
    EXPECT_THAT(
        out, ElementsAre(testing::FloatNear(0.5F, 1e-3F), testing::FloatNear(0.5F, 1e-3F), testing::FloatNear(0.5F, 1e-3F), 1.0F));
}

TEST(MakeFastLut1D, HasARowForEveryValueOfTheInputDepth)
{
    InvLut1DOp op = inverseOf(tableOf(BIT_DEPTH_32f, BIT_DEPTH_32f, 33, [](double x, unsigned int) { return x * x; }));
    EXPECT_EQ(65536U, Rendering::InvLutUtil::makeFastLut1D(op, false)->getArray().getDimension());
    EXPECT_TRUE(Rendering::InvLutUtil::makeFastLut1D(op, false)->isInputHalfDomain());
    EXPECT_EQ(4096U, Rendering::InvLutUtil::makeFastLut1D(op, true)->getArray().getDimension());
    op.setInputBitDepth(BIT_DEPTH_10i);
    EXPECT_EQ(1024U, Rendering::InvLutUtil::makeFastLut1D(op, false)->getArray().getDimension());
}

TEST(MakeFastLut1D, KeepsTheHalfDomainOnTheGpuWhereTheTableLeavesTheRange)
{
    InvLut1DOp const op = inverseOf(tableOf(BIT_DEPTH_32f, BIT_DEPTH_32f, 33, [](double x, unsigned int) { return 2 * x; }));
    EXPECT_EQ(65536U, Rendering::InvLutUtil::makeFastLut1D(op, true)->getArray().getDimension());
}

TEST(MakeFastLut1D, LeavesTheStyleOfTheOperatorAlone)
{
    InvLut1DOp op = inverseOf(tableOf(BIT_DEPTH_32f, BIT_DEPTH_32f, 33, curve));
    op.setInvStyle(InvLut1DOp::InvStyle::Fast);
    Rendering::InvLutUtil::makeFastLut1D(op, false);
    EXPECT_EQ(InvLut1DOp::InvStyle::Fast, op.getInvStyle());
}
