// Keeps catalogs of transforms in memory, and answers which spaces and views there are and how they connect.
#include "xml/catalogManager.h"

#include "utils/errorMessage.h"
#include "utils/utils.h"
#include "xml/catalogFile.h"
#include "xml/catalogVocabulary.h"

#include <algorithm>
#include <iterator>
#include <map>
#include <optional>
#include <string_view>

namespace Color
{

using namespace Xml;

namespace
{

// Where all scenes meet, and where all displays do.
struct ConnectionSpace
{
    char const* imageState;
    char const* id;
    char const* name;
};
constexpr ConnectionSpace kConnectionSpaces[] = {{"scene", "1", "ACES"}, {"output", "2", "CIE-XYZ"}};

// What leads from one connection space to the other.
struct Bridge
{
    char const* from;
    char const* to;
    char const* alias;
};
constexpr Bridge kBridges[] = {{"1", "2", "SceneToOutputBridge"}, {"2", "1", "OutputToSceneBridge"}};

// Queries over catalogs and over the item of one result.
constexpr char kBase[] = "/Catalog/CatalogItem/CatalogTransform/ProcessList/Info";
constexpr char kItem[] = "/CatalogItem/CatalogTransform/ProcessList/Info";

template <class... Arguments>
Exception catalogFailure(ErrorSite site, Arguments const&... arguments)
{
    return failure(site, Module::kCatalogManager, arguments...);
}

// A text as a reader of transforms has it: its lines, without white space at their ends, joined.
std::string joinLines(std::string_view text)
{
    std::string joined;
    while (!text.empty())
    {
        std::size_t const length = std::min(text.find('\n'), text.size());
        joined += Utils::trimString(std::string(text.substr(0, length)));
        text.remove_prefix(std::min(length + 1, text.size()));
    }
    return joined;
}

// Texts in a catalog stand on lines of their own; queries ask for the words alone.
struct TextTrimmer : pugi::xml_tree_walker
{
    bool for_each(pugi::xml_node& node) override
    {
        if (node.type() == pugi::node_pcdata)
        {
            node.set_value(joinLines(node.value()).c_str());
        }
        return true;
    }
};

// Runs an expression below the Info elements of all catalogs; in it $text stands for the text.
SearchResults find(CatalogManager const& manager, std::string const& expression, std::string const& text = std::string())
{
    pugi::xpath_variable_set variables;
    variables.set("text", text.c_str());
    return manager.searchTransforms(std::string(), kBase + expression, &variables);
}

SearchResults findTagged(CatalogManager const& manager, std::string const& tag)
{
    return find(manager, "/Category/Tags/*[name()=$text]", tag);
}

SearchResults findTransformsFromSpaceIds(CatalogManager const& manager, std::string const& inId, std::string const& outId)
{
    return find(manager, "/InputSpace/ID[text()=$text]", inId) && find(manager, "/OutputSpace/ID[text()=$text]", outId);
}

SearchResults findInputSpaces(CatalogManager const& manager, std::string const& tag)
{
    return findTagged(manager, "Input") && findTagged(manager, tag);
}

SearchResults findWorkingSpaces(CatalogManager const& manager, std::string const& tag)
{
    return (findTagged(manager, "SceneLinearWorkingSpace") || findTagged(manager, "VideoWorkingSpace")) && findTagged(manager, tag);
}

SearchResults findViewTransforms(CatalogManager const& manager, std::string const& tag)
{
    return findTagged(manager, "View") && findTagged(manager, tag);
}

SearchResults findBySpaceName(CatalogManager const& manager, std::string const& name)
{
    return find(manager, "/InputSpace/ShortName[text()=$text]", name);
}

SearchResults findByViewName(CatalogManager const& manager, std::string const& name)
{
    return find(manager, "[@name=$text]", name);
}

// The first of the results. The kind is for the message: "Input space", "Working space" or "View".
SearchResult const& requireOne(SearchResults const& results, char const* kind, std::string const& name)
{
    if (results.empty())
    {
        throw catalogFailure(ErrorIds::kCatalogTransformNotFound, kind, name);
    }
    return results.front();
}

// Without empty ones, which no menu could offer.
std::vector<std::string> getSortedValues(SearchResults const& results, std::string const& expression)
{
    std::vector<std::string> names;
    for (SearchResult const& result : results)
    {
        std::vector<std::string> const values = result.getSearchResultValues(kItem + expression);
        std::copy_if(values.begin(), values.end(), std::back_inserter(names),
                     [](std::string const& name) { return !name.empty(); });
    }
    std::sort(names.begin(), names.end());
    return names;
}

std::vector<std::string> getInfoValues(SearchResult const& result, std::string const& key)
{
    return result.getSearchResultValues(kItem + ("/" + key));
}

// Whether a transform tells the key, a path such as "InputSpace/ID".
bool hasInfoValue(SearchResult const& result, std::string const& key)
{
    return !getInfoValues(result, key).empty();
}

// Empty where the transform does not tell the key.
std::string extractInfoValue(SearchResult const& result, std::string const& key)
{
    std::vector<std::string> const values = getInfoValues(result, key);
    return values.empty() ? std::string() : values.front();
}

ConnectionSpace const& connectionSpaceOf(std::string const& imageState)
{
    for (ConnectionSpace const& space : kConnectionSpaces)
    {
        if (imageState == space.imageState)
        {
            return space;
        }
    }
    throw catalogFailure(ErrorIds::kCatalogImageStateIllegal, imageState);
}

std::optional<std::string> findBridge(std::string const& from, std::string const& to)
{
    for (Bridge const& bridge : kBridges)
    {
        if (from == bridge.from && to == bridge.to)
        {
            return bridge.alias;
        }
    }
    return std::nullopt;
}

// From the source's output to the target's input through the connection spaces of their image states. The way begins with the
// source; the target is not part of it.
ViewingPipeline connectThroughConnectionSpaces(CatalogManager const& manager, SearchResult const& source,
                                               SearchResult const& target)
{
    ConnectionSpace const& connOut = connectionSpaceOf(extractInfoValue(source, "OutputSpace/ImageState"));
    ConnectionSpace const& connIn = connectionSpaceOf(extractInfoValue(target, "InputSpace/ImageState"));
    SearchResults const toConn = findTransformsFromSpaceIds(manager, extractInfoValue(source, "OutputSpace/ID"), connOut.id);
    SearchResults const fromConn = findTransformsFromSpaceIds(manager, connIn.id, extractInfoValue(target, "InputSpace/ID"));
    if (toConn.empty())
    {
        throw catalogFailure(ErrorIds::kCatalogNoTransformToConnection, extractInfoValue(source, "OutputSpace/ShortName"),
                             connOut.name);
    }
    if (fromConn.empty())
    {
        throw catalogFailure(ErrorIds::kCatalogNoTransformFromConnection, connIn.name,
                             extractInfoValue(target, "InputSpace/ShortName"));
    }

    ViewingPipeline pipeline;
    pipeline.appendPath(source.getTransformPath());
    pipeline.appendPath(toConn.front().getTransformPath());
    if (&connOut != &connIn)
    {
        std::optional<std::string> const bridge = findBridge(connOut.id, connIn.id);
        if (!bridge)
        {
            throw catalogFailure(ErrorIds::kCatalogNoBridge, source.getTransformPath(), target.getTransformPath());
        }
        pipeline.appendAlias(*bridge);
    }
    pipeline.appendPath(fromConn.front().getTransformPath());
    return pipeline;
}

// The same by the shortest way: none, a bridge, one transform, or else through connection spaces.
ViewingPipeline getTransformPipeline(CatalogManager const& manager, SearchResult const& source, SearchResult const& target)
{
    ViewingPipeline pipeline;
    if (!hasInfoValue(target, "InputSpace/ID"))
    {
        return pipeline;
    }
    std::string const outId = extractInfoValue(source, "OutputSpace/ID");
    std::string const inId = extractInfoValue(target, "InputSpace/ID");
    pipeline.appendPath(source.getTransformPath());
    if (outId == inId)
    {
        return pipeline;
    }
    if (std::optional<std::string> const bridge = findBridge(outId, inId))
    {
        pipeline.appendAlias(*bridge);
        return pipeline;
    }
    SearchResults const direct = findTransformsFromSpaceIds(manager, outId, inId);
    if (!direct.empty())
    {
        pipeline.appendPath(direct.front().getTransformPath());
        return pipeline;
    }
    return connectThroughConnectionSpaces(manager, source, target);
}

} // namespace

struct CatalogManager::Impl
{
    std::map<std::string, pugi::xml_document> catalogs;
};

CatalogManager::CatalogManager() : m_impl(std::make_unique<Impl>()) {}

CatalogManager::~CatalogManager() = default;

std::string CatalogManager::buildCatalog(std::string const& catalogFile, std::string const& folder, bool force)
{
    return Color::buildCatalog(catalogFile, folder, force);
}

void CatalogManager::loadCatalog(std::string const& name, std::string const& file)
{
    if (name.empty())
    {
        throw catalogFailure(ErrorIds::kCatalogFilenameIllegal, name);
    }
    pugi::xml_document document;
    if (!document.load_file(file.c_str()))
    {
        throw catalogFailure(ErrorIds::kCatalogLoad, file);
    }
    TextTrimmer trimmer;
    document.traverse(trimmer);
    m_impl->catalogs.try_emplace(name, std::move(document));
}

void CatalogManager::clearCatalog(std::string const& name)
{
    if (name.empty())
    {
        m_impl->catalogs.clear();
    }
    else
    {
        m_impl->catalogs.erase(name);
    }
}

SearchResults CatalogManager::searchTransforms(std::string const& catalogName, std::string const& xpath,
                                               pugi::xpath_variable_set* variables) const
{
    pugi::xpath_query const query(xpath.c_str(), variables);
    SearchResults results;
    for (auto const& [name, catalog] : m_impl->catalogs)
    {
        if (catalogName.empty() || catalogName == name)
        {
            pugi::xpath_node_set hits = query.evaluate_node_set(catalog);
            hits.sort();
            for (pugi::xpath_node const& hit : hits)
            {
                results.emplace_back(hit.node() ? hit.node() : hit.parent());
            }
        }
    }
    return results;
}

std::vector<std::string> CatalogManager::getInputSpaceNames(std::string const& tag) const
{
    return getSortedValues(findInputSpaces(*this, tag), "/InputSpace/ShortName/text()");
}

std::vector<std::string> CatalogManager::getWorkingSpaceNames(std::string const& tag) const
{
    return getSortedValues(findWorkingSpaces(*this, tag), "/InputSpace/ShortName/text()");
}

std::vector<std::string> CatalogManager::getViewTransformNames(std::string const& tag) const
{
    return getSortedValues(findViewTransforms(*this, tag), "/@name");
}

ViewingPipeline CatalogManager::getInputPipeline(std::string const& tag, std::string const& inputSpace,
                                                 std::string const& workingSpace) const
{
    SearchResults const inputs = findInputSpaces(*this, tag) && findBySpaceName(*this, inputSpace);
    SearchResult const& input = requireOne(inputs, "Input space", inputSpace);
    if (!hasInfoValue(input, "OutputSpace/ID"))
    {
        throw catalogFailure(ErrorIds::kCatalogInputSpaceId, inputSpace);
    }
    SearchResults const workings = findWorkingSpaces(*this, tag) && findBySpaceName(*this, workingSpace);
    return getTransformPipeline(*this, input, requireOne(workings, "Working space", workingSpace));
}

ViewingPipeline CatalogManager::getViewingPipeline(std::string const& tag, std::string const& workingSpace,
                                                   std::string const& view) const
{
    SearchResults const workings = findWorkingSpaces(*this, tag) && findBySpaceName(*this, workingSpace);
    SearchResult const& working = requireOne(workings, "Working space", workingSpace);
    if (!hasInfoValue(working, "OutputSpace/ID"))
    {
        throw catalogFailure(ErrorIds::kCatalogWorkingSpaceId, workingSpace);
    }
    SearchResults const views = findViewTransforms(*this, tag) && findByViewName(*this, view);
    SearchResult const& target = requireOne(views, "View", view);
    ViewingPipeline pipeline = getTransformPipeline(*this, working, target);
    pipeline.appendPath(target.getTransformPath());
    return pipeline;
}

} // namespace Color
