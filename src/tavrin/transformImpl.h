// The transform behind a public handle: a model, and the renderers that finalize builds for it.
#ifndef TAVRIN_TAVRIN_TRANSFORM_IMPL_H
#define TAVRIN_TAVRIN_TRANSFORM_IMPL_H

#include "renderer/genericRenderer.h"
#include "tavrin/aliasRegistration.h"
#include "transform/transform.h"
#include "utils/observable.h"

#include <tavrin/gpuAdaptor.h>
#include <tavrin/transform.h>

#include <memory>
#include <mutex>
#include <string>

namespace Tavrin::Impl
{

// Comments on the operations stand at the interface.
class Transform : public Tavrin::Transform, public Color::Observer
{
public:
    // The model belongs to the new object alone from here on; it can't be null. Its references are resolved, relative ones against
    // the path of the file that it was read from; a failure to do so is thrown. From then on the object follows their aliases.
    explicit Transform(std::shared_ptr<Color::Transform> transform, std::string const& fullPath = std::string());

    // The model behind a handle, null for an empty handle.
    static std::shared_ptr<Color::Transform> getModel(TransformPtr const& handle);

    TransformPtr clone() const override;
    char const* getId() const override;
    TavStatus setId(char const* id) override;
    char const* getName() const override;
    TavStatus setName(char const* name) override;
    char const* getDescriptions() const override;
    TavStatus setDescription(char const* description) override;
    char const* getInputDescriptor() const override;
    TavStatus setInputDescriptor(char const* descriptor) override;
    char const* getOutputDescriptor() const override;
    TavStatus setOutputDescriptor(char const* descriptor) override;
    BitDepth getInputBitDepth() const override;
    BitDepth getOutputBitDepth() const override;
    PixelFormat getInputPixelFormat() const override;
    TavStatus setInputPixelFormat(PixelFormat format) override;
    PixelFormat getOutputPixelFormat() const override;
    TavStatus setOutputPixelFormat(PixelFormat format) override;
    TavStatus setPixelFormats(PixelFormat input, PixelFormat output) override;
    bool isInverseOf(TransformPtr const& other) const override;
    bool hasReferences() const override;
    bool hasAliasReferencesToResolve() const override;
    TavStatus extractContent(ContentCallbacks& callbacks) const override;
    TavStatus setDynamicProperty(DynamicProperty const& property) override;
    TavStatus getDynamicProperty(DynamicProperty& property) const override;
    TavStatus setGPUAdaptor(GPUAdaptorPtr& adaptor) override;
    GPUAdaptorPtr getGPUAdaptor() const override;
    TavStatus finalize(PixelFormat input, PixelFormat output, RendererFlags rendererFlags, OptimizerFlags optimizerFlags,
                       ResolveFlags resolveFlags) override;
    TavStatus applyCPU(void const* source, ROI const& roi, void* destination) override;
    TavStatus applyCPU(void const* source, unsigned int sourceStride, ROI const& roi, void* destination,
                       unsigned int destinationStride) override;
    TavStatus applyGPU(unsigned int textureId, Vertices const& position, Vertices const& textureCoordinates) const override;
    // Also what a change of an observed alias calls.
    void update() override;

    // What finalize would make of the transform for the formats; the transform stays as it is.
    void extractOptimizedContent(PixelFormat input, PixelFormat output, OptimizerFlags optimizerFlags,
                                 ContentCallbacks& callbacks) const;
    // A new transform of the operators that the optimizer leaves, references replaced by what they point at.
    std::shared_ptr<Color::Transform> getOptimizedTransform(OptimizerFlags flags) const;
    // The transform with its references replaced by what they point at; itself when it has none.
    std::shared_ptr<Color::Transform> getResolvedTransform() const;

private:
    std::unique_lock<std::recursive_mutex> _lockAgainstAliases() const;
    void _resolve(ResolveFlags flags);
    void _resolveAnew(ResolveFlags flags);
    void _registerToAliases();
    void _deregisterFromAliases();
    std::shared_ptr<Rendering::GenericCPURenderer> _createCPURenderer(std::shared_ptr<Color::Transform> const& transform) const;
    std::shared_ptr<Rendering::GenericGPURenderer> _createGPURenderer(std::shared_ptr<Color::Transform> const& transform);
    void _releaseRenderers();
    void _requireCPURenderer() const;

    std::shared_ptr<Color::Transform> m_transform;
    std::shared_ptr<Rendering::GenericCPURenderer> m_cpuRenderer;
    std::shared_ptr<Rendering::GenericGPURenderer> m_gpuRenderer;
    RendererFlags m_rendererFlags = 0;
    OptimizerFlags m_optimizerFlags = OPTIMIZER_DEFAULT_THRESHOLD;
    PixelFormat m_inputPixelFormat = PF_UNKNOWN;
    PixelFormat m_outputPixelFormat = PF_UNKNOWN;
    std::string const m_fullPath;
    ResolveFlags m_resolveFlags = RESOLVE_BROADCAST_MONITOR;
    GPUAdaptorPtr m_gpuAdaptor;
    // Of a transform with references. Last, as it wants to be; and its destructor ends before the pointer changes, which update
    // reads.
    std::unique_ptr<AliasRegistration> m_registration;
};

} // namespace Tavrin::Impl

#endif
