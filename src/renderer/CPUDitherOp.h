// Parameters of the dither kernel.
#ifndef TAVRIN_RENDERER_CPU_DITHER_OP_H
#define TAVRIN_RENDERER_CPU_DITHER_OP_H

#include "renderer/block.h"
#include "renderer/elementArithmetic.h"

#include <cstddef>
#include <optional>

namespace Rendering
{

// Rows of the noise, each followed by its start, so that a whole vector can be read from any place of a row.
struct DitherNoise
{
    // A vector of the destination's elements, of 64 bytes at most, takes as many values.
    static constexpr unsigned int kRowExtension = 64;

    float const* row(unsigned int index) const { return values + std::size_t{index & (rows - 1)} * (period + kRowExtension); }

    float const* values;
    unsigned int rows; // a power of two
    unsigned int period;
};

// Adds the noise of a pixel's place to all four channels, then scales them.
struct DitherParameters
{
    std::optional<ElementArithmetic> getElementArithmetic(unsigned int channels, ImagePosition position) const
    {
        DitherNoise const& elements = channels == 3 ? ofThree : ofFour;
        unsigned int const place = (position.column & (ofPixels.period - 1)) * channels;
        return ElementArithmetic{scale, elements.row(position.row), elements.period, place};
    }

    DitherNoise ofPixels;
    // Each value so many times, for the elements of a pixel.
    DitherNoise ofThree;
    DitherNoise ofFour;
    float scale;
};

} // namespace Rendering

#endif
