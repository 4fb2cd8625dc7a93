// The elements of colour decision lists.
#include "xml/cdlReaderElements.h"

#include "utils/utils.h"
#include "xml/ctfVocabulary.h"
#include "xml/elementTable.h"
#include "xml/xmlReaderAttributes.h"
#include "xml/xmlReaderLimits.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace Color::Xml::Reader
{

namespace
{

struct DescriptionPrefix
{
    char const* tag;
    char const* prefix;
};

constexpr DescriptionPrefix kDescriptionPrefixes[] = {
    {TAG_INPUT_DESCRIPTION, "InputDesc: "},
    {TAG_VIEWING_DESCRIPTION, "ViewingDesc: "},
    {TAG_COLOR_DECISION_LIST, "CDL: "},
    {TAG_COLOR_CORRECTION_COLLECTION, "CCC: "},
    {TAG_COLOR_DECISION, "CD: "},
    {TAG_COLOR_CORRECTION, "CC: "},
    {TAG_SOPNODE, "SOP: "},
    {TAG_SATNODE, "Sat: "},
};

// Null for an element without a prefix of its own.
char const* findDescriptionPrefix(Element const& element)
{
    auto const* const row =
        std::find_if(std::begin(kDescriptionPrefixes), std::end(kDescriptionPrefixes),
                     [&](DescriptionPrefix const& known) { return isTag(element.getName().c_str(), known.tag); });
    return row == std::end(kDescriptionPrefixes) ? nullptr : row->prefix;
}

// Documents do not tell the style.
CDLOp::CDLStyle defaultStyle()
{
    char const* const name = Foundation::Utils::getEnv("TAVRIN_DEFAULT_CDL_STYLE");
    return name && *name ? CDLOp::getCDLStyle(name) : CDLOp::CDLStyle::V1_2Fwd;
}

} // namespace

CorrectionsElt::CorrectionsElt(std::string const& name, std::shared_ptr<ColorCorrections> corrections, unsigned int line,
                               std::string const& file)
    : ComplexElt(name, nullptr, line, file), m_corrections(std::move(corrections))
{
}

CorrectionsElt::CorrectionsElt(std::string const& name, ContainerElt* parent, unsigned int line, std::string const& file)
    : ComplexElt(name, parent, line, file),
      m_corrections(dynamic_cast<CorrectionsElt&>(*parent).getCorrections()),
      m_descriptions(dynamic_cast<CorrectionsElt&>(*parent).handOnDescriptions())
{
}

Descriptions const& CorrectionsElt::handOnDescriptions() const
{
    for (std::string const& text : m_descriptions.getList())
    {
        m_corrections->handedOnBytes += sizeof(std::string) + text.size();
    }
    if (m_corrections->handedOnBytes > Limits::kHandedOnDescriptions)
    {
        throw failure(ErrorIds::kXmlParsing, "descriptions too long");
    }
    return m_descriptions;
}

ColorCorrectionElt::ColorCorrectionElt(std::string const& name, std::shared_ptr<ColorCorrections> corrections, unsigned int line,
                                       std::string const& file)
    : ComplexElt(name, nullptr, line, file),
      m_corrections(std::move(corrections)),
      m_transform(std::make_shared<Transform>()),
      m_op(new CDLOp)
{
    m_transform->getOps().append(m_op);
}

ColorCorrectionElt::ColorCorrectionElt(std::string const& name, ContainerElt* parent, unsigned int line, std::string const& file)
    : ColorCorrectionElt(name, dynamic_cast<CorrectionsElt&>(*parent).getCorrections(), line, file)
{
    m_op->getDescriptions() = dynamic_cast<CorrectionsElt&>(*parent).handOnDescriptions();
}

void ColorCorrectionElt::start(char const** attributes)
{
    AttributeReader reader(*this);
    reader
        .filledText(ATTR_ID, FRIENDLY_ATTR_ID,
                    [this](char const* id)
                    {
                        m_op->setId(id);
                        m_transform->setId(id);
                    })
        .required(FRIENDLY_ATTR_ID);
    reader.read(attributes);
    m_op->setCDLStyle(defaultStyle());
}

void ColorCorrectionElt::end()
{
    m_op->getBypass()->setDynamic(true);
    m_transform->validate();
    m_corrections->transforms.push_back(m_transform);
}

void PrefixedDescriptionElt::setRawData(std::string const& text, unsigned int line)
{
    char const* prefix = findDescriptionPrefix(*this);
    if (!prefix)
    {
        prefix = findDescriptionPrefix(*getParent());
    }
    DescriptionElt::setRawData(prefix + text, line);
}

} // namespace Color::Xml::Reader
