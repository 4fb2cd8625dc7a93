// The preferences of the process: read from the configuration file when somebody first asks for them.
#ifndef TAVRIN_XML_PREFERENCES_INSTANCE_H
#define TAVRIN_XML_PREFERENCES_INSTANCE_H

#include "utils/preferences.h"

#include <memory>

namespace Color::Xml::Impl
{

// Loading and saving take lockPreferences().
class PreferencesInstance
{
public:
    // Loads the file the first time. A file that is missing or broken is replaced by one with the defaults; if that can't be
    // written, this throws, and the next call tries again.
    static PreferencesInstance& getInstance();
    static bool isInitialized();
    // Forgets what was loaded: the next use loads the file again.
    static void reset();

    std::shared_ptr<Preferences> const& getPreferences() const { return m_preferences; }
    // Writes the configuration file.
    void save() const;

private:
    PreferencesInstance();
    void _load();
    void _updateGfxAliasFromAutoConfigure();

    std::shared_ptr<Preferences> m_preferences;
};

} // namespace Color::Xml::Impl

#endif
