// Keeps every test program off the machine's own folders: a test that needs preferences says where they are.
#include <cstdlib>
#include <initializer_list>

namespace
{

// No file can ever be in a folder that is a device.
constexpr char kNowhere[] = "/dev/null/tavrin";

[[maybe_unused]] bool const isKeptOff = []
{
    for (char const* const variable :
         {"TAVRIN_OVERRIDE_SYSTEM_TRANSFORM_LOCATION", "TAVRIN_OVERRIDE_CONFIG_PATH", "TAVRIN_OVERRIDE_SHARED_PATH"})
        ::setenv(variable, kNowhere, 1);
    return true;
}();

} // namespace
