// The range: what follows from its limits, and where it has to clamp. Expected values are worked out by hand.
#include "transform/rangeOp.h"
#include "support/failure.h"
#include "transform/testOps.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

using namespace Color;
using namespace Tavrin;

namespace
{

double const kNone = RangeOp::emptyValue();

void expectBounds(RangeOp const& range, double lower, double upper)
{
    auto const same = [](double a, double b) { return std::isnan(b) ? std::isnan(a) : a == b; };
    EXPECT_PRED2(same, range.getLowerBound(), lower);
    EXPECT_PRED2(same, range.getUpperBound(), upper);
    EXPECT_EQ(range.minClips(), !std::isnan(lower));
    EXPECT_EQ(range.maxClips(), !std::isnan(upper));
}

Failure failureOfLimits(double minIn, double maxIn, double minOut, double maxOut)
{
    return failureOf([&] { RangeOp(BIT_DEPTH_32f, BIT_DEPTH_32f, minIn, maxIn, minOut, maxOut); });
}

TEST(RangeOp, StartsWithoutLimitsAndDerivesNothingBeforeItIsValidated)
{
    RangeOp const range;
    EXPECT_EQ(range.getOpType(), Op::OpType::RangeOp);
    EXPECT_EQ(range.getOpTypeName(), "Range");
    EXPECT_EQ(range.getInputBitDepth(), BIT_DEPTH_32f);
    EXPECT_EQ(range.getOutputBitDepth(), BIT_DEPTH_32f);
    EXPECT_TRUE(range.minIsEmpty());
    EXPECT_TRUE(range.maxIsEmpty());
    EXPECT_EQ(range.getScale(), 0.0);
    EXPECT_EQ(range.getOffset(), 0.0);
    EXPECT_EQ(range.getAlphaScale(), 0.0);
    expectBounds(range, 0.0, 0.0);

    range.validate();
    EXPECT_EQ(range.getScale(), 1.0);
    EXPECT_EQ(range.getAlphaScale(), 1.0);
    expectBounds(range, kNone, kNone);
    EXPECT_TRUE(range.isNoop());
}

TEST(RangeOp, KeepsTexts)
{
    Descriptions descriptions;
    descriptions += "text";
    RangeOp const range(BIT_DEPTH_8i, BIT_DEPTH_8i, kNone, kNone, kNone, kNone, "id", "name", descriptions);
    EXPECT_EQ(range.getId(), "id");
    EXPECT_EQ(range.getName(), "name");
    EXPECT_TRUE(range.getDescriptions() == descriptions);
}

TEST(RangeOp, RefusesALimitThatIsSetOnOneSideOnly)
{
    Failure const min{0x270001, "In & Out Min limits must be both set or both missing"};
    Failure const max{0x270001, "In & Out Max limits must be both set or both missing"};
    EXPECT_EQ(failureOfLimits(0.0, kNone, kNone, kNone), min);
    EXPECT_EQ(failureOfLimits(kNone, kNone, 0.0, kNone), min);
    EXPECT_EQ(failureOfLimits(kNone, 1.0, kNone, kNone), max);
    EXPECT_EQ(failureOfLimits(0.0, kNone, 0.0, 1.0), max);
    EXPECT_EQ(failureOfLimits(0.0, 1.0, kNone, kNone), min);
}

TEST(RangeOp, RefusesLimitsInReverse)
{
    Failure const reversed{0x270003, "Range maxValue less than minValue"};
    EXPECT_EQ(failureOfLimits(1.0, 0.0, 0.0, 1.0), reversed);
    EXPECT_EQ(failureOfLimits(0.0, 1.0, 1.0, 0.0), reversed);
    EXPECT_EQ(failureOfLimits(0.0, 1.0, 0.5, 0.5), Failure());
}

TEST(RangeOp, RefusesInputLimitsThatAreTooClose)
{
    Failure const tooClose{0x270002, "Range maxInValue too close to minInValue"};
    EXPECT_EQ(failureOfLimits(0.5, 0.5, 0.0, 1.0), tooClose);
    EXPECT_EQ(failureOfLimits(0.5, 0.5 + 9e-7, 0.0, 1.0), tooClose);
    EXPECT_EQ(failureOfLimits(0.5, 0.5 + 2e-6, 0.0, 1.0), Failure());
}

TEST(RangeOp, WithoutADepthIsInvalidBeforeItsLimitsAre)
{
    EXPECT_EQ(failureOf([] { RangeOp(BIT_DEPTH_8i, BIT_DEPTH_UNKNOWN, 0.0, kNone, kNone, kNone); }),
              (Failure{0x210001, "'OutBitDepth' attribute missing in Range"}));
}

TEST(RangeOp, SettersStoreAndValidateDerives)
{
    RangeOp range;
    range.setMinInValue(0.25);
    range.setMaxInValue(0.75);
    range.setMinOutValue(0.0);
    EXPECT_EQ(failureOf([&] { range.validate(); }).id, 0x270001U);
    range.setMaxOutValue(1.0);
    EXPECT_EQ(range.getScale(), 0.0);
    range.validate();
    EXPECT_EQ(range.getMinInValue(), 0.25);
    EXPECT_EQ(range.getMaxInValue(), 0.75);
    EXPECT_EQ(range.getMinOutValue(), 0.0);
    EXPECT_EQ(range.getMaxOutValue(), 1.0);
    EXPECT_EQ(range.getScale(), 2.0);
    EXPECT_EQ(range.getOffset(), -0.5);
}

TEST(RangeOp, MapsTheInputIntervalOntoTheOutputInterval)
{
    RangeOp const range(BIT_DEPTH_32f, BIT_DEPTH_32f, 0.25, 0.75, 0.0, 1.0);
    EXPECT_EQ(range.getScale(), 2.0);
    EXPECT_EQ(range.getOffset(), -0.5);
    EXPECT_EQ(range.getAlphaScale(), 1.0);
    expectBounds(range, 0.0, 1.0);
}

TEST(RangeOp, WithOneLimitShiftsItIntoPlace)
{
    RangeOp const minimum(BIT_DEPTH_32f, BIT_DEPTH_32f, 0.25, kNone, 0.5, kNone);
    EXPECT_EQ(minimum.getScale(), 1.0);
    EXPECT_EQ(minimum.getOffset(), 0.25);
    expectBounds(minimum, 0.5, kNone);

    RangeOp const maximum(BIT_DEPTH_32f, BIT_DEPTH_32f, kNone, 0.75, kNone, 0.5);
    EXPECT_EQ(maximum.getScale(), 1.0);
    EXPECT_EQ(maximum.getOffset(), -0.25);
    expectBounds(maximum, kNone, 0.5);
}

TEST(RangeOp, WithOneLimitBetweenDepthsKeepsTheScaleOfTheDepths)
{
    RangeOp const range(BIT_DEPTH_8i, BIT_DEPTH_16i, 10.0, kNone, 0.0, kNone);
    EXPECT_EQ(range.getScale(), 257.0);
    EXPECT_EQ(range.getOffset(), -2570.0);
    EXPECT_EQ(range.getAlphaScale(), 257.0);
}

TEST(RangeOp, OverAWholeIntegerDepthClampsNothing)
{
    RangeOp const range(BIT_DEPTH_8i, BIT_DEPTH_8i, 0.0, 255.0, 0.0, 255.0);
    EXPECT_EQ(range.getScale(), 1.0);
    EXPECT_EQ(range.getOffset(), 0.0);
    expectBounds(range, kNone, kNone);
    EXPECT_FALSE(range.scales(false));

    expectBounds(RangeOp(BIT_DEPTH_8i, BIT_DEPTH_32f, 0.0, 255.0, 0.0, 1.0), kNone, kNone);
}

TEST(RangeOp, OverTheSameIntervalInFloatsKeepsItsClamps)
{
    expectBounds(RangeOp(BIT_DEPTH_32f, BIT_DEPTH_32f, 0.0, 255.0, 0.0, 255.0), 0.0, 255.0);
}

TEST(RangeOp, WithoutLimitsClampsFloatsToAnIntegerDepth)
{
    RangeOp const range(BIT_DEPTH_32f, BIT_DEPTH_8i, kNone, kNone, kNone, kNone);
    EXPECT_EQ(range.getScale(), 255.0);
    expectBounds(range, 0.0, 255.0);
    expectBounds(RangeOp(BIT_DEPTH_16f, BIT_DEPTH_16i, kNone, kNone, kNone, kNone), 0.0, 65535.0);
    expectBounds(RangeOp(BIT_DEPTH_32f, BIT_DEPTH_16f, kNone, kNone, kNone, kNone), kNone, kNone);
}

TEST(RangeOp, WithoutLimitsIsAMereChangeOfDepth)
{
    RangeOp const range(BIT_DEPTH_8i, BIT_DEPTH_16i, kNone, kNone, kNone, kNone);
    EXPECT_EQ(range.getScale(), 257.0);
    EXPECT_EQ(range.getOffset(), 0.0);
    EXPECT_EQ(range.getAlphaScale(), 257.0);
    expectBounds(range, kNone, kNone);
    EXPECT_TRUE(range.isIdentity());
    EXPECT_FALSE(range.isNoop());
}

// 10 to 245 onto 20 to 235: code 0 would be 10.9, code 255 would be 244.1.
TEST(RangeOp, ClampsWhereInputCodesReachTheLimit)
{
    expectBounds(RangeOp(BIT_DEPTH_8i, BIT_DEPTH_8i, 10.0, 245.0, 20.0, 235.0), 20.0, 235.0);
}

// 0 to 245 onto 20 to 235: nothing is below code 0.
TEST(RangeOp, ClampsOnTheSideThatInputCodesReachOnly)
{
    expectBounds(RangeOp(BIT_DEPTH_8i, BIT_DEPTH_8i, 0.0, 245.0, 20.0, 235.0), kNone, 235.0);
    expectBounds(RangeOp(BIT_DEPTH_8i, BIT_DEPTH_8i, 10.0, 255.0, 20.0, 235.0), 20.0, kNone);
}

TEST(RangeOp, ClampsNoFurtherOutThanAnIntegerDepthReaches)
{
    expectBounds(RangeOp(BIT_DEPTH_32f, BIT_DEPTH_8i, 0.0, 1.0, -10.0, 300.0), 0.0, 255.0);
    expectBounds(RangeOp(BIT_DEPTH_32f, BIT_DEPTH_32f, 0.0, 1.0, -10.0, 300.0), -10.0, 300.0);
    expectBounds(RangeOp(BIT_DEPTH_8i, BIT_DEPTH_8i, 10.0, 245.0, -10.0, 300.0), 0.0, 255.0);
    expectBounds(RangeOp(BIT_DEPTH_32f, BIT_DEPTH_8i, 0.0, 1.0, 0.0, 255.0), 0.0, 255.0);
}

// A shift by a single limit can push codes over the edge on the side without one.
TEST(RangeOp, ClampsTheOpenSideWhereAShiftLeavesTheDepth)
{
    // Codes 0 to 255 become 100 to 355: no code is below the limit, the upper ones leave the depth.
    expectBounds(RangeOp(BIT_DEPTH_8i, BIT_DEPTH_8i, 0.0, kNone, 100.0, kNone), kNone, 255.0);
    // Codes become -100 to 155.
    expectBounds(RangeOp(BIT_DEPTH_8i, BIT_DEPTH_8i, 100.0, kNone, 0.0, kNone), 0.0, kNone);
    // Codes become -100 to 155, with everything above 0 held at 0.
    expectBounds(RangeOp(BIT_DEPTH_8i, BIT_DEPTH_8i, kNone, 100.0, kNone, 0.0), 0.0, 0.0);
    // Codes become 100 to 355, held at 200; nothing falls below.
    expectBounds(RangeOp(BIT_DEPTH_8i, BIT_DEPTH_8i, kNone, 100.0, kNone, 200.0), kNone, 200.0);
    // Towards a float depth nothing leaves the depth.
    expectBounds(RangeOp(BIT_DEPTH_8i, BIT_DEPTH_32f, 0.0, kNone, 0.5, kNone), kNone, kNone);
}

TEST(RangeOp, WithOneLimitClampsFloatsToAnIntegerDepthOnTheOpenSide)
{
    expectBounds(RangeOp(BIT_DEPTH_32f, BIT_DEPTH_8i, 0.5, kNone, 10.0, kNone), 10.0, 255.0);
    expectBounds(RangeOp(BIT_DEPTH_32f, BIT_DEPTH_8i, kNone, 0.5, kNone, 200.0), 0.0, 200.0);
}

TEST(RangeOp, WouldClipWhatMeetsALimit)
{
    RangeOp const range(BIT_DEPTH_32f, BIT_DEPTH_32f, 0.0, 1.0, 0.0, 1.0);
    EXPECT_FALSE(range.wouldClip(0.0));
    EXPECT_FALSE(range.wouldClip(0.5));
    EXPECT_FALSE(range.wouldClip(1.0));
    EXPECT_TRUE(range.wouldClip(-1.0));
    EXPECT_TRUE(range.wouldClip(2.0));
}

// Compared by ratio from a magnitude of 0.001 upward, by difference below it; a millionth either way.
TEST(RangeOp, WouldClipForgivesAMillionth)
{
    RangeOp const range(BIT_DEPTH_32f, BIT_DEPTH_32f, 0.0, 1.0, 0.0, 1.0);
    EXPECT_FALSE(range.wouldClip(1.0000005));
    EXPECT_TRUE(range.wouldClip(1.000002));
    EXPECT_FALSE(range.wouldClip(-5e-7));
    EXPECT_TRUE(range.wouldClip(-2e-6));

    RangeOp const large(BIT_DEPTH_32f, BIT_DEPTH_32f, 0.0, 1000.0, 0.0, 1000.0);
    EXPECT_FALSE(large.wouldClip(1000.0005));
    EXPECT_TRUE(large.wouldClip(1000.002));

    // From 0.0009 and 0.0011 onto a limit of 0.0009: 5e-7 off counts as nothing below 0.001 only.
    RangeOp const small(BIT_DEPTH_32f, BIT_DEPTH_32f, kNone, 0.0009, kNone, 0.0009);
    EXPECT_FALSE(small.wouldClip(0.0009005));
    RangeOp const lessSmall(BIT_DEPTH_32f, BIT_DEPTH_32f, kNone, 0.0011, kNone, 0.0011);
    EXPECT_TRUE(lessSmall.wouldClip(0.0011005));
}

TEST(RangeOp, WouldClipAtTheEndsOfAnIntegerDepth)
{
    RangeOp const range(BIT_DEPTH_32f, BIT_DEPTH_8i, kNone, kNone, kNone, kNone);
    EXPECT_FALSE(range.wouldClip(0.0));
    EXPECT_FALSE(range.wouldClip(1.0));
    EXPECT_TRUE(range.wouldClip(1.1));
    EXPECT_TRUE(range.wouldClip(-0.1));
}

TEST(RangeOp, IsAnIdentityWithoutLimitsOnly)
{
    for (BitDepth const depth : {BIT_DEPTH_8i, BIT_DEPTH_16f, BIT_DEPTH_32f})
        EXPECT_TRUE(RangeOp(depth, depth, kNone, kNone, kNone, kNone).isNoop());
    EXPECT_FALSE(RangeOp(BIT_DEPTH_32f, BIT_DEPTH_32f, 0.0, 1.0, 0.0, 1.0).isIdentity());
    EXPECT_FALSE(RangeOp(BIT_DEPTH_32f, BIT_DEPTH_32f, 0.0, kNone, 0.0, kNone).isIdentity());
    EXPECT_FALSE(RangeOp(BIT_DEPTH_32f, BIT_DEPTH_32f, kNone, 1.0, kNone, 1.0).isIdentity());
    EXPECT_FALSE(RangeOp().isIdentity()); // Nothing is derived before validate.
}

TEST(RangeOp, ScalesUnlessItOnlyClamps)
{
    RangeOp const clamp(BIT_DEPTH_32f, BIT_DEPTH_32f, 0.0, 1.0, 0.0, 1.0);
    EXPECT_FALSE(clamp.scales(false));
    EXPECT_FALSE(clamp.scales(true));

    RangeOp const shift(BIT_DEPTH_32f, BIT_DEPTH_32f, 0.0, kNone, 0.25, kNone);
    EXPECT_TRUE(shift.scales(false));
    EXPECT_TRUE(shift.scales(true));

    RangeOp const stretch(BIT_DEPTH_32f, BIT_DEPTH_32f, 0.0, 0.5, 0.0, 1.0);
    EXPECT_TRUE(stretch.scales(false));
    EXPECT_TRUE(stretch.scales(true));
}

TEST(RangeOp, MereChangeOfDepthScalesUnlessDepthsAreTakenIntoAccount)
{
    RangeOp const range(BIT_DEPTH_8i, BIT_DEPTH_16i, kNone, kNone, kNone, kNone);
    EXPECT_TRUE(range.scales(false));
    EXPECT_FALSE(range.scales(true));

    // Codes stay as they are, which is a scale of the signal, and alpha is carried over.
    RangeOp const sameCodes(BIT_DEPTH_8i, BIT_DEPTH_16i, 0.0, 255.0, 0.0, 255.0);
    EXPECT_TRUE(sameCodes.scales(true));
    EXPECT_TRUE(sameCodes.scales(false));
}

TEST(RangeOp, ClampsToTheDomainOfATableAtItsOutputDepth)
{
    EXPECT_TRUE(RangeOp(BIT_DEPTH_32f, BIT_DEPTH_32f, 0.0, 1.0, 0.0, 1.0).clampsToLutDomain());
    EXPECT_TRUE(RangeOp(BIT_DEPTH_32f, BIT_DEPTH_32f, 0.1, 0.9, 0.0, 1.0).clampsToLutDomain());
    EXPECT_FALSE(RangeOp(BIT_DEPTH_32f, BIT_DEPTH_32f, -0.1, 1.0, 0.0, 1.0).clampsToLutDomain());
    EXPECT_FALSE(RangeOp(BIT_DEPTH_32f, BIT_DEPTH_32f, 0.0, 1.1, 0.0, 1.0).clampsToLutDomain());
    EXPECT_FALSE(RangeOp(BIT_DEPTH_32f, BIT_DEPTH_32f, 0.0, kNone, 0.0, kNone).clampsToLutDomain());
    EXPECT_FALSE(RangeOp(BIT_DEPTH_32f, BIT_DEPTH_32f, kNone, 1.0, kNone, 1.0).clampsToLutDomain());
    // Input limits against the output depth: 255 is beyond 1, and 1 is within 255.
    EXPECT_FALSE(RangeOp(BIT_DEPTH_8i, BIT_DEPTH_32f, 0.0, 255.0, 0.0, 1.0).clampsToLutDomain());
    EXPECT_TRUE(RangeOp(BIT_DEPTH_32f, BIT_DEPTH_8i, 0.0, 1.1, 0.0, 255.0).clampsToLutDomain());
}

TEST(RangeOp, InputDepthTakesTheInputLimitsAlong)
{
    RangeOp range(BIT_DEPTH_32f, BIT_DEPTH_32f, 0.25, 0.75, 0.0, 1.0);
    range.setInputBitDepth(BIT_DEPTH_8i);
    EXPECT_EQ(range.getInputBitDepth(), BIT_DEPTH_8i);
    EXPECT_EQ(range.getMinInValue(), 63.75);
    EXPECT_EQ(range.getMaxInValue(), 191.25);
    EXPECT_EQ(range.getMinOutValue(), 0.0);
    EXPECT_EQ(range.getMaxOutValue(), 1.0);
    EXPECT_DOUBLE_EQ(range.getScale(), 1.0 / 127.5);
    EXPECT_DOUBLE_EQ(range.getOffset(), -0.5);
    EXPECT_DOUBLE_EQ(range.getAlphaScale(), 1.0 / 255.0);
    expectBounds(range, 0.0, 1.0);
}

TEST(RangeOp, OutputDepthTakesTheOutputLimitsAlong)
{
    RangeOp range(BIT_DEPTH_32f, BIT_DEPTH_32f, 0.25, 0.75, 0.0, 1.0);
    range.setOutputBitDepth(BIT_DEPTH_16i);
    EXPECT_EQ(range.getOutputBitDepth(), BIT_DEPTH_16i);
    EXPECT_EQ(range.getMinInValue(), 0.25);
    EXPECT_EQ(range.getMaxOutValue(), 65535.0);
    EXPECT_EQ(range.getScale(), 131070.0);
    EXPECT_EQ(range.getOffset(), -32767.5);
    EXPECT_EQ(range.getAlphaScale(), 65535.0);
    expectBounds(range, 0.0, 65535.0);
}

TEST(RangeOp, DepthChangesLeaveAbsentLimitsAbsent)
{
    RangeOp minimum(BIT_DEPTH_32f, BIT_DEPTH_32f, 0.5, kNone, 0.5, kNone);
    minimum.setInputBitDepth(BIT_DEPTH_10i);
    minimum.setOutputBitDepth(BIT_DEPTH_10i);
    EXPECT_EQ(minimum.getMinInValue(), 511.5);
    EXPECT_EQ(minimum.getMinOutValue(), 511.5);
    EXPECT_TRUE(minimum.maxIsEmpty());
    EXPECT_TRUE(std::isnan(minimum.getMaxOutValue()));

    RangeOp maximum(BIT_DEPTH_32f, BIT_DEPTH_32f, kNone, 0.5, kNone, 0.5);
    maximum.setInputBitDepth(BIT_DEPTH_10i);
    maximum.setOutputBitDepth(BIT_DEPTH_10i);
    EXPECT_EQ(maximum.getMaxInValue(), 511.5);
    EXPECT_EQ(maximum.getMaxOutValue(), 511.5);
    EXPECT_TRUE(maximum.minIsEmpty());
    EXPECT_TRUE(std::isnan(maximum.getMinOutValue()));

    RangeOp none(BIT_DEPTH_32f, BIT_DEPTH_32f, kNone, kNone, kNone, kNone);
    none.setOutputBitDepth(BIT_DEPTH_8i);
    EXPECT_TRUE(none.isIdentity());
    expectBounds(none, 0.0, 255.0);
}

TEST(RangeOp, EqualityLooksAtTheLimitsAsNumbers)
{
    RangeOp const range(BIT_DEPTH_32f, BIT_DEPTH_32f, 0.0, 1.0, 0.0, 1.0);
    EXPECT_TRUE(areEqual(range, RangeOp(BIT_DEPTH_32f, BIT_DEPTH_32f, -0.0, 1.0, 0.0, 1.0)));
    EXPECT_FALSE(areEqual(range, RangeOp(BIT_DEPTH_32f, BIT_DEPTH_32f, -0.1, 1.0, 0.0, 1.0)));
    EXPECT_FALSE(areEqual(range, RangeOp(BIT_DEPTH_32f, BIT_DEPTH_32f, 0.0, 1.1, 0.0, 1.0)));
    EXPECT_FALSE(areEqual(range, RangeOp(BIT_DEPTH_32f, BIT_DEPTH_32f, 0.0, 1.0, -0.1, 1.0)));
    EXPECT_FALSE(areEqual(range, RangeOp(BIT_DEPTH_32f, BIT_DEPTH_32f, 0.0, 1.0, 0.0, 1.1)));
    EXPECT_FALSE(areEqual(range, RangeOp(BIT_DEPTH_32f, BIT_DEPTH_32f, 0.0, kNone, 0.0, kNone)));
    EXPECT_FALSE(areEqual(range, RangeOp(BIT_DEPTH_32f, BIT_DEPTH_16f, 0.0, 1.0, 0.0, 1.0)));
}

TEST(RangeOp, AbsentLimitsAreEqual)
{
    auto const onlyMin = [](double in, double out) { return RangeOp(BIT_DEPTH_32f, BIT_DEPTH_32f, in, kNone, out, kNone); };
    EXPECT_TRUE(areEqual(onlyMin(0.0, 0.0), onlyMin(0.0, 0.0)));
    EXPECT_FALSE(areEqual(onlyMin(0.0, 0.0), RangeOp(BIT_DEPTH_32f, BIT_DEPTH_32f, kNone, 0.0, kNone, 0.0)));
    RangeOp const one(BIT_DEPTH_32f, BIT_DEPTH_32f, kNone, kNone, kNone, kNone);
    EXPECT_TRUE(areEqual(one, RangeOp()));
}

TEST(RangeOp, IsNotEqualToAnOperatorOfAnotherType)
{
    RangeOp const range;
    EXPECT_FALSE(areEqual(range, *unresolvedReference("some")));
    EXPECT_TRUE(areEqual(range, range));
}

TEST(RangeOp, PrintsLimitsAsADefaultStreamDoes)
{
    RangeOp const range(BIT_DEPTH_32f, BIT_DEPTH_32f, 0.1, 1.0 / 3.0, 65535.0, 1e6);
    EXPECT_EQ(range.getMinInString(), "0.1");
    EXPECT_EQ(range.getMaxInString(), "0.333333");
    EXPECT_EQ(range.getMinOutString(), "65535");
    EXPECT_EQ(range.getMaxOutString(), "1e+06");
}

} // namespace
