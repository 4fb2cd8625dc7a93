// Which aliases of the preferences an observer wants to know of.
#include "tavrin/aliasRegistration.h"

#include "utils/preferencesLock.h"
#include "xml/preferencesInstance.h"

namespace Tavrin::Impl
{

void AliasRegistration::registerTo(std::set<std::string> const& aliases)
{
    auto const lock = Color::lockPreferences();
    deregister();
    std::shared_ptr<Color::Preferences> const preferences = Color::Xml::Impl::PreferencesInstance::getInstance().getPreferences();
    m_preferences = preferences;
    for (std::string const& alias : aliases)
    {
        preferences->registerAlias(alias, &m_observer);
        m_aliases.insert(alias);
    }
}

void AliasRegistration::deregister()
{
    auto const lock = Color::lockPreferences(); // Another thread may be at the aliases, in the observer's update.
    if (std::shared_ptr<Color::Preferences> const preferences = m_preferences.lock())
    {
        for (std::string const& alias : m_aliases)
            preferences->deregisterAlias(alias, &m_observer);
    }
    m_aliases.clear();
}

} // namespace Tavrin::Impl
