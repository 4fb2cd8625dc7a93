// Models of transforms built without a file.
#ifndef TAVRIN_TRANSFORM_TRANSFORM_FACTORY_H
#define TAVRIN_TRANSFORM_TRANSFORM_FACTORY_H

#include "transform/lut1DOp.h"
#include "transform/transform.h"

#include <tavrin/transformFactory.h>

#include <memory>
#include <string>

namespace Color
{

// One matrix: 16 values and 4 offsets with alpha, 9 and 3 without. Null offsets are refused.
std::shared_ptr<Transform> CreateMatrixTransform(BitDepth in, BitDepth out, float const* matrix, float const* offsets,
                                                 bool hasAlpha);

// One table of so many rows from three columns of that length. With raw halfs in the flags the values are half bit patterns,
// otherwise numbers in the scale of the output depth. Value is unsigned short, unsigned int or float. Refuses sizes that no table
// can have.
template <class Value>
std::shared_ptr<Transform> Create1DLutTransform(BitDepth in, BitDepth out, unsigned int size, Value const* red, Value const* green,
                                                Value const* blue, HalfFlags halfFlags);

// One grid of so many points per axis; three values a point in the scale of the output depth, blue varying fastest. Value and
// sizes as above.
template <class Value>
std::shared_ptr<Transform> Create3DLutTransform(BitDepth in, BitDepth out, unsigned int gridSize, Value const* values);

// One dither for a later reduction to the dither depth, which is needed.
std::shared_ptr<Transform> CreateDitherTransform(BitDepth in, BitDepth out, BitDepth ditherDepth);

// One reference between two depths, which nothing has resolved yet. A path, or an alias, is needed.
std::shared_ptr<Transform> CreateReferenceTransformFromPath(BitDepth in, BitDepth out, std::string const& path,
                                                            Tavrin::BasePath basePath);
std::shared_ptr<Transform> CreateReferenceTransformFromAlias(BitDepth in, BitDepth out, std::string const& alias);

// One of those that come with the library; refuses other types.
std::shared_ptr<Transform> createStockTransform(Tavrin::StockTransform type);

// The first, then the second; neither may be null.
std::shared_ptr<Transform> concatenateTransforms(std::shared_ptr<Transform> const& first, std::shared_ptr<Transform> const& second);

} // namespace Color

#endif
