// Where things are on this machine, and what short names (aliases) for transform files stand for.
//
// The preferences of the process are read from the configuration file when something first needs them, and written back on every
// change; a file that is missing or broken is replaced by one with the defaults. Environment variables come first:
// TAVRIN_OVERRIDE_SYSTEM_TRANSFORM_LOCATION, TAVRIN_OVERRIDE_CONFIG_PATH and TAVRIN_OVERRIDE_SHARED_PATH.
//
// These functions may be called from any thread. A change of an alias resolves and finalizes every transform that follows it before
// the call returns, so that none of those may render meanwhile.
#ifndef TAVRIN_PREFERENCES_H
#define TAVRIN_PREFERENCES_H

#include <tavrin/export.h>
#include <tavrin/status.h>
#include <tavrin/vocabulary.h>

namespace Tavrin
{

// The folder of the installation, which has the folder "transforms"; the configuration file; and where a site keeps its transforms
// if the preferences say nothing else. To be called before anything uses the preferences: it fails when they are already loaded.
// None of the texts may be null or empty.
TAVRIN_API TavStatus configurePaths(char const* systemPath, char const* configFilePath, char const* defaultSharedPath);

// Texts stay valid until the paths are configured anew. The path of the system's transforms is empty as long as nothing has asked
// for the configuration file.
TAVRIN_API char const* getDefaultSharedColorTransformPath();
TAVRIN_API char const* getSystemColorTransformPath();
TAVRIN_API char const* getConfigFilePath();

// Where the transforms of the site are. The text stays valid until the next call, from any thread.
TAVRIN_API TavStatus getSharedColorTransformPath(char const*& path);
// Also reloads the catalogs (tavrin/template.h). Where that fails the path is set all the same.
TAVRIN_API TavStatus setSharedColorTransformPath(char const* path);

// What an alias stands for. The text stays valid until the alias is changed.
TAVRIN_API TavStatus findAliasInPreferences(char const* alias, char const*& path, BasePath& basePath);
// Adds the alias, or lets it stand for another file.
TAVRIN_API TavStatus addAliasInPreferences(char const* alias, char const* path, BasePath basePath);
// The file that comes with the library for "graphicsMonitor", "broadcastMonitor" or "defaultLook". The text lives to the end of the
// process.
TAVRIN_API TavStatus getDefaultPathForAlias(char const* alias, char const*& path);

// Whether the alias "graphicsMonitor" follows the monitor profile of the system, on platforms that tell one. Switching it off lets
// the alias stand for its default again.
TAVRIN_API TavStatus getAutoConfigureMonitorProfile(bool& value);
TAVRIN_API TavStatus setAutoConfigureMonitorProfile(bool value);

} // namespace Tavrin

#endif
