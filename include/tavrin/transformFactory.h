// Transforms built without a file.
#ifndef TAVRIN_TRANSFORM_FACTORY_H
#define TAVRIN_TRANSFORM_FACTORY_H

#include <tavrin/export.h>
#include <tavrin/status.h>
#include <tavrin/transform.h>
#include <tavrin/vocabulary.h>

namespace Tavrin
{

// One matrix between two depths, whose values hold at these depths (the code values of the depths, not normalised ones).
// Matrix: 16 values in row order and 4 offsets when hasAlpha, otherwise 9 and 3. Offsets can't be null. On failure the handle
// stays as it was.
TAVRIN_API TavStatus CreateMatrixTransform(BitDepth input, BitDepth output, float const* matrix, float const* offsets,
                                           bool hasAlpha, TransformPtr& transform);

// A new transform that does the first, then the second. Neither may be empty; both stay as they are.
TAVRIN_API TavStatus concatenateTransforms(TransformPtr const& first, TransformPtr const& second, TransformPtr& transform);

} // namespace Tavrin

#endif
