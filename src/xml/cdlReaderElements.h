// The elements of colour decision lists. Those of the numbers are shared with transform files (CDLElt.h).
#ifndef TAVRIN_XML_CDL_READER_ELEMENTS_H
#define TAVRIN_XML_CDL_READER_ELEMENTS_H

#include "transform/CDLOp.h"
#include "transform/transform.h"
#include "xml/CDLElt.h"
#include "xml/transformElt.h"

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

namespace Color::Xml::Reader
{

inline constexpr char TAG_COLOR_DECISION_LIST[] = "ColorDecisionList";
inline constexpr char TAG_COLOR_CORRECTION_COLLECTION[] = "ColorCorrectionCollection";
inline constexpr char TAG_COLOR_DECISION[] = "ColorDecision";
inline constexpr char TAG_COLOR_CORRECTION[] = "ColorCorrection";
inline constexpr char TAG_INPUT_DESCRIPTION[] = "InputDescription";
inline constexpr char TAG_VIEWING_DESCRIPTION[] = "ViewingDescription";

// What a document comes to.
struct ColorCorrections
{
    std::vector<std::shared_ptr<Transform>> transforms;
    // The memory that went into descriptions which elements took over from those around them.
    std::size_t handedOnBytes = 0;
};

// What colour corrections stand in.
class CorrectionsElt : public ComplexElt
{
public:
    // A root.
    CorrectionsElt(std::string const& name, std::shared_ptr<ColorCorrections> corrections, unsigned int line,
                   std::string const& file);
    // The parent is a CorrectionsElt.
    CorrectionsElt(std::string const& name, ContainerElt* parent, unsigned int line, std::string const& file);

    void appendDescription(std::string const& text) override { m_descriptions += text; }
    std::shared_ptr<ColorCorrections> const& getCorrections() const { return m_corrections; }
    // What has been said so far here and further out, for an element below. Throws when a document wants too much of it.
    Descriptions const& handOnDescriptions() const;

private:
    std::shared_ptr<ColorCorrections> m_corrections;
    Descriptions m_descriptions;
};

class ColorDecisionListElt : public CorrectionsElt
{
public:
    using CorrectionsElt::CorrectionsElt;
};

class ColorCorrectionCollectionElt : public CorrectionsElt
{
public:
    using CorrectionsElt::CorrectionsElt;
};

class ColorDecisionElt : public CorrectionsElt
{
public:
    using CorrectionsElt::CorrectionsElt;
};

// Builds a transform of one operator, which joins the corrections at the end.
class ColorCorrectionElt : public ComplexElt
{
public:
    // A root.
    ColorCorrectionElt(std::string const& name, std::shared_ptr<ColorCorrections> corrections, unsigned int line,
                       std::string const& file);
    // The parent is a CorrectionsElt.
    ColorCorrectionElt(std::string const& name, ContainerElt* parent, unsigned int line, std::string const& file);

    void start(char const** attributes) override;
    // Lets the host switch the correction on and off, and validates the transform.
    void end() override;
    void appendDescription(std::string const& text) override { m_op->getDescriptions() += text; }
    CDLOp& op() const { return *m_op; }

private:
    std::shared_ptr<ColorCorrections> m_corrections;
    std::shared_ptr<Transform> m_transform;
    CDLOp* m_op; // The transform's.
};

using SOPNodeCCElt = NodeInElt<SOPNodeBaseElt, ColorCorrectionElt>;
using SatNodeCCElt = NodeInElt<SatNodeBaseElt, ColorCorrectionElt>;

// A text that is marked with its own kind or with the element that it describes.
class PrefixedDescriptionElt : public DescriptionElt
{
public:
    using DescriptionElt::DescriptionElt;

    void setRawData(std::string const& text, unsigned int line) override;
};

} // namespace Color::Xml::Reader

#endif
