// tavrin prefs show|set-alias|set-shared: where transforms are on this machine, and what aliases stand for.
#include "command.h"
#include "options.h"
#include "text.h"
#include "transforms.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include <filesystem>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace Program
{

namespace
{

using Tavrin::BasePath;

// What the library itself asks for; whoever sets other aliases knows their names.
constexpr char const* kKnownAliases[] = {"graphicsMonitor",     "broadcastMonitor",    "defaultLook",
                                         "SceneToOutputBridge", "OutputToSceneBridge", "defaultGamutMap"};

struct Options
{
    std::vector<std::string> aliases;
    std::string alias;
    std::string path;
    std::optional<BasePath> basePath;
};

// As the terminal's user means it. The library takes a relative path for one below a known folder.
std::string absolute(std::string const& path)
{
    return std::filesystem::absolute(path).lexically_normal().string();
}

void printRow(std::string const& name, std::string const& value)
{
    fmt::print("{:<22}{}\n", name, printable(value));
}

Tavrin::TavStatus printAlias(std::string const& alias)
{
    char const* path = "";
    BasePath basePath = Tavrin::BASE_PATH_NONE;
    Tavrin::TavStatus status = Tavrin::findAliasInPreferences(alias.c_str(), path, basePath);
    if (status)
        printRow(oneLine(alias),
                 basePath == Tavrin::BASE_PATH_NONE ? path : fmt::format("{} ({})", path, getBasePathName(basePath)));
    return status;
}

void printLocations()
{
    char const* shared = "";
    check(Tavrin::getSharedColorTransformPath(shared), "cannot read the preferences");
    printRow("Configuration file", Tavrin::getConfigFilePath());
    printRow("Installed transforms", Tavrin::getSystemColorTransformPath());
    printRow("Shared transforms", shared);
}

void show(Options const& options)
{
    for (std::string const& alias : options.aliases)
        check(printAlias(alias), fmt::format("cannot tell what '{}' stands for", alias));
    if (!options.aliases.empty())
        return;
    printLocations();
    for (char const* const alias : kKnownAliases)
        printAlias(alias); // One that is not in the preferences is left out.
}

void setAlias(Options const& options)
{
    const std::string path = options.basePath ? options.path : absolute(options.path);
    check(Tavrin::addAliasInPreferences(options.alias.c_str(), path.c_str(), options.basePath.value_or(Tavrin::BASE_PATH_NONE)),
          fmt::format("cannot set the alias '{}'", options.alias));
}

void setShared(Options const& options)
{
    check(Tavrin::setSharedColorTransformPath(absolute(options.path).c_str()), "cannot set the folder of shared transforms");
}

CLI::App& addAction(CLI::App& command, char const* name, char const* summary, std::shared_ptr<Options> const& options,
                    void (*run)(Options const&))
{
    CLI::App* action = command.add_subcommand(name, summary);
    action->group("Commands");
    action->callback([options, run] { run(*options); });
    return *action;
}

void setUp(CLI::App& command)
{
    const auto options = std::make_shared<Options>();
    command.require_subcommand(1);

    CLI::App& showAction = addAction(command, "show", "Tell the locations and aliases", options, show);
    showAction.add_option("ALIAS", options->aliases, "Aliases to tell; without them the locations and the library's own aliases");

    CLI::App& setAliasAction = addAction(command, "set-alias", "Let an alias stand for a transform file", options, setAlias);
    setAliasAction.add_option("ALIAS", options->alias, "The name")->required();
    setAliasAction.add_option("PATH", options->path, "The transform file")->required();
    const std::map<std::string, BasePath> basePaths = {{"installed", Tavrin::BASE_PATH_VENDOR},
                                                       {"shared", Tavrin::BASE_PATH_SHARED}};
    addChoice(setAliasAction, "--in", options->basePath, basePaths, "PATH is below the installed or the shared transforms")
        ->option_text("installed|shared");

    CLI::App& setSharedAction = addAction(command, "set-shared", "Set the folder of shared transforms", options, setShared);
    setSharedAction.add_option("FOLDER", options->path, "The folder")->required();
}

} // namespace

const Command prefsCommand = {"prefs", "Tell and change where transforms are and what aliases stand for",
                              "Example:\n  tavrin prefs set-alias graphicsMonitor monitor.ctf", setUp};

} // namespace Program
