// Log lines kept for a test. For tests that link the library's internals.
#ifndef TAVRIN_TESTS_LOG_CAPTURE_H
#define TAVRIN_TESTS_LOG_CAPTURE_H

#include "utils/logger.h"

#include <string>
#include <utility>
#include <vector>

// Receives all lines of all levels while it lives. One at a time.
class LogCapture
{
public:
    using Line = std::pair<Color::LogLevel, std::string>;

    LogCapture()
    {
        s_lines.clear();
        m_previous = Color::Logger::setLogFunc([](Color::LogLevel level, char const* text) { s_lines.emplace_back(level, text); });
    }
    LogCapture(LogCapture const&) = delete;
    LogCapture& operator=(LogCapture const&) = delete;
    ~LogCapture() { Color::Logger::setLogFunc(m_previous); }

    std::vector<Line> const& lines() const { return s_lines; }

private:
    inline static std::vector<Line> s_lines;
    Color::Logger::LogFunction m_previous;
};

#endif
