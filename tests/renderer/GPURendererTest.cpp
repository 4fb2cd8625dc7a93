// The renderer of textures: what it asks of an adaptor, in which order, and what it makes of failures.
#include "renderer/GPURenderer.h"

#include "renderer/GPUOp.h"
#include "renderer/shaderSamples.h"
#include "support/failure.h"
#include "support/logCapture.h"
#include "support/recordingAdaptor.h"
#include "support/scopedEnvironment.h"
#include "transform/ops.h"
#include "transform/testOps.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

using namespace Rendering;
using namespace Color;
using namespace Tavrin;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

namespace
{

// A renderer with an adaptor that outlives it, as one does that a caller holds too.
class GpuRenderer : public testing::Test
{
protected:
    explicit GpuRenderer(GPUAdaptor::ShaderLanguage language = GPUAdaptor::LANGUAGE_GLSL)
        : m_recorder(new RecordingAdaptor(language)), m_adaptor(m_recorder), m_renderer(std::make_unique<GPURenderer>())
    {
        m_renderer->setGPUAdaptor(m_adaptor);
    }

    RecordingAdaptor& recorder() { return *m_recorder; }
    GPURenderer& renderer() { return *m_renderer; }
    void deleteRenderer() { m_renderer.reset(); }

    void append(Op const& op) { m_transform->getOps().append(op.clone()); }
    std::shared_ptr<Color::Transform> const& transform() const { return m_transform; }
    void finalize() { m_renderer->finalize(m_transform); }
    Failure failureOfFinalize()
    {
        return failureOf([this] { finalize(); });
    }

private:
    RecordingAdaptor* m_recorder;
    GPUAdaptorPtr m_adaptor;
    std::unique_ptr<GPURenderer> m_renderer;
    std::shared_ptr<Color::Transform> m_transform = std::make_shared<Color::Transform>();
};

ExposureContrastOp switchableGrade()
{
    ExposureContrastOp op(BIT_DEPTH_32f, BIT_DEPTH_32f, ExposureContrastOp::Style::Linear);
    op.setBypass(bypass(false, true));
    return op;
}

Vertices const kCorners(Rect(0, 0, 1, 1));

TEST_F(GpuRenderer, IsOfItsType)
{
    EXPECT_EQ(renderer().getType(), RENDERING_GPU);
}

TEST_F(GpuRenderer, CallsTheAdaptorInOrder)
{
    append(switchableGrade());
    append(Lut1DOp(4096));
    append(Lut3DOp(2));
    append(DitherOp(BIT_DEPTH_32f, BIT_DEPTH_32f, BIT_DEPTH_10i));
    finalize();
    EXPECT_THAT(recorder().calls,
                ElementsAre("releaseShader", "resetResources", "getInputTextureName", "addUniform Bypass_0",
                            "addUniform Exposure_0", "addUniform Contrast_0", "getTextureSize 4096", "addTexture2D red_1Sampler",
                            "addTexture2D green_1Sampler", "addTexture2D blue_1Sampler", "addTexture3D lut3d_2Sampler",
                            "getTextureSize 256", "addTexture1D bayer_3Sampler", "getInputTextureName", "beginShader",
                            "compileShader"));
    recorder().calls.clear();
    renderer().apply(17, kCorners, kCorners);
    EXPECT_THAT(recorder().calls, ElementsAre("drawFrame 17"));
    recorder().calls.clear();
    deleteRenderer();
    EXPECT_THAT(recorder().calls, ElementsAre("releaseShader"));
}

TEST_F(GpuRenderer, ReleasesTheFormerShaderFirstWhenFinalizedAnew)
{
    finalize();
    append(switchableGrade());
    recorder().calls.clear();
    finalize();
    EXPECT_EQ(recorder().calls.front(), "releaseShader");
    EXPECT_EQ(recorder().uniforms.size(), 3U);
    finalize();
    EXPECT_EQ(recorder().uniforms.size(), 3U);
}

TEST(GpuRendererWithoutAnAdaptor, RefusesToFinalizeAndReleasesNothing)
{
    GPURenderer renderer;
    EXPECT_EQ(failureOf([&] { renderer.finalize(std::make_shared<Color::Transform>()); }),
              (Failure{0x2010001, "No 'GPU' renderer available"}));
}

TEST_F(GpuRenderer, RefusesANullTransformBeforeTheAdaptorHearsOfIt)
{
    EXPECT_EQ(failureOf([this] { renderer().finalize(nullptr); }), (Failure{0x810002, "Transform null"}));
    EXPECT_TRUE(recorder().calls.empty());
}

TEST_F(GpuRenderer, RefusesAReference)
{
    ReferenceOp resolved;
    resolved.setResolvedOps(OpList());
    append(resolved);
    EXPECT_EQ(failureOfFinalize(), (Failure{0x810005, "Unresolved transform"}));
}

TEST_F(GpuRenderer, RefusesAStaticBypass)
{
    MatrixOp op;
    op.setBypass(bypass(true, false));
    append(op);
    EXPECT_EQ(failureOfFinalize(), (Failure{0x810008, "Unfinalized transform"}));
}

// An operator of a number beyond the list.
class UnknownOp : public TypedOp<UnknownOp, static_cast<Op::OpType>(13)>
{
public:
    UnknownOp() : TypedOp(BIT_DEPTH_32f, BIT_DEPTH_32f) {}
};

TEST_F(GpuRenderer, SkipsAnOperatorOfAnUnknownType)
{
    append(UnknownOp());
    append(MatrixOp());
    finalize();
    EXPECT_THAT(recorder().texts.processing, Not(HasSubstr("Step 0")));
    EXPECT_THAT(recorder().texts.processing, HasSubstr("Step 1: Matrix"));
}

// Each failing operation that is not ignored stops finalize or apply with the same words.
TEST_F(GpuRenderer, ReportsTheOperationsWhoseFailureCounts)
{
    append(switchableGrade());
    append(Lut1DOp(4096));
    append(Lut1DOp(256));
    append(Lut3DOp(2));
    for (std::string const operation :
         {"releaseShader", "getTextureSize", "addTexture1D", "addTexture2D", "beginShader", "compileShader"})
    {
        recorder().failing = operation;
        EXPECT_EQ(failureOfFinalize(), (Failure{0x830001, "Failure on fragment shader program compilation: out of " + operation}));
        recorder().failing.clear();
        EXPECT_EQ(failureOfFinalize(), Failure()) << "after " << operation;
    }
    recorder().failing = "drawFrame";
    EXPECT_EQ(failureOf([this] { renderer().apply(1, kCorners, kCorners); }),
              (Failure{0x830001, "Failure on fragment shader program compilation: out of drawFrame"}));
}

TEST_F(GpuRenderer, IgnoresTheFailuresOfTheOthers)
{
    append(switchableGrade());
    append(Lut3DOp(2));
    for (std::string const operation : {"resetResources", "addUniform", "addTexture3D"})
    {
        recorder().failing = operation;
        EXPECT_EQ(failureOfFinalize(), Failure()) << operation;
        EXPECT_EQ(recorder().calls.back(), "compileShader");
    }
}

TEST_F(GpuRenderer, KeepsSilentAboutAFailingReleaseAtItsEnd)
{
    finalize();
    recorder().failing = "releaseShader";
    EXPECT_NO_THROW(deleteRenderer());
}

TEST_F(GpuRenderer, HandsOverTheLiveValuesOfDynamicProperties)
{
    ExposureContrastOp const op = switchableGrade();
    append(op);
    finalize();
    ASSERT_EQ(recorder().uniforms.size(), 3U);
    RecordingAdaptor::Uniform const& bypassed = recorder().uniforms[0];
    EXPECT_EQ(bypassed.id, DynamicProperty::BYPASS);
    EXPECT_TRUE(bypassed.isDynamic);
    EXPECT_TRUE(bypassed.isBoolean);
    EXPECT_FALSE(*static_cast<bool const*>(bypassed.value));
    op.getBypass()->setValue(true);
    EXPECT_TRUE(*static_cast<bool const*>(bypassed.value));
}

TEST_F(GpuRenderer, MakesExposureAndContrastUniformsEvenWhenTheyAreNotDynamic)
{
    ExposureContrastOp op;
    op.getExposure()->setValue(-1.5);
    op.getContrast()->setValue(1.25);
    append(op);
    finalize();
    ASSERT_EQ(recorder().uniforms.size(), 2U);
    for (RecordingAdaptor::Uniform const& uniform : recorder().uniforms)
    {
        EXPECT_FALSE(uniform.isDynamic);
        EXPECT_FALSE(uniform.isBoolean);
    }
    EXPECT_EQ(recorder().uniforms[0].id, DynamicProperty::EXPOSURE);
    EXPECT_EQ(*static_cast<double const*>(recorder().uniforms[0].value), -1.5);
    EXPECT_EQ(recorder().uniforms[1].id, DynamicProperty::CONTRAST);
    EXPECT_EQ(*static_cast<double const*>(recorder().uniforms[1].value), 1.25);
}

// The caller may let go of the transform that the values belong to.
TEST_F(GpuRenderer, KeepsTheValuesOfUniformsAsLongAsItLives)
{
    auto shortLived = std::make_shared<Color::Transform>();
    ExposureContrastOp op;
    op.getExposure()->setValue(3.0);
    shortLived->getOps().append(op.clone());
    renderer().finalize(shortLived);
    shortLived.reset();
    EXPECT_EQ(*static_cast<double const*>(recorder().uniforms[0].value), 3.0);
}

TEST_F(GpuRenderer, LeavesOutTheSwitchOfAStaticBypass)
{
    append(MatrixOp());
    finalize();
    EXPECT_TRUE(recorder().uniforms.empty());
    EXPECT_THAT(recorder().texts.processing, Not(HasSubstr("if(")));
}

std::string firstLine(std::string const& text)
{
    std::size_t const begin = text.find_first_not_of('\n');
    return text.substr(begin, text.find('\n', begin) - begin);
}

TEST_F(GpuRenderer, CutsLongCommentsAndKeepsTheirLineEnds)
{
    MatrixOp op;
    op.setName(std::string(300, 'x'));
    append(op);
    finalize();
    std::string const comment = firstLine(recorder().texts.helperMethods);
    EXPECT_EQ(comment, "// Step 0: Matrix: " + std::string(179, 'x')); // 198 characters and the line end
    EXPECT_EQ(recorder().texts.helperMethods, "\n" + comment + "\n");
}

TEST_F(GpuRenderer, LetsNoNameEndAComment)
{
    MatrixOp op;
    op.setName("a\n#error b\r");
    append(op);
    finalize();
    EXPECT_EQ(recorder().texts.helperMethods, "\n// Step 0: Matrix: a #error b  helper methods\n");
}

TEST_F(GpuRenderer, CutsAnInputNameThatIsLongerThanAnyName)
{
    recorder().inputTextureName = std::string(5000, 'n');
    finalize();
    EXPECT_EQ(recorder().texts.shaderHeader.size(), 4095U);
    EXPECT_EQ(recorder().texts.mainHeader.size(), 4095U);
}

TEST_F(GpuRenderer, DumpsTheShaderWhenTheEnvironmentAsksForIt)
{
    append(MatrixOp());
    LogCapture const log;
    {
        ScopedEnvironment const environment("TAVRIN_DUMP_SHADER", "");
        finalize();
        EXPECT_TRUE(log.lines().empty());
    }
    ScopedEnvironment const environment("TAVRIN_DUMP_SHADER", "1");
    finalize();
    RecordingAdaptor::Texts const& texts = recorder().texts;
    EXPECT_THAT(log.lines(), ElementsAre(std::pair(LOG_USER, "*************"), std::pair(LOG_USER, texts.shaderHeader),
                                         std::pair(LOG_USER, texts.helperMethods), std::pair(LOG_USER, texts.mainHeader),
                                         std::pair(LOG_USER, texts.processing), std::pair(LOG_USER, texts.footer)));
}

class GpuRendererInNoLanguage : public GpuRenderer
{
protected:
    GpuRendererInNoLanguage() : GpuRenderer(static_cast<GPUAdaptor::ShaderLanguage>(3)) {}
};

TEST_F(GpuRendererInNoLanguage, FailsWhereTheLanguageIsNeeded)
{
    append(RangeOp(BIT_DEPTH_32f, BIT_DEPTH_32f, 0, 1, 0, 1));
    EXPECT_EQ(failureOfFinalize(), Failure());
    append(Lut3DOp(2));
    EXPECT_EQ(failureOfFinalize(),
              (Failure{0x830001, "Failure on fragment shader program compilation: undefined Shading language"}));
}

TEST(IndexedName, IsTheNameAndTheIndex)
{
    EXPECT_EQ(getIndexedName("Bypass", 3), "Bypass_3");
    EXPECT_EQ(getIndexedName("Exposure", 0), "Exposure_0");
}

} // namespace
