// Scalar number helpers: half patterns, comparisons in units of the last place, values made finite.
#ifndef TAVRIN_UTILS_NUMERICS_H
#define TAVRIN_UTILS_NUMERICS_H

#include <Imath/half.h>

#include <cmath>
#include <limits>

namespace Foundation::Numerics
{

// 2 to the power ceil(log2(n)); 0 for 0 and where that power has more than 32 bits.
unsigned int computeNextPowerOf2(unsigned int n);

// The value of a half pattern.
float convertHalfBitsToFloat(unsigned short bits);

// Infinities become the largest finite float of their sign, NaN becomes 0. Here, since it is called for every value of a table.
inline float sanitizeFloat(float value)
{
    if (std::isnan(value))
    {
        return 0.0F;
    }
    return std::isinf(value) ? std::copysign(std::numeric_limits<float>::max(), value) : value;
}

// Whether b differs from a by less than the tolerance times the next power of two above the magnitude of a.
bool compareMantissa(float a, float b, float tolerance);

// Whether two halfs differ by more than so many units in the last place. A NaN equals only a NaN, an infinity only itself.
bool halfsDiffer(half a, half b, int tolerance);

// The same for floats; compressDenorms treats zero and all denormals as one value.
bool floatsDiffer(float a, float b, int tolerance, bool compressDenorms);

} // namespace Foundation::Numerics

#endif
