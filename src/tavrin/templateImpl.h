// The template and the parameter behind public handles.
#ifndef TAVRIN_TAVRIN_TEMPLATE_IMPL_H
#define TAVRIN_TAVRIN_TEMPLATE_IMPL_H

#include "template/baseTpl.h"

#include <tavrin/template.h>

#include <memory>

namespace Tavrin::Impl
{

// Comments on the operations stand at the interfaces.
class TemplateImpl : public Template
{
public:
    explicit TemplateImpl(std::unique_ptr<TemplateNS::BaseTpl> tpl) : m_tpl(std::move(tpl)) {}

    // These throw for types that do not exist, and whatever the template throws.
    static std::unique_ptr<TemplateImpl> buildNative(TemplateType type, char const* product);
    static std::unique_ptr<TemplateImpl> buildStock(StockTemplate type);
    static std::unique_ptr<TemplateImpl> buildOCIO(char const* configFile);

    TavStatus getParameter(char const* name, TemplateParameterPtr& parameter) const override;
    TavStatus createTransform(TransformPtr& transform) const override;

private:
    std::unique_ptr<TemplateNS::BaseTpl> m_tpl;
};

class TemplateParameterImpl : public TemplateParameter
{
public:
    explicit TemplateParameterImpl(std::shared_ptr<TemplateNS::Parameter> parameter) : m_parameter(std::move(parameter)) {}

    char const* getName() const override { return m_parameter->getName().c_str(); }
    unsigned int getNumValues() const override { return m_parameter->getNumValues(); }
    char const* getValue(unsigned int index) const override;
    TavStatus select(unsigned int index) override;
    TavStatus select(char const* value) override;
    void deselect() override { m_parameter->deselect(); }
    int getSelectedIndex() const override { return m_parameter->getSelectedIndex(); }
    char const* getSelectedValue() const override;

private:
    std::shared_ptr<TemplateNS::Parameter> m_parameter;
};

} // namespace Tavrin::Impl

#endif
