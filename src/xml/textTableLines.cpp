// The lines of plain-text tables, and the whole numbers in them.
#include "xml/textTableLines.h"

#include <algorithm>
#include <charconv>
#include <limits>

namespace Color
{

namespace
{

void cutEnd(std::string& line, char end)
{
    if (!line.empty() && line.back() == end)
    {
        line.pop_back();
    }
}

} // namespace

std::string ToolsStripBlank(std::string line)
{
    std::replace(line.begin(), line.end(), '\t', ' ');
    line.erase(line.find_last_not_of(' ') + 1);
    line.erase(0, line.find_first_not_of(' '));
    return line;
}

bool scanInteger(std::string_view& text, int& value)
{
    std::size_t const first = text.find_first_not_of(" \t\n\v\f\r");
    std::string_view rest = text.substr(std::min(first, text.size()));
    bool const isNegative = rest.starts_with('-');
    rest.remove_prefix(isNegative || rest.starts_with('+') ? 1 : 0);
    // With its sign gone a number that is out of range is too large.
    std::size_t const digits = std::min(rest.find_first_not_of("0123456789"), rest.size());
    if (digits == 0)
    {
        return false;
    }
    int magnitude = 0;
    bool const isInRange = std::from_chars(rest.data(), rest.data() + digits, magnitude).ec == std::errc();
    value = isInRange ? (isNegative ? -magnitude : magnitude)
                      : (isNegative ? std::numeric_limits<int>::min() : std::numeric_limits<int>::max());
    text = rest.substr(digits);
    return true;
}

TextTableLines::TextTableLines(std::string const& path, LineEnd lineEnd) : m_file(std::fopen(path.c_str(), "r")), m_lineEnd(lineEnd)
{
}

bool TextTableLines::read(std::string& line)
{
    char buffer[200];
    if (!std::fgets(buffer, sizeof buffer, m_file.get()))
    {
        return false;
    }
    ++m_lineNumber;
    line = buffer;
    cutEnd(line, '\n');
    if (m_lineEnd == LineEnd::CarriageReturnAndLineFeed)
    {
        cutEnd(line, '\r');
    }
    line = ToolsStripBlank(std::move(line));
    return true;
}

bool TextTableLines::readFilled(std::string& line)
{
    while (read(line))
    {
        if (!line.empty())
        {
            return true;
        }
    }
    return false;
}

bool TextTableLines::readContent(std::string& line)
{
    while (readFilled(line))
    {
        if (!line.starts_with('#'))
        {
            return true;
        }
    }
    return false;
}

} // namespace Color
