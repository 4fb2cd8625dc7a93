// tavrin templates: the menus of the installed transforms.
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
    const Tavrin::TemplatePtr input = loadTemplate(Tavrin::TEMPLATE_INPUT, choice);
    const Tavrin::TemplatePtr viewing = loadTemplate(Tavrin::TEMPLATE_VIEWING, choice);
    printMenu("Input spaces, --input", getMenu(input, "input_space"));
    printMenu("\nWorking spaces, --working", getMenu(input, "working_space"));
    printMenu("\nViews, --view", getMenu(viewing, "view_transform"));
}

void setUp(CLI::App& command)
{
    const auto choice = std::make_shared<TemplateChoice>();
    addProductOption(command, *choice);
    command.callback([choice] { templates(*choice); });
}

} // namespace

const Command templatesCommand = {"templates", "List the spaces and views that are installed",
                                  "What is listed are values of options of 'tavrin apply'.\n\n"
                                  "Example:\n"
                                  "  tavrin templates",
                                  setUp};

} // namespace Program
