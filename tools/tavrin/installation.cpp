// Where the program finds the transforms and the configuration that it was installed with.
#include "installation.h"

#include "transforms.h"

#include <tavrin/tavrin.h>

#include <cstdlib>
#include <filesystem>
#include <system_error>

namespace Program
{

namespace
{

namespace fs = std::filesystem;

// From the folder of the program: where an installation has it, and where a build does.
constexpr char const* kPlaces[] = {"../share/tavrin", "../../share/tavrin"};

bool isSet(char const* variable)
{
    char const* const value = std::getenv(variable);
    return value && *value != '\0';
}

} // namespace

void useOwnInstallation()
{
    std::error_code error;
    const fs::path program = fs::read_symlink("/proc/self/exe", error);
    if (error || isSet("TAVRIN_OVERRIDE_SYSTEM_TRANSFORM_LOCATION"))
        return;
    for (char const* place : kPlaces)
    {
        const fs::path installation = (program.parent_path() / place).lexically_normal();
        if (fs::is_directory(installation / "transforms", error))
        {
            check(Tavrin::configurePaths(installation.c_str(), (installation / "tavrinConfig.xml").c_str(),
                                         Tavrin::getDefaultSharedColorTransformPath()),
                  "cannot use the installation");
            return;
        }
    }
}

} // namespace Program
