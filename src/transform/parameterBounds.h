// The check of parameter vectors that operators share.
#ifndef TAVRIN_TRANSFORM_PARAMETER_BOUNDS_H
#define TAVRIN_TRANSFORM_PARAMETER_BOUNDS_H

#include "utils/errorMessage.h"

#include <span>
#include <vector>

namespace Color
{

// The bounds are themselves allowed values.
struct ParameterBounds
{
    double lower;
    double upper;
};

// One parameter per pair of bounds: another number of parameters throws the failure wrongCount, with the right number as
// argument; the first parameter beyond its bounds throws one that tells parameter and bound.
void validateParams(std::vector<double> const& params, std::span<ParameterBounds const> bounds, ErrorSite wrongCount,
                    char const* moduleTag);

} // namespace Color

#endif
