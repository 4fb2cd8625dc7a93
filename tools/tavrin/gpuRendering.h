// Pictures put through transforms by the graphics.
#ifndef TAVRIN_PROGRAM_GPU_RENDERING_H
#define TAVRIN_PROGRAM_GPU_RENDERING_H

#include "transforms.h"

namespace Program
{

// Like applyTransform, but drawn: the threads convert the picture to floats and back. Throws Failure where the program was built
// without OpenGL, and where there is none.
Image drawTransform(Tavrin::TransformPtr const& transform, Tavrin::OptimizerFlags flags, Image source, Tavrin::PixelFormat format,
                    unsigned int threads, RowReport const& report);

} // namespace Program

#endif
