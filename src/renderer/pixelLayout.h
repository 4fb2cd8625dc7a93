// The channels of pixel formats, in the order that they have in memory.
#ifndef TAVRIN_RENDERER_PIXEL_LAYOUT_H
#define TAVRIN_RENDERER_PIXEL_LAYOUT_H

#include <tavrin/vocabulary.h>

namespace Rendering
{

// The order of channels in memory.
enum class Layout
{
    RGB,
    RGBA,
    BGR,
    BGRA,
    ABGR
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
    switch (format)
    {
#define TAVRIN_PIXEL_FORMAT(layout, layoutCode, depth, depthCode, packed) \
    case Tavrin::PF_##layout##_##depth:                                   \
        return Layout::layout;
#include <tavrin/pixelFormats.def>
#undef TAVRIN_PIXEL_FORMAT
    case Tavrin::PF_UNKNOWN:
        break;
    }
    return {};
}

// Whether a pixel is one word, and not an element for each channel.
constexpr bool isPacked(Tavrin::PixelFormat format)
{
    switch (format)
    {
#define TAVRIN_PIXEL_FORMAT(layout, layoutCode, depth, depthCode, packed) \
    case Tavrin::PF_##layout##_##depth:                                   \
        return packed != 0;
#include <tavrin/pixelFormats.def>
#undef TAVRIN_PIXEL_FORMAT
    case Tavrin::PF_UNKNOWN:
        break;
    }
    return false;
}

} // namespace Rendering

#endif
