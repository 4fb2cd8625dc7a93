// Queries about bit depths, pixel formats and base paths, answered from one row for each value.
#include "utils/utils.h"

#include <tavrin/vocabulary.h>

#include <algorithm>
#include <cstring>
#include <iterator>

namespace Tavrin
{

namespace
{

struct BitDepthRow
{
    BitDepth depth;
    char const* name;
    float maximum;
    unsigned int bits;
    bool isFloat;
};

constexpr BitDepthRow kBitDepths[] = {
#define TAVRIN_BIT_DEPTH(name, maximum, bits, isFloat) {BIT_DEPTH_##name, #name, maximum, bits, isFloat},
#include "utils/bitDepths.def"
#undef TAVRIN_BIT_DEPTH
};
constexpr BitDepthRow kUnknownDepth = {BIT_DEPTH_UNKNOWN, "Unknown", 0.0F, 0, false};

struct PixelFormatRow
{
    PixelFormat format;
    char const* name;
    unsigned int channels;
    unsigned int bytes;
};

constexpr unsigned int kAlphaLayouts[] = {0x1f, 0x2f, 0x4f}; // RGBA, BGRA, ABGR
constexpr unsigned int kPackedBytes = 4;

constexpr unsigned int channelsOf(unsigned int layoutCode)
{
    return std::find(std::begin(kAlphaLayouts), std::end(kAlphaLayouts), layoutCode) != std::end(kAlphaLayouts) ? 4 : 3;
}

constexpr unsigned int bytesOfChannel(unsigned int depthCode)
{
    return depthCode == BIT_DEPTH_8i ? 1 : depthCode == BIT_DEPTH_32f ? 4 : 2;
}

constexpr PixelFormatRow kPixelFormats[] = {
#define TAVRIN_PIXEL_FORMAT(layout, layoutCode, depth, depthCode, packed)                                        \
    {PF_##layout##_##depth, Color::Utils::PixelFormatInfo<PF_##layout##_##depth>::kName, channelsOf(layoutCode), \
     (packed) ? kPackedBytes : channelsOf(layoutCode) * bytesOfChannel(depthCode)},
#include <tavrin/pixelFormats.def>
#undef TAVRIN_PIXEL_FORMAT
};
constexpr PixelFormatRow kUnknownFormat = {PF_UNKNOWN, "Unknown", 0, 0};

struct BasePathRow
{
    BasePath basePath;
    char const* name;
};

constexpr BasePathRow kBasePaths[] = {{BASE_PATH_VENDOR, "Norvane"}, {BASE_PATH_SHARED, "Shared"}};
constexpr BasePathRow kNoBasePath = {BASE_PATH_NONE, ""};

template <class Row, std::size_t kCount, class Condition>
Row const& findRow(Row const (&rows)[kCount], Row const& otherwise, Condition const& condition)
{
    auto const row = std::find_if(std::begin(rows), std::end(rows), condition);
    return row == std::end(rows) ? otherwise : *row;
}

template <class Row>
auto hasName(char const* name)
{
    return [name](Row const& row) { return std::strcmp(row.name, name) == 0; };
}

BitDepthRow const& rowOf(BitDepth depth)
{
    return findRow(kBitDepths, kUnknownDepth, [depth](BitDepthRow const& row) { return row.depth == depth; });
}

PixelFormatRow const& rowOf(PixelFormat format)
{
    return findRow(kPixelFormats, kUnknownFormat, [format](PixelFormatRow const& row) { return row.format == format; });
}

} // namespace

BitDepth getBitDepth(char const* name)
{
    return findRow(kBitDepths, kUnknownDepth, hasName<BitDepthRow>(name)).depth;
}

char const* getBitDepthName(BitDepth depth)
{
    return rowOf(depth).name;
}

float getBitDepthMaxValue(BitDepth depth)
{
    return rowOf(depth).maximum;
}

float getBitDepthMinValue(BitDepth)
{
    return 0.0F;
}

float getBitDepthValueRange(BitDepth depth)
{
    return getBitDepthMaxValue(depth) - getBitDepthMinValue(depth);
}

unsigned int getBitDepthPrecision(BitDepth depth)
{
    return rowOf(depth).bits;
}

bool isFloatDepth(BitDepth depth)
{
    return rowOf(depth).isFloat;
}

bool isIntegerDepth(BitDepth depth)
{
    return depth != BIT_DEPTH_UNKNOWN && !isFloatDepth(depth);
}

PixelFormat strToPF(char const* name)
{
    return findRow(kPixelFormats, kUnknownFormat, hasName<PixelFormatRow>(name)).format;
}

char const* pfToStr(PixelFormat format)
{
    return rowOf(format).name;
}

unsigned int getPixelSizeInByte(PixelFormat format)
{
    return rowOf(format).bytes;
}

unsigned int getNumChannels(PixelFormat format)
{
    return rowOf(format).channels;
}

unsigned int getImageSizeInByte(ROI const& roi, PixelFormat format)
{
    return roi.width * roi.height * getPixelSizeInByte(format);
}

BasePath getBasePath(char const* name)
{
    auto const isNamed = [name](BasePathRow const& row) { return name && Foundation::Utils::strcasecmp(row.name, name) == 0; };
    return findRow(kBasePaths, kNoBasePath, isNamed).basePath;
}

char const* getBasePathName(BasePath basePath)
{
    return findRow(kBasePaths, kNoBasePath, [basePath](BasePathRow const& row) { return row.basePath == basePath; }).name;
}

} // namespace Tavrin
