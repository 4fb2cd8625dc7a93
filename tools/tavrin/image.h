// A picture in memory, in one of the library's pixel formats.
#ifndef TAVRIN_PROGRAM_IMAGE_H
#define TAVRIN_PROGRAM_IMAGE_H

#include <tavrin/vocabulary.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace Program
{

// Where a picture lies in a larger frame, in pixels of that frame, bounds included. Only OpenEXR knows this.
struct Frame
{
    int x = 0; // of the picture's left upper pixel
    int y = 0;
    int displayLeft = 0;
    int displayTop = 0;
    int displayRight = 0;
    int displayBottom = 0;
    float pixelAspectRatio = 1.0f;
};

// Rows follow each other from the top without a gap; pixels are as the format says.
struct Image
{
    Tavrin::PixelFormat format = Tavrin::PF_UNKNOWN;
    unsigned int width = 0;
    unsigned int height = 0;
    std::unique_ptr<std::byte[]> pixels;
    std::optional<Frame> frame;
    // Colours are already multiplied by alpha. It is a note for the output file; nothing here multiplies or divides.
    bool premultiplied = false;

    std::size_t rowBytes() const { return std::size_t(width) * Tavrin::getPixelSizeInByte(format); }
    std::byte* row(unsigned int y) { return pixels.get() + y * rowBytes(); }
    std::byte const* row(unsigned int y) const { return pixels.get() + y * rowBytes(); }
};

// The largest picture that is read or written. Sizes come from strangers' files, so they are held against these limits before
// memory is asked for; a row of the largest pixel then has at most 2 MiB.
constexpr unsigned int kMaxSide = 131072;
constexpr std::uint64_t kMaxPixels = std::uint64_t(1) << 30;

// Throws Failure, naming the file, when a picture would be empty or beyond the limits.
void checkSize(std::string const& path, std::uint64_t width, std::uint64_t height);

// A picture of that size with undefined pixels; checks the size.
Image makeImage(std::string const& path, Tavrin::PixelFormat format, std::uint64_t width, std::uint64_t height);

Tavrin::BitDepth depthOf(Tavrin::PixelFormat format);
bool hasAlpha(Tavrin::PixelFormat format);
// Words for people, such as "RGBA 16f".
std::string formatName(Tavrin::PixelFormat format);

// Told how many rows are done, as reading or writing goes on.
using RowReport = std::function<void(unsigned int rows)>;

} // namespace Program

#endif
