// Where a site keeps its transforms, and what short names (aliases) stand for.
#include "utils/preferences.h"

#include "utils/errorMessage.h"
#include "utils/locations.h"
#include "utils/preferencesLock.h"

namespace Color
{

namespace
{

// What comes with the library, below the system's transforms.
struct DefaultAlias
{
    char const* alias;
    char const* path;
    bool canBeRestored; // Its path is told by getDefaultPathForAlias.
};

constexpr DefaultAlias kDefaultAliases[] = {
    {ALIAS_GRAPHICS_MONITOR, "/interchange/sRGB/CIE-XYZ_to_sRGB.ctf", true},
    {ALIAS_BROADCAST_MONITOR, "/display/broadcast/CIE-XYZ_to_HD-video.ctf", true},
    {"defaultLook", "/misc/identity.ctf", true},
    {"SceneToOutputBridge", "/RRT+ODT/ACES_to_CIE-XYZ_v0.1.1.ctf", false},
    {"OutputToSceneBridge", "/misc/identity.ctf", false},
};

// The map, whether it is const or not, gives its entry as such.
template <class Map>
auto& entryOf(Map& aliases, std::string const& alias)
{
    auto const entry = aliases.find(alias);
    if (entry == aliases.end())
    {
        throw failure(ErrorIds::kAliasNotFound, Module::kPreferences, alias);
    }
    return entry->second;
}

std::map<std::string, std::string> collectDefaultPaths()
{
    Utils::getSystemPath(); // Sets it where nothing has: what is kept are full paths.
    std::map<std::string, std::string> paths;
    for (DefaultAlias const& row : kDefaultAliases)
    {
        if (row.canBeRestored)
        {
            paths[row.alias] = Utils::getSystemColorTransformPath() + row.path;
        }
    }
    return paths;
}

} // namespace

void ReferenceTable::AliasInfo::modify(AliasInfo const& other)
{
    m_basePath = other.m_basePath;
    m_path = other.m_path;
    notifyObservers();
}

ReferenceTable::AliasInfo const& ReferenceTable::findAlias(std::string const& alias) const
{
    return entryOf(m_aliases, alias);
}

void ReferenceTable::addAlias(std::string const& alias, AliasInfo const& info)
{
    if (alias.empty())
    {
        throw failure(ErrorIds::kAliasEmpty, Module::kPreferences);
    }
    if (info.getPath().empty())
    {
        throw failure(ErrorIds::kPathEmpty, Module::kPreferences);
    }
    auto const [entry, isNew] = m_aliases.try_emplace(alias, info);
    if (!isNew)
    {
        entry->second.modify(info);
    }
}

void ReferenceTable::registerAlias(std::string const& alias, Observer* observer)
{
    if (!alias.empty())
    {
        entryOf(m_aliases, alias).addObserver(observer);
    }
}

void ReferenceTable::deregisterAlias(std::string const& alias, Observer* observer)
{
    if (!alias.empty())
    {
        entryOf(m_aliases, alias).removeObserver(observer);
    }
}

Preferences::Preferences(std::string const& sharedPath, std::string const& systemTransformPath) : m_sharedPath(sharedPath)
{
    for (DefaultAlias const& row : kDefaultAliases)
    {
        m_referenceTable.addAlias(row.alias, {systemTransformPath + row.path, Tavrin::BASE_PATH_NONE});
    }
}

std::string Preferences::getSharedPath() const
{
    return Utils::overriddenBy("TAVRIN_OVERRIDE_SHARED_PATH", m_sharedPath);
}

void Preferences::setSharedPath(std::string const& path)
{
    if (path.empty())
    {
        throw failure(ErrorIds::kSharedPathEmpty, Module::kPreferences);
    }
    m_sharedPath = path;
}

bool Preferences::syncGraphicsMonitor(std::string const& systemsPath)
{
    if (!m_autoConfigureMonitorProfile || systemsPath.empty())
    {
        return false;
    }
    ReferenceTable::AliasInfo const& info = m_referenceTable.findAlias(ALIAS_GRAPHICS_MONITOR);
    if (info.getBasePath() == Tavrin::BASE_PATH_NONE && info.getPath() == systemsPath)
    {
        return false;
    }
    m_referenceTable.addAlias(ALIAS_GRAPHICS_MONITOR, {systemsPath, Tavrin::BASE_PATH_NONE});
    return true;
}

namespace Utils
{

std::string const& getDefaultPathForAlias(char const* alias)
{
    if (!alias || *alias == '\0')
    {
        throw failure(ErrorIds::kAliasEmpty, Module::kPreferences);
    }
    auto const lock = lockPreferences(); // Before the paths are made, which takes it too.
    static std::map<std::string, std::string> const paths = collectDefaultPaths();
    auto const path = paths.find(alias);
    if (path == paths.end())
    {
        throw failure(ErrorIds::kNoDefaultPath, Module::kPreferences, alias);
    }
    return path->second;
}

} // namespace Utils

} // namespace Color
