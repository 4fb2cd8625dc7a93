// Plain-text tables written in tests.
#ifndef TAVRIN_TESTS_XML_TABLE_FILES_H
#define TAVRIN_TESTS_XML_TABLE_FILES_H

#include <cmath>
#include <cstddef>
#include <string>

namespace XmlTest
{

// A line for each number from 0 on, of what the function makes of it.
template <class Function>
std::string lines(int count, Function&& function)
{
    std::string text;
    for (int i = 0; i < count; ++i)
        text += std::to_string(function(i)) + "\n";
    return text;
}

// A signal in whole codes.
inline float codeOf(double signal, double maximum)
{
    return static_cast<float>(std::floor(signal * maximum + 0.5));
}

// The full name of a file in the folder of text tables.
inline std::string textTable(char const* name)
{
    return std::string(TAVRIN_TEST_DATA "/textTables/") + name;
}

} // namespace XmlTest

#endif
