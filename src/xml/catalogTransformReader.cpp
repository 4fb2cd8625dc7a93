// Copies a transform file into a catalog.
#include "xml/catalogTransformReader.h"

#include "utils/utils.h"
#include "xml/ctfVocabulary.h"

#include <algorithm>

namespace Color
{

using namespace Xml;
using namespace Xml::Reader;
using Writer::Formatter;

namespace
{

bool isTag(char const* tag, std::string const& name)
{
    return Foundation::Utils::strcasecmp(tag, name.c_str()) == 0;
}

// Elements whose text is values alone, which nobody searches a catalog for.
bool holdsBulkData(std::string const& name)
{
    constexpr char const* kTags[] = {TAG_ARRAY, TAG_SLOPE, TAG_OFFSET, TAG_POWER, TAG_SATURATION};
    return std::any_of(std::begin(kTags), std::end(kTags), [&](char const* tag) { return isTag(tag, name); });
}

// An open element, whatever it is.
class CopiedElt : public Element
{
public:
    CopiedElt(std::string const& name, unsigned int line, std::string const& file, Formatter& formatter)
        : Element(name, line, file), m_formatter(formatter), m_isCopied(!holdsBulkData(name))
    {
    }

    void start(char const** attributes) override
    {
        Formatter::Attributes copies;
        for (; *attributes; attributes += 2)
        {
            copies.emplace_back(attributes[0], attributes[1]);
        }
        m_formatter.writeStartTag(getName(), copies);
        m_formatter.incrementIndent();
    }
    void end() override
    {
        m_formatter.decrementIndent();
        m_formatter.writeEndTag(getName());
    }
    void setRawData(std::string const& text, unsigned int) override
    {
        if (m_isCopied)
        {
            m_formatter.writeContent(text);
        }
    }
    bool isContainer() const override { return true; }
    std::string const& getIdentifier() const override { return getName(); }
    std::string const& getTypeName() const override { return getName(); }

private:
    Formatter& m_formatter;
    bool m_isCopied; // The text is.
};

Exception notATransform()
{
    return failure(ErrorIds::kTransformFileInvalid, Module::kCatalogManager, "First element must be ProcessList");
}

} // namespace

void CatalogTransformReader::parseFile(std::string const& path)
{
    readFile(path);
    if (!m_hasRoot)
    {
        throw notATransform();
    }
}

std::unique_ptr<Element> CatalogTransformReader::createElement(char const* name)
{
    if (!m_hasRoot && !isTag(TAG_PROCESS_LIST, name))
    {
        throw notATransform();
    }
    m_hasRoot = true;
    return std::make_unique<CopiedElt>(name, getLineNumber(), getXmlFilename(), m_formatter);
}

} // namespace Color
