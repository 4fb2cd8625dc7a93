// Keeps catalogs of transforms in memory, and answers which spaces and views there are and how they connect.
#ifndef TAVRIN_XML_CATALOG_MANAGER_H
#define TAVRIN_XML_CATALOG_MANAGER_H

#include "xml/searchResult.h"
#include "xml/viewingPipeline.h"

#include <memory>
#include <string>
#include <vector>

namespace Color
{

// A tag names what belongs together, such as a product: only transforms that bear it are found by name. Nothing here takes a lock.
class CatalogManager
{
public:
    CatalogManager();
    CatalogManager(CatalogManager const&) = delete;
    CatalogManager& operator=(CatalogManager const&) = delete;
    ~CatalogManager();

    // See buildCatalog of catalogFile.h.
    std::string buildCatalog(std::string const& catalogFile, std::string const& folder, bool force);
    // Refuses an empty name and a file that is no XML. A catalog that has the name already stays.
    void loadCatalog(std::string const& name, std::string const& file);
    // An empty name stands for all of them.
    void clearCatalog(std::string const& name);

    // The transforms in which an XPath expression finds something, catalog by catalog in the order of their names, and in the order
    // of each catalog. An empty name stands for all of them. Variables of the expression are data and never syntax.
    SearchResults searchTransforms(std::string const& catalogName, std::string const& xpath,
                                   pugi::xpath_variable_set* variables = nullptr) const;

    // Sorted names.
    std::vector<std::string> getInputSpaceNames(std::string const& tag) const;
    std::vector<std::string> getWorkingSpaceNames(std::string const& tag) const;
    std::vector<std::string> getViewTransformNames(std::string const& tag) const;

    // What leads from an input space to a working space, and from a working space to what a view shows. They refuse names that are
    // not found, and spaces that nothing connects. Where the target does not say what it starts from, nothing leads to it.
    ViewingPipeline getInputPipeline(std::string const& tag, std::string const& inputSpace, std::string const& workingSpace) const;
    ViewingPipeline getViewingPipeline(std::string const& tag, std::string const& workingSpace, std::string const& view) const;

private:
    struct Impl;
    std::unique_ptr<Impl> m_impl;
};

} // namespace Color

#endif
