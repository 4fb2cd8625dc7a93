// The preferences of the process.
#include "xml/preferencesInstance.h"

#include "utils/errorMessage.h"
#include "utils/locations.h"
#include "utils/logger.h"
#include "utils/preferencesLock.h"
#include "xml/xmlPreferencesReader.h"
#include "xml/xmlPreferencesWriter.h"

#include <atomic>

namespace Color::Xml::Impl
{

namespace
{

// A plain pointer, since objects that outlive the library's static ones may ask for it at the end of the process.
std::atomic<PreferencesInstance*> g_instance = nullptr;

// Null when the file is missing or broken.
std::shared_ptr<Preferences> readPreferences()
{
    try
    {
        XMLPreferencesReader const reader;
        reader.parseFile(Utils::getConfigFilePath());
        return reader.getPreferences();
    }
    catch (Exception const&)
    {
        return nullptr;
    }
}

} // namespace

PreferencesInstance& PreferencesInstance::getInstance()
{
    if (!isInitialized())
    {
        auto const lock = lockPreferences();
        if (!isInitialized()) // Another thread may have loaded it meanwhile.
        {
            g_instance = new PreferencesInstance;
        }
    }
    return *g_instance;
}

bool PreferencesInstance::isInitialized()
{
    return g_instance != nullptr;
}

void PreferencesInstance::reset()
{
    auto const lock = lockPreferences();
    delete g_instance.exchange(nullptr);
}

PreferencesInstance::PreferencesInstance()
{
    auto const lock = lockPreferences();
    _load();
}

void PreferencesInstance::_load()
{
    m_preferences = readPreferences();
    bool const isRead = m_preferences != nullptr;
    if (!isRead)
    {
        m_preferences = std::make_shared<Preferences>(Utils::getDefaultSharedPath(), Utils::getSystemColorTransformPath());
    }
    _updateGfxAliasFromAutoConfigure();
    if (!isRead)
    {
        save();
    }
}

void PreferencesInstance::_updateGfxAliasFromAutoConfigure()
{
    try
    {
        if (m_preferences->syncGraphicsMonitor(Utils::getGraphicsMonitorPathFromOS()))
        {
            save();
        }
    }
    catch (Exception const& exception)
    {
        Logger::log(LOG_USER, "Unable to sync graphicsMonitor to OS: %s", exception.getMessage().c_str());
    }
}

void PreferencesInstance::save() const
{
    auto const lock = lockPreferences();
    XMLPreferencesWriter::writeFile(m_preferences, Utils::getConfigFilePath());
}

} // namespace Color::Xml::Impl
