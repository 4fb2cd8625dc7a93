// tavrin apply [TRANSFORM...] IN OUT: a picture through transforms.
#include "command.h"
#include "failure.h"
#include "gpuRendering.h"
#include "imageTypes.h"
#include "options.h"
#include "progress.h"
#include "templates.h"
#include "transforms.h"

#include <CLI/CLI.hpp>
#include <ImfThreading.h>
#include <fmt/format.h>

#include <algorithm>
#include <chrono>
#include <iterator>
#include <memory>
#include <optional>
#include <thread>

namespace Program
{

namespace
{

struct Options
{
    std::vector<std::string> files;
    TemplateChoice templates;
    std::optional<Tavrin::BitDepth> depth;
    unsigned int threads = 0;
    Tavrin::OptimizerFlags optimizerFlags = Tavrin::OPTIMIZER_DEFAULT_THRESHOLD;
    std::optional<double> exposure;
    std::optional<double> contrast;
    bool gpu = false;
    bool quiet = false;
};

void setDynamicValue(Tavrin::TransformPtr const& transform, Tavrin::DynamicProperty::Ids id, std::optional<double> const& value,
                     char const* option)
{
    if (!value)
        return;
    Tavrin::DynamicProperty property(id, *value);
    // Reading it tells whether the transform has it.
    if (!transform->getDynamicProperty(property))
        fail<UsageFailure>("{}: the transform has no dynamic {}", option, Tavrin::DynamicProperty::getName(id));
    check(transform->setDynamicProperty({id, *value}), option);
}

// The files apply in the working space, between what the templates give.
Tavrin::TransformPtr makeTransform(Options const& options)
{
    const std::vector<std::string> paths(options.files.begin(), options.files.end() - 2);
    TemplateChoice const& choice = options.templates;
    const bool usesTemplates = choice.input || choice.view;
    if (choice.working && !usesTemplates)
        fail<UsageFailure>("--working needs --input or --view (see 'tavrin apply --help')");
    if (paths.empty() && !usesTemplates)
        fail<UsageFailure>("a transform is missing (see 'tavrin apply --help')");

    std::vector<Tavrin::TransformPtr> transforms = {createInputTransform(choice)};
    std::transform(paths.begin(), paths.end(), std::back_inserter(transforms), loadTransform);
    transforms.push_back(createViewingTransform(choice));
    const Tavrin::TransformPtr all = joinTransforms(transforms);
    if (!all)
        fail("nothing leads from '{}' to '{}'", *choice.input, *choice.working);
    return all;
}

void apply(Options const& options)
{
    const auto start = std::chrono::steady_clock::now();
    std::string const& inPath = options.files.end()[-2];
    std::string const& outPath = options.files.end()[-1];
    const unsigned int threads = options.threads > 0 ? options.threads : std::max(1u, std::thread::hardware_concurrency());
    Imf::setGlobalThreadCount(static_cast<int>(threads));

    ImageType const& outType = typeForWriting(outPath);
    const Tavrin::TransformPtr transform = makeTransform(options);
    setDynamicValue(transform, Tavrin::DynamicProperty::EXPOSURE, options.exposure, "--exposure");
    setDynamicValue(transform, Tavrin::DynamicProperty::CONTRAST, options.contrast, "--contrast");
    Progress progress(!options.quiet);
    Image source = readImage(inPath, progress.step("reading", 0));
    const Tavrin::PixelFormat inFormat = source.format;
    const Tavrin::PixelFormat outFormat = formatForWriting(outType, options.depth, inFormat);
    const unsigned int height = source.height;
    const auto render = options.gpu ? drawTransform : applyTransform;
    const Image target =
        render(transform, options.optimizerFlags, std::move(source), outFormat, threads, progress.step("applying", height));
    writeImage(outType, target, outPath, progress.step("writing", height));
    progress.clear();

    if (!options.quiet)
    {
        const std::chrono::duration<double> seconds = std::chrono::steady_clock::now() - start;
        fmt::print("{} ({}) -> {} ({}), {} x {}, {:.2f} s\n", inPath, formatName(inFormat), outPath, formatName(outFormat),
                   target.width, target.height, seconds.count());
    }
}

void setUp(CLI::App& command)
{
    const auto options = std::make_shared<Options>();
    command
        .add_option("[TRANSFORM...] IN OUT", options->files,
                    "Transform files in the order in which they apply,\nthen the picture to read and the picture to write")
        ->required()
        ->expected(2, -1);
    addMenuOptions(command, options->templates);
    addSourceOptions(command, options->templates);
    addDepthOption(command, options->depth,
                   "Depth of the written picture (default: that of the\nread one, or the nearest that the file type holds)");
    command.add_option("--threads", options->threads, "Number of threads (default: all cores)")
        ->check(CLI::Range(1, 1024))
        ->option_text("N");
    addOptimizerOption(command, "--optimize", options->optimizerFlags,
                       "Optimizer flags: the lowest priority of what is\nsimplified, 90 by default; above 100 nothing is");
    command
        .add_option("--exposure", options->exposure,
                    "Exposure in stops, where the transforms let it\nchange (a DynamicParameter of their file)")
        ->option_text("E");
    command.add_option("--contrast", options->contrast, "Contrast, likewise; 1 changes nothing")->option_text("C");
    command.add_flag("--gpu", options->gpu, "Let the graphics do it, through OpenGL; pixels come out\nalmost the same");
    addQuietOption(command, options->quiet);
    command.callback([options] { apply(*options); });
}

} // namespace

const Command applyCommand = {"apply", "Put a picture through transforms",
                              "The type of the read picture is told by its content, that of the written one by\n"
                              "its extension; 'tavrin formats' lists them. Colours are taken as they are:\n"
                              "profiles and colour tags inside picture files are not looked at. Alpha is kept\n"
                              "when the file type has it.\n\n"
                              "Examples:\n"
                              "  tavrin apply look.ctf in.exr out.png\n"
                              "  tavrin apply exposure.ctf look.ctf in.dpx out.tif --depth 16i\n"
                              "  tavrin apply viewing.ctf in.exr out.png --exposure -0.5 --contrast 1.2\n"
                              "  tavrin apply --input \"ARRI LogC4\" --working ACEScg --view sRGB in.dpx out.png\n"
                              "  tavrin apply --ocio config.ocio --working Linear --view \"Film (sRGB)\" in.exr out.png\n\n"
                              "With --input and --view, transform files apply in the working space between them;\n"
                              "'tavrin templates' lists the spaces and views that are installed.",
                              setUp};

} // namespace Program
