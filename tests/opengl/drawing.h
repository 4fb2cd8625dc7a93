// What tests of drawings share: one context without a window, and pictures drawn by the graphics and rendered by the CPU.
#ifndef TAVRIN_TESTS_OPENGL_DRAWING_H
#define TAVRIN_TESTS_OPENGL_DRAWING_H

#include "tavrin/transformImpl.h"

#include <tavrinGL/tavrinGL.h>

#include <gtest/gtest.h>

#include <memory>
#include <random>
#include <string>
#include <vector>

// The words of a status; empty for a good one.
inline std::string wordsOf(Tavrin::TavStatus const& status)
{
    return status ? "" : status.getErrorMessage() == nullptr ? "?" : status.getErrorMessage();
}

inline Tavrin::TransformPtr publicTransform(std::shared_ptr<Color::Transform> const& model)
{
    return Tavrin::TransformPtr(new Tavrin::Impl::Transform(model));
}

// Rows of RGBA floats.
struct Picture
{
    unsigned int width;
    unsigned int height;
    std::vector<float> values;
};

// Colours somewhat beyond 0 to 1 on both sides, alpha within.
inline Picture randomPicture(unsigned int width, unsigned int height)
{
    std::mt19937 generator(1);
    std::uniform_real_distribution<float> colour(-0.25F, 1.25F);
    std::uniform_real_distribution<float> alpha(0.0F, 1.0F);
    Picture picture{width, height, {}};
    for (unsigned int i = 0; i < width * height; ++i)
    {
        for (int c = 0; c < 3; ++c)
            picture.values.push_back(colour(generator));
        picture.values.push_back(alpha(generator));
    }
    return picture;
}

// The context lives as long as the tests of a suite; adaptors go before it.
class Drawing : public testing::Test
{
protected:
    // Nothing is simplified, so that each operator is drawn as it is.
    static constexpr Tavrin::OptimizerFlags kAsItIs = 101;

    static void SetUpTestSuite() { ASSERT_EQ(wordsOf(TavrinGL::HeadlessContext::create(s_context)), ""); }
    static void TearDownTestSuite() { s_context.reset(); }

    static TavrinGL::HeadlessContext& context() { return *s_context; }

    static Tavrin::TavStatus finalize(Tavrin::TransformPtr const& transform, TavrinGL::OpenGLAdaptor* adaptor)
    {
        Tavrin::GPUAdaptorPtr handle(adaptor);
        transform->setGPUAdaptor(handle);
        return transform->finalize(Tavrin::PF_RGBA_32f, Tavrin::PF_RGBA_32f, Tavrin::RENDERER_CPU | Tavrin::RENDERER_GPU, kAsItIs,
                                   Tavrin::RESOLVE_BROADCAST_MONITOR);
    }

    static std::vector<float> drawn(Tavrin::TransformPtr const& transform, Picture const& picture)
    {
        std::vector<float> result(picture.values.size());
        EXPECT_EQ(wordsOf(TavrinGL::drawPicture(*transform, picture.values.data(), picture.width, picture.height, result.data())),
                  "");
        return result;
    }

    static std::vector<float> rendered(Tavrin::TransformPtr const& transform, Picture const& picture)
    {
        std::vector<float> result(picture.values.size());
        Tavrin::ROI const whole(0, 0, picture.width, picture.height);
        EXPECT_EQ(wordsOf(transform->applyCPU(picture.values.data(), whole, result.data())), "");
        return result;
    }

private:
    inline static std::unique_ptr<TavrinGL::HeadlessContext> s_context;
};

#endif
