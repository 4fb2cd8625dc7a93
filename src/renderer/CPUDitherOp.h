// Parameters of the dither kernel.
#ifndef TAVRIN_RENDERER_CPU_DITHER_OP_H
#define TAVRIN_RENDERER_CPU_DITHER_OP_H

namespace Rendering
{

// Adds the noise of a pixel's place to all four channels, then scales them.
struct DitherParameters
{
    // Values past a row's period that repeat its start, so that a whole vector can be read from any place in the period.
    static constexpr unsigned int kRowExtension = 64;

    // Rows of (mask + 1) + kRowExtension values; there are mask + 1 rows.
    float const* noise;
    unsigned int mask;
    float scale;
};

} // namespace Rendering

#endif
