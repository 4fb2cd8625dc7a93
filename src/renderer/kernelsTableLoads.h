// Pixels of 8 or 16 bits a channel through tables in memory.
#ifndef TAVRIN_RENDERER_KERNELS_TABLE_LOADS_H
#define TAVRIN_RENDERER_KERNELS_TABLE_LOADS_H

#include "renderer/block.h"

#include <tavrin/vocabulary.h>

#include <array>
#include <cstdint>

namespace Rendering
{

// What the elements of a pixel are worth; arrays are of red, green, blue and alpha.
struct ElementValues
{
    // For each element that a channel may have, the bits of a float. Null for alpha where pixels have none, or where nobody reads
    // it.
    std::array<std::uint32_t const*, 4> table;
    // Which of a pixel's elements it is; anything for an alpha that has no table.
    std::array<unsigned int, 4> element;
    // Alpha where it has no table.
    float missingAlpha;
};

// As loads of formats do.
using TableLoadFunction = void (*)(ElementValues const& values, void const* source, Places places, Block& block);

// That of a format; null where a channel's element is not of 8 or 16 bits.
TableLoadFunction getTableLoadFunction(Tavrin::PixelFormat format);

} // namespace Rendering

#endif
