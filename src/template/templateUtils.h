// What templates share: the names of their parameters, their menus, and the loading of pipelines.
#ifndef TAVRIN_TEMPLATE_TEMPLATE_UTILS_H
#define TAVRIN_TEMPLATE_TEMPLATE_UTILS_H

#include "template/parameter.h"
#include "transform/transform.h"
#include "utils/preferences.h"
#include "xml/catalogManager.h"

#include <memory>
#include <string>
#include <vector>

namespace TemplateNS::Utils
{

constexpr char const* getWorkingSpaceParameterName()
{
    return "working_space";
}
constexpr char const* getViewTransformParameterName()
{
    return "view_transform";
}
constexpr char const* getInputSpaceParameterName()
{
    return "input_space";
}

// Nothing is selected.
std::shared_ptr<Parameter> buildParameter(char const* name, std::vector<std::string> const& values);

// The name of a product; refuses null and empty.
std::string requireProduct(char const* product);

// The catalogs of the process, which are loaded if nobody has done so before.
Color::CatalogManager const& getCatalogs();

// The file that an alias stands for. Refuses a relative path that is not told what it is relative to.
std::string getAliasFullPath(std::string const& alias, Color::ReferenceTable::AliasInfo const& aliasInfo);

// One transform that does what all stages do, in their order, and says that it leads to where the last one leads. Null for no
// stages.
std::shared_ptr<Color::Transform> loadPipeline(Color::ViewingPipeline const& pipeline);

} // namespace TemplateNS::Utils

#endif
