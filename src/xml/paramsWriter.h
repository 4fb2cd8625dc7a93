// Writes elements that hold an operator's parameters as attributes, for all channels or one of them.
#ifndef TAVRIN_XML_PARAMS_WRITER_H
#define TAVRIN_XML_PARAMS_WRITER_H

#include "xml/elementWriter.h"

#include <initializer_list>
#include <span>
#include <vector>

namespace Color::Xml::Writer
{

using ParamNames = std::span<char const* const>;
using Params = std::vector<double>;

// An attribute for each number, in the order of the names; there may be fewer numbers than names.
void addParams(Attributes& attributes, ParamNames names, Params const& values);

// One element that holds for all channels.
void writeParams(Formatter& formatter, char const* tag, ParamNames names, Params const& values);

// One element for each channel: red, green, blue and perhaps alpha.
void writeChannelParams(Formatter& formatter, char const* tag, ParamNames names, std::initializer_list<Params> channels);

} // namespace Color::Xml::Writer

#endif
