// OpenGL as the sources of this folder see it: its functions, failures as statuses, and state that is put back.
#ifndef TAVRIN_GL_OPEN_GL_H
#define TAVRIN_GL_OPEN_GL_H

#define GL_GLEXT_PROTOTYPES
#include <GL/gl.h>
#include <GL/glext.h>

#include <tavrin/status.h>

#include <string>

namespace TavrinGL
{

// Ids that the library keeps for adaptors.
enum ErrorIds : Tavrin::ErrorId
{
    kAdaptorError = 0x830001,
    kTextureBindError = 0x830002,
    kTextureLimitError = 0x830004
};

Tavrin::TavStatus failed(Tavrin::ErrorId id, std::string const& words);

// Whether there is a context at all to talk to.
bool hasContext();

// Errors of calls before this one are nobody's here.
void forgetErrors();
// Good, or a failure that names what was done and what OpenGL says of it.
Tavrin::TavStatus statusOfErrors(Tavrin::ErrorId id, std::string const& what);

// What uploads and drawings change: bindings of textures, the current coordinates, transfer of pixels, the program. Put back at the
// end.
class SavedState
{
public:
    SavedState();
    SavedState(SavedState const&) = delete;
    SavedState& operator=(SavedState const&) = delete;
    ~SavedState();

private:
    GLint m_program = 0;
};

} // namespace TavrinGL

#endif
