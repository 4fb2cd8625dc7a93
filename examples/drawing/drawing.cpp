// Drawing: the transform of the quick start, run by the graphics on a picture in memory.
#include <tavrinGL/tavrinGL.h>

#include <cstdio>
#include <cstdlib>

static void check(Tavrin::TavStatus const& status)
{
    if (!status)
    {
        std::fprintf(stderr, "error %#x: %s\n", status.getErrorCode(), status.getErrorMessage());
        std::exit(EXIT_FAILURE);
    }
}

int main()
{
    // A program with a window has a context already. It lives longer than the transform, whose adaptor needs it to the end.
    std::unique_ptr<TavrinGL::HeadlessContext> context;
    check(TavrinGL::HeadlessContext::create(context));

    // Half of each channel, and a tenth more.
    float const matrix[] = {0.5F, 0, 0, 0, 0.5F, 0, 0, 0, 0.5F};
    float const offsets[] = {0.1F, 0.1F, 0.1F};
    Tavrin::TransformPtr transform;
    check(Tavrin::CreateMatrixTransform(Tavrin::BIT_DEPTH_32f, Tavrin::BIT_DEPTH_32f, matrix, offsets, false, transform));

    // Compiles the shader and loads the tables.
    Tavrin::GPUAdaptorPtr adaptor(new TavrinGL::OpenGLAdaptor);
    check(transform->setGPUAdaptor(adaptor));
    check(transform->finalize(Tavrin::PF_RGBA_32f, Tavrin::PF_RGBA_32f, Tavrin::RENDERER_GPU, Tavrin::OPTIMIZER_DEFAULT_THRESHOLD,
                              Tavrin::RESOLVE_GRAPHICS_MONITOR));

    // One pixel. For a texture of the program's own, transform->applyGPU draws it where the program's framebuffer is.
    float pixel[] = {0.25F, 0.5F, 1, 1};
    check(TavrinGL::drawPicture(*transform, pixel, 1, 1, pixel));

    std::printf("%.3f %.3f %.3f %.3f\n", pixel[0], pixel[1], pixel[2], pixel[3]);
    return EXIT_SUCCESS;
}
