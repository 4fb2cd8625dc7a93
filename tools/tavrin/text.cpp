// Texts as the terminal shows them.
#include "text.h"

#include <fmt/ranges.h>

namespace Program
{

namespace
{

bool isSpace(char c)
{
    return c == ' ' || (c >= '\t' && c <= '\r');
}

bool isControl(char c)
{
    return (c >= '\0' && c < ' ') || c == '\x7f';
}

// The second block of control characters, U+0080 to U+009F, as UTF-8 has it.
bool isLongControl(std::string_view text)
{
    return text.size() >= 2 && text[0] == '\xc2' && static_cast<unsigned char>(text[1]) < 0xa0;
}

} // namespace

std::string printable(std::string_view text)
{
    std::string result;
    for (std::size_t i = 0; i < text.size(); ++i)
    {
        const bool longControl = isLongControl(text.substr(i));
        if (isSpace(text[i]))
            result += ' ';
        else
            result += longControl || isControl(text[i]) ? '?' : text[i];
        i += longControl ? 1 : 0;
    }
    result.erase(result.find_last_not_of(' ') + 1);
    return result;
}

std::string oneLine(std::string_view text)
{
    std::string line;
    for (char c : printable(text))
    {
        if (c != ' ' || (!line.empty() && line.back() != ' '))
            line += c;
    }
    return line;
}

std::string commaSeparated(std::vector<std::string> const& names)
{
    return fmt::format("{}", fmt::join(names, ", "));
}

} // namespace Program
