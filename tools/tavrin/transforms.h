// Transforms from files, and pictures put through them.
#ifndef TAVRIN_PROGRAM_TRANSFORMS_H
#define TAVRIN_PROGRAM_TRANSFORMS_H

#include "image.h"

#include <tavrin/tavrin.h>

#include <string>
#include <vector>

namespace Program
{

// Throws Failure with the words when the status is one of a failure.
void check(Tavrin::TavStatus const& status, std::string const& what);

Tavrin::TransformPtr loadTransform(std::string const& path);

// One transform that does them all, in their order. Empty handles are passed over; the result is empty where all are.
Tavrin::TransformPtr joinTransforms(std::vector<Tavrin::TransformPtr> const& transforms);

// The picture in the wanted format after the transform, whose optimizer gets the flags. Rows are shared out among threads (at
// least one, the caller's thread among them); the report comes on the caller's thread. Pixels are the same whatever their number.
Image applyTransform(Tavrin::TransformPtr const& transform, Tavrin::OptimizerFlags flags, Image source, Tavrin::PixelFormat format,
                     unsigned int threads, RowReport const& report);

} // namespace Program

#endif
