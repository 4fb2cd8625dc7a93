// The command line program: finds the command, reports failures, and answers with an exit status:
// 0 done, 1 the work could not be done, 2 the command line makes no sense.
#include "command.h"
#include "failure.h"
#include "installation.h"
#include "text.h"

#include <tavrin/tavrin.h>

#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include <cstdio>
#include <memory>
#include <new>

namespace Program
{

namespace
{

constexpr const Command* kCommands[] = {&applyCommand, &infoCommand,    &convertCommand,   &shaderCommand,
                                        &chartCommand, &formatsCommand, &templatesCommand, &prefsCommand};

enum ExitStatus : int
{
    DONE = 0,
    FAILED = 1,
    MISUSED = 2
};

// Help with the words that the options tell, without CLI11's names of types.
class HelpFormatter : public CLI::Formatter
{
public:
    std::string make_option_usage(CLI::Option const* option) const override { return make_option_name(option, true); }
    std::string make_option_opts(CLI::Option const* option) const override
    {
        return option->get_option_text().empty() ? std::string() : " " + option->get_option_text();
    }
};

void logLine(Tavrin::LogLevel level, char const* text)
{
    if (level == Tavrin::LOG_USER)
        fmt::print(stderr, "tavrin: {}\n", oneLine(text));
}

int report(ExitStatus status, std::string_view text)
{
    fmt::print(stderr, "tavrin: {}\n", oneLine(text));
    return status;
}

int reportMisuse(CLI::App const& app, CLI::ParseError const& problem, int argc, char** argv)
{
    const std::vector<CLI::App*> commands = app.get_subcommands();
    if (!commands.empty())
        return report(MISUSED, fmt::format("{} (see 'tavrin {} --help')", problem.what(), commands.front()->get_name()));
    const std::string what = argc > 1 ? fmt::format("'{}' is no command", argv[1]) : "a command is missing";
    return report(MISUSED, what + " (see 'tavrin --help')");
}

void addCommands(CLI::App& app)
{
    app.set_version_flag("--version", fmt::format("tavrin {}", Tavrin::getVersion()), "Print the version and exit");
    app.require_subcommand(1);
    app.formatter(std::make_shared<HelpFormatter>());
    app.get_formatter()->column_width(22);
    app.get_formatter()->label("SUBCOMMAND", "COMMAND");
    app.footer("Example:\n  tavrin apply look.ctf in.exr out.png\n\n'tavrin COMMAND --help' tells more of a command.");
    for (const Command* command : kCommands)
    {
        CLI::App* added = app.add_subcommand(command->name, command->summary);
        added->group("Commands");
        added->footer(command->help);
        command->setUp(*added);
    }
}

int run(int argc, char** argv)
{
    CLI::App app("Colour transforms for pictures.", "tavrin");
    try
    {
        Tavrin::setLoggerFunction(logLine);
        useOwnInstallation();
        addCommands(app);
        app.parse(argc, argv);
        return DONE;
    }
    catch (CLI::Success const& wish)
    {
        // Help or version, which prints itself.
        return app.exit(wish);
    }
    catch (CLI::ParseError const& problem)
    {
        return reportMisuse(app, problem, argc, argv);
    }
    catch (UsageFailure const& problem)
    {
        return report(MISUSED, problem.what());
    }
    catch (std::bad_alloc const&)
    {
        return report(FAILED, "there is not enough memory");
    }
    catch (std::exception const& problem)
    {
        return report(FAILED, problem.what());
    }
}

} // namespace

} // namespace Program

int main(int argc, char** argv)
{
    const int status = Program::run(argc, argv);
    if (std::fflush(stdout) != 0)
        return Program::report(Program::FAILED, "cannot write to the standard output");
    return status;
}
