// The base of templates that lead from a working space to a view.
#ifndef TAVRIN_TEMPLATE_VIEWING_BASE_TPL_H
#define TAVRIN_TEMPLATE_VIEWING_BASE_TPL_H

#include "template/baseTpl.h"
#include "template/templateUtils.h"

namespace TemplateNS
{

// Every transform for viewing takes an exposure where it begins, in the light of the scene, and a contrast where it ends, while it
// renders; and it has no references, so that it stays what it was when it was made.
class ViewingBaseTpl : public BaseTpl
{
public:
    std::shared_ptr<Color::Transform> createTransform() const final;

    std::shared_ptr<Parameter> const& getWorkingSpaces() const { return getParameter(Utils::getWorkingSpaceParameterName()); }
    std::shared_ptr<Parameter> const& getViewTransforms() const { return getParameter(Utils::getViewTransformParameterName()); }

private:
    // The transform of this kind of template by itself; never null.
    virtual std::shared_ptr<Color::Transform> _createTransform() const = 0;
};

} // namespace TemplateNS

#endif
