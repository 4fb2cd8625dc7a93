// tavrin chart OUT: the synthetic test chart as a picture file.
#include "chart.h"
#include "command.h"
#include "failure.h"
#include "imageTypes.h"
#include "options.h"
#include "progress.h"
#include "transforms.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include <charconv>
#include <map>
#include <memory>

namespace Program
{

namespace
{

struct Options
{
    std::string path;
    std::string size = "1920x1080";
    std::optional<Tavrin::BitDepth> depth;
    std::optional<ChartEncoding> encoding;
    bool quiet = false;
};

struct Size
{
    unsigned int width = 0;
    unsigned int height = 0;
};

Size parseSize(std::string const& text)
{
    Size size;
    char const* const end = text.data() + text.size();
    const std::from_chars_result width = std::from_chars(text.data(), end, size.width);
    const bool cross = width.ec == std::errc() && width.ptr != end && *width.ptr == 'x';
    const std::from_chars_result height = std::from_chars(cross ? width.ptr + 1 : end, end, size.height);
    const auto isSide = [](unsigned int side) { return side > 0 && side <= kMaxSide; };
    if (height.ec != std::errc() || height.ptr != end || !isSide(size.width) || !isSide(size.height))
        fail<UsageFailure>("--size wants WIDTHxHEIGHT, such as 1920x1080, up to {} each, not '{}'", kMaxSide, text);
    return size;
}

// Film scans are logarithmic, pixels of whole numbers are for a display, floats are light.
ChartEncoding encodingFor(Options const& options, Tavrin::PixelFormat format)
{
    if (options.encoding)
        return *options.encoding;
    if (Tavrin::isFloatDepth(depthOf(format)))
        return ChartEncoding::LINEAR;
    return format == Tavrin::PF_RGB_10iP ? ChartEncoding::LOG : ChartEncoding::SRGB;
}

// Does nothing but bring pixels from one format into another.
Tavrin::TransformPtr identity()
{
    const float matrix[9] = {1, 0, 0, 0, 1, 0, 0, 0, 1};
    const float offsets[3] = {0, 0, 0};
    Tavrin::TransformPtr transform;
    check(Tavrin::CreateMatrixTransform(Tavrin::BIT_DEPTH_32f, Tavrin::BIT_DEPTH_32f, matrix, offsets, false, transform),
          "cannot build a transform");
    return transform;
}

void chart(Options const& options)
{
    const Size size = parseSize(options.size);
    ImageType const& type = typeForWriting(options.path);
    const Tavrin::BitDepth depth = options.depth.value_or(type.usualDepth);
    const Tavrin::PixelFormat format = formatForWriting(type, depth, Tavrin::PF_RGB_32f);

    Progress progress(!options.quiet);
    Image drawn =
        drawChart(options.path, size.width, size.height, encodingFor(options, format), progress.step("drawing", size.height));
    const Image image = applyTransform(identity(), Tavrin::OPTIMIZER_DEFAULT_THRESHOLD, std::move(drawn), format, 1,
                                       progress.step("applying", size.height));
    writeImage(type, image, options.path, progress.step("writing", size.height));
    progress.clear();
    if (!options.quiet)
        fmt::print("{} ({}), {} x {}\n", options.path, formatName(format), image.width, image.height);
}

void setUp(CLI::App& command)
{
    const auto options = std::make_shared<Options>();
    command.add_option("OUT", options->path, "The picture to write")->required();
    command.add_option("--size", options->size, "Size in pixels (default: 1920x1080)")->option_text("WIDTHxHEIGHT");
    addDepthOption(command, options->depth, "Depth of the picture (default: the file type's\nusual one)");
    addChoice<ChartEncoding>(command, "--encoding", options->encoding,
                             {{"linear", ChartEncoding::LINEAR}, {"srgb", ChartEncoding::SRGB}, {"log", ChartEncoding::LOG}},
                             "How light becomes numbers (default: linear for\nfloats, log for DPX of 10 bits, srgb for others)")
        ->option_text("linear|srgb|log");
    addQuietOption(command, options->quiet);
    command.callback([options] { chart(*options); });
}

} // namespace

const Command chartCommand = {"chart", "Write a synthetic test chart",
                              "Colour patches, hues, a sky, shaded balls, ramps, and light up to 5 stops above\n"
                              "white, with the primaries of Rec. 709.\n\n"
                              "Examples:\n"
                              "  tavrin chart chart.exr\n"
                              "  tavrin chart chart.png --size 960x540 --depth 8i",
                              setUp};

} // namespace Program
