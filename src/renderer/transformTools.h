// Work on a whole operator list before it is rendered.
#ifndef TAVRIN_RENDERER_TRANSFORM_TOOLS_H
#define TAVRIN_RENDERER_TRANSFORM_TOOLS_H

#include "transform/transform.h"

#include <tavrin/vocabulary.h>

#include <memory>

namespace Color::TransformTools
{

// Simplifies the transform in place as far as the flags say. Nothing is simplified yet.
void optimize(std::shared_ptr<Transform>& transform, Tavrin::OptimizerFlags flags);

// Gives every join between two operators this depth; the two ends keep theirs.
void setIntermediateBitdepth(BitDepth depth, std::shared_ptr<Transform>& transform);

} // namespace Color::TransformTools

#endif
