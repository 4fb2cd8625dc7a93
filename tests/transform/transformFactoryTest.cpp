// Models of transforms built without a file.
#include "transform/transformFactory.h"
#include "support/failure.h"
#include "transform/matrixOp.h"
#include "transform/testOps.h"

#include <gmock/gmock.h>

#include <vector>

using namespace Tavrin;
using Color::MatrixOp;
using testing::ElementsAre;
using testing::MatchesRegex;

namespace
{

constexpr float kCounting[16] = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16};
constexpr float kOffsets[4] = {1, 2, 3, 4};

std::vector<float> offsetsOf(MatrixOp const& op)
{
    return {op.getOffsets().getValues(), op.getOffsets().getValues() + 4};
}

MatrixOp const& firstMatrix(Color::Transform const& transform)
{
    return dynamic_cast<MatrixOp const&>(transform.getOps().get(0));
}

TEST(TransformFactory, MakesAMatrixOfNineValuesAndThreeOffsets)
{
    auto const transform = Color::CreateMatrixTransform(BIT_DEPTH_8i, BIT_DEPTH_16i, kCounting, kOffsets, false);
    ASSERT_EQ(transform->getOps().size(), 1U);
    MatrixOp const& op = firstMatrix(*transform);
    EXPECT_EQ(op.getInputBitDepth(), BIT_DEPTH_8i);
    EXPECT_EQ(op.getOutputBitDepth(), BIT_DEPTH_16i);
    EXPECT_THAT(op.getArray().getValues(), ElementsAre(1, 2, 3, 0, 4, 5, 6, 0, 7, 8, 9, 0, 0, 0, 0, 257));
    EXPECT_THAT(offsetsOf(op), ElementsAre(1, 2, 3, 0));
}

TEST(TransformFactory, MakesAMatrixOfSixteenValuesAndFourOffsets)
{
    auto const transform = Color::CreateMatrixTransform(BIT_DEPTH_8i, BIT_DEPTH_16i, kCounting, kOffsets, true);
    MatrixOp const& op = firstMatrix(*transform);
    EXPECT_THAT(op.getArray().getValues(), testing::ElementsAreArray(kCounting));
    EXPECT_THAT(offsetsOf(op), ElementsAre(1, 2, 3, 4));
}

TEST(TransformFactory, GivesNewThingsAnIdAndNoName)
{
    auto const transform = Color::CreateMatrixTransform(BIT_DEPTH_8i, BIT_DEPTH_8i, kCounting, kOffsets, false);
    Color::Op const& op = transform->getOps().get(0);
    EXPECT_THAT(transform->getId(), MatchesRegex(kUuid));
    EXPECT_THAT(op.getId(), MatchesRegex(kUuid));
    EXPECT_NE(transform->getId(), op.getId());
    EXPECT_EQ(transform->getName(), "none");
    EXPECT_EQ(op.getName(), "none");
    EXPECT_TRUE(transform->getDescriptions().getList().empty());
    EXPECT_TRUE(op.getDescriptions().getList().empty());
    EXPECT_EQ(transform->getInputDescriptor(), "");
    EXPECT_EQ(transform->getOutputDescriptor(), "");
}

TEST(TransformFactory, RefusesNullOffsets)
{
    Failure const invalid{0x23000e, "Invalid matrix offsets values "};
    for (bool const hasAlpha : {false, true})
        EXPECT_EQ(failureOf([&] { Color::CreateMatrixTransform(BIT_DEPTH_8i, BIT_DEPTH_8i, kCounting, nullptr, hasAlpha); }),
                  invalid);
}

TEST(TransformFactory, ConcatenationHasTheFirstsFieldsAndBothsOperators)
{
    auto const first = Color::CreateMatrixTransform(BIT_DEPTH_8i, BIT_DEPTH_10i, kCounting, kOffsets, false);
    first->setName("first");
    first->getDescriptions() += "one";
    first->setInputDescriptor("first in");
    first->setOutputDescriptor("first out");
    auto const second = Color::CreateMatrixTransform(BIT_DEPTH_16i, BIT_DEPTH_32f, kCounting, kOffsets, true);
    second->setName("second");
    second->getDescriptions() += "two";
    second->setInputDescriptor("second in");
    second->setOutputDescriptor("second out");

    auto const both = Color::concatenateTransforms(first, second);
    EXPECT_THAT(both->getId(), MatchesRegex(kUuid));
    EXPECT_NE(both->getId(), first->getId());
    EXPECT_NE(both->getId(), second->getId());
    EXPECT_EQ(both->getName(), "first");
    EXPECT_THAT(both->getDescriptions().getList(), ElementsAre("one", "two"));
    EXPECT_EQ(both->getInputDescriptor(), "first in");
    EXPECT_EQ(both->getOutputDescriptor(), "second out");
    ASSERT_EQ(both->getOps().size(), 2U);
    EXPECT_TRUE(both->getOps().get(0) == first->getOps().get(0));
    EXPECT_TRUE(both->getOps().get(1) == second->getOps().get(0));
    EXPECT_EQ(first->getOps().size(), 1U);
    EXPECT_EQ(first->getOutputDescriptor(), "first out");
}

TEST(TransformFactory, ConcatenatesATransformWithItself)
{
    auto const one = Color::CreateMatrixTransform(BIT_DEPTH_32f, BIT_DEPTH_32f, kCounting, kOffsets, false);
    EXPECT_EQ(Color::concatenateTransforms(one, one)->getOps().size(), 2U);
    EXPECT_EQ(one->getOps().size(), 1U);
}

TEST(TransformFactory, RefusesToConcatenateNothing)
{
    auto const one = Color::CreateMatrixTransform(BIT_DEPTH_32f, BIT_DEPTH_32f, kCounting, kOffsets, false);
    Failure const null{0x24000f, "Transform was NULL when attempting to concatenate"};
    EXPECT_EQ(failureOf([&] { Color::concatenateTransforms(one, nullptr); }), null);
    EXPECT_EQ(failureOf([&] { Color::concatenateTransforms(nullptr, one); }), null);
}

} // namespace
