// The element <InverseLUT1D>.
#ifndef TAVRIN_XML_INV_LUT_1D_ELT_H
#define TAVRIN_XML_INV_LUT_1D_ELT_H

#include "xml/lut1DElt.h"

namespace Color::Xml::Reader
{

// Holds the table that is to be evaluated backwards. Its half bit patterns, if it says that it has some, are not converted.
class InvLut1DElt : public BaseLut1DElt
{
public:
    InvLut1DElt();

    void finalize(unsigned int valuesRead) override;
};

} // namespace Color::Xml::Reader

#endif
