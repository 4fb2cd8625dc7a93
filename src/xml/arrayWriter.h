// Writes <Array>, the numbers of a table or matrix.
#ifndef TAVRIN_XML_ARRAY_WRITER_H
#define TAVRIN_XML_ARRAY_WRITER_H

#include "xml/xmlFormatter.h"

#include <tavrin/vocabulary.h>

#include <initializer_list>
#include <vector>

namespace Color::Xml::Writer
{

// Every stride-th value from first on, in columns as wide and with as many digits as values at the depth need. A line ends after
// each value whose index from first, modulo valuesPerLine, is valuesPerLine - 1; other values are followed by a blank. Throws for
// an unknown depth.
void writeValues(Formatter& formatter, float const* first, float const* last, unsigned int valuesPerLine, Tavrin::BitDepth depth,
                 unsigned int stride);

// The whole element. The last of the dimensions is that of the colour components; all values of a colour stand on one line.
void writeArray(Formatter& formatter, std::initializer_list<unsigned int> dimensions, std::vector<float> const& values,
                unsigned int valuesPerLine, Tavrin::BitDepth depth, unsigned int stride = 1);

} // namespace Color::Xml::Writer

#endif
