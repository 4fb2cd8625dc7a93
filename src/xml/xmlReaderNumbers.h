// Numbers in the texts and attributes of documents.
#ifndef TAVRIN_XML_READER_NUMBERS_H
#define TAVRIN_XML_READER_NUMBERS_H

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace Color::Xml::Reader
{

// White space and commas stand between numbers, in any grouping.
constexpr bool isSeparator(char c)
{
    return c == ' ' || c == ',' || (c >= '\t' && c <= '\r');
}

// The position of the first character that is not a separator, and of the first that is one; npos at the end of the text.
std::size_t findNextTokenStart(std::string_view text, std::size_t position);
std::size_t findDelim(std::string_view text, std::size_t position);

// At most 17 characters of a text, with "..." after a longer one: how messages quote values.
std::string truncateString(std::string_view text);

// The number at the start of a text, as sscanf reads it in the C locale whatever the locale of the process: white space before
// it is passed over, what follows a number is not looked at ("12abc" is 12), "inf", "infinity" and "nan" are numbers in any case
// and with any sign, hexadecimal ones too, and a value beyond the range is an infinity. False when there is no number.
bool scanNumber(std::string_view text, float& value);
bool scanNumber(std::string_view text, double& value);

// T is float, double or unsigned int. A number that stands at the start of a text, or a failure that quotes the text.
//   float    any
//   double   no NaN
//   unsigned a whole number below 2^32, in any spelling that a double has
template <class T>
T parseNumber(std::string_view text);

// Reads the number at the position, which must not be npos, and moves on to the next one, or to npos at the end.
template <class T>
T getNextNumber(std::string_view text, std::size_t& position);

// All numbers of a text.
template <class T>
std::vector<T> getNumbers(std::string_view text);

} // namespace Color::Xml::Reader

#endif
