// An adaptor for desktop OpenGL, ready to be handed to a transform.
#ifndef TAVRIN_GL_OPEN_GL_ADAPTOR_H
#define TAVRIN_GL_OPEN_GL_ADAPTOR_H

#include <tavrin/tavrin.h>

#include <memory>

namespace TavrinGL
{

// Works with the compatibility profile, from OpenGL 3.0 on, in the context that is current on the calling thread: that has to be
// the same one in every call, to the destructor, which comes with the last handle. Apart from the pixels that are drawn, the
// context is left as it was.
//
//     Tavrin::GPUAdaptorPtr adaptor(new TavrinGL::OpenGLAdaptor);
//     transform->setGPUAdaptor(adaptor);
class TAVRIN_API OpenGLAdaptor : public Tavrin::GPUAdaptor
{
public:
    // No texture of a 1D table is made wider, nor wider than the graphics allow; longer tables are folded to rows.
    static constexpr unsigned int kUsualWidth = 8192;

    explicit OpenGLAdaptor(unsigned int widestTexture = kUsualWidth);
    ~OpenGLAdaptor() override;

    Tavrin::TavStatus beginShader() override;
    Tavrin::TavStatus releaseShader() override;
    // The words of a failure are those of the compiler.
    Tavrin::TavStatus compileShader(char const* shaderHeader, char const* helperMethods, char const* mainHeader,
                                    char const* processing, char const* footer) override;
    Tavrin::TavStatus addUniform(Tavrin::DynamicProperty::Ids id, bool isDynamic, char const* name, bool isBoolean,
                                 void const* value) override;
    Tavrin::TavStatus getTextureSize(unsigned int length, unsigned int* width, unsigned int* height) override;
    Tavrin::TavStatus addTexture1D(char const* name, float const* values, unsigned int length) override;
    Tavrin::TavStatus addTexture2D(char const* name, unsigned int width, unsigned int height, float const* values) override;
    Tavrin::TavStatus addTexture3D(char const* name, unsigned int edgeLength, bool linear, float const* values,
                                   unsigned int count) override;
    Tavrin::TavStatus resetResources() override;
    char const* getInputTextureName() override;
    // Draws a rectangle of the two-dimensional texture to the current framebuffer, with the caller's viewport, matrices and
    // blending. A framebuffer of floats takes colours as they are, others clamp them.
    Tavrin::TavStatus drawFrame(unsigned int texture, Tavrin::Vertices const& position,
                                Tavrin::Vertices const& textureCoordinates) override;

private:
    struct Impl;
    std::unique_ptr<Impl> m_impl;
};

} // namespace TavrinGL

#endif
