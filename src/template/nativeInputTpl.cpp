// The template from the input spaces of the catalogs to their working spaces.
#include "template/nativeInputTpl.h"

namespace TemplateNS
{

NativeInputTpl::NativeInputTpl(char const* product) : m_product(Utils::requireProduct(product))
{
    _addParameter(_buildInputSpaces());
    _addParameter(_buildWorkingSpaces());
}

std::shared_ptr<Color::Transform> NativeInputTpl::createTransform() const
{
    std::string const& inputSpace = getInputSpaces()->getSelectedValue();
    std::string const& workingSpace = getWorkingSpaces()->getSelectedValue();
    return Utils::loadPipeline(Utils::getCatalogs().getInputPipeline(m_product, inputSpace, workingSpace));
}

std::shared_ptr<Parameter> NativeInputTpl::_buildInputSpaces() const
{
    return Utils::buildParameter(Utils::getInputSpaceParameterName(), Utils::getCatalogs().getInputSpaceNames(m_product));
}

std::shared_ptr<Parameter> NativeInputTpl::_buildWorkingSpaces() const
{
    return Utils::buildParameter(Utils::getWorkingSpaceParameterName(), Utils::getCatalogs().getWorkingSpaceNames(m_product));
}

} // namespace TemplateNS
