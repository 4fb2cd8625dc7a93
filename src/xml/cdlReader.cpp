// The reader of colour decision lists.
#include "xml/cdlReader.h"

#include "utils/utils.h"
#include "xml/cdlReaderElements.h"
#include "xml/ctfVocabulary.h"
#include "xml/elementTable.h"
#include "xml/xmlDocumentReader.h"

#include <algorithm>
#include <iterator>
#include <span>

namespace Color
{

using namespace Xml;
using namespace Xml::Reader;

namespace
{

using CreateRoot = std::unique_ptr<Element> (*)(std::string const& tag, std::shared_ptr<ColorCorrections> corrections,
                                                unsigned int line, std::string const& file);

template <class Root>
std::unique_ptr<Element> createRoot(std::string const& tag, std::shared_ptr<ColorCorrections> corrections, unsigned int line,
                                    std::string const& file)
{
    return std::make_unique<Root>(tag, std::move(corrections), line, file);
}

constexpr char kSopReason[] = ": Slope, Offset or Power tags must be under SOPNode";

// clang-format off
constexpr ChildRow kDecisionListChildren[] = {
    {TAG_COLOR_DECISION_LIST,         &in<>,                     nullptr,                      ": The ColorDecisionList already exists"},
    {TAG_COLOR_DECISION,              &in<ColorDecisionListElt>, &createElt<ColorDecisionElt>, ": ColorDecision must be under a ColorDecisionList"},
};

constexpr ChildRow kCollectionChildren[] = {
    {TAG_COLOR_CORRECTION_COLLECTION, &in<>,                     nullptr,                      ": The ColorCorrectionCollection already exists"},
};

// Of all kinds of documents.
constexpr ChildRow kChildren[] = {
    {TAG_COLOR_CORRECTION,    &in<ColorDecisionElt, ColorCorrectionCollectionElt>, &createElt<ColorCorrectionElt>,
     ": ColorCorrection must be under a ColorDecision (CDL), ColorCorrectionCollection (CCC), or must be the root element (CC)"},
    {TAG_SOPNODE,             &in<ColorCorrectionElt>,                 &createElt<SOPNodeCCElt>,           ": SOPNode must be under a ColorCorrection"},
    {TAG_SATNODE,             &in<ColorCorrectionElt>,                 &createElt<SatNodeCCElt>,           ": SatNode must be under a ColorCorrection"},
    {TAG_SLOPE,               &in<SOPNodeCCElt>,                       &createElt<SOPValueElt>,            kSopReason},
    {TAG_OFFSET,              &in<SOPNodeCCElt>,                       &createElt<SOPValueElt>,            kSopReason},
    {TAG_POWER,               &in<SOPNodeCCElt>,                       &createElt<SOPValueElt>,            kSopReason},
    {TAG_SATURATION,          &in<SatNodeCCElt>,                       &createElt<SaturationElt>,          ": Saturation tags must be under SatNode"},
    {TAG_DESCRIPTION,         &in<ContainerElt>,                       &createElt<PrefixedDescriptionElt>, kUnknownReason},
    {TAG_INPUT_DESCRIPTION,   &in<CorrectionsElt, ColorCorrectionElt>, &createElt<PrefixedDescriptionElt>, kUnknownReason},
    {TAG_VIEWING_DESCRIPTION, &in<CorrectionsElt, ColorCorrectionElt>, &createElt<PrefixedDescriptionElt>, kUnknownReason},
};
// clang-format on

// A kind of documents: the extension of its files, words for people, its root, and the tags that no other kind knows.
struct ReaderFormat
{
    char const* extension;
    char const* description;
    char const* rootTag;
    CreateRoot createRoot;
    std::span<ChildRow const> children;
};

constexpr ReaderFormat readerFormats[] = {
    {"cdl", "ASC CDL color decision list XML format", TAG_COLOR_DECISION_LIST, &createRoot<ColorDecisionListElt>,
     kDecisionListChildren},
    {"ccc", "ASC CDL color correction collection XML format", TAG_COLOR_CORRECTION_COLLECTION,
     &createRoot<ColorCorrectionCollectionElt>, kCollectionChildren},
    {"cc", "CDL fragment format", TAG_COLOR_CORRECTION, &createRoot<ColorCorrectionElt>, {}},
};

} // namespace

// Decides which element a start tag becomes.
class CDLReader::Impl : public DocumentReader
{
public:
    void parseFile(std::string const& path);
    void parseBuffer(std::string const& text);
    TransformList const& getTransformList() const { return m_corrections->transforms; }

private:
    std::unique_ptr<Element> createElement(char const* name) override;
    std::unique_ptr<Element> _createRoot(char const* name);
    void _validateParsing() const;

    std::span<ChildRow const> m_children; // Of the kind of the document.
    std::shared_ptr<ColorCorrections> const m_corrections = std::make_shared<ColorCorrections>();
};

void CDLReader::Impl::parseFile(std::string const& path)
{
    readFile(path);
    _validateParsing();
}

void CDLReader::Impl::parseBuffer(std::string const& text)
{
    readBuffer(text);
    _validateParsing();
}

void CDLReader::Impl::_validateParsing() const
{
    if (getTransformList().empty())
    {
        throw failure(ErrorIds::kTransformFileInvalid, Module::kXmlReader, getXmlFilename());
    }
}

std::unique_ptr<Element> CDLReader::Impl::createElement(char const* name)
{
    Element* const parent = getElementStack().back();
    return parent ? createChild({m_children, kChildren}, name, *parent, getLineNumber(), getXmlFilename()) : _createRoot(name);
}

std::unique_ptr<Element> CDLReader::Impl::_createRoot(char const* name)
{
    for (ReaderFormat const& format : readerFormats)
    {
        if (isTag(name, format.rootTag))
        {
            m_children = format.children;
            return format.createRoot(name, m_corrections, getLineNumber(), getXmlFilename());
        }
    }
    return std::make_unique<DummyElt>(name, nullptr, getLineNumber(), getXmlFilename(), nullptr);
}

CDLReader::CDLReader() : m_impl(std::make_unique<Impl>()) {}

CDLReader::~CDLReader() = default;

std::vector<std::pair<std::string, std::string>> CDLReader::supportedFileFormats()
{
    std::vector<std::pair<std::string, std::string>> formats;
    for (ReaderFormat const& format : readerFormats)
    {
        formats.emplace_back(format.extension, format.description);
    }
    return formats;
}

char const* CDLReader::getName() const
{
    return "CDL Reader";
}

void CDLReader::parseBuffer(std::string const& text) const
{
    m_impl->parseBuffer(text);
}

void CDLReader::parseFile(std::string const& path) const
{
    m_impl->parseFile(path);
}

CDLReader::TransformList const& CDLReader::getTransformList() const
{
    return m_impl->getTransformList();
}

std::shared_ptr<Transform> CDLReader::getTransform() const
{
    static auto const emptyTransform = std::make_shared<Transform>();
    TransformList const& transforms = getTransformList();
    return transforms.empty() ? emptyTransform : transforms.front();
}

bool CDLReader::isFileSupported(std::string const& path) const
{
    std::string const extension = Utils::getFileExtension(path);
    return std::any_of(std::begin(readerFormats), std::end(readerFormats),
                       [&](ReaderFormat const& format)
                       { return Foundation::Utils::strcasecmp(extension.c_str(), format.extension) == 0; });
}

} // namespace Color
