// The caller's hold on the log.
#include "utils/logger.h"

namespace Tavrin
{

TavStatus setLoggerFunction(void (*function)(LogLevel level, char const* text))
{
    Color::Logger::setLogFunc(function);
    return TavStatus();
}

} // namespace Tavrin
