// The colour decision's model: styles, limits, identity, inverse and texts.
#include "transform/CDLOp.h"

#include "support/failure.h"
#include "transform/opList.h"

#include <gtest/gtest.h>

namespace
{

using Color::CDLOp;
using Style = CDLOp::CDLStyle;
using Channels = CDLOp::ChannelParams;
using Tavrin::BIT_DEPTH_10i;
using Tavrin::BIT_DEPTH_8i;

Failure validation(CDLOp const& op)
{
    return failureOf([&] { op.validate(); });
}

} // namespace

TEST(CDLOp, IsAnIdentityOfVersion12ForwardByDefault)
{
    CDLOp const op;
    EXPECT_EQ(static_cast<unsigned int>(op.getOpType()), 9U);
    EXPECT_EQ(op.getOpTypeName(), "ASC CDL");
    EXPECT_EQ(op.getCDLStyle(), Style::V1_2Fwd);
    EXPECT_EQ(op.getSlopeParams(), Channels(1, 1, 1, 1));
    EXPECT_EQ(op.getOffsetParams(), Channels(0, 0, 0, 1));
    EXPECT_EQ(op.getPowerParams(), Channels(1, 1, 1, 1));
    EXPECT_EQ(op.getSaturation(), 1.0);
    EXPECT_TRUE(op.isIdentity());
    EXPECT_TRUE(op.isNoop());
    EXPECT_EQ(op.getMinimumVersion(), 1.3F);
    EXPECT_EQ(validation(op), Failure());
}

TEST(CDLOp, KnowsItsStylesByNameInAnyCase)
{
    EXPECT_EQ(CDLOp::getCDLStyle("v1.2_Fwd"), Style::V1_2Fwd);
    EXPECT_EQ(CDLOp::getCDLStyle("V1.2_REV"), Style::V1_2Rev);
    EXPECT_EQ(CDLOp::getCDLStyle("noclampfwd"), Style::NoClampFwd);
    EXPECT_EQ(CDLOp::getCDLStyle("noClampRev"), Style::NoClampRev);
    EXPECT_STREQ(CDLOp::getCDLStyleName(Style::V1_2Fwd), "v1.2_Fwd");
    EXPECT_STREQ(CDLOp::getCDLStyleName(static_cast<Style>(4)), "");
    EXPECT_EQ(failureOf([] { CDLOp::getCDLStyle("v1.2"); }), (Failure{0x2c0002, "Unrecognized CDL style: v1.2"}));
    EXPECT_EQ(failureOf([] { CDLOp::getCDLStyle(""); }).id, 0x2c0002U);
    EXPECT_EQ(failureOf([] { CDLOp::getCDLStyle(nullptr); }).id, 0x2c0002U);
}

TEST(CDLOp, ASlopeOfZeroIsGoodAndANegativeOneIsNot)
{
    CDLOp op;
    op.setSlopeParams({0, 0, 0});
    EXPECT_EQ(validation(op), Failure());
    op.setSlopeParams({1, 1, -0.5});
    EXPECT_EQ(validation(op), (Failure{0x2c0004, "Invalid slope (-0.500000), slope should be greater than 0.000000"}));
}

TEST(CDLOp, APowerOfZeroIsNotGood)
{
    CDLOp op;
    op.setPowerParams({1, 0, 1});
    EXPECT_EQ(validation(op), (Failure{0x2c0004, "Invalid power (0.000000), power should be greater than 0.000000"}));
}

TEST(CDLOp, ASaturationOfZeroIsGoodAndANegativeOneIsNot)
{
    CDLOp op;
    op.setSaturation(0.0);
    EXPECT_EQ(validation(op), Failure());
    op.setSaturation(-0.25);
    EXPECT_EQ(validation(op), (Failure{0x2c0004, "Invalid saturation (-0.250000), saturation should be greater than 0.000000"}));
}

TEST(CDLOp, AlphaTakesNoPartInValidation)
{
    CDLOp op;
    op.setSlopeParams({1, 1, 1, -3});
    op.setPowerParams({1, 1, 1, 0});
    EXPECT_EQ(validation(op), Failure());
}

TEST(CDLOp, IsNoIdentityWhenOneNumberDiffersAlphaIncluded)
{
    CDLOp op;
    op.setOffsetParams({0, 0, 0, 0});
    EXPECT_FALSE(op.isIdentity());
    op = CDLOp();
    op.setSlopeParams({1, 1, 1, 0.5});
    EXPECT_FALSE(op.isIdentity());
    op = CDLOp();
    op.setPowerParams({1, 1, 1.5});
    EXPECT_FALSE(op.isIdentity());
    op = CDLOp();
    op.setSaturation(0.99);
    EXPECT_FALSE(op.isIdentity());
}

TEST(CDLOp, AnIdentityBetweenDepthsIsNotNothing)
{
    CDLOp op;
    op.setInputBitDepth(BIT_DEPTH_8i);
    EXPECT_TRUE(op.isIdentity());
    EXPECT_FALSE(op.isNoop());
}

TEST(CDLOp, ItsInverseExchangesStyleAndDepthsAndKeepsTheNumbers)
{
    struct
    {
        Style style, inverse;
    } const pairs[] = {{Style::V1_2Fwd, Style::V1_2Rev},
                       {Style::V1_2Rev, Style::V1_2Fwd},
                       {Style::NoClampFwd, Style::NoClampRev},
                       {Style::NoClampRev, Style::NoClampFwd}};
    for (auto const& pair : pairs)
    {
        CDLOp op(BIT_DEPTH_8i, BIT_DEPTH_10i, "id", "name", {}, pair.style, {1.1, 1.2, 1.3}, {0.1, 0.2, 0.3}, {2, 3, 4}, 0.5);
        op.getDescriptions() += "text";
        Color::OpList list;
        op.inverse(list);
        ASSERT_EQ(list.size(), 1U);
        auto const& inverse = dynamic_cast<CDLOp const&>(list.get(0));
        EXPECT_EQ(inverse.getCDLStyle(), pair.inverse);
        EXPECT_EQ(inverse.isReverse(), !op.isReverse());
        EXPECT_EQ(inverse.getInputBitDepth(), BIT_DEPTH_10i);
        EXPECT_EQ(inverse.getOutputBitDepth(), BIT_DEPTH_8i);
        EXPECT_EQ(inverse.getSlopeParams(), op.getSlopeParams());
        EXPECT_EQ(inverse.getOffsetParams(), op.getOffsetParams());
        EXPECT_EQ(inverse.getPowerParams(), op.getPowerParams());
        EXPECT_EQ(inverse.getSaturation(), 0.5);
        EXPECT_EQ(inverse.getId() + inverse.getName(), "");
        EXPECT_TRUE(inverse.getDescriptions().getList().empty());
    }
}

TEST(CDLOp, TheFullConstructorValidates)
{
    EXPECT_EQ(failureOf(
                  [] {
                      CDLOp(BIT_DEPTH_8i, BIT_DEPTH_8i, "", "", {}, Style::V1_2Fwd, {1, 1, 1}, {0, 0, 0}, {0, 1, 1}, 1);
                  })
                  .id,
              0x2c0004U);
}

TEST(CDLOp, ComparesOnlyWhatAllOperatorsHave)
{
    CDLOp other;
    other.setSaturation(0.5);
    EXPECT_TRUE(CDLOp() == other);
}

TEST(CDLOp, PrintsTheColours)
{
    CDLOp op;
    op.setSlopeParams({1.5, 0.25, 1});
    op.setOffsetParams({-0.1, 0, 0.2});
    op.setPowerParams({1.1, 1.2, 1.3});
    op.setSaturation(0.75);
    EXPECT_EQ(op.getSlopeString(), "1.5, 0.25, 1");
    EXPECT_EQ(op.getOffsetString(), "-0.1, 0, 0.2");
    EXPECT_EQ(op.getPowerString(), "1.1, 1.2, 1.3");
    EXPECT_EQ(op.getSaturationString(), "0.75");
}

TEST(CDLOp, HasNoExposure)
{
    CDLOp op;
    op.setId("grade");
    EXPECT_EQ(failureOf(
                  [&] {
                      op.setDynamicProperty({Tavrin::DynamicProperty::EXPOSURE, 1.0});
                  }),
              (Failure{0x210013, "Dynamic property Exposure not available in grade"}));
}
