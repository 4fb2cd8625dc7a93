// Renderers of the range: one for each combination of scaling and of the two clamps.
#include "renderer/CPURangeOp.h"

#include "renderer/kernelsArithmetic.h"
#include "renderer/opRenderers.h"
#include "transform/rangeOp.h"

namespace Rendering
{

namespace
{

using Color::RangeOp;

RangeParameters parametersOf(RangeOp const& op)
{
    return {static_cast<float>(op.getScale()), static_cast<float>(op.getOffset()), static_cast<float>(op.getLowerBound()),
            static_cast<float>(op.getUpperBound()), static_cast<float>(op.getAlphaScale())};
}

template <RendererKind kKind>
std::unique_ptr<VirtualRenderer> make(RangeOp const& op, ArithmeticKernel kernel)
{
    return std::make_unique<StaticRenderer<kKind, RangeParameters>>(op, getArithmeticKernel(kernel), parametersOf(op));
}

std::unique_ptr<VirtualRenderer> makeScaling(RangeOp const& op)
{
    if (op.minClips() && op.maxClips())
        return make<RendererKind::RangeScaleMinMaxRenderer>(op, ArithmeticKernel::RangeScaleMinMax);
    if (op.minClips())
        return make<RendererKind::RangeScaleMinRenderer>(op, ArithmeticKernel::RangeScaleMin);
    if (op.maxClips())
        return make<RendererKind::RangeScaleMaxRenderer>(op, ArithmeticKernel::RangeScaleMax);
    return make<RendererKind::RangeScaleRenderer>(op, ArithmeticKernel::RangeScale);
}

std::unique_ptr<VirtualRenderer> makeClamping(RangeOp const& op)
{
    if (op.minClips() && op.maxClips())
        return make<RendererKind::RangeMinMaxRenderer>(op, ArithmeticKernel::RangeMinMax);
    if (op.minClips())
        return make<RendererKind::RangeMinRenderer>(op, ArithmeticKernel::RangeMin);
    if (op.maxClips())
        return make<RendererKind::RangeMaxRenderer>(op, ArithmeticKernel::RangeMax);
    return nullptr;
}

} // namespace

// A range between depths whose code values stay the same counts as not scaling; one that does nothing to them is dropped.
void RangeRenderer::addAlgorithm(RangeOp const& op, TransformProcessor& processor)
{
    if (auto renderer = op.scales(false) ? makeScaling(op) : makeClamping(op))
        processor.append(std::move(renderer));
}

} // namespace Rendering
