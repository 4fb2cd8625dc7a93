// The gamma's model: styles, bounds, identities, inversion and the constants of the curve with a toe.
#include "transform/gammaOp.h"

#include "support/failure.h"
#include "transform/opList.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <memory>

namespace
{

using Color::GammaOp;
using Style = GammaOp::GammaStyle;
using Params = GammaOp::Params;
using Tavrin::BIT_DEPTH_10i;
using Tavrin::BIT_DEPTH_32f;
using Tavrin::BIT_DEPTH_8i;

GammaOp gamma(Style style, Params const& colour)
{
    GammaOp op;
    op.setGammaStyle(style);
    op.setParams(colour);
    return op;
}

Failure validation(GammaOp const& op)
{
    return failureOf([&] { op.validate(); });
}

} // namespace

TEST(GammaOp, IsANamedBasicForwardGammaWithoutParametersByDefault)
{
    GammaOp const op;
    EXPECT_EQ(static_cast<unsigned int>(op.getOpType()), 6U);
    EXPECT_EQ(op.getOpTypeName(), "Gamma");
    EXPECT_EQ(op.getGammaStyle(), Style::BasicFwd);
    EXPECT_EQ(op.getInputBitDepth(), BIT_DEPTH_32f);
    EXPECT_EQ(op.getOutputBitDepth(), BIT_DEPTH_32f);
    EXPECT_TRUE(op.getRedParams().empty() && op.getGreenParams().empty() && op.getBlueParams().empty() &&
                op.getAlphaParams().empty());
    EXPECT_EQ(op.getMinimumVersion(), 1.3F);
    EXPECT_EQ(validation(op), (Failure{0x290002, "The specified Gamma style must have 1 parameters"}));
}

TEST(GammaOp, KnowsItsStylesByNameInAnyCase)
{
    EXPECT_EQ(GammaOp::getGammaStyle("basicFwd"), Style::BasicFwd);
    EXPECT_EQ(GammaOp::getGammaStyle("BASICREV"), Style::BasicRev);
    EXPECT_EQ(GammaOp::getGammaStyle("moncurvefwd"), Style::MoncurveFwd);
    EXPECT_EQ(GammaOp::getGammaStyle("moncurveRev"), Style::MoncurveRev);
    EXPECT_STREQ(GammaOp::getGammaStyleName(Style::MoncurveRev), "moncurveRev");
    EXPECT_STREQ(GammaOp::getGammaStyleName(static_cast<Style>(4)), "");
}

TEST(GammaOp, RefusesUnknownStyleNames)
{
    EXPECT_EQ(failureOf([] { GammaOp::getGammaStyle("basic"); }), (Failure{0x290001, "Unrecognized Gamma style: basic"}));
    EXPECT_EQ(failureOf([] { GammaOp::getGammaStyle(""); }).id, 0x290001U);
    EXPECT_EQ(failureOf([] { GammaOp::getGammaStyle(nullptr); }).id, 0x290001U);
}

TEST(GammaOp, BoundsGammaByOneAndTen)
{
    EXPECT_EQ(validation(gamma(Style::BasicFwd, {0.99})), (Failure{0x210011, "Parameter 0.990000 < lower bound 1.000000"}));
    EXPECT_EQ(validation(gamma(Style::BasicRev, {10.5})), (Failure{0x210012, "Parameter 10.500000 > upper bound 10.000000"}));
    EXPECT_EQ(validation(gamma(Style::BasicFwd, {1.0})), Failure());
    EXPECT_EQ(validation(gamma(Style::BasicRev, {10.0})), Failure());
}

TEST(GammaOp, BoundsTheOffsetByZeroAndNineTenths)
{
    EXPECT_EQ(validation(gamma(Style::MoncurveFwd, {2.4, 0.9})), Failure());
    EXPECT_EQ(validation(gamma(Style::MoncurveFwd, {2.4, 0.91})), (Failure{0x210012, "Parameter 0.910000 > upper bound 0.900000"}));
    EXPECT_EQ(validation(gamma(Style::MoncurveRev, {2.4, -0.1})),
              (Failure{0x210011, "Parameter -0.100000 < lower bound 0.000000"}));
}

TEST(GammaOp, WantsOneParameterOrTwoForACurveWithAToe)
{
    EXPECT_EQ(validation(gamma(Style::BasicFwd, {2.0, 0.1})).id, 0x290002U);
    EXPECT_EQ(validation(gamma(Style::MoncurveFwd, {2.0})),
              (Failure{0x290002, "The specified Gamma style must have 2 parameters"}));
}

TEST(GammaOp, ValidatesEveryChannel)
{
    for (auto const set : {&GammaOp::setRedParams, &GammaOp::setGreenParams, &GammaOp::setBlueParams, &GammaOp::setAlphaParams})
    {
        GammaOp op = gamma(Style::BasicFwd, {2.0});
        (op.*set)({11.0});
        EXPECT_EQ(validation(op).id, 0x210012U);
    }
}

TEST(GammaOp, TheFullConstructorValidates)
{
    auto const make = [](double red)
    { return GammaOp(BIT_DEPTH_8i, BIT_DEPTH_10i, "id", "name", {}, Style::BasicRev, {red}, {2.0}, {3.0}, {1.0}); };
    EXPECT_EQ(failureOf([&] { make(0.5); }).id, 0x210011U);
    GammaOp const op = make(1.5);
    EXPECT_EQ(op.getInputBitDepth(), BIT_DEPTH_8i);
    EXPECT_EQ(op.getOutputBitDepth(), BIT_DEPTH_10i);
    EXPECT_EQ(op.getId(), "id");
    EXPECT_EQ(op.getName(), "name");
    EXPECT_EQ(op.getRedParams(), Params{1.5});
    EXPECT_EQ(op.getGreenParams(), Params{2.0});
    EXPECT_EQ(op.getBlueParams(), Params{3.0});
    EXPECT_EQ(op.getAlphaParams(), Params{1.0});
}

TEST(GammaOp, IsAnIdentityWhenAllFourChannelsAre)
{
    EXPECT_TRUE(gamma(Style::BasicFwd, {1.0}).isIdentity());
    EXPECT_TRUE(gamma(Style::MoncurveFwd, {1.0, 0.0}).isIdentity());
    EXPECT_FALSE(gamma(Style::MoncurveFwd, {1.0, 1e-9}).isIdentity());
    EXPECT_FALSE(gamma(Style::BasicRev, {1.0000001}).isIdentity());
    GammaOp op = gamma(Style::BasicFwd, {1.0});
    op.setAlphaParams({1.5});
    EXPECT_FALSE(op.isIdentity());
}

TEST(GammaOp, IsNothingOnlyBetweenEqualDepths)
{
    GammaOp op = gamma(Style::BasicFwd, {1.0});
    EXPECT_TRUE(op.isNoop());
    op.setOutputBitDepth(BIT_DEPTH_8i);
    EXPECT_FALSE(op.isNoop());
    EXPECT_TRUE(op.isIdentity());
}

TEST(GammaOp, ADepthChangesNoParameter)
{
    GammaOp op = gamma(Style::MoncurveFwd, {2.4, 0.055});
    op.setInputBitDepth(BIT_DEPTH_8i);
    op.setOutputBitDepth(BIT_DEPTH_10i);
    EXPECT_EQ(op.getRedParams(), (Params{2.4, 0.055}));
    EXPECT_EQ(op.getAlphaParams(), (Params{1.0, 0.0}));
}

TEST(GammaOp, SettingColourParametersMakesAlphaTheIdentityOfTheStyle)
{
    GammaOp const op = gamma(Style::MoncurveRev, {2.4, 0.055});
    EXPECT_EQ(op.getAlphaParams(), (Params{1.0, 0.0}));
    EXPECT_FALSE(op.areAllComponentsEqual());
    EXPECT_TRUE(op.isNonChannelDependent());
    EXPECT_TRUE(op.isAlphaComponentIdentity());
}

TEST(GammaOp, DependsOnTheChannelWhenColoursOrAlphaDiffer)
{
    GammaOp op = gamma(Style::BasicFwd, {2.0});
    op.setBlueParams({2.1});
    EXPECT_FALSE(op.isNonChannelDependent());
    op.setBlueParams({2.0});
    op.setAlphaParams({2.0});
    EXPECT_FALSE(op.isNonChannelDependent());
    EXPECT_TRUE(op.areAllComponentsEqual());
}

TEST(GammaOp, KnowsTheIdentityOfEachStyle)
{
    EXPECT_EQ(GammaOp::getIdentityParameters(Style::BasicRev), Params{1.0});
    EXPECT_EQ(GammaOp::getIdentityParameters(Style::MoncurveFwd), (Params{1.0, 0.0}));
    EXPECT_TRUE(GammaOp::getIdentityParameters(static_cast<Style>(7)).empty());
    EXPECT_TRUE(GammaOp::isIdentityParameters({1.0, 0.0}, Style::MoncurveRev));
    EXPECT_FALSE(GammaOp::isIdentityParameters({1.0}, Style::MoncurveRev));
    EXPECT_FALSE(GammaOp::isIdentityParameters({1.0, 0.0}, Style::BasicFwd));
    EXPECT_FALSE(GammaOp::isIdentityParameters({}, static_cast<Style>(7)));
}

TEST(GammaOp, HasNoInverseButInvertsItsStyleInPlace)
{
    GammaOp op = gamma(Style::BasicFwd, {2.2});
    Color::OpList list;
    EXPECT_EQ(failureOf([&] { op.inverse(list); }), (Failure{0x210014, "Gamma inverse not supported"}));
    op.invert();
    EXPECT_EQ(op.getGammaStyle(), Style::BasicRev);
    EXPECT_EQ(op.getRedParams(), Params{2.2});
    op.invert();
    EXPECT_EQ(op.getGammaStyle(), Style::BasicFwd);
    op.setGammaStyle(Style::MoncurveFwd);
    op.invert();
    EXPECT_EQ(op.getGammaStyle(), Style::MoncurveRev);
    op.invert();
    EXPECT_EQ(op.getGammaStyle(), Style::MoncurveFwd);
}

TEST(GammaOp, EqualsAnotherOfTheSameStyleAndParameters)
{
    GammaOp const op = gamma(Style::MoncurveFwd, {2.4, 0.055});
    std::unique_ptr<Color::Op> const copy(op.clone());
    EXPECT_TRUE(op == *copy);
    GammaOp other = op;
    other.setGammaStyle(Style::MoncurveRev);
    EXPECT_FALSE(op == other);
    other = op;
    other.setAlphaParams({1.0, 0.1});
    EXPECT_FALSE(op == other);
    other = op;
    other.setName("other");
    EXPECT_FALSE(op == other);
}

TEST(GammaOp, PrintsOneNumberOrOneForEachColour)
{
    GammaOp op = gamma(Style::MoncurveFwd, {2.4, 0.055});
    EXPECT_EQ(op.getGammaString(), "2.4, 2.4, 2.4") << "alpha differs";
    op.setAlphaParams({2.4, 0.055});
    EXPECT_EQ(op.getGammaString(), "2.4");
    EXPECT_EQ(op.getOffsetString(), "0.055");
    op.setGreenParams({2.5, 0.25});
    EXPECT_EQ(op.getGammaString(), "2.4, 2.5, 2.4");
    EXPECT_EQ(op.getOffsetString(), "0.055, 0.25, 0.055");
    EXPECT_EQ(gamma(Style::BasicFwd, {2.0}).getOffsetString(), "");
}

// The published constants of the curve of gamma 2.4 and offset 0.055 to their printed digits: break 0.0392857 and slope 1 / 12.9232
// on the side of the codes, break 0.0030399 and slope 12.9232 on the linear side.
TEST(GammaOpConstants, AreThoseOfThePublishedCurve)
{
    Params const params{2.4, 0.055};
    EXPECT_NEAR(GammaOp::monCurveBreakFwd(params), 0.0392857, 5e-8);
    EXPECT_NEAR(1.0 / GammaOp::monCurveSlopeFwd(params), 12.9232, 5e-5);
    EXPECT_NEAR(GammaOp::monCurveBreakRev(params), 0.0030399, 5e-8);
    EXPECT_NEAR(GammaOp::monCurveSlopeRev(params), 12.9232, 5e-5);
}

// At the break, line and power have the same value and the same derivative; that is what the constants are for.
TEST(GammaOpConstants, JoinLineAndPowerSmoothly)
{
    for (Params const& params : {Params{2.4, 0.055}, Params{3.0, 0.16}, Params{1.5, 0.9}, Params{10.0, 0.01}})
    {
        double const x = GammaOp::monCurveBreakFwd(params);
        double const base = x * GammaOp::monCurveScaleFwd(params) + GammaOp::monCurveOffsetFwd(params);
        double const g = GammaOp::monCurveGammaFwd(params);
        double const slope = GammaOp::monCurveSlopeFwd(params);
        EXPECT_NEAR(x * slope / std::pow(base, g), 1.0, 1e-12);
        EXPECT_NEAR(slope / (g * std::pow(base, g - 1.0) * GammaOp::monCurveScaleFwd(params)), 1.0, 1e-12);

        double const y = GammaOp::monCurveBreakRev(params);
        EXPECT_NEAR(y / (x * slope), 1.0, 1e-12) << "the reverse breaks at the value of the forward's break";
        EXPECT_NEAR(GammaOp::monCurveSlopeRev(params) * slope, 1.0, 1e-12);
        EXPECT_NEAR(std::pow(y, GammaOp::monCurveGammaRev(params)) * GammaOp::monCurveScaleRev(params) -
                        GammaOp::monCurveOffsetRev(params),
                    x, 1e-12);
    }
}

TEST(GammaOpConstants, OfAnIdentityAreThoseOfTheLeastGammaAndOffset)
{
    Params const identity{1.0, 0.0};
    EXPECT_EQ(GammaOp::monCurveGammaFwd(identity), 1.000001);
    EXPECT_EQ(GammaOp::monCurveGammaRev(identity), 1.0 / 1.000001);
    EXPECT_EQ(GammaOp::monCurveOffsetFwd(identity), 1e-6 / (1.0 + 1e-6));
    EXPECT_EQ(GammaOp::monCurveOffsetRev(identity), 1e-6);
    EXPECT_EQ(GammaOp::monCurveScaleFwd(identity), 1.0 / (1.0 + 1e-6));
    EXPECT_EQ(GammaOp::monCurveScaleRev(identity), 1.0 + 1e-6);
    EXPECT_NEAR(GammaOp::monCurveBreakFwd(identity), 1.0, 1e-9);
    EXPECT_NEAR(GammaOp::monCurveSlopeFwd(identity), 1.0, 1e-4);
    EXPECT_NEAR(GammaOp::monCurveSlopeRev(identity), 1.0, 1e-4);
}
