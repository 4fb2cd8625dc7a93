// Lines of the processor's caches, and where pixels stand in them.
#ifndef TAVRIN_RENDERER_CACHE_LINE_H
#define TAVRIN_RENDERER_CACHE_LINE_H

#include <cstddef>
#include <cstdint>

namespace Rendering
{

// Bytes.
inline constexpr std::size_t kCacheLine = 64;

// The bytes up to the first line of the cache that a pixel begins on. If they are not those of whole pixels, there is none.
inline std::size_t bytesToCacheLine(std::uint8_t const* pixels, std::size_t pixelBytes)
{
    std::size_t bytes = (kCacheLine - reinterpret_cast<std::uintptr_t>(pixels) % kCacheLine) % kCacheLine;
    while (bytes % pixelBytes != 0 && bytes < 2 * kCacheLine) // those of three channels begin on every third one
        bytes += kCacheLine;
    return bytes;
}

} // namespace Rendering

#endif
