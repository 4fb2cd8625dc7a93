// The renderer of pictures in memory: an operator list turned into a row of renderers.
#ifndef TAVRIN_RENDERER_CPU_RENDERER_H
#define TAVRIN_RENDERER_CPU_RENDERER_H

#include "renderer/genericRenderer.h"
#include "renderer/valueTables.h"
#include "renderer/virtualRenderer.h"

#include <memory>
#include <vector>

namespace Rendering
{

// What a transform is turned into between two pixel formats.
struct Pipeline
{
    // What was handed in, at the depths at which it is rendered.
    std::shared_ptr<Color::Transform> transform;
    // There is at least one.
    std::shared_ptr<TransformProcessor> renderers;
    // For each operator its renderer, null for one that leaves nothing to do.
    std::vector<VirtualRenderer const*> rendererOfOp;

    // The only renderer then belongs to no operator.
    bool convertsDepthOnly() const;
};

// The transform becomes the pipeline's. Throws for null, for unresolved references, and for an operator that can't be rendered.
Pipeline makePipeline(std::shared_ptr<Color::Transform> const& transform, PixelFormat in, PixelFormat out);

class CPURenderer : public GenericCPURenderer
{
public:
    RenderingType getType() const override { return RENDERING_CPU; }
    void finalize(std::shared_ptr<Color::Transform> const& transform, PixelFormat in, PixelFormat out) override;
    void apply(void const* source, void* destination, ROI const& roi, unsigned int sourcePadding,
               unsigned int destinationPadding) override;

    // 0 before finalize.
    unsigned int getNumRenderers() const;
    // The kind of the renderer at the index, 0 to 36; throws beyond the end.
    unsigned int getRendererType(unsigned int index) const;

private:
    PixelFormat m_inPF = Tavrin::PF_UNKNOWN;
    PixelFormat m_outPF = Tavrin::PF_UNKNOWN;
    std::shared_ptr<TransformProcessor const> m_processor;
    std::unique_ptr<ValueTablesOnDemand> m_valueTables;
};

} // namespace Rendering

#endif
