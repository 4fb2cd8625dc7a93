// The model of the hue vector.
#include "transform/hueVectorOp.h"

#include "support/failure.h"
#include "transform/gamutMapOp.h"
#include "transform/opList.h"

#include <gtest/gtest.h>

#include <memory>

using Color::HueVectorOp;

namespace
{

using Style = HueVectorOp::HueVectorStyle;
using ParamStyle = HueVectorOp::HueVectorParamStyle;
using ParamType = HueVectorOp::ParamType;

HueVectorOp hueVector(HueVectorOp::Params const& params, ParamStyle paramStyle = ParamStyle::Chroma)
{
    return {Tavrin::BIT_DEPTH_16f, Tavrin::BIT_DEPTH_16f, Style::YCH_Fwd, paramStyle, params};
}

Failure failureOfParams(HueVectorOp::Params const& params, ParamStyle paramStyle = ParamStyle::Chroma)
{
    return failureOf([&] { hueVector(params, paramStyle); });
}

// As operators are compared in lists.
bool areEqual(Color::Op const& first, Color::Op const& second)
{
    return first == second;
}

} // namespace

TEST(HueVectorOp, IsOfFloatsAndWithoutParametersWhenNew)
{
    HueVectorOp const op;
    EXPECT_EQ(op.getInputBitDepth(), Tavrin::BIT_DEPTH_32f);
    EXPECT_EQ(op.getOutputBitDepth(), Tavrin::BIT_DEPTH_32f);
    EXPECT_EQ(op.getStyle(), Style::YCH_Fwd);
    EXPECT_EQ(op.getParamStyle(), ParamStyle::Chroma);
    EXPECT_TRUE(op.getParams().empty());
    EXPECT_EQ(static_cast<unsigned int>(op.getOpType()), 12U);
    EXPECT_EQ(op.getOpTypeName(), "HueVector");
    EXPECT_EQ(op.getMinimumVersion(), 1.4F);
}

TEST(HueVectorOp, FindsStylesWithoutRegardToCase)
{
    EXPECT_EQ(HueVectorOp::getHueVectorStyle("ych_fwd"), Style::YCH_Fwd);
    EXPECT_EQ(HueVectorOp::getHueVectorStyle("YCH_Rev"), Style::YCH_Rev);
    EXPECT_EQ(failureOf([] { HueVectorOp::getHueVectorStyle("YCH"); }), (Failure{0x2f0001, "Unrecognized Hue Vector style: YCH"}));
    EXPECT_EQ(failureOf([] { HueVectorOp::getHueVectorStyle(nullptr); }).id, 0x2f0001U);
    EXPECT_EQ(failureOf([] { HueVectorOp::getHueVectorStyle(""); }).id, 0x2f0001U);
}

TEST(HueVectorOp, FindsParameterStylesAlsoThoseThatItCannotRender)
{
    EXPECT_EQ(HueVectorOp::getHueVectorParamStyle("Chroma"), ParamStyle::Chroma);
    EXPECT_EQ(HueVectorOp::getHueVectorParamStyle("luma"), ParamStyle::Luma);
    EXPECT_EQ(HueVectorOp::getHueVectorParamStyle("HUE"), ParamStyle::Hue);
    EXPECT_EQ(failureOf([] { HueVectorOp::getHueVectorParamStyle("hues"); }),
              (Failure{0x2f0001, "Unrecognized Hue Vector style: hues"}));
    EXPECT_EQ(failureOf([] { HueVectorOp::getHueVectorParamStyle(nullptr); }).id, 0x2f0001U);
}

TEST(HueVectorOp, NamesItsStyles)
{
    EXPECT_STREQ(HueVectorOp::getStyleName(Style::YCH_Fwd), "YCH_Fwd");
    EXPECT_STREQ(HueVectorOp::getStyleName(Style::YCH_Rev), "YCH_Rev");
    EXPECT_STREQ(HueVectorOp::getStyleName(static_cast<Style>(2)), "");
    EXPECT_STREQ(HueVectorOp::getParamStyleName(ParamStyle::Chroma), "chroma");
    EXPECT_STREQ(HueVectorOp::getParamStyleName(ParamStyle::Luma), "luma");
    EXPECT_STREQ(HueVectorOp::getParamStyleName(ParamStyle::Hue), "hue");
    EXPECT_STREQ(HueVectorOp::getParamStyleName(static_cast<ParamStyle>(3)), "");
}

TEST(HueVectorOp, AllowsParametersAtTheirBounds)
{
    EXPECT_EQ(failureOfParams({0, 0, 0}), Failure{});
    EXPECT_EQ(failureOfParams({360, 1000, 100}), Failure{});
}

TEST(HueVectorOp, TellsTheParameterBeyondItsBound)
{
    EXPECT_EQ(failureOfParams({120, 1000.5, 1}), (Failure{0x210012, "Parameter 1000.500000 > upper bound 1000.000000"}));
    EXPECT_EQ(failureOfParams({360.5, 60, 1}), (Failure{0x210012, "Parameter 360.500000 > upper bound 360.000000"}));
    EXPECT_EQ(failureOfParams({120, 60, 100.25}), (Failure{0x210012, "Parameter 100.250000 > upper bound 100.000000"}));
    EXPECT_EQ(failureOfParams({-0.5, 60, 1}), (Failure{0x210011, "Parameter -0.500000 < lower bound 0.000000"}));
    EXPECT_EQ(failureOfParams({120, 60, -1}), (Failure{0x210011, "Parameter -1.000000 < lower bound 0.000000"}));
}

TEST(HueVectorOp, NeedsThreeParameters)
{
    Failure const wrongCount = {0x2f0002, "The specified Hue Vector style must have 3 parameters"};
    EXPECT_EQ(failureOfParams({}), wrongCount);
    EXPECT_EQ(failureOfParams({120, 60}), wrongCount);
    EXPECT_EQ(failureOfParams({120, 60, 1, 1}), wrongCount);
}

TEST(HueVectorOp, RefusesParameterStylesThatItCannotRender)
{
    EXPECT_EQ(failureOfParams({120, 60, 1}, ParamStyle::Luma), (Failure{0x2f0001, "Unrecognized Hue Vector style: luma"}));
    EXPECT_EQ(failureOfParams({120, 60, 1}, ParamStyle::Hue), (Failure{0x2f0001, "Unrecognized Hue Vector style: hue"}));
}

TEST(HueVectorOp, NeedsDepthsFirst)
{
    HueVectorOp op;
    op.setInputBitDepth(Tavrin::BIT_DEPTH_UNKNOWN);
    EXPECT_EQ(failureOf([&] { op.validate(); }), (Failure{0x210001, "'InBitDepth' attribute missing in HueVector"}));
}

TEST(HueVectorOp, IsNoIdentityEvenWithAnAmountOfOne)
{
    EXPECT_FALSE(hueVector({120, 60, 1}).isIdentity());
    EXPECT_FALSE(hueVector({120, 60, 1}).isNoop());
}

TEST(HueVectorOp, ComparesStylesParametersAndBase)
{
    HueVectorOp const op = hueVector({120, 60, 2});
    EXPECT_TRUE(areEqual(op, hueVector({120, 60, 2})));
    EXPECT_FALSE(areEqual(op, hueVector({120, 60, 3})));
    HueVectorOp other = op;
    other.setStyle(Style::YCH_Rev);
    EXPECT_FALSE(areEqual(op, other));
    other = op;
    other.setParamStyle(ParamStyle::Hue);
    EXPECT_FALSE(areEqual(op, other));
    other = op;
    other.setInputBitDepth(Tavrin::BIT_DEPTH_8i);
    EXPECT_FALSE(areEqual(op, other));
    EXPECT_FALSE(areEqual(HueVectorOp(), Color::GamutMapOp()));
}

TEST(HueVectorOp, InvertExchangesTheStyles)
{
    HueVectorOp op = hueVector({120, 60, 2});
    op.invert();
    EXPECT_EQ(op.getStyle(), Style::YCH_Rev);
    op.invert();
    EXPECT_EQ(op.getStyle(), Style::YCH_Fwd);
}

TEST(HueVectorOp, HasNoInverseInAList)
{
    Color::OpList list;
    EXPECT_EQ(failureOf([&] { hueVector({120, 60, 2}).inverse(list); }), (Failure{0x210014, "HueVector inverse not supported"}));
}

TEST(HueVectorOp, WritesParametersAsText)
{
    HueVectorOp const op = hueVector({120.5, 60, 0.25});
    EXPECT_EQ(op.getParamString(ParamType::Center), "120.5");
    EXPECT_EQ(op.getParamString(ParamType::Width), "60");
    EXPECT_EQ(op.getParamString(ParamType::Amount), "0.25");
}

TEST(HueVectorOp, CloneKeepsEverything)
{
    HueVectorOp const op = hueVector({120, 60, 2});
    std::unique_ptr<Color::Op> const clone(op.clone());
    EXPECT_TRUE(areEqual(*clone, op));
}
