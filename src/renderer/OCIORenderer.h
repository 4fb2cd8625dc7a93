// Renders pictures in memory through OpenColorIO, for those who want to compare, or want OpenColorIO's pixels.
#ifndef TAVRIN_RENDERER_OCIO_RENDERER_H
#define TAVRIN_RENDERER_OCIO_RENDERER_H

#include "ocio/opUtil.h"
#include "renderer/genericRenderer.h"

#include <memory>

namespace Rendering
{

// Operators become a processor of OpenColorIO, which works on a copy of the picture in floats. Those that OpenColorIO has no
// counterpart for are refused. A bypass that can change is not looked at.
class OCIORenderer : public GenericCPURenderer
{
public:
    RenderingType getType() const override { return RENDERING_OCIO; }
    void finalize(std::shared_ptr<Color::Transform> const& transform, PixelFormat in, PixelFormat out) override;
    void apply(void const* source, void* destination, ROI const& roi, unsigned int sourcePadding,
               unsigned int destinationPadding) override;

private:
    PixelFormat m_inPF = Tavrin::PF_UNKNOWN;
    PixelFormat m_outPF = Tavrin::PF_UNKNOWN;
    std::shared_ptr<Color::OpUtil::Processor const> m_processor;
};

} // namespace Rendering

#endif
