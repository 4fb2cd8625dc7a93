// Where things are on this machine.
#include "utils/locations.h"

#include "utils/errorMessage.h"
#include "utils/preferencesLock.h"
#include "utils/utils.h"

#include <boost/filesystem/path.hpp>

namespace Color::Utils
{

namespace
{

constexpr char kDefaultSystemPath[] = "/opt/Norvane/Halvard/Tavrin/2015.0.pr36";
constexpr char kDefaultSharedPath[] = "/opt/Norvane/Halvard/Tavrin/Shared/transforms";
constexpr char kTransformsFolder[] = "transforms";
constexpr char kConfigFileName[] = "tavrinConfig.xml";

struct Locations
{
    std::string systemPath;
    std::string systemTransformPath;
    std::string configFilePath;
    std::string defaultSharedPath;
};

// Read and written with the lock held.
Locations& locations()
{
    static Locations values;
    return values;
}

std::string joined(std::string const& folder, char const* component)
{
    return (boost::filesystem::path(folder) / component).string();
}

std::string requirePath(char const* path)
{
    if (!path || *path == '\0')
    {
        throw failure(ErrorIds::kPathEmpty, Module::kPreferences);
    }
    return path;
}

// The text of a location. One that is empty is set first, to the platform's form of its default.
template <class GetDefault>
std::string getOrSet(std::string Locations::*location, void (*set)(char const*), GetDefault const& getDefault)
{
    auto const lock = lockPreferences();
    if ((locations().*location).empty())
    {
        std::string path = getDefault();
        adjustSystemPaths(path);
        set(path.c_str());
    }
    return locations().*location;
}

} // namespace

void setSystemPath(char const* path)
{
    auto const lock = lockPreferences();
    locations().systemPath = overriddenBy("TAVRIN_OVERRIDE_SYSTEM_TRANSFORM_LOCATION", requirePath(path));
    locations().systemTransformPath = joined(locations().systemPath, kTransformsFolder);
}

std::string getSystemPath()
{
    return getOrSet(&Locations::systemPath, &setSystemPath, [] { return kDefaultSystemPath; });
}

std::string getSystemColorTransformPath()
{
    auto const lock = lockPreferences();
    return locations().systemTransformPath;
}

void setConfigFilePath(char const* path)
{
    auto const lock = lockPreferences();
    locations().configFilePath = overriddenBy("TAVRIN_OVERRIDE_CONFIG_PATH", requirePath(path));
}

std::string getConfigFilePath()
{
    return getOrSet(&Locations::configFilePath, &setConfigFilePath, [] { return joined(getSystemPath(), kConfigFileName); });
}

void setDefaultSharedPath(char const* path)
{
    auto const lock = lockPreferences();
    locations().defaultSharedPath = requirePath(path);
}

std::string getDefaultSharedPath()
{
    return getOrSet(&Locations::defaultSharedPath, &setDefaultSharedPath, [] { return kDefaultSharedPath; });
}

void adjustSystemPaths(std::string&) {}

std::string getGraphicsMonitorPathFromOS()
{
    return std::string();
}

std::string overriddenBy(char const* variable, std::string const& path)
{
    char const* const value = Foundation::Utils::getEnv(variable);
    return value && *value != '\0' ? value : path;
}

} // namespace Color::Utils
