// The base of templates that lead from a working space to a view.
#include "template/viewingBaseTpl.h"

#include "transform/exposureContrastOp.h"
#include "xml/xmlTransformResolver.h"

namespace TemplateNS
{

using Color::DynamicProperty;
using Color::ExposureContrastOp;
using Color::Op;
using Color::OpList;
using Color::Transform;

namespace
{

// The transform with operators in place of its references; the given one stays as it is.
std::shared_ptr<Transform> withoutReferences(std::shared_ptr<Transform> const& transform)
{
    if (!transform->hasReferences())
    {
        return transform;
    }
    std::shared_ptr<Transform> resolved = transform;
    if (transform->hasUnresolvedReferences())
    {
        resolved = transform->clone(Transform::CloneType::Plain);
        Color::TransformUtils::resolve(std::string(), Tavrin::RESOLVE_GRAPHICS_MONITOR, resolved);
    }
    return resolved->clone(Transform::CloneType::Flat);
}

// Whether an operator for exposure and contrast has this property.
bool hasDynamicProperty(OpList const& ops, DynamicProperty::Ids id)
{
    for (unsigned int i = 0; i < ops.size(); ++i)
    {
        Op const& op = ops.get(i);
        if (op.getOpType() == Op::OpType::ExposureContrastOp && op.hasDynamicProperty(id))
        {
            return true;
        }
    }
    return false;
}

// At rest, and neutral around white.
std::unique_ptr<ExposureContrastOp> createExposureContrastOp()
{
    auto op = std::make_unique<ExposureContrastOp>(Tavrin::BIT_DEPTH_32f, Tavrin::BIT_DEPTH_32f, ExposureContrastOp::Style::Linear);
    op->setPivot(1.0);
    return op;
}

void ensureDynamicExposure(OpList& ops)
{
    if (!hasDynamicProperty(ops, DynamicProperty::EXPOSURE))
    {
        auto op = createExposureContrastOp();
        op->getExposure()->setDynamic(true);
        ops.prepend(op.release());
    }
}

void ensureDynamicContrast(OpList& ops)
{
    if (!hasDynamicProperty(ops, DynamicProperty::CONTRAST))
    {
        auto op = createExposureContrastOp();
        op->getContrast()->setDynamic(true);
        ops.append(op.release());
    }
}

} // namespace

std::shared_ptr<Transform> ViewingBaseTpl::createTransform() const
{
    std::shared_ptr<Transform> transform = withoutReferences(_createTransform());
    ensureDynamicExposure(transform->getOps());
    ensureDynamicContrast(transform->getOps());
    return transform;
}

} // namespace TemplateNS
