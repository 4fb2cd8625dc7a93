// The table of image file types.
#include "imageTypes.h"

#include "failure.h"
#include "imageFormats.h"
#include "text.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <filesystem>

namespace Program
{

using namespace std::string_view_literals;
using Tavrin::BitDepth;
using Tavrin::PixelFormat;

namespace
{

std::string extensionOf(std::string const& path)
{
    std::string extension = std::filesystem::path(path).extension().string();
    if (!extension.empty())
        extension.erase(0, 1);
    std::transform(extension.begin(), extension.end(), extension.begin(), [](unsigned char c) { return std::tolower(c); });
    return extension;
}

bool hasDepth(ImageType const& type, BitDepth depth)
{
    return std::any_of(type.written.begin(), type.written.end(), [&](PixelFormat format) { return depthOf(format) == depth; });
}

// Whether every value of the source depth comes back after a stay in the target depth. A half has steps of 1/2048 below 1,
// finer than those of 10 bits and coarser than half of one of 12 bits.
bool holds(BitDepth target, BitDepth source)
{
    if (target == Tavrin::BIT_DEPTH_16f)
        return source == Tavrin::BIT_DEPTH_8i || source == Tavrin::BIT_DEPTH_10i || source == Tavrin::BIT_DEPTH_16f;
    return target >= source && (Tavrin::isFloatDepth(target) || Tavrin::isIntegerDepth(source));
}

BitDepth depthForWriting(ImageType const& type, BitDepth source)
{
    if (hasDepth(type, source))
        return source;
    for (PixelFormat format : type.written)
    {
        if (holds(depthOf(format), source))
            return depthOf(format);
    }
    return type.usualDepth;
}

// "8i, 16i", each depth once.
std::string depthNames(ImageType const& type)
{
    std::vector<std::string> names;
    for (PixelFormat format : type.written)
    {
        const std::string name = Tavrin::getBitDepthName(depthOf(format));
        if (std::find(names.begin(), names.end(), name) == names.end())
            names.push_back(name);
    }
    return commaSeparated(names);
}

std::string allExtensions()
{
    std::vector<std::string> extensions;
    for (ImageType const& type : imageTypes())
    {
        for (char const* extension : type.extensions)
            extensions.push_back(fmt::format(".{}", extension));
    }
    return commaSeparated(extensions);
}

std::string allNames()
{
    return commaSeparated(imageTypes(), [](ImageType const& type) { return type.name; });
}

ImageType const& typeForReading(InputFile const& file)
{
    std::array<char, 8> buffer = {};
    const std::string_view start(buffer.data(), file.readSome(0, buffer.data(), buffer.size()));
    for (ImageType const& type : imageTypes())
    {
        for (std::string_view signature : type.signatures)
        {
            if (start.substr(0, signature.size()) == signature)
                return type;
        }
    }
    fail("'{}' is no picture of a known type ({})", file.path(), allNames());
}

} // namespace

std::vector<ImageType> const& imageTypes()
{
    using namespace Tavrin;
    static const std::vector<ImageType> types = {
        {"OpenEXR",
         "scene-linear film and television pictures",
         {"exr"},
         {"\x76\x2f\x31\x01"sv},
         {PF_RGB_16f, PF_RGBA_16f, PF_RGB_32f, PF_RGBA_32f},
         BIT_DEPTH_16f,
         readExr,
         writeExr},
        {"PNG",
         "display pictures",
         {"png"},
         {"\x89PNG\r\n\x1a\n"sv},
         {PF_RGB_8i, PF_RGBA_8i, PF_RGB_16i, PF_RGBA_16i},
         BIT_DEPTH_16i,
         readPng,
         writePng},
        {"TIFF",
         "pictures of any depth",
         {"tif", "tiff"},
         {"II*\0"sv, "MM\0*"sv, "II+\0"sv, "MM\0+"sv},
         {PF_RGB_8i, PF_RGBA_8i, PF_RGB_16i, PF_RGBA_16i, PF_RGB_16f, PF_RGBA_16f, PF_RGB_32f, PF_RGBA_32f},
         BIT_DEPTH_16i,
         readTiff,
         writeTiff},
        {"DPX",
         "film scans and digital intermediates",
         {"dpx"},
         {"SDPX"sv, "XPDS"sv},
         {PF_RGB_10iP, PF_RGB_12i, PF_RGBA_12i, PF_RGB_16i, PF_RGBA_16i},
         BIT_DEPTH_10i,
         readDpx,
         writeDpx},
    };
    return types;
}

ImageType const& typeForWriting(std::string const& path)
{
    const std::string extension = extensionOf(path);
    for (ImageType const& type : imageTypes())
    {
        for (char const* known : type.extensions)
        {
            if (extension == known)
                return type;
        }
    }
    fail<UsageFailure>("cannot tell the image type of '{}': its extension is none of {}", path, allExtensions());
}

PixelFormat formatForWriting(ImageType const& type, std::optional<BitDepth> wished, PixelFormat source)
{
    const BitDepth depth = wished ? *wished : depthForWriting(type, depthOf(source));
    PixelFormat found = Tavrin::PF_UNKNOWN;
    for (PixelFormat format : type.written)
    {
        if (depthOf(format) == depth && (found == Tavrin::PF_UNKNOWN || hasAlpha(format) == hasAlpha(source)))
            found = format;
    }
    if (found == Tavrin::PF_UNKNOWN)
        fail<UsageFailure>("{} files hold no pixels of depth {}: choose one of {}", type.name, Tavrin::getBitDepthName(depth),
                           depthNames(type));
    return found;
}

Image readImage(std::string const& path, RowReport const& report)
{
    const InputFile file(path);
    return typeForReading(file).read(file, report);
}

void writeImage(ImageType const& type, Image const& image, std::string const& path, RowReport const& report)
{
    OutputFile file(path);
    try
    {
        type.write(image, file, report);
    }
    catch (std::exception const& problem)
    {
        // A full disk is the cause; what the image library makes of it is not.
        file.check();
        fail("cannot write '{}': {}", path, problem.what());
    }
    file.commit();
}

} // namespace Program
