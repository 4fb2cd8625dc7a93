// The plain-text format of three-dimensional tables (.3dl) of 17 grid points an axis.
#ifndef TAVRIN_XML_LUT_3D_UTILS_H
#define TAVRIN_XML_LUT_3D_UTILS_H

#include <array>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace Color::Lut3dUtils
{

inline constexpr unsigned int kGridPoints = 17;
inline constexpr std::size_t kRows = std::size_t{kGridPoints} * kGridPoints * kGridPoints;

// Red, green and blue; blue varies fastest.
using Rows = std::vector<std::array<int, 3>>;

enum Error : int
{
    OK = 0,
    NOT_FOUND = 1,
    UNEXPECTED_END = 2,
    SYNTAX = 3,
    DECRYPTION = 4, // Of a variant of the format that is not read.
    DIMENSION = 6
};

// Reads a file's rows, at most kRows, and the highest value in them. A file of another grid that says so before its rows has none.
Error readFile(std::string const& path, Rows& rows, int& maxValue);
// For people.
std::string errorToString(std::string const& path, int code);
// Digits and white space alone.
bool strIsNumeric(std::string_view text);

} // namespace Color::Lut3dUtils

#endif
