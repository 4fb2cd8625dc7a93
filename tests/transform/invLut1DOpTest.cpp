// The inverse of a one-dimensional table: monotonic columns, their useful domains, depths, styles. Columns are worked out by hand.
#include "transform/invLut1DOp.h"
#include "support/failure.h"
#include "transform/opList.h"
#include "transform/tableValues.h"

#include <gmock/gmock.h>

#include <memory>
#include <vector>

using namespace Color;
using namespace Tavrin;
using testing::ElementsAre;
using testing::ElementsAreArray;

namespace
{

using InvStyle = InvLut1DOp::InvStyle;

Lut1DOp forward(std::vector<float> const& values, BitDepth in = BIT_DEPTH_32f, BitDepth out = BIT_DEPTH_32f)
{
    Lut1DOp op(in, out, "id", "name", Descriptions(), Lut1DOp::InterpolationAlgo::Linear, HALF_FLAGS_NONE,
               static_cast<unsigned int>(values.size() / 3));
    setValues(op.getArray(), values);
    return op;
}

InvLut1DOp inverseOfColumn(std::vector<float> const& column)
{
    return InvLut1DOp(forward(inAllColumns(column)));
}

struct Prepared
{
    std::vector<float> column;
    bool isIncreasing;
    unsigned int startDomain;
    unsigned int endDomain;
};

// NaNs count as equal.
void expectPrepared(std::vector<float> const& column, Prepared const& expected)
{
    InvLut1DOp const op = inverseOfColumn(column);
    for (unsigned int component = 0; component < 3; ++component)
    {
        std::vector<float> const result = columnOf(op.getArray(), component);
        ASSERT_EQ(result.size(), expected.column.size());
        for (std::size_t row = 0; row < result.size(); ++row)
        {
            if (std::isnan(expected.column[row]))
                EXPECT_TRUE(std::isnan(result[row])) << row;
            else
                EXPECT_EQ(result[row], expected.column[row]) << row;
        }
        InvLut1DOp::ComponentProperties const& properties = op.getComponentProperties()[component];
        EXPECT_EQ(properties.isIncreasing, expected.isIncreasing);
        EXPECT_EQ(properties.startDomain, expected.startDomain);
        EXPECT_EQ(properties.endDomain, expected.endDomain);
    }
}

} // namespace

TEST(InvLut1DOp, NamesItsType)
{
    InvLut1DOp const op;
    EXPECT_EQ(static_cast<unsigned int>(op.getOpType()), 1U);
    EXPECT_EQ(op.getOpTypeName(), "Inverse LUT 1D");
    EXPECT_EQ(op.getMinimumVersion(), 1.3F);
}

TEST(InvLut1DOp, BeginsWithTwoRowsAndWithoutRecords)
{
    InvLut1DOp const op;
    EXPECT_THAT(op.getArray().getValues(), ElementsAre(0, 0, 0, 1, 1, 1));
    EXPECT_EQ(op.getInvStyle(), InvStyle::Exact);
    for (InvLut1DOp::ComponentProperties const& properties : op.getComponentProperties())
    {
        EXPECT_FALSE(properties.isIncreasing);
        EXPECT_EQ(properties.startDomain, 0U);
        EXPECT_EQ(properties.endDomain, 0U);
    }
}

TEST(InvLut1DOp, TakesOverTheForwardTableWithDepthsExchanged)
{
    Lut1DOp table = forward(inAllColumns({0, 100, 1023}), BIT_DEPTH_8i, BIT_DEPTH_10i);
    table.setOutputRawHalfs(true);
    InvLut1DOp const op(table);
    EXPECT_EQ(op.getInputBitDepth(), BIT_DEPTH_10i);
    EXPECT_EQ(op.getOutputBitDepth(), BIT_DEPTH_8i);
    EXPECT_EQ(op.getId(), "id");
    EXPECT_EQ(op.getName(), "name");
    EXPECT_EQ(op.getInterpolation(), Lut1DOp::InterpolationAlgo::Linear);
    EXPECT_EQ(op.getHalfFlags(), HALF_FLAGS_OUTPUT_RAW_HALFS);
    EXPECT_THAT(columnOf(op.getArray(), 1), ElementsAre(0, 100, 1023));
}

TEST(InvLut1DOp, MakesAReversalFlat)
{
    expectPrepared({0, 0.5F, 0.4F, 1}, {{0, 0.5F, 0.5F, 1}, true, 0, 3});
    expectPrepared({1, 0.5F, 0.6F, 0.7F, 0}, {{1, 0.5F, 0.5F, 0.5F, 0}, false, 0, 4});
    // The end itself, where the column fell below its beginning on the way.
    expectPrepared({0, 0.8F, 0.3F}, {{0, 0.8F, 0.8F}, true, 0, 1});
}

TEST(InvLut1DOp, TakesEqualEndsForDecreasing)
{
    expectPrepared({0.5F, 0.5F, 0.5F}, {{0.5F, 0.5F, 0.5F}, false, 0, 0});
    expectPrepared({0, 1, 0}, {{0, 0, 0}, false, 0, 0});
    expectPrepared({0, -1, 0}, {{0, -1, -1}, false, 0, 1});
}

TEST(InvLut1DOp, LeavesFlatEndsOutOfTheDomain)
{
    expectPrepared({1, 1, 0.5F, 0, 0}, {{1, 1, 0.5F, 0, 0}, false, 1, 3});
    expectPrepared({0, 0, 0, 1, 1}, {{0, 0, 0, 1, 1}, true, 2, 3});
    // A flat stretch in the middle stays inside.
    expectPrepared({0, 0.5F, 0.5F, 1}, {{0, 0.5F, 0.5F, 1}, true, 0, 3});
    expectPrepared({0, 1}, {{0, 1}, true, 0, 1});
}

TEST(InvLut1DOp, TreatsNaNAsNothingGreaterAndNothingEqual)
{
    // Increasing: a NaN is not greater than its predecessor, and is replaced by it.
    expectPrepared({0, kNaN, 1}, {{0, 0, 1}, true, 1, 2});
    // Decreasing: it stays, and so does all that follows, since nothing is greater than it.
    expectPrepared({1, kNaN, 2, 0}, {{1, kNaN, 2, 0}, false, 0, 3});
    // At the ends nothing is greater, so the column is decreasing, and no walk begins.
    expectPrepared({kNaN, 0, 1}, {{kNaN, 0, 0}, false, 0, 1});
    expectPrepared({0, 0, kNaN}, {{0, 0, kNaN}, false, 1, 2});
}

TEST(InvLut1DOp, PreparesEachComponentApart)
{
    InvLut1DOp const op(forward({0, 1, 0, 0.5F, 0.5F, 0, 1, 0, 0}));
    EXPECT_TRUE(op.getComponentProperties()[0].isIncreasing);
    EXPECT_FALSE(op.getComponentProperties()[1].isIncreasing);
    EXPECT_EQ(op.getComponentProperties()[1].endDomain, 2U);
    EXPECT_EQ(op.getComponentProperties()[2].endDomain, 0U);
}

TEST(InvLut1DOp, GivesTheRecordOfASingleComponentToAllThree)
{
    Lut1DOp table = forward(inAllColumns({0, 0, 1, 1}));
    table.getArray().setNumColorComponents(1);
    InvLut1DOp const op(table);
    for (InvLut1DOp::ComponentProperties const& properties : op.getComponentProperties())
    {
        EXPECT_TRUE(properties.isIncreasing);
        EXPECT_EQ(properties.startDomain, 1U);
        EXPECT_EQ(properties.endDomain, 2U);
    }
}

TEST(InvLut1DOp, RefusesAHalfDomainAndNotRawHalfs)
{
    Lut1DOp const halfDomain(BIT_DEPTH_16f, BIT_DEPTH_16f, "id", "name", Descriptions(), Lut1DOp::InterpolationAlgo::Default,
                             HALF_FLAGS_INPUT_HALF_DOMAIN);
    OpList list;
    EXPECT_EQ(failureOf([&] { halfDomain.inverse(list); }),
              (Failure{0x240012, "Unsupported raw half output lut for inverse operation"}));
    Lut1DOp rawHalfs(2);
    rawHalfs.setOutputRawHalfs(true);
    EXPECT_EQ(failureOf([&] { rawHalfs.inverse(list); }), Failure{});
}

TEST(InvLut1DOp, InverseIsTheFlattenedTable)
{
    Lut1DOp table = forward(inAllColumns({0, 0.5F, 0.4F, 1}), BIT_DEPTH_10i, BIT_DEPTH_16f);
    table.setOutputRawHalfs(true);
    OpList list;
    InvLut1DOp(table).inverse(list);
    ASSERT_EQ(list.size(), 1U);
    auto const& result = dynamic_cast<Lut1DOp const&>(list.get(0));
    EXPECT_EQ(result.getOpType(), Op::OpType::Lut1DOp);
    EXPECT_EQ(result.getInputBitDepth(), BIT_DEPTH_10i);
    EXPECT_EQ(result.getOutputBitDepth(), BIT_DEPTH_16f);
    EXPECT_EQ(result.getInterpolation(), Lut1DOp::InterpolationAlgo::Linear);
    EXPECT_TRUE(result.isOutputRawHalfs());
    for (unsigned int component = 0; component < 3; ++component)
        EXPECT_THAT(columnOf(result.getArray(), component), ElementsAre(0, 0.5F, 0.5F, 1));
}

TEST(InvLut1DOp, OfAMonotonicTableInvertsBackToItsTable)
{
    Lut1DOp const table = forward(inAllColumns({0, 10, 1023}), BIT_DEPTH_8i, BIT_DEPTH_10i);
    OpList list;
    InvLut1DOp(table).inverse(list);
    EXPECT_TRUE(areEqual(table, list.get(0)));
}

TEST(InvLut1DOp, ScalesItsValuesWithTheInputDepthAlone)
{
    InvLut1DOp op(forward(inAllColumns({0, 0, 511.5F, 1023}), BIT_DEPTH_8i, BIT_DEPTH_10i));
    op.setOutputBitDepth(BIT_DEPTH_32f);
    EXPECT_EQ(op.getOutputBitDepth(), BIT_DEPTH_32f);
    EXPECT_THAT(columnOf(op.getArray(), 0), ElementsAre(0, 0, 511.5F, 1023));
    op.setInputBitDepth(BIT_DEPTH_32f);
    EXPECT_EQ(op.getInputBitDepth(), BIT_DEPTH_32f);
    EXPECT_NEAR(op.getArray().get(6), 0.5, 0.5 * 3 * 0x1p-24);
    EXPECT_NEAR(op.getArray().get(11), 1.0, 3 * 0x1p-24);
    // Order and flat stretches, and so the records, are as they were.
    EXPECT_TRUE(op.getComponentProperties()[0].isIncreasing);
    EXPECT_EQ(op.getComponentProperties()[0].startDomain, 1U);
    EXPECT_EQ(op.getComponentProperties()[0].endDomain, 3U);
}

TEST(InvLut1DOp, CloneKeepsStyleAndRecords)
{
    InvLut1DOp op = inverseOfColumn({0, 0, 1, 1});
    op.setInvStyle(InvStyle::Fast);
    std::unique_ptr<Op> const clone(op.clone());
    auto const& copy = dynamic_cast<InvLut1DOp const&>(*clone);
    EXPECT_EQ(copy.getInvStyle(), InvStyle::Fast);
    EXPECT_EQ(copy.getComponentProperties()[2].startDomain, 1U);
    EXPECT_EQ(copy.getComponentProperties()[2].endDomain, 2U);
}

TEST(InvLut1DOp, IsEqualWhateverTheStyle)
{
    InvLut1DOp const exact = inverseOfColumn({0, 0.5F, 1});
    InvLut1DOp fast = exact;
    fast.setInvStyle(InvStyle::Fast);
    EXPECT_TRUE(areEqual(exact, fast));
    fast.getArray().set(0, -1.0F);
    EXPECT_FALSE(areEqual(exact, fast));
    EXPECT_FALSE(areEqual(exact, forward(inAllColumns({0, 0.5F, 1}))));
}

TEST(InvLut1DOp, KnowsItsStylesInAnyCase)
{
    EXPECT_EQ(InvLut1DOp::getInvStyle("exact"), InvStyle::Exact);
    EXPECT_EQ(InvLut1DOp::getInvStyle("FAST"), InvStyle::Fast);
    EXPECT_STREQ(InvLut1DOp::getInvStyleName(InvStyle::Exact), "exact");
    EXPECT_STREQ(InvLut1DOp::getInvStyleName(InvStyle::Fast), "fast");
    EXPECT_STREQ(InvLut1DOp::getInvStyleName(static_cast<InvStyle>(2)), "");
}

TEST(InvLut1DOp, RefusesOtherStyles)
{
    EXPECT_EQ(failureOf([] { InvLut1DOp::getInvStyle(nullptr); }), (Failure{0x240011, "Unrecognized Lut1D inverse style: "}));
    EXPECT_EQ(failureOf([] { InvLut1DOp::getInvStyle(""); }), (Failure{0x240011, "Unrecognized Lut1D inverse style: "}));
    EXPECT_EQ(failureOf([] { InvLut1DOp::getInvStyle("quick"); }), (Failure{0x240010, "Invalid Lut1D inverse style"}));
}

TEST(InvLut1DOp, HasAnExtendedDomainWhereItsEndsPassTheInputDepth)
{
    EXPECT_FALSE(inverseOfColumn({0, 0.5F, 1}).hasExtendedDomain());
    EXPECT_FALSE(inverseOfColumn({1, 0.5F, 0}).hasExtendedDomain());
    EXPECT_TRUE(inverseOfColumn({-0.01F, 0.5F, 1}).hasExtendedDomain());
    EXPECT_TRUE(inverseOfColumn({0, 0.5F, 1.01F}).hasExtendedDomain());
    EXPECT_TRUE(inverseOfColumn({1.01F, 0.5F, 0}).hasExtendedDomain());
    EXPECT_TRUE(inverseOfColumn({1, 0.5F, -0.01F}).hasExtendedDomain());
    // One component is enough.
    EXPECT_TRUE(InvLut1DOp(forward({0, 0, 0, 1, 1, 1.5F})).hasExtendedDomain());
    // In the scale of the input depth.
    EXPECT_FALSE(InvLut1DOp(forward(inAllColumns({0, 1023}), BIT_DEPTH_32f, BIT_DEPTH_10i)).hasExtendedDomain());
    EXPECT_TRUE(InvLut1DOp(forward(inAllColumns({0, 1024}), BIT_DEPTH_32f, BIT_DEPTH_10i)).hasExtendedDomain());
}

TEST(InvLut1DOp, LooksAtOneComponentOnlyWhereThereIsOne)
{
    Lut1DOp table = forward({0, 0, -5, 1, 1, 5});
    table.getArray().setNumColorComponents(1);
    EXPECT_FALSE(InvLut1DOp(table).hasExtendedDomain());
}

TEST(InvLut1DOp, ValidatesLikeATableUnderItsOwnName)
{
    InvLut1DOp op;
    op.getArray().resize(0, 3);
    EXPECT_EQ(failureOf([&] { op.validate(); }), (Failure{0x210003, "Array content for Inverse LUT 1D illegal"}));
    op.getArray().resize(8, 3);
    op.setInputHalfDomain(true);
    EXPECT_EQ(failureOf([&] { op.validate(); }),
              (Failure{0x24000E, "8 entries found, 65536 req'd for halfDomain lut Inverse LUT 1D: Inverse LUT 1D "}));
}
