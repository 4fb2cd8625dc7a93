// Options that several commands have.
#ifndef TAVRIN_PROGRAM_OPTIONS_H
#define TAVRIN_PROGRAM_OPTIONS_H

#include <tavrin/vocabulary.h>

#include <CLI/CLI.hpp>

#include <map>
#include <optional>
#include <string>

namespace Program
{

// An option that takes one of some words; the value stays empty without it.
template <class Value>
CLI::Option* addChoice(CLI::App& command, std::string const& name, std::optional<Value>& value,
                       std::map<std::string, Value> const& choices, std::string const& description)
{
    const auto choose = [&value, choices](std::string const& word) { value = choices.at(word); };
    return command.add_option_function<std::string>(name, choose, description)->check(CLI::IsMember(choices));
}

// --depth, by the library's names.
inline CLI::Option* addDepthOption(CLI::App& command, std::optional<Tavrin::BitDepth>& depth, std::string const& description)
{
    using namespace Tavrin;
    std::map<std::string, BitDepth> depths;
    for (BitDepth d : {BIT_DEPTH_8i, BIT_DEPTH_10i, BIT_DEPTH_12i, BIT_DEPTH_16i, BIT_DEPTH_16f, BIT_DEPTH_32f})
        depths[getBitDepthName(d)] = d;
    return addChoice(command, "--depth", depth, depths, description)->option_text("8i|10i|12i|16i|16f|32f");
}

// Flags of the library's optimizer; without the option the value stays as it is.
template <class Flags>
CLI::Option* addOptimizerOption(CLI::App& command, std::string const& name, Flags& flags, std::string const& description)
{
    return command.add_option(name, flags, description)->check(CLI::Range(1u, 0xffffffffu))->option_text("N");
}

inline CLI::Option* addQuietOption(CLI::App& command, bool& quiet)
{
    return command.add_flag("-q,--quiet", quiet, "Print nothing but errors");
}

} // namespace Program

#endif
