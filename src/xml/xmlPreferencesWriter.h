// The writer of the configuration file.
#ifndef TAVRIN_XML_XML_PREFERENCES_WRITER_H
#define TAVRIN_XML_XML_PREFERENCES_WRITER_H

#include "utils/preferences.h"

#include <memory>
#include <string>

namespace Color
{

class XMLPreferencesWriter
{
public:
    // Replaces the file at once and as a whole. Overrides by environment variables are not written.
    static void writeFile(std::shared_ptr<Preferences> const& preferences, std::string const& path);

    // Refuses a text that would not come back from the file as it is: one that is not in UTF-8, or that has control characters.
    static void requireStorable(std::string const& text);
};

} // namespace Color

#endif
