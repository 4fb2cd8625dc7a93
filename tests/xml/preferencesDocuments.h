// Configuration files written in tests, and what preferences come to.
#ifndef TAVRIN_TESTS_XML_PREFERENCES_DOCUMENTS_H
#define TAVRIN_TESTS_XML_PREFERENCES_DOCUMENTS_H

#include "utils/preferences.h"

#include <string>
#include <tuple>
#include <vector>

namespace XmlTest
{

// Alias, path, base path.
using Reference = std::tuple<std::string, std::string, Tavrin::BasePath>;

inline std::vector<Reference> referencesOf(Color::Preferences const& preferences)
{
    std::vector<Reference> references;
    for (auto const& [alias, info] : preferences.getReferenceTable().getAliasInfoMap())
        references.emplace_back(alias, info.getPath(), info.getBasePath());
    return references;
}

// On line 1 with everything in it, unless the content has line breaks.
inline std::string inConfig(std::string const& content)
{
    return "<TavrinConfig version='1.0'>" + content + "</TavrinConfig>";
}

inline std::string inTable(std::string const& content)
{
    return inConfig("<ReferenceTable>" + content + "</ReferenceTable>");
}

} // namespace XmlTest

#endif
