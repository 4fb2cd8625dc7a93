// The base of all templates: parameters, and the transform that their values ask for.
#ifndef TAVRIN_TEMPLATE_BASE_TPL_H
#define TAVRIN_TEMPLATE_BASE_TPL_H

#include "template/parameter.h"
#include "transform/transform.h"

#include <map>
#include <memory>
#include <string>

namespace TemplateNS
{

class BaseTpl
{
public:
    BaseTpl() = default;
    BaseTpl(BaseTpl const&) = delete;
    BaseTpl& operator=(BaseTpl const&) = delete;
    virtual ~BaseTpl() = default;

    // Null where there is nothing to do. Throws while a parameter that counts has no selection.
    virtual std::shared_ptr<Color::Transform> createTransform() const = 0;

    // Refuses an unknown name; null counts as an empty one.
    std::shared_ptr<Parameter> const& getParameter(char const* name) const;

protected:
    // Under its name.
    void _addParameter(std::shared_ptr<Parameter> const& parameter);

private:
    std::map<std::string, std::shared_ptr<Parameter>> m_parameters;
};

} // namespace TemplateNS

#endif
