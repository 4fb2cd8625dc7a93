// The template from the working spaces of the catalogs to their views.
#ifndef TAVRIN_TEMPLATE_NATIVE_VIEWING_TPL_H
#define TAVRIN_TEMPLATE_NATIVE_VIEWING_TPL_H

#include "template/viewingBaseTpl.h"

#include <string>

namespace TemplateNS
{

// Loads the catalogs if nobody has done so before; later changes of these do not change the menus.
class NativeViewingTpl : public ViewingBaseTpl
{
public:
    // The product is the tag of the transforms in the catalogs; null and empty are refused.
    explicit NativeViewingTpl(char const* product);

private:
    std::shared_ptr<Color::Transform> _createTransform() const override;
    std::shared_ptr<Parameter> _buildWorkingSpaces() const;
    std::shared_ptr<Parameter> _buildViewTransforms() const;

    std::string m_product;
};

} // namespace TemplateNS

#endif
