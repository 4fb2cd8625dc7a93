// Models of transforms built without a file.
#ifndef TAVRIN_TRANSFORM_TRANSFORM_FACTORY_H
#define TAVRIN_TRANSFORM_TRANSFORM_FACTORY_H

#include "transform/transform.h"

#include <memory>

namespace Color
{

// One matrix: 16 values and 4 offsets with alpha, 9 and 3 without. Null offsets are refused.
std::shared_ptr<Transform> CreateMatrixTransform(BitDepth in, BitDepth out, float const* matrix, float const* offsets,
                                                 bool hasAlpha);

// The first, then the second; neither may be null.
std::shared_ptr<Transform> concatenateTransforms(std::shared_ptr<Transform> const& first, std::shared_ptr<Transform> const& second);

} // namespace Color

#endif
