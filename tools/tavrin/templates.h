// Transforms that templates make of what is installed.
#ifndef TAVRIN_PROGRAM_TEMPLATES_H
#define TAVRIN_PROGRAM_TEMPLATES_H

#include <tavrin/tavrin.h>

#include <optional>
#include <string>

namespace CLI
{
class App;
}

namespace Program
{

// What the options of a command choose from the menus of the installed transforms, or of an OpenColorIO configuration.
struct TemplateChoice
{
    std::string product = "Tavrin";
    std::optional<std::string> ocioConfig; // Its path; in place of what is installed.
    std::optional<std::string> input;
    std::optional<std::string> working;
    std::optional<std::string> view;
};

// --product, --ocio. The choice outlives the command.
void addSourceOptions(CLI::App& command, TemplateChoice& choice);
// --input, --working, --view.
void addMenuOptions(CLI::App& command, TemplateChoice& choice);

Tavrin::TemplatePtr loadTemplate(Tavrin::TemplateType type, TemplateChoice const& choice);
Tavrin::TemplateParameterPtr getMenu(Tavrin::TemplatePtr const& tpl, char const* name);

// From the chosen input space to the working space, and from that to the view. Empty handles where the choice does not ask for it,
// or nothing leads there.
Tavrin::TransformPtr createInputTransform(TemplateChoice const& choice);
Tavrin::TransformPtr createViewingTransform(TemplateChoice const& choice);

} // namespace Program

#endif
