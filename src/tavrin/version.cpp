// The version that was built.
#include <tavrin/version.h>

namespace Tavrin
{

char const* getVersion()
{
    return TAVRIN_VERSION_STRING;
}

} // namespace Tavrin
