// What programs that measure series of works share: their options, and the file that they write.
#include "shared/program.h"

#include <CLI/CLI.hpp>

#include <cstdio>
#include <cstdlib>
#include <fstream>

namespace Bench
{

namespace
{

// Empty where the system does not tell.
std::string processorName()
{
    std::ifstream file("/proc/cpuinfo");
    for (std::string line; std::getline(file, line);)
    {
        if (line.rfind("model name", 0) == 0)
            return line.substr(line.find(": ") + 2);
    }
    return "";
}

} // namespace

Options parseOptions(int argc, char const* const* argv, std::string const& description, std::string const& filtered,
                     Effort const& effort)
{
    Options options;
    options.effort = effort;
    CLI::App app(description);
    app.add_option("--filter", options.filter, "Regular expression for " + filtered);
    app.add_option("--json", options.json, "File to write the numbers to, for bench/plot");
    app.add_option("--repetitions", options.effort.repetitions, "Repetitions of which the median is taken")->capture_default_str();
    app.add_option("--seconds", options.effort.seconds, "Shortest time of one repetition")->capture_default_str();
    try
    {
        app.parse(argc, argv);
    }
    catch (CLI::ParseError const& error)
    {
        std::exit(app.exit(error));
    }
    return options;
}

Json jsonHead(std::string const& kind, Effort const& effort)
{
    return {{"kind", kind}, {"processor", processorName()}, {"repetitions", effort.repetitions}};
}

void save(Json const& json, std::string const& path)
{
    std::ofstream file(path);
    file << json.dump(1) << '\n';
    if (file.flush())
        return;
    std::fprintf(stderr, "%s: can't be written\n", path.c_str());
    std::exit(1);
}

} // namespace Bench
