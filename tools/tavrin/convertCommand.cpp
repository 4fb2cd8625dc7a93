// tavrin convert TRANSFORM OUT.ctf: a transform of any kind that the library reads, as a transform file.
#include "command.h"
#include "failure.h"
#include "options.h"
#include "text.h"
#include "transforms.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace Program
{

namespace
{

struct Options
{
    std::string in;
    std::string out;
    bool resolve = false;
    std::optional<Tavrin::OptimizerFlags> optimizerFlags;
    bool quiet = false;
};

// The names of the operators' types, in their order: the sections inside that of the transform.
class OperatorNames : public Tavrin::Transform::ContentCallbacks
{
public:
    std::vector<std::string> const& names() const { return m_names; }

    void beginSection(char const* name) override
    {
        if (++m_depth == 2)
            m_names.push_back(oneLine(name));
    }
    void endSection() override { --m_depth; }
    void addEntry(char const*, char const*) override {}

private:
    int m_depth = 0;
    std::vector<std::string> m_names;
};

void requireTransformFile(std::string const& path)
{
    const std::string extension = std::string(".") + Tavrin::getColorTransformFileExtension();
    if (std::filesystem::path(path).extension() != extension)
        fail<UsageFailure>("cannot write '{}': the name of a transform file ends in {}", path, extension);
}

// A file without operators could not be read.
Tavrin::TransformPtr optimized(Tavrin::TransformPtr const& transform, Tavrin::OptimizerFlags flags)
{
    Tavrin::TransformPtr result;
    check(Tavrin::optimizeTransform(transform, flags, result), "cannot optimize the transform");
    if (result->getInputBitDepth() == Tavrin::BIT_DEPTH_UNKNOWN)
        fail("cannot optimize the transform: no operator is left");
    return result;
}

// Of what a reading of the file finds.
void printSummary(Options const& options)
{
    OperatorNames operators;
    check(loadTransform(options.out)->extractContent(operators), fmt::format("cannot tell what '{}' holds", options.out));
    const std::size_t count = operators.names().size();
    fmt::print("{} -> {}, {} {} ({}), {} bytes\n", options.in, options.out, count, count == 1 ? "operator" : "operators",
               commaSeparated(operators.names()), std::filesystem::file_size(options.out));
}

void convert(Options const& options)
{
    requireTransformFile(options.out);
    Tavrin::TransformPtr transform = loadTransform(options.in);
    if (options.optimizerFlags)
        transform = optimized(transform, *options.optimizerFlags);
    check(Tavrin::saveColorTransform(options.out.c_str(), options.resolve, transform),
          fmt::format("cannot write '{}'", options.out));
    if (!options.quiet)
        printSummary(options);
}

void setUp(CLI::App& command)
{
    const auto options = std::make_shared<Options>();
    command.add_option("TRANSFORM", options->in, "The file to read, of any type that 'formats' lists")->required();
    command.add_option("OUT", options->out, "The transform file to write, which ends in .ctf")->required();
    command.add_flag("--resolve", options->resolve, "Write what references point at in their place");
    addOptimizerOption(command, "--optimize", options->optimizerFlags,
                       "Write what the optimizer leaves with these flags\n(see 'apply'); resolves references too");
    addQuietOption(command, options->quiet);
    command.callback([options] { convert(*options); });
}

} // namespace

const Command convertCommand = {"convert", "Write a transform as a transform file",
                                "Examples:\n"
                                "  tavrin convert grade.cdl grade.ctf\n"
                                "  tavrin convert look.ctf flat.ctf --optimize 90",
                                setUp};

} // namespace Program
