// The reader of the configuration file.
#ifndef TAVRIN_XML_XML_PREFERENCES_READER_H
#define TAVRIN_XML_XML_PREFERENCES_READER_H

#include "utils/preferences.h"

#include <memory>
#include <string>

namespace Color
{

class XMLPreferencesReader
{
public:
    XMLPreferencesReader();
    ~XMLPreferencesReader();

    // One of them, once. A Color::Exception tells what is wrong with the document.
    void parseFile(std::string const& path) const;
    void parseBuffer(std::string const& text) const;

    // What the document tells, and nothing else: no defaults. Null unless it was read without a failure.
    std::shared_ptr<Preferences> getPreferences() const;

private:
    class Impl;
    std::unique_ptr<Impl> m_impl;
};

} // namespace Color

#endif
