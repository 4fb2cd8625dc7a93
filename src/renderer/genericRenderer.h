// What a transform knows of its renderers, and how it comes by them.
#ifndef TAVRIN_RENDERER_GENERIC_RENDERER_H
#define TAVRIN_RENDERER_GENERIC_RENDERER_H

#include "transform/transform.h"

#include <tavrin/gpuAdaptor.h>
#include <tavrin/vocabulary.h>

#include <memory>

namespace Rendering
{

using Tavrin::PixelFormat;
using Tavrin::ROI;

enum RenderingType : unsigned int
{
    RENDERING_DEFAULT = 0,
    RENDERING_CPU = 1,
    RENDERING_OCIO = 2,
    RENDERING_GPU = 3,
    RENDERING_OCIO_GPU = 4
};

class GenericRenderer
{
public:
    virtual ~GenericRenderer() = default;
    virtual RenderingType getType() const = 0;
};

// Renders pictures in memory. Finalize once; apply then from any number of threads.
class GenericCPURenderer : public GenericRenderer
{
public:
    // Sets the transform to the depths of the formats: whoever needs it as it stands hands in a copy. A failure leaves nothing to
    // apply.
    virtual void finalize(std::shared_ptr<Color::Transform> const& transform, PixelFormat in, PixelFormat out) = 0;
    // Paddings are the bytes at the end of each row beyond the image width.
    virtual void apply(void const* source, void* destination, ROI const& roi, unsigned int sourcePadding,
                       unsigned int destinationPadding) = 0;
};

// Draws textures through an adaptor.
class GenericGPURenderer : public GenericRenderer
{
public:
    virtual void setGPUAdaptor(Tavrin::GPUAdaptorPtr& adaptor) = 0;
    virtual void finalize(std::shared_ptr<Color::Transform> const& transform) = 0;
    virtual void apply(unsigned int textureId, Tavrin::Vertices const& position,
                       Tavrin::Vertices const& textureCoordinates) const = 0;
};

// A new renderer of the type, or of the one that the environment names ("TAVRIN_CPU_RENDERER", "TAVRIN_GPU_RENDERER": "CPU",
// "OCIO", "GPU", "OCIO_GPU"). Throws when the type does not fit the side; null for a type that does not exist.
std::shared_ptr<GenericCPURenderer> getCPURenderer(RenderingType type);
std::shared_ptr<GenericGPURenderer> getGPURenderer(RenderingType type);

} // namespace Rendering

#endif
