// Texts as the terminal shows them.
#ifndef TAVRIN_PROGRAM_TEXT_H
#define TAVRIN_PROGRAM_TEXT_H

#include <algorithm>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

namespace Program
{

// Texts of file names and transforms come from strangers, and a terminal obeys control characters.

// White space becomes blanks, other control characters question marks; blanks at the end go.
std::string printable(std::string_view text);

// The same with runs of blanks made one and none at the start: what fits on one line.
std::string oneLine(std::string_view text);

// Names, as "8i, 16i".
std::string commaSeparated(std::vector<std::string> const& names);

// The name that a function gives each item, as above.
template <class Items, class NameOf>
std::string commaSeparated(Items const& items, NameOf nameOf)
{
    std::vector<std::string> names;
    std::transform(std::begin(items), std::end(items), std::back_inserter(names), nameOf);
    return commaSeparated(names);
}

} // namespace Program

#endif
