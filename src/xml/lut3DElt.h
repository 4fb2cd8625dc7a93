// The element <LUT3D>.
#ifndef TAVRIN_XML_LUT_3D_ELT_H
#define TAVRIN_XML_LUT_3D_ELT_H

#include "transform/lut3DOp.h"
#include "xml/arrayElt.h"
#include "xml/opElt.h"

#include <string>
#include <vector>

namespace Color::Xml::Reader
{

class Lut3DElt : public TypedOpElt<Lut3DOp>, public ArrayMgt
{
public:
    Lut3DElt();

    void start(char const** attributes) override;
    Array* updateDimension(std::vector<unsigned int> const& dimensions) override;
    void finalize(unsigned int valuesRead) override;
    std::string getDimensionText(Array const& array) const override;
};

} // namespace Color::Xml::Reader

#endif
