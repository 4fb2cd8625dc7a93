// A template around a transform that comes with the library.
#include "template/stockViewingTpl.h"

#include "transform/transformFactory.h"

namespace TemplateNS
{

StockViewingTpl::StockViewingTpl(Tavrin::StockTemplate stock) : m_stock(stock)
{
    for (char const* const name : {Utils::getWorkingSpaceParameterName(), Utils::getViewTransformParameterName()})
    {
        _addParameter(Utils::buildParameter(name, {"raw"}));
        getParameter(name)->select(0U);
    }
}

// Stock templates and stock transforms are counted alike.
std::shared_ptr<Color::Transform> StockViewingTpl::_createTransform() const
{
    return Color::createStockTransform(static_cast<Tavrin::StockTransform>(m_stock));
}

} // namespace TemplateNS
