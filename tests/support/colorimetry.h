// Plain colorimetry in double precision: the matrices that tests expect of transforms, from published chromaticities.
#ifndef TAVRIN_TESTS_SUPPORT_COLORIMETRY_H
#define TAVRIN_TESTS_SUPPORT_COLORIMETRY_H

#include <array>
#include <cmath>

namespace Colorimetry
{

using Row = std::array<double, 3>;
using Matrix = std::array<Row, 3>;
using Chromaticity = std::array<double, 2>;

// Red, green, blue and white.
using Primaries = std::array<Chromaticity, 4>;

constexpr Chromaticity kD65 = {0.3127, 0.3290};         // ITU-R BT.709-6, item 1.3
constexpr Chromaticity kAcesWhite = {0.32168, 0.33767}; // SMPTE ST 2065-1, table 1

constexpr Primaries kRec709 = {{{0.640, 0.330}, {0.300, 0.600}, {0.150, 0.060}, kD65}};     // ITU-R BT.709-6, item 1.3
constexpr Primaries kP3D65 = {{{0.680, 0.320}, {0.265, 0.690}, {0.150, 0.060}, kD65}};      // SMPTE EG 432-1, annex A
constexpr Primaries kAp0 = {{{0.7347, 0.2653}, {0.0, 1.0}, {0.0001, -0.0770}, kAcesWhite}}; // SMPTE ST 2065-1, table 1
constexpr Primaries kAp1 = {{{0.713, 0.293}, {0.165, 0.830}, {0.128, 0.044}, kAcesWhite}};  // AMPAS S-2014-004, 4.1.2

inline Row multiply(Matrix const& m, Row const& v)
{
    Row result = {};
    for (int i = 0; i < 3; ++i)
        result[i] = m[i][0] * v[0] + m[i][1] * v[1] + m[i][2] * v[2];
    return result;
}

inline Matrix multiply(Matrix const& a, Matrix const& b)
{
    Matrix c = {};
    for (int i = 0; i < 3; ++i)
    {
        for (int j = 0; j < 3; ++j)
            c[i][j] = a[i][0] * b[0][j] + a[i][1] * b[1][j] + a[i][2] * b[2][j];
    }
    return c;
}

// By Gauss and Jordan, without pivoting: these matrices have no zero on their diagonal.
inline Matrix inverse(Matrix m)
{
    Matrix r = {Row{1, 0, 0}, Row{0, 1, 0}, Row{0, 0, 1}};
    for (int k = 0; k < 3; ++k)
    {
        double const pivot = m[k][k];
        for (int j = 0; j < 3; ++j)
        {
            m[k][j] /= pivot;
            r[k][j] /= pivot;
        }
        for (int i = 0; i < 3; ++i)
        {
            double const factor = m[i][k];
            for (int j = 0; i != k && j < 3; ++j)
            {
                m[i][j] -= factor * m[k][j];
                r[i][j] -= factor * r[k][j];
            }
        }
    }
    return r;
}

// With Y = 1.
inline Row xyz(Chromaticity const& c)
{
    return {c[0] / c[1], 1.0, (1.0 - c[0] - c[1]) / c[1]};
}

// SMPTE RP 177: the primaries' XYZ in columns, scaled to add up to the white.
inline Matrix toXyz(Primaries const& primaries)
{
    Matrix m = {};
    for (int j = 0; j < 3; ++j)
    {
        Row const column = xyz(primaries[j]);
        for (int i = 0; i < 3; ++i)
            m[i][j] = column[i];
    }
    Row const scales = multiply(inverse(m), xyz(primaries[3]));
    for (int j = 0; j < 3; ++j)
    {
        for (int i = 0; i < 3; ++i)
            m[i][j] *= scales[j];
    }
    return m;
}

// From XYZ relative to one white to XYZ relative to another, by the cone responses of Bradford: ICC.1:2022, annex E.
inline Matrix adaptation(Chromaticity const& source, Chromaticity const& target)
{
    constexpr Matrix kBradford = {Row{0.8951, 0.2664, -0.1614}, Row{-0.7502, 1.7135, 0.0367}, Row{0.0389, -0.0685, 1.0296}};
    Row const from = multiply(kBradford, xyz(source));
    Row const to = multiply(kBradford, xyz(target));
    Matrix scaled = kBradford;
    for (int i = 0; i < 3; ++i)
    {
        for (double& v : scaled[i])
            v *= to[i] / from[i];
    }
    return multiply(inverse(kBradford), scaled);
}

// Between linear values of two sets of primaries.
inline Matrix rgbToRgb(Primaries const& source, Primaries const& target)
{
    return multiply(inverse(toXyz(target)), multiply(adaptation(source[3], target[3]), toXyz(source)));
}

// Light of 0 to 1 to the signal of a display: IEC 61966-2-1.
inline double srgbEncode(double light)
{
    return light <= 0.0031308 ? 12.92 * light : 1.055 * std::pow(light, 1.0 / 2.4) - 0.055;
}

} // namespace Colorimetry

#endif
