// What renderers make of every element that a channel of 8 or 16 bits may have; tables are made of it.
#ifndef TAVRIN_RENDERER_EVERY_ELEMENT_H
#define TAVRIN_RENDERER_EVERY_ELEMENT_H

#include "renderer/block.h"
#include "renderer/kernelsFormats.h"
#include "renderer/runningRenderers.h"
#include "utils/utils.h"

#include <tavrin/vocabulary.h>

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace Rendering
{

inline bool isOfBytes(PixelFormat format)
{
    return Color::Utils::depthOf(format) == Tavrin::BIT_DEPTH_8i;
}

inline unsigned int elementsOf(PixelFormat format)
{
    return isOfBytes(format) ? 256 : 65536;
}

// Pixels of as many elements as a block holds, from one on; in a pixel all channels are the same.
class PixelsOfElements
{
public:
    PixelsOfElements(unsigned int firstElement, PixelFormat format)
    {
        std::uint64_t const oneInEachChannel = isOfBytes(format) ? 0x0101010101010101U : 0x0001000100010001U;
        std::size_t const pixelBytes = Tavrin::getPixelSizeInByte(format);
        for (unsigned int i = 0; i < Block::kPixels; ++i)
        {
            std::uint64_t const pixel = oneInEachChannel * (firstElement + i); // The next one covers what is too much.
            std::memcpy(m_bytes + i * pixelBytes, &pixel, sizeof pixel);
        }
    }

    std::uint8_t const* begin() const { return m_bytes; }

private:
    std::uint8_t m_bytes[sizeof(std::uint64_t) * Block::kPixels];
};

// By the first so many of some renderers, as they are prepared. Take is called with a channel, a plane of its values, and the
// element that the first one belongs to, for each channel of as many elements as a block holds. The last ones are left in the
// block.
template <class Take>
void reckonEveryElement(RunningRenderers const& renderers, std::size_t count, PixelFormat in, Block& block, Take const& take)
{
    FormatFunctions const& source = getFormatFunctions(in);
    LoadFunction const load = renderers.takesCodes() ? source.loadCodes : source.load;
    for (unsigned int first = 0; first < elementsOf(in); first += Block::kPixels)
    {
        PixelsOfElements const pixels(first, in);
        load(pixels.begin(), {0, Block::kPixels}, block);
        renderers.run(0, count, block, Block::kPixels, {0, 0});
        float const* const planes[] = {block.red, block.green, block.blue, block.alpha};
        for (unsigned int channel = 0; channel < 4; ++channel)
            take(channel, planes[channel], first);
    }
}

} // namespace Rendering

#endif
