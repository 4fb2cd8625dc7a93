// Where a site keeps its transforms, and what short names (aliases) stand for.
#ifndef TAVRIN_UTILS_PREFERENCES_H
#define TAVRIN_UTILS_PREFERENCES_H

#include "utils/observable.h"

#include <tavrin/vocabulary.h>

#include <map>
#include <string>

namespace Color
{

inline constexpr char ALIAS_GRAPHICS_MONITOR[] = "graphicsMonitor";
inline constexpr char ALIAS_BROADCAST_MONITOR[] = "broadcastMonitor";

// What aliases stand for, and who wants to know when that changes.
class ReferenceTable
{
public:
    // The transform file of an alias. A copy has the same observers.
    class AliasInfo : public Observable
    {
    public:
        AliasInfo(std::string const& path, Tavrin::BasePath basePath) : m_path(path), m_basePath(basePath) {}

        std::string const& getPath() const { return m_path; }
        Tavrin::BasePath getBasePath() const { return m_basePath; }

        // Takes over path and base path and tells the observers, which stay.
        void modify(AliasInfo const& other);

    private:
        std::string m_path;
        Tavrin::BasePath m_basePath;
    };
    using AliasInfoMap = std::map<std::string, AliasInfo>;

    AliasInfoMap const& getAliasInfoMap() const { return m_aliases; }
    // Refuses an unknown alias. The result stays good until the alias changes.
    AliasInfo const& findAlias(std::string const& alias) const;
    // Modifies an alias that is there already; a new one comes with the observers of the info. Refuses empty texts.
    void addAlias(std::string const& alias, AliasInfo const& info);

    // An empty alias does nothing, an unknown one is refused.
    void registerAlias(std::string const& alias, Observer* observer);
    void deregisterAlias(std::string const& alias, Observer* observer);

private:
    AliasInfoMap m_aliases;
};

// Nothing here takes a lock: who uses the process's preferences holds lockPreferences() meanwhile.
class Preferences
{
public:
    // Everything is empty.
    Preferences() = default;
    // The aliases that the library comes with, below the system's transforms.
    Preferences(std::string const& sharedPath, std::string const& systemTransformPath);
    Preferences(Preferences const&) = delete;
    Preferences& operator=(Preferences const&) = delete;

    ReferenceTable const& getReferenceTable() const { return m_referenceTable; }
    ReferenceTable& getReferenceTable() { return m_referenceTable; }

    // What setSharedPath was given.
    std::string const& getStoredSharedPath() const { return m_sharedPath; }
    // The environment variable TAVRIN_OVERRIDE_SHARED_PATH, or what is stored.
    std::string getSharedPath() const;
    // Refuses an empty text.
    void setSharedPath(std::string const& path);

    bool getAutoConfigureMonitorProfile() const { return m_autoConfigureMonitorProfile; }
    void setAutoConfigureMonitorProfile(bool value) { m_autoConfigureMonitorProfile = value; }
    // Where the monitor's profile is to follow the system: lets its alias stand for the system's path, unless that is empty. True
    // when that changed something. Throws where there is no such alias.
    bool syncGraphicsMonitor(std::string const& systemsPath);

    void registerAlias(std::string const& alias, Observer* observer) { m_referenceTable.registerAlias(alias, observer); }
    void deregisterAlias(std::string const& alias, Observer* observer) { m_referenceTable.deregisterAlias(alias, observer); }

private:
    std::string m_sharedPath;
    ReferenceTable m_referenceTable;
    bool m_autoConfigureMonitorProfile = false;
};

namespace Utils
{

// The file that comes with the library for "graphicsMonitor", "broadcastMonitor" or "defaultLook"; other aliases are refused. The
// text lives to the end of the process.
std::string const& getDefaultPathForAlias(char const* alias);

} // namespace Utils

} // namespace Color

#endif
