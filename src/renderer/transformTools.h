// Work on a whole operator list at rendering time.
#ifndef TAVRIN_RENDERER_TRANSFORM_TOOLS_H
#define TAVRIN_RENDERER_TRANSFORM_TOOLS_H

#include "transform/transform.h"

#include <memory>

namespace Color::TransformTools
{

// Gives every join between two operators this depth; the two ends keep theirs.
void setIntermediateBitdepth(BitDepth depth, std::shared_ptr<Transform>& transform);

// Runs so many RGB triples of floats through the transform, which is set to 32f throughout and rendered as it stands.
void evalTransform(float const* source, float* destination, unsigned int count, std::shared_ptr<Transform>& transform);

} // namespace Color::TransformTools

#endif
