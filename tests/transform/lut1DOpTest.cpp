// The one-dimensional table: identities, depths, look-up domains, validation, equality. Expected values are closed formulas in
// double precision or worked out by hand.
#include "transform/lut1DOp.h"
#include "support/failure.h"
#include "transform/invLut1DOp.h"
#include "transform/opList.h"
#include "transform/tableValues.h"

#include <gmock/gmock.h>

#include <memory>
#include <vector>

using namespace Color;
using namespace Tavrin;
using testing::Each;
using testing::ElementsAre;

namespace
{

using InterpolationAlgo = Lut1DOp::InterpolationAlgo;
using HueAdjust = Lut1DOp::HueAdjust;

constexpr BitDepth kDepths[] = {BIT_DEPTH_8i, BIT_DEPTH_10i, BIT_DEPTH_12i, BIT_DEPTH_16i, BIT_DEPTH_16f, BIT_DEPTH_32f};
// Full signal of these depths: 2^n - 1 for integers, 1 for floats.
constexpr double kMaxima[] = {255, 1023, 4095, 65535, 1, 1};

// The error of one single-precision quotient and one product.
constexpr double kRounding = 3 * 0x1p-24;

Lut1DOp lut(BitDepth in, BitDepth out, HalfFlags flags, unsigned int dimension)
{
    return Lut1DOp(in, out, "id", "name", Descriptions(), InterpolationAlgo::Default, flags, dimension);
}

std::unique_ptr<Op> inverseOf(Op const& op)
{
    OpList list;
    op.inverse(list);
    return std::unique_ptr<Op>(list.remove(0));
}

} // namespace

TEST(Lut1DOp, NamesItsType)
{
    Lut1DOp const op(2);
    EXPECT_EQ(static_cast<unsigned int>(op.getOpType()), 0U);
    EXPECT_EQ(op.getOpTypeName(), "LUT 1D");
    EXPECT_FALSE(op.isDynamic());
}

TEST(Lut1DOp, OfTwoRowsIsAnIdentity)
{
    Lut1DOp const op(2);
    EXPECT_EQ(op.getInputBitDepth(), BIT_DEPTH_32f);
    EXPECT_EQ(op.getOutputBitDepth(), BIT_DEPTH_32f);
    EXPECT_EQ(op.getInterpolation(), InterpolationAlgo::Default);
    EXPECT_EQ(op.getHueAdjust(), HueAdjust::None);
    EXPECT_EQ(op.getHalfFlags(), HALF_FLAGS_NONE);
    EXPECT_EQ(op.getIndexMapping().getDimension(), 0U);
    EXPECT_EQ(op.getArray().getNumColorComponents(), 3U);
    EXPECT_THAT(op.getArray().getValues(), ElementsAre(0, 0, 0, 1, 1, 1));
    EXPECT_TRUE(op.isIdentity());
    EXPECT_TRUE(op.isNoop());
    EXPECT_EQ(failureOf([&] { op.validate(); }), Failure{});
}

TEST(Lut1DOp, IsFilledAsAnIdentityOfEveryDepth)
{
    for (std::size_t depth = 0; depth < std::size(kDepths); ++depth)
    {
        for (unsigned int const dimension : {2U, 3U, 33U, 256U, 65536U})
        {
            Lut1DOp const op = lut(BIT_DEPTH_32f, kDepths[depth], HALF_FLAGS_NONE, dimension);
            ASSERT_EQ(op.getArray().getValues().size(), dimension * 3U);
            for (unsigned int row = 0; row < dimension; ++row)
            {
                double const expected = row * kMaxima[depth] / (dimension - 1);
                for (unsigned int component = 0; component < 3; ++component)
                    ASSERT_NEAR(op.getArray().get(row * 3 + component), expected, expected * kRounding)
                        << dimension << ", row " << row;
            }
            EXPECT_TRUE(op.isIdentity());
        }
    }
}

TEST(Lut1DOp, IsFilledWithTheValuesOfAllHalfPatternsForAHalfDomain)
{
    for (HalfFlags const flags : {1U, 3U})
    {
        for (std::size_t depth = 0; depth < std::size(kDepths); ++depth)
        {
            Lut1DOp const op(BIT_DEPTH_8i, kDepths[depth], "id", "name", Descriptions(), InterpolationAlgo::Linear, flags);
            ASSERT_EQ(op.getArray().getDimension(), 65536U);
            for (unsigned int row = 0; row < 65536; ++row)
            {
                // A half times 2^n - 1 has more bits than a float, so it is rounded once.
                auto const expected = static_cast<float>(halfValue(row) * kMaxima[depth]);
                for (unsigned int component = 0; component < 3; ++component)
                {
                    float const value = op.getArray().get(row * 3 + component);
                    if (std::isnan(expected))
                        ASSERT_TRUE(std::isnan(value)) << row;
                    else
                        ASSERT_EQ(value, expected) << row;
                }
            }
            EXPECT_TRUE(op.isIdentity());
        }
    }
}

TEST(Lut1DOp, HasOneRowPerCodeWhereItsSizeIsNotGiven)
{
    EXPECT_EQ(Lut1DOp::getLutIdealSize(BIT_DEPTH_8i, HALF_FLAGS_NONE), 256U);
    EXPECT_EQ(Lut1DOp::getLutIdealSize(BIT_DEPTH_10i, HALF_FLAGS_OUTPUT_RAW_HALFS), 1024U);
    EXPECT_EQ(Lut1DOp::getLutIdealSize(BIT_DEPTH_12i, HALF_FLAGS_NONE), 4096U);
    EXPECT_EQ(Lut1DOp::getLutIdealSize(BIT_DEPTH_16i, HALF_FLAGS_NONE), 65536U);
    EXPECT_EQ(Lut1DOp::getLutIdealSize(BIT_DEPTH_16f, HALF_FLAGS_NONE), 65536U);
    EXPECT_EQ(Lut1DOp::getLutIdealSize(BIT_DEPTH_32f, HALF_FLAGS_NONE), 65536U);
    EXPECT_EQ(Lut1DOp::getLutIdealSize(BIT_DEPTH_8i, HALF_FLAGS_INPUT_HALF_DOMAIN), 65536U);

    Lut1DOp const op(BIT_DEPTH_10i, BIT_DEPTH_8i, "id", "name", Descriptions(), InterpolationAlgo::Cubic, HALF_FLAGS_NONE);
    EXPECT_EQ(op.getArray().getDimension(), 1024U);
    EXPECT_EQ(op.getInterpolation(), InterpolationAlgo::Cubic);
}

TEST(Lut1DOp, KnowsItsNamesExactly)
{
    EXPECT_EQ(Lut1DOp::getInterpolation("linear"), InterpolationAlgo::Linear);
    EXPECT_EQ(Lut1DOp::getInterpolation("cubic"), InterpolationAlgo::Cubic);
    for (char const* const other : {"default", "", "Linear", "CUBIC", "linear ", static_cast<char const*>(nullptr)})
        EXPECT_EQ(Lut1DOp::getInterpolation(other), InterpolationAlgo::Default);
    EXPECT_STREQ(Lut1DOp::getInterpolationName(InterpolationAlgo::Linear), "linear");
    EXPECT_STREQ(Lut1DOp::getInterpolationName(InterpolationAlgo::Cubic), "cubic");
    EXPECT_STREQ(Lut1DOp::getInterpolationName(InterpolationAlgo::Default), "default");
    EXPECT_STREQ(Lut1DOp::getInterpolationName(static_cast<InterpolationAlgo>(3)), "default");
    EXPECT_STREQ(Lut1DOp::getHueAdjustName(HueAdjust::Dw3), "dw3");
    EXPECT_STREQ(Lut1DOp::getHueAdjustName(HueAdjust::None), "none");
    EXPECT_STREQ(Lut1DOp::getHueAdjustName(static_cast<HueAdjust>(2)), "none");
}

TEST(Lut1DOp, SetsOneFlagAndLeavesTheTableAlone)
{
    Lut1DOp op(2);
    op.setInputHalfDomain(true);
    EXPECT_EQ(op.getHalfFlags(), 1U);
    op.setOutputRawHalfs(true);
    EXPECT_EQ(op.getHalfFlags(), 3U);
    op.setInputHalfDomain(false);
    EXPECT_EQ(op.getHalfFlags(), 2U);
    EXPECT_TRUE(op.isOutputRawHalfs());
    op.setOutputRawHalfs(false);
    EXPECT_EQ(op.getHalfFlags(), 0U);
    EXPECT_THAT(op.getArray().getValues(), ElementsAre(0, 0, 0, 1, 1, 1));
}

TEST(Lut1DOp, IsIndexedByPixelsWithOneRowPerCode)
{
    Lut1DOp const op = lut(BIT_DEPTH_10i, BIT_DEPTH_10i, HALF_FLAGS_NONE, 1024);
    EXPECT_TRUE(op.mayLookup(BIT_DEPTH_10i));
    for (BitDepth const other : {BIT_DEPTH_8i, BIT_DEPTH_12i, BIT_DEPTH_16i, BIT_DEPTH_16f, BIT_DEPTH_32f})
        EXPECT_FALSE(op.mayLookup(other));
    EXPECT_FALSE(lut(BIT_DEPTH_10i, BIT_DEPTH_10i, HALF_FLAGS_NONE, 1023).mayLookup(BIT_DEPTH_10i));
    // 65536 rows without a half domain are codes of 16 bits, not halfs.
    EXPECT_TRUE(lut(BIT_DEPTH_16f, BIT_DEPTH_16f, HALF_FLAGS_NONE, 65536).mayLookup(BIT_DEPTH_16i));
    EXPECT_FALSE(lut(BIT_DEPTH_16f, BIT_DEPTH_16f, HALF_FLAGS_NONE, 65536).mayLookup(BIT_DEPTH_16f));
}

TEST(Lut1DOp, IsIndexedByHalfsAloneWithAHalfDomain)
{
    Lut1DOp const op = lut(BIT_DEPTH_16f, BIT_DEPTH_16f, HALF_FLAGS_INPUT_HALF_DOMAIN, 65536);
    EXPECT_TRUE(op.mayLookup(BIT_DEPTH_16f));
    for (BitDepth const other : {BIT_DEPTH_8i, BIT_DEPTH_10i, BIT_DEPTH_12i, BIT_DEPTH_16i, BIT_DEPTH_32f})
        EXPECT_FALSE(op.mayLookup(other));
}

TEST(Lut1DOp, MakesADomainOfEveryValueOfADepth)
{
    Descriptions descriptions;
    descriptions += "text";
    Lut1DOp const op(BIT_DEPTH_32f, BIT_DEPTH_8i, "id", "name", descriptions, InterpolationAlgo::Linear,
                     HALF_FLAGS_OUTPUT_RAW_HALFS, 17);
    unsigned int const sizes[] = {256, 1024, 4096, 65536, 65536, 65536};
    for (std::size_t i = 0; i < std::size(kDepths); ++i)
    {
        std::unique_ptr<Lut1DOp> const domain = op.makeLookupDomain(kDepths[i]);
        EXPECT_EQ(domain->getInputBitDepth(), kDepths[i]);
        EXPECT_EQ(domain->getOutputBitDepth(), kDepths[i]);
        EXPECT_EQ(domain->getId(), "id");
        EXPECT_EQ(domain->getName(), "name");
        EXPECT_EQ(domain->getDescriptions(), descriptions);
        EXPECT_EQ(domain->getInterpolation(), InterpolationAlgo::Linear);
        EXPECT_EQ(domain->getHalfFlags(), i < 4 ? 0U : 1U);
        EXPECT_EQ(domain->getArray().getDimension(), sizes[i]);
        EXPECT_TRUE(domain->isIdentity());
    }
}

TEST(Lut1DOp, IsNoIdentityBeyondAMillionthOfTheRange)
{
    Lut1DOp op = lut(BIT_DEPTH_10i, BIT_DEPTH_10i, HALF_FLAGS_NONE, 1024);
    op.getArray().set(1023 * 3 + 2, 1023.0009F); // Off by less than 0.001023.
    EXPECT_TRUE(op.isIdentity());
    op.getArray().set(1023 * 3 + 2, 1023.0012F);
    EXPECT_FALSE(op.isIdentity());
    EXPECT_FALSE(op.isNoop());
}

TEST(Lut1DOp, IsNoIdentityBeyondOneUnitInTheLastPlaceOfAHalf)
{
    Lut1DOp op = lut(BIT_DEPTH_16f, BIT_DEPTH_32f, HALF_FLAGS_INPUT_HALF_DOMAIN, 65536);
    unsigned int const one = 0x3C00;
    op.getArray().set(one * 3 + 1, static_cast<float>(halfValue(one + 1)));
    EXPECT_TRUE(op.isIdentity());
    op.getArray().set(one * 3 + 1, static_cast<float>(halfValue(one + 2)));
    EXPECT_FALSE(op.isIdentity());
    // Zeros of both signs are one value, next to the smallest numbers of both signs.
    op = lut(BIT_DEPTH_16f, BIT_DEPTH_32f, HALF_FLAGS_INPUT_HALF_DOMAIN, 65536);
    op.getArray().set(0, -static_cast<float>(halfValue(1)));
    EXPECT_TRUE(op.isIdentity());
    op.getArray().set(0, -static_cast<float>(halfValue(2)));
    EXPECT_FALSE(op.isIdentity());
}

TEST(Lut1DOp, ComparesInfinitiesAndNaNsOfAHalfDomainWithThemselves)
{
    Lut1DOp const identity = lut(BIT_DEPTH_16f, BIT_DEPTH_32f, HALF_FLAGS_INPUT_HALF_DOMAIN, 65536);
    auto const withValue = [&](unsigned int row, float value)
    {
        Lut1DOp op = identity;
        op.getArray().set(row * 3, value);
        return op.isIdentity();
    };
    EXPECT_FALSE(withValue(0x7C00, 65504.0F)); // One unit below infinity.
    EXPECT_FALSE(withValue(0x7C00, -kInfinity));
    EXPECT_FALSE(withValue(0x7C01, 0.0F));
    EXPECT_FALSE(withValue(0x3C00, kNaN));
    EXPECT_TRUE(withValue(0x7E00, -kNaN));
}

TEST(Lut1DOp, IsNoNoopBetweenDepths)
{
    EXPECT_TRUE(lut(BIT_DEPTH_10i, BIT_DEPTH_8i, HALF_FLAGS_NONE, 256).isIdentity());
    EXPECT_FALSE(lut(BIT_DEPTH_10i, BIT_DEPTH_8i, HALF_FLAGS_NONE, 256).isNoop());
}

TEST(Lut1DOp, OfNoRowsIsAnIdentity)
{
    EXPECT_TRUE(Lut1DOp(0).isIdentity());
}

TEST(Lut1DOp, ScalesItsValuesWithTheOutputDepth)
{
    Lut1DOp op = lut(BIT_DEPTH_10i, BIT_DEPTH_10i, HALF_FLAGS_NONE, 2);
    setValues(op.getArray(), {0, 1023, 511.5F, 2046, -1023, 1});
    op.setOutputBitDepth(BIT_DEPTH_32f);
    EXPECT_EQ(op.getOutputBitDepth(), BIT_DEPTH_32f);
    EXPECT_EQ(op.getInputBitDepth(), BIT_DEPTH_10i);
    std::vector<double> const expected = {0, 1, 0.5, 2, -1, 1 / 1023.0};
    for (unsigned int i = 0; i < 6; ++i)
        EXPECT_NEAR(op.getArray().get(i), expected[i], std::abs(expected[i]) * kRounding);
    op.setOutputBitDepth(BIT_DEPTH_10i);
    EXPECT_NEAR(op.getArray().get(1), 1023, 1023 * kRounding * 2);
}

TEST(Lut1DOp, KeepsItsValuesWhenTheInputDepthChangesOrFullSignalIsTheSame)
{
    Lut1DOp op = lut(BIT_DEPTH_10i, BIT_DEPTH_16f, HALF_FLAGS_NONE, 2);
    setValues(op.getArray(), {0, 0.1F, 0.2F, 0.3F, kInfinity, 1});
    op.setInputBitDepth(BIT_DEPTH_16i);
    op.setOutputBitDepth(BIT_DEPTH_32f);
    EXPECT_EQ(op.getInputBitDepth(), BIT_DEPTH_16i);
    EXPECT_THAT(op.getArray().getValues(), ElementsAre(0, 0.1F, 0.2F, 0.3F, kInfinity, 1));
}

TEST(Lut1DOp, IsEqualToACloneOnly)
{
    Lut1DOp const op = lut(BIT_DEPTH_10i, BIT_DEPTH_10i, HALF_FLAGS_NONE, 4);
    std::unique_ptr<Op> const clone(op.clone());
    EXPECT_TRUE(areEqual(op, *clone));

    auto const differsWhen = [&](auto change)
    {
        Lut1DOp other = op;
        change(other);
        return !areEqual(op, other) && !areEqual(other, op);
    };
    EXPECT_TRUE(differsWhen([](Lut1DOp& other) { other.setInterpolation(InterpolationAlgo::Linear); }));
    EXPECT_TRUE(differsWhen([](Lut1DOp& other) { other.setHueAdjust(HueAdjust::Dw3); }));
    EXPECT_TRUE(differsWhen([](Lut1DOp& other) { other.setOutputRawHalfs(true); }));
    EXPECT_TRUE(differsWhen([](Lut1DOp& other) { other.setInputHalfDomain(true); }));
    EXPECT_TRUE(differsWhen([](Lut1DOp& other) { other.setId("other"); }));
    EXPECT_TRUE(differsWhen([](Lut1DOp& other) { other.getArray().set(0, 1.0F); }));
    EXPECT_TRUE(differsWhen([](Lut1DOp& other) { other.getIndexMapping().getIndices()[1].push_back({0.0F, 1.0F}); }));
    EXPECT_TRUE(differsWhen([](Lut1DOp& other) { other.getIndexMapping() = IndexMapping(1); }));
    EXPECT_FALSE(areEqual(op, InvLut1DOp()));
}

TEST(Lut1DOp, CloneOwnsItsValues)
{
    Lut1DOp op(2);
    std::unique_ptr<Op> const clone(op.clone());
    op.getArray().set(0, 0.5F);
    EXPECT_EQ(static_cast<Lut1DOp const&>(*clone).getArray().get(0), 0.0F);
}

TEST(Lut1DOp, NeedsAVersionThatKnowsItsHueAdjustment)
{
    Lut1DOp op(2);
    EXPECT_EQ(op.getMinimumVersion(), 1.3F);
    op.setHueAdjust(HueAdjust::Dw3);
    EXPECT_EQ(op.getMinimumVersion(), 1.4F);
}

TEST(Lut1DOp, RefusesAHalfDomainOfAnotherSize)
{
    Lut1DOp const op = lut(BIT_DEPTH_16f, BIT_DEPTH_16f, HALF_FLAGS_INPUT_HALF_DOMAIN, 4096);
    EXPECT_EQ(failureOf([&] { op.validate(); }),
              (Failure{0x24000E, "4096 entries found, 65536 req'd for halfDomain lut LUT 1D: name "}));
}

TEST(Lut1DOp, RefusesAnArrayThatIsEmptyOrHasAWrongNumberOfValues)
{
    EXPECT_EQ(failureOf([] { lut(BIT_DEPTH_8i, BIT_DEPTH_8i, HALF_FLAGS_NONE, 0).validate(); }),
              (Failure{0x210003, "Array content for name illegal"}));
    Lut1DOp op(2);
    op.getArray().getValues().pop_back();
    EXPECT_EQ(failureOf([&] { op.validate(); }), (Failure{0x210003, "Array content for LUT 1D illegal"}));
}

TEST(Lut1DOp, RefusesAMissingDepthFirst)
{
    Lut1DOp op = lut(BIT_DEPTH_UNKNOWN, BIT_DEPTH_8i, HALF_FLAGS_INPUT_HALF_DOMAIN, 0);
    EXPECT_EQ(failureOf([&] { op.validate(); }), (Failure{0x210001, "'InBitDepth' attribute missing in name"}));
}

TEST(Lut1DOp, HasNoInverseWithAHueAdjustment)
{
    Lut1DOp op(2);
    op.setHueAdjust(HueAdjust::Dw3);
    OpList list;
    EXPECT_EQ(failureOf([&] { op.inverse(list); }), (Failure{0x210014, "LUT1D with hue adjust inverse not supported"}));
    EXPECT_TRUE(list.empty());
}

TEST(Lut1DOp, InverseIsAnInverseTable)
{
    Lut1DOp const op = lut(BIT_DEPTH_10i, BIT_DEPTH_12i, HALF_FLAGS_OUTPUT_RAW_HALFS, 5);
    std::unique_ptr<Op> const inverse = inverseOf(op);
    EXPECT_EQ(inverse->getOpType(), Op::OpType::InvLut1DOp);
    EXPECT_EQ(inverse->getInputBitDepth(), BIT_DEPTH_12i);
    EXPECT_EQ(inverse->getOutputBitDepth(), BIT_DEPTH_10i);
}

TEST(Lut1DOp, ReadsTheLowBitsOfANumberAsAHalf)
{
    EXPECT_EQ(Lut1DOp::rawHalfToFloat(0x3C00), 1.0F);
    EXPECT_EQ(Lut1DOp::rawHalfToFloat(0x3C00 + 0.99), 1.0F);
    EXPECT_EQ(Lut1DOp::rawHalfToFloat(0xC000 + 65536.0 * 7), -2.0F);
    EXPECT_EQ(Lut1DOp::rawHalfToFloat(-1.0 * 0x4400), static_cast<float>(halfValue(0x10000 - 0x4400))); // Two's complement.
    EXPECT_EQ(Lut1DOp::rawHalfToFloat(0x7C00), kInfinity);
    EXPECT_TRUE(std::isnan(Lut1DOp::rawHalfToFloat(0x7E00)));
    for (double const nothing : {static_cast<double>(kNaN), static_cast<double>(kInfinity), 1e300, -1e300})
        EXPECT_EQ(Lut1DOp::rawHalfToFloat(nothing), 0.0F);
}
