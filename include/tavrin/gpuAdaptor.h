// What a caller implements to run transforms on the GPU: the library writes shader text, the adaptor owns the graphics.
#ifndef TAVRIN_GPU_ADAPTOR_H
#define TAVRIN_GPU_ADAPTOR_H

#include <tavrin/dynamicProperty.h>
#include <tavrin/export.h>
#include <tavrin/status.h>
#include <tavrin/vocabulary.h>

#include <memory>

namespace Tavrin
{

// Compiles a fragment shader, holds its textures and uniforms, and draws. All calls come on the caller's thread, which owns
// the graphics context. A failing status stops the call that needed the operation.
class TAVRIN_API GPUAdaptor
{
public:
    enum ShaderLanguage : unsigned int
    {
        LANGUAGE_GLSL = 0,
        LANGUAGE_CG = 1,
        LANGUAGE_MUL = 2
    };

    // For the adaptor alone to interpret.
    enum PipelineType : unsigned int
    {
        PIPELINE_DEFAULT = 0
    };

    GPUAdaptor(ShaderLanguage language, PipelineType pipeline);
    GPUAdaptor(GPUAdaptor const&) = delete;
    GPUAdaptor& operator=(GPUAdaptor const&) = delete;
    virtual ~GPUAdaptor();

    // A new shader begins.
    virtual TavStatus beginShader() = 0;
    // The shader, if there is one, is no longer needed.
    virtual TavStatus releaseShader() = 0;
    // The five texts make one fragment shader, in this order.
    virtual TavStatus compileShader(char const* shaderHeader, char const* helperMethods, char const* mainHeader,
                                    char const* processing, char const* footer) = 0;
    // A float uniform. Value points at a bool if isBoolean is set, which becomes 1 or 0, and else at a double. It is read anew for
    // each drawing and lives until the shader is released. A failing status is ignored.
    virtual TavStatus addUniform(DynamicProperty::Ids id, bool isDynamic, char const* name, bool isBoolean, void const* value) = 0;
    // How a table of that many entries goes into a texture: in one row (height 1), or folded to rows of the width, each of which
    // begins with the last value of the one before. Then (width - 1) * height has to be at least length. A half-domain table, which
    // has 65536 entries, needs a height above 1.
    virtual TavStatus getTextureSize(unsigned int length, unsigned int* width, unsigned int* height) = 0;
    // Textures of 32-bit floats. Values are the caller's again after the call, so an adaptor copies them. One dimension: red alone,
    // with linear interpolation, except that of a dither, which wants the nearest (its name begins with "bayer_").
    virtual TavStatus addTexture1D(char const* name, float const* values, unsigned int length) = 0;
    virtual TavStatus addTexture2D(char const* name, unsigned int width, unsigned int height, float const* values) = 0;
    // Red, green and blue, with linear interpolation or the nearest; the first axis of the texture varies fastest. A failing status
    // is ignored.
    virtual TavStatus addTexture3D(char const* name, unsigned int edgeLength, bool linear, float const* values,
                                   unsigned int count) = 0;
    // Forgets textures and uniforms. A failing status is ignored.
    virtual TavStatus resetResources() = 0;
    // The name of the sampler of the picture. In Cg it has to be "frontTex".
    virtual char const* getInputTextureName() = 0;
    // Draws the texture through the shader.
    virtual TavStatus drawFrame(unsigned int texture, Vertices const& position, Vertices const& textureCoordinates) = 0;

    ShaderLanguage getLanguage() const { return m_language; }
    PipelineType getPipeline() const { return m_pipeline; }

private:
    ShaderLanguage m_language;
    PipelineType m_pipeline;
};

// A handle to an adaptor; copies share it, and the last one deletes it.
class TAVRIN_API GPUAdaptorPtr
{
public:
    GPUAdaptorPtr();
    // Takes ownership.
    explicit GPUAdaptorPtr(GPUAdaptor* adaptor);
    GPUAdaptorPtr(GPUAdaptorPtr const& other);
    ~GPUAdaptorPtr();

    // Takes ownership.
    GPUAdaptorPtr& operator=(GPUAdaptor* adaptor);
    GPUAdaptorPtr& operator=(GPUAdaptorPtr const& other);

    // Null when the handle is empty.
    GPUAdaptor* operator->();
    GPUAdaptor const* operator->() const;
    GPUAdaptor* get();
    GPUAdaptor const* get() const;

private:
    std::shared_ptr<GPUAdaptor> m_adaptor;
};

} // namespace Tavrin

#endif
