// Log lines: formatted here, written by the installed function.
#include "utils/logger.h"

#include <atomic>
#include <cstdarg>
#include <cstdio>

namespace Color
{

namespace
{

constexpr std::size_t kLineSize = 4096;

std::atomic<LogLevel> currentLevel = LOG_USER;

void printLine(LogLevel level, char const* text)
{
    if (text && *text && level <= currentLevel)
    {
        std::puts(text);
    }
}

std::atomic<Logger::LogFunction> currentFunction = printLine;

} // namespace

Logger::LogFunction Logger::setLogFunc(LogFunction function)
{
    return currentFunction.exchange(function ? function : printLine);
}

LogLevel Logger::setLogLevel(LogLevel level)
{
    return currentLevel.exchange(level);
}

LogLevel Logger::getLogLevel()
{
    return currentLevel;
}

char const* Logger::levelToStr(LogLevel level)
{
    switch (level)
    {
    case LOG_USER:
        return "USER";
    case LOG_DEBUG:
        return "DEBUG";
    }
    return nullptr;
}

void Logger::log(LogLevel level, char const* format, ...)
{
    if (!format || !*format)
    {
        return;
    }
    char line[kLineSize] = "";
    std::va_list arguments;
    va_start(arguments, format);
    std::vsnprintf(line, sizeof(line), format, arguments);
    va_end(arguments);
    currentFunction.load()(level, line);
}

} // namespace Color
