// Lines of four channels of 16-bit codes through tables that have an entry for every code.
#ifndef TAVRIN_RENDERER_SHORT_LINES_H
#define TAVRIN_RENDERER_SHORT_LINES_H

#include <tavrin/vocabulary.h>

#include <cstddef>
#include <cstdint>

namespace Rendering
{

struct Lut1DParameters;

// Colours become the entries of their codes, alpha stays as it is. The destination goes past the caches; it begins at a multiple of
// eight bytes. Destinations that stay in them have no function: of ordinary stores the compiler makes vectors, which are slower
// than the way through blocks.
using ShortLineFunction = void (*)(Lut1DParameters const& tables, std::uint8_t const* source, std::uint8_t* destination,
                                   std::size_t count);

// Null unless both formats are the same one with four channels of 16i.
ShortLineFunction getShortLineFunction(Tavrin::PixelFormat in, Tavrin::PixelFormat out);

} // namespace Rendering

#endif
