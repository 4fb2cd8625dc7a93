// The writer of the configuration file.
#include "xml/xmlPreferencesWriter.h"

#include "utils/errorMessage.h"
#include "xml/preferencesVocabulary.h"
#include "xml/wholeFile.h"
#include "xml/xmlFormatter.h"

#include <tavrin/vocabulary.h>

#include <boost/locale/utf.hpp>
#include <ostream>

namespace Color
{

using namespace Xml;
using namespace Xml::Writer;

namespace
{

constexpr char kVersion[] = "1.0";

class PreferencesWriter
{
public:
    PreferencesWriter(Preferences const& preferences, Formatter& formatter) : m_preferences(preferences), m_formatter(formatter) {}

    void write() const
    {
        m_formatter.writeStartTag(TAG_TAVRIN_CONFIG, {{ATTR_CONFIG_VERSION, kVersion}});
        {
            ScopeIndent const indent(m_formatter);
            _writeAutoConfigure();
            _writeSharedPath();
            _writeReferenceTable();
        }
        m_formatter.writeEndTag(TAG_TAVRIN_CONFIG);
    }

private:
    void _writeAutoConfigure() const
    {
        bool const isAutomatic = m_preferences.getAutoConfigureMonitorProfile();
        m_formatter.writeEmptyTag(TAG_AUTO_CONFIGURE, {{ATTR_GRAPHICS_MONITOR, isAutomatic ? VALUE_TRUE : VALUE_FALSE}});
    }

    // The reader refuses an empty path, so there is no element for one.
    void _writeSharedPath() const
    {
        if (!m_preferences.getStoredSharedPath().empty())
        {
            m_formatter.writeEmptyTag(TAG_SHARED_HOME, {{ATTR_DIR, m_preferences.getStoredSharedPath()}});
        }
    }

    void _writeReferenceTable() const
    {
        ReferenceTable::AliasInfoMap const& aliases = m_preferences.getReferenceTable().getAliasInfoMap();
        if (aliases.empty())
        {
            return;
        }
        m_formatter.writeStartTag(TAG_REFERENCE_TABLE);
        {
            ScopeIndent const indent(m_formatter);
            for (auto const& [alias, info] : aliases)
            {
                _writeAlias(alias, info);
            }
        }
        m_formatter.writeEndTag(TAG_REFERENCE_TABLE);
    }

    void _writeAlias(std::string const& alias, ReferenceTable::AliasInfo const& info) const
    {
        Formatter::Attributes attributes = {{ATTR_REF_ALIAS, alias}, {ATTR_REF_PATH, info.getPath()}};
        if (info.getBasePath() != Tavrin::BASE_PATH_NONE)
        {
            attributes.emplace_back(ATTR_REF_BASE_PATH, Tavrin::getBasePathName(info.getBasePath()));
        }
        m_formatter.writeEmptyTag(TAG_REF, attributes);
    }

    Preferences const& m_preferences;
    Formatter& m_formatter;
};

// XML knows no other control characters than line breaks and tabs, and these become blanks in an attribute.
bool isStorable(std::string const& text)
{
    for (auto at = text.begin(); at != text.end();)
    {
        namespace utf = boost::locale::utf;
        utf::code_point const character = utf::utf_traits<char>::decode(at, text.end());
        if (character == utf::illegal || character == utf::incomplete || character < 0x20 || character == 0xfffe ||
            character == 0xffff)
        {
            return false;
        }
    }
    return true;
}

} // namespace

void XMLPreferencesWriter::writeFile(std::shared_ptr<Preferences> const& preferences, std::string const& path)
{
    writeWholeFile(path,
                   [&](std::ostream& stream)
                   {
                       stream << kProlog;
                       Formatter formatter(stream);
                       PreferencesWriter(*preferences, formatter).write();
                   });
}

void XMLPreferencesWriter::requireStorable(std::string const& text)
{
    if (!isStorable(text))
    {
        throw failure(ErrorIds::kCharactersIllegal, Module::kXmlWriter, text);
    }
}

} // namespace Color
