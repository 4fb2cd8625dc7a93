// Texts as the terminal shows them.
#ifndef TAVRIN_PROGRAM_TEXT_H
#define TAVRIN_PROGRAM_TEXT_H

#include <string>
#include <string_view>

namespace Program
{

// Everything on one line: runs of white space become one blank, other control characters question marks. File names and
// transforms come from strangers, and a terminal obeys control characters.
std::string oneLine(std::string_view text);

} // namespace Program

#endif
