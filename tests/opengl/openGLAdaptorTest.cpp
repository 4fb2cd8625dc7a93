// The adaptor for OpenGL: textures of every size, values that change, failures, and a context that is left as it was.
#include "drawing.h"
#include "transform/ops.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#define GL_GLEXT_PROTOTYPES
#include <GL/gl.h>
#include <GL/glext.h>

#include <cmath>
#include <memory>
#include <string>
#include <thread>
#include <vector>

using namespace Tavrin;
using namespace Color;
using TavrinGL::OpenGLAdaptor;
using testing::HasSubstr;

namespace
{

constexpr char const* kFailedShader = "Failure on fragment shader program compilation: ";

using Model = std::shared_ptr<Color::Transform>;

Model modelOf(std::vector<Op const*> const& ops)
{
    auto model = std::make_shared<Color::Transform>();
    for (Op const* op : ops)
        model->getOps().append(op->clone());
    return model;
}

// Rows of the square of their place.
Lut1DOp squares(unsigned int rows)
{
    Lut1DOp op(rows);
    for (float& value : op.getArray().getValues())
        value = value * value;
    return op;
}

// Counts the shaders that were compiled.
class CountingAdaptor : public OpenGLAdaptor
{
public:
    explicit CountingAdaptor(int& count) : m_count(count) {}

    TavStatus compileShader(char const* shaderHeader, char const* helperMethods, char const* mainHeader, char const* processing,
                            char const* footer) override
    {
        ++m_count;
        return OpenGLAdaptor::compileShader(shaderHeader, helperMethods, mainHeader, processing, footer);
    }

private:
    int& m_count;
};

class OpenGLAdaptorTest : public Drawing
{
};

TEST_F(OpenGLAdaptorTest, TakesShadersInGlsl)
{
    OpenGLAdaptor const adaptor;
    EXPECT_EQ(adaptor.getLanguage(), GPUAdaptor::LANGUAGE_GLSL);
}

TEST_F(OpenGLAdaptorTest, KeepsTexturesAsNarrowAsItIsTold)
{
    for (unsigned int const widest : {16U, 64U, 100U, 1024U, 8192U, 1000000U})
    {
        OpenGLAdaptor adaptor(widest);
        for (unsigned int const length : {2U, 256U, 1024U, 4096U, 4097U, 65536U})
        {
            unsigned int width = 0;
            unsigned int height = 0;
            TavStatus const status = adaptor.getTextureSize(length, &width, &height);
            if (!status)
                continue; // More rows than a texture has.
            SCOPED_TRACE(std::to_string(widest) + " " + std::to_string(length));
            EXPECT_LE(width, widest);
            if (height == 1)
            {
                EXPECT_EQ(width, length);
                EXPECT_NE(length, 65536U);
            }
            else
            {
                // All values fit into rows that overlap by one, and none is lost in the last one.
                EXPECT_GE(std::size_t{width - 1} * height, length);
                EXPECT_NE(length % (width - 1), 0U);
            }
        }
    }
}

TEST_F(OpenGLAdaptorTest, RefusesATableThatIsTooLongForItsWidth)
{
    OpenGLAdaptor adaptor(3);
    unsigned int width = 0;
    unsigned int height = 0;
    EXPECT_EQ(wordsOf(adaptor.getTextureSize(1U << 20, &width, &height)),
              "Failure on texture bind: a table of 1048576 values is too long");
}

// A table reads the same in one row and folded to any width.
TEST_F(OpenGLAdaptorTest, FoldsTablesWithoutASeam)
{
    Lut1DOp const op = squares(4096);
    Picture const picture = randomPicture(128, 32);
    TransformPtr const transform = publicTransform(modelOf({&op}));
    for (unsigned int const widest : {4096U, 4095U, 1025U, 1024U, 513U, 91U})
    {
        ASSERT_EQ(wordsOf(finalize(transform, new OpenGLAdaptor(widest))), "");
        std::vector<float> const actual = drawn(transform, picture);
        for (std::size_t i = 0; i < actual.size(); ++i)
        {
            double const place = std::min(std::max(double(picture.values[i]), 0.0), 1.0);
            double const expected = i % 4 == 3 ? picture.values[i] : place * place;
            ASSERT_NEAR(actual[i], expected, 1e-4) << widest << " " << i;
        }
    }
}

TEST_F(OpenGLAdaptorTest, ReadsHalfDomainsAtEveryHalf)
{
    Lut1DOp op(BIT_DEPTH_32f, BIT_DEPTH_32f, "", "", {}, Lut1DOp::InterpolationAlgo::Linear, HALF_FLAGS_INPUT_HALF_DOMAIN);
    op.getArray().scale(0.5F);
    TransformPtr const transform = publicTransform(modelOf({&op}));
    ASSERT_EQ(wordsOf(finalize(transform, new OpenGLAdaptor)), "");
    // Every half with a normal number, in red and, negated, in green.
    Picture picture{961, 32, {}};
    for (int exponent = -14; exponent < 16; ++exponent)
    {
        for (int mantissa = 0; mantissa < 1024; ++mantissa)
        {
            float const value = std::ldexp(1.0F + static_cast<float>(mantissa) / 1024.0F, exponent);
            for (float const v : {value, -value, 0.0F, 1.0F})
                picture.values.push_back(v);
        }
    }
    picture.values.resize(std::size_t{4} * picture.width * picture.height, 1.0F);
    std::vector<float> const actual = drawn(transform, picture);
    for (std::size_t i = 0; i < actual.size(); ++i)
    {
        float const expected = i % 4 == 3 ? picture.values[i] : picture.values[i] * 0.5F;
        ASSERT_NEAR(actual[i], expected, std::abs(expected) * 1e-3F) << i;
    }
}

// The same shader draws what the properties say at the time.
TEST_F(OpenGLAdaptorTest, DrawsChangedPropertiesWithTheSameShader)
{
    ExposureContrastOp op(BIT_DEPTH_32f, BIT_DEPTH_32f, ExposureContrastOp::Style::Linear);
    op.getExposure()->setDynamic(true);
    op.getContrast()->setDynamic(true);
    op.setBypass(std::make_shared<BypassDynamicProperty>(false, true));
    TransformPtr const transform = publicTransform(modelOf({&op}));
    int compiled = 0;
    ASSERT_EQ(wordsOf(finalize(transform, new CountingAdaptor(compiled))), "");

    Picture const picture{1, 1, {0.25F, 0.5F, 0.125F, 0.75F}};
    auto const expectFactor = [&](float factor)
    {
        std::vector<float> const actual = drawn(transform, picture);
        for (int c = 0; c < 3; ++c)
            EXPECT_NEAR(actual[c], picture.values[c] * factor, 1e-5F * factor) << c;
        EXPECT_EQ(actual[3], 0.75F);
    };
    expectFactor(1.0F);
    transform->setDynamicProperty({DynamicProperty::EXPOSURE, 2.0});
    expectFactor(4.0F);
    transform->setDynamicProperty({DynamicProperty::EXPOSURE, -1.0});
    expectFactor(0.5F);
    transform->setDynamicProperty({DynamicProperty::BYPASS, true});
    expectFactor(1.0F);
    transform->setDynamicProperty({DynamicProperty::BYPASS, false});
    transform->setDynamicProperty({DynamicProperty::CONTRAST, 2.0});
    std::vector<float> const actual = drawn(transform, picture);
    for (int c = 0; c < 3; ++c)
        EXPECT_NEAR(actual[c], std::pow(picture.values[c] * 0.5 / 0.18, 2.0) * 0.18, 1e-5) << c;
    EXPECT_EQ(compiled, 1);
}

TEST_F(OpenGLAdaptorTest, TellsTheCompilersWords)
{
    // A million is written as "1e+06.", which is no number in this language.
    MatrixOp op;
    op.setArrayValue(1, 1e6F);
    TransformPtr const transform = publicTransform(modelOf({&op}));
    std::string const words = wordsOf(finalize(transform, new OpenGLAdaptor));
    EXPECT_THAT(words, HasSubstr(kFailedShader));
    EXPECT_THAT(words, HasSubstr("error"));
    EXPECT_NE(wordsOf(transform->applyGPU(1, Vertices(Rect(0, 0, 1, 1)), Vertices(Rect(0, 0, 1, 1)))), "");
}

TEST_F(OpenGLAdaptorTest, RefusesMoreTexturesThanTheGraphicsHave)
{
    GLint units = 0;
    glGetIntegerv(GL_MAX_TEXTURE_IMAGE_UNITS, &units);
    Lut3DOp const cube(2U);
    std::vector<Op const*> const ops(static_cast<std::size_t>(units), &cube);
    TransformPtr const transform = publicTransform(modelOf(ops));
    EXPECT_EQ(wordsOf(finalize(transform, new OpenGLAdaptor)), std::string(kFailedShader) + "Exceeding number of texture limit: " +
                                                                   std::to_string(units + 1) + " vs. " + std::to_string(units));
}

TEST_F(OpenGLAdaptorTest, RefusesATextureThatTheGraphicsCannotHold)
{
    OpenGLAdaptor adaptor;
    GLint largest = 0;
    glGetIntegerv(GL_MAX_TEXTURE_SIZE, &largest);
    std::vector<float> const values(static_cast<std::size_t>(largest) + 1);
    EXPECT_EQ(wordsOf(adaptor.addTexture1D("table", values.data(), static_cast<unsigned int>(values.size()))),
              "Failure on texture bind: table: OpenGL error 0x501"); // GL_INVALID_VALUE
}

TEST_F(OpenGLAdaptorTest, HasNothingToDrawWithBeforeAShaderAndAfterItsRelease)
{
    OpenGLAdaptor adaptor;
    Vertices const corners(Rect(0, 0, 1, 1));
    EXPECT_EQ(wordsOf(adaptor.drawFrame(1, corners, corners)), "there is no shader to draw with");
    EXPECT_EQ(wordsOf(adaptor.compileShader("", "", "void main(void)\n{\n", "", "}\n")), "");
    EXPECT_EQ(wordsOf(adaptor.drawFrame(0, corners, corners)), "the drawing: OpenGL error 0x506"); // There is no window.
    EXPECT_EQ(wordsOf(adaptor.releaseShader()), "");
    EXPECT_EQ(wordsOf(adaptor.drawFrame(1, corners, corners)), "there is no shader to draw with");
}

// Another thread has no context of its own.
TEST_F(OpenGLAdaptorTest, SaysSoWhereThereIsNoContext)
{
    std::thread(
        []
        {
            OpenGLAdaptor adaptor;
            float const value = 0.0F;
            unsigned int size = 0;
            EXPECT_EQ(wordsOf(adaptor.beginShader()), "no OpenGL context is current");
            EXPECT_EQ(wordsOf(adaptor.getTextureSize(1, &size, &size)), "no OpenGL context is current");
            EXPECT_EQ(wordsOf(adaptor.addTexture1D("table", &value, 1)), "no OpenGL context is current");
            MatrixOp const op;
            TransformPtr const transform = publicTransform(modelOf({&op}));
            EXPECT_EQ(wordsOf(TavrinGL::drawPicture(*transform, &value, 1, 1, nullptr)), "no OpenGL context is current");
        })
        .join();
}

TEST_F(OpenGLAdaptorTest, RefusesPicturesThatAreLargerThanATexture)
{
    MatrixOp const op;
    TransformPtr const transform = publicTransform(modelOf({&op}));
    EXPECT_THAT(wordsOf(TavrinGL::drawPicture(*transform, nullptr, 1U << 30, 1, nullptr)),
                HasSubstr("the graphics draw pictures of at most"));
}

TEST_F(OpenGLAdaptorTest, PassesOnWhatTheTransformSays)
{
    MatrixOp const op;
    TransformPtr const transform = publicTransform(modelOf({&op}));
    Picture const picture = randomPicture(2, 2);
    std::vector<float> result(picture.values.size());
    EXPECT_EQ(wordsOf(TavrinGL::drawPicture(*transform, picture.values.data(), 2, 2, result.data())),
              "No 'GPU' renderer available");
}

// Drawing in place, over a transform that has every kind of texture.
TEST_F(OpenGLAdaptorTest, LeavesTheContextAsItWas)
{
    Lut1DOp const table = squares(4096);
    Lut3DOp const cube(3U);
    DitherOp const dither(BIT_DEPTH_32f, BIT_DEPTH_32f, BIT_DEPTH_8i);
    TransformPtr const transform = publicTransform(modelOf({&table, &cube, &dither}));

    GLuint texture = 0;
    glGenTextures(1, &texture);
    glActiveTexture(GL_TEXTURE3);
    glBindTexture(GL_TEXTURE_2D, texture);
    glPixelStorei(GL_UNPACK_ALIGNMENT, 1);
    glPixelStorei(GL_PACK_ROW_LENGTH, 7);
    glViewport(1, 2, 3, 4);
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
    glTranslatef(5, 6, 7);
    glEnable(GL_BLEND);
    glColorMask(GL_TRUE, GL_FALSE, GL_TRUE, GL_TRUE);

    ASSERT_EQ(wordsOf(finalize(transform, new OpenGLAdaptor(1024))), "");
    Picture picture = randomPicture(16, 16);
    std::vector<float> const expected = drawn(transform, picture);
    EXPECT_EQ(wordsOf(TavrinGL::drawPicture(*transform, picture.values.data(), 16, 16, picture.values.data())), "");
    EXPECT_EQ(picture.values, expected);

    auto const get = [](GLenum name)
    {
        GLint value = -1;
        glGetIntegerv(name, &value);
        return value;
    };
    EXPECT_EQ(get(GL_ACTIVE_TEXTURE), GL_TEXTURE3);
    EXPECT_EQ(get(GL_TEXTURE_BINDING_2D), static_cast<GLint>(texture));
    EXPECT_EQ(get(GL_UNPACK_ALIGNMENT), 1);
    EXPECT_EQ(get(GL_PACK_ROW_LENGTH), 7);
    EXPECT_EQ(get(GL_MATRIX_MODE), GL_PROJECTION);
    EXPECT_EQ(get(GL_CURRENT_PROGRAM), 0);
    EXPECT_EQ(get(GL_DRAW_FRAMEBUFFER_BINDING), 0);
    EXPECT_TRUE(glIsEnabled(GL_BLEND));
    GLint viewport[4] = {};
    glGetIntegerv(GL_VIEWPORT, viewport);
    EXPECT_THAT(viewport, testing::ElementsAre(1, 2, 3, 4));
    GLfloat matrix[16] = {};
    glGetFloatv(GL_PROJECTION_MATRIX, matrix);
    EXPECT_EQ(matrix[12], 5.0F);
    GLboolean mask[4] = {};
    glGetBooleanv(GL_COLOR_WRITEMASK, mask);
    EXPECT_THAT(mask, testing::ElementsAre(GL_TRUE, GL_FALSE, GL_TRUE, GL_TRUE));
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
    glDeleteTextures(1, &texture);
}

TEST_F(OpenGLAdaptorTest, FreesItsTexturesAndItsShader)
{
    Lut3DOp const cube(3U);
    TransformPtr const transform = publicTransform(modelOf({&cube}));
    ASSERT_EQ(wordsOf(finalize(transform, new OpenGLAdaptor)), "");
    // Names are given out in their order, so the last ones are those of the adaptor.
    GLuint const probe = glCreateProgram();
    glDeleteProgram(probe);
    EXPECT_TRUE(glIsProgram(probe - 1));
    GLuint next = 0;
    glGenTextures(1, &next);
    glDeleteTextures(1, &next);
    EXPECT_TRUE(glIsTexture(next - 1));
    GPUAdaptorPtr none;
    transform->setGPUAdaptor(none);
    EXPECT_FALSE(glIsProgram(probe - 1));
    EXPECT_FALSE(glIsTexture(next - 1));
}

TEST_F(OpenGLAdaptorTest, SeveralTransformsDrawInOneContext)
{
    Lut1DOp const table = squares(4096);
    MatrixOp half;
    for (unsigned int const i : {0U, 5U, 10U})
        half.setArrayValue(i, 0.5F);
    TransformPtr const first = publicTransform(modelOf({&table}));
    TransformPtr const second = publicTransform(modelOf({&half}));
    ASSERT_EQ(wordsOf(finalize(first, new OpenGLAdaptor)), "");
    ASSERT_EQ(wordsOf(finalize(second, new OpenGLAdaptor)), "");
    Picture const picture{1, 1, {0.5F, 0.5F, 0.5F, 1.0F}};
    for (int round = 0; round < 2; ++round)
    {
        EXPECT_NEAR(drawn(first, picture)[0], 0.25F, 1e-6F);
        EXPECT_EQ(drawn(second, picture)[0], 0.25F);
    }
}

TEST_F(OpenGLAdaptorTest, DrawsInTheContextThatIsCurrent)
{
    MatrixOp const op;
    Picture const picture = randomPicture(4, 4);
    std::unique_ptr<TavrinGL::HeadlessContext> other;
    ASSERT_EQ(wordsOf(TavrinGL::HeadlessContext::create(other)), "");
    {
        TransformPtr const transform = publicTransform(modelOf({&op}));
        ASSERT_EQ(wordsOf(finalize(transform, new OpenGLAdaptor)), "");
        EXPECT_EQ(drawn(transform, picture), picture.values);
    }
    other.reset();
    EXPECT_EQ(glGetString(GL_VERSION), nullptr);
    EXPECT_EQ(wordsOf(context().makeCurrent()), "");
    EXPECT_NE(glGetString(GL_VERSION), nullptr);
}

} // namespace
