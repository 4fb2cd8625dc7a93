// Where things are on this machine: the installation, the configuration file, and the transforms of a site.
#ifndef TAVRIN_UTILS_LOCATIONS_H
#define TAVRIN_UTILS_LOCATIONS_H

#include <string>

namespace Color::Utils
{

// Each location is empty until somebody sets it; asking for one that is empty sets it to its default, except where told.
// A null or empty path is refused. Environment variables come before what is set here:
// TAVRIN_OVERRIDE_SYSTEM_TRANSFORM_LOCATION before the system path, TAVRIN_OVERRIDE_CONFIG_PATH before the configuration file.

// The folder of the installation.
void setSystemPath(char const* path);
std::string getSystemPath();

// The folder "transforms" in that of the installation. Empty as long as nothing has set the system path.
std::string getSystemColorTransformPath();

// A file, not a folder.
void setConfigFilePath(char const* path);
std::string getConfigFilePath();

// Where a site keeps its transforms if the preferences say nothing else.
void setDefaultSharedPath(char const* path);
std::string getDefaultSharedPath();

// A hook for platforms on which the fixed default paths, and those in a configuration file, stand for something else. Here they
// do not.
void adjustSystemPaths(std::string& path);

// A hook for platforms that know the profile of the monitor. Empty here.
std::string getGraphicsMonitorPathFromOS();

// The variable's value where it is set and not empty, else the path.
std::string overriddenBy(char const* variable, std::string const& path);

} // namespace Color::Utils

#endif
