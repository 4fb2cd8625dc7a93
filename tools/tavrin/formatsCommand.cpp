// tavrin formats: the files that can be read and written.
#include "command.h"
#include "imageTypes.h"
#include "text.h"
#include "transforms.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>
#include <fmt/ranges.h>

#include <string>
#include <string_view>

namespace Program
{

namespace
{

// A row of both lists: extensions, what reads them, and words for people.
void printFormat(std::string const& extensions, std::string_view reader, std::string_view description)
{
    fmt::print("  {:<11}{}: {}\n", extensions, reader, description);
}

class Printer : public Tavrin::SupportedFormatsCallBack
{
public:
    void addFormat(char const* extension, char const* description, char const* reader) override
    {
        printFormat("." + oneLine(extension), oneLine(reader), oneLine(description));
    }
};

void formats()
{
    fmt::print("Pictures, read and written:\n");
    for (ImageType const& type : imageTypes())
    {
        printFormat(fmt::format(".{}", fmt::join(type.extensions, " .")), type.name, type.description);
        fmt::print("  {:<11}written as {}\n", "", commaSeparated(type.written, formatName));
    }
    fmt::print("\nTransforms, read:\n");
    Printer printer;
    check(Tavrin::getSupportedFileFormats(printer), "cannot list the transform files");
}

void setUp(CLI::App& command)
{
    command.callback(formats);
}

} // namespace

const Command formatsCommand = {"formats", "List the picture and transform files that are known", "Example:\n  tavrin formats",
                                setUp};

} // namespace Program
