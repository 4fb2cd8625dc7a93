// The public transform: its texts, its states and what they report. What pixels become is a matter of the renderers' tests.
#include "support/scopedEnvironment.h"
#include "transformFixtures.h"

#include <gmock/gmock.h>

#include <string>

using namespace Tavrin;
using testing::ElementsAre;
using testing::MatchesRegex;

namespace
{

constexpr char const* kUuid = "[0-9a-f]{8}-[0-9a-f]{4}-[0-9a-f]{4}-[0-9a-f]{4}-[0-9a-f]{12}";
Pixels const kPixel = {0.125F, 0.25F, 0.5F, 1.0F};
Pixels const kDoubled = {0.25F, 0.5F, 1.0F, 1.0F};

TavStatus finalizeWith(TransformPtr const& transform, RendererFlags flags)
{
    return transform->finalize(PF_RGBA_32f, PF_RGBA_32f, flags, OPTIMIZER_DEFAULT_THRESHOLD, RESOLVE_BROADCAST_MONITOR);
}

Told toldByApply(TransformPtr const& transform)
{
    Pixels pixel = kPixel;
    return told(transform->applyCPU(pixel.data(), ROI(0, 0, 1, 1), pixel.data()));
}

Told toldByApplyWithStrides(TransformPtr const& transform)
{
    Pixels pixel = kPixel;
    return told(transform->applyCPU(pixel.data(), 16, ROI(0, 0, 1, 1), pixel.data(), 16));
}

Told toldByApplyOnGpu(TransformPtr const& transform)
{
    Vertices const corners(Rect(0, 0, 1, 1));
    return told(transform->applyGPU(0, corners, corners));
}

TEST(PublicTransform, StartsWithAnIdAndTheDepthsOfItsOperators)
{
    TransformPtr const transform = scaleBy(2.0F, BIT_DEPTH_8i, BIT_DEPTH_16f);
    EXPECT_THAT(transform->getId(), MatchesRegex(kUuid));
    EXPECT_STREQ(transform->getName(), "none");
    EXPECT_STREQ(transform->getDescriptions(), "");
    EXPECT_STREQ(transform->getInputDescriptor(), "");
    EXPECT_STREQ(transform->getOutputDescriptor(), "");
    EXPECT_EQ(transform->getInputBitDepth(), BIT_DEPTH_8i);
    EXPECT_EQ(transform->getOutputBitDepth(), BIT_DEPTH_16f);
    EXPECT_EQ(transform->getInputPixelFormat(), PF_UNKNOWN);
    EXPECT_EQ(transform->getOutputPixelFormat(), PF_UNKNOWN);
    EXPECT_EQ(transform->getGPUAdaptor().get(), nullptr);
    EXPECT_FALSE(transform->hasReferences());
    EXPECT_FALSE(transform->hasAliasReferencesToResolve());
}

TEST(PublicTransform, StoresTexts)
{
    TransformPtr const transform = scaleBy(2.0F);
    EXPECT_EQ(told(transform->setId("id")), kGood);
    EXPECT_EQ(told(transform->setName("name")), kGood);
    EXPECT_EQ(told(transform->setInputDescriptor("in")), kGood);
    EXPECT_EQ(told(transform->setOutputDescriptor("out")), kGood);
    EXPECT_EQ(told(transform->setDescription("text")), kGood);
    EXPECT_STREQ(transform->getId(), "id");
    EXPECT_STREQ(transform->getName(), "name");
    EXPECT_STREQ(transform->getInputDescriptor(), "in");
    EXPECT_STREQ(transform->getOutputDescriptor(), "out");
    EXPECT_STREQ(transform->getDescriptions(), "text");
}

TEST(PublicTransform, TakesNullForAnEmptyText)
{
    TransformPtr const transform = scaleBy(2.0F);
    transform->setInputDescriptor("in");
    transform->setOutputDescriptor("out");
    transform->setDescription("text");
    EXPECT_EQ(told(transform->setName(nullptr)), kGood);
    EXPECT_EQ(told(transform->setInputDescriptor(nullptr)), kGood);
    EXPECT_EQ(told(transform->setOutputDescriptor(nullptr)), kGood);
    EXPECT_EQ(told(transform->setDescription(nullptr)), kGood);
    EXPECT_STREQ(transform->getName(), "");
    EXPECT_STREQ(transform->getInputDescriptor(), "");
    EXPECT_STREQ(transform->getOutputDescriptor(), "");
    EXPECT_STREQ(transform->getDescriptions(), "");
}

TEST(PublicTransform, RefusesAnEmptyIdAndKeepsTheOldOne)
{
    TransformPtr const transform = scaleBy(2.0F);
    transform->setId("id");
    Told const empty{0x210010, "Transform ID cannot be empty"};
    EXPECT_EQ(told(transform->setId("")), empty);
    EXPECT_EQ(told(transform->setId(nullptr)), empty);
    EXPECT_STREQ(transform->getId(), "id");
}

TEST(PublicTransform, JoinsDescriptionsALineEachAndReplacesThemByOne)
{
    TransformPtr const transform =
        fromText(document("<Description>one</Description>\n<Description>two</Description>\n" + doubling()));
    ASSERT_TRUE(transform);
    EXPECT_STREQ(transform->getDescriptions(), "one\ntwo");
    transform->setDescription(transform->getDescriptions());
    EXPECT_STREQ(transform->getDescriptions(), "one\ntwo");
    transform->setDescription("three");
    EXPECT_STREQ(transform->getDescriptions(), "three");
}

TEST(PublicTransform, KnowsWhoseInverseItIs)
{
    TransformPtr const forward = fromText(document(doubling(), "id='forward'"));
    TransformPtr const inverse = fromText(document(doubling(), "id='inverse' inverseOf='forward'"));
    ASSERT_TRUE(forward && inverse);
    EXPECT_TRUE(inverse->isInverseOf(forward));
    EXPECT_FALSE(forward->isInverseOf(inverse));
    EXPECT_FALSE(inverse->isInverseOf(TransformPtr()));
}

TEST(PublicTransform, BeforeFinalizeHasNoRenderers)
{
    TransformPtr const transform = scaleBy(2.0F);
    EXPECT_EQ(toldByApply(transform), kNoCpuRenderer);
    EXPECT_EQ(toldByApplyWithStrides(transform), kNoCpuRenderer);
    EXPECT_EQ(toldByApplyOnGpu(transform), kNoGpuRenderer);
}

TEST(PublicTransform, FinalizedForNothingSucceedsAndHasNoRenderers)
{
    TransformPtr const transform = scaleBy(2.0F);
    ASSERT_EQ(told(finalizeForCpu(transform)), kGood);
    EXPECT_EQ(told(finalizeWith(transform, 0)), kGood);
    EXPECT_EQ(toldByApply(transform), kNoCpuRenderer);
    EXPECT_EQ(toldByApplyWithStrides(transform), kNoCpuRenderer);
}

TEST(PublicTransform, FinalizedForTheCpuRenders)
{
    TransformPtr const transform = scaleBy(2.0F);
    EXPECT_EQ(told(finalizeForCpu(transform)), kGood);
    EXPECT_EQ(transform->getInputPixelFormat(), PF_RGBA_32f);
    EXPECT_EQ(transform->getOutputPixelFormat(), PF_RGBA_32f);
    EXPECT_EQ(render(transform, kPixel), kDoubled);
    EXPECT_EQ(toldByApplyOnGpu(transform), kNoGpuRenderer);
}

TEST(PublicTransform, IgnoresRendererFlagsWithoutAMeaning)
{
    TransformPtr const transform = scaleBy(2.0F);
    EXPECT_EQ(told(finalizeWith(transform, RENDERER_CPU | 0xfffffffcU)), kGood);
    EXPECT_EQ(render(transform, kPixel), kDoubled);
    EXPECT_EQ(told(finalizeWith(transform, 0xfffffffcU)), kGood);
    EXPECT_EQ(toldByApply(transform), kNoCpuRenderer);
}

TEST(PublicTransform, LeavesItsOwnOperatorsAloneWhenFinalized)
{
    TransformPtr const transform = scaleBy(2.0F, BIT_DEPTH_8i, BIT_DEPTH_16i);
    ASSERT_EQ(told(finalizeForCpu(transform)), kGood);
    EXPECT_EQ(transform->getInputBitDepth(), BIT_DEPTH_8i);
    EXPECT_EQ(transform->getOutputBitDepth(), BIT_DEPTH_16i);
}

TEST(PublicTransform, CannotBeFinalizedForTheGpuWithoutAnAdaptor)
{
    TransformPtr const transform = scaleBy(2.0F);
    EXPECT_EQ(told(finalizeWith(transform, RENDERER_GPU)), kNoGpuRenderer);
    EXPECT_EQ(toldByApplyOnGpu(transform), kNoGpuRenderer);
}

TEST(PublicTransform, LosesTheCpuRendererWhenTheGpuStepFails)
{
    TransformPtr const transform = scaleBy(2.0F);
    ASSERT_EQ(told(finalizeForCpu(transform)), kGood);
    EXPECT_EQ(told(finalizeWith(transform, RENDERER_CPU | RENDERER_GPU)), kNoGpuRenderer);
    EXPECT_EQ(toldByApply(transform), kNoCpuRenderer);
}

TEST(PublicTransform, CanBeFinalizedAnew)
{
    TransformPtr const transform = scaleBy(2.0F);
    ASSERT_EQ(told(finalizeForCpu(transform, PF_RGBA_8i, PF_RGBA_8i)), kGood);
    ASSERT_EQ(told(finalizeForCpu(transform)), kGood);
    EXPECT_EQ(render(transform, kPixel), kDoubled);
}

TEST(PublicTransform, ObeysTheEnvironmentsChoiceOfACpuRenderer)
{
    TransformPtr const transform = scaleBy(2.0F);
    auto const finalizeUnder = [&](char const* word)
    {
        ScopedEnvironment const environment("TAVRIN_CPU_RENDERER", word);
        return told(finalizeForCpu(transform));
    };
    Told const notValid{0x810004, "A GPU renderer not a valid choice"};
    EXPECT_EQ(finalizeUnder("GPU"), notValid);
    EXPECT_EQ(toldByApply(transform), kNoCpuRenderer);
    EXPECT_EQ(finalizeUnder("OCIO_GPU"), notValid);
    EXPECT_EQ(finalizeUnder("CPU"), kGood);
    EXPECT_EQ(render(transform, kPixel), kDoubled);
}

// Not every build has OpenColorIO.
TEST(PublicTransform, RendersThroughOpenColorIOWhereTheEnvironmentSaysSo)
{
    TransformPtr const transform = scaleBy(2.0F);
    TransformPtr const exposure = fromText(document("<ExposureContrast inBitDepth='32f' outBitDepth='32f' style='linear'>"
                                                    "<ECParams exposure='1' contrast='1' pivot='0.18'/></ExposureContrast>"));
    ASSERT_TRUE(exposure);
    ScopedEnvironment const environment("TAVRIN_CPU_RENDERER", "OCIO");
    Told const outcome = told(finalizeForCpu(transform));
    if (outcome == Told{0x2010001, "No 'OCIO' renderer available"})
        GTEST_SKIP() << "this build has no OpenColorIO";
    ASSERT_EQ(outcome, kGood);
    EXPECT_EQ(render(transform, kPixel), kDoubled);
    EXPECT_EQ(told(finalizeForCpu(exposure)), (Told{0x840001, "Exposure/Contrast operation not supported by OCIO"}));
}

TEST(PublicTransform, IgnoresWordsInTheEnvironmentThatDoNotMatchExactly)
{
    TransformPtr const transform = scaleBy(2.0F);
    for (char const* const word : {"cpu", "gpu", "", "GPU ", "OCIO-GPU"})
    {
        ScopedEnvironment const environment("TAVRIN_CPU_RENDERER", word);
        EXPECT_EQ(told(finalizeForCpu(transform)), kGood) << word;
        EXPECT_EQ(render(transform, kPixel), kDoubled) << word;
    }
}

TEST(PublicTransform, ObeysTheEnvironmentsChoiceOfAGpuRenderer)
{
    TransformPtr const transform = scaleBy(2.0F);
    auto const finalizeUnder = [&](char const* word)
    {
        ScopedEnvironment const environment("TAVRIN_GPU_RENDERER", word);
        return told(finalizeWith(transform, RENDERER_GPU));
    };
    EXPECT_EQ(finalizeUnder("CPU"), (Told{0x810004, "A CPU renderer not a valid choice"}));
    EXPECT_EQ(finalizeUnder("OCIO"), (Told{0x810004, "A CPU renderer not a valid choice"}));
    EXPECT_EQ(finalizeUnder("OCIO_GPU"), (Told{0x810004, "A OCIO GPU renderer not a valid choice"}));
    EXPECT_EQ(finalizeUnder("GPU"), kNoGpuRenderer); // There is one, but it has no adaptor.
    EXPECT_EQ(finalizeUnder("gpu"), kNoGpuRenderer);
}

TEST(PublicTransform, KeepsItsRenderersWhenTheFormatsStay)
{
    TransformPtr const transform = scaleBy(2.0F);
    ASSERT_EQ(told(finalizeForCpu(transform)), kGood);

    // Whatever would be built now would fail.
    ScopedEnvironment const environment("TAVRIN_CPU_RENDERER", "GPU");
    EXPECT_EQ(told(transform->setPixelFormats(PF_RGBA_32f, PF_RGBA_32f)), kGood);
    EXPECT_EQ(told(transform->setInputPixelFormat(PF_RGBA_32f)), kGood);
    EXPECT_EQ(told(transform->setOutputPixelFormat(PF_RGBA_32f)), kGood);
    EXPECT_EQ(render(transform, kPixel), kDoubled);
    EXPECT_EQ(transform->setPixelFormats(PF_RGBA_8i, PF_RGBA_32f).getErrorCode(), 0x810004U);
    EXPECT_EQ(toldByApply(transform), kNoCpuRenderer);
}

TEST(PublicTransform, FinalizesAnewWithTheStoredFlagsWhenAFormatChanges)
{
    TransformPtr const transform = scaleBy(1.0F);
    ASSERT_EQ(told(finalizeForCpu(transform, PF_RGBA_32f, PF_RGBA_32f)), kGood);

    EXPECT_EQ(told(transform->setInputPixelFormat(PF_RGB_8i)), kGood);
    EXPECT_EQ(transform->getInputPixelFormat(), PF_RGB_8i);
    EXPECT_EQ(transform->getOutputPixelFormat(), PF_RGBA_32f);
    unsigned char const codes[3] = {0, 255, 0};
    Pixels floats(4, -1.0F);
    EXPECT_EQ(told(transform->applyCPU(codes, ROI(0, 0, 1, 1), floats.data())), kGood);
    EXPECT_THAT(floats, ElementsAre(0.0F, 1.0F, 0.0F, 1.0F));

    EXPECT_EQ(told(transform->setOutputPixelFormat(PF_BGR_8i)), kGood);
    EXPECT_EQ(transform->getOutputPixelFormat(), PF_BGR_8i);
    unsigned char reversed[3] = {7, 7, 7};
    unsigned char const other[3] = {1, 2, 3};
    EXPECT_EQ(told(transform->applyCPU(other, ROI(0, 0, 1, 1), reversed)), kGood);
    EXPECT_THAT(reversed, ElementsAre(3, 2, 1));

    EXPECT_EQ(told(transform->setPixelFormats(PF_RGBA_32f, PF_RGBA_32f)), kGood);
    EXPECT_EQ(render(transform, kPixel), kPixel);
}

TEST(PublicTransform, NeverFinalizedStoresNewFormatsAndBuildsNothing)
{
    TransformPtr const transform = scaleBy(2.0F);
    EXPECT_EQ(told(transform->setPixelFormats(PF_RGB_8i, PF_BGR_8i)), kGood);
    EXPECT_EQ(transform->getInputPixelFormat(), PF_RGB_8i);
    EXPECT_EQ(transform->getOutputPixelFormat(), PF_BGR_8i);
    EXPECT_EQ(toldByApply(transform), kNoCpuRenderer);
}

TEST(PublicTransform, UpdateRepeatsAFailedFinalizeWithItsValues)
{
    TransformPtr const transform = scaleBy(2.0F);
    {
        ScopedEnvironment const environment("TAVRIN_CPU_RENDERER", "GPU");
        ASSERT_EQ(finalizeForCpu(transform).getErrorCode(), 0x810004U);
    }
    EXPECT_EQ(transform->getInputPixelFormat(), PF_RGBA_32f);
    EXPECT_EQ(toldByApply(transform), kNoCpuRenderer);
    transform->update();
    EXPECT_EQ(render(transform, kPixel), kDoubled);
}

TEST(PublicTransform, UpdateKeepsAFinalizedTransformGoing)
{
    TransformPtr const transform = scaleBy(2.0F);
    transform->update();
    EXPECT_EQ(toldByApply(transform), kNoCpuRenderer);
    ASSERT_EQ(told(finalizeForCpu(transform)), kGood);
    transform->update();
    EXPECT_EQ(render(transform, kPixel), kDoubled);
}

TEST(PublicTransform, UpdateDropsTheRendererThatItCannotBuildAnew)
{
    TransformPtr const transform = scaleBy(2.0F);
    ASSERT_EQ(told(finalizeForCpu(transform)), kGood);
    ScopedEnvironment const environment("TAVRIN_CPU_RENDERER", "GPU");
    transform->update();
    EXPECT_EQ(toldByApply(transform), kNoCpuRenderer);
}

TEST(PublicTransform, NeedsANewFinalizeAfterAnAdaptorIsSet)
{
    TransformPtr const transform = scaleBy(2.0F);
    ASSERT_EQ(told(finalizeForCpu(transform)), kGood);
    GPUAdaptorPtr adaptor(new IdleAdaptor);
    EXPECT_EQ(told(transform->setGPUAdaptor(adaptor)), kGood);
    EXPECT_EQ(transform->getGPUAdaptor().get(), adaptor.get());
    EXPECT_EQ(toldByApply(transform), kNoCpuRenderer);
    EXPECT_EQ(told(finalizeForCpu(transform)), kGood);
    EXPECT_EQ(render(transform, kPixel), kDoubled);
}

TEST(PublicTransform, CloneIsApartAndMustBeFinalized)
{
    TransformPtr const transform = scaleBy(2.0F);
    GPUAdaptorPtr adaptor(new IdleAdaptor);
    transform->setGPUAdaptor(adaptor);
    ASSERT_EQ(told(finalizeForCpu(transform)), kGood);
    TransformPtr const clone = transform->clone();
    EXPECT_STREQ(clone->getId(), transform->getId());
    EXPECT_STREQ(clone->getName(), "none");
    EXPECT_EQ(clone->getGPUAdaptor().get(), nullptr);
    EXPECT_EQ(clone->getInputPixelFormat(), PF_UNKNOWN);
    EXPECT_EQ(clone->getOutputPixelFormat(), PF_UNKNOWN);
    EXPECT_EQ(toldByApply(clone), kNoCpuRenderer);
    EXPECT_EQ(told(clone->setPixelFormats(PF_RGBA_32f, PF_RGBA_32f)), kGood); // With no renderer flags stored.
    EXPECT_EQ(toldByApply(clone), kNoCpuRenderer);

    clone->setName("clone");
    EXPECT_STREQ(transform->getName(), "none");
    ASSERT_EQ(told(finalizeForCpu(clone)), kGood);
    EXPECT_EQ(render(clone, kPixel), kDoubled);
    EXPECT_EQ(render(transform, kPixel), kDoubled);
}

TEST(PublicTransform, SwitchesABypassWithoutANewFinalizeAlsoInItsClones)
{
    TransformPtr const transform = fromText(document(doubling("", "<DynamicParameter param='LOOK_SWITCH' />")));
    ASSERT_TRUE(transform);
    TransformPtr const clone = transform->clone();
    ASSERT_EQ(told(finalizeForCpu(transform)), kGood);
    ASSERT_EQ(told(finalizeForCpu(clone)), kGood);
    EXPECT_EQ(render(transform, kPixel), kDoubled);

    EXPECT_EQ(told(transform->setDynamicProperty(DynamicProperty(DynamicProperty::BYPASS, true))), kGood);
    EXPECT_EQ(render(transform, kPixel), kPixel);
    EXPECT_EQ(render(clone, kPixel), kPixel);
    DynamicProperty property(DynamicProperty::BYPASS, false);
    EXPECT_EQ(told(clone->getDynamicProperty(property)), kGood);
    EXPECT_TRUE(bool(property.value));

    transform->setDynamicProperty(DynamicProperty(DynamicProperty::BYPASS, false));
    EXPECT_EQ(render(transform, kPixel), kDoubled);
}

TEST(PublicTransform, RefusesPropertiesThatItsOperatorsDoNotHave)
{
    TransformPtr const transform = scaleBy(2.0F);
    Told const notAvailable{0x210013, "Dynamic property Bypass not available in "};
    DynamicProperty property(DynamicProperty::BYPASS, true);
    EXPECT_EQ(told(transform->setDynamicProperty(property)), notAvailable);
    EXPECT_EQ(told(transform->getDynamicProperty(property)), notAvailable);
}

TEST(PublicTransform, LeavesStaticallyBypassedOperatorsOutWhateverTheThreshold)
{
    TransformPtr const transform = fromText(document(doubling("bypass='true'") + doubling()));
    ASSERT_TRUE(transform);
    for (OptimizerFlags const threshold : {90U, 101U})
    {
        ASSERT_EQ(told(transform->finalize(PF_RGBA_32f, PF_RGBA_32f, RENDERER_CPU, threshold, RESOLVE_BROADCAST_MONITOR)), kGood);
        EXPECT_EQ(render(transform, kPixel), kDoubled);
    }
}

TEST(PublicTransform, RefusesARegionThatIsLargerThanItsImage)
{
    TransformPtr const transform = scaleBy(2.0F);
    ASSERT_EQ(told(finalizeForCpu(transform)), kGood);
    Pixels pixels(16);
    ROI const tooWide(0, 0, 3, 1, 2, 1);
    EXPECT_EQ(transform->applyCPU(pixels.data(), tooWide, pixels.data()).getErrorCode(), 0x110001U);
    EXPECT_EQ(transform->applyCPU(pixels.data(), 48, tooWide, pixels.data(), 48).getErrorCode(), 0x110001U);
}

TEST(PublicTransform, TakesRowsThatAreFurtherApartThanTheirPixels)
{
    TransformPtr const transform = scaleBy(1.0F);
    ASSERT_EQ(told(finalizeForCpu(transform, PF_RGB_8i, PF_RGB_8i)), kGood);
    unsigned char const source[9] = {1, 2, 3, 90, 91, 4, 5, 6, 92};
    unsigned char destination[8] = {0, 0, 0, 80, 0, 0, 0, 81};
    EXPECT_EQ(told(transform->applyCPU(source, 5, ROI(0, 0, 1, 2), destination, 4)), kGood);
    EXPECT_THAT(destination, ElementsAre(1, 2, 3, 80, 4, 5, 6, 81));
}

// Each row starts one pixel after the one before, in the middle of it.
TEST(PublicTransform, TakesRowsThatOverlap)
{
    TransformPtr const transform = scaleBy(1.0F);
    ASSERT_EQ(told(finalizeForCpu(transform, PF_RGB_8i, PF_RGB_8i)), kGood);
    unsigned char const source[9] = {1, 2, 3, 4, 5, 6, 7, 8, 9};
    unsigned char destination[12] = {};
    EXPECT_EQ(told(transform->applyCPU(source, 3, ROI(0, 0, 2, 2), destination, 6)), kGood);
    EXPECT_THAT(destination, ElementsAre(1, 2, 3, 4, 5, 6, 4, 5, 6, 7, 8, 9));
}

TEST(TransformPtr, IsEmptyByDefault)
{
    TransformPtr const handle;
    EXPECT_FALSE(handle);
    EXPECT_EQ(handle.get(), nullptr);
    EXPECT_EQ(handle.operator->(), nullptr);
    EXPECT_EQ(handle.getUseCount(), 0);
    EXPECT_EQ(TransformPtr(handle).getUseCount(), 0);
}

TEST(TransformPtr, CopiesShareTheTransform)
{
    TransformPtr handle = scaleBy(2.0F);
    EXPECT_EQ(handle.getUseCount(), 1);
    TransformPtr const copy(handle);
    TransformPtr assigned;
    assigned = handle;
    EXPECT_EQ(handle.getUseCount(), 3);
    EXPECT_EQ(copy.get(), handle.get());
    EXPECT_EQ(&*assigned, handle.get());

    handle.reset();
    EXPECT_FALSE(handle);
    EXPECT_TRUE(copy);
    EXPECT_EQ(copy.getUseCount(), 2);
}

// The transform holds the last handle to its adaptor, which tells when it goes.
TEST(TransformPtr, LastHandleDeletesTheTransform)
{
    bool deleted = false;
    TransformPtr handle = scaleBy(2.0F);
    GPUAdaptorPtr adaptor(new IdleAdaptor(&deleted));
    handle->setGPUAdaptor(adaptor);
    adaptor = nullptr;
    TransformPtr copy = handle;
    handle.reset();
    EXPECT_FALSE(deleted);
    copy = TransformPtr();
    EXPECT_TRUE(deleted);
}

TEST(TransformPtr, ResetTakesOwnershipOfAnotherTransform)
{
    bool deleted = false;
    TransformPtr handle = scaleBy(2.0F);
    GPUAdaptorPtr adaptor(new IdleAdaptor(&deleted));
    handle->setGPUAdaptor(adaptor);
    adaptor = nullptr;
    handle.reset(static_cast<Transform*>(nullptr));
    EXPECT_TRUE(deleted);
    EXPECT_FALSE(handle);
}

} // namespace
