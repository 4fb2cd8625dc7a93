// The adaptor for desktop OpenGL.
#include <tavrinGL/openGLAdaptor.h>

#include "openGL.h"
#include "texture.h"

#include <algorithm>
#include <atomic>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

namespace TavrinGL
{

namespace
{

using Tavrin::TavStatus;

constexpr char const* kInputTexture = "frontTex";

// The texts name no version. From this one on a whole number may stand where a float is wanted.
constexpr char const* kVersion = "#version 120\n";

// A table with the 65536 rows of all halfs has to be folded, whatever the graphics could hold.
constexpr unsigned int kWidestTexture = 32768;

// Names of masks begin so. A shader reads them at the edges of their texels.
constexpr std::string_view kMaskPrefix = "bayer_";

TavStatus noContext()
{
    return failed(kAdaptorError, "no OpenGL context is current");
}

unsigned int limitOf(GLenum name)
{
    GLint limit = 0;
    glGetIntegerv(name, &limit);
    return static_cast<unsigned int>(std::max(limit, 0));
}

// Deletes it at the end; one that is part of a program lives on with that.
class FragmentShader
{
public:
    FragmentShader() : m_name(glCreateShader(GL_FRAGMENT_SHADER)) {}
    FragmentShader(FragmentShader const&) = delete;
    FragmentShader& operator=(FragmentShader const&) = delete;
    ~FragmentShader() { glDeleteShader(m_name); }

    GLuint name() const { return m_name; }

private:
    GLuint m_name;
};

template <class GetLog>
std::string logOf(GLuint name, GetLog const& getLog)
{
    std::string log(4096, '\0');
    GLsizei length = 0;
    getLog(name, static_cast<GLsizei>(log.size()), &length, log.data());
    log.resize(static_cast<std::size_t>(length));
    return log;
}

// The value may be set on another thread meanwhile.
template <class Value>
Value load(void const* address)
{
    return std::atomic_ref<Value>(*static_cast<Value*>(const_cast<void*>(address))).load(std::memory_order_relaxed);
}

} // namespace

struct OpenGLAdaptor::Impl
{
    struct Uniform
    {
        std::string name;
        bool isBoolean;
        void const* value;
        GLint location;
    };

    struct Sampler
    {
        std::string name;
        Texture texture;
    };

    unsigned int widestTexture;
    GLuint program = 0;
    std::vector<Uniform> uniforms;
    std::vector<Sampler> samplers;

    GLint locationOf(std::string const& name) const { return glGetUniformLocation(program, name.c_str()); }

    TavStatus compile(std::vector<char const*> const& texts);
    void connectSamplers();
    void setUniforms() const;
    void bindTextures(GLuint input) const;

    // Adds a texture with the values that the upload gives it, unless that fails.
    template <class Upload>
    TavStatus addTexture(char const* name, GLenum target, GLint filter, Upload const& upload)
    {
        if (!hasContext())
            return noContext();
        forgetErrors();
        SavedState const state;
        Texture texture(target, filter);
        upload();
        TavStatus const status = statusOfErrors(kTextureBindError, std::string("Failure on texture bind: ") + name);
        if (status)
            samplers.push_back({name, std::move(texture)});
        return status;
    }
};

TavStatus OpenGLAdaptor::Impl::compile(std::vector<char const*> const& texts)
{
    FragmentShader const shader;
    glShaderSource(shader.name(), static_cast<GLsizei>(texts.size()), texts.data(), nullptr);
    glCompileShader(shader.name());
    GLint isCompiled = GL_FALSE;
    glGetShaderiv(shader.name(), GL_COMPILE_STATUS, &isCompiled);
    if (isCompiled == GL_FALSE)
        return failed(kAdaptorError, logOf(shader.name(), glGetShaderInfoLog));

    program = glCreateProgram();
    glAttachShader(program, shader.name());
    glLinkProgram(program);
    glDetachShader(program, shader.name());
    GLint isLinked = GL_FALSE;
    glGetProgramiv(program, GL_LINK_STATUS, &isLinked);
    if (isLinked == GL_FALSE)
        return failed(kAdaptorError, logOf(program, glGetProgramInfoLog));
    return {};
}

// The input comes first, the tables follow in their order.
void OpenGLAdaptor::Impl::connectSamplers()
{
    glUseProgram(program);
    glUniform1i(locationOf(kInputTexture), 0);
    for (std::size_t i = 0; i < samplers.size(); ++i)
        glUniform1i(locationOf(samplers[i].name), static_cast<GLint>(i + 1));
    for (Uniform& uniform : uniforms)
        uniform.location = locationOf(uniform.name);
}

void OpenGLAdaptor::Impl::setUniforms() const
{
    for (Uniform const& uniform : uniforms)
    {
        double const value = uniform.isBoolean ? (load<bool>(uniform.value) ? 1.0 : 0.0) : load<double>(uniform.value);
        glUniform1f(uniform.location, static_cast<GLfloat>(value));
    }
}

void OpenGLAdaptor::Impl::bindTextures(GLuint input) const
{
    for (std::size_t i = 0; i < samplers.size(); ++i)
    {
        glActiveTexture(static_cast<GLenum>(GL_TEXTURE1 + i));
        samplers[i].texture.bind();
    }
    glActiveTexture(GL_TEXTURE0);
    glBindTexture(GL_TEXTURE_2D, input);
}

OpenGLAdaptor::OpenGLAdaptor(unsigned int widestTexture)
    : GPUAdaptor(LANGUAGE_GLSL, PIPELINE_DEFAULT), m_impl(new Impl{widestTexture, 0, {}, {}})
{
}

OpenGLAdaptor::~OpenGLAdaptor()
{
    releaseShader();
}

TavStatus OpenGLAdaptor::beginShader()
{
    return hasContext() ? TavStatus() : noContext();
}

TavStatus OpenGLAdaptor::releaseShader()
{
    if (m_impl->program != 0)
        glDeleteProgram(std::exchange(m_impl->program, 0));
    return {};
}

TavStatus OpenGLAdaptor::compileShader(char const* shaderHeader, char const* helperMethods, char const* mainHeader,
                                       char const* processing, char const* footer)
{
    unsigned int const units = limitOf(GL_MAX_TEXTURE_IMAGE_UNITS);
    std::size_t const needed = m_impl->samplers.size() + 1;
    if (needed > units)
        return failed(kTextureLimitError,
                      "Exceeding number of texture limit: " + std::to_string(needed) + " vs. " + std::to_string(units));
    forgetErrors();
    SavedState const state;
    TavStatus status = m_impl->compile({kVersion, shaderHeader, helperMethods, mainHeader, processing, footer});
    if (status)
    {
        m_impl->connectSamplers();
        status = statusOfErrors(kAdaptorError, "the shader's samplers");
    }
    if (!status)
        releaseShader();
    return status;
}

TavStatus OpenGLAdaptor::addUniform(Tavrin::DynamicProperty::Ids, bool, char const* name, bool isBoolean, void const* value)
{
    m_impl->uniforms.push_back({name, isBoolean, value, -1});
    return {};
}

// Rows overlap by one value. A length that fills them to the last would lose the values of the last one: they are made shorter.
TavStatus OpenGLAdaptor::getTextureSize(unsigned int length, unsigned int* width, unsigned int* height)
{
    if (!hasContext())
        return noContext();
    unsigned int const limit = limitOf(GL_MAX_TEXTURE_SIZE);
    unsigned int const widest = std::max(3U, std::min({m_impl->widestTexture, limit, kWidestTexture}));
    if (length <= widest)
    {
        *width = length;
        *height = 1;
        return {};
    }
    unsigned int step = widest - 1;
    while (step > 2 && length % step == 0)
        --step;
    *width = step + 1;
    *height = (length + step - 1) / step;
    if (*height > limit)
        return failed(kTextureBindError, "Failure on texture bind: a table of " + std::to_string(length) + " values is too long");
    return {};
}

TavStatus OpenGLAdaptor::addTexture1D(char const* name, float const* values, unsigned int length)
{
    GLint const filter = std::string_view(name).substr(0, kMaskPrefix.size()) == kMaskPrefix ? GL_NEAREST : GL_LINEAR;
    return m_impl->addTexture(
        name, GL_TEXTURE_1D, filter,
        [&] { glTexImage1D(GL_TEXTURE_1D, 0, GL_R32F, static_cast<GLsizei>(length), 0, GL_RED, GL_FLOAT, values); });
}

TavStatus OpenGLAdaptor::addTexture2D(char const* name, unsigned int width, unsigned int height, float const* values)
{
    return m_impl->addTexture(name, GL_TEXTURE_2D, GL_LINEAR,
                              [&]
                              {
                                  glTexImage2D(GL_TEXTURE_2D, 0, GL_R32F, static_cast<GLsizei>(width), static_cast<GLsizei>(height),
                                               0, GL_RED, GL_FLOAT, values);
                              });
}

TavStatus OpenGLAdaptor::addTexture3D(char const* name, unsigned int edgeLength, bool linear, float const* values, unsigned int)
{
    return m_impl->addTexture(name, GL_TEXTURE_3D, linear ? GL_LINEAR : GL_NEAREST,
                              [&]
                              {
                                  GLsizei const edge = static_cast<GLsizei>(edgeLength);
                                  glTexImage3D(GL_TEXTURE_3D, 0, GL_RGB32F, edge, edge, edge, 0, GL_RGB, GL_FLOAT, values);
                              });
}

TavStatus OpenGLAdaptor::resetResources()
{
    m_impl->uniforms.clear();
    m_impl->samplers.clear();
    return {};
}

char const* OpenGLAdaptor::getInputTextureName()
{
    return kInputTexture;
}

TavStatus OpenGLAdaptor::drawFrame(unsigned int texture, Tavrin::Vertices const& position,
                                   Tavrin::Vertices const& textureCoordinates)
{
    if (m_impl->program == 0)
        return failed(kAdaptorError, "there is no shader to draw with");
    forgetErrors();
    SavedState const state;
    glUseProgram(m_impl->program);
    m_impl->setUniforms();
    m_impl->bindTextures(texture);
    glBegin(GL_TRIANGLE_FAN);
    for (std::size_t i = 0; i < std::size(position.values); i += 2)
    {
        glTexCoord2fv(&textureCoordinates.values[i]);
        glVertex2fv(&position.values[i]);
    }
    glEnd();
    return statusOfErrors(kAdaptorError, "the drawing");
}

} // namespace TavrinGL
