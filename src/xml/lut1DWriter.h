// Writes <LUT1D>, and what it shares with <InverseLUT1D>.
#ifndef TAVRIN_XML_LUT_1D_WRITER_H
#define TAVRIN_XML_LUT_1D_WRITER_H

#include "transform/lut1DOp.h"
#include "xml/opWriter.h"

namespace Color::Xml::Writer
{

class Lut1DWriter : public TypedOpWriter<Lut1DOp>
{
public:
    using TypedOpWriter::TypedOpWriter;

protected:
    void _getAttributes(Attributes& attributes) const override;
    void _writeContent() const override;
};

} // namespace Color::Xml::Writer

#endif
