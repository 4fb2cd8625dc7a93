// The base of what writes an element of a transform file.
#ifndef TAVRIN_XML_ELEMENT_WRITER_H
#define TAVRIN_XML_ELEMENT_WRITER_H

#include "transform/descriptions.h"
#include "xml/xmlFormatter.h"

namespace Color::Xml::Writer
{

using Attributes = Formatter::Attributes;

// Lives no longer than the formatter and what it writes.
class ElementWriter
{
public:
    explicit ElementWriter(Formatter& formatter) : m_formatter(formatter) {}
    ElementWriter(ElementWriter const&) = delete;
    ElementWriter& operator=(ElementWriter const&) = delete;
    virtual ~ElementWriter() = default;

    virtual void write() const = 0;

protected:
    Formatter& getFormatter() const { return m_formatter; }
    // An element for each text.
    void writeDescriptions(Descriptions const& descriptions) const;

private:
    Formatter& m_formatter;
};

} // namespace Color::Xml::Writer

#endif
