// The model of one transform.
#include "transform/transform.h"
#include "support/failure.h"
#include "transform/matrixOp.h"
#include "transform/rangeOp.h"
#include "transform/testOps.h"

#include <gmock/gmock.h>

using namespace Tavrin;
using Color::Descriptions;
using Color::MatrixOp;
using Color::Op;
using Color::OpList;
using CloneType = Color::Transform::CloneType;
using testing::ElementsAre;
using testing::MatchesRegex;

namespace
{

MatrixOp* matrix(BitDepth in, BitDepth out, std::string const& name = "")
{
    return new MatrixOp(in, out, "", name, Descriptions());
}

std::shared_ptr<Color::Transform> sample()
{
    Descriptions descriptions;
    descriptions += "first";
    auto transform = std::make_shared<Color::Transform>("id", "name", descriptions, "in", "out");
    transform->getOps().append(matrix(BIT_DEPTH_8i, BIT_DEPTH_16i, "a"));
    transform->getOps().append(matrix(BIT_DEPTH_16i, BIT_DEPTH_32f, "b"));
    return transform;
}

TEST(Transform, StartsWithAnIdOfItsOwnAndNothingElse)
{
    Color::Transform const transform;
    EXPECT_THAT(transform.getId(), MatchesRegex(kUuid));
    EXPECT_NE(transform.getId(), Color::Transform().getId());
    EXPECT_EQ(transform.getName(), "");
    EXPECT_EQ(transform.getInputDescriptor(), "");
    EXPECT_EQ(transform.getOutputDescriptor(), "");
    EXPECT_EQ(transform.getInverseOfId(), "");
    EXPECT_TRUE(transform.getDescriptions().getList().empty());
    EXPECT_TRUE(transform.getOps().empty());
    EXPECT_EQ(transform.getInfo().getName(), "Info");
    EXPECT_TRUE(transform.getInfo().isEmpty());
}

TEST(Transform, KeepsWhatItIsMadeOf)
{
    Descriptions descriptions;
    descriptions += "text";
    Color::Transform transform("id", "name", descriptions, "in", "out");
    EXPECT_EQ(transform.getId(), "id");
    EXPECT_EQ(transform.getName(), "name");
    EXPECT_THAT(transform.getDescriptions().getList(), ElementsAre("text"));
    EXPECT_EQ(transform.getInputDescriptor(), "in");
    EXPECT_EQ(transform.getOutputDescriptor(), "out");
    EXPECT_TRUE(transform.getOps().empty());
    EXPECT_TRUE(transform.getInfo().isEmpty());

    transform.setId("other id");
    transform.setName("other name");
    transform.setInputDescriptor("other in");
    transform.setOutputDescriptor("other out");
    EXPECT_EQ(transform.getId(), "other id");
    EXPECT_EQ(transform.getName(), "other name");
    EXPECT_EQ(transform.getInputDescriptor(), "other in");
    EXPECT_EQ(transform.getOutputDescriptor(), "other out");
}

TEST(Transform, RefusesAnEmptyId)
{
    auto const transform = sample();
    EXPECT_EQ(failureOf([&] { transform->setId(""); }), (Failure{0x210010, "Transform ID cannot be empty"}));
    EXPECT_EQ(transform->getId(), "id");
}

TEST(Transform, KnowsWhoseInverseItIs)
{
    auto const transform = sample();
    Color::Transform inverse;
    EXPECT_FALSE(inverse.isInverseOf(*transform));
    inverse.setInverseOfId(*transform);
    EXPECT_EQ(inverse.getInverseOfId(), "id");
    EXPECT_TRUE(inverse.isInverseOf(*transform));
    EXPECT_FALSE(transform->isInverseOf(inverse));
    inverse.setInverseOfId("elsewhere");
    EXPECT_FALSE(inverse.isInverseOf(*transform));
}

TEST(Transform, HasTheDepthsOfItsEnds)
{
    auto const transform = sample();
    EXPECT_EQ(transform->getInputBitDepth(), BIT_DEPTH_8i);
    EXPECT_EQ(transform->getOutputBitDepth(), BIT_DEPTH_32f);

    transform->setInputBitDepth(BIT_DEPTH_10i);
    transform->setOutputBitDepth(BIT_DEPTH_12i);
    EXPECT_EQ(transform->getOps().get(0).getInputBitDepth(), BIT_DEPTH_10i);
    EXPECT_EQ(transform->getOps().get(0).getOutputBitDepth(), BIT_DEPTH_16i);
    EXPECT_EQ(transform->getOps().get(1).getOutputBitDepth(), BIT_DEPTH_12i);
    // The identity from 8i to 16i is one from 10i to 16i now.
    EXPECT_TRUE(transform->getOps().get(0).isIdentity());
}

TEST(Transform, WithoutOperatorsHasNoDepths)
{
    Color::Transform transform;
    Failure const empty{0x210008, "Empty transform"};
    EXPECT_EQ(failureOf([&] { transform.getInputBitDepth(); }), empty);
    EXPECT_EQ(failureOf([&] { transform.getOutputBitDepth(); }), empty);
    EXPECT_EQ(failureOf([&] { transform.setInputBitDepth(BIT_DEPTH_8i); }), empty);
    EXPECT_EQ(failureOf([&] { transform.setOutputBitDepth(BIT_DEPTH_8i); }), empty);
}

TEST(Transform, AppendsTextsAndClonesOfOperatorsWithTheirDepths)
{
    auto const transform = sample();
    Color::Transform other("other", "", Descriptions(), "", "");
    other.getDescriptions() += "second";
    other.getOps().append(matrix(BIT_DEPTH_8i, BIT_DEPTH_8i, "c"));
    transform->append(other);
    EXPECT_THAT(transform->getDescriptions().getList(), ElementsAre("first", "second"));
    ASSERT_EQ(transform->getOps().size(), 3U);
    EXPECT_EQ(transform->getOps().get(2).getInputBitDepth(), BIT_DEPTH_8i);
    EXPECT_NE(&transform->getOps().get(2), &other.getOps().get(0));
    EXPECT_EQ(failureOf([&] { transform->validate(); }).id, 0x26000aU);
}

TEST(Transform, CloneIsEqualAndApart)
{
    auto const transform = sample();
    transform->setInverseOfId("elsewhere");
    for (CloneType const type : {CloneType::Plain, CloneType::Flat})
    {
        auto const clone = transform->clone(type);
        EXPECT_TRUE(*clone == *transform);
        EXPECT_EQ(clone->getInverseOfId(), "elsewhere");
        clone->getOps().get(0).setName("other");
        EXPECT_EQ(transform->getOps().get(0).getName(), "a");
        EXPECT_FALSE(*clone == *transform);
    }
}

TEST(Transform, CloneHasLostTheInfo)
{
    auto const transform = sample();
    transform->getInfo()["Copyright"] = "free";
    auto const clone = transform->clone(CloneType::Plain);
    EXPECT_TRUE(clone->getInfo().isEmpty());
    EXPECT_EQ(clone->getInfo().getName(), "Info");
    EXPECT_TRUE(*clone == *transform);
}

TEST(Transform, FlatCloneLeavesStaticallyBypassedOperatorsOut)
{
    auto const transform = sample();
    transform->getOps().get(0).setBypass(bypass(true, false));
    EXPECT_EQ(transform->clone(CloneType::Plain)->getOps().size(), 2U);
    auto const flat = transform->clone(CloneType::Flat);
    ASSERT_EQ(flat->getOps().size(), 1U);
    EXPECT_EQ(flat->getOps().get(0).getName(), "b");
    EXPECT_EQ(flat->getInputBitDepth(), BIT_DEPTH_16i);
}

TEST(Transform, FlatCloneClosesTheGapInDepths)
{
    auto const transform = sample();
    transform->getOps().append(matrix(BIT_DEPTH_32f, BIT_DEPTH_8i, "c"));
    transform->getOps().get(1).setBypass(bypass(true, false));
    auto const flat = transform->clone(CloneType::Flat);
    ASSERT_EQ(flat->getOps().size(), 2U);
    EXPECT_EQ(flat->getOps().get(1).getInputBitDepth(), BIT_DEPTH_16i);
    EXPECT_TRUE(flat->getOps().get(1).isIdentity());
    EXPECT_EQ(failureOf([&] { flat->validate(); }), Failure());
}

TEST(Transform, FlatCloneKeepsOperatorsThatCanBeSwitched)
{
    auto const transform = sample();
    transform->getOps().get(0).setBypass(bypass(true, true));
    transform->getOps().get(1).setBypass(bypass(false, false));
    EXPECT_EQ(transform->clone(CloneType::Flat)->getOps().size(), 2U);
}

TEST(Transform, CloneSharesDynamicProperties)
{
    auto const transform = sample();
    transform->getOps().get(0).setBypass(bypass(false, true));
    auto const clone = transform->clone(CloneType::Flat);
    transform->setDynamicProperty(DynamicProperty(DynamicProperty::BYPASS, true));
    DynamicProperty property(DynamicProperty::BYPASS, false);
    clone->getDynamicProperty(property);
    EXPECT_TRUE(bool(property.value));
}

TEST(Transform, ValidateGivesAnIdWhereThereIsNone)
{
    Color::Transform transform("", "", Descriptions(), "", "");
    transform.validate();
    EXPECT_THAT(transform.getId(), MatchesRegex(kUuid));
    auto const named = sample();
    named->validate();
    EXPECT_EQ(named->getId(), "id");
}

TEST(Transform, ForwardsQuestionsAboutReferences)
{
    auto const transform = sample();
    EXPECT_FALSE(transform->hasReferences());
    EXPECT_FALSE(transform->hasUnresolvedReferences());
    EXPECT_FALSE(transform->hasAliasReferencesToResolve());
    transform->getOps().append(resolvedReference("currentMonitor", OpList()).release());
    EXPECT_TRUE(transform->hasReferences());
    EXPECT_FALSE(transform->hasUnresolvedReferences());
    EXPECT_TRUE(transform->hasAliasReferencesToResolve());
    transform->unresolve();
    EXPECT_TRUE(transform->hasUnresolvedReferences());
}

TEST(Transform, FlatCloneHoldsWhatReferencesResolvedToAtAnyDepth)
{
    OpList inner;
    inner.append(new PlainOp(BIT_DEPTH_16f, BIT_DEPTH_8i, "inner"));
    OpList outer;
    outer.append(new PlainOp(BIT_DEPTH_16f, BIT_DEPTH_16f, "before"));
    outer.append(resolvedReference("inner", inner).release());
    outer.append(new PlainOp(BIT_DEPTH_32f, BIT_DEPTH_32f, "bypassed"));
    outer.get(2).setBypass(bypass(true, false));
    auto const transform = sample();
    unsigned int const own = transform->getOps().size();
    transform->getOps().append(resolvedReference("outer", outer).release());
    transform->getOps().append(resolvedReference("nothing", OpList()).release());

    auto const flat = transform->clone(CloneType::Flat);
    ASSERT_EQ(flat->getOps().size(), own + 2);
    EXPECT_EQ(flat->getOps().get(own).getName(), "before");
    EXPECT_EQ(flat->getOps().get(own + 1).getName(), "inner");
    EXPECT_FALSE(flat->hasReferences());
    EXPECT_EQ(failureOf([&] { flat->validate(); }), Failure());
    EXPECT_TRUE(transform->clone(CloneType::Plain)->hasReferences());
}

TEST(Transform, FlatCloneLeavesABypassedReferenceOut)
{
    auto const transform = sample();
    unsigned int const own = transform->getOps().size();
    transform->getOps().append(unresolvedReference("some").release());
    transform->getOps().get(own).setBypass(bypass(true, false));
    EXPECT_EQ(transform->clone(CloneType::Flat)->getOps().size(), own);
}

TEST(Transform, FlatCloneRefusesAnUnresolvedReference)
{
    auto const transform = sample();
    transform->getOps().append(unresolvedReference("some").release());
    EXPECT_EQ(failureOf([&] { transform->clone(CloneType::Flat); }), (Failure{0x280002, "Missing ops for reference 'Reference'"}));
    EXPECT_TRUE(transform->clone(CloneType::Plain)->hasUnresolvedReferences());
}

TEST(Transform, RefusesPropertiesThatNoOperatorHas)
{
    auto const transform = sample();
    DynamicProperty property(DynamicProperty::BYPASS, true);
    EXPECT_EQ(failureOf([&] { transform->setDynamicProperty(property); }).id, 0x210013U);
    EXPECT_EQ(failureOf([&] { transform->getDynamicProperty(property); }).id, 0x210013U);
}

TEST(Transform, EqualityLooksAtEverythingButTheInfo)
{
    auto const transform = sample();
    auto const changed = [&](auto change)
    {
        auto const other = sample();
        change(*other);
        return *transform == *other;
    };
    EXPECT_TRUE(changed([](Color::Transform&) {}));
    EXPECT_TRUE(changed([](Color::Transform& other) { other.getInfo()["Copyright"] = "free"; }));
    EXPECT_FALSE(changed([](Color::Transform& other) { other.setId("other"); }));
    EXPECT_FALSE(changed([](Color::Transform& other) { other.setName("other"); }));
    EXPECT_FALSE(changed([](Color::Transform& other) { other.getDescriptions() += "other"; }));
    EXPECT_FALSE(changed([](Color::Transform& other) { other.setInputDescriptor("other"); }));
    EXPECT_FALSE(changed([](Color::Transform& other) { other.setOutputDescriptor("other"); }));
    EXPECT_FALSE(changed([](Color::Transform& other) { other.setInverseOfId("other"); }));
    EXPECT_FALSE(changed([](Color::Transform& other) { other.getOps().erase(1); }));
}

} // namespace
