// The reader of transform files (CTF).
#include "xml/xmlTransformReader.h"

#include "utils/utils.h"
#include "xml/ctfElements.h"
#include "xml/ctfVocabulary.h"
#include "xml/metadataElt.h"
#include "xml/opElt.h"
#include "xml/transformElt.h"
#include "xml/xmlDocumentReader.h"

#include <cstring>
#include <fstream>

namespace Color
{

using namespace Xml;
using namespace Xml::Reader;

// Decides which element a start tag becomes.
class XMLTransformReader::Impl : public DocumentReader
{
public:
    void parseFile(std::string const& path);
    void parseBuffer(std::string const& text);
    std::shared_ptr<Transform> const& getTransform() const { return m_transform; }

private:
    std::unique_ptr<Element> createElement(char const* name) override;
    std::unique_ptr<Element> _createTransformElt(char const* name);
    std::unique_ptr<Element> _createOpElt(Op::OpType type, char const* name);
    std::unique_ptr<Element> _createDummyElt(char const* name, Element const* parent, char const* reason) const;

    std::shared_ptr<Transform> m_transform; // Empty until the root was met.
};

void XMLTransformReader::Impl::parseFile(std::string const& path)
{
    m_transform.reset();
    readFile(path);
    if (!m_transform)
    {
        throw failure(ErrorIds::kTransformFileInvalid, Module::kXmlReader, path);
    }
    if (m_transform->getOps().empty())
    {
        throw failure(ErrorIds::kNoOperatorsInFile, Module::kXmlReader, path);
    }
}

void XMLTransformReader::Impl::parseBuffer(std::string const& text)
{
    m_transform.reset();
    readBuffer(text);
    if (!m_transform)
    {
        throw failure(ErrorIds::kTransformInvalid, Module::kXmlReader);
    }
}

std::unique_ptr<Element> XMLTransformReader::Impl::createElement(char const* name)
{
    Element* const top = getElementStack().back();
    if (auto* const metadata = dynamic_cast<MetadataElt*>(top))
    {
        return std::make_unique<MetadataElt>(name, metadata, getLineNumber(), getXmlFilename());
    }
    if (Foundation::Utils::strcasecmp(name, TAG_PROCESS_LIST) == 0)
    {
        return _createTransformElt(name);
    }
    if (Op::OpType const* const type = findOperator(name))
    {
        return _createOpElt(*type, name);
    }
    auto* const parent = dynamic_cast<ContainerElt*>(top);
    return parent ? createChild(name, *parent, getLineNumber(), getXmlFilename()) : _createDummyElt(name, top, nullptr);
}

std::unique_ptr<Element> XMLTransformReader::Impl::_createTransformElt(char const* name)
{
    if (m_transform)
    {
        return _createDummyElt(name, getElementStack().front(), ": The Color::Transform already exists");
    }
    auto element = std::make_unique<TransformElt>(name, getLineNumber(), getXmlFilename());
    m_transform = element->getTransform();
    return element;
}

std::unique_ptr<Element> XMLTransformReader::Impl::_createOpElt(Op::OpType type, char const* name)
{
    auto const* const root = getElementStack().size() == 1 ? dynamic_cast<TransformElt const*>(getElementStack().back()) : nullptr;
    if (!root)
    {
        char reason[512];
        Foundation::Utils::snprintf(reason, sizeof reason, ": The %s's parent can only be a Transform", name);
        return _createDummyElt(name, getElementStack().back(), reason);
    }
    std::unique_ptr<OpElt> element = OpElt::getReader(type, root->getVersion());
    if (!element)
    {
        throw failureHere(ErrorIds::kVersionUnsupportedForOp, Utils::valueString(root->getVersion()), name);
    }
    element->setContext(name, m_transform, getLineNumber(), getXmlFilename());
    return element;
}

std::unique_ptr<Element> XMLTransformReader::Impl::_createDummyElt(char const* name, Element const* parent,
                                                                   char const* reason) const
{
    return std::make_unique<DummyElt>(name, parent, getLineNumber(), getXmlFilename(), reason);
}

XMLTransformReader::XMLTransformReader() : m_impl(std::make_unique<Impl>()) {}

XMLTransformReader::~XMLTransformReader() = default;

char const* XMLTransformReader::getColorTransformFileExtension()
{
    return "ctf";
}

std::vector<std::pair<std::string, std::string>> XMLTransformReader::supportedFileFormats()
{
    return {{getColorTransformFileExtension(), getColorTransformFileExtension()}};
}

char const* XMLTransformReader::getName() const
{
    return "Tavrin Transform Reader";
}

void XMLTransformReader::parseBuffer(std::string const& text) const
{
    m_impl->parseBuffer(text);
}

void XMLTransformReader::parseFile(std::string const& path) const
{
    m_impl->parseFile(path);
}

std::shared_ptr<Transform> XMLTransformReader::getTransform() const
{
    return m_impl->getTransform();
}

bool XMLTransformReader::isFileSupported(std::string const& path) const
{
    std::string const extension = Utils::getFileExtension(path);
    return extension == getColorTransformFileExtension() || extension == "xml";
}

bool XMLTransformReader::isFileLoadable(std::string const& path) const
{
    return isLoadableCTF(path);
}

namespace Xml::Reader
{

bool isLoadableCTF(std::string const& path)
{
    constexpr std::size_t kSearchedBytes = 5120;
    std::ifstream file(path);
    char line[kSearchedBytes];
    std::size_t searched = 0;
    while (searched < kSearchedBytes && file.getline(line, sizeof line))
    {
        if (std::strstr(line, "<ProcessList"))
        {
            return true;
        }
        searched += std::strlen(line);
    }
    return false;
}

} // namespace Xml::Reader

} // namespace Color
