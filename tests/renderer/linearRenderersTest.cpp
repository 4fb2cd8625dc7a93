// The matrix and range renderers: which one is chosen, and what it computes, on every instruction set.
#include "renderer/rendererHarness.h"

#include "transform/matrixOp.h"
#include "transform/rangeOp.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace RendererHarness;
using Color::MatrixOp;
using Color::RangeOp;
using Rendering::RendererKind;
using testing::ElementsAre;

namespace
{

constexpr double kEmpty = std::numeric_limits<double>::quiet_NaN();

MatrixOp matrix(BitDepth in, BitDepth out)
{
    return {in, out, "", "", Color::Descriptions()};
}

RangeOp range(double minIn, double maxIn, double minOut, double maxOut)
{
    return {Tavrin::BIT_DEPTH_32f, Tavrin::BIT_DEPTH_32f, minIn, maxIn, minOut, maxOut};
}

// A matrix with every coefficient different from 0 and offsets.
MatrixOp fullMatrix(bool hasOffsets)
{
    MatrixOp op;
    for (unsigned int i = 0; i < 16; ++i)
        op.setArrayValue(i, 0.1F + 0.17F * static_cast<float>(i) - 0.02F * static_cast<float>(i * i));
    for (unsigned int i = 0; hasOffsets && i < 4; ++i)
        op.setOffsetValue(i, 0.25F - 0.1F * static_cast<float>(i));
    return op;
}

// One output channel as the text of the operation has it: four products, added in pairs, all in single precision.
float matrixRow(MatrixOp const& op, unsigned int row, float const* in)
{
    auto const product = [&](unsigned int c) { return op.getArray().get(row * 4 + c) * in[c]; };
    float const redGreen = product(0) + product(1);
    float const blueAlpha = product(2) + product(3);
    return redGreen + blueAlpha;
}

} // namespace

TEST(MatrixRenderer, TheKindFollowsFromDiagonalAndOffsets)
{
    MatrixOp op;
    EXPECT_THAT(kindsOf(op), ElementsAre(RendererKind::ScaleRenderer));
    op.setOffsetValue(3, 0.5F);
    EXPECT_THAT(kindsOf(op), ElementsAre(RendererKind::ScaleWithOffsetRenderer));
    op.setOffsetValue(3, -0.0F);
    EXPECT_THAT(kindsOf(op), ElementsAre(RendererKind::ScaleWithOffsetRenderer)) << "a negative zero counts as not null";
    EXPECT_THAT(kindsOf(fullMatrix(false)), ElementsAre(RendererKind::MatrixRenderer));
    EXPECT_THAT(kindsOf(fullMatrix(true)), ElementsAre(RendererKind::MatrixWithOffsetRenderer));
}

TEST(MatrixRenderer, SumsProductsInPairsOnEveryInstructionSet)
{
    for (bool hasOffsets : {false, true})
    {
        MatrixOp const op = fullMatrix(hasOffsets);
        std::vector<float> const in = nastyFloats(4 * 1003, 5);
        forEveryTarget(
            [&]
            {
                std::vector<float> const out = render(op, in);
                for (std::size_t i = 0; i < in.size(); i += 4)
                {
                    for (unsigned int row = 0; row < 4; ++row)
                    {
                        float const sum = matrixRow(op, row, &in[i]);
                        expectSameFloat(hasOffsets ? sum + op.getOffsetValue(row) : sum, out[i + row], i + row);
                    }
                }
            });
    }
}

TEST(MatrixRenderer, ScalesEachChannelAndAddsOffsetsAlsoToAlpha)
{
    MatrixOp op;
    for (unsigned int c = 0; c < 4; ++c)
    {
        op.setArrayValue(5 * c, 0.5F + static_cast<float>(c));
        op.setOffsetValue(c, 0.125F * static_cast<float>(c + 1));
    }
    std::vector<float> const in = nastyFloats(4 * 517, 6);
    forEveryTarget(
        [&]
        {
            std::vector<float> const out = render(op, in);
            for (std::size_t i = 0; i < in.size(); ++i)
                expectSameFloat(in[i] * (0.5F + static_cast<float>(i % 4)) + 0.125F * static_cast<float>(i % 4 + 1), out[i], i);
        });
}

TEST(MatrixRenderer, AnOffsetInAlphaIsAddedForAFormatWithoutAlpha)
{
    MatrixOp op;
    op.setOffsetValue(3, 0.25F);
    std::vector<float> const in = {0.1F, 0.2F, 0.3F};
    EXPECT_THAT((renderAs<float, float>(op, Tavrin::PF_RGB_32f, Tavrin::PF_RGBA_32f, in, 1)), ElementsAre(0.1F, 0.2F, 0.3F, 1.25F));
}

TEST(MatrixRenderer, ThreeByThreeWritesOpaqueAlpha)
{
    MatrixOp op = matrix(Tavrin::BIT_DEPTH_8i, Tavrin::BIT_DEPTH_8i);
    op.setRGBValues(std::array{0.0F, 1.0F, 0.0F, 1.0F, 0.0F, 0.0F, 0.0F, 0.0F, 0.5F}.data());
    using Bytes = std::vector<unsigned char>;
    EXPECT_THAT((renderAs<unsigned char, unsigned char>(op, Tavrin::PF_RGB_8i, Tavrin::PF_RGBA_8i, Bytes{10, 20, 31}, 1)),
                ElementsAre(20, 10, 16, 255));
}

TEST(MatrixRenderer, AnAlphaColumnTakesRedIntoAlpha)
{
    MatrixOp op;
    op.setArrayValue(12, 1.0F); // alpha's row, red's column
    op.setArrayValue(15, 0.0F);
    EXPECT_THAT(render(op, {0.25F, 0.5F, 0.75F, 1.0F}), ElementsAre(0.25F, 0.5F, 0.75F, 0.25F));
}

TEST(MatrixRenderer, TakesTheDepthsOfTheFormatsIntoItsCoefficients)
{
    // 8i to 16f through a 32f matrix of 2: 255 is 1.0 in, 2.0 out.
    MatrixOp op;
    for (unsigned int c = 0; c < 3; ++c)
        op.setArrayValue(5 * c, 2.0F);
    using Bytes = std::vector<unsigned char>;
    std::vector<std::uint16_t> const out =
        renderAs<unsigned char, std::uint16_t>(op, Tavrin::PF_RGBA_8i, Tavrin::PF_RGBA_16f, Bytes{255, 0, 51, 255}, 1);
    EXPECT_THAT(out, ElementsAre(half(2.0F).bits(), half(0.0F).bits(), half(0.4F).bits(), half(1.0F).bits()));
}

TEST(RangeRenderer, TheKindFollowsFromScaleAndClamps)
{
    EXPECT_THAT(kindsOf(range(0, 1, 0, 2)), ElementsAre(RendererKind::RangeScaleMinMaxRenderer));
    EXPECT_THAT(kindsOf(range(0.5, kEmpty, 1, kEmpty)), ElementsAre(RendererKind::RangeScaleMinRenderer));
    EXPECT_THAT(kindsOf(range(kEmpty, 0.5, kEmpty, 1)), ElementsAre(RendererKind::RangeScaleMaxRenderer));
    EXPECT_THAT(kindsOf(range(0, 1, 0, 1)), ElementsAre(RendererKind::RangeMinMaxRenderer));
    EXPECT_THAT(kindsOf(range(0, kEmpty, 0, kEmpty)), ElementsAre(RendererKind::RangeMinRenderer));
    EXPECT_THAT(kindsOf(range(kEmpty, 1, kEmpty, 1)), ElementsAre(RendererKind::RangeMaxRenderer));
}

TEST(RangeRenderer, BetweenIntegerDepthsOnlyScalesWhereNothingCanClip)
{
    RangeOp const op(Tavrin::BIT_DEPTH_8i, Tavrin::BIT_DEPTH_16i, kEmpty, kEmpty, kEmpty, kEmpty);
    EXPECT_THAT(kindsOf(op, Tavrin::PF_RGBA_8i, Tavrin::PF_RGBA_16i), ElementsAre(RendererKind::RangeScaleRenderer));
}

TEST(RangeRenderer, OneThatDoesNothingIsDroppedAndAScaleStandsInForIt)
{
    RangeOp const op(Tavrin::BIT_DEPTH_8i, Tavrin::BIT_DEPTH_8i, 0, 255, 0, 255);
    EXPECT_THAT(kindsOf(op, Tavrin::PF_RGBA_8i, Tavrin::PF_RGBA_8i), ElementsAre(RendererKind::ScaleRenderer));
    using Bytes = std::vector<unsigned char>;
    EXPECT_THAT((renderAs<unsigned char, unsigned char>(op, Tavrin::PF_RGBA_8i, Tavrin::PF_RGBA_8i, Bytes{0, 7, 254, 99}, 1)),
                ElementsAre(0, 7, 254, 99));
}

TEST(RangeRenderer, ComparesInTheOrderThatDecidesForNaNOnEveryInstructionSet)
{
    std::vector<float> const in = nastyFloats(4 * 1003, 8);
    struct
    {
        RangeOp op;
        bool hasMin, hasMax, scales;
    } const cases[] = {{range(0.25, 0.75, -1, 2), true, true, true},
                       {range(0.5, kEmpty, 1, kEmpty), true, false, true},
                       {range(kEmpty, 0.5, kEmpty, 1), false, true, true},
                       {range(0.25, 0.75, 0.25, 0.75), true, true, false},
                       {range(0.25, kEmpty, 0.25, kEmpty), true, false, false},
                       {range(kEmpty, 0.75, kEmpty, 0.75), false, true, false}};
    for (auto const& c : cases)
    {
        float const scale = static_cast<float>(c.op.getScale());
        float const offset = static_cast<float>(c.op.getOffset());
        float const lower = static_cast<float>(c.op.getMinOutValue());
        float const upper = static_cast<float>(c.op.getMaxOutValue());
        auto const expected = [&](float value)
        {
            float const t = c.scales ? value * scale + offset : value;
            if (c.hasMax && t > upper)
                return upper;
            if (c.hasMin)
                return t > lower ? t : lower;
            return t;
        };
        forEveryTarget(
            [&]
            {
                std::vector<float> const out = render(c.op, in);
                for (std::size_t i = 0; i < in.size(); ++i)
                    expectSameFloat(i % 4 == 3 ? in[i] : expected(in[i]), out[i], i);
            });
    }
}

TEST(RangeRenderer, ZeroToOneClampsColorsAndLeavesAlphaAlone)
{
    EXPECT_THAT(render(range(0, 1, 0, 1), {-0.5F, 0.5F, 1.5F, 2.0F}), ElementsAre(0.0F, 0.5F, 1.0F, 2.0F));
}

TEST(RangeRenderer, AMaximumAloneKeepsNegativeValues)
{
    EXPECT_THAT(render(range(kEmpty, 1, kEmpty, 1), {-7.0F, 0.5F, 1.5F, 1.0F}), ElementsAre(-7.0F, 0.5F, 1.0F, 1.0F));
}

TEST(RangeRenderer, NaNBecomesTheLowerBound)
{
    EXPECT_THAT(render(range(0.25, 1, 0.25, 1), {NAN, NAN, NAN, 1.0F}), ElementsAre(0.25F, 0.25F, 0.25F, 1.0F));
}
