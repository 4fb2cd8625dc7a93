// Tables that say which element reads which tag under which parent.
#include "xml/elementTable.h"

#include "utils/utils.h"

namespace Color::Xml::Reader
{

namespace
{

// Null when the table has no row for the tag.
std::unique_ptr<Element> createFrom(std::span<ChildRow const> rows, std::string const& tag, Element& parent, unsigned int line,
                                    std::string const& file)
{
    ChildRow const* found = nullptr;
    for (ChildRow const& row : rows)
    {
        if (isTag(tag.c_str(), row.tag))
        {
            found = &row;
            if (!row.isAllowed(parent))
            {
                return std::make_unique<DummyElt>(tag, &parent, line, file, row.reason);
            }
        }
    }
    return found ? found->create(tag, &dynamic_cast<ContainerElt&>(parent), line, file) : nullptr;
}

} // namespace

bool isTag(char const* tag, char const* known)
{
    return Foundation::Utils::strcasecmp(tag, known) == 0;
}

std::unique_ptr<Element> createChild(std::initializer_list<std::span<ChildRow const>> tables, std::string const& tag,
                                     Element& parent, unsigned int line, std::string const& file)
{
    for (std::span<ChildRow const> const rows : tables)
    {
        if (std::unique_ptr<Element> element = createFrom(rows, tag, parent, line, file))
        {
            return element;
        }
    }
    return std::make_unique<DummyElt>(tag, &parent, line, file, kUnknownReason);
}

} // namespace Color::Xml::Reader
