// The model of the gamut map.
#include "transform/gamutMapOp.h"

#include "support/failure.h"
#include "transform/hueVectorOp.h"
#include "transform/opList.h"

#include <gtest/gtest.h>

#include <memory>

using Color::GamutMapOp;

namespace
{

using Style = GamutMapOp::GamutMapStyle;

GamutMapOp gamutMap(Style style)
{
    return {Tavrin::BIT_DEPTH_16f, Tavrin::BIT_DEPTH_16f, style};
}

// As operators are compared in lists.
bool areEqual(Color::Op const& first, Color::Op const& second)
{
    return first == second;
}

} // namespace

TEST(GamutMapOp, IsOfFloatsAndDoesNothingWhenNew)
{
    GamutMapOp const op;
    EXPECT_EQ(op.getInputBitDepth(), Tavrin::BIT_DEPTH_32f);
    EXPECT_EQ(op.getOutputBitDepth(), Tavrin::BIT_DEPTH_32f);
    EXPECT_EQ(op.getStyle(), Style::None);
    EXPECT_EQ(static_cast<unsigned int>(op.getOpType()), 11U);
    EXPECT_EQ(op.getOpTypeName(), "GamutMap");
    EXPECT_EQ(op.getMinimumVersion(), 1.4F);
}

TEST(GamutMapOp, FindsStylesWithoutRegardToCase)
{
    EXPECT_EQ(GamutMapOp::getGamutMapStyle("none"), Style::None);
    EXPECT_EQ(GamutMapOp::getGamutMapStyle("dw3"), Style::DW3);
    EXPECT_EQ(GamutMapOp::getGamutMapStyle("DW3"), Style::DW3);
    EXPECT_EQ(failureOf([] { GamutMapOp::getGamutMapStyle("dw4"); }), (Failure{0x2e0001, "Unrecognized Gamut Map style: dw4"}));
    EXPECT_EQ(failureOf([] { GamutMapOp::getGamutMapStyle(""); }), (Failure{0x2e0001, "Unrecognized Gamut Map style: "}));
    EXPECT_EQ(failureOf([] { GamutMapOp::getGamutMapStyle(nullptr); }).id, 0x2e0001U);
}

TEST(GamutMapOp, NamesItsStyles)
{
    EXPECT_STREQ(GamutMapOp::getStyleName(Style::None), "none");
    EXPECT_STREQ(GamutMapOp::getStyleName(Style::DW3), "dw3");
    EXPECT_STREQ(GamutMapOp::getStyleName(static_cast<Style>(2)), "");
}

TEST(GamutMapOp, StyleNoneIsTheIdentity)
{
    EXPECT_TRUE(gamutMap(Style::None).isIdentity());
    EXPECT_TRUE(gamutMap(Style::None).isNoop());
    EXPECT_FALSE(GamutMapOp(Tavrin::BIT_DEPTH_8i, Tavrin::BIT_DEPTH_16f, Style::None).isNoop());
    EXPECT_FALSE(gamutMap(Style::DW3).isIdentity());
    EXPECT_FALSE(gamutMap(Style::DW3).isNoop());
}

TEST(GamutMapOp, ComparesStyleAndBase)
{
    EXPECT_TRUE(areEqual(gamutMap(Style::DW3), gamutMap(Style::DW3)));
    EXPECT_FALSE(areEqual(gamutMap(Style::DW3), gamutMap(Style::None)));
    EXPECT_FALSE(areEqual(gamutMap(Style::DW3), GamutMapOp(Tavrin::BIT_DEPTH_16f, Tavrin::BIT_DEPTH_32f, Style::DW3)));
    EXPECT_FALSE(areEqual(GamutMapOp(), Color::HueVectorOp()));
}

TEST(GamutMapOp, InvertedDoesNothing)
{
    GamutMapOp op = gamutMap(Style::DW3);
    op.invert();
    EXPECT_EQ(op.getStyle(), Style::None);
    op.invert();
    EXPECT_EQ(op.getStyle(), Style::None);
}

TEST(GamutMapOp, HasNoInverseInAList)
{
    Color::OpList list;
    EXPECT_EQ(failureOf([&] { gamutMap(Style::DW3).inverse(list); }), (Failure{0x210014, "GamutMap inverse not supported"}));
}

TEST(GamutMapOp, NeedsDepths)
{
    GamutMapOp op;
    EXPECT_EQ(failureOf([&] { op.validate(); }), Failure{});
    op.setOutputBitDepth(Tavrin::BIT_DEPTH_UNKNOWN);
    EXPECT_EQ(failureOf([&] { op.validate(); }), (Failure{0x210001, "'OutBitDepth' attribute missing in GamutMap"}));
}

TEST(GamutMapOp, CloneKeepsTheStyle)
{
    GamutMapOp const op = gamutMap(Style::DW3);
    std::unique_ptr<Color::Op> const clone(op.clone());
    EXPECT_TRUE(areEqual(*clone, op));
}
