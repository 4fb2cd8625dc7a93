// Transforms that templates make of what is installed.
#include "templates.h"

#include "failure.h"
#include "transforms.h"

#include <CLI/CLI.hpp>

namespace Program
{

namespace
{

void select(Tavrin::TemplatePtr const& tpl, char const* name, std::string const& value, char const* option)
{
    if (!getMenu(tpl, name)->select(value.c_str()))
        fail<UsageFailure>("{}: there is no '{}' (see 'tavrin templates')", option, value);
}

Tavrin::TransformPtr createTransform(Tavrin::TemplatePtr const& tpl)
{
    Tavrin::TransformPtr transform;
    check(tpl->createTransform(transform), "cannot make the transform");
    return transform;
}

} // namespace

void addSourceOptions(CLI::App& command, TemplateChoice& choice)
{
    CLI::Option* const product =
        command.add_option("--product", choice.product, "The tag of the transforms in the menus (default: Tavrin)")
            ->option_text("NAME");
    command.add_option("--ocio", choice.ocioConfig, "An OpenColorIO configuration, whose spaces and views\nare the menus")
        ->option_text("CONFIG")
        ->excludes(product);
}

void addMenuOptions(CLI::App& command, TemplateChoice& choice)
{
    CLI::Option* const working =
        command.add_option("--working", choice.working, "The working space that the transforms apply in")->option_text("SPACE");
    command.add_option("--input", choice.input, "The space of the read picture")->option_text("SPACE")->needs(working);
    command.add_option("--view", choice.view, "What the written picture is for")->option_text("VIEW")->needs(working);
}

Tavrin::TemplatePtr loadTemplate(Tavrin::TemplateType type, TemplateChoice const& choice)
{
    Tavrin::TemplatePtr tpl;
    if (choice.ocioConfig)
        check(Tavrin::loadOCIOTemplate(choice.ocioConfig->c_str(), tpl), "cannot use the configuration");
    else
        check(Tavrin::loadNativeTemplate(type, choice.product.c_str(), tpl), "cannot load the installed transforms");
    return tpl;
}

Tavrin::TemplateParameterPtr getMenu(Tavrin::TemplatePtr const& tpl, char const* name)
{
    Tavrin::TemplateParameterPtr menu;
    check(tpl->getParameter(name, menu), "cannot use the template");
    return menu;
}

Tavrin::TransformPtr createInputTransform(TemplateChoice const& choice)
{
    if (!choice.input)
        return Tavrin::TransformPtr();
    if (choice.ocioConfig)
        fail<UsageFailure>("--input: configurations have no input spaces, only --working and --view");
    const Tavrin::TemplatePtr tpl = loadTemplate(Tavrin::TEMPLATE_INPUT, choice);
    select(tpl, "input_space", *choice.input, "--input");
    select(tpl, "working_space", *choice.working, "--working");
    return createTransform(tpl);
}

Tavrin::TransformPtr createViewingTransform(TemplateChoice const& choice)
{
    if (!choice.view)
        return Tavrin::TransformPtr();
    const Tavrin::TemplatePtr tpl = loadTemplate(Tavrin::TEMPLATE_VIEWING, choice);
    select(tpl, "working_space", *choice.working, "--working");
    select(tpl, "view_transform", *choice.view, "--view");
    return createTransform(tpl);
}

} // namespace Program
