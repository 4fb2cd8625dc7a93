// tavrin templates: the menus of the installed transforms, or of a configuration.
#include "command.h"
#include "templates.h"
#include "text.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include <memory>

namespace Program
{

namespace
{

void printMenu(char const* title, Tavrin::TemplateParameterPtr const& menu)
{
    fmt::print("{}:\n", title);
    for (unsigned int i = 0; i < menu->getNumValues(); ++i)
        fmt::print("  {}\n", oneLine(menu->getValue(i)));
}

void templates(TemplateChoice const& choice)
{
    const Tavrin::TemplatePtr viewing = loadTemplate(Tavrin::TEMPLATE_VIEWING, choice);
    if (!choice.ocioConfig)
    {
        printMenu("Input spaces, --input", getMenu(loadTemplate(Tavrin::TEMPLATE_INPUT, choice), "input_space"));
        fmt::print("\n");
    }
    printMenu("Working spaces, --working", getMenu(viewing, "working_space"));
    printMenu("\nViews, --view", getMenu(viewing, "view_transform"));
}

void setUp(CLI::App& command)
{
    const auto choice = std::make_shared<TemplateChoice>();
    addSourceOptions(command, *choice);
    command.callback([choice] { templates(*choice); });
}

} // namespace

const Command templatesCommand = {"templates", "List the spaces and views that are installed",
                                  "What is listed are values of options of 'tavrin apply'.\n\n"
                                  "Examples:\n"
                                  "  tavrin templates\n"
                                  "  tavrin templates --ocio config.ocio",
                                  setUp};

} // namespace Program
