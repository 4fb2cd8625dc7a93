// The base of all operators.
#include "support/failure.h"
#include "transform/matrixOp.h"
#include "transform/opList.h"
#include "transform/rangeOp.h"
#include "transform/testOps.h"

#include <gtest/gtest.h>

using namespace Color;
using namespace Tavrin;

namespace
{

Descriptions describedAs(std::string const& text)
{
    Descriptions descriptions;
    descriptions += text;
    return descriptions;
}

TEST(Op, StartsWithoutTextsAndWithAStaticBypassThatIsOff)
{
    PlainOp const op(BIT_DEPTH_8i, BIT_DEPTH_16f);
    EXPECT_EQ(op.getInputBitDepth(), BIT_DEPTH_8i);
    EXPECT_EQ(op.getOutputBitDepth(), BIT_DEPTH_16f);
    EXPECT_EQ(op.getId(), "");
    EXPECT_EQ(op.getName(), "");
    EXPECT_TRUE(op.getDescriptions().getList().empty());
    ASSERT_NE(op.getBypass(), nullptr);
    EXPECT_FALSE(op.getBypass()->getValue());
    EXPECT_FALSE(op.getBypass()->isDynamic());
}

TEST(Op, AnswersWhatMostOperatorsAnswer)
{
    PlainOp op(BIT_DEPTH_8i, BIT_DEPTH_8i);
    EXPECT_FALSE(op.isIdentity());
    EXPECT_FALSE(op.isNoop());
    EXPECT_FALSE(op.needsResolving());
    EXPECT_FALSE(op.isDynamic());
    EXPECT_EQ(op.getMinimumVersion(), 1.3F);
    op.unresolve();
    EXPECT_FALSE(op.needsResolving());
}

TEST(Op, TypesHaveTheirNumbersAndNames)
{
    EXPECT_EQ(static_cast<unsigned int>(Op::OpType::Lut1DOp), 0U);
    EXPECT_EQ(static_cast<unsigned int>(Op::OpType::InvLut1DOp), 1U);
    EXPECT_EQ(static_cast<unsigned int>(Op::OpType::Lut3DOp), 2U);
    EXPECT_EQ(static_cast<unsigned int>(Op::OpType::MatrixOp), 3U);
    EXPECT_EQ(static_cast<unsigned int>(Op::OpType::RangeOp), 4U);
    EXPECT_EQ(static_cast<unsigned int>(Op::OpType::ReferenceOp), 5U);
    EXPECT_EQ(static_cast<unsigned int>(Op::OpType::GammaOp), 6U);
    EXPECT_EQ(static_cast<unsigned int>(Op::OpType::ExposureContrastOp), 7U);
    EXPECT_EQ(static_cast<unsigned int>(Op::OpType::LogOp), 8U);
    EXPECT_EQ(static_cast<unsigned int>(Op::OpType::CDLOp), 9U);
    EXPECT_EQ(static_cast<unsigned int>(Op::OpType::DitherOp), 10U);
    EXPECT_EQ(static_cast<unsigned int>(Op::OpType::GamutMapOp), 11U);
    EXPECT_EQ(static_cast<unsigned int>(Op::OpType::HueVectorOp), 12U);
    EXPECT_EQ(MatrixOp().getOpTypeName(), "Matrix");
    EXPECT_EQ(RangeOp().getOpTypeName(), "Range");
}

TEST(Op, NameOfATypeLivesForTheWholeRun)
{
    std::string const* const name = &MatrixOp().getOpTypeName();
    EXPECT_EQ(name, &MatrixOp().getOpTypeName());
    EXPECT_EQ(*name, "Matrix");
}

TEST(Op, IsCitedByItsNameElseItsIdElseItsType)
{
    PlainOp op(BIT_DEPTH_8i, BIT_DEPTH_8i);
    EXPECT_EQ(op.getMeaningfullIdentifier(), "Range");
    op.setId("id");
    EXPECT_EQ(op.getMeaningfullIdentifier(), "id");
    op.setName("name");
    EXPECT_EQ(op.getMeaningfullIdentifier(), "name");
}

TEST(Op, WithoutADepthIsInvalid)
{
    auto const validate = [](BitDepth in, BitDepth out) { return failureOf([&] { PlainOp(in, out, "x").validate(); }); };
    EXPECT_EQ(validate(BIT_DEPTH_UNKNOWN, BIT_DEPTH_8i), (Failure{0x210001, "'InBitDepth' attribute missing in x"}));
    EXPECT_EQ(validate(BIT_DEPTH_8i, BIT_DEPTH_UNKNOWN), (Failure{0x210001, "'OutBitDepth' attribute missing in x"}));
    EXPECT_EQ(validate(BIT_DEPTH_UNKNOWN, BIT_DEPTH_UNKNOWN), (Failure{0x210001, "'InBitDepth' attribute missing in x"}));
    EXPECT_EQ(validate(BIT_DEPTH_8i, BIT_DEPTH_8i), Failure());
}

TEST(Op, CopiesShareADynamicBypass)
{
    PlainOp op(BIT_DEPTH_8i, BIT_DEPTH_8i);
    op.setBypass(bypass(false, true));
    PlainOp const copy(op);
    PlainOp assigned(BIT_DEPTH_32f, BIT_DEPTH_32f);
    assigned = op;
    EXPECT_EQ(copy.getBypass(), op.getBypass());
    EXPECT_EQ(assigned.getBypass(), op.getBypass());

    op.setDynamicProperty(DynamicProperty(DynamicProperty::BYPASS, true));
    EXPECT_TRUE(copy.getBypass()->getValue());
    EXPECT_TRUE(assigned.getBypass()->getValue());
}

TEST(Op, CopiesTakeTheValueOfAStaticBypass)
{
    PlainOp op(BIT_DEPTH_8i, BIT_DEPTH_8i);
    op.setBypass(bypass(true, false));
    PlainOp const copy(op);
    PlainOp assigned(BIT_DEPTH_32f, BIT_DEPTH_32f);
    assigned = op;
    for (PlainOp const* const other : {&copy, static_cast<PlainOp const*>(&assigned)})
    {
        EXPECT_NE(other->getBypass(), op.getBypass());
        EXPECT_TRUE(other->getBypass()->getValue());
        EXPECT_FALSE(other->getBypass()->isDynamic());
    }
}

TEST(Op, KeepsAPrivateCopyOfAGivenStaticBypass)
{
    auto const given = bypass(true, false);
    PlainOp op(BIT_DEPTH_8i, BIT_DEPTH_8i);
    op.setBypass(given);
    EXPECT_NE(op.getBypass(), given);
    given->setValue(false);
    EXPECT_TRUE(op.getBypass()->getValue());
}

TEST(Op, AssignmentTakesEveryField)
{
    MatrixOp const source(BIT_DEPTH_8i, BIT_DEPTH_16f, "id", "name", describedAs("text"));
    MatrixOp target;
    target = source;
    EXPECT_TRUE(areEqual(target, source));
    EXPECT_EQ(target.getInputBitDepth(), BIT_DEPTH_8i);
    EXPECT_EQ(target.getOutputBitDepth(), BIT_DEPTH_16f);
    EXPECT_EQ(target.getDescriptions().getList(), std::vector<std::string>{"text"});
}

TEST(Op, EqualityLooksAtDepthsTextsAndBypass)
{
    MatrixOp const op(BIT_DEPTH_8i, BIT_DEPTH_8i, "id", "name", describedAs("text"));
    EXPECT_TRUE(areEqual(op, op));

    auto const changed = [&](auto change)
    {
        MatrixOp other(op);
        change(other);
        return areEqual(op, other);
    };
    EXPECT_TRUE(changed([](MatrixOp&) {}));
    EXPECT_FALSE(changed([](MatrixOp& other) { other.Op::setInputBitDepth(BIT_DEPTH_10i); }));
    EXPECT_FALSE(changed([](MatrixOp& other) { other.Op::setOutputBitDepth(BIT_DEPTH_10i); }));
    EXPECT_FALSE(changed([](MatrixOp& other) { other.setId("other"); }));
    EXPECT_FALSE(changed([](MatrixOp& other) { other.setName("other"); }));
    EXPECT_FALSE(changed([](MatrixOp& other) { other.getDescriptions() += "more"; }));
    EXPECT_FALSE(changed([](MatrixOp& other) { other.setBypass(bypass(true, false)); }));
    EXPECT_FALSE(changed([](MatrixOp& other) { other.setBypass(bypass(false, true)); }));
    EXPECT_TRUE(changed([](MatrixOp& other) { other.setBypass(bypass(false, false)); }));
}

TEST(Op, BaseEqualityHoldsForOneObject)
{
    PlainOp const op(BIT_DEPTH_8i, BIT_DEPTH_8i);
    EXPECT_TRUE(areEqual(op, op));
}

TEST(Op, SetsAndTellsADynamicBypass)
{
    PlainOp op(BIT_DEPTH_8i, BIT_DEPTH_8i);
    op.setBypass(bypass(false, true));
    EXPECT_TRUE(op.isDynamic());
    EXPECT_TRUE(op.hasDynamicProperty(DynamicProperty::BYPASS));
    EXPECT_FALSE(op.hasDynamicProperty(DynamicProperty::EXPOSURE));

    op.setDynamicProperty(DynamicProperty(DynamicProperty::BYPASS, true));
    DynamicProperty property(DynamicProperty::BYPASS, false);
    op.getDynamicProperty(property);
    EXPECT_TRUE(bool(property.value));
}

TEST(Op, RefusesPropertiesThatItDoesNotHave)
{
    PlainOp op(BIT_DEPTH_8i, BIT_DEPTH_8i, "x");
    DynamicProperty property(DynamicProperty::BYPASS, true);
    Failure const noBypass{0x210013, "Dynamic property Bypass not available in x"};
    EXPECT_EQ(failureOf([&] { op.setDynamicProperty(property); }), noBypass);
    EXPECT_EQ(failureOf([&] { op.getDynamicProperty(property); }), noBypass);
    EXPECT_FALSE(op.getBypass()->getValue());

    property.id = DynamicProperty::CONTRAST;
    EXPECT_EQ(failureOf([&] { op.setDynamicProperty(property); }),
              (Failure{0x210013, "Dynamic property Contrast not available in x"}));
}

TEST(Op, HasNoInverseUnlessItsClassSaysSo)
{
    OpList list;
    PlainOp const op(BIT_DEPTH_8i, BIT_DEPTH_8i, "x");
    EXPECT_EQ(failureOf([&] { op.inverse(list); }), (Failure{0x210014, "Range inverse not supported"}));
    EXPECT_TRUE(list.empty());
}

TEST(Op, StepSizeIsTheValueRangeOverTheNumberOfSteps)
{
    EXPECT_EQ(Op::getValueStepSize(BIT_DEPTH_8i, 256), 1.0F);
    EXPECT_EQ(Op::getValueStepSize(BIT_DEPTH_10i, 3), 511.5F);
    EXPECT_EQ(Op::getValueStepSize(BIT_DEPTH_32f, 5), 0.25F);
}

TEST(Descriptions, AppendTextsAndListsAlsoTheirOwn)
{
    Descriptions descriptions = describedAs("a");
    descriptions += "b";
    descriptions += descriptions;
    EXPECT_EQ(descriptions.getList(), (std::vector<std::string>{"a", "b", "a", "b"}));
    EXPECT_FALSE(descriptions == describedAs("a"));
    EXPECT_TRUE(describedAs("a") == describedAs("a"));
}

} // namespace
