// Failures of OpenGL as statuses, and state that is put back.
#include "openGL.h"

#include <array>
#include <cstdio>

namespace TavrinGL
{

namespace
{

// A context that was lost reports errors for ever.
constexpr int kMostErrors = 16;

// As OpenGL has them at first.
void resetPixelTransfer()
{
    glBindBuffer(GL_PIXEL_UNPACK_BUFFER, 0);
    glBindBuffer(GL_PIXEL_PACK_BUFFER, 0);
    for (GLenum const name : {GL_UNPACK_ROW_LENGTH, GL_UNPACK_IMAGE_HEIGHT, GL_UNPACK_SKIP_ROWS, GL_UNPACK_SKIP_PIXELS,
                              GL_UNPACK_SKIP_IMAGES, GL_PACK_ROW_LENGTH, GL_PACK_SKIP_ROWS, GL_PACK_SKIP_PIXELS})
        glPixelStorei(name, 0);
    glPixelStorei(GL_UNPACK_SWAP_BYTES, GL_FALSE);
    glPixelStorei(GL_PACK_SWAP_BYTES, GL_FALSE);
    glPixelStorei(GL_UNPACK_ALIGNMENT, sizeof(float));
    glPixelStorei(GL_PACK_ALIGNMENT, sizeof(float));
}

} // namespace

Tavrin::TavStatus failed(Tavrin::ErrorId id, std::string const& words)
{
    Tavrin::TavStatus status;
    status.setErrorCode(id);
    status.setErrorMessage(words.c_str());
    return status;
}

bool hasContext()
{
    return glGetString(GL_VERSION) != nullptr;
}

void forgetErrors()
{
    for (int i = 0; i < kMostErrors && glGetError() != GL_NO_ERROR; ++i)
        ;
}

Tavrin::TavStatus statusOfErrors(Tavrin::ErrorId id, std::string const& what)
{
    GLenum const error = glGetError();
    if (error == GL_NO_ERROR)
        return {};
    std::array<char, 32> number;
    std::snprintf(number.data(), number.size(), "OpenGL error %#x", error);
    return failed(id, what + ": " + number.data());
}

SavedState::SavedState()
{
    glPushAttrib(GL_TEXTURE_BIT | GL_CURRENT_BIT);
    glPushClientAttrib(GL_CLIENT_PIXEL_STORE_BIT);
    resetPixelTransfer();
    glGetIntegerv(GL_CURRENT_PROGRAM, &m_program);
}

SavedState::~SavedState()
{
    glUseProgram(static_cast<GLuint>(m_program));
    glPopClientAttrib();
    glPopAttrib();
}

} // namespace TavrinGL
