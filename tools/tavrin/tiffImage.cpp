// TIFF files through libtiff.
#include "failure.h"
#include "imageFormats.h"

#include <tiffio.h>

#include <algorithm>
#include <cstdarg>
#include <cstring>
#include <vector>

namespace Program
{

namespace
{

using namespace Tavrin;

// The largest piece of a file that is decoded at once, and the most that the library may ask memory for: a row of tiles of the
// widest picture stays well below it.
constexpr tmsize_t kMaxPiece = tmsize_t(1) << 30;

// Classic TIFF counts bytes with 32 bits; larger files are BigTIFF.
constexpr std::uint64_t kClassicLimit = 0xf0000000;

// A file as the library sees it: one of the two, a position, and the last error's words.
struct Stream
{
    InputFile const* input = nullptr;
    OutputFile* output = nullptr;
    std::uint64_t position = 0;
    std::string error;

    std::uint64_t size() const { return input ? input->size() : output->size(); }
};

Stream& streamOf(thandle_t handle)
{
    return *static_cast<Stream*>(handle);
}

tmsize_t onRead(thandle_t handle, void* buffer, tmsize_t count)
{
    Stream& stream = streamOf(handle);
    const std::size_t wanted = static_cast<std::size_t>(count);
    const std::size_t done = stream.input ? stream.input->readSome(stream.position, buffer, wanted)
                                          : stream.output->readSome(stream.position, buffer, wanted);
    stream.position += done;
    return static_cast<tmsize_t>(done);
}

tmsize_t onWrite(thandle_t handle, void* buffer, tmsize_t count)
{
    Stream& stream = streamOf(handle);
    if (!stream.output || !stream.output->write(stream.position, buffer, static_cast<std::size_t>(count)))
        return 0;
    stream.position += static_cast<std::uint64_t>(count);
    return count;
}

toff_t onSeek(thandle_t handle, toff_t offset, int whence)
{
    Stream& stream = streamOf(handle);
    if (whence == SEEK_CUR)
        offset += stream.position;
    else if (whence == SEEK_END)
        offset += stream.size();
    stream.position = offset;
    return offset;
}

int onClose(thandle_t)
{
    return 0;
}

toff_t onSize(thandle_t handle)
{
    return streamOf(handle).size();
}

int onMap(thandle_t, void**, toff_t*)
{
    return 0;
}

void onUnmap(thandle_t, void*, toff_t) {}

int onError(TIFF*, void* user, char const*, char const* format, va_list arguments)
{
    char text[512];
    std::vsnprintf(text, sizeof(text), format, arguments);
    static_cast<Stream*>(user)->error = text;
    return 1;
}

int onWarning(TIFF*, void*, char const*, char const*, va_list)
{
    return 1;
}

struct Closer
{
    void operator()(TIFF* tiff) const { TIFFClose(tiff); }
};
using TiffPtr = std::unique_ptr<TIFF, Closer>;

TiffPtr open(Stream& stream, std::string const& name, char const* mode)
{
    TIFFOpenOptions* options = TIFFOpenOptionsAlloc();
    TIFFOpenOptionsSetMaxSingleMemAlloc(options, kMaxPiece);
    TIFFOpenOptionsSetErrorHandlerExtR(options, onError, &stream);
    TIFFOpenOptionsSetWarningHandlerExtR(options, onWarning, &stream);
    TiffPtr tiff(TIFFClientOpenExt(name.c_str(), mode, &stream, onRead, onWrite, onSeek, onClose, onSize, onMap, onUnmap, options));
    TIFFOpenOptionsFree(options);
    return tiff;
}

// What the directory tells of the picture.
struct Facts
{
    std::uint32_t width = 0;
    std::uint32_t height = 0;
    std::uint16_t bits = 1;
    std::uint16_t kind = SAMPLEFORMAT_UINT;
    std::uint16_t photometric = 0;
    std::uint16_t planes = PLANARCONFIG_CONTIG;
    std::uint16_t orientation = ORIENTATION_TOPLEFT;
    std::uint16_t samples = 1; // a pixel, the extra ones included
    unsigned int colors = 3;   // 1 for grey
    bool alpha = false;        // the first sample after the colours
    bool premultiplied = false;

    std::size_t sampleBytes() const { return bits / 8; }
};

Facts readFacts(TIFF* tiff)
{
    Facts facts;
    TIFFGetField(tiff, TIFFTAG_IMAGEWIDTH, &facts.width);
    TIFFGetField(tiff, TIFFTAG_IMAGELENGTH, &facts.height);
    TIFFGetFieldDefaulted(tiff, TIFFTAG_BITSPERSAMPLE, &facts.bits);
    TIFFGetFieldDefaulted(tiff, TIFFTAG_SAMPLEFORMAT, &facts.kind);
    TIFFGetFieldDefaulted(tiff, TIFFTAG_SAMPLESPERPIXEL, &facts.samples);
    TIFFGetFieldDefaulted(tiff, TIFFTAG_PLANARCONFIG, &facts.planes);
    TIFFGetFieldDefaulted(tiff, TIFFTAG_ORIENTATION, &facts.orientation);
    if (!TIFFGetField(tiff, TIFFTAG_PHOTOMETRIC, &facts.photometric))
        facts.photometric = facts.samples >= 3 ? PHOTOMETRIC_RGB : PHOTOMETRIC_MINISBLACK;
    facts.colors = facts.photometric == PHOTOMETRIC_MINISBLACK ? 1 : 3;

    std::uint16_t extraCount = 0;
    std::uint16_t* extras = nullptr;
    TIFFGetFieldDefaulted(tiff, TIFFTAG_EXTRASAMPLES, &extraCount, &extras);
    if (extraCount > 0 && extras != nullptr && facts.samples > facts.colors)
    {
        facts.alpha = extras[0] == EXTRASAMPLE_ASSOCALPHA || extras[0] == EXTRASAMPLE_UNASSALPHA;
        facts.premultiplied = extras[0] == EXTRASAMPLE_ASSOCALPHA;
    }
    return facts;
}

PixelFormat formatOf(std::string const& path, Facts const& facts)
{
    const bool isFloat = facts.kind == SAMPLEFORMAT_IEEEFP;
    if (facts.kind == SAMPLEFORMAT_UINT && facts.bits == 8)
        return facts.alpha ? PF_RGBA_8i : PF_RGB_8i;
    if (facts.kind == SAMPLEFORMAT_UINT && facts.bits == 16)
        return facts.alpha ? PF_RGBA_16i : PF_RGB_16i;
    if (isFloat && facts.bits == 16)
        return facts.alpha ? PF_RGBA_16f : PF_RGB_16f;
    if (isFloat && facts.bits == 32)
        return facts.alpha ? PF_RGBA_32f : PF_RGB_32f;
    fail("'{}' holds TIFF samples of {} {} bits: unsigned ones of 8 or 16 bits and floats of 16 or 32 bits are read", path,
         facts.bits, isFloat ? "float" : "integer");
}

void refuseUnusual(std::string const& path, Facts const& facts)
{
    if (facts.photometric != PHOTOMETRIC_RGB && facts.photometric != PHOTOMETRIC_MINISBLACK)
        fail("'{}' holds TIFF pixels of photometric interpretation {}: grey (1) and RGB (2) are read", path, facts.photometric);
    if (facts.samples < facts.colors)
        fail("'{}' is damaged: {} samples a pixel are too few for its TIFF pixels", path, facts.samples);
    if (facts.orientation != ORIENTATION_TOPLEFT)
        fail("'{}' holds a TIFF picture that is turned or mirrored (orientation {}), which is not read", path, facts.orientation);
}

// How a file's samples go into pixels.
class Placer
{
public:
    Placer(Facts const& facts, Image& image) : m_facts(facts), m_image(image) {}

    // One strip or tile with its left upper pixel at (x, y). Parts beyond the picture's edges are padding.
    // Plane counts for separate planes only.
    void place(std::byte const* block, unsigned int x, unsigned int y, unsigned int width, unsigned int height, unsigned int plane)
    {
        const std::size_t bytes = m_facts.sampleBytes();
        const bool separate = m_facts.planes == PLANARCONFIG_SEPARATE;
        const std::size_t step = separate ? bytes : bytes * m_facts.samples;
        const unsigned int columns = std::min(width, m_image.width - x);
        const unsigned int rows = std::min(height, m_image.height - y);
        for (unsigned int row = 0; row < rows; ++row)
        {
            std::byte const* source = block + row * (width * step);
            std::byte* target = m_image.row(y + row) + std::size_t(x) * getPixelSizeInByte(m_image.format);
            if (separate)
                _placePlane(source, target, columns, plane);
            else
                _placePixels(source, step, target, columns);
        }
    }

private:
    // Of grey, one sample serves three channels.
    unsigned int _sampleOf(unsigned int channel) const
    {
        if (channel == 3)
            return m_facts.colors;
        return m_facts.colors == 1 ? 0 : channel;
    }

    void _placePixels(std::byte const* source, std::size_t step, std::byte* target, unsigned int columns) const
    {
        const std::size_t pixelBytes = getPixelSizeInByte(m_image.format);
        if (step == pixelBytes && m_facts.colors == 3)
        {
            std::memcpy(target, source, columns * step);
            return;
        }
        const std::size_t bytes = m_facts.sampleBytes();
        const unsigned int channels = getNumChannels(m_image.format);
        for (unsigned int x = 0; x < columns; ++x)
        {
            for (unsigned int c = 0; c < channels; ++c)
                std::memcpy(target + x * pixelBytes + c * bytes, source + x * step + _sampleOf(c) * bytes, bytes);
        }
    }

    void _placePlane(std::byte const* source, std::byte* target, unsigned int columns, unsigned int plane) const
    {
        const std::size_t bytes = m_facts.sampleBytes();
        const std::size_t pixelBytes = getPixelSizeInByte(m_image.format);
        for (unsigned int c = 0; c < getNumChannels(m_image.format); ++c)
        {
            if (_sampleOf(c) != plane)
                continue;
            for (unsigned int x = 0; x < columns; ++x)
                std::memcpy(target + x * pixelBytes + c * bytes, source + x * bytes, bytes);
        }
    }

    Facts const& m_facts;
    Image& m_image;
};

// A picture is a grid of equal blocks: tiles, or strips as wide as the picture.
struct Grid
{
    std::uint32_t blockWidth;
    std::uint32_t blockHeight;
    bool tiled;
    std::size_t blockBytes;
};

Grid readGrid(TIFF* tiff, std::string const& path, Facts const& facts)
{
    Grid grid = {facts.width, facts.height, TIFFIsTiled(tiff) != 0, 0};
    if (grid.tiled)
    {
        TIFFGetField(tiff, TIFFTAG_TILEWIDTH, &grid.blockWidth);
        TIFFGetField(tiff, TIFFTAG_TILELENGTH, &grid.blockHeight);
    }
    else
    {
        TIFFGetFieldDefaulted(tiff, TIFFTAG_ROWSPERSTRIP, &grid.blockHeight);
        grid.blockHeight = std::min(grid.blockHeight, facts.height);
    }
    const std::uint64_t samples = facts.planes == PLANARCONFIG_SEPARATE ? 1 : facts.samples;
    const tmsize_t told = grid.tiled ? TIFFTileSize(tiff) : TIFFStripSize(tiff);
    // The library's own idea of the size must be the one by which pixels are placed; subsampled or odd layouts differ.
    if (grid.blockWidth == 0 || grid.blockHeight == 0 || told <= 0 || told > kMaxPiece ||
        told / grid.blockHeight / static_cast<tmsize_t>(facts.sampleBytes() * samples) != tmsize_t(grid.blockWidth))
        fail("'{}' has TIFF strips or tiles of a size that is not read ({} x {})", path, grid.blockWidth, grid.blockHeight);
    grid.blockBytes = static_cast<std::size_t>(told);
    return grid;
}

void readBlocks(TIFF* tiff, Stream const& stream, std::string const& path, Facts const& facts, Image& image,
                RowReport const& report)
{
    const Grid grid = readGrid(tiff, path, facts);
    const std::unique_ptr<std::byte[]> block(new std::byte[grid.blockBytes]);
    Placer placer(facts, image);
    const unsigned int planes = facts.planes == PLANARCONFIG_SEPARATE ? facts.samples : 1;
    for (std::uint32_t y = 0; y < facts.height; y += grid.blockHeight)
    {
        const std::uint32_t rows = std::min(grid.blockHeight, facts.height - y);
        const std::size_t wanted = grid.tiled ? grid.blockBytes : grid.blockBytes / grid.blockHeight * rows;
        for (std::uint32_t x = 0; x < facts.width; x += grid.blockWidth)
        {
            for (unsigned int plane = 0; plane < planes; ++plane)
            {
                const std::uint16_t p = static_cast<std::uint16_t>(plane);
                const tmsize_t size = static_cast<tmsize_t>(wanted);
                const tmsize_t done = grid.tiled ? TIFFReadEncodedTile(tiff, TIFFComputeTile(tiff, x, y, 0, p), block.get(), size)
                                                 : TIFFReadEncodedStrip(tiff, TIFFComputeStrip(tiff, y, p), block.get(), size);
                if (done != size)
                    fail("'{}' is damaged or cut off: {}", path, stream.error.empty() ? "pixels are missing" : stream.error);
                placer.place(block.get(), x, y, grid.blockWidth, rows, plane);
            }
        }
        report(y + rows);
    }
}

void writeDirectory(TIFF* tiff, Image const& image)
{
    const bool alpha = hasAlpha(image.format);
    const BitDepth depth = depthOf(image.format);
    TIFFSetField(tiff, TIFFTAG_IMAGEWIDTH, image.width);
    TIFFSetField(tiff, TIFFTAG_IMAGELENGTH, image.height);
    TIFFSetField(tiff, TIFFTAG_BITSPERSAMPLE, static_cast<int>(getBitDepthPrecision(depth)));
    TIFFSetField(tiff, TIFFTAG_SAMPLEFORMAT, isFloatDepth(depth) ? SAMPLEFORMAT_IEEEFP : SAMPLEFORMAT_UINT);
    TIFFSetField(tiff, TIFFTAG_SAMPLESPERPIXEL, alpha ? 4 : 3);
    TIFFSetField(tiff, TIFFTAG_PHOTOMETRIC, PHOTOMETRIC_RGB);
    TIFFSetField(tiff, TIFFTAG_PLANARCONFIG, PLANARCONFIG_CONTIG);
    TIFFSetField(tiff, TIFFTAG_ORIENTATION, ORIENTATION_TOPLEFT);
    TIFFSetField(tiff, TIFFTAG_COMPRESSION, COMPRESSION_NONE);
    TIFFSetField(tiff, TIFFTAG_SOFTWARE, "tavrin");
    if (alpha)
    {
        const std::uint16_t kind = image.premultiplied ? EXTRASAMPLE_ASSOCALPHA : EXTRASAMPLE_UNASSALPHA;
        TIFFSetField(tiff, TIFFTAG_EXTRASAMPLES, 1, &kind);
    }
}

} // namespace

Image readTiff(InputFile const& file, RowReport const& report)
{
    Stream stream;
    stream.input = &file;
    const TiffPtr tiff = open(stream, file.path(), "r");
    if (!tiff)
        fail("'{}' is damaged or cut off: {}", file.path(), stream.error);
    const Facts facts = readFacts(tiff.get());
    refuseUnusual(file.path(), facts);
    Image image = makeImage(file.path(), formatOf(file.path(), facts), facts.width, facts.height);
    image.premultiplied = facts.premultiplied;
    readBlocks(tiff.get(), stream, file.path(), facts, image, report);
    return image;
}

void writeTiff(Image const& image, OutputFile& file, RowReport const& report)
{
    constexpr std::size_t kStripBytes = 1 << 18;
    const std::uint64_t bytes = std::uint64_t(image.rowBytes()) * image.height;
    Stream stream;
    stream.output = &file;
    const TiffPtr tiff = open(stream, file.path(), bytes < kClassicLimit ? "w" : "w8");
    if (!tiff)
        throw Failure(stream.error);
    writeDirectory(tiff.get(), image);
    const unsigned int rowsPerStrip =
        static_cast<unsigned int>(std::clamp<std::size_t>(kStripBytes / image.rowBytes(), 1, image.height));
    TIFFSetField(tiff.get(), TIFFTAG_ROWSPERSTRIP, rowsPerStrip);
    std::vector<std::byte> strip(rowsPerStrip * image.rowBytes());
    for (unsigned int y = 0; y < image.height; y += rowsPerStrip)
    {
        const unsigned int rows = std::min(rowsPerStrip, image.height - y);
        const std::size_t count = rows * image.rowBytes();
        // The library may swap or filter the bytes where they are, so it gets a copy.
        std::memcpy(strip.data(), image.row(y), count);
        if (TIFFWriteEncodedStrip(tiff.get(), y / rowsPerStrip, strip.data(), static_cast<tmsize_t>(count)) < 0)
            throw Failure(stream.error);
        report(y + rows);
    }
    if (!TIFFWriteDirectory(tiff.get()))
        throw Failure(stream.error);
}

} // namespace Program
