// The lines of a region, in the memory of its picture.
#ifndef TAVRIN_RENDERER_PICTURE_LINES_H
#define TAVRIN_RENDERER_PICTURE_LINES_H

#include <tavrin/vocabulary.h>

#include <cstddef>
#include <cstdint>

namespace Rendering
{

// From this size on a picture would push everything else out of the caches.
inline constexpr std::size_t kLargePicture = std::size_t{4} << 20; // bytes

template <class Byte>
class PictureLines
{
public:
    // The row step, and the offset of the first pixel, are counted in unsigned 32-bit arithmetic.
    PictureLines(Byte* pixels, Tavrin::PixelFormat format, Tavrin::ROI const& roi, unsigned int padding)
        : m_pixelBytes(Tavrin::getPixelSizeInByte(format)),
          m_stride(roi.imageWidth * m_pixelBytes + padding),
          m_first(pixels + (roi.y * m_stride + roi.x * m_pixelBytes)),
          m_width(roi.width),
          m_height(roi.height),
          m_isOfLargePicture(std::size_t{roi.imageWidth} * roi.imageHeight * m_pixelBytes >= kLargePicture)
    {
    }

    unsigned int width() const { return m_width; }
    unsigned int height() const { return m_height; }
    unsigned int pixelBytes() const { return m_pixelBytes; }
    std::size_t lineBytes() const { return std::size_t{m_width} * m_pixelBytes; }
    Byte* line(unsigned int index) const { return m_first + std::size_t{index} * m_stride; }
    Byte* pixel(unsigned int lineIndex, unsigned int x) const { return line(lineIndex) + std::size_t{x} * m_pixelBytes; }

    bool isOfLargePicture() const { return m_isOfLargePicture; }
    // Whether something else is between one line and the next.
    bool areApart() const { return lineBytes() < m_stride; }

private:
    unsigned int m_pixelBytes;
    unsigned int m_stride;
    Byte* m_first;
    unsigned int m_width;
    unsigned int m_height;
    bool m_isOfLargePicture;
};

using SourceLines = PictureLines<std::uint8_t const>;
using DestinationLines = PictureLines<std::uint8_t>;

} // namespace Rendering

#endif
