// The channels of pixel formats, in the order that they have in memory.
#ifndef TAVRIN_RENDERER_PIXEL_LAYOUT_H
#define TAVRIN_RENDERER_PIXEL_LAYOUT_H

#include <tavrin/vocabulary.h>

namespace Rendering
{

// The order of channels in memory, by the codes that formats have for it.
enum class Layout : unsigned int
{
    RGB = 0x17,
    RGBA = 0x1f,
    BGR = 0x27,
    BGRA = 0x2f,
    ABGR = 0x4f
};

// Where red, green, blue and alpha stand among the channels; -1 for none.
struct ChannelOrder
{
    int red;
    int green;
    int blue;
    int alpha;
};

constexpr ChannelOrder orderOf(Layout layout)
{
    switch (layout)
    {
    case Layout::RGB:
        return {0, 1, 2, -1};
    case Layout::RGBA:
        return {0, 1, 2, 3};
    case Layout::BGR:
        return {2, 1, 0, -1};
    case Layout::BGRA:
        return {2, 1, 0, 3};
    case Layout::ABGR:
        return {3, 2, 1, 0};
    }
    return {};
}

constexpr bool hasAlpha(Layout layout)
{
    return orderOf(layout).alpha >= 0;
}
constexpr unsigned int channelsOf(Layout layout)
{
    return hasAlpha(layout) ? 4 : 3;
}

// The layout of a valid format.
constexpr Layout layoutOf(Tavrin::PixelFormat format)
{
    return static_cast<Layout>(static_cast<unsigned int>(format) & 0xffU);
}

// Whether a pixel is one word, and not an element for each channel.
constexpr bool isPacked(Tavrin::PixelFormat format)
{
    return (static_cast<unsigned int>(format) & 0x100U) != 0;
}

#define TAVRIN_PIXEL_FORMAT(layout, layoutCode, depth, depthCode, packed)     \
    static_assert(layoutOf(Tavrin::PF_##layout##_##depth) == Layout::layout); \
    static_assert(isPacked(Tavrin::PF_##layout##_##depth) == ((packed) != 0));
#include <tavrin/pixelFormats.def>
#undef TAVRIN_PIXEL_FORMAT

} // namespace Rendering

#endif
