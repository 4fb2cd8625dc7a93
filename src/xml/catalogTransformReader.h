// Copies a transform file into a catalog.
#ifndef TAVRIN_XML_CATALOG_TRANSFORM_READER_H
#define TAVRIN_XML_CATALOG_TRANSFORM_READER_H

#include "xml/xmlDocumentReader.h"
#include "xml/xmlFormatter.h"

#include <memory>
#include <string>

namespace Color
{

// Writes the elements of a transform file with their attributes and texts, but for the texts that hold the bulk of its data. One
// object reads one file.
class CatalogTransformReader : public Xml::Reader::DocumentReader
{
public:
    explicit CatalogTransformReader(Xml::Writer::Formatter& formatter) : m_formatter(formatter) {}

    // Throws for what is no XML, and for what does not begin as a transform. What was written until then is of no use.
    void parseFile(std::string const& path);

private:
    std::unique_ptr<Xml::Reader::Element> createElement(char const* name) override;

    Xml::Writer::Formatter& m_formatter;
    bool m_hasRoot = false;
};

} // namespace Color

#endif
