// tavrin formats: the files that can be read and written.
#include "command.h"
#include "imageTypes.h"
#include "text.h"
#include "transforms.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>
#include <fmt/ranges.h>

namespace Program
{

namespace
{

class Printer : public Tavrin::SupportedExtensionsCallBack
{
public:
    void addExtension(char const* extension, char const* description) override
    {
        fmt::print("  {:<11}{}\n", fmt::format(".{}", oneLine(extension)), oneLine(description));
    }
};

void formats()
{
    fmt::print("Pictures, read and written:\n");
    for (ImageType const& type : imageTypes())
    {
        fmt::print("  {:<11}{}: {}\n", fmt::format(".{}", fmt::join(type.extensions, " .")), type.name, type.description);
        fmt::print("  {:<11}written as {}\n", "", commaSeparated(type.written, formatName));
    }
    fmt::print("\nTransforms, read:\n");
    Printer printer;
    check(Tavrin::getSupportedFileExtensions(printer), "cannot list the transform files");
}

void setUp(CLI::App& command)
{
    command.callback(formats);
}

} // namespace

const Command formatsCommand = {"formats", "List the picture and transform files that are known", "Example:\n  tavrin formats",
                                setUp};

} // namespace Program
