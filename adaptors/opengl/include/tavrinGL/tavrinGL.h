// TavrinGL: colour transforms drawn with OpenGL. This is the one header that a caller includes.
#ifndef TAVRIN_GL_TAVRIN_GL_H
#define TAVRIN_GL_TAVRIN_GL_H

#include <tavrinGL/drawPicture.h>
#include <tavrinGL/headlessContext.h>
#include <tavrinGL/openGLAdaptor.h>

#endif
