// Whole lines of 8-bit pixels through tables that stand in registers, on targets that can look up in 256 bytes.
#ifndef TAVRIN_RENDERER_KERNELS_BYTES_H
#define TAVRIN_RENDERER_KERNELS_BYTES_H

#include <tavrin/vocabulary.h>

#include <cstddef>
#include <cstdint>

namespace Rendering
{

// How a register of bytes comes from pixels of one 8-bit layout and goes to those of another; in between pixels are RGBA.
struct ByteLayouts
{
    // 16 pixels of three or four bytes.
    static constexpr unsigned int kPixels = 16;

    // The layouts of two formats of 8 bits.
    ByteLayouts(Tavrin::PixelFormat in, Tavrin::PixelFormat out);

    unsigned int inPixelBytes;
    unsigned int outPixelBytes;
    // For each byte of the register, which byte of memory it is; then for each byte of memory, which byte of the register.
    alignas(64) std::uint8_t fromMemory[64];
    alignas(64) std::uint8_t toMemory[64];
    // What the source does not have: an alpha of 255.
    alignas(64) std::uint8_t added[64];
};

// Red, green and blue become their entries, alpha stays as it is. A destination that streams goes past the caches.
using ByteLineFunction = void (*)(ByteLayouts const& layouts, void const* const (&table)[3], std::uint8_t const* source,
                                  std::uint8_t* destination, std::size_t count, bool streams);

// The function of the current target; null if it has none.
ByteLineFunction getByteLineFunction();

} // namespace Rendering

#endif
