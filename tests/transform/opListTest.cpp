// The owning list of operators and the depths between them.
#include "transform/opList.h"
#include "support/failure.h"
#include "transform/matrixOp.h"
#include "transform/rangeOp.h"
#include "transform/testOps.h"

#include <gtest/gtest.h>

#include <utility>

using namespace Color;
using namespace Tavrin;

namespace
{

MatrixOp* matrix(BitDepth in, BitDepth out, std::string const& name = "")
{
    return new MatrixOp(in, out, "", name, Descriptions());
}

std::pair<BitDepth, BitDepth> depthsOf(Op const& op)
{
    return {op.getInputBitDepth(), op.getOutputBitDepth()};
}

float diagonalOf(Op const& op)
{
    return dynamic_cast<MatrixOp const&>(op).getArray().get(0);
}

using Depths = std::pair<BitDepth, BitDepth>;

// Three operators whose depths join: 8i 10i, 10i 12i, 12i 16i.
OpList threeOps()
{
    OpList list;
    list.append(matrix(BIT_DEPTH_8i, BIT_DEPTH_10i, "a"));
    list.append(matrix(BIT_DEPTH_10i, BIT_DEPTH_12i, "b"));
    list.append(matrix(BIT_DEPTH_12i, BIT_DEPTH_16i, "c"));
    return list;
}

TEST(OpList, AppendToAnEmptyListLeavesTheDepths)
{
    OpList list;
    list.append(matrix(BIT_DEPTH_8i, BIT_DEPTH_16i));
    EXPECT_EQ(depthsOf(list.get(0)), Depths(BIT_DEPTH_8i, BIT_DEPTH_16i));
}

// What 1023 meant before is now meant by 1.
TEST(OpList, AppendRescalesTheNewOperatorToTheDepthBeforeIt)
{
    OpList list;
    list.append(matrix(BIT_DEPTH_32f, BIT_DEPTH_32f));
    list.append(matrix(BIT_DEPTH_10i, BIT_DEPTH_10i));
    EXPECT_EQ(depthsOf(list.get(1)), Depths(BIT_DEPTH_32f, BIT_DEPTH_10i));
    EXPECT_EQ(diagonalOf(list.get(1)), 1023.0F);
    EXPECT_EQ(diagonalOf(list.get(0)), 1.0F);
}

TEST(OpList, PrependRescalesTheOldFirstOperator)
{
    OpList list;
    list.prepend(matrix(BIT_DEPTH_10i, BIT_DEPTH_10i, "second"));
    EXPECT_EQ(depthsOf(list.get(0)), Depths(BIT_DEPTH_10i, BIT_DEPTH_10i));
    list.prepend(matrix(BIT_DEPTH_8i, BIT_DEPTH_32f, "first"));
    EXPECT_EQ(list.get(0).getName(), "first");
    EXPECT_EQ(depthsOf(list.get(0)), Depths(BIT_DEPTH_8i, BIT_DEPTH_32f));
    EXPECT_EQ(depthsOf(list.get(1)), Depths(BIT_DEPTH_32f, BIT_DEPTH_10i));
    EXPECT_EQ(diagonalOf(list.get(1)), 1023.0F);
}

TEST(OpList, ReplaceJoinsBothNeighbours)
{
    OpList list = threeOps();
    list.replace(matrix(BIT_DEPTH_8i, BIT_DEPTH_32f, "new"), 1);
    EXPECT_EQ(list.size(), 3U);
    EXPECT_EQ(list.get(1).getName(), "new");
    EXPECT_EQ(depthsOf(list.get(0)), Depths(BIT_DEPTH_8i, BIT_DEPTH_10i));
    EXPECT_EQ(depthsOf(list.get(1)), Depths(BIT_DEPTH_10i, BIT_DEPTH_32f));
    EXPECT_EQ(depthsOf(list.get(2)), Depths(BIT_DEPTH_32f, BIT_DEPTH_16i));
}

TEST(OpList, ReplaceAtTheEndsKeepsTheOuterDepthsOfTheNewOperator)
{
    OpList list = threeOps();
    list.replace(matrix(BIT_DEPTH_16f, BIT_DEPTH_32f), 0);
    list.replace(matrix(BIT_DEPTH_8i, BIT_DEPTH_16f), 2);
    EXPECT_EQ(depthsOf(list.get(0)), Depths(BIT_DEPTH_16f, BIT_DEPTH_32f));
    EXPECT_EQ(depthsOf(list.get(1)), Depths(BIT_DEPTH_32f, BIT_DEPTH_12i));
    EXPECT_EQ(depthsOf(list.get(2)), Depths(BIT_DEPTH_12i, BIT_DEPTH_16f));
}

TEST(OpList, RemoveFromTheMiddleJoinsTheGap)
{
    OpList list = threeOps();
    std::unique_ptr<Op> const removed(list.remove(1));
    EXPECT_EQ(removed->getName(), "b");
    EXPECT_EQ(depthsOf(*removed), Depths(BIT_DEPTH_10i, BIT_DEPTH_12i));
    EXPECT_EQ(list.size(), 2U);
    EXPECT_EQ(depthsOf(list.get(1)), Depths(BIT_DEPTH_10i, BIT_DEPTH_16i));
    EXPECT_EQ(failureOf([&] { list.validate(); }), Failure());
}

TEST(OpList, EraseAtTheEndsChangesNothingElse)
{
    OpList list = threeOps();
    list.erase(0);
    list.erase(1);
    ASSERT_EQ(list.size(), 1U);
    EXPECT_EQ(list.get(0).getName(), "b");
    EXPECT_EQ(depthsOf(list.get(0)), Depths(BIT_DEPTH_10i, BIT_DEPTH_12i));
    list.erase(0);
    EXPECT_TRUE(list.empty());
}

TEST(OpList, RefusesNullOperators)
{
    OpList list = threeOps();
    Failure const entryNull{0x260007, "Entry null"};
    EXPECT_EQ(failureOf([&] { list.append(nullptr); }), entryNull);
    EXPECT_EQ(failureOf([&] { list.prepend(nullptr); }), entryNull);
    EXPECT_EQ(failureOf([&] { list.replace(nullptr, 0); }), entryNull);
    EXPECT_EQ(failureOf([&] { list.replace(nullptr, 3); }), entryNull);
    EXPECT_EQ(list.size(), 3U);
}

TEST(OpList, RefusesIndicesBeyondTheEnd)
{
    OpList list = threeOps();
    OpList const& constant = list;
    Failure const outOfRange{0x260006, "Index 3 out of range"};
    EXPECT_EQ(failureOf([&] { list.get(3); }), outOfRange);
    EXPECT_EQ(failureOf([&] { constant.get(3); }), outOfRange);
    EXPECT_EQ(failureOf([&] { list.remove(3); }), outOfRange);
    EXPECT_EQ(failureOf([&] { list.erase(3); }), outOfRange);
    EXPECT_EQ(failureOf([&] { list.replace(matrix(BIT_DEPTH_8i, BIT_DEPTH_8i), 3); }), outOfRange);
    EXPECT_EQ(list.size(), 3U);
}

// A range of 0.01 code values at 16i is too narrow to be told at 32f, so it can't follow a 32f output.
TEST(OpList, StaysAsItWasWhenAnOperatorRefusesItsNewDepth)
{
    OpList list = threeOps();
    list.get(2).setOutputBitDepth(BIT_DEPTH_32f);
    auto* const narrow = new RangeOp(BIT_DEPTH_16i, BIT_DEPTH_16i, 10.0, 10.01, 0.0, 1.0);
    EXPECT_EQ(failureOf([&] { list.append(narrow); }).id, 0x270002U);
    EXPECT_EQ(list.size(), 3U);
    EXPECT_EQ(list.get(2).getName(), "c");
}

TEST(OpList, CopyHoldsClones)
{
    OpList const list = threeOps();
    OpList const copy(list);
    EXPECT_TRUE(copy == list);
    EXPECT_NE(&copy.get(0), &list.get(0));

    OpList assigned;
    assigned.append(matrix(BIT_DEPTH_8i, BIT_DEPTH_8i));
    assigned = list;
    EXPECT_TRUE(assigned == list);
    EXPECT_NE(&assigned.get(0), &list.get(0));
}

TEST(OpList, SelfAssignmentKeepsTheVeryOperators)
{
    OpList list = threeOps();
    Op const* const first = &list.get(0);
    OpList& alias = list;
    list = alias;
    EXPECT_EQ(&list.get(0), first);
}

TEST(OpList, AppendingAListLeavesDepthsWhichValidateThenReports)
{
    OpList list;
    list.append(matrix(BIT_DEPTH_16i, BIT_DEPTH_8i, "first"));
    OpList other;
    other.append(matrix(BIT_DEPTH_16i, BIT_DEPTH_8i, "second"));
    list += other;
    EXPECT_EQ(depthsOf(list.get(1)), Depths(BIT_DEPTH_16i, BIT_DEPTH_8i));
    EXPECT_NE(&list.get(1), &other.get(0));
    EXPECT_EQ(failureOf([&] { list.validate(); }), (Failure{0x26000a, "Bit depth mismatch between op 'first' and op 'second'"}));
}

TEST(OpList, AppendedToItselfHoldsEverythingTwice)
{
    OpList list = threeOps();
    list += list;
    ASSERT_EQ(list.size(), 6U);
    EXPECT_EQ(list.get(5).getName(), "c");
}

TEST(OpList, EqualityLooksAtSizeOrderAndOperators)
{
    OpList const list = threeOps();
    OpList shorter = threeOps();
    shorter.erase(2);
    EXPECT_FALSE(list == shorter);
    OpList changed = threeOps();
    changed.get(1).setName("other");
    EXPECT_FALSE(list == changed);
    EXPECT_TRUE(list == threeOps());
    EXPECT_TRUE(OpList() == OpList());
}

TEST(OpList, ValidatesEachOperatorBeforeTheDepthInFrontOfIt)
{
    OpList list;
    list.append(new PlainOp(BIT_DEPTH_8i, BIT_DEPTH_UNKNOWN, "x"));
    EXPECT_EQ(failureOf([&] { list.validate(); }).id, 0x210001U);
    EXPECT_EQ(failureOf([] { OpList().validate(); }), Failure());
    EXPECT_EQ(failureOf([] { threeOps().validate(); }), Failure());
}

TEST(OpList, TellsReferences)
{
    OpList list = threeOps();
    EXPECT_FALSE(list.hasReferences());
    EXPECT_FALSE(list.hasUnresolvedReferences());
    EXPECT_FALSE(list.hasAliasReferencesToResolve());

    list.append(resolvedReference("some", threeOps()).release());
    EXPECT_TRUE(list.hasReferences());
    EXPECT_FALSE(list.hasUnresolvedReferences());
    EXPECT_FALSE(list.hasAliasReferencesToResolve());

    list.unresolve();
    EXPECT_TRUE(list.hasUnresolvedReferences());
}

TEST(OpList, TellsAliasesToResolveAtAnyDepth)
{
    OpList inner;
    inner.append(unresolvedReference("currentMonitor").release());
    EXPECT_TRUE(inner.hasAliasReferencesToResolve());

    OpList outer = threeOps();
    outer.append(resolvedReference("some", inner).release());
    EXPECT_TRUE(outer.hasAliasReferencesToResolve());
    outer.unresolve();
    EXPECT_FALSE(outer.hasAliasReferencesToResolve());
}

TEST(OpList, EveryOperatorWithAPropertyReceivesIt)
{
    OpList list = threeOps();
    EXPECT_FALSE(list.isDynamic());
    EXPECT_FALSE(list.hasDynamicProperty(DynamicProperty::BYPASS));
    list.get(1).setBypass(bypass(false, true));
    list.get(2).setBypass(bypass(false, true));
    EXPECT_TRUE(list.isDynamic());
    EXPECT_TRUE(list.hasDynamicProperty(DynamicProperty::BYPASS));

    list.setDynamicProperty(DynamicProperty(DynamicProperty::BYPASS, true));
    EXPECT_FALSE(list.get(0).getBypass()->getValue());
    EXPECT_TRUE(list.get(1).getBypass()->getValue());
    EXPECT_TRUE(list.get(2).getBypass()->getValue());
}

TEST(OpList, FirstOperatorWithAPropertyAnswers)
{
    OpList list = threeOps();
    list.get(1).setBypass(bypass(true, true));
    list.get(2).setBypass(bypass(false, true));
    DynamicProperty property(DynamicProperty::BYPASS, false);
    list.getDynamicProperty(property);
    EXPECT_TRUE(bool(property.value));
}

TEST(OpList, RefusesPropertiesThatNoOperatorHas)
{
    OpList list = threeOps();
    DynamicProperty property(DynamicProperty::EXPOSURE, 1.0);
    Failure const notAvailable{0x210013, "Dynamic property Exposure not available in "};
    EXPECT_EQ(failureOf([&] { list.setDynamicProperty(property); }), notAvailable);
    EXPECT_EQ(failureOf([&] { list.getDynamicProperty(property); }), notAvailable);
}

} // namespace
