// What a search in the catalogs finds.
#include "xml/searchResult.h"

#include "xml/catalogVocabulary.h"
#include "xml/ctfVocabulary.h"

#include <algorithm>
#include <iterator>
#include <set>

namespace Color
{

using namespace Xml;

namespace
{

// The nearest element of that name that holds the node, or is it; empty when there is none.
pugi::xml_node findAround(pugi::xml_node node, std::string const& name)
{
    while (node && node.name() != name)
    {
        node = node.parent();
    }
    return node;
}

pugi::xml_node findInfoNode(pugi::xml_node hit)
{
    pugi::xml_node const info = findAround(hit, TAG_INFO);
    return info ? info : hit;
}

std::shared_ptr<pugi::xml_document const> copyItem(pugi::xml_node node)
{
    auto item = std::make_shared<pugi::xml_document>();
    item->append_copy(findAround(node, TAG_CATALOG_ITEM));
    return item;
}

std::string textOf(pugi::xpath_node const& hit)
{
    if (hit.attribute())
    {
        return hit.attribute().value();
    }
    return hit.node().type() == pugi::node_element ? hit.node().child_value() : hit.node().value();
}

using Nodes = std::set<pugi::xml_node>;

Nodes nodesOf(SearchResults const& results)
{
    Nodes nodes;
    std::transform(results.begin(), results.end(), std::inserter(nodes, nodes.end()),
                   [](SearchResult const& result) { return result.node; });
    return nodes;
}

} // namespace

SearchResult::SearchResult(pugi::xml_node hit) : node(findInfoNode(hit)), item(copyItem(hit)) {}

std::vector<std::string> SearchResult::getSearchResultValues(std::string const& xpath) const
{
    pugi::xpath_node_set hits = item->select_nodes(xpath.c_str());
    hits.sort();
    std::vector<std::string> values;
    std::transform(hits.begin(), hits.end(), std::back_inserter(values), textOf);
    return values;
}

std::string SearchResult::getTransformPath() const
{
    std::vector<std::string> const values = getSearchResultValues("/CatalogItem/CatalogTransformPath/text()");
    return values.empty() ? std::string() : values.front();
}

SearchResults operator&&(SearchResults const& left, SearchResults const& right)
{
    Nodes const known = nodesOf(right);
    SearchResults results;
    std::copy_if(left.begin(), left.end(), std::back_inserter(results),
                 [&](SearchResult const& result) { return known.contains(result.node); });
    return results;
}

SearchResults operator||(SearchResults const& left, SearchResults const& right)
{
    Nodes const known = nodesOf(left);
    SearchResults results = left;
    std::copy_if(right.begin(), right.end(), std::back_inserter(results),
                 [&](SearchResult const& result) { return !known.contains(result.node); });
    return results;
}

} // namespace Color
