// The template from the working spaces of the catalogs to their views.
#include "template/nativeViewingTpl.h"

namespace TemplateNS
{

NativeViewingTpl::NativeViewingTpl(char const* product) : m_product(Utils::requireProduct(product))
{
    _addParameter(_buildWorkingSpaces());
    _addParameter(_buildViewTransforms());
}

std::shared_ptr<Color::Transform> NativeViewingTpl::_createTransform() const
{
    std::string const& workingSpace = getWorkingSpaces()->getSelectedValue();
    std::string const& view = getViewTransforms()->getSelectedValue();
    return Utils::loadPipeline(Utils::getCatalogs().getViewingPipeline(m_product, workingSpace, view));
}

std::shared_ptr<Parameter> NativeViewingTpl::_buildWorkingSpaces() const
{
    return Utils::buildParameter(Utils::getWorkingSpaceParameterName(), Utils::getCatalogs().getWorkingSpaceNames(m_product));
}

std::shared_ptr<Parameter> NativeViewingTpl::_buildViewTransforms() const
{
    return Utils::buildParameter(Utils::getViewTransformParameterName(), Utils::getCatalogs().getViewTransformNames(m_product));
}

} // namespace TemplateNS
