// The base of the elements whose text is a list of so many numbers, over any number of lines.
#ifndef TAVRIN_XML_NUMBER_LIST_ELT_H
#define TAVRIN_XML_NUMBER_LIST_ELT_H

#include "xml/xmlReaderElements.h"

#include <string>
#include <vector>

namespace Color::Xml::Reader
{

// Collects the text, and reads it at double precision when the element ends.
class NumberListElt : public PlainElt
{
public:
    // Another count of numbers is the failure, which tells the name of the element.
    NumberListElt(std::string const& name, ContainerElt* parent, unsigned int line, std::string const& file, std::size_t count,
                  ErrorSite wrongCount);

    void setRawData(std::string const& text, unsigned int line) override;
    void end() override;

protected:
    virtual void setNumbers(std::vector<double> const& numbers) = 0;

private:
    std::string m_text;
    std::size_t m_count;
    ErrorSite m_wrongCount;
};

} // namespace Color::Xml::Reader

#endif
