// The choice of a renderer by type and by the words of the environment.
#include "renderer/genericRenderer.h"

#include "ocio/opUtil.h"
#include "support/failure.h"
#include "support/scopedEnvironment.h"

#include <gtest/gtest.h>

using namespace Rendering;

namespace
{

constexpr auto kNoSuchType = static_cast<RenderingType>(5);

Failure const kGpuNotValid{0x810004, "A GPU renderer not a valid choice"};
Failure const kCpuNotValid{0x810004, "A CPU renderer not a valid choice"};
Failure const kOcioGpuNotValid{0x810004, "A OCIO GPU renderer not a valid choice"};

TEST(GenericRenderer, CpuSideGivesTheCpuRenderer)
{
    for (RenderingType const type : {RENDERING_DEFAULT, RENDERING_CPU})
    {
        auto const renderer = getCPURenderer(type);
        ASSERT_NE(renderer, nullptr);
        EXPECT_EQ(renderer->getType(), RENDERING_CPU);
    }
    EXPECT_NE(getCPURenderer(RENDERING_CPU), getCPURenderer(RENDERING_CPU));
}

TEST(GenericRenderer, CpuSideGivesTheOpenColorIORendererWhereThereIsOne)
{
    if (Color::OpUtil::isAvailable())
        EXPECT_EQ(getCPURenderer(RENDERING_OCIO)->getType(), RENDERING_OCIO);
    else
        EXPECT_EQ(failureOf([] { getCPURenderer(RENDERING_OCIO); }), (Failure{0x2010001, "No 'OCIO' renderer available"}));
}

TEST(GenericRenderer, CpuSideRefusesGpuTypes)
{
    EXPECT_EQ(failureOf([] { getCPURenderer(RENDERING_GPU); }), kGpuNotValid);
    EXPECT_EQ(failureOf([] { getCPURenderer(RENDERING_OCIO_GPU); }), kGpuNotValid);
}

TEST(GenericRenderer, GpuSideGivesTheGpuRenderer)
{
    for (RenderingType const type : {RENDERING_DEFAULT, RENDERING_GPU})
    {
        auto const renderer = getGPURenderer(type);
        ASSERT_NE(renderer, nullptr);
        EXPECT_EQ(renderer->getType(), RENDERING_GPU);
    }
}

TEST(GenericRenderer, GpuSideRefusesCpuTypes)
{
    EXPECT_EQ(failureOf([] { getGPURenderer(RENDERING_CPU); }), kCpuNotValid);
    EXPECT_EQ(failureOf([] { getGPURenderer(RENDERING_OCIO); }), kCpuNotValid);
    EXPECT_EQ(failureOf([] { getGPURenderer(RENDERING_OCIO_GPU); }), kOcioGpuNotValid);
}

TEST(GenericRenderer, GivesNothingForATypeThatDoesNotExist)
{
    EXPECT_EQ(getCPURenderer(kNoSuchType), nullptr);
    EXPECT_EQ(getGPURenderer(kNoSuchType), nullptr);
}

TEST(GenericRenderer, AWordOfTheEnvironmentReplacesTheType)
{
    {
        ScopedEnvironment const environment("TAVRIN_CPU_RENDERER", "GPU");
        EXPECT_EQ(failureOf([] { getCPURenderer(RENDERING_CPU); }), kGpuNotValid);
    }
    {
        ScopedEnvironment const environment("TAVRIN_CPU_RENDERER", "OCIO_GPU");
        EXPECT_EQ(failureOf([] { getCPURenderer(RENDERING_CPU); }), kGpuNotValid);
    }
    {
        ScopedEnvironment const environment("TAVRIN_CPU_RENDERER", "CPU");
        EXPECT_EQ(getCPURenderer(RENDERING_GPU)->getType(), RENDERING_CPU);
        EXPECT_EQ(getCPURenderer(kNoSuchType)->getType(), RENDERING_CPU);
        EXPECT_EQ(failureOf([] { getGPURenderer(RENDERING_CPU); }), kCpuNotValid); // The other side has a variable of its own.
    }
    {
        ScopedEnvironment const environment("TAVRIN_GPU_RENDERER", "OCIO_GPU");
        EXPECT_EQ(failureOf([] { getGPURenderer(RENDERING_GPU); }), kOcioGpuNotValid);
        EXPECT_EQ(getCPURenderer(RENDERING_CPU)->getType(), RENDERING_CPU);
    }
}

TEST(GenericRenderer, AnotherWordIsIgnored)
{
    for (char const* const word : {"", "cpu", "gpu", " GPU"})
    {
        ScopedEnvironment const environment("TAVRIN_CPU_RENDERER", word);
        EXPECT_EQ(getCPURenderer(RENDERING_CPU)->getType(), RENDERING_CPU) << word;
    }
}

} // namespace
