// A picture in memory, drawn through a transform: into a texture, through the shader, out of a framebuffer.
#include <tavrinGL/drawPicture.h>

#include "openGL.h"
#include "texture.h"

#include <array>
#include <iterator>
#include <string>

namespace TavrinGL
{

namespace
{

// One texel for each pixel, and no filter between them.
class PictureTexture : public Texture
{
public:
    PictureTexture(float const* pixels, unsigned int width, unsigned int height) : Texture(GL_TEXTURE_2D, GL_NEAREST)
    {
        glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA32F, static_cast<GLsizei>(width), static_cast<GLsizei>(height), 0, GL_RGBA, GL_FLOAT,
                     pixels);
    }
};

// Draws into a texture while it lives.
class Framebuffer
{
public:
    explicit Framebuffer(Texture const& target)
    {
        glGenFramebuffers(1, &m_name);
        glBindFramebuffer(GL_FRAMEBUFFER, m_name);
        glFramebufferTexture2D(GL_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_TEXTURE_2D, target.name(), 0);
    }
    Framebuffer(Framebuffer const&) = delete;
    Framebuffer& operator=(Framebuffer const&) = delete;
    ~Framebuffer() { glDeleteFramebuffers(1, &m_name); }

    bool isComplete() const { return glCheckFramebufferStatus(GL_FRAMEBUFFER) == GL_FRAMEBUFFER_COMPLETE; }

private:
    GLuint m_name = 0;
};

struct MatrixKind
{
    GLenum mode;
    GLenum current;
};

constexpr MatrixKind kMatrixKinds[] = {
    {GL_MODELVIEW, GL_MODELVIEW_MATRIX}, {GL_PROJECTION, GL_PROJECTION_MATRIX}, {GL_TEXTURE, GL_TEXTURE_MATRIX}};

// Where and how drawings go, put back at the end. It is made just before that changes: Mesa forgets changes that are made between
// another, inner pair of saving and putting back.
class SavedView
{
public:
    SavedView()
    {
        glPushAttrib(GL_VIEWPORT_BIT | GL_ENABLE_BIT | GL_COLOR_BUFFER_BIT | GL_TRANSFORM_BIT | GL_TEXTURE_BIT);
        glActiveTexture(GL_TEXTURE0);
        for (std::size_t i = 0; i < m_matrices.size(); ++i)
            glGetDoublev(kMatrixKinds[i].current, m_matrices[i].data());
        glGetIntegerv(GL_DRAW_FRAMEBUFFER_BINDING, &m_drawFramebuffer);
        glGetIntegerv(GL_READ_FRAMEBUFFER_BINDING, &m_readFramebuffer);
    }
    SavedView(SavedView const&) = delete;
    SavedView& operator=(SavedView const&) = delete;
    ~SavedView()
    {
        glBindFramebuffer(GL_DRAW_FRAMEBUFFER, static_cast<GLuint>(m_drawFramebuffer));
        glBindFramebuffer(GL_READ_FRAMEBUFFER, static_cast<GLuint>(m_readFramebuffer));
        glActiveTexture(GL_TEXTURE0);
        for (std::size_t i = 0; i < m_matrices.size(); ++i)
        {
            glMatrixMode(kMatrixKinds[i].mode);
            glLoadMatrixd(m_matrices[i].data());
        }
        glPopAttrib();
    }

private:
    std::array<std::array<GLdouble, 16>, std::size(kMatrixKinds)> m_matrices;
    GLint m_drawFramebuffer = 0;
    GLint m_readFramebuffer = 0;
};

// A pixel of the picture for each one of the target, written as it is.
void setUpView(unsigned int width, unsigned int height)
{
    glViewport(0, 0, static_cast<GLsizei>(width), static_cast<GLsizei>(height));
    for (MatrixKind const& kind : kMatrixKinds)
    {
        glMatrixMode(kind.mode);
        glLoadIdentity();
    }
    for (GLenum const part : {GL_BLEND, GL_DEPTH_TEST, GL_STENCIL_TEST, GL_ALPHA_TEST, GL_SCISSOR_TEST, GL_CULL_FACE, GL_DITHER})
        glDisable(part);
    glColorMask(GL_TRUE, GL_TRUE, GL_TRUE, GL_TRUE);
}

Tavrin::TavStatus checkSize(unsigned int width, unsigned int height)
{
    GLint largest = 0;
    glGetIntegerv(GL_MAX_TEXTURE_SIZE, &largest);
    if (width > static_cast<unsigned int>(largest) || height > static_cast<unsigned int>(largest))
        return failed(kAdaptorError, "the graphics draw pictures of at most " + std::to_string(largest) + " pixels on a side");
    return {};
}

} // namespace

Tavrin::TavStatus drawPicture(Tavrin::Transform const& transform, float const* source, unsigned int width, unsigned int height,
                              float* destination)
{
    if (!hasContext())
        return failed(kAdaptorError, "no OpenGL context is current");
    Tavrin::TavStatus status = checkSize(width, height);
    if (!status)
        return status;

    forgetErrors();
    SavedState const state;
    PictureTexture const input(source, width, height);
    PictureTexture const output(nullptr, width, height);
    SavedView const view;
    Framebuffer const framebuffer(output);
    if (!framebuffer.isComplete())
        return failed(kAdaptorError, "the graphics can't draw to floats");
    setUpView(width, height);
    status = statusOfErrors(kAdaptorError, "the picture");
    if (status)
        status = transform.applyGPU(input.name(), Tavrin::Vertices(Tavrin::Rect(-1, -1, 2, 2)),
                                    Tavrin::Vertices(Tavrin::Rect(0, 0, 1, 1)));
    if (!status)
        return status;
    glReadPixels(0, 0, static_cast<GLsizei>(width), static_cast<GLsizei>(height), GL_RGBA, GL_FLOAT, destination);
    return statusOfErrors(kAdaptorError, "reading the picture");
}

} // namespace TavrinGL
