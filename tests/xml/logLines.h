// The texts of log lines.
#ifndef TAVRIN_TESTS_XML_LOG_LINES_H
#define TAVRIN_TESTS_XML_LOG_LINES_H

#include "support/logCapture.h"

#include <string>
#include <vector>

namespace XmlTest
{

// Readers log for people who look for a fault, so a line for everybody is marked.
inline std::vector<std::string> textsOf(LogCapture const& log)
{
    std::vector<std::string> texts;
    for (auto const& [level, text] : log.lines())
        texts.push_back(level == Color::LOG_DEBUG ? text : "for users: " + text);
    return texts;
}

} // namespace XmlTest

#endif
