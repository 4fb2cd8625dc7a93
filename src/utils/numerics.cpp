// Scalar number helpers.
#include "utils/numerics.h"

#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>

namespace Foundation::Numerics
{

namespace
{

// Whether two values on the line of all ordered patterns lie further apart than the tolerance.
bool areFurtherApart(std::int64_t a, std::int64_t b, int tolerance)
{
    return std::abs(a - b) > tolerance;
}

bool isNan(half value)
{
    return value.isNan();
}

// Patterns in the order of their values: both zeros are 0x8000, and a step is one unit in the last place.
std::int64_t ordered(half value)
{
    constexpr std::int64_t kZero = 0x8000;
    std::int64_t const magnitude = value.bits() & 0x7fff;
    return value.isNegative() ? kZero - magnitude : kZero + magnitude;
}

// The same for floats, around 0x80000000. With denormals compressed, zero is followed by the smallest normal numbers.
std::int64_t ordered(float value, bool compressDenorms)
{
    constexpr std::int64_t kZero = 0x80000000;
    constexpr std::int64_t kLargestDenormal = 0x7fffff;
    std::int64_t magnitude = std::bit_cast<std::uint32_t>(value) & 0x7fffffffU;
    if (compressDenorms)
    {
        magnitude = magnitude <= kLargestDenormal ? 0 : magnitude - kLargestDenormal;
    }
    return std::signbit(value) ? kZero - magnitude : kZero + magnitude;
}

} // namespace

unsigned int computeNextPowerOf2(unsigned int n)
{
    constexpr unsigned int kLargestPower = 0x80000000U;
    return n == 0 || n > kLargestPower ? 0 : std::bit_ceil(n);
}

float convertHalfBitsToFloat(unsigned short bits)
{
    half value;
    value.setBits(bits);
    return value;
}

bool compareMantissa(float a, float b, float tolerance)
{
    int exponentA = 0;
    int exponentB = 0;
    float const mantissaA = std::frexp(a, &exponentA);
    float const mantissaB = std::frexp(b, &exponentB);
    return tolerance > std::abs(std::ldexp(mantissaB, exponentB - exponentA) - mantissaA);
}

bool halfsDiffer(half a, half b, int tolerance)
{
    if (isNan(a) || isNan(b))
    {
        return isNan(a) != isNan(b);
    }
    return areFurtherApart(ordered(a), ordered(b), a.isInfinity() || b.isInfinity() ? 0 : tolerance);
}

bool floatsDiffer(float a, float b, int tolerance, bool compressDenorms)
{
    if (std::isnan(a) || std::isnan(b))
    {
        return std::isnan(a) != std::isnan(b);
    }
    if (std::isinf(a) || std::isinf(b))
    {
        return a != b;
    }
    return areFurtherApart(ordered(a, compressDenorms), ordered(b, compressDenorms), tolerance);
}

} // namespace Foundation::Numerics
