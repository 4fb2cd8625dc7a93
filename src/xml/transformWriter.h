// Writes <ProcessList>, the root of a transform file, and everything in it.
#ifndef TAVRIN_XML_TRANSFORM_WRITER_H
#define TAVRIN_XML_TRANSFORM_WRITER_H

#include "transform/transform.h"
#include "xml/elementWriter.h"

namespace Color::Xml::Writer
{

class TransformWriter : public ElementWriter
{
public:
    TransformWriter(Formatter& formatter, Transform const& transform) : ElementWriter(formatter), m_transform(transform) {}

    // States the lowest version that can hold all operators.
    void write() const override;

private:
    void _writeFilled(char const* tag, std::string const& text) const;
    void _writeMetadata(Metadata const& metadata) const;

    Transform const& m_transform;
};

} // namespace Color::Xml::Writer

#endif
