// Which aliases of the preferences an observer wants to know of.
#ifndef TAVRIN_TAVRIN_ALIAS_REGISTRATION_H
#define TAVRIN_TAVRIN_ALIAS_REGISTRATION_H

#include "utils/observable.h"
#include "utils/preferences.h"

#include <memory>
#include <set>
#include <string>

namespace Tavrin::Impl
{

// Remembers where the observer was registered, and takes it off there, whatever has become of the aliases and the preferences
// since. As a member it comes last, so that it goes first: when its destructor returns, no other thread is in the observer's
// update.
class AliasRegistration
{
public:
    // The observer outlives it.
    explicit AliasRegistration(Color::Observer& observer) : m_observer(observer) {}
    AliasRegistration(AliasRegistration const&) = delete;
    AliasRegistration& operator=(AliasRegistration const&) = delete;
    ~AliasRegistration() { deregister(); }

    // These aliases of the process's preferences, in place of those before. Throws when one of them is unknown.
    void registerTo(std::set<std::string> const& aliases);
    void deregister();

private:
    Color::Observer& m_observer;
    std::weak_ptr<Color::Preferences> m_preferences;
    std::set<std::string> m_aliases;
};

} // namespace Tavrin::Impl

#endif
