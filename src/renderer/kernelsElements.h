// Whole lines of pixels whose channels stay where they are: arrays of elements, each of which becomes another one.
#ifndef TAVRIN_RENDERER_KERNELS_ELEMENTS_H
#define TAVRIN_RENDERER_KERNELS_ELEMENTS_H

#include "renderer/elementArithmetic.h"

#include <tavrin/vocabulary.h>

#include <cstddef>
#include <cstdint>

namespace Rendering
{

// So many elements of one line; they may lie in place of those that they come from where both depths have the same size. What is
// read later is fetched meanwhile; its address need not be valid. A destination that streams goes past the caches.
struct ElementLine
{
    std::uint8_t const* source;
    std::uint8_t* destination;
    std::size_t count;
    std::uint8_t const* nextSource;
    bool streams;
};

// Loads, reckons and stores as the way through blocks does, to the last bit.
using ElementLineFunction = void (*)(ElementArithmetic const& arithmetic, ElementLine const& line);

// The function of the current target between two formats; null if their channels differ in memory, or if it has none.
ElementLineFunction getElementLineFunction(Tavrin::PixelFormat in, Tavrin::PixelFormat out);

} // namespace Rendering

#endif
