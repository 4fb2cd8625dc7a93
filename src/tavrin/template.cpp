// Templates and their parameters.
#include <tavrin/template.h>

#include "tavrin/templateImpl.h"
#include "tavrin/transformImpl.h"
#include "template/OCIOViewingTpl.h"
#include "template/nativeInputTpl.h"
#include "template/nativeViewingTpl.h"
#include "template/stockViewingTpl.h"
#include "utils/errorMessage.h"
#include "xml/catalogManagerInstance.h"

namespace Tavrin
{

using Color::statusOf;
using Color::Xml::Impl::CatalogManagerInstance;

Template::~Template() = default;
TemplateParameter::~TemplateParameter() = default;

TavStatus loadNativeTemplate(TemplateType type, char const* product, TemplatePtr& result)
{
    return statusOf([&] { result.reset(Impl::TemplateImpl::buildNative(type, product).release()); });
}

TavStatus loadStockTemplate(StockTemplate type, TemplatePtr& result)
{
    return statusOf([&] { result.reset(Impl::TemplateImpl::buildStock(type).release()); });
}

TavStatus loadOCIOTemplate(char const* configFile, TemplatePtr& result)
{
    return statusOf([&] { result.reset(Impl::TemplateImpl::buildOCIO(configFile).release()); });
}

TavStatus reloadCatalogs()
{
    return statusOf([] { CatalogManagerInstance::getInstance().reloadCatalogs(); });
}

namespace Impl
{

namespace
{

// The text, or null where the body throws since there is none.
template <class Body>
char const* textOrNull(Body&& body)
{
    char const* text = nullptr;
    TavStatus const status = statusOf([&] { text = body().c_str(); });
    return status ? text : nullptr;
}

std::unique_ptr<TemplateNS::BaseTpl> createNativeTpl(TemplateType type, char const* product)
{
    switch (type)
    {
    case TEMPLATE_VIEWING:
        return std::make_unique<TemplateNS::NativeViewingTpl>(product);
    case TEMPLATE_INPUT:
        return std::make_unique<TemplateNS::NativeInputTpl>(product);
    }
    throw Color::failure(Color::ErrorIds::kInvalidParameter, Color::Module::kLibrary);
}

} // namespace

std::unique_ptr<TemplateImpl> TemplateImpl::buildNative(TemplateType type, char const* product)
{
    return std::make_unique<TemplateImpl>(createNativeTpl(type, product));
}

std::unique_ptr<TemplateImpl> TemplateImpl::buildStock(StockTemplate type)
{
    return std::make_unique<TemplateImpl>(std::make_unique<TemplateNS::StockViewingTpl>(type));
}

std::unique_ptr<TemplateImpl> TemplateImpl::buildOCIO(char const* configFile)
{
    return std::make_unique<TemplateImpl>(std::make_unique<TemplateNS::OCIOViewingTpl>(configFile));
}

TavStatus TemplateImpl::getParameter(char const* name, TemplateParameterPtr& parameter) const
{
    return statusOf([&] { parameter.reset(new TemplateParameterImpl(m_tpl->getParameter(name))); });
}

TavStatus TemplateImpl::createTransform(TransformPtr& transform) const
{
    return statusOf(
        [&]
        {
            std::shared_ptr<Color::Transform> const model = m_tpl->createTransform();
            transform.reset(model ? new Transform(model) : nullptr);
        });
}

char const* TemplateParameterImpl::getValue(unsigned int index) const
{
    return textOrNull([&]() -> std::string const& { return m_parameter->getValue(index); });
}

TavStatus TemplateParameterImpl::select(unsigned int index)
{
    return statusOf([&] { m_parameter->select(index); });
}

TavStatus TemplateParameterImpl::select(char const* value)
{
    return statusOf([&] { m_parameter->select(value); });
}

char const* TemplateParameterImpl::getSelectedValue() const
{
    return textOrNull([&]() -> std::string const& { return m_parameter->getSelectedValue(); });
}

} // namespace Impl

} // namespace Tavrin
