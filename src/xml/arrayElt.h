// The table of values of an operator, and what an operator element with such a table offers.
#ifndef TAVRIN_XML_ARRAY_ELT_H
#define TAVRIN_XML_ARRAY_ELT_H

#include "transform/array.h"
#include "xml/xmlReaderElements.h"

#include <string>
#include <vector>

namespace Color::Xml::Reader
{

// The second base of operator elements that own an array.
class ArrayMgt
{
public:
    virtual ~ArrayMgt() = default;

    // Takes the numbers of the dim attribute (at least two, their product within the limit) and gives the array to fill,
    // resized; null when the operator can't have these dimensions.
    virtual Array* updateDimension(std::vector<unsigned int> const& dimensions) = 0;
    // All values are there; so many were read.
    virtual void finalize(unsigned int valuesRead) = 0;
    // How messages tell the dimensions of an array that gets more values than it holds.
    virtual std::string getDimensionText(Array const& array) const;

    virtual void setCompleted(bool completed) { m_completed = completed; }
    // Whether the operator has got its array.
    bool isCompleted() const { return m_completed; }

private:
    bool m_completed = false;
};

// Refuses another number of values than the operator's array needs.
void requireValues(Element const& opElement, unsigned int found, unsigned int expected, std::string const& dimensionText);

// <Array dim="3 3 3"> numbers </Array>
class ArrayElt : public PlainElt
{
public:
    // The parent is an ArrayMgt too.
    using PlainElt::PlainElt;

    void start(char const** attributes) override;
    // Called line by line; a number does not go on in the next line.
    void setRawData(std::string const& text, unsigned int line) override;
    void end() override;
    std::string const& getTypeName() const override { return getParent()->getTypeName(); }

private:
    void _setDimensions(char const* text);
    void _append(float value, unsigned int line);

    Array* m_array = nullptr; // The operator's.
    unsigned int m_count = 0; // Values that it holds.
    unsigned int m_position = 0;
};

} // namespace Color::Xml::Reader

#endif
