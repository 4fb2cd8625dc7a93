// Transforms built without a file.
#ifndef TAVRIN_TRANSFORM_FACTORY_H
#define TAVRIN_TRANSFORM_FACTORY_H

#include <tavrin/export.h>
#include <tavrin/status.h>
#include <tavrin/transform.h>
#include <tavrin/vocabulary.h>

namespace Tavrin
{

// Transforms that come with the library.
enum StockTransform : unsigned int
{
    // Raw values, half floats in and out, with exposure and contrast that can be changed while it renders.
    STOCK_TRANSFORM_RAW = 0
};

// One matrix between two depths, whose values hold at these depths (the code values of the depths, not normalised ones).
// Matrix: 16 values in row order and 4 offsets when hasAlpha, otherwise 9 and 3. Offsets can't be null. On failure the handle
// stays as it was.
TAVRIN_API TavStatus CreateMatrixTransform(BitDepth input, BitDepth output, float const* matrix, float const* offsets,
                                           bool hasAlpha, TransformPtr& transform);

// One 1D table of size rows (2 to 1048576), whose columns are given apart and copied: red, green and blue hold size values each.
// Row 0 answers to an input of 0 and the last row to full signal of the input depth; with HALF_FLAGS_INPUT_HALF_DOMAIN there are
// 65536 rows, row i for the input whose half bit pattern is i. A value is a number in the scale of the output depth (1023 is full
// signal at 10i, 1.0 at a float depth), whatever its type; with HALF_FLAGS_OUTPUT_RAW_HALFS its low 16 bits are the pattern of the
// half that is meant. Pointers can't be null. On failure the handle stays as it was.
TAVRIN_API TavStatus Create1DLutTransformFromShort(BitDepth input, BitDepth output, unsigned int size, unsigned short const* red,
                                                   unsigned short const* green, unsigned short const* blue, HalfFlags halfFlags,
                                                   TransformPtr& transform);
TAVRIN_API TavStatus Create1DLutTransformFromInt(BitDepth input, BitDepth output, unsigned int size, unsigned int const* red,
                                                 unsigned int const* green, unsigned int const* blue, HalfFlags halfFlags,
                                                 TransformPtr& transform);
TAVRIN_API TavStatus Create1DLutTransformFromFloat(BitDepth input, BitDepth output, unsigned int size, float const* red,
                                                   float const* green, float const* blue, HalfFlags halfFlags,
                                                   TransformPtr& transform);

// One 3D table on a grid of gridSize points per axis (2 to 129), which span the input depth from 0 to full signal. There are
// gridSize * gridSize * gridSize * 3 values, which are copied: output red, green and blue of each point, with the point's blue
// varying fastest and its red slowest, as numbers in the scale of the output depth. Values can't be null. On failure the handle
// stays as it was.
TAVRIN_API TavStatus Create3DLutTransformFromShort(BitDepth input, BitDepth output, unsigned int gridSize,
                                                   unsigned short const* values, TransformPtr& transform);
TAVRIN_API TavStatus Create3DLutTransformFromInt(BitDepth input, BitDepth output, unsigned int gridSize, unsigned int const* values,
                                                 TransformPtr& transform);
TAVRIN_API TavStatus Create3DLutTransformFromFloat(BitDepth input, BitDepth output, unsigned int gridSize, float const* values,
                                                   TransformPtr& transform);

// One dither: noise of one step of the dither depth, fixed to the picture, ahead of a reduction to that depth, which may happen
// here or later. Where the input has no more steps than the dither depth, or that is a float depth, it only changes the depth. On
// failure the handle stays as it was.
TAVRIN_API TavStatus CreateDitherTransform(BitDepth input, BitDepth output, BitDepth ditherDepth, TransformPtr& transform);

// One reference to the transform file at a path, between two depths. A relative path needs a base path; an absolute one ignores it.
// The path can't be null or empty. On failure the handle stays as it was.
TAVRIN_API TavStatus CreateReferenceTransformFromPath(BitDepth input, BitDepth output, char const* path, BasePath basePath,
                                                      TransformPtr& transform);

// One reference to the transform file that the preferences know by an alias. The alias can't be null or empty. On failure the
// handle stays as it was.
TAVRIN_API TavStatus CreateReferenceTransformFromAlias(BitDepth input, BitDepth output, char const* alias, TransformPtr& transform);

// A new copy of a transform that comes with the library. On failure, for a type that does not exist, the handle stays as it was.
TAVRIN_API TavStatus createStockTransform(StockTransform type, TransformPtr& transform);

// A new transform that does the same with the operators that the optimizer leaves for these flags, as finalize does for itself:
// references are replaced by what they point at. The transform can't be empty and stays as it is. On failure the handle of the new
// one stays as it was.
TAVRIN_API TavStatus optimizeTransform(TransformPtr const& transform, OptimizerFlags flags, TransformPtr& optimized);

// A new transform that does the first, then the second. Neither may be empty; both stay as they are.
TAVRIN_API TavStatus concatenateTransforms(TransformPtr const& first, TransformPtr const& second, TransformPtr& transform);

} // namespace Tavrin

#endif
