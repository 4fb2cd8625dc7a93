// Quick start: make a transform, get it ready for a pair of pixel formats, push pixels through it.
#include <tavrin/tavrin.h>

#include <cstdio>
#include <cstdlib>

// Every call that can fail returns a status with a text for people.
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
    // Half of each channel, and a tenth more. Tavrin::loadColorTransform reads a transform from a file instead.
    float const matrix[] = {0.5F, 0, 0, 0, 0.5F, 0, 0, 0, 0.5F};
    float const offsets[] = {0.1F, 0.1F, 0.1F};
    Tavrin::TransformPtr transform;
    check(Tavrin::CreateMatrixTransform(Tavrin::BIT_DEPTH_32f, Tavrin::BIT_DEPTH_32f, matrix, offsets, false, transform));

    // Once for a pair of pixel formats.
    check(transform->finalize(Tavrin::PF_RGBA_32f, Tavrin::PF_RGBA_32f, Tavrin::RENDERER_CPU, Tavrin::OPTIMIZER_DEFAULT_THRESHOLD,
                              Tavrin::RESOLVE_GRAPHICS_MONITOR));

    // Then for any number of images, also from several threads at once. This one is of a single pixel.
    float const source[] = {0.25F, 0.5F, 1, 1};
    float destination[4];
    check(transform->applyCPU(source, Tavrin::ROI(0, 0, 1, 1), destination));

    std::printf("%.3f %.3f %.3f %.3f\n", destination[0], destination[1], destination[2], destination[3]);
    return EXIT_SUCCESS;
}
