// Exponential, logarithm, power and angle as their formulas tell them, one number at a time, for tests.
#ifndef TAVRIN_TESTS_RENDERER_PLAIN_VECTOR_MATH_H
#define TAVRIN_TESTS_RENDERER_PLAIN_VECTOR_MATH_H

#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>

namespace PlainVectorMath
{

inline std::uint32_t bitsOf(float value)
{
    std::uint32_t bits;
    std::memcpy(&bits, &value, sizeof bits);
    return bits;
}

inline float ofBits(std::uint32_t bits)
{
    float value;
    std::memcpy(&value, &bits, sizeof value);
    return value;
}

// 2 to the power x.
inline float exp2(float x)
{
    if (std::isnan(x))
        return x;
    if (x >= 128.0F)
        return std::numeric_limits<float>::infinity();
    if (x < -1000.0F)
        return 0.0F;
    int i = static_cast<int>(x);
    if (!(x >= 0.0F))
        i -= 1;
    if (i < -126)
        return 0.0F;
    float const f = x - static_cast<float>(i);
    float const p = (((0.013534168F * f + 0.05201146F) * f + 0.24144275F) * f + 0.69300383F) * f + 1.0000026F;
    return ofBits(static_cast<std::uint32_t>(127 + i) << 23) * p;
}

// The logarithm to base 2: of any bit pattern what the formula gives, which is a logarithm for positive normal numbers.
inline float log2(float x)
{
    float const m = ofBits((bitsOf(x) & ~0x7f800000U) | 0x3f800000U);
    auto const k = static_cast<float>(static_cast<int>((bitsOf(x) & 0x7f800000U) >> 23) - 127);
    return ((((0.044873614F * m - 0.41656372F) * m + 1.6311488F) * m - 3.550793F) * m + 5.091711F) * m - 2.800364F + k;
}

// x to the power e.
inline float power(float x, float e)
{
    return x > 0.0F ? exp2(e * log2(x)) : 0.0F;
}

// The angle of (x, y): the arc tangent of the smaller side over the larger one by a polynomial of its square, then the octant.
inline float atan2(float y, float x)
{
    if (std::isnan(y) || std::isnan(x))
        return std::numeric_limits<float>::quiet_NaN();
    float const width = std::fabs(x);
    float const height = std::fabs(y);
    bool const isSteep = height > width;
    float const larger = isSteep ? height : width;
    float const smaller = isSteep ? width : height;
    float const q = larger == 0.0F ? 0.0F : std::isinf(smaller) ? 1.0F : smaller / larger;

    float const coefficients[] = {-0.00179362089F, 0.0109146009F, -0.0311778343F, 0.0579575793F, -0.0840344933F,
                                  0.109521854F,    -0.142642416F, 0.199985483F,   -0.333332991F};
    float const s = q * q;
    float p = 0.0F;
    for (float const coefficient : coefficients)
        p = p * s + coefficient;
    float angle = q * s * p + q;

    // pi and half of it, each with what the float lacks.
    if (isSteep)
        angle = 1.57079637F + ((std::signbit(x) ? angle : -angle) + -4.37113883e-8F);
    else if (std::signbit(x))
        angle = 3.14159274F + (-angle + -8.74227766e-8F);
    return std::copysign(angle, y);
}

} // namespace PlainVectorMath

#endif
