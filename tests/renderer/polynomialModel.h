// The shared power, exponential and logarithm for one number, and how far they may be from the functions that they stand for.
#ifndef TAVRIN_TESTS_RENDERER_POLYNOMIAL_MODEL_H
#define TAVRIN_TESTS_RENDERER_POLYNOMIAL_MODEL_H

#include "renderer/plainVectorMath.h"

#include <algorithm>
#include <cmath>

namespace PolynomialModel
{

using PlainVectorMath::exp2;
using PlainVectorMath::log2;
using PlainVectorMath::power;

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
