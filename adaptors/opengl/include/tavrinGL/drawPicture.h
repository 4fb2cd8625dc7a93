// A picture in memory, drawn through a transform by the graphics.
#ifndef TAVRIN_GL_DRAW_PICTURE_H
#define TAVRIN_GL_DRAW_PICTURE_H

#include <tavrin/tavrin.h>

namespace TavrinGL
{

// Pixels are RGBA floats in rows that follow each other without a gap; source and destination may be the same. The transform is
// finalized for the GPU with an OpenGLAdaptor whose context is current, and the context is left as it was. Each row keeps its
// place, the first one being the lowest for the shader. No side may be longer than that of the largest texture.
TAVRIN_API Tavrin::TavStatus drawPicture(Tavrin::Transform const& transform, float const* source, unsigned int width,
                                         unsigned int height, float* destination);

} // namespace TavrinGL

#endif
