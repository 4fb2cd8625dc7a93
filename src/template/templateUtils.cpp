// What templates share: the names of their parameters, their menus, and the loading of pipelines.
#include "template/templateUtils.h"

#include "transform/referenceOp.h"
#include "utils/errorMessage.h"
#include "utils/preferencesLock.h"
#include "xml/catalogManagerInstance.h"
#include "xml/fileIOManager.h"
#include "xml/preferencesInstance.h"
#include "xml/xmlTransformResolver.h"

#include <boost/filesystem/path.hpp>

namespace TemplateNS::Utils
{

namespace
{

using boost::filesystem::path;
using Color::ViewingPipelineStage;
using Color::Xml::Impl::CatalogManagerInstance;
using Color::Xml::Impl::PreferencesInstance;

std::string findAliasFullPath(std::string const& alias)
{
    auto const lock = Color::lockPreferences();
    return getAliasFullPath(alias, PreferencesInstance::getInstance().getPreferences()->getReferenceTable().findAlias(alias));
}

std::shared_ptr<Color::Transform> loadStage(ViewingPipelineStage const& stage)
{
    return Color::FileIOManager::loadTransform(stage.isAlias ? findAliasFullPath(stage.path) : stage.path);
}

} // namespace

std::shared_ptr<Parameter> buildParameter(char const* name, std::vector<std::string> const& values)
{
    auto parameter = std::make_shared<Parameter>(name);
    for (std::string const& value : values)
    {
        parameter->appendValue(value.c_str());
    }
    return parameter;
}

std::string requireProduct(char const* product)
{
    if (!product || *product == '\0')
    {
        throw Color::failure(Color::ErrorIds::kTemplateProductName, Color::Module::kTemplate);
    }
    return product;
}

Color::CatalogManager const& getCatalogs()
{
    return CatalogManagerInstance::getInstance().getCatalogManager();
}

std::string getAliasFullPath(std::string const& alias, Color::ReferenceTable::AliasInfo const& aliasInfo)
{
    if (aliasInfo.getBasePath() == Tavrin::BASE_PATH_NONE && !path(aliasInfo.getPath()).has_root_path())
    {
        throw Color::failure(Color::ErrorIds::kTemplateReferenceBasePath, Color::Module::kTemplate, alias);
    }
    Color::ReferenceOp file;
    file.setPath(aliasInfo.getPath(), aliasInfo.getBasePath());
    return Color::TransformUtils::resolvePath(file, std::string());
}

std::shared_ptr<Color::Transform> loadPipeline(Color::ViewingPipeline const& pipeline)
{
    std::shared_ptr<Color::Transform> result;
    for (ViewingPipelineStage const& stage : pipeline)
    {
        std::shared_ptr<Color::Transform> const loaded = loadStage(stage);
        if (!result)
        {
            result = loaded;
            continue;
        }
        result->append(*loaded);
        result->setOutputDescriptor(loaded->getOutputDescriptor());
    }
    return result;
}

} // namespace TemplateNS::Utils
