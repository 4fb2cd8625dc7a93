// Texts as the terminal shows them.
#ifndef TAVRIN_PROGRAM_TEXT_H
#define TAVRIN_PROGRAM_TEXT_H

#include <string>
#include <string_view>

namespace Program
{

// Texts of file names and transforms come from strangers, and a terminal obeys control characters.

// White space becomes blanks, other control characters question marks; blanks at the end go.
std::string printable(std::string_view text);

// The same with runs of blanks made one and none at the start: what fits on one line.
std::string oneLine(std::string_view text);

} // namespace Program

#endif
