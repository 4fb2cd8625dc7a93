// Picture files written and read for the tests, straight through the formats' libraries or byte by byte, as witnesses of what
// the program writes and reads.
#ifndef TAVRIN_TESTS_PICTURE_FILES_H
#define TAVRIN_TESTS_PICTURE_FILES_H

#include <Imath/half.h>

#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

// Samples in rows from the top, channels in the order R, G, B, A. Sample is std::uint8_t, std::uint16_t, half or float.
template <class Sample>
struct Picture
{
    unsigned int width = 0;
    unsigned int height = 0;
    unsigned int channels = 3;
    std::vector<Sample> samples;

    Picture() = default;
    Picture(unsigned int width_, unsigned int height_, unsigned int channels_)
        : width(width_), height(height_), channels(channels_), samples(std::size_t(width_) * height_ * channels_)
    {
    }
    Sample& at(unsigned int x, unsigned int y, unsigned int channel)
    {
        return samples[(std::size_t(y) * width + x) * channels + channel];
    }
    Sample at(unsigned int x, unsigned int y, unsigned int channel) const
    {
        return samples[(std::size_t(y) * width + x) * channels + channel];
    }
    // By bytes: a zero and a negative zero differ.
    bool operator==(Picture const& other) const
    {
        return width == other.width && height == other.height && channels == other.channels &&
               std::memcmp(samples.data(), other.samples.data(), samples.size() * sizeof(Sample)) == 0;
    }
};

using Picture8 = Picture<std::uint8_t>;
using Picture16 = Picture<std::uint16_t>;
using PictureHalf = Picture<Imath::half>;
using PictureFloat = Picture<float>;

// PNG of 3 or 4 channels.
template <class Sample>
void writePngFile(std::string const& path, Picture<Sample> const& picture);
// Fails the test and gives an empty picture when the file has another depth.
template <class Sample>
Picture<Sample> readPngFile(std::string const& path);

// A PNG of any colour type with the bytes of its rows as they are; a palette of entries R, G, B and the transparency chunk's
// bytes where the type has them.
struct RawPng
{
    unsigned int width;
    unsigned int height;
    int bits;
    int colorType;
    std::vector<std::uint8_t> rows;
    std::vector<std::uint8_t> palette = {};
    std::vector<std::uint8_t> transparency = {};
    bool interlaced = false;
};
void writeRawPngFile(std::string const& path, RawPng const& png);

struct TiffOptions
{
    unsigned int tileSide = 0; // 0: strips
    bool separatePlanes = false;
    bool bigEndian = false;
    int compression = 1; // none
};
// TIFF of 1 channel (grey), 3, or 4 (the last one alpha, not multiplied in).
template <class Sample>
void writeTiffFile(std::string const& path, Picture<Sample> const& picture, TiffOptions const& options = {});
template <class Sample>
Picture<Sample> readTiffFile(std::string const& path);

struct ExrOptions
{
    unsigned int tileSide = 0; // 0: scan lines
    // The data window's corner and the display window's bounds; the default is the picture itself.
    int x = 0;
    int y = 0;
    std::vector<int> display = {};
    // Names of the picture's channels; the default is R, G, B, A.
    std::vector<std::string> channels = {};
};
// OpenEXR of halfs or floats.
template <class Sample>
void writeExrFile(std::string const& path, Picture<Sample> const& picture, ExrOptions const& options = {});
template <class Sample>
Picture<Sample> readExrFile(std::string const& path);
// Left, top, right and bottom of the data window, then of the display window.
std::vector<int> readExrWindows(std::string const& path);

// DPX, byte by byte: codes of 10, 12 or 16 bits, filled form A, 3 channels (10 bits) or 3 or 4, in either byte order.
struct DpxOptions
{
    unsigned int bits = 10;
    bool bigEndian = true;
    unsigned int descriptor = 50; // RGB; 51 is RGBA, 52 ABGR
    unsigned int rowPadding = 0;  // bytes, told in the header
};
void writeDpxFile(std::string const& path, Picture16 const& picture, DpxOptions const& options = {});
// Of 10 bits in words of 4 bytes or of 12 or 16 bits in words of 2, big-endian, as the header tells.
Picture16 readDpxFile(std::string const& path);

#endif
