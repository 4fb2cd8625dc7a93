// Tables that say which element reads which tag under which parent: one for each kind of document.
#ifndef TAVRIN_XML_ELEMENT_TABLE_H
#define TAVRIN_XML_ELEMENT_TABLE_H

#include "xml/xmlReaderElements.h"

#include <initializer_list>
#include <memory>
#include <span>
#include <string>

namespace Color::Xml::Reader
{

// A child is read where all rows of its tag allow it; the first that does not gives the reason for passing it over. Only a
// container may be allowed, and the element is only made where it is.
struct ChildRow
{
    char const* tag;
    bool (*isAllowed)(Element const& parent);
    std::unique_ptr<Element> (*create)(std::string const& tag, ContainerElt* parent, unsigned int line, std::string const& file);
    char const* reason;
};

// The reason for passing over what has no row.
inline constexpr char kUnknownReason[] = ": Unknown element";

// Whether the parent is of one of these classes; in<ContainerElt> for a child that may stand anywhere, in<> for one that may
// stand nowhere.
template <class... Parents>
bool in(Element const& parent)
{
    return (... || (dynamic_cast<Parents const*>(&parent) != nullptr));
}

template <class Elt>
std::unique_ptr<Element> createElt(std::string const& tag, ContainerElt* parent, unsigned int line, std::string const& file)
{
    return std::make_unique<Elt>(tag, parent, line, file);
}

// Compares without regard to case.
bool isTag(char const* tag, char const* known);

// The element for a child: one that reads it, or a dummy for a child that is unknown or has no place there. The first of the tables
// with a row for the tag decides.
std::unique_ptr<Element> createChild(std::initializer_list<std::span<ChildRow const>> tables, std::string const& tag,
                                     Element& parent, unsigned int line, std::string const& file);

} // namespace Color::Xml::Reader

#endif
