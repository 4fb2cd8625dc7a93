// The element <LUT1D>, and what it shares with <InverseLUT1D>.
#ifndef TAVRIN_XML_LUT_1D_ELT_H
#define TAVRIN_XML_LUT_1D_ELT_H

#include "transform/lut1DOp.h"
#include "xml/arrayElt.h"
#include "xml/opElt.h"

#include <memory>
#include <string>
#include <vector>

namespace Color::Xml::Reader
{

class AttributeReader;

// One-dimensional tables, forward or inverse: dim is rows and columns, and one column may stand for three.
class BaseLut1DElt : public OpElt, public ArrayMgt
{
public:
    void start(char const** attributes) override;
    Array* updateDimension(std::vector<unsigned int> const& dimensions) override;
    void finalize(unsigned int valuesRead) override;

protected:
    using OpElt::OpElt;

    virtual void addRules(AttributeReader& reader);

private:
    // One value for each row becomes three.
    void _spreadColumn();
};

class Lut1DElt : public BaseLut1DElt
{
public:
    Lut1DElt();

    void finalize(unsigned int valuesRead) override;
    std::string getDimensionText(Array const& array) const override;

protected:
    Lut1DOp& op() const { return static_cast<Lut1DOp&>(*getOp()); }
};

// Versions from 1.4 know hue adjustments.
class Lut1DElt_1_4 : public Lut1DElt
{
protected:
    void addRules(AttributeReader& reader) override;
};

} // namespace Color::Xml::Reader

#endif
