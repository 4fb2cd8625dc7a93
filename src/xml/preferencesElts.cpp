// The elements of the configuration file.
#include "xml/preferencesElts.h"

#include "utils/locations.h"
#include "utils/utils.h"
#include "xml/preferencesVocabulary.h"
#include "xml/xmlReaderAttributes.h"

namespace Color::Xml::Reader
{

namespace
{

AttributeReader::TakeText into(std::string& text)
{
    return [&text](char const* value) { text = value; };
}

// For an attribute that is empty or is not there.
void requireFilled(Element const& element, std::string const& value, ErrorSite empty)
{
    if (value.empty())
    {
        throw element.failure(empty, element.getTypeName());
    }
}

} // namespace

void PreferencesElt::start(char const** attributes)
{
    std::string version;
    AttributeReader(*this).text(ATTR_CONFIG_VERSION, into(version)).read(attributes);
    requireFilled(*this, version, ErrorIds::kPrefsVersionEmpty);
}

void AutoConfigureElt::start(char const** attributes)
{
    std::string value;
    AttributeReader(*this).text(ATTR_GRAPHICS_MONITOR, into(value)).read(attributes);
    if (Foundation::Utils::strcasecmp(value.c_str(), VALUE_TRUE) == 0)
    {
        parentAs<PreferencesElt>().getPreferences()->setAutoConfigureMonitorProfile(true);
    }
}

void PrefSharedHomeElt::start(char const** attributes)
{
    std::string path;
    AttributeReader(*this).text(ATTR_DIR, into(path)).read(attributes);
    requireFilled(*this, path, ErrorIds::kPrefsDirEmpty);
    Utils::adjustSystemPaths(path);
    parentAs<PreferencesElt>().getPreferences()->setSharedPath(path);
}

ReferenceTable& ReferenceTableElt::getReferenceTable() const
{
    return dynamic_cast<PreferencesElt&>(*getParent()).getPreferences()->getReferenceTable();
}

void AliasInfoElt::start(char const** attributes)
{
    std::string alias;
    std::string path;
    Tavrin::BasePath basePath = Tavrin::BASE_PATH_NONE;
    AttributeReader reader(*this);
    reader.text(ATTR_REF_ALIAS, into(alias));
    reader.text(ATTR_REF_PATH, into(path));
    reader.knownName(ATTR_REF_BASE_PATH, ATTR_REF_BASE_PATH, Tavrin::getBasePath, [&](auto value) { basePath = value; });
    reader.read(attributes);
    requireFilled(*this, alias, ErrorIds::kPrefsAliasEmpty);
    requireFilled(*this, path, ErrorIds::kPrefsPathEmpty);
    Utils::adjustSystemPaths(path);
    parentAs<ReferenceTableElt>().getReferenceTable().addAlias(alias, {path, basePath});
}

} // namespace Color::Xml::Reader
