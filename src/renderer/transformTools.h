// Work on a whole operator list before it is rendered.
#ifndef TAVRIN_RENDERER_TRANSFORM_TOOLS_H
#define TAVRIN_RENDERER_TRANSFORM_TOOLS_H

#include "transform/lut1DOp.h"
#include "transform/transform.h"

#include <tavrin/vocabulary.h>

#include <memory>

namespace Color::TransformTools
{

// Simplifies the transform in place as far as the flags say. Nothing is simplified yet.
void optimize(std::shared_ptr<Transform>& transform, Tavrin::OptimizerFlags flags);

// Gives every join between two operators this depth; the two ends keep theirs.
void setIntermediateBitdepth(BitDepth depth, std::shared_ptr<Transform>& transform);

// The grid of a composed 1D table: the first table's own, one of the ideal size for its input depth, or 65536 rows. A first table
// that has a half domain, or at least as many rows, keeps its own grid.
enum class ComposeMethod
{
    FirstGrid = 0,
    IdealGrid = 1,
    FullGrid = 2
};

// The first table, then the second, as one; both are rendered in single precision. The depth between them must be the same.
std::unique_ptr<Lut1DOp> compose(Lut1DOp const& first, Lut1DOp const& second, ComposeMethod method);

// Runs so many RGB triples of floats through the transform, which is set to 32f throughout and rendered as it stands.
void evalTransform(float const* source, float* destination, unsigned int count, std::shared_ptr<Transform>& transform);

} // namespace Color::TransformTools

#endif
