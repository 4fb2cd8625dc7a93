// The model of references to other files.
#include "transform/referenceOp.h"

#include "support/failure.h"
#include "transform/exposureContrastOp.h"
#include "transform/matrixOp.h"
#include "transform/testOps.h"

#include <gtest/gtest.h>

#include <memory>

using namespace Color;
using namespace Tavrin;

namespace
{

constexpr char kCurrentMonitor[] = "currentMonitor";

ReferenceOp byAlias(std::string const& alias, std::string const& name = "")
{
    return ReferenceOp(BIT_DEPTH_16f, BIT_DEPTH_8i, "", name, Descriptions(), alias);
}

ReferenceOp byPath(std::string const& path, BasePath basePath = BASE_PATH_NONE)
{
    return ReferenceOp(BIT_DEPTH_16f, BIT_DEPTH_8i, "", "", Descriptions(), path, basePath);
}

OpList listOf(Op* op)
{
    OpList list;
    list.append(op);
    return list;
}

// Two operators from 16f to 8i.
OpList twoOps()
{
    OpList list = listOf(new PlainOp(BIT_DEPTH_16f, BIT_DEPTH_10i, "first"));
    list.append(new PlainOp(BIT_DEPTH_10i, BIT_DEPTH_8i, "last"));
    return list;
}

TEST(ReferenceOp, PointsNowhereWhenNew)
{
    ReferenceOp const op;
    EXPECT_EQ(op.getInputBitDepth(), BIT_DEPTH_32f);
    EXPECT_EQ(op.getOutputBitDepth(), BIT_DEPTH_32f);
    EXPECT_EQ(static_cast<unsigned int>(op.getOpType()), 5U);
    EXPECT_EQ(op.getOpTypeName(), "Reference");
    EXPECT_EQ(op.getAlias(), "");
    EXPECT_EQ(op.getCurrentAlias(), "");
    EXPECT_EQ(op.getPath(), "");
    EXPECT_EQ(op.getBasePath(), BASE_PATH_NONE);
    EXPECT_TRUE(op.needsResolving());
    EXPECT_EQ(op.getMinimumVersion(), 1.3F);
}

TEST(ReferenceOp, IsMadeByAlias)
{
    Descriptions descriptions;
    descriptions += "text";
    ReferenceOp const op(BIT_DEPTH_10i, BIT_DEPTH_12i, "id", "name", descriptions, "alias");
    EXPECT_EQ(op.getInputBitDepth(), BIT_DEPTH_10i);
    EXPECT_EQ(op.getOutputBitDepth(), BIT_DEPTH_12i);
    EXPECT_EQ(op.getId(), "id");
    EXPECT_EQ(op.getName(), "name");
    EXPECT_EQ(op.getDescriptions().getList(), descriptions.getList());
    EXPECT_EQ(op.getAlias(), "alias");
    EXPECT_EQ(op.getCurrentAlias(), "alias");
    EXPECT_EQ(op.getPath(), "");
    EXPECT_EQ(op.getBasePath(), BASE_PATH_NONE);
}

TEST(ReferenceOp, IsMadeByPath)
{
    ReferenceOp const op = byPath("a/b.ctf", BASE_PATH_SHARED);
    EXPECT_EQ(op.getAlias(), "");
    EXPECT_EQ(op.getCurrentAlias(), "");
    EXPECT_EQ(op.getPath(), "a/b.ctf");
    EXPECT_EQ(op.getBasePath(), BASE_PATH_SHARED);
}

TEST(ReferenceOp, NeedsAnAliasOrAPath)
{
    Failure const noTarget{0x280001, "Reference 'Reference' requires Alias or Path attributes"};
    EXPECT_EQ(failureOf([] { ReferenceOp().validate(); }), noTarget);
    EXPECT_EQ(failureOf([] { byPath("", BASE_PATH_VENDOR).validate(); }), noTarget);
    EXPECT_EQ(failureOf([] { byAlias("", "look").validate(); }),
              (Failure{0x280001, "Reference 'look' requires Alias or Path attributes"}));
    EXPECT_EQ(failureOf([] { byAlias("alias").validate(); }), Failure());
    EXPECT_EQ(failureOf([] { byPath("path").validate(); }), Failure());
}

TEST(ReferenceOp, ValidatesWhatItResolvedTo)
{
    ReferenceOp op = byAlias("alias");
    OpList gap = listOf(new PlainOp(BIT_DEPTH_16f, BIT_DEPTH_10i, "a"));
    gap += listOf(new PlainOp(BIT_DEPTH_12i, BIT_DEPTH_8i, "b"));
    op.setResolvedOps(gap);
    EXPECT_EQ(failureOf([&] { op.validate(); }), (Failure{0x26000a, "Bit depth mismatch between op 'a' and op 'b'"}));
    op.setResolvedOps(twoOps());
    EXPECT_EQ(failureOf([&] { op.validate(); }), Failure());
    op.setResolvedOps(OpList());
    EXPECT_EQ(failureOf([&] { op.validate(); }), Failure());
}

TEST(ReferenceOp, IsResolvedByAnyList)
{
    ReferenceOp op = byAlias("alias");
    EXPECT_TRUE(op.needsResolving());
    op.setResolvedOps(OpList());
    EXPECT_FALSE(op.needsResolving());
    EXPECT_TRUE(op.getResolvedOps().empty());
    op.setResolvedOps(twoOps());
    EXPECT_TRUE(op.getResolvedOps() == twoOps());
}

TEST(ReferenceOp, HasNoOperatorsWhileUnresolved)
{
    EXPECT_EQ(failureOf([] { byAlias("alias", "look").getResolvedOps(); }),
              (Failure{0x280002, "Missing ops for reference 'look'"}));
}

TEST(ReferenceOp, KeepsACopyOfTheList)
{
    OpList list = twoOps();
    ReferenceOp op = byAlias("alias");
    op.setResolvedOps(list);
    list.get(0).setName("other");
    EXPECT_EQ(op.getResolvedOps().get(0).getName(), "first");
}

TEST(ReferenceOp, SetPathKeepsTheAliasAndForgetsTheOperators)
{
    ReferenceOp op = byAlias("alias");
    op.setResolvedOps(twoOps());
    op.setPath("b.ctf", BASE_PATH_VENDOR);
    EXPECT_EQ(op.getAlias(), "alias");
    EXPECT_EQ(op.getCurrentAlias(), "alias");
    EXPECT_EQ(op.getPath(), "b.ctf");
    EXPECT_EQ(op.getBasePath(), BASE_PATH_VENDOR);
    EXPECT_TRUE(op.needsResolving());
}

TEST(ReferenceOp, SetAliasForgetsTheBasePathAndTheOperators)
{
    ReferenceOp op = byPath("b.ctf", BASE_PATH_SHARED);
    op.setResolvedOps(twoOps());
    op.setAlias("alias");
    EXPECT_EQ(op.getAlias(), "alias");
    EXPECT_EQ(op.getCurrentAlias(), "alias");
    EXPECT_EQ(op.getPath(), "b.ctf");
    EXPECT_EQ(op.getBasePath(), BASE_PATH_NONE);
    EXPECT_TRUE(op.needsResolving());
}

TEST(ReferenceOp, TakesTheCurrentMonitorForTheOneOfTheFlags)
{
    ReferenceOp op = byAlias(kCurrentMonitor);
    op.resolveAlias(RESOLVE_GRAPHICS_MONITOR);
    EXPECT_EQ(op.getAlias(), kCurrentMonitor);
    EXPECT_EQ(op.getCurrentAlias(), "graphicsMonitor");
    op.resolveAlias(RESOLVE_BROADCAST_MONITOR); // Once taken it stays, until unresolved.
    EXPECT_EQ(op.getCurrentAlias(), "graphicsMonitor");
    op.unresolve();
    EXPECT_EQ(op.getCurrentAlias(), kCurrentMonitor);
    op.resolveAlias(RESOLVE_BROADCAST_MONITOR);
    EXPECT_EQ(op.getCurrentAlias(), "broadcastMonitor");
}

TEST(ReferenceOp, LeavesOtherAliasesAsTheyAre)
{
    for (std::string const alias : {"graphicsMonitor", "CurrentMonitor", ""})
    {
        ReferenceOp op = byAlias(alias);
        op.resolveAlias(RESOLVE_BROADCAST_MONITOR);
        op.resolveAlias(7);
        EXPECT_EQ(op.getCurrentAlias(), alias);
    }
}

TEST(ReferenceOp, RefusesFlagsOfNoMonitor)
{
    ReferenceOp op = byAlias(kCurrentMonitor, "view");
    EXPECT_EQ(failureOf([&] { op.resolveAlias(2); }), (Failure{0x280003, "Reference 'view' not an alias"}));
    EXPECT_EQ(op.getCurrentAlias(), kCurrentMonitor);
}

TEST(ReferenceOp, UnresolveForgetsTheOperators)
{
    ReferenceOp op = byPath("b.ctf", BASE_PATH_SHARED);
    op.setResolvedOps(twoOps());
    op.unresolve();
    EXPECT_TRUE(op.needsResolving());
    EXPECT_EQ(op.getPath(), "b.ctf");
    EXPECT_EQ(op.getBasePath(), BASE_PATH_SHARED);
}

TEST(ReferenceOp, CurrentMonitorIsToBeResolvedAlsoOnceItWas)
{
    ReferenceOp op = byAlias(kCurrentMonitor);
    EXPECT_TRUE(op.isAliasToResolve());
    op.resolveAlias(RESOLVE_GRAPHICS_MONITOR);
    op.setResolvedOps(twoOps());
    EXPECT_TRUE(op.isAliasToResolve());
}

TEST(ReferenceOp, OtherAliasesAreToBeResolvedForWhatTheyHold)
{
    ReferenceOp op = byAlias("view");
    EXPECT_FALSE(op.isAliasToResolve());
    op.setResolvedOps(twoOps());
    EXPECT_FALSE(op.isAliasToResolve());
    OpList const inner = listOf(new ReferenceOp(byAlias(kCurrentMonitor)));
    op.setResolvedOps(listOf(resolvedReference("middle", inner).release()));
    EXPECT_TRUE(op.isAliasToResolve());
}

// The same signal stays the same signal, through the ends of what the reference stands for.
TEST(ReferenceOp, PassesDepthsToTheEndsOfItsOperators)
{
    ReferenceOp op = byAlias("alias");
    op.setResolvedOps(twoOps());
    op.setInputBitDepth(BIT_DEPTH_12i);
    op.setOutputBitDepth(BIT_DEPTH_16i);
    EXPECT_EQ(op.getInputBitDepth(), BIT_DEPTH_12i);
    EXPECT_EQ(op.getOutputBitDepth(), BIT_DEPTH_16i);
    EXPECT_EQ(op.getResolvedOps().get(0).getInputBitDepth(), BIT_DEPTH_12i);
    EXPECT_EQ(op.getResolvedOps().get(0).getOutputBitDepth(), BIT_DEPTH_10i);
    EXPECT_EQ(op.getResolvedOps().get(1).getInputBitDepth(), BIT_DEPTH_10i);
    EXPECT_EQ(op.getResolvedOps().get(1).getOutputBitDepth(), BIT_DEPTH_16i);
}

TEST(ReferenceOp, TakesDepthsWithoutOperatorsToPassThemTo)
{
    ReferenceOp unresolved = byAlias("alias");
    ReferenceOp empty = byAlias("alias");
    empty.setResolvedOps(OpList());
    for (ReferenceOp* op : {&unresolved, &empty})
    {
        op->setInputBitDepth(BIT_DEPTH_12i);
        op->setOutputBitDepth(BIT_DEPTH_16i);
        EXPECT_EQ(op->getInputBitDepth(), BIT_DEPTH_12i);
        EXPECT_EQ(op->getOutputBitDepth(), BIT_DEPTH_16i);
    }
}

// A unit matrix of floats takes full signal of 10i to full signal of 12i once it stands between these depths.
TEST(ReferenceOp, GivesItsDepthsToTheOperatorsThatItResolvesTo)
{
    ReferenceOp op(BIT_DEPTH_10i, BIT_DEPTH_12i, "", "", Descriptions(), "alias");
    op.setResolvedOps(listOf(new MatrixOp()));
    auto const& matrix = dynamic_cast<MatrixOp const&>(op.getResolvedOps().get(0));
    EXPECT_EQ(matrix.getInputBitDepth(), BIT_DEPTH_10i);
    EXPECT_EQ(matrix.getOutputBitDepth(), BIT_DEPTH_12i);
    EXPECT_FLOAT_EQ(matrix.getArray().get(0), 4095.0F / 1023.0F);
}

TEST(ReferenceOp, ForwardsDynamicPropertiesToItsOperators)
{
    auto exposure = std::make_unique<ExposureContrastOp>();
    exposure->getExposure()->setDynamic(true);
    ReferenceOp op = byAlias("alias");
    op.setResolvedOps(listOf(exposure.release()));
    EXPECT_TRUE(op.isDynamic());
    EXPECT_TRUE(op.hasDynamicProperty(DynamicProperty::EXPOSURE));
    EXPECT_FALSE(op.hasDynamicProperty(DynamicProperty::CONTRAST));
    op.setDynamicProperty(DynamicProperty(DynamicProperty::EXPOSURE, 1.5));
    DynamicProperty property(DynamicProperty::EXPOSURE, 0.0);
    op.getDynamicProperty(property);
    EXPECT_EQ(double(property.value), 1.5);
}

TEST(ReferenceOp, HasNoDynamicPropertiesOfItsOwn)
{
    ReferenceOp op = byAlias("alias", "look");
    op.setBypass(bypass(true, true));
    EXPECT_FALSE(op.isDynamic());
    EXPECT_FALSE(op.hasDynamicProperty(DynamicProperty::BYPASS));
    DynamicProperty property(DynamicProperty::BYPASS, false);
    Failure const unresolved{0x280002, "Missing ops for reference 'look'"};
    EXPECT_EQ(failureOf([&] { op.setDynamicProperty(property); }), unresolved);
    EXPECT_EQ(failureOf([&] { op.getDynamicProperty(property); }), unresolved);
    op.setResolvedOps(twoOps());
    EXPECT_FALSE(op.isDynamic());
    EXPECT_EQ(failureOf([&] { op.setDynamicProperty(property); }).id, 0x210013U);
    EXPECT_EQ(failureOf([&] { op.getDynamicProperty(property); }).id, 0x210013U);
}

TEST(ReferenceOp, ClonesToOneWithOperatorsOfItsOwn)
{
    ReferenceOp op = byAlias(kCurrentMonitor);
    op.resolveAlias(RESOLVE_GRAPHICS_MONITOR);
    op.setResolvedOps(twoOps());
    std::unique_ptr<Op> const clone(op.clone());
    auto& copy = dynamic_cast<ReferenceOp&>(*clone);
    EXPECT_EQ(copy.getCurrentAlias(), "graphicsMonitor");
    EXPECT_TRUE(areEqual(op, copy));
    copy.setInputBitDepth(BIT_DEPTH_12i);
    EXPECT_EQ(op.getResolvedOps().get(0).getInputBitDepth(), BIT_DEPTH_16f);
    copy.unresolve();
    EXPECT_FALSE(op.needsResolving());
}

TEST(ReferenceOp, EqualityLooksAtEveryField)
{
    auto const sample = []
    {
        ReferenceOp op = byPath("a.ctf", BASE_PATH_SHARED);
        op.setResolvedOps(twoOps());
        return op;
    };
    auto const changed = [&](auto change)
    {
        ReferenceOp other = sample();
        change(other);
        return areEqual(sample(), other);
    };
    EXPECT_TRUE(changed([](ReferenceOp&) {}));
    EXPECT_FALSE(changed([](ReferenceOp& op) { op.setName("name"); }));
    EXPECT_FALSE(changed([](ReferenceOp& op) { op.unresolve(); }));
    EXPECT_FALSE(changed([](ReferenceOp& op) { op.setResolvedOps(OpList()); }));

    EXPECT_FALSE(areEqual(byPath("a"), byPath("b")));
    EXPECT_FALSE(areEqual(byPath("a", BASE_PATH_SHARED), byPath("a", BASE_PATH_VENDOR)));
    EXPECT_FALSE(areEqual(byPath("a"), byAlias("a")));
    EXPECT_FALSE(areEqual(byAlias("a"), byAlias("b")));
    EXPECT_FALSE(areEqual(byAlias("a"), PlainOp(BIT_DEPTH_16f, BIT_DEPTH_8i)));

    ReferenceOp taken = byAlias(kCurrentMonitor);
    taken.resolveAlias(RESOLVE_GRAPHICS_MONITOR);
    EXPECT_FALSE(areEqual(taken, byAlias(kCurrentMonitor)));
}

TEST(ReferenceOp, HasNoInverse)
{
    OpList list;
    EXPECT_EQ(failureOf([&] { byAlias("alias").inverse(list); }), (Failure{0x210014, "Reference inverse not supported"}));
}

} // namespace
