// The plain-text format of three-dimensional tables (.3dl) of 17 grid points an axis.
//
//     # a comment
//     0 64 128 ... 960 1023     perhaps
//     red green blue            4913 times
//
// Lines before the first one of nothing but numbers mean nothing.
#include "xml/lut3dUtils.h"

#include "xml/textTableLines.h"

#include <algorithm>
#include <cctype>
#include <functional>
#include <iterator>

namespace Color::Lut3dUtils
{

namespace
{

std::vector<int> numbersOf(std::string_view line)
{
    std::vector<int> numbers;
    for (int number = 0; scanInteger(line, number);)
    {
        numbers.push_back(number);
    }
    return numbers;
}

// The positions of the grid points in 10-bit codes.
bool isGrid(std::vector<int> const& numbers)
{
    if (numbers.size() != kGridPoints || numbers.back() != 1023)
    {
        return false;
    }
    for (std::size_t i = 0; i + 1 < numbers.size(); ++i)
    {
        if (numbers[i] != static_cast<int>(i) * 64)
        {
            return false;
        }
    }
    return true;
}

// More or fewer grid points, in any depth. A long line comes in pieces, so that its last number may be cut.
bool isOtherGrid(std::vector<int> const& numbers)
{
    auto const end = numbers.begin() + std::min<std::ptrdiff_t>(std::ssize(numbers), kGridPoints);
    return numbers.size() > 3 && numbers.size() != kGridPoints && numbers.front() == 0 &&
           std::adjacent_find(numbers.begin(), end, std::greater_equal<>()) == end;
}

std::string resolveEscapes(std::string_view line)
{
    static constexpr std::string_view kLetters = "bfnrtv";
    static constexpr std::string_view kCharacters = "\b\f\n\r\t\v";
    std::string resolved;
    for (std::size_t i = 0; i < line.size(); ++i)
    {
        if (line[i] != '\\')
        {
            resolved += line[i];
        }
        else if (++i < line.size())
        {
            std::size_t const letter = kLetters.find(line[i]);
            resolved += letter == std::string_view::npos ? line[i] : kCharacters[letter];
        }
    }
    return resolved;
}

class TableFile
{
public:
    TableFile(std::string const& path, Rows& rows, int& maxValue)
        : m_rows(rows), m_maxValue(maxValue), m_lines(path, TextTableLines::LineEnd::CarriageReturnAndLineFeed)
    {
    }

    Error read();

private:
    bool _findNumbers();
    Error _readRows();
    Error _readRow();

    Rows& m_rows;
    int& m_maxValue;
    TextTableLines m_lines;
    std::string m_line;
};

Error TableFile::read()
{
    if (!m_lines.isOpen())
    {
        return NOT_FOUND;
    }
    if (!_findNumbers())
    {
        return UNEXPECTED_END;
    }
    std::vector<int> const numbers = numbersOf(m_line);
    if (isOtherGrid(numbers))
    {
        return OK;
    }
    if (!isGrid(numbers))
    {
        if (numbers.size() != 3)
        {
            return SYNTAX;
        }
        if (Error const error = _readRow(); error != OK)
        {
            return error;
        }
    }
    return _readRows();
}

bool TableFile::_findNumbers()
{
    while (m_lines.readContent(m_line))
    {
        if (strIsNumeric(m_line))
        {
            return true;
        }
    }
    return false;
}

Error TableFile::_readRows()
{
    while (m_lines.readContent(m_line))
    {
        if (Error const error = _readRow(); error != OK)
        {
            return error;
        }
    }
    return OK;
}

Error TableFile::_readRow()
{
    std::string const line = resolveEscapes(m_line);
    std::string_view rest = line;
    std::array<int, 3> row{};
    for (int& value : row)
    {
        if (!scanInteger(rest, value))
        {
            return SYNTAX;
        }
    }
    if (m_rows.size() == kRows)
    {
        return DIMENSION;
    }
    m_maxValue = std::max(m_maxValue, *std::max_element(row.begin(), row.end()));
    m_rows.push_back(row);
    return OK;
}

} // namespace

Error readFile(std::string const& path, Rows& rows, int& maxValue)
{
    rows.clear();
    maxValue = 0;
    return TableFile(path, rows, maxValue).read();
}

std::string errorToString(std::string const& path, int code)
{
    std::string const file = "File: " + path;
    switch (code)
    {
    case OK:
        return file + " No error.";
    case NOT_FOUND:
        return file + " not found.";
    case UNEXPECTED_END:
        return file + " not valid. Unexpected end of file.";
    case SYNTAX:
        return file + " not valid. Syntax error.";
    case DECRYPTION:
        return file + " not valid. Decryption error.";
    case DIMENSION:
        return file + " not valid. Unsupported LUT dimension.";
    default:
        return file + " not valid. Unknown error.";
    }
}

bool strIsNumeric(std::string_view text)
{
    return std::all_of(text.begin(), text.end(), [](unsigned char c) { return std::isdigit(c) || std::isspace(c); });
}

} // namespace Color::Lut3dUtils
