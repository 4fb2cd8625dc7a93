// The model of the dither.
#include "transform/ditherOp.h"

#include "support/failure.h"
#include "transform/opList.h"

#include <gtest/gtest.h>

#include <memory>

using Color::DitherOp;

namespace
{

using Tavrin::BitDepth;

// Every depth, coarsest first, then the depths without steps.
constexpr BitDepth kIntegerDepths[] = {Tavrin::BIT_DEPTH_8i, Tavrin::BIT_DEPTH_10i, Tavrin::BIT_DEPTH_12i, Tavrin::BIT_DEPTH_16i};
constexpr BitDepth kFloatDepths[] = {Tavrin::BIT_DEPTH_16f, Tavrin::BIT_DEPTH_32f};

// As operators are compared in lists.
bool areEqual(Color::Op const& first, Color::Op const& second)
{
    return first == second;
}

} // namespace

TEST(DitherOp, IsOfFloatsAndWithoutADitherDepthWhenNew)
{
    DitherOp const op;
    EXPECT_EQ(op.getInputBitDepth(), Tavrin::BIT_DEPTH_32f);
    EXPECT_EQ(op.getOutputBitDepth(), Tavrin::BIT_DEPTH_32f);
    EXPECT_EQ(op.getDitherBitDepth(), Tavrin::BIT_DEPTH_UNKNOWN);
    EXPECT_EQ(static_cast<unsigned int>(op.getOpType()), 10U);
    EXPECT_EQ(op.getOpTypeName(), "Dither");
    EXPECT_EQ(op.getMinimumVersion(), 1.3F);
}

TEST(DitherOp, NeedsADitherDepth)
{
    DitherOp op;
    EXPECT_EQ(failureOf([&] { op.validate(); }), (Failure{0x210001, "'DitherBitDepth' attribute missing in Dither"}));
    op.setId("abc");
    EXPECT_EQ(failureOf([&] { op.validate(); }), (Failure{0x210001, "'DitherBitDepth' attribute missing in abc"}));
    op.setDitherBitDepth(Tavrin::BIT_DEPTH_8i);
    EXPECT_EQ(failureOf([&] { op.validate(); }), Failure{});
    EXPECT_EQ(failureOf([] { DitherOp(Tavrin::BIT_DEPTH_16i, Tavrin::BIT_DEPTH_8i, Tavrin::BIT_DEPTH_UNKNOWN); }).id, 0x210001U);
}

TEST(DitherOp, NeedsDepthsOfItsOwnFirst)
{
    EXPECT_EQ(failureOf([] { DitherOp(Tavrin::BIT_DEPTH_UNKNOWN, Tavrin::BIT_DEPTH_8i, Tavrin::BIT_DEPTH_UNKNOWN); }),
              (Failure{0x210001, "'InBitDepth' attribute missing in Dither"}));
}

TEST(DitherOp, IsBypassedBetweenEqualDepths)
{
    for (BitDepth depth : kIntegerDepths)
        EXPECT_TRUE(DitherOp::wouldDitherBeBypassed(depth, depth));
    for (BitDepth depth : kFloatDepths)
        EXPECT_TRUE(DitherOp::wouldDitherBeBypassed(depth, depth));
}

TEST(DitherOp, IsBypassedForADitherDepthWithoutSteps)
{
    for (BitDepth ditherDepth : kFloatDepths)
    {
        for (BitDepth in : kIntegerDepths)
            EXPECT_TRUE(DitherOp::wouldDitherBeBypassed(in, ditherDepth));
        for (BitDepth in : kFloatDepths)
            EXPECT_TRUE(DitherOp::wouldDitherBeBypassed(in, ditherDepth));
    }
}

TEST(DitherOp, IsNeverBypassedFromFloatsToSteps)
{
    for (BitDepth in : kFloatDepths)
    {
        for (BitDepth ditherDepth : kIntegerDepths)
            EXPECT_FALSE(DitherOp::wouldDitherBeBypassed(in, ditherDepth));
    }
}

TEST(DitherOp, IsBypassedBetweenIntegersWhereTheInputIsCoarser)
{
    for (std::size_t in = 0; in < std::size(kIntegerDepths); ++in)
    {
        for (std::size_t dither = 0; dither < std::size(kIntegerDepths); ++dither)
            EXPECT_EQ(DitherOp::wouldDitherBeBypassed(kIntegerDepths[in], kIntegerDepths[dither]), in <= dither);
    }
}

TEST(DitherOp, IsAnIdentityWhereItWouldBeBypassed)
{
    auto const isIdentity = [](BitDepth in, BitDepth ditherDepth) { return DitherOp(in, in, ditherDepth).isIdentity(); };
    EXPECT_FALSE(isIdentity(Tavrin::BIT_DEPTH_16i, Tavrin::BIT_DEPTH_8i));
    EXPECT_TRUE(isIdentity(Tavrin::BIT_DEPTH_8i, Tavrin::BIT_DEPTH_10i));
    EXPECT_FALSE(isIdentity(Tavrin::BIT_DEPTH_32f, Tavrin::BIT_DEPTH_8i));
    EXPECT_TRUE(isIdentity(Tavrin::BIT_DEPTH_32f, Tavrin::BIT_DEPTH_16f));
}

TEST(DitherOp, IsANoopOnlyBetweenEqualDepths)
{
    EXPECT_TRUE(DitherOp(Tavrin::BIT_DEPTH_8i, Tavrin::BIT_DEPTH_8i, Tavrin::BIT_DEPTH_10i).isNoop());
    EXPECT_FALSE(DitherOp(Tavrin::BIT_DEPTH_8i, Tavrin::BIT_DEPTH_16i, Tavrin::BIT_DEPTH_10i).isNoop());
    EXPECT_FALSE(DitherOp(Tavrin::BIT_DEPTH_16i, Tavrin::BIT_DEPTH_16i, Tavrin::BIT_DEPTH_10i).isNoop());
}

TEST(DitherOp, EqualsAnotherWithADifferentDitherDepth)
{
    DitherOp const op(Tavrin::BIT_DEPTH_16i, Tavrin::BIT_DEPTH_8i, Tavrin::BIT_DEPTH_8i);
    EXPECT_TRUE(areEqual(op, DitherOp(Tavrin::BIT_DEPTH_16i, Tavrin::BIT_DEPTH_8i, Tavrin::BIT_DEPTH_10i)));
    EXPECT_FALSE(areEqual(op, DitherOp(Tavrin::BIT_DEPTH_16i, Tavrin::BIT_DEPTH_10i, Tavrin::BIT_DEPTH_8i)));
}

TEST(DitherOp, CloneKeepsTheDitherDepth)
{
    DitherOp const op(Tavrin::BIT_DEPTH_16i, Tavrin::BIT_DEPTH_8i, Tavrin::BIT_DEPTH_8i);
    std::unique_ptr<Color::Op> const clone(op.clone());
    EXPECT_EQ(dynamic_cast<DitherOp const&>(*clone).getDitherBitDepth(), Tavrin::BIT_DEPTH_8i);
}

TEST(DitherOp, HasNoInverse)
{
    DitherOp const op(Tavrin::BIT_DEPTH_16i, Tavrin::BIT_DEPTH_8i, Tavrin::BIT_DEPTH_8i);
    Color::OpList list;
    EXPECT_EQ(failureOf([&] { op.inverse(list); }), (Failure{0x210014, "Dither inverse not supported"}));
}
