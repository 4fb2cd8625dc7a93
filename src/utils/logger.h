// The library's log: lines that go to a function of the caller's, or to standard output.
#ifndef TAVRIN_UTILS_LOGGER_H
#define TAVRIN_UTILS_LOGGER_H

#include <tavrin/logger.h>

namespace Color
{

using Tavrin::LOG_DEBUG;
using Tavrin::LOG_USER;
using Tavrin::LogLevel;

class Logger
{
public:
    using LogFunction = void (*)(LogLevel level, char const* text);

    // Returns the function that was installed. Null reinstalls the default, which prints lines up to the current level.
    static LogFunction setLogFunc(LogFunction function);

    // Returns the old level.
    static LogLevel setLogLevel(LogLevel level);
    static LogLevel getLogLevel();

    // "USER", "DEBUG", null for another value.
    static char const* levelToStr(LogLevel level);

    // Formats (at most 4095 characters) and hands the line to the installed function. A null or empty format does nothing.
    static void log(LogLevel level, char const* format, ...) __attribute__((format(printf, 2, 3)));
};

} // namespace Color

#endif
