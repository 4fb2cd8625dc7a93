// Two operators made one: what the composition says of itself, its grid, and its values against formulas of both operators.
#include "renderer/compose.h"
#include "renderer/lut1DTables.h"
#include "renderer/rendererHarness.h"
#include "support/failure.h"
#include "transform/testOps.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <cmath>

using namespace RendererHarness;
using namespace Color;
using namespace Tavrin;
using testing::ElementsAre;
using TransformTools::compose;
using TransformTools::ComposeMethod;

namespace
{

using Interpolation = Lut3DOp::InterpolationAlgo;
using Colour = std::array<double, 3>;

Failure const kMismatch{0x26000a, "Bit depth mismatch between op 'first' and op 'second'"};

Descriptions describedAs(std::string const& text)
{
    Descriptions descriptions;
    descriptions += text;
    return descriptions;
}

// A table by a formula from colour to colour, each from 0 to 1.
template <class Formula>
Lut3DOp gridOf(BitDepth in, BitDepth out, unsigned int points, Interpolation interpolation, Formula const& formula)
{
    Lut3DOp op(in, out, "", "", Descriptions(), interpolation, points);
    double const step = 1.0 / (points - 1.0);
    for (unsigned int i = 0; i < points * points * points; ++i)
    {
        Colour const values = formula(Colour{i / points / points * step, i / points % points * step, i % points * step});
        for (unsigned int c = 0; c < 3; ++c)
            op.getArray().set(3 * i + c, static_cast<float>(values[c] * getBitDepthMaxValue(out)));
    }
    return op;
}

Colour sameColour(Colour const& in)
{
    return in;
}

// Red is 1 at the white corner alone. Between the corners of a grid of two points an axis, where this is all there is,
// interpolation in cubes gives the product of the three channels, and in tetrahedra their minimum.
Colour whiteCorner(Colour const& in)
{
    return {in[0] * in[1] * in[2] == 1.0 ? 1.0 : 0.0, 0.0, 0.0};
}

// The entry of a composition in the middle of a grid of three points an axis.
float redInTheMiddle(Lut3DOp const& op)
{
    EXPECT_EQ(op.getArray().getDimension(), 3U);
    return op.getArray().get((1 * 9 + 1 * 3 + 1) * 3);
}

unsigned int pointsOf(unsigned int first, unsigned int second)
{
    return compose(Lut3DOp(first), Lut3DOp(second))->getArray().getDimension();
}

template <class Operator>
void expectBypassOfFirst(std::unique_ptr<Operator> const& composed, Operator const& first)
{
    EXPECT_EQ(composed->getBypass(), first.getBypass());
}

// ---------------------------------------------------------------- matrices

TEST(ComposeMatrices, DoesTheFirstAndThenTheSecond)
{
    MatrixOp first;
    first.setArrayValue(0, 2.0F);
    first.setOffsetValue(0, 0.5F);
    MatrixOp second;
    second.setArrayValue(0, 3.0F);
    second.setOffsetValue(0, 0.25F);
    std::unique_ptr<MatrixOp> const both = compose(first, second);
    EXPECT_EQ(both->getArray().get(0), 6.0F);
    EXPECT_EQ(both->getOffsetValue(0), 3.0F * 0.5F + 0.25F);
}

TEST(ComposeMatrices, HaveABypassOfTheirOwn)
{
    MatrixOp first;
    first.setBypass(bypass(true, true));
    EXPECT_FALSE(compose(first, MatrixOp())->getBypass()->isDynamic());
}

// ---------------------------------------------------------------- 1D tables

TEST(ComposeTables, JoinsWhatTheTwoTablesSay)
{
    Lut1DOp const first(BIT_DEPTH_10i, BIT_DEPTH_8i, "a", "one ", describedAs("first"), Lut1DOp::InterpolationAlgo::Cubic,
                        HALF_FLAGS_NONE, 4);
    Lut1DOp const second(BIT_DEPTH_8i, BIT_DEPTH_16f, "b", "two", describedAs("second"), kLinear, HALF_FLAGS_NONE, 10);
    std::unique_ptr<Lut1DOp> const composed = compose(first, second, ComposeMethod::FullGrid);
    EXPECT_EQ("ab", composed->getId());
    EXPECT_EQ("one two", composed->getName());
    EXPECT_THAT(composed->getDescriptions().getList(), ElementsAre("first", "second"));
    EXPECT_EQ(BIT_DEPTH_10i, composed->getInputBitDepth());
    EXPECT_EQ(BIT_DEPTH_16f, composed->getOutputBitDepth());
    EXPECT_EQ(65536U, composed->getArray().getDimension());
    EXPECT_EQ(kLinear, composed->getInterpolation());
}

TEST(ComposeTables, PicksTheGridByTheMethod)
{
    Lut1DOp const small = tableOf(BIT_DEPTH_10i, BIT_DEPTH_10i, 5, curve);
    Lut1DOp const other = tableOf(BIT_DEPTH_10i, BIT_DEPTH_10i, 7, curve);
    auto const rows = [&](Lut1DOp const& first, ComposeMethod method)
    { return compose(first, other, method)->getArray().getDimension(); };
    EXPECT_EQ(5U, rows(small, ComposeMethod::FirstGrid));
    EXPECT_EQ(1024U, rows(small, ComposeMethod::IdealGrid));
    EXPECT_EQ(65536U, rows(small, ComposeMethod::FullGrid));
    Lut1DOp const large = tableOf(BIT_DEPTH_10i, BIT_DEPTH_10i, 2000, curve);
    EXPECT_EQ(2000U, rows(large, ComposeMethod::IdealGrid));
    Lut1DOp const larger = tableOf(BIT_DEPTH_10i, BIT_DEPTH_10i, 70000, curve);
    EXPECT_EQ(70000U, rows(larger, ComposeMethod::FullGrid));
}

// Rows of the first table are looked up in the second: 65536 rows of its own would be others.
TEST(ComposeTables, KeepTheHalfDomainOfTheFirstAndNoRawHalfs)
{
    Lut1DOp first = table(BIT_DEPTH_16f, BIT_DEPTH_32f, 65536, HALF_FLAGS_INPUT_HALF_DOMAIN | HALF_FLAGS_OUTPUT_RAW_HALFS);
    Lut1DOp const second = tableOf(BIT_DEPTH_32f, BIT_DEPTH_32f, 3, [](double x, unsigned int) { return x * x; });
    std::unique_ptr<Lut1DOp> const composed = compose(first, second, ComposeMethod::FullGrid);
    EXPECT_EQ(HALF_FLAGS_INPUT_HALF_DOMAIN, composed->getHalfFlags());
    // 0x3400 is 0.25, half way between the rows of 0 and 0.5; 0xbc00 is -1, below the second table's domain; 0x4000 is 2, above.
    EXPECT_EQ(0.125F, composed->getArray().get(3 * 0x3400));
    EXPECT_EQ(0.0F, composed->getArray().get(3 * 0xbc00));
    EXPECT_EQ(1.0F, composed->getArray().get(3 * 0x4000));
}

TEST(ComposeTables, GivesWhatOneTableAfterTheOtherGives)
{
    Lut1DOp const first = tableOf(BIT_DEPTH_32f, BIT_DEPTH_10i, 33, curve);
    Lut1DOp const second = tableOf(BIT_DEPTH_10i, BIT_DEPTH_32f, 65, curve);
    std::vector<float> in;
    for (int i = 0; i <= 1000; ++i)
        in.insert(in.end(), 4, static_cast<float>(i) / 1000.0F);
    std::vector<float> const both = renderAs<float, float>({&first, &second}, PF_RGBA_32f, PF_RGBA_32f, in, 1001);
    std::vector<float> const one = render(*compose(first, second, ComposeMethod::FullGrid), in);
    // 65536 samples of a polygon whose slopes change at 96 places: within a change of slope times a sample.
    for (std::size_t i = 0; i < in.size(); ++i)
        ASSERT_NEAR(both[i], one[i], 2.0 / 65535) << in[i];
}

TEST(ComposeTables, HasTheBypassOfTheFirst)
{
    Lut1DOp first(4);
    first.setBypass(bypass(false, true));
    expectBypassOfFirst(compose(first, Lut1DOp(4), ComposeMethod::FirstGrid), first);
}

TEST(ComposeTables, RefusesUnequalDepthsBetweenThem)
{
    Lut1DOp const first(BIT_DEPTH_32f, BIT_DEPTH_10i, "", "first", Descriptions(), kLinear, HALF_FLAGS_NONE, 4);
    Lut1DOp const second(BIT_DEPTH_8i, BIT_DEPTH_32f, "", "second", Descriptions(), kLinear, HALF_FLAGS_NONE, 4);
    EXPECT_EQ(failureOf([&] { compose(first, second, ComposeMethod::FirstGrid); }), kMismatch);
}

// ---------------------------------------------------------------- 3D tables

TEST(ComposeGrids, JoinsWhatTheTwoTablesSay)
{
    Lut3DOp const first(BIT_DEPTH_10i, BIT_DEPTH_8i, "a", "one ", describedAs("first"), Interpolation::Tetrahedral, 3);
    Lut3DOp const second(BIT_DEPTH_8i, BIT_DEPTH_16i, "b", "two", describedAs("second"), Interpolation::Trilinear, 2);
    std::unique_ptr<Lut3DOp> const composed = compose(first, second);
    EXPECT_EQ("ab", composed->getId());
    EXPECT_EQ("one two", composed->getName());
    EXPECT_THAT(composed->getDescriptions().getList(), ElementsAre("first", "second"));
    EXPECT_EQ(BIT_DEPTH_10i, composed->getInputBitDepth());
    EXPECT_EQ(BIT_DEPTH_16i, composed->getOutputBitDepth());
    EXPECT_EQ(Interpolation::Tetrahedral, composed->getInterpolation());
}

TEST(ComposeGrids, HasTheLargerGridOfTheTwo)
{
    EXPECT_EQ(pointsOf(17, 33), 33U);
    EXPECT_EQ(pointsOf(33, 17), 33U);
    EXPECT_EQ(pointsOf(17, 17), 17U);
}

// The first table turns the channels round, which is exact between its points too, so that samples meet points of the second.
TEST(ComposeGrids, GivesAtEachPointWhatOneTableAfterTheOtherGives)
{
    auto const turn = [](Colour const& in) { return Colour{in[1], in[2], in[0]}; };
    auto const mix = [](Colour const& in) {
        return Colour{0.8 * in[0] * in[0] + 0.2 * in[1], in[1] * (1.0 - 0.5 * in[2]), 1.0 - in[2] * in[0]};
    };
    for (unsigned int firstPoints : {3U, 9U})
    {
        SCOPED_TRACE(firstPoints);
        Lut3DOp const first = gridOf(BIT_DEPTH_8i, BIT_DEPTH_10i, firstPoints, Interpolation::Trilinear, turn);
        Lut3DOp const second = gridOf(BIT_DEPTH_10i, BIT_DEPTH_16i, 9, Interpolation::Tetrahedral, mix);
        Lut3DOp const expected =
            gridOf(BIT_DEPTH_8i, BIT_DEPTH_16i, 9, Interpolation::Trilinear, [&](Colour const& in) { return mix(turn(in)); });
        Array::Values const values = compose(first, second)->getArray().getValues();
        // A sample is off by some four roundings, times slopes of up to two in each channel, and is rounded six times more.
        double const tolerance = 65535 * (4 * 3 + 6) * 0x1p-24;
        ASSERT_EQ(expected.getArray().getValues().size(), values.size());
        for (std::size_t i = 0; i < values.size(); ++i)
            ASSERT_NEAR(expected.getArray().getValues()[i], values[i], tolerance) << i;
    }
}

TEST(ComposeGrids, EachTableIsInterpolatedByItsOwnRule)
{
    auto const corners = [](Interpolation interpolation)
    { return gridOf(BIT_DEPTH_32f, BIT_DEPTH_32f, 2, interpolation, whiteCorner); };
    auto const identity = [](Interpolation interpolation)
    { return gridOf(BIT_DEPTH_32f, BIT_DEPTH_32f, 3, interpolation, sameColour); };
    // The smaller table comes first: a new grid goes through it.
    EXPECT_EQ(0.125F, redInTheMiddle(*compose(corners(Interpolation::Trilinear), identity(Interpolation::Tetrahedral))));
    EXPECT_EQ(0.5F, redInTheMiddle(*compose(corners(Interpolation::Tetrahedral), identity(Interpolation::Trilinear))));
    // It comes second: the first table's values go through it.
    EXPECT_EQ(0.125F, redInTheMiddle(*compose(identity(Interpolation::Tetrahedral), corners(Interpolation::Trilinear))));
    EXPECT_EQ(0.5F, redInTheMiddle(*compose(identity(Interpolation::Trilinear), corners(Interpolation::Tetrahedral))));
}

TEST(ComposeGrids, WhatTheFirstGivesBeyondTheSecondsDomainIsClamped)
{
    auto const stretch = [](Colour const& in) { return Colour{3.0 * in[0] - 1.0, 0.5, 0.5}; };
    Lut3DOp const first = gridOf(BIT_DEPTH_32f, BIT_DEPTH_8i, 2, Interpolation::Trilinear, stretch);
    Lut3DOp const second = gridOf(BIT_DEPTH_8i, BIT_DEPTH_32f, 2, Interpolation::Trilinear, sameColour);
    std::unique_ptr<Lut3DOp> const composed = compose(first, second);
    EXPECT_EQ(0.0F, composed->getArray().get(0));
    EXPECT_EQ(1.0F, composed->getArray().get(3 * 4));
}

TEST(ComposeGrids, HasTheBypassOfTheFirst)
{
    Lut3DOp first(2);
    first.setBypass(bypass(false, true));
    expectBypassOfFirst(compose(first, Lut3DOp(3)), first);
    expectBypassOfFirst(compose(first, Lut3DOp(2)), first);
}

TEST(ComposeGrids, RefusesUnequalDepthsBetweenThem)
{
    Lut3DOp const first(BIT_DEPTH_32f, BIT_DEPTH_10i, "", "first", Descriptions(), Interpolation::Default, 2);
    Lut3DOp const second(BIT_DEPTH_8i, BIT_DEPTH_32f, "", "second", Descriptions(), Interpolation::Default, 2);
    EXPECT_EQ(failureOf([&] { compose(first, second); }), kMismatch);
}

} // namespace
