// The shared power, exponential and logarithm, written out for one number, as a witness for those on vectors; and how far they may
// be from the functions that they stand for.
#ifndef TAVRIN_TESTS_RENDERER_POLYNOMIAL_MODEL_H
#define TAVRIN_TESTS_RENDERER_POLYNOMIAL_MODEL_H

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>

namespace PolynomialModel
{

// Every operation is rounded to single precision, in the order in which it stands.
inline float exp2(float x)
{
    if (std::isnan(x))
        return x;
    if (x > 1000.0F || x < -1000.0F) // Whole numbers beyond these need not fit an integer.
        return x > 0.0F ? std::numeric_limits<float>::infinity() : 0.0F;
    int i = static_cast<int>(x);
    if (!(x >= 0.0F))
        --i;
    float const f = x - static_cast<float>(i);
    float p = 0.013534168F * f + 0.05201146F;
    p = p * f + 0.24144275F;
    p = p * f + 0.69300383F;
    p = p * f + 1.0000026F;
    if (static_cast<float>(i) < -126.0F)
        return 0.0F;
    if (static_cast<float>(i) > 127.0F)
        return std::numeric_limits<float>::infinity();
    return std::bit_cast<float>(static_cast<std::uint32_t>(127 + i) << 23) * p;
}

inline float log2(float x)
{
    std::uint32_t const bits = std::bit_cast<std::uint32_t>(x);
    float const m = std::bit_cast<float>((bits & ~0x7f800000U) | 0x3f800000U);
    float const k = static_cast<float>(static_cast<int>((bits & 0x7f800000U) >> 23) - 127);
    float p = 0.044873614F * m - 0.41656372F;
    p = p * m + 1.6311488F;
    p = p * m - 3.550793F;
    p = p * m + 5.091711F;
    p = p * m - 2.800364F;
    return p + k;
}

inline float power(float x, float e)
{
    return x > 0.0F ? exp2(e * log2(x)) : 0.0F;
}

// Half a unit in the last place of a number between 0.5 and 1: the largest relative error of one rounding.
constexpr double kRounding = 0x1p-24;

// The largest relative error of exp2 over a fraction from 0 to 1, where it is a polynomial; elsewhere it is a power of 2 times
// that.
inline double exp2Error()
{
    double largest = 0.0;
    for (int i = 0; i <= 1 << 16; ++i)
    {
        float const f = static_cast<float>(i) / 65536.0F;
        largest = std::max(largest, std::abs(static_cast<double>(exp2(f)) / std::exp2(static_cast<double>(f)) - 1.0));
    }
    return largest;
}

// The largest absolute error of log2 over a mantissa from 1 to 2; elsewhere the exponent, a whole number, is added.
inline double log2Error()
{
    double largest = 0.0;
    for (int i = 0; i < 1 << 16; ++i)
    {
        float const m = 1.0F + static_cast<float>(i) / 65536.0F;
        largest = std::max(largest, std::abs(static_cast<double>(log2(m)) - std::log2(static_cast<double>(m))));
    }
    return largest;
}

// A bound for the relative error of power, for x whose logarithm is no larger than so much: the logarithm's error and two roundings
// (of the sum and of the product) times the exponent, then the exponential's own.
inline double powerError(double exponent, double largestLog)
{
    double const logError = exponent * (log2Error() + 2.0 * largestLog * kRounding);
    return std::exp2(logError) * (1.0 + exp2Error()) - 1.0 + 2.0 * kRounding;
}

} // namespace PolynomialModel

#endif
