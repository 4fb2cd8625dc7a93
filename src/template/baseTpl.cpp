// The base of all templates: parameters, and the transform that their values ask for.
#include "template/baseTpl.h"

#include "utils/errorMessage.h"

namespace TemplateNS
{

std::shared_ptr<Parameter> const& BaseTpl::getParameter(char const* name) const
{
    auto const found = m_parameters.find(name ? name : "");
    if (found == m_parameters.end())
    {
        throw Color::failure(Color::ErrorIds::kTemplateParameterNotFound, Color::Module::kTemplate, name);
    }
    return found->second;
}

void BaseTpl::_addParameter(std::shared_ptr<Parameter> const& parameter)
{
    m_parameters[parameter->getName()] = parameter;
}

} // namespace TemplateNS
