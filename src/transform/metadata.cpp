// A tree of named texts: the free information of a transform.
#include "transform/metadata.h"

#include "utils/errorMessage.h"

#include <algorithm>

namespace Color
{

namespace
{

template <class Items>
auto findItem(Items& items, std::string const& name)
{
    return std::find_if(items.begin(), items.end(), [&](Metadata const& item) { return item.getName() == name; });
}

} // namespace

Metadata::Metadata(std::string const& name) : m_name(name)
{
    if (name.empty())
        throw failure(ErrorIds::kMetadataNameEmpty, Module::kMetadata);
}

std::string const& Metadata::getValue() const
{
    if (!isLeaf())
        throw failure(ErrorIds::kMetadataNotALeaf, Module::kMetadata, m_name);
    return m_value;
}

Metadata& Metadata::operator=(std::string const& value)
{
    m_value = value;
    return *this;
}

Metadata& Metadata::operator[](std::string const& name)
{
    if (!m_value.empty())
        throw failure(ErrorIds::kMetadataNotAContainer, Module::kMetadata, m_name);
    auto const found = findItem(m_items, name);
    return found != m_items.end() ? *found : m_items.emplace_back(name);
}

Metadata const& Metadata::operator[](std::string const& name) const
{
    auto const found = findItem(m_items, name);
    if (found == m_items.end())
        throw failure(ErrorIds::kMetadataNotFound, Module::kMetadata, name);
    return *found;
}

void Metadata::remove(std::string const& name)
{
    auto const found = findItem(m_items, name);
    if (found == m_items.end())
        throw failure(ErrorIds::kMetadataNotFound, Module::kMetadata, name);
    m_items.erase(found);
}

Metadata::Items const& Metadata::getItems() const
{
    if (isLeaf() && !m_value.empty())
        throw failure(ErrorIds::kMetadataNotAContainer, Module::kMetadata, m_name);
    return m_items;
}

std::vector<std::string> Metadata::getItemsNames() const
{
    std::vector<std::string> names;
    for (Metadata const& item : getItems())
        names.push_back(item.getName());
    return names;
}

void Metadata::assignContent(Metadata other)
{
    m_value = std::move(other.m_value);
    m_items = std::move(other.m_items);
}

void Metadata::clear()
{
    m_value.clear();
    m_items.clear();
}

} // namespace Color
