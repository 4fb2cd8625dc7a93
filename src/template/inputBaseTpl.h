// The base of templates that lead from an input space to a working space.
#ifndef TAVRIN_TEMPLATE_INPUT_BASE_TPL_H
#define TAVRIN_TEMPLATE_INPUT_BASE_TPL_H

#include "template/baseTpl.h"
#include "template/templateUtils.h"

namespace TemplateNS
{

class InputBaseTpl : public BaseTpl
{
public:
    std::shared_ptr<Parameter> const& getInputSpaces() const { return getParameter(Utils::getInputSpaceParameterName()); }
    std::shared_ptr<Parameter> const& getWorkingSpaces() const { return getParameter(Utils::getWorkingSpaceParameterName()); }
};

} // namespace TemplateNS

#endif
