// A picture in memory.
#include "image.h"

#include "failure.h"

#include <algorithm>
#include <cstring>

namespace Program
{

void checkSize(std::string const& path, std::uint64_t width, std::uint64_t height)
{
    if (width == 0 || height == 0)
        fail("'{}' holds an empty picture ({} x {})", path, width, height);
    if (width > kMaxSide || height > kMaxSide || width * height > kMaxPixels)
        fail("'{}' holds a picture of {} x {}: more than {} pixels on a side or {} in all are not handled", path, width, height,
             kMaxSide, kMaxPixels);
}

Image makeImage(std::string const& path, Tavrin::PixelFormat format, std::uint64_t width, std::uint64_t height)
{
    checkSize(path, width, height);
    Image image;
    image.format = format;
    image.width = static_cast<unsigned int>(width);
    image.height = static_cast<unsigned int>(height);
    // Not zeroed: pages of a size that a file only claims are never touched.
    image.pixels.reset(new std::byte[image.rowBytes() * height]);
    return image;
}

Tavrin::BitDepth depthOf(Tavrin::PixelFormat format)
{
    return static_cast<Tavrin::BitDepth>(format & 0xff000);
}

bool hasAlpha(Tavrin::PixelFormat format)
{
    return Tavrin::getNumChannels(format) == 4;
}

std::string formatName(Tavrin::PixelFormat format)
{
    std::string name = Tavrin::pfToStr(format);
    if (name.rfind("PF_", 0) == 0)
        name.erase(0, 3);
    std::replace(name.begin(), name.end(), '_', ' ');
    return name;
}

} // namespace Program
