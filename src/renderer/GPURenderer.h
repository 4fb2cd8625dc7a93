// The renderer of textures: an operator list turned into the text of one fragment shader, which a caller's adaptor runs.
#ifndef TAVRIN_RENDERER_GPU_RENDERER_H
#define TAVRIN_RENDERER_GPU_RENDERER_H

#include "renderer/genericRenderer.h"

#include <memory>

namespace Rendering
{

// All calls come on the thread that owns the adaptor's graphics context.
class GPURenderer : public GenericGPURenderer
{
public:
    GPURenderer() = default;
    GPURenderer(GPURenderer const&) = delete;
    GPURenderer& operator=(GPURenderer const&) = delete;
    // Releases the shader.
    ~GPURenderer() override;

    RenderingType getType() const override { return RENDERING_GPU; }
    void setGPUAdaptor(Tavrin::GPUAdaptorPtr& adaptor) override;
    // An adaptor is needed. After a failure the adaptor keeps what it got until then.
    void finalize(std::shared_ptr<Color::Transform> const& transform) override;
    void apply(unsigned int textureId, Tavrin::Vertices const& position, Tavrin::Vertices const& textureCoordinates) const override;

private:
    mutable Tavrin::GPUAdaptorPtr m_adaptor; // Drawing changes the state of the graphics, not ours.
    // Its properties are where the adaptor finds the values of uniforms.
    std::shared_ptr<Color::Transform const> m_transform;
};

} // namespace Rendering

#endif
