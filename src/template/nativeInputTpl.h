// The template from the input spaces of the catalogs to their working spaces.
#ifndef TAVRIN_TEMPLATE_NATIVE_INPUT_TPL_H
#define TAVRIN_TEMPLATE_NATIVE_INPUT_TPL_H

#include "template/inputBaseTpl.h"

#include <string>

namespace TemplateNS
{

// Loads the catalogs if nobody has done so before; later changes of these do not change the menus.
class NativeInputTpl : public InputBaseTpl
{
public:
    // The product is the tag of the transforms in the catalogs; null and empty are refused.
    explicit NativeInputTpl(char const* product);

    std::shared_ptr<Color::Transform> createTransform() const override;

private:
    std::shared_ptr<Parameter> _buildInputSpaces() const;
    std::shared_ptr<Parameter> _buildWorkingSpaces() const;

    std::string m_product;
};

} // namespace TemplateNS

#endif
