// The public functions about locations, preferences and aliases.
#include <tavrin/preferences.h>

#include "tavrin/requireParameter.h"
#include "utils/errorMessage.h"
#include "utils/locations.h"
#include "utils/preferencesLock.h"
#include "xml/catalogManagerInstance.h"
#include "xml/preferencesInstance.h"
#include "xml/xmlPreferencesWriter.h"

#include <string>

namespace Tavrin
{

namespace
{

using Color::ReferenceTable;
using Color::statusOf;
using Color::XMLPreferencesWriter;
using Color::Xml::Impl::CatalogManagerInstance;
using Color::Xml::Impl::PreferencesInstance;
namespace ErrorIds = Color::ErrorIds;
namespace Module = Color::Module;

// Runs the body with the preferences of the process, which no other thread changes meanwhile.
template <class Body>
void withPreferences(Body&& body)
{
    auto const lock = Color::lockPreferences();
    body(*PreferencesInstance::getInstance().getPreferences());
}

// The same, and writes what the body changed.
template <class Body>
void changePreferences(Body&& body)
{
    auto const lock = Color::lockPreferences();
    PreferencesInstance const& instance = PreferencesInstance::getInstance();
    body(*instance.getPreferences());
    instance.save();
}

// Keeps a text for a caller, who holds a pointer to it; the pointer stays good as long as the text does not change.
char const* keep(std::string& kept, std::string const& text)
{
    if (kept != text)
        kept = text;
    return kept.c_str();
}

void requireText(char const* text, char const* name)
{
    requireParameter(text, name, Module::kLibraryPreferences);
}

void requireBasePath(BasePath basePath)
{
    if (basePath > BASE_PATH_SHARED)
        throw Color::failure(ErrorIds::kInvalidParameter, Module::kLibraryPreferences);
}

} // namespace

TavStatus configurePaths(char const* systemPath, char const* configFilePath, char const* defaultSharedPath)
{
    return statusOf(
        [&]
        {
            auto const lock = Color::lockPreferences();
            if (PreferencesInstance::isInitialized())
                throw Color::failure(ErrorIds::kConfigurationLoaded, Module::kLibraryPreferences);
            Color::Utils::setSystemPath(systemPath);
            Color::Utils::setConfigFilePath(configFilePath);
            Color::Utils::setDefaultSharedPath(defaultSharedPath);
        });
}

char const* getDefaultSharedColorTransformPath()
{
    auto const lock = Color::lockPreferences();
    static std::string path;
    return keep(path, Color::Utils::getDefaultSharedPath());
}

char const* getSystemColorTransformPath()
{
    auto const lock = Color::lockPreferences();
    static std::string path;
    return keep(path, Color::Utils::getSystemColorTransformPath());
}

char const* getConfigFilePath()
{
    auto const lock = Color::lockPreferences();
    static std::string path;
    return keep(path, Color::Utils::getConfigFilePath());
}

TavStatus getSharedColorTransformPath(char const*& path)
{
    static std::string kept;
    return statusOf(
        [&] { withPreferences([&](Color::Preferences const& preferences) { path = keep(kept, preferences.getSharedPath()); }); });
}

TavStatus setSharedColorTransformPath(char const* path)
{
    return statusOf(
        [&]
        {
            requireText(path, "path");
            XMLPreferencesWriter::requireStorable(path);
            changePreferences([&](Color::Preferences& preferences) { preferences.setSharedPath(path); });
            CatalogManagerInstance::getInstance().reloadCatalogs();
        });
}

TavStatus findAliasInPreferences(char const* alias, char const*& path, BasePath& basePath)
{
    return statusOf(
        [&]
        {
            requireText(alias, "alias");
            withPreferences(
                [&](Color::Preferences const& preferences)
                {
                    ReferenceTable::AliasInfo const& info = preferences.getReferenceTable().findAlias(alias);
                    path = info.getPath().c_str();
                    basePath = info.getBasePath();
                });
        });
}

TavStatus addAliasInPreferences(char const* alias, char const* path, BasePath basePath)
{
    return statusOf(
        [&]
        {
            requireText(alias, "alias");
            requireText(path, "path");
            requireBasePath(basePath);
            XMLPreferencesWriter::requireStorable(alias);
            XMLPreferencesWriter::requireStorable(path);
            changePreferences(
                [&](Color::Preferences& preferences) {
                    preferences.getReferenceTable().addAlias(alias, {path, basePath});
                });
        });
}

TavStatus getDefaultPathForAlias(char const* alias, char const*& path)
{
    return statusOf([&] { path = Color::Utils::getDefaultPathForAlias(alias).c_str(); });
}

TavStatus getAutoConfigureMonitorProfile(bool& value)
{
    return statusOf(
        [&]
        { withPreferences([&](Color::Preferences const& preferences) { value = preferences.getAutoConfigureMonitorProfile(); }); });
}

TavStatus setAutoConfigureMonitorProfile(bool value)
{
    return statusOf(
        [&]
        {
            auto const lock = Color::lockPreferences();
            PreferencesInstance const& instance = PreferencesInstance::getInstance();
            Color::Preferences& preferences = *instance.getPreferences();
            if (preferences.getAutoConfigureMonitorProfile() == value)
                return;
            std::string const path = value ? Color::Utils::getGraphicsMonitorPathFromOS()
                                           : Color::Utils::getDefaultPathForAlias(Color::ALIAS_GRAPHICS_MONITOR);
            if (!path.empty())
                preferences.getReferenceTable().addAlias(Color::ALIAS_GRAPHICS_MONITOR, {path, BASE_PATH_NONE});
            preferences.setAutoConfigureMonitorProfile(value);
            instance.save();
        });
}

} // namespace Tavrin
