// A colour transform: an ordered list of operators that pixels are pushed through.
#ifndef TAVRIN_TRANSFORM_H
#define TAVRIN_TRANSFORM_H

#include <tavrin/dynamicProperty.h>
#include <tavrin/export.h>
#include <tavrin/gpuAdaptor.h>
#include <tavrin/handle.h>
#include <tavrin/status.h>
#include <tavrin/vocabulary.h>

namespace Tavrin
{

class TransformPtr;

// One transform. Finalize it for a pair of pixel formats, then apply it as often as needed.
//
// References to other files are resolved when the transform is made, and that fails where they can't be. When an alias that it
// depends on changes, the transform resolves them anew and is finalized as it was before.
//
// Threads: a finalized transform may be applied from several threads at once, on different destinations. Everything that
// changes it (finalize, update, setters) must not overlap with an apply; the caller sees to that. Dynamic properties may be
// set at any time: a line that is being rendered keeps the values it began with.
class TAVRIN_API Transform
{
public:
    // Receives what extractContent tells. Texts live as long as the call.
    class TAVRIN_API ContentCallbacks
    {
    public:
        virtual ~ContentCallbacks();
        virtual void beginSection(char const* name) = 0;
        virtual void endSection() = 0;
        virtual void addEntry(char const* key, char const* value) = 0;
    };

    virtual ~Transform();

    // A copy that must be finalized anew. Dynamic properties are shared with the copy; renderers, flags and the GPU adaptor
    // are not copied. An empty handle when the transform has references that can't be resolved.
    virtual TransformPtr clone() const = 0;

    // Texts stay valid until the next change of the transform. An id can't be empty; null counts as an empty text.
    virtual char const* getId() const = 0;
    virtual TavStatus setId(char const* id) = 0;
    virtual char const* getName() const = 0;
    virtual TavStatus setName(char const* name) = 0;
    // All descriptions, a line each; valid until the next call for any transform, from any thread.
    virtual char const* getDescriptions() const = 0;
    // Replaces all descriptions by this one.
    virtual TavStatus setDescription(char const* description) = 0;
    virtual char const* getInputDescriptor() const = 0;
    virtual TavStatus setInputDescriptor(char const* descriptor) = 0;
    virtual char const* getOutputDescriptor() const = 0;
    virtual TavStatus setOutputDescriptor(char const* descriptor) = 0;

    // The depths of the first operator's input and the last one's output; BIT_DEPTH_UNKNOWN when there are no operators.
    virtual BitDepth getInputBitDepth() const = 0;
    virtual BitDepth getOutputBitDepth() const = 0;

    // The formats of the last finalize. Setting another one finalizes again with the stored flags.
    virtual PixelFormat getInputPixelFormat() const = 0;
    virtual TavStatus setInputPixelFormat(PixelFormat format) = 0;
    virtual PixelFormat getOutputPixelFormat() const = 0;
    virtual TavStatus setOutputPixelFormat(PixelFormat format) = 0;
    virtual TavStatus setPixelFormats(PixelFormat input, PixelFormat output) = 0;

    // True when this transform says that it is the inverse of the other one.
    virtual bool isInverseOf(TransformPtr const& other) const = 0;
    virtual bool hasReferences() const = 0;
    virtual bool hasAliasReferencesToResolve() const = 0;

    // Tells the whole transform, section by section.
    virtual TavStatus extractContent(ContentCallbacks& callbacks) const = 0;

    // Only properties that the transform declares dynamic can be set or read. The next rendered line sees the new value, as long as
    // finalize left the operator that has the property: with OPTIMIZER_KEEP_DYNAMIC it always does; without, an operator that did
    // nothing at that time is gone until the next finalize, and merged operators have the bypass of the first of them.
    virtual TavStatus setDynamicProperty(DynamicProperty const& property) = 0;
    // Property carries the id in and the value out.
    virtual TavStatus getDynamicProperty(DynamicProperty& property) const = 0;

    // Needs a new finalize; until then nothing renders.
    virtual TavStatus setGPUAdaptor(GPUAdaptorPtr& adaptor) = 0;
    virtual GPUAdaptorPtr getGPUAdaptor() const = 0;

    // Builds the renderers that the flags ask for. After a failure the transform has none.
    virtual TavStatus finalize(PixelFormat input, PixelFormat output, RendererFlags rendererFlags, OptimizerFlags optimizerFlags,
                               ResolveFlags resolveFlags) = 0;

    // Renders the active area. Rows of source and destination are as wide as the image and follow each other without a gap.
    // Source and destination may be the same memory when both formats are the same.
    virtual TavStatus applyCPU(void const* source, ROI const& roi, void* destination) = 0;
    // The same with the bytes from one row to the next told for each side.
    virtual TavStatus applyCPU(void const* source, unsigned int sourceStride, ROI const& roi, void* destination,
                               unsigned int destinationStride) = 0;

    // Draws the texture through the adaptor.
    virtual TavStatus applyGPU(unsigned int textureId, Vertices const& position, Vertices const& textureCoordinates) const = 0;

    // Resolves references anew and finalizes with the stored values.
    virtual void update() = 0;
};

class TAVRIN_API TransformPtr : public Handle<Transform>
{
public:
    using Handle::Handle;
};

// Tells, as extractContent does, what finalize would make of the transform for the CPU: the operators that the optimizer leaves, at
// the depths at which they are rendered. Each has an entry "Renderer" with the kind of its renderer, "none" where there is nothing
// left to do; a section "Depth Conversion" stands for a renderer that belongs to no operator. The handle can't be empty; the
// transform stays as it is.
TAVRIN_API TavStatus extractOptimizedContent(TransformPtr const& transform, PixelFormat input, PixelFormat output,
                                             OptimizerFlags optimizerFlags, Transform::ContentCallbacks& callbacks);

} // namespace Tavrin

#endif
