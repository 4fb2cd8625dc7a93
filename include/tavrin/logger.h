// Where the library's log lines go.
#ifndef TAVRIN_LOGGER_H
#define TAVRIN_LOGGER_H

#include <tavrin/export.h>
#include <tavrin/status.h>

namespace Tavrin
{

enum LogLevel : unsigned int
{
    LOG_USER = 0,
    LOG_DEBUG = 1
};

// Installs a function that receives every log line of every level, without a prefix or a line end, on the thread that logs;
// null goes back to printing lines of LOG_USER on standard output. Call it during set-up: it takes no lock.
TAVRIN_API TavStatus setLoggerFunction(void (*function)(LogLevel level, char const* text));

} // namespace Tavrin

#endif
