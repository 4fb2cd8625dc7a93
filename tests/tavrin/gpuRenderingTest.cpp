// Rendering through a caller's adaptor: what reaches it, and what its failures leave behind.
#include "transformFixtures.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

using namespace Tavrin;
using testing::ElementsAre;
using testing::HasSubstr;

namespace
{

Vertices const kCorners(Rect(0, 0, 1, 1));

TavStatus finalizeForGpu(TransformPtr const& transform, RendererFlags flags = RENDERER_GPU)
{
    return transform->finalize(PF_RGBA_32f, PF_RGBA_32f, flags, OPTIMIZER_DEFAULT_THRESHOLD, RESOLVE_BROADCAST_MONITOR);
}

// Gives the transform an adaptor, which lives as long as the transform.
RecordingAdaptor& equip(TransformPtr const& transform)
{
    auto* const recorder = new RecordingAdaptor;
    GPUAdaptorPtr adaptor(recorder);
    transform->setGPUAdaptor(adaptor);
    return *recorder;
}

// Exposure, contrast and the switch can change.
TransformPtr grade()
{
    std::string parameters;
    for (char const* const name : {"EXPOSURE", "CONTRAST", "LOOK_SWITCH"})
        parameters += std::string("<DynamicParameter param='") + name + "'/>\n";
    return fromText(document("<ExposureContrast inBitDepth='32f' outBitDepth='32f' style='linear'>\n" + parameters +
                             "<ECParams exposure='1' contrast='1.5' pivot='0.18'/>\n</ExposureContrast>"));
}

// A 1D table that is as long as it needs to be for either kind of texture.
TransformPtr look()
{
    std::string rows;
    for (int i = 0; i < 1025; ++i)
        rows += std::to_string(i / 1024.0 * i / 1024.0) + "\n";
    return fromText(document("<LUT1D inBitDepth='32f' outBitDepth='32f'>\n<Array dim='1025 1'>\n" + rows + "</Array>\n</LUT1D>"));
}

TEST(GpuRendering, DrawsThroughTheAdaptor)
{
    TransformPtr const transform = scaleBy(2.0F);
    RecordingAdaptor& adaptor = equip(transform);
    ASSERT_EQ(told(finalizeForGpu(transform)), kGood);
    EXPECT_THAT(adaptor.texts.processing, HasSubstr("outColor = vec4(2,2,2,1.0) * outColor;"));
    adaptor.calls.clear();
    EXPECT_EQ(told(transform->applyGPU(5, kCorners, kCorners)), kGood);
    EXPECT_THAT(adaptor.calls, ElementsAre("drawFrame 5"));
}

TEST(GpuRendering, KeepsTheTransformsOwnDepthsBesideTheCpu)
{
    TransformPtr const transform = scaleBy(2.0F);
    RecordingAdaptor& adaptor = equip(transform);
    // The matrix of the CPU divides by 255 and multiplies by 1023.
    ASSERT_EQ(told(transform->finalize(PF_RGBA_8i, PF_RGBA_10i, RENDERER_CPU | RENDERER_GPU, OPTIMIZER_DEFAULT_THRESHOLD,
                                       RESOLVE_BROADCAST_MONITOR)),
              kGood);
    EXPECT_THAT(adaptor.texts.processing, HasSubstr("outColor = vec4(2,2,2,1.0) * outColor;"));
}

TEST(GpuRendering, GoesBesideRenderingOnTheCpu)
{
    TransformPtr const transform = scaleBy(2.0F);
    equip(transform);
    ASSERT_EQ(told(finalizeForGpu(transform, RENDERER_CPU | RENDERER_GPU)), kGood);
    EXPECT_EQ(told(transform->applyGPU(5, kCorners, kCorners)), kGood);
    EXPECT_EQ(render(transform, {1.0F, 2.0F, 3.0F, 1.0F}), (Pixels{2.0F, 4.0F, 6.0F, 1.0F}));
}

TEST(GpuRendering, ReleasesTheShaderWithTheRenderers)
{
    TransformPtr const transform = scaleBy(2.0F);
    RecordingAdaptor& adaptor = equip(transform);
    GPUAdaptorPtr same = transform->getGPUAdaptor();
    ASSERT_EQ(told(finalizeForGpu(transform)), kGood);
    adaptor.calls.clear();
    transform->setGPUAdaptor(same);
    EXPECT_THAT(adaptor.calls, ElementsAre("releaseShader"));
    EXPECT_EQ(told(transform->applyGPU(5, kCorners, kCorners)), kNoGpuRenderer);
}

TEST(GpuRendering, DynamicValuesReachTheAdaptorWithoutANewShader)
{
    TransformPtr const transform = grade();
    ASSERT_TRUE(transform);
    RecordingAdaptor& adaptor = equip(transform);
    ASSERT_EQ(told(finalizeForGpu(transform)), kGood);
    ASSERT_EQ(adaptor.uniforms.size(), 3U);
    adaptor.calls.clear();
    transform->setDynamicProperty({DynamicProperty::BYPASS, true});
    transform->setDynamicProperty({DynamicProperty::EXPOSURE, -2.0});
    transform->setDynamicProperty({DynamicProperty::CONTRAST, 0.5});
    EXPECT_EQ(adaptor.uniforms[0].name, "Bypass_0");
    EXPECT_TRUE(*static_cast<bool const*>(adaptor.uniforms[0].value));
    EXPECT_EQ(*static_cast<double const*>(adaptor.uniforms[1].value), -2.0);
    EXPECT_EQ(*static_cast<double const*>(adaptor.uniforms[2].value), 0.5);
    EXPECT_TRUE(adaptor.calls.empty());
}

// What fails leaves the transform without renderers, CPU and GPU, until a finalize that does not fail.
class FailingAdaptor : public testing::TestWithParam<std::string>
{
};

TEST_P(FailingAdaptor, LeavesTheTransformReadyForAnotherFinalize)
{
    std::string const& operation = GetParam();
    TransformPtr const transform = look();
    ASSERT_TRUE(transform);
    RecordingAdaptor& adaptor = equip(transform);
    adaptor.widestTexture = operation == "addTexture2D" ? 1024 : 2048;
    adaptor.failing = operation;
    Told const failed{0x830001, "Failure on fragment shader program compilation: out of " + operation};
    EXPECT_EQ(told(finalizeForGpu(transform, RENDERER_CPU | RENDERER_GPU)), failed);
    EXPECT_EQ(told(transform->applyGPU(5, kCorners, kCorners)), kNoGpuRenderer);
    EXPECT_TRUE(render(transform, {1.0F, 1.0F, 1.0F, 1.0F}).empty());

    adaptor.failing.clear();
    EXPECT_EQ(told(finalizeForGpu(transform, RENDERER_CPU | RENDERER_GPU)), kGood);
    EXPECT_EQ(told(transform->applyGPU(5, kCorners, kCorners)), kGood);
    EXPECT_FALSE(render(transform, {1.0F, 1.0F, 1.0F, 1.0F}).empty());
}

INSTANTIATE_TEST_SUITE_P(Operations, FailingAdaptor,
                         testing::Values("releaseShader", "getTextureSize", "addTexture1D", "addTexture2D", "beginShader",
                                         "compileShader"),
                         [](auto const& info) { return info.param; });

TEST(GpuRendering, AFailingDrawIsReportedAndTheNextOneMaySucceed)
{
    TransformPtr const transform = look();
    RecordingAdaptor& adaptor = equip(transform);
    ASSERT_EQ(told(finalizeForGpu(transform)), kGood);
    adaptor.failing = "drawFrame";
    EXPECT_EQ(told(transform->applyGPU(5, kCorners, kCorners)),
              (Told{0x830001, "Failure on fragment shader program compilation: out of drawFrame"}));
    adaptor.failing.clear();
    EXPECT_EQ(told(transform->applyGPU(5, kCorners, kCorners)), kGood);
}

TEST(GpuRendering, FailuresThatDoNotCountGoUnnoticed)
{
    TransformPtr const transform = grade();
    RecordingAdaptor& adaptor = equip(transform);
    for (char const* const operation : {"resetResources", "addUniform", "addTexture3D"})
    {
        adaptor.failing = operation;
        EXPECT_EQ(told(finalizeForGpu(transform)), kGood) << operation;
    }
}

} // namespace
