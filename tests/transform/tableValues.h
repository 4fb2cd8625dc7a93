// What tests of tables share: values in rows, and the value of a half bit pattern worked out from its fields.
#ifndef TAVRIN_TESTS_TRANSFORM_TABLE_VALUES_H
#define TAVRIN_TESTS_TRANSFORM_TABLE_VALUES_H

#include "transform/array.h"
#include "transform/op.h"

#include <cmath>
#include <limits>
#include <vector>

inline constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();
inline constexpr float kInfinity = std::numeric_limits<float>::infinity();

// IEEE 754 binary16: 1 sign bit, 5 exponent bits with a bias of 15, 10 mantissa bits.
inline double halfValue(unsigned int bits)
{
    unsigned int const exponent = (bits >> 10U) & 0x1FU;
    unsigned int const mantissa = bits & 0x3FFU;
    double const sign = (bits & 0x8000U) != 0 ? -1.0 : 1.0;
    if (exponent == 0)
        return sign * std::ldexp(mantissa, -24);
    if (exponent == 31)
        return mantissa == 0 ? sign * static_cast<double>(kInfinity) : static_cast<double>(kNaN);
    return sign * std::ldexp(1024.0 + mantissa, static_cast<int>(exponent) - 25);
}

// The numbers themselves, in order; the array has to be of that size.
inline void setValues(Color::Array& array, std::vector<float> const& values)
{
    array.getValues() = values;
}

// Rows of three equal values.
inline std::vector<float> inAllColumns(std::vector<float> const& column)
{
    std::vector<float> values;
    for (float const value : column)
        values.insert(values.end(), 3, value);
    return values;
}

// Through the base class, so that one operator== is in question.
inline bool areEqual(Color::Op const& a, Color::Op const& b)
{
    return a == b;
}

// One component of all rows.
inline std::vector<float> columnOf(Color::Array const& array, unsigned int component)
{
    std::vector<float> column;
    for (unsigned int row = 0; row < array.getDimension(); ++row)
        column.push_back(array.get(row * 3 + component));
    return column;
}

#endif
