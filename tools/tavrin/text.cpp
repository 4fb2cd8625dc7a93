// Texts as the terminal shows them.
#include "text.h"

namespace Program
{

std::string oneLine(std::string_view text)
{
    std::string line;
    for (char c : text)
    {
        const bool blank = c == ' ' || (c >= '\t' && c <= '\r');
        if (!blank)
            line += (c >= '\0' && c < ' ') || c == '\x7f' ? '?' : c;
        else if (!line.empty() && line.back() != ' ')
            line += ' ';
    }
    if (!line.empty() && line.back() == ' ')
        line.pop_back();
    return line;
}

} // namespace Program
