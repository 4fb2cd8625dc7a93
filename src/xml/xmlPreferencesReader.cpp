// The reader of the configuration file.
#include "xml/xmlPreferencesReader.h"

#include "utils/utils.h"
#include "xml/preferencesElts.h"
#include "xml/preferencesVocabulary.h"
#include "xml/xmlDocumentReader.h"

namespace Color
{

using namespace Xml;
using namespace Xml::Reader;

// Decides which element a start tag becomes.
class XMLPreferencesReader::Impl : public DocumentReader
{
public:
    void parseFile(std::string const& path);
    void parseBuffer(std::string const& text);
    std::shared_ptr<Preferences> const& getPreferences() const { return m_preferences; }

private:
    using Creation = std::unique_ptr<Element> (Impl::*)(char const* name);
    struct ElementRow
    {
        char const* tag;
        Creation create;
    };
    static ElementRow const kElements[];

    std::unique_ptr<Element> createElement(char const* name) override;
    std::unique_ptr<Element> _createRoot(char const* name);
    std::unique_ptr<Element> _createSharedHome(char const* name);
    std::unique_ptr<Element> _createReferenceTable(char const* name);
    std::unique_ptr<Element> _createAliasInfo(char const* name);
    std::unique_ptr<Element> _createAutoConfigure(char const* name);

    template <class Elt>
    std::unique_ptr<Element> _createChild(char const* name, ContainerElt* parent) const
    {
        return std::make_unique<Elt>(name, parent, getLineNumber(), getXmlFilename());
    }
    // The root, for an element that stands directly in it.
    PreferencesElt* _requireRoot(ErrorSite misplaced);
    void _publish();

    std::shared_ptr<Preferences> m_unfinished; // Empty until the root was met.
    bool m_hasSharedHome = false;
    std::shared_ptr<Preferences> m_preferences;
};

XMLPreferencesReader::Impl::ElementRow const XMLPreferencesReader::Impl::kElements[] = {
    {TAG_TAVRIN_CONFIG, &Impl::_createRoot},
    {TAG_SHARED_HOME, &Impl::_createSharedHome},
    {TAG_REFERENCE_TABLE, &Impl::_createReferenceTable},
    {TAG_REF, &Impl::_createAliasInfo},
    {TAG_AUTO_CONFIGURE, &Impl::_createAutoConfigure},
};

void XMLPreferencesReader::Impl::parseFile(std::string const& path)
{
    readFile(path);
    _publish();
}

void XMLPreferencesReader::Impl::parseBuffer(std::string const& text)
{
    readBuffer(text);
    _publish();
}

void XMLPreferencesReader::Impl::_publish()
{
    if (!m_unfinished)
    {
        throw failure(ErrorIds::kPrefsNotLoaded, Module::kPreferencesReader, getXmlFilename());
    }
    m_preferences = m_unfinished;
}

std::unique_ptr<Element> XMLPreferencesReader::Impl::createElement(char const* name)
{
    for (ElementRow const& row : kElements)
    {
        if (Foundation::Utils::strcasecmp(name, row.tag) == 0)
        {
            return (this->*row.create)(name);
        }
    }
    return std::make_unique<DummyElt>(name, getElementStack().back(), getLineNumber(), getXmlFilename(), ": Unknown element");
}

std::unique_ptr<Element> XMLPreferencesReader::Impl::_createRoot(char const* name)
{
    if (m_unfinished)
    {
        throw failureHere(ErrorIds::kPrefsConfigTwice);
    }
    if (!getElementStack().empty())
    {
        throw failureHere(ErrorIds::kPrefsConfigNotFirst);
    }
    auto root = std::make_unique<PreferencesElt>(name, getLineNumber(), getXmlFilename());
    m_unfinished = root->getPreferences();
    return root;
}

std::unique_ptr<Element> XMLPreferencesReader::Impl::_createSharedHome(char const* name)
{
    PreferencesElt* const root = _requireRoot(ErrorIds::kPrefsSharedPathMisplaced);
    if (m_hasSharedHome)
    {
        throw failureHere(ErrorIds::kPrefsSharedHomeTwice);
    }
    m_hasSharedHome = true;
    return _createChild<PrefSharedHomeElt>(name, root);
}

std::unique_ptr<Element> XMLPreferencesReader::Impl::_createReferenceTable(char const* name)
{
    return _createChild<ReferenceTableElt>(name, _requireRoot(ErrorIds::kPrefsReferenceTableMisplaced));
}

std::unique_ptr<Element> XMLPreferencesReader::Impl::_createAliasInfo(char const* name)
{
    auto* const table = dynamic_cast<ReferenceTableElt*>(getElementStack().back());
    if (!table)
    {
        throw failureHere(ErrorIds::kPrefsReferenceOutsideTable);
    }
    return _createChild<AliasInfoElt>(name, table);
}

std::unique_ptr<Element> XMLPreferencesReader::Impl::_createAutoConfigure(char const* name)
{
    return _createChild<AutoConfigureElt>(name, _requireRoot(ErrorIds::kPrefsAutoConfigureMisplaced));
}

PreferencesElt* XMLPreferencesReader::Impl::_requireRoot(ErrorSite misplaced)
{
    auto* const root = dynamic_cast<PreferencesElt*>(getElementStack().back());
    if (!root)
    {
        throw failureHere(misplaced);
    }
    return root;
}

XMLPreferencesReader::XMLPreferencesReader() : m_impl(std::make_unique<Impl>()) {}

XMLPreferencesReader::~XMLPreferencesReader() = default;

void XMLPreferencesReader::parseFile(std::string const& path) const
{
    m_impl->parseFile(path);
}

void XMLPreferencesReader::parseBuffer(std::string const& text) const
{
    m_impl->parseBuffer(text);
}

std::shared_ptr<Preferences> XMLPreferencesReader::getPreferences() const
{
    return m_impl->getPreferences();
}

} // namespace Color
