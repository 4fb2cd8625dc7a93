// The element <Info>, and the free elements in it.
#include "xml/metadataElt.h"

#include "xml/transformElt.h"

#include <utility>

namespace Color::Xml::Reader
{

MetadataElt::MetadataElt(std::string const& name, ContainerElt* parent, unsigned int line, std::string const& file)
    : ComplexElt(name, parent, line, file), m_metadata(name)
{
}

void MetadataElt::end()
{
    dynamic_cast<MetadataElt&>(*getParent())._setItem(takeMetadata());
}

void MetadataElt::setRawData(std::string const& text, unsigned int)
{
    m_value += text;
}

Metadata MetadataElt::takeMetadata()
{
    if (!m_value.empty())
    {
        m_metadata = m_value;
    }
    m_items.clear();
    return std::move(m_metadata);
}

void MetadataElt::_setItem(Metadata item)
{
    auto const known = m_items.find(item.getName());
    if (known == m_items.end())
    {
        Metadata& added = m_metadata.append(std::move(item));
        m_items.emplace(added.getName(), &added);
    }
    else
    {
        known->second->assignContent(std::move(item));
    }
}

void InfoElt::end()
{
    dynamic_cast<TransformElt&>(*getParent()).getTransform()->getInfo().assignContent(takeMetadata());
}

} // namespace Color::Xml::Reader
