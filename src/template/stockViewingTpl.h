// A template around a transform that comes with the library.
#ifndef TAVRIN_TEMPLATE_STOCK_VIEWING_TPL_H
#define TAVRIN_TEMPLATE_STOCK_VIEWING_TPL_H

#include "template/viewingBaseTpl.h"

#include <tavrin/template.h>

namespace TemplateNS
{

// It needs no installation. Its parameters have one value each, which is selected and which nobody reads: they are there so that an
// application can treat all templates alike.
class StockViewingTpl : public ViewingBaseTpl
{
public:
    explicit StockViewingTpl(Tavrin::StockTemplate stock);

private:
    std::shared_ptr<Color::Transform> _createTransform() const override;

    Tavrin::StockTemplate m_stock;
};

} // namespace TemplateNS

#endif
