// A texture of floats.
#ifndef TAVRIN_GL_TEXTURE_H
#define TAVRIN_GL_TEXTURE_H

#include "openGL.h"

#include <utility>

namespace TavrinGL
{

// Owns the name of a texture. Colours beyond its edges are those of the edges.
class Texture
{
public:
    // Filter: GL_LINEAR or GL_NEAREST. The texture is bound where the target is active, for its values to follow.
    Texture(GLenum target, GLint filter) : m_target(target)
    {
        glGenTextures(1, &m_name);
        bind();
        glTexParameteri(target, GL_TEXTURE_MIN_FILTER, filter);
        glTexParameteri(target, GL_TEXTURE_MAG_FILTER, filter);
        for (GLenum const axis : {GL_TEXTURE_WRAP_S, GL_TEXTURE_WRAP_T, GL_TEXTURE_WRAP_R})
            glTexParameteri(target, axis, GL_CLAMP_TO_EDGE);
    }
    Texture(Texture&& other) noexcept : m_target(other.m_target), m_name(std::exchange(other.m_name, 0)) {}
    Texture& operator=(Texture&&) = delete;
    ~Texture() { glDeleteTextures(1, &m_name); }

    void bind() const { glBindTexture(m_target, m_name); }
    GLuint name() const { return m_name; }

private:
    GLenum m_target;
    GLuint m_name = 0;
};

} // namespace TavrinGL

#endif
