// The version of the library. The build reads it from here.
#ifndef TAVRIN_VERSION_H
#define TAVRIN_VERSION_H

#include <tavrin/export.h>

#define TAVRIN_VERSION_MAJOR 0
#define TAVRIN_VERSION_MINOR 1
#define TAVRIN_VERSION_PATCH 0
#define TAVRIN_VERSION_STRING "0.1.0"

namespace Tavrin
{

// The version of the library that runs, such as "0.1.0"; compare it with TAVRIN_VERSION_STRING, which these headers tell.
TAVRIN_API char const* getVersion();

} // namespace Tavrin

#endif
