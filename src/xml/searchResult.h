// What a search in the catalogs finds.
#ifndef TAVRIN_XML_SEARCH_RESULT_H
#define TAVRIN_XML_SEARCH_RESULT_H

#include <memory>
#include <pugixml.hpp>
#include <string>
#include <vector>

namespace Color
{

// The information of one transform in a catalog.
struct SearchResult
{
    // The hit is a node within a CatalogItem.
    explicit SearchResult(pugi::xml_node hit);

    // The texts that an XPath expression finds in the item.
    std::vector<std::string> getSearchResultValues(std::string const& xpath) const;
    // Where the transform's file is.
    std::string getTransformPath() const;

    // Whether both are the same place in a catalog.
    bool operator==(SearchResult const& other) const { return node == other.node; }

    // The Info element around the hit; the hit itself where there is none. It lives as long as its catalog.
    pugi::xml_node node;
    // A document of its own: a copy of the CatalogItem around the node.
    std::shared_ptr<pugi::xml_document const> item;
};

using SearchResults = std::vector<SearchResult>;

// Those of the left that are on the right as well, in the order of the left.
SearchResults operator&&(SearchResults const& left, SearchResults const& right);
// All of the left, then those of the right that are not there yet.
SearchResults operator||(SearchResults const& left, SearchResults const& right);

} // namespace Color

#endif
