// The objects that stand for the open elements of a document, and the stack that mirrors their nesting.
#include "xml/xmlReaderElements.h"

#include "utils/logger.h"

#include <utility>

namespace Color::Xml::Reader
{

Element::Element(std::string const& name, unsigned int line, std::string const& file)
    : m_name(name), m_xmlLineNumber(line), m_xmlFile(file)
{
}

void Element::setContext(std::string const& name, unsigned int line, std::string const& file)
{
    m_name = name;
    m_xmlLineNumber = line;
    m_xmlFile = file;
}

void ContainerElt::setRawData(std::string const& text, unsigned int line)
{
    throw failureAt(ErrorIds::kXmlAttributeEnd, line, text);
}

ComplexElt::ComplexElt(std::string const& name, ContainerElt* parent, unsigned int line, std::string const& file)
    : ContainerElt(name, line, file), m_parent(parent)
{
}

PlainElt::PlainElt(std::string const& name, ContainerElt* parent, unsigned int line, std::string const& file)
    : Element(name, line, file), m_parent(parent)
{
}

DummyElt::DummyParent::DummyParent(Element const* parent)
{
    if (parent)
    {
        setContext(parent->getName(), parent->getXmlLocation(), parent->getXmlFile());
    }
}

std::string const& DummyElt::DummyParent::getIdentifier() const
{
    static std::string const identifier = "Unknown";
    return identifier;
}

DummyElt::DummyElt(std::string const& name, Element const* parent, unsigned int line, std::string const& file, char const* reason)
    : DummyElt(name, std::make_unique<DummyParent>(parent), line, file, reason)
{
}

DummyElt::DummyElt(std::string const& name, std::unique_ptr<DummyParent> parent, unsigned int line, std::string const& file,
                   char const* reason)
    : PlainElt(name, parent.get(), line, file), m_dummyParent(std::move(parent))
{
    Logger::log(LOG_DEBUG, "Ignore element '%s' (line %d) where its parent is '%s' (line %d) %s: %s", name.c_str(),
                static_cast<int>(line), m_dummyParent->getName().c_str(), static_cast<int>(m_dummyParent->getXmlLocation()),
                reason ? reason : "", file.c_str());
}

ElementStack::~ElementStack()
{
    clear();
}

void ElementStack::push_back(std::unique_ptr<Element> element)
{
    m_elements.push_back(std::move(element));
}

std::unique_ptr<Element> ElementStack::pop_back()
{
    std::unique_ptr<Element> element = std::move(m_elements.back());
    m_elements.pop_back();
    return element;
}

void ElementStack::clear()
{
    while (!empty())
    {
        m_elements.pop_back();
    }
}

std::string ElementStack::dump() const
{
    std::string text = "XML stack is ";
    for (std::unique_ptr<Element> const& element : m_elements)
    {
        text += "[" + element->getIdentifier() + "=" + element->getName() +
                " at line=" + std::to_string(element->getXmlLocation()) + "] ";
    }
    return text;
}

} // namespace Color::Xml::Reader
