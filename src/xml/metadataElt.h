// The element <Info>, and the free elements in it.
#ifndef TAVRIN_XML_METADATA_ELT_H
#define TAVRIN_XML_METADATA_ELT_H

#include "transform/metadata.h"
#include "xml/xmlReaderElements.h"

#include <string>
#include <string_view>
#include <unordered_map>

namespace Color::Xml::Reader
{

// Any name, text or elements, to any depth. Of siblings with one name the later one counts.
class MetadataElt : public ComplexElt
{
public:
    // The parent is a MetadataElt, or a TransformElt for an InfoElt.
    MetadataElt(std::string const& name, ContainerElt* parent, unsigned int line, std::string const& file);

    // Hands what was read to the parent.
    void end() override;
    // Lines are joined with nothing between them.
    void setRawData(std::string const& text, unsigned int line) override;

protected:
    // Everything that was read.
    Metadata takeMetadata();

private:
    void _setItem(Metadata item);

    Metadata m_metadata;
    std::string m_value;
    std::unordered_map<std::string_view, Metadata*> m_items; // The metadata's, by their names: strangers' files may have very many.
};

class InfoElt : public MetadataElt
{
public:
    using MetadataElt::MetadataElt;

    void end() override;
};

} // namespace Color::Xml::Reader

#endif
