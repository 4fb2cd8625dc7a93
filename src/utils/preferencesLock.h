// The one lock of what the process has once: its locations and its preferences.
#ifndef TAVRIN_UTILS_PREFERENCES_LOCK_H
#define TAVRIN_UTILS_PREFERENCES_LOCK_H

#include <mutex>

namespace Color
{

// Held by the thread until the result goes; the same thread may take it again. Locations take it themselves. The accessors of
// Preferences do not, so that one may look and then act: whoever uses those of the process holds it meanwhile. No rendering does.
[[nodiscard]] std::unique_lock<std::recursive_mutex> lockPreferences();

} // namespace Color

#endif
