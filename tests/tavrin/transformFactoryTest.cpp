// The public functions that make transforms without a file.
#include "contentRecorder.h"
#include "transformFixtures.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <cstddef>

using namespace Tavrin;

namespace
{

std::ptrdiff_t matricesOf(TransformPtr const& transform)
{
    Lines const content = contentOf(transform);
    return std::count(content.begin(), content.end(), "begin Matrix");
}

constexpr float kUnit[9] = {1, 0, 0, 0, 1, 0, 0, 0, 1};
constexpr float kOffsets[4] = {0.5F, 0.25F, 0, 0};
constexpr float kSixteen[16] = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};

TEST(CreateMatrixTransform, RendersItsMatrixAndOffsets)
{
    TransformPtr transform;
    ASSERT_EQ(told(CreateMatrixTransform(BIT_DEPTH_32f, BIT_DEPTH_32f, kUnit, kOffsets, false, transform)), kGood);
    ASSERT_EQ(told(finalizeForCpu(transform)), kGood);
    EXPECT_EQ(render(transform, {0.25F, 0.25F, 0.25F, 1.0F}), (Pixels{0.75F, 0.5F, 0.25F, 1.0F}));
}

// Red and alpha change places.
TEST(CreateMatrixTransform, TakesAlphaIn)
{
    constexpr float kSwap[16] = {0, 0, 0, 1, 0, 1, 0, 0, 0, 0, 1, 0, 1, 0, 0, 0};
    constexpr float kNoOffsets[4] = {0, 0, 0, 0};
    TransformPtr transform;
    ASSERT_EQ(told(CreateMatrixTransform(BIT_DEPTH_32f, BIT_DEPTH_32f, kSwap, kNoOffsets, true, transform)), kGood);
    ASSERT_EQ(told(finalizeForCpu(transform)), kGood);
    EXPECT_EQ(render(transform, {0.25F, 0.5F, 0.75F, 1.0F}), (Pixels{1.0F, 0.5F, 0.75F, 0.25F}));
}

TEST(CreateMatrixTransform, RefusesNullAndLeavesTheHandle)
{
    TransformPtr transform = scaleBy(2.0F);
    Transform const* const before = transform.get();
    EXPECT_EQ(told(CreateMatrixTransform(BIT_DEPTH_32f, BIT_DEPTH_32f, nullptr, kOffsets, false, transform)),
              (Told{0x2030001, "NULL parameter: matrix"}));
    for (bool const hasAlpha : {false, true})
        EXPECT_EQ(told(CreateMatrixTransform(BIT_DEPTH_32f, BIT_DEPTH_32f, kSixteen, nullptr, hasAlpha, transform)),
                  (Told{0x23000e, "Invalid matrix offsets values "}));
    EXPECT_EQ(transform.get(), before);
}

TEST(ConcatenateTransforms, DoesTheFirstThenTheSecond)
{
    TransformPtr shift;
    ASSERT_EQ(told(CreateMatrixTransform(BIT_DEPTH_32f, BIT_DEPTH_32f, kUnit, kOffsets, false, shift)), kGood);
    TransformPtr const twice = scaleBy(2.0F);
    TransformPtr both;
    ASSERT_EQ(told(concatenateTransforms(shift, twice, both)), kGood);
    ASSERT_EQ(told(finalizeForCpu(both)), kGood);
    EXPECT_EQ(render(both, {0.25F, 0.25F, 0.25F, 1.0F}), (Pixels{1.5F, 1.0F, 0.5F, 1.0F}));
    ASSERT_EQ(told(concatenateTransforms(twice, shift, both)), kGood);
    ASSERT_EQ(told(finalizeForCpu(both)), kGood);
    EXPECT_EQ(render(both, {0.25F, 0.25F, 0.25F, 1.0F}), (Pixels{1.0F, 0.75F, 0.5F, 1.0F}));
}

TEST(ConcatenateTransforms, TakesDescriptorsFromItsEndsAndAnIdOfItsOwn)
{
    TransformPtr const first = scaleBy(2.0F, BIT_DEPTH_8i, BIT_DEPTH_10i);
    first->setName("first");
    first->setDescription("one");
    first->setInputDescriptor("first in");
    first->setOutputDescriptor("first out");
    TransformPtr const second = scaleBy(2.0F, BIT_DEPTH_10i, BIT_DEPTH_16f);
    second->setDescription("two");
    second->setInputDescriptor("second in");
    second->setOutputDescriptor("second out");
    TransformPtr both;
    ASSERT_EQ(told(concatenateTransforms(first, second, both)), kGood);
    EXPECT_STRNE(both->getId(), first->getId());
    EXPECT_STRNE(both->getId(), second->getId());
    EXPECT_STREQ(both->getName(), "first");
    EXPECT_STREQ(both->getDescriptions(), "one\ntwo");
    EXPECT_STREQ(both->getInputDescriptor(), "first in");
    EXPECT_STREQ(both->getOutputDescriptor(), "second out");
    EXPECT_EQ(both->getInputBitDepth(), BIT_DEPTH_8i);
    EXPECT_EQ(both->getOutputBitDepth(), BIT_DEPTH_16f);
    EXPECT_EQ(first->getOutputBitDepth(), BIT_DEPTH_10i);
}

// The first gives 8i codes, the second takes floats: full signal stays full signal.
TEST(ConcatenateTransforms, JoinsTransformsOfDifferentDepths)
{
    TransformPtr both;
    ASSERT_EQ(told(concatenateTransforms(scaleBy(1.0F, BIT_DEPTH_8i, BIT_DEPTH_8i), scaleBy(0.5F), both)), kGood);
    ASSERT_EQ(told(finalizeForCpu(both)), kGood);
    Pixels const result = render(both, {1.0F, 0.5F, 0.0F, 1.0F});
    ASSERT_EQ(result.size(), 4U);
    EXPECT_FLOAT_EQ(result[0], 0.5F);
    EXPECT_FLOAT_EQ(result[1], 0.25F);
    EXPECT_EQ(result[2], 0.0F);
}

TEST(ConcatenateTransforms, MayStoreItsResultInOneOfItsArguments)
{
    TransformPtr transform = scaleBy(2.0F);
    ASSERT_EQ(told(concatenateTransforms(transform, transform, transform)), kGood);
    ASSERT_EQ(told(finalizeForCpu(transform)), kGood);
    EXPECT_EQ(render(transform, {0.25F, 0.5F, 0.0F, 1.0F}), (Pixels{1.0F, 2.0F, 0.0F, 1.0F}));
}

TEST(ConcatenateTransforms, RefusesEmptyHandlesAndLeavesTheResult)
{
    Told const null{0x24000f, "Transform was NULL when attempting to concatenate"};
    TransformPtr const transform = scaleBy(2.0F);
    TransformPtr result = scaleBy(3.0F);
    Transform const* const before = result.get();
    EXPECT_EQ(told(concatenateTransforms(transform, TransformPtr(), result)), null);
    EXPECT_EQ(told(concatenateTransforms(TransformPtr(), transform, result)), null);
    EXPECT_EQ(told(concatenateTransforms(TransformPtr(), TransformPtr(), result)), null);
    EXPECT_EQ(result.get(), before);
}

TEST(OptimizeTransform, GivesANewTransformOfWhatIsLeft)
{
    TransformPtr const transform = fromText(document(doubling() + doubling("bypass='true'") + doubling(), "id='two' name='Twice'"));
    TransformPtr optimized;
    ASSERT_EQ(told(optimizeTransform(transform, OPTIMIZER_DEFAULT_THRESHOLD, optimized)), kGood);
    EXPECT_STREQ(optimized->getName(), "Twice");
    EXPECT_EQ(matricesOf(optimized), 1);
    EXPECT_EQ(matricesOf(transform), 3);
    ASSERT_EQ(told(finalizeForCpu(optimized)), kGood);
    EXPECT_EQ(render(optimized, {0.25F, 0.5F, 0.0F, 1.0F}), (Pixels{1.0F, 2.0F, 0.0F, 1.0F}));
}

TEST(OptimizeTransform, RefusesAnEmptyHandleAndAThresholdOfZeroAndLeavesTheResult)
{
    TransformPtr result = scaleBy(3.0F);
    Transform const* const before = result.get();
    EXPECT_EQ(told(optimizeTransform(TransformPtr(), 90, result)), (Told{0x2030001, "NULL parameter: transform"}));
    EXPECT_EQ(told(optimizeTransform(scaleBy(2.0F), 0, result)), (Told{0x810006, "Attempt to apply Null optimizer action"}));
    EXPECT_EQ(result.get(), before);
}

} // namespace
