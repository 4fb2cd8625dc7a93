// Picture files written and read for the tests.
#include "pictureFiles.h"

#include <ImfChannelList.h>
#include <ImfFrameBuffer.h>
#include <ImfHeader.h>
#include <ImfInputFile.h>
#include <ImfOutputFile.h>
#include <ImfTiledOutputFile.h>
#include <gtest/gtest.h>
#include <png.h>
#include <tiffio.h>

#include <algorithm>
#include <bit>
#include <cstdio>
#include <fstream>
#include <memory>
#include <stdexcept>
#include <type_traits>

using Imath::half;

namespace
{

template <class Sample>
constexpr bool kIsFloat = std::is_same_v<Sample, half> || std::is_same_v<Sample, float>;

// What is not as the test wants it ends the test.
void require(bool condition, std::string const& what)
{
    if (!condition)
        throw std::runtime_error(what);
}

using FilePtr = std::unique_ptr<std::FILE, int (*)(std::FILE*)>;

FilePtr openFile(std::string const& path, char const* mode)
{
    FilePtr file(std::fopen(path.c_str(), mode), std::fclose);
    require(file != nullptr, "cannot open " + path);
    return file;
}

void onPngError(png_structp, png_const_charp text)
{
    throw std::runtime_error(text);
}

// PNG has 16-bit samples big-endian.
void swapSamples(std::vector<std::uint8_t>& bytes)
{
    for (std::size_t i = 0; i + 1 < bytes.size(); i += 2)
        std::swap(bytes[i], bytes[i + 1]);
}

} // namespace

void writeRawPngFile(std::string const& path, RawPng const& raw)
{
    const FilePtr file = openFile(path, "wb");
    png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, onPngError, nullptr);
    png_infop info = png_create_info_struct(png);
    png_init_io(png, file.get());
    png_set_IHDR(png, info, raw.width, raw.height, raw.bits, raw.colorType,
                 raw.interlaced ? PNG_INTERLACE_ADAM7 : PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
    if (!raw.palette.empty())
        png_set_PLTE(png, info, reinterpret_cast<png_const_colorp>(raw.palette.data()), static_cast<int>(raw.palette.size() / 3));
    if (!raw.transparency.empty() && raw.colorType == PNG_COLOR_TYPE_PALETTE)
        png_set_tRNS(png, info, raw.transparency.data(), static_cast<int>(raw.transparency.size()), nullptr);
    png_write_info(png, info);
    const std::size_t step = raw.rows.size() / raw.height;
    std::vector<png_bytep> rows(raw.height);
    for (unsigned int y = 0; y < raw.height; ++y)
        rows[y] = const_cast<png_bytep>(raw.rows.data() + y * step);
    png_write_image(png, rows.data());
    png_write_end(png, nullptr);
    png_destroy_write_struct(&png, &info);
}

template <class Sample>
void writePngFile(std::string const& path, Picture<Sample> const& picture)
{
    RawPng raw = {picture.width,
                  picture.height,
                  sizeof(Sample) * 8,
                  picture.channels == 4 ? PNG_COLOR_TYPE_RGB_ALPHA : PNG_COLOR_TYPE_RGB,
                  {}};
    raw.rows.resize(picture.samples.size() * sizeof(Sample));
    std::memcpy(raw.rows.data(), picture.samples.data(), raw.rows.size());
    if (sizeof(Sample) == 2)
        swapSamples(raw.rows);
    writeRawPngFile(path, raw);
}
template void writePngFile(std::string const&, Picture8 const&);
template void writePngFile(std::string const&, Picture16 const&);

template <class Sample>
Picture<Sample> readPngFile(std::string const& path)
{
    const FilePtr file = openFile(path, "rb");
    png_structp png = png_create_read_struct(PNG_LIBPNG_VER_STRING, nullptr, onPngError, nullptr);
    png_infop info = png_create_info_struct(png);
    png_init_io(png, file.get());
    png_read_png(png, info, PNG_TRANSFORM_IDENTITY, nullptr);
    require(png_get_bit_depth(png, info) == sizeof(Sample) * 8, path + " has another depth");
    Picture<Sample> picture(png_get_image_width(png, info), png_get_image_height(png, info), png_get_channels(png, info));
    std::vector<std::uint8_t> bytes;
    for (unsigned int y = 0; y < picture.height; ++y)
    {
        png_bytep row = png_get_rows(png, info)[y];
        bytes.insert(bytes.end(), row, row + png_get_rowbytes(png, info));
    }
    if (sizeof(Sample) == 2)
        swapSamples(bytes);
    std::memcpy(picture.samples.data(), bytes.data(), bytes.size());
    png_destroy_read_struct(&png, &info, nullptr);
    return picture;
}
template Picture8 readPngFile(std::string const&);
template Picture16 readPngFile(std::string const&);

namespace
{

using TiffPtr = std::unique_ptr<TIFF, void (*)(TIFF*)>;

TiffPtr openTiff(std::string const& path, char const* mode)
{
    TiffPtr tiff(TIFFOpen(path.c_str(), mode), TIFFClose);
    require(tiff != nullptr, "cannot open " + path);
    return tiff;
}

// The samples of a part of the picture, of one channel or of all; beyond the edges zeros.
template <class Sample>
std::vector<Sample> cutBlock(Picture<Sample> const& picture, unsigned int x0, unsigned int y0, unsigned int width,
                             unsigned int height, int channel)
{
    std::vector<Sample> block;
    for (unsigned int y = y0; y < y0 + height; ++y)
    {
        for (unsigned int x = x0; x < x0 + width; ++x)
        {
            for (unsigned int c = 0; c < picture.channels; ++c)
            {
                if (channel >= 0 && c != static_cast<unsigned int>(channel))
                    continue;
                block.push_back(x < picture.width && y < picture.height ? picture.at(x, y, c) : Sample(0));
            }
        }
    }
    return block;
}

template <class Sample>
void writeTiffBlocks(TIFF* tiff, Picture<Sample> const& picture, TiffOptions const& options)
{
    const unsigned int width = options.tileSide ? options.tileSide : picture.width;
    const unsigned int height = options.tileSide ? options.tileSide : 2;
    std::uint32_t index = 0;
    for (unsigned int plane = 0; plane < (options.separatePlanes ? picture.channels : 1); ++plane)
    {
        for (unsigned int y = 0; y < picture.height; y += height)
        {
            for (unsigned int x = 0; x < picture.width; x += width)
            {
                const unsigned int rows = options.tileSide ? height : std::min(height, picture.height - y);
                std::vector<Sample> block =
                    cutBlock(picture, x, y, width, rows, options.separatePlanes ? static_cast<int>(plane) : -1);
                const tmsize_t bytes = static_cast<tmsize_t>(block.size() * sizeof(Sample));
                const tmsize_t written = options.tileSide ? TIFFWriteEncodedTile(tiff, index, block.data(), bytes)
                                                          : TIFFWriteEncodedStrip(tiff, index, block.data(), bytes);
                require(written == bytes, "cannot write a block");
                ++index;
            }
        }
    }
}

} // namespace

template <class Sample>
void writeTiffFile(std::string const& path, Picture<Sample> const& picture, TiffOptions const& options)
{
    const TiffPtr tiff = openTiff(path, options.bigEndian ? "wb" : "wl");
    TIFFSetField(tiff.get(), TIFFTAG_IMAGEWIDTH, picture.width);
    TIFFSetField(tiff.get(), TIFFTAG_IMAGELENGTH, picture.height);
    TIFFSetField(tiff.get(), TIFFTAG_BITSPERSAMPLE, static_cast<int>(sizeof(Sample) * 8));
    TIFFSetField(tiff.get(), TIFFTAG_SAMPLEFORMAT, kIsFloat<Sample> ? SAMPLEFORMAT_IEEEFP : SAMPLEFORMAT_UINT);
    TIFFSetField(tiff.get(), TIFFTAG_SAMPLESPERPIXEL, picture.channels);
    TIFFSetField(tiff.get(), TIFFTAG_PHOTOMETRIC, picture.channels < 3 ? PHOTOMETRIC_MINISBLACK : PHOTOMETRIC_RGB);
    TIFFSetField(tiff.get(), TIFFTAG_PLANARCONFIG, options.separatePlanes ? PLANARCONFIG_SEPARATE : PLANARCONFIG_CONTIG);
    TIFFSetField(tiff.get(), TIFFTAG_COMPRESSION, options.compression);
    if (picture.channels == 2 || picture.channels == 4)
    {
        const std::uint16_t kind = EXTRASAMPLE_UNASSALPHA;
        TIFFSetField(tiff.get(), TIFFTAG_EXTRASAMPLES, 1, &kind);
    }
    if (options.tileSide)
    {
        TIFFSetField(tiff.get(), TIFFTAG_TILEWIDTH, options.tileSide);
        TIFFSetField(tiff.get(), TIFFTAG_TILELENGTH, options.tileSide);
    }
    else
    {
        TIFFSetField(tiff.get(), TIFFTAG_ROWSPERSTRIP, 2);
    }
    writeTiffBlocks(tiff.get(), picture, options);
}
template void writeTiffFile(std::string const&, Picture8 const&, TiffOptions const&);
template void writeTiffFile(std::string const&, Picture16 const&, TiffOptions const&);
template void writeTiffFile(std::string const&, PictureHalf const&, TiffOptions const&);
template void writeTiffFile(std::string const&, PictureFloat const&, TiffOptions const&);

template <class Sample>
Picture<Sample> readTiffFile(std::string const& path)
{
    const TiffPtr tiff = openTiff(path, "r");
    std::uint32_t width = 0;
    std::uint32_t height = 0;
    std::uint16_t bits = 0;
    std::uint16_t kind = 0;
    std::uint16_t channels = 0;
    TIFFGetField(tiff.get(), TIFFTAG_IMAGEWIDTH, &width);
    TIFFGetField(tiff.get(), TIFFTAG_IMAGELENGTH, &height);
    TIFFGetFieldDefaulted(tiff.get(), TIFFTAG_BITSPERSAMPLE, &bits);
    TIFFGetFieldDefaulted(tiff.get(), TIFFTAG_SAMPLEFORMAT, &kind);
    TIFFGetFieldDefaulted(tiff.get(), TIFFTAG_SAMPLESPERPIXEL, &channels);
    require(bits == sizeof(Sample) * 8 && kind == (kIsFloat<Sample> ? SAMPLEFORMAT_IEEEFP : SAMPLEFORMAT_UINT),
            path + " has another depth");
    Picture<Sample> picture(width, height, channels);
    for (unsigned int y = 0; y < height; ++y)
        require(TIFFReadScanline(tiff.get(), &picture.samples[std::size_t(y) * width * channels], y) == 1, "cannot read a row");
    return picture;
}
template Picture8 readTiffFile(std::string const&);
template Picture16 readTiffFile(std::string const&);
template PictureHalf readTiffFile(std::string const&);
template PictureFloat readTiffFile(std::string const&);

namespace
{

template <class Sample>
constexpr Imf::PixelType kExrType = std::is_same_v<Sample, half> ? Imf::HALF : Imf::FLOAT;

template <class Sample>
Imf::FrameBuffer exrFrameBuffer(Picture<Sample>& picture, std::vector<std::string> const& channels, Imath::Box2i const& window)
{
    Imf::FrameBuffer buffer;
    for (unsigned int c = 0; c < picture.channels; ++c)
        buffer.insert(channels[c],
                      Imf::Slice::Make(kExrType<Sample>, picture.samples.data() + c, window, picture.channels * sizeof(Sample),
                                       picture.width * picture.channels * sizeof(Sample)));
    return buffer;
}

const std::vector<std::string> kExrChannels = {"R", "G", "B", "A"};

} // namespace

template <class Sample>
void writeExrFile(std::string const& path, Picture<Sample> const& picture, ExrOptions const& options)
{
    const int width = static_cast<int>(picture.width);
    const int height = static_cast<int>(picture.height);
    const Imath::Box2i data({options.x, options.y}, {options.x + width - 1, options.y + height - 1});
    const std::vector<int>& d = options.display;
    const Imath::Box2i display = d.empty() ? data : Imath::Box2i({d[0], d[1]}, {d[2], d[3]});
    const std::vector<std::string>& channels = options.channels.empty() ? kExrChannels : options.channels;

    Imf::Header header(display, data);
    for (unsigned int c = 0; c < picture.channels; ++c)
        header.channels().insert(channels[c], Imf::Channel(kExrType<Sample>));
    Picture<Sample> copy = picture;
    const Imf::FrameBuffer buffer = exrFrameBuffer(copy, channels, data);
    if (options.tileSide)
    {
        header.setTileDescription(Imf::TileDescription(options.tileSide, options.tileSide));
        Imf::TiledOutputFile file(path.c_str(), header);
        file.setFrameBuffer(buffer);
        file.writeTiles(0, file.numXTiles() - 1, 0, file.numYTiles() - 1);
    }
    else
    {
        Imf::OutputFile file(path.c_str(), header);
        file.setFrameBuffer(buffer);
        file.writePixels(height);
    }
}
template void writeExrFile(std::string const&, PictureHalf const&, ExrOptions const&);
template void writeExrFile(std::string const&, PictureFloat const&, ExrOptions const&);

template <class Sample>
Picture<Sample> readExrFile(std::string const& path)
{
    Imf::InputFile file(path.c_str());
    const Imath::Box2i window = file.header().dataWindow();
    const Imf::ChannelList& channels = file.header().channels();
    require(channels.findChannel("R") && channels.findChannel("R")->type == kExrType<Sample>, path + " has another depth");
    Picture<Sample> picture(static_cast<unsigned int>(window.max.x - window.min.x + 1),
                            static_cast<unsigned int>(window.max.y - window.min.y + 1), channels.findChannel("A") ? 4 : 3);
    file.setFrameBuffer(exrFrameBuffer(picture, kExrChannels, window));
    file.readPixels(window.min.y, window.max.y);
    return picture;
}
template PictureHalf readExrFile(std::string const&);
template PictureFloat readExrFile(std::string const&);

std::vector<int> readExrWindows(std::string const& path)
{
    Imf::InputFile file(path.c_str());
    const Imath::Box2i data = file.header().dataWindow();
    const Imath::Box2i display = file.header().displayWindow();
    return {data.min.x, data.min.y, data.max.x, data.max.y, display.min.x, display.min.y, display.max.x, display.max.y};
}

namespace
{

// Numbers of a DPX file in its byte order.
class Bytes
{
public:
    Bytes(std::size_t size, bool bigEndian) : m_bytes(size), m_bigEndian(bigEndian) {}

    void put(std::size_t position, unsigned int count, std::uint32_t number)
    {
        for (unsigned int i = 0; i < count; ++i)
            m_bytes[position + (m_bigEndian ? count - 1 - i : i)] = static_cast<char>(number >> (8 * i));
    }
    std::uint32_t get(std::size_t position, unsigned int count) const
    {
        std::uint32_t number = 0;
        for (unsigned int i = 0; i < count; ++i)
            number |= std::uint32_t(static_cast<unsigned char>(m_bytes.at(position + (m_bigEndian ? count - 1 - i : i))))
                      << (8 * i);
        return number;
    }
    std::vector<char>& data() { return m_bytes; }

private:
    std::vector<char> m_bytes;
    bool m_bigEndian;
};

} // namespace

void writeDpxFile(std::string const& path, Picture16 const& picture, DpxOptions const& options)
{
    const std::size_t words = options.bits == 10 ? 4 : picture.channels * 2;
    const std::size_t step = picture.width * words + options.rowPadding;
    Bytes bytes(2048 + step * picture.height, options.bigEndian);
    bytes.put(0, 4, 0x53445058);
    bytes.put(4, 4, 2048);
    std::memcpy(bytes.data().data() + 8, "V1.0", 4);
    bytes.put(16, 4, static_cast<std::uint32_t>(bytes.data().size()));
    bytes.put(770, 2, 1);
    bytes.put(772, 4, picture.width);
    bytes.put(776, 4, picture.height);
    bytes.put(800, 1, options.descriptor);
    bytes.put(803, 1, options.bits);
    bytes.put(804, 2, options.bits == 16 ? 0 : 1);
    bytes.put(808, 4, 2048);
    bytes.put(812, 4, options.rowPadding);
    for (unsigned int y = 0; y < picture.height; ++y)
    {
        for (unsigned int x = 0; x < picture.width; ++x)
        {
            const std::size_t position = 2048 + y * step + x * words;
            if (options.bits == 10)
                bytes.put(position, 4,
                          std::uint32_t(picture.at(x, y, 0)) << 22 | std::uint32_t(picture.at(x, y, 1)) << 12 |
                              std::uint32_t(picture.at(x, y, 2)) << 2);
            for (unsigned int c = 0; options.bits != 10 && c < picture.channels; ++c)
            {
                const unsigned int place = options.descriptor == 52 ? picture.channels - 1 - c : c;
                bytes.put(position + 2 * place, 2, picture.at(x, y, c) << (16 - options.bits));
            }
        }
    }
    std::ofstream(path, std::ios::binary).write(bytes.data().data(), static_cast<std::streamsize>(bytes.data().size()));
}

Picture16 readDpxFile(std::string const& path)
{
    std::ifstream file(path, std::ios::binary);
    Bytes bytes(0, true);
    bytes.data().assign(std::istreambuf_iterator<char>(file), {});
    require(bytes.get(0, 4) == 0x53445058, path + " is not a big-endian DPX file");
    require(bytes.get(16, 4) == bytes.data().size(), path + " tells another file size");
    const unsigned int bits = bytes.get(803, 1);
    Picture16 picture(bytes.get(772, 4), bytes.get(776, 4), bytes.get(800, 1) == 50 ? 3 : 4);
    const std::size_t words = bits == 10 ? 4 : picture.channels * 2;
    const std::size_t step = picture.width * words + bytes.get(812, 4);
    require(step % 4 == 0, "rows do not begin on words");
    for (unsigned int y = 0; y < picture.height; ++y)
    {
        for (unsigned int x = 0; x < picture.width; ++x)
        {
            const std::size_t position = bytes.get(808, 4) + y * step + x * words;
            for (unsigned int c = 0; c < picture.channels; ++c)
            {
                const std::uint32_t code =
                    bits == 10 ? bytes.get(position, 4) >> (22 - 10 * c) & 1023 : bytes.get(position + 2 * c, 2) >> (16 - bits);
                picture.at(x, y, c) = static_cast<std::uint16_t>(code);
            }
        }
    }
    return picture;
}
