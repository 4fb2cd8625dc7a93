// Elements for tests of the frame.
#ifndef TAVRIN_TESTS_XML_ELEMENTS_H
#define TAVRIN_TESTS_XML_ELEMENTS_H

#include "xml/xmlReaderElements.h"

#include <initializer_list>
#include <string>
#include <vector>

namespace XmlTest
{

// A container that takes everything.
class Box : public Color::Xml::Reader::ContainerElt
{
public:
    using ContainerElt::ContainerElt;

    void start(char const**) override {}
    void end() override {}
    std::string const& getIdentifier() const override { return getName(); }
    std::string const& getTypeName() const override { return m_typeName; }
    void appendDescription(std::string const& text) override { m_descriptions.push_back(text); }

    std::vector<std::string> m_descriptions;
    std::string m_typeName = "Box";
};

// Names and values in turn, as a parser gives them.
class Attributes
{
public:
    Attributes(std::initializer_list<char const*> namesAndValues) : m_texts(namesAndValues) { m_texts.push_back(nullptr); }
    operator char const**() { return m_texts.data(); }

private:
    std::vector<char const*> m_texts;
};

} // namespace XmlTest

#endif
