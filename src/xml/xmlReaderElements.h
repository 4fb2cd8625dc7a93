// The objects that stand for the open elements of a document, and the stack that mirrors their nesting. They are the bases of the
// elements of all XML that is read with expat: transforms, colour decisions and the configuration file.
#ifndef TAVRIN_XML_READER_ELEMENTS_H
#define TAVRIN_XML_READER_ELEMENTS_H

#include "utils/errorMessage.h"

#include <memory>
#include <string>
#include <vector>

namespace Color::Xml::Reader
{

// One open element. It is started with its attributes, and ended when its tag closes and it has left the stack.
class Element
{
public:
    // For elements that are made before their name is known; setContext follows.
    Element() = default;
    Element(std::string const& name, unsigned int line, std::string const& file);
    virtual ~Element() = default;
    Element(Element const&) = delete;
    Element& operator=(Element const&) = delete;

    // Names and values in turn, then null, as expat gives them.
    virtual void start(char const** attributes) = 0;
    virtual void end() = 0;
    virtual bool isContainer() const = 0;
    virtual std::string const& getIdentifier() const = 0;
    // A line of text, without white space at its ends and never empty, and its number. An element without a use for text passes
    // over it.
    virtual void setRawData(std::string const&, unsigned int) {}
    // True for an element that is passed over.
    virtual bool isDummy() const { return false; }
    // How messages name the kind of element.
    virtual std::string const& getTypeName() const = 0;

    // The tag as the file spells it, the line of its start tag, and the file, which is empty for a buffer.
    std::string const& getName() const { return m_name; }
    unsigned int getXmlLocation() const { return m_xmlLineNumber; }
    std::string const& getXmlFile() const { return m_xmlFile; }
    void setContext(std::string const& name, unsigned int line, std::string const& file);

    // A failure whose message ends in a line and the file: by default the line of the start tag.
    template <class... Arguments>
    Exception failure(ErrorSite site, Arguments const&... arguments) const
    {
        return failureAt(site, m_xmlLineNumber, arguments...);
    }
    template <class... Arguments>
    Exception failureAt(ErrorSite site, unsigned int line, Arguments const&... arguments) const
    {
        return Color::failure(site, Module::kXmlReader, arguments..., line, m_xmlFile);
    }

private:
    std::string m_name;
    unsigned int m_xmlLineNumber = 0;
    std::string m_xmlFile;
};

// An element that holds others, and has no text of its own if a derived class does not say so.
class ContainerElt : public Element
{
public:
    using Element::Element;

    bool isContainer() const override { return true; }
    // Refuses the text.
    void setRawData(std::string const& text, unsigned int line) override;
    virtual void appendDescription(std::string const& text) = 0;
    // The version of the format that the document is written in.
    virtual float getVersion() const { return 1.5F; }
};

// A container within a container.
class ComplexElt : public ContainerElt
{
public:
    ComplexElt(std::string const& name, ContainerElt* parent, unsigned int line, std::string const& file);

    void start(char const**) override {}
    void end() override {}
    std::string const& getIdentifier() const override { return getName(); }
    std::string const& getTypeName() const override { return getName(); }
    void appendDescription(std::string const&) override {}
    ContainerElt* getParent() const { return m_parent; }

private:
    ContainerElt* m_parent; // Lives on the stack below.
};

// An element with attributes or text and without children.
class PlainElt : public Element
{
public:
    PlainElt(std::string const& name, ContainerElt* parent, unsigned int line, std::string const& file);

    void start(char const**) override {}
    void end() override {}
    bool isContainer() const override { return false; }
    std::string const& getIdentifier() const override { return getName(); }
    std::string const& getTypeName() const override { return getName(); }
    ContainerElt* getParent() const { return m_parent; }

protected:
    // The parent as the class that the tables of elements promise.
    template <class Parent>
    Parent& parentAs() const
    {
        return dynamic_cast<Parent&>(*m_parent);
    }

private:
    ContainerElt* m_parent; // Lives on the stack below, or belongs to the element itself.
};

// Stands for an element that is passed over with all that is in it; says so in the log.
class DummyElt : public PlainElt
{
public:
    // What the log tells of the real parent, and what outlives it.
    class DummyParent : public ContainerElt
    {
    public:
        // Null when there is no parent.
        explicit DummyParent(Element const* parent);

        void start(char const**) override {}
        void end() override {}
        std::string const& getIdentifier() const override;
        std::string const& getTypeName() const override { return getName(); }
        void appendDescription(std::string const&) override {}
    };

    // Parent and reason may be null.
    DummyElt(std::string const& name, Element const* parent, unsigned int line, std::string const& file, char const* reason);

    bool isDummy() const override { return true; }

private:
    DummyElt(std::string const& name, std::unique_ptr<DummyParent> parent, unsigned int line, std::string const& file,
             char const* reason);

    std::unique_ptr<DummyParent> m_dummyParent;
};

// The open elements, the root first. It owns them.
class ElementStack
{
public:
    ElementStack() = default;
    ~ElementStack();
    ElementStack(ElementStack const&) = delete;
    ElementStack& operator=(ElementStack const&) = delete;

    void push_back(std::unique_ptr<Element> element);
    // The element is now the caller's.
    std::unique_ptr<Element> pop_back();
    // Null when the stack is empty.
    Element* back() const { return empty() ? nullptr : m_elements.back().get(); }
    Element* front() const { return empty() ? nullptr : m_elements.front().get(); }
    std::size_t size() const { return m_elements.size(); }
    bool empty() const { return m_elements.empty(); }
    // From the top down, since an element may look at its parent.
    void clear();
    // For diagnosis.
    std::string dump() const;

private:
    std::vector<std::unique_ptr<Element>> m_elements;
};

} // namespace Color::Xml::Reader

#endif
