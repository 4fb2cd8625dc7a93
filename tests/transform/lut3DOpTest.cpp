// The three-dimensional table: identities, depths, validation, equality. Expected values are closed formulas in double precision or
// worked out by hand.
#include "transform/lut3DOp.h"
#include "support/failure.h"
#include "transform/matrixOp.h"
#include "transform/opList.h"
#include "transform/tableValues.h"

#include <gmock/gmock.h>

#include <memory>

using namespace Color;
using namespace Tavrin;
using testing::ElementsAre;

namespace
{

using InterpolationAlgo = Lut3DOp::InterpolationAlgo;

Lut3DOp grid(BitDepth in, BitDepth out, unsigned int dimension)
{
    return Lut3DOp(in, out, "id", "name", Descriptions(), InterpolationAlgo::Default, dimension);
}

} // namespace

TEST(Lut3DOp, NamesItsType)
{
    Lut3DOp const op(2);
    EXPECT_EQ(static_cast<unsigned int>(op.getOpType()), 2U);
    EXPECT_EQ(op.getOpTypeName(), "LUT 3D");
    EXPECT_EQ(op.getMinimumVersion(), 1.3F);
}

TEST(Lut3DOp, OfTwoPointsHoldsTheCornersOfTheUnitCubeWithBlueFastest)
{
    Lut3DOp const op(2);
    EXPECT_EQ(op.getInputBitDepth(), BIT_DEPTH_32f);
    EXPECT_EQ(op.getOutputBitDepth(), BIT_DEPTH_32f);
    EXPECT_EQ(op.getInterpolation(), InterpolationAlgo::Default);
    EXPECT_EQ(op.getIndexMapping().getDimension(), 0U);
    EXPECT_THAT(op.getArray().getValues(), ElementsAre(0, 0, 0, 0, 0, 1, 0, 1, 0, 0, 1, 1, 1, 0, 0, 1, 0, 1, 1, 1, 0, 1, 1, 1));
    EXPECT_TRUE(op.isIdentity());
    EXPECT_TRUE(op.isNoop());
}

TEST(Lut3DOp, IsFilledAsAnIdentityOfEveryDepth)
{
    struct Full
    {
        BitDepth depth;
        double signal;
    };
    for (Full const& full : {Full{BIT_DEPTH_8i, 255}, Full{BIT_DEPTH_10i, 1023}, Full{BIT_DEPTH_12i, 4095},
                             Full{BIT_DEPTH_16i, 65535}, Full{BIT_DEPTH_16f, 1}, Full{BIT_DEPTH_32f, 1}})
    {
        unsigned int const n = 17;
        Lut3DOp const op = grid(BIT_DEPTH_8i, full.depth, n);
        ASSERT_EQ(op.getArray().getNumValues(), n * n * n * 3);
        for (unsigned int i = 0; i < n * n * n; ++i)
        {
            unsigned int const point[] = {i / n / n, i / n % n, i % n};
            for (unsigned int component = 0; component < 3; ++component)
            {
                double const expected = point[component] * full.signal / (n - 1);
                ASSERT_NEAR(op.getArray().get(i * 3 + component), expected, expected * 3 * 0x1p-24) << i;
            }
        }
        EXPECT_TRUE(op.isIdentity());
    }
}

TEST(Lut3DOp, IsNoIdentityBeyondATenThousandthOfACode)
{
    Lut3DOp op = grid(BIT_DEPTH_8i, BIT_DEPTH_8i, 2);
    op.getArray().set(23, 255.00009F);
    EXPECT_TRUE(op.isIdentity());
    op.getArray().set(23, 255.00012F);
    EXPECT_FALSE(op.isIdentity());
    // Not relative to the depth.
    Lut3DOp wide = grid(BIT_DEPTH_16i, BIT_DEPTH_16i, 2);
    wide.getArray().set(0, 0.0002F);
    EXPECT_FALSE(wide.isIdentity());
}

TEST(Lut3DOp, OfNoPointsIsAnIdentity)
{
    EXPECT_TRUE(Lut3DOp(0).isIdentity());
}

TEST(Lut3DOp, IsNoNoopBetweenDepths)
{
    EXPECT_TRUE(grid(BIT_DEPTH_8i, BIT_DEPTH_10i, 2).isIdentity());
    EXPECT_FALSE(grid(BIT_DEPTH_8i, BIT_DEPTH_10i, 2).isNoop());
}

TEST(Lut3DOp, ScalesItsValuesWithTheOutputDepth)
{
    Lut3DOp op = grid(BIT_DEPTH_8i, BIT_DEPTH_16i, 2);
    op.setOutputBitDepth(BIT_DEPTH_32f);
    EXPECT_EQ(op.getOutputBitDepth(), BIT_DEPTH_32f);
    EXPECT_NEAR(op.getArray().get(23), 1.0, 3 * 0x1p-24);
    op.setInputBitDepth(BIT_DEPTH_32f);
    EXPECT_NEAR(op.getArray().get(23), 1.0, 3 * 0x1p-24);
}

TEST(Lut3DOp, KeepsItsValuesBetweenDepthsOfOneFullSignal)
{
    Lut3DOp op = grid(BIT_DEPTH_8i, BIT_DEPTH_16f, 2);
    op.getArray().set(0, 0.1F);
    op.setOutputBitDepth(BIT_DEPTH_32f);
    EXPECT_EQ(op.getArray().get(0), 0.1F);
    EXPECT_EQ(op.getOutputBitDepth(), BIT_DEPTH_32f);
}

TEST(Lut3DOp, KnowsItsNamesExactly)
{
    EXPECT_EQ(Lut3DOp::getInterpolation("trilinear"), InterpolationAlgo::Trilinear);
    EXPECT_EQ(Lut3DOp::getInterpolation("tetrahedral"), InterpolationAlgo::Tetrahedral);
    EXPECT_EQ(Lut3DOp::getInterpolation("4pt tetrahedral"), InterpolationAlgo::FourPointTetrahedral);
    for (char const* const other : {"default", "", "Trilinear", "TETRAHEDRAL", "4pt", static_cast<char const*>(nullptr)})
        EXPECT_EQ(Lut3DOp::getInterpolation(other), InterpolationAlgo::Default);
    EXPECT_STREQ(Lut3DOp::getInterpolationName(static_cast<InterpolationAlgo>(1)), "trilinear");
    EXPECT_STREQ(Lut3DOp::getInterpolationName(static_cast<InterpolationAlgo>(2)), "tetrahedral");
    EXPECT_STREQ(Lut3DOp::getInterpolationName(static_cast<InterpolationAlgo>(3)), "4pt tetrahedral");
    EXPECT_STREQ(Lut3DOp::getInterpolationName(static_cast<InterpolationAlgo>(0)), "default");
    EXPECT_STREQ(Lut3DOp::getInterpolationName(static_cast<InterpolationAlgo>(4)), "default");
}

TEST(Lut3DOp, MayHave129PointsPerAxisAndNoMore)
{
    EXPECT_EQ(Lut3DOp::maxSupportedDimension, 129U);
    EXPECT_EQ(failureOf([] { Lut3DOp(129).validate(); }), Failure{});
    EXPECT_EQ(failureOf([] { Lut3DOp(130).validate(); }), (Failure{0x25000D, "130 exceeds maximum supported dimension 129"}));
}

TEST(Lut3DOp, RefusesASingleComponent)
{
    Lut3DOp op = grid(BIT_DEPTH_8i, BIT_DEPTH_8i, 2);
    op.getArray().setNumColorComponents(1);
    EXPECT_EQ(failureOf([&] { op.validate(); }), (Failure{0x21000B, "LUT 3D wrong number of color components: 'name'"}));
    // Before the dimension is looked at.
    op.getArray().resize(130, 1);
    EXPECT_EQ(failureOf([&] { op.validate(); }).id, 0x21000BU);
}

TEST(Lut3DOp, RefusesAnArrayThatIsEmptyOrHasAWrongNumberOfValues)
{
    EXPECT_EQ(failureOf([] { grid(BIT_DEPTH_8i, BIT_DEPTH_8i, 0).validate(); }),
              (Failure{0x210003, "Array content for name illegal"}));
    Lut3DOp op(2);
    op.getArray().getValues().push_back(0.0F);
    EXPECT_EQ(failureOf([&] { op.validate(); }), (Failure{0x210003, "Array content for LUT 3D illegal"}));
}

TEST(Lut3DOp, RefusesAMissingDepth)
{
    EXPECT_EQ(failureOf([] { grid(BIT_DEPTH_8i, BIT_DEPTH_UNKNOWN, 2).validate(); }),
              (Failure{0x210001, "'OutBitDepth' attribute missing in name"}));
}

TEST(Lut3DOp, HasNoInverse)
{
    OpList list;
    EXPECT_EQ(failureOf([&] { Lut3DOp(2).inverse(list); }), (Failure{0x210014, "LUT 3D inverse not supported"}));
    EXPECT_TRUE(list.empty());
}

TEST(Lut3DOp, IsEqualToACloneOnly)
{
    Lut3DOp const op = grid(BIT_DEPTH_8i, BIT_DEPTH_8i, 3);
    std::unique_ptr<Op> const clone(op.clone());
    EXPECT_TRUE(areEqual(op, *clone));

    auto const differsWhen = [&](auto change)
    {
        Lut3DOp other = op;
        change(other);
        return !areEqual(op, other) && !areEqual(other, op);
    };
    EXPECT_TRUE(differsWhen([](Lut3DOp& other) { other.setInterpolation(InterpolationAlgo::Trilinear); }));
    EXPECT_TRUE(differsWhen([](Lut3DOp& other) { other.getArray().set(80, 1.0F); }));
    EXPECT_TRUE(differsWhen([](Lut3DOp& other) { other.setName("other"); }));
    EXPECT_TRUE(differsWhen([](Lut3DOp& other) { other.getIndexMapping() = IndexMapping(1); }));
    EXPECT_FALSE(areEqual(op, MatrixOp()));

    Lut3DOp trilinear = op;
    trilinear.setInterpolation(InterpolationAlgo::Trilinear);
    Lut3DOp tetrahedral = op;
    tetrahedral.setInterpolation(InterpolationAlgo::Tetrahedral);
    EXPECT_FALSE(areEqual(trilinear, tetrahedral));
}

TEST(Lut3DOp, ArrayTakesOverAnyArray)
{
    Lut3DOp::Lut3DArray source(BIT_DEPTH_10i, 3);
    source.setNumColorComponents(1);
    Lut3DOp op(2);
    op.getArray() = static_cast<Array const&>(source);
    EXPECT_EQ(op.getArray().getDimension(), 3U);
    EXPECT_EQ(op.getArray().getNumColorComponents(), 1U);
    EXPECT_EQ(op.getArray().getValues(), source.getValues());
}
