// The one lock of what the process has once: its locations and its preferences.
#include "utils/preferencesLock.h"

namespace Color
{

std::unique_lock<std::recursive_mutex> lockPreferences()
{
    static std::recursive_mutex mutex;
    return std::unique_lock(mutex);
}

} // namespace Color
