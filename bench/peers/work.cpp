// The works that all participants are measured with.
#include "peers/work.h"

#include <Imath/ImathMatrix.h>

#include <cmath>

namespace Bench
{

namespace
{

constexpr GamutMatrix kWiden = {Gamut::Rec709, Gamut::Rec2020};
constexpr SrgbCurve kDecode = {Direction::Forward};
constexpr SrgbCurve kEncode = {Direction::Inverse};
constexpr Cdl kGrade = {{1.1, 1.2, 0.9}, {0.01, -0.02, 0.03}, {1.1, 0.9, 1.2}, 1.2};
constexpr FilmLog kLogToLin = {Direction::Forward};
constexpr FilmLog kLinToLog = {Direction::Inverse};

std::vector<FormatPair> const kConversions = {
    {Tavrin::PF_RGBA_8i, Tavrin::PF_RGBA_16f},   {Tavrin::PF_RGBA_16i, Tavrin::PF_RGBA_32f},
    {Tavrin::PF_RGBA_32f, Tavrin::PF_RGBA_8i},   {Tavrin::PF_RGBA_32f, Tavrin::PF_RGBA_16i},
    {Tavrin::PF_RGBA_32f, Tavrin::PF_RGBA_10iP}, {Tavrin::PF_RGB_8i, Tavrin::PF_RGB_16f},
    {Tavrin::PF_RGB_16i, Tavrin::PF_RGB_32f},    {Tavrin::PF_RGB_32f, Tavrin::PF_RGB_16i},
};

std::vector<Work> makeWorks()
{
    std::vector<Work> all = {
        {"matrix", {kWiden}}, {"curve, matrix", {kDecode, kWiden}}, {"curve, matrix, curve", {kDecode, kWiden, kEncode}},
        {"CDL", {kGrade}},    {"log to lin", {kLogToLin}},
    };
    for (unsigned int const rows : {1024U, 4096U, 65536U})
        all.push_back({"1D " + std::to_string(rows), {Table1D{rows}}});
    for (unsigned int const points : {17U, 33U, 65U})
    {
        all.push_back({"3D " + std::to_string(points) + " tetrahedral", {Table3D{points, Interpolation::Tetrahedral}}});
        all.push_back({"3D " + std::to_string(points) + " trilinear", {Table3D{points, Interpolation::Trilinear}}});
    }
    // A scan on its way to a display: exposure and gamut in linear light, and a look that is sampled in the logarithm.
    all.push_back({"viewing chain", {kLogToLin, Exposure{0.5}, kWiden, kLinToLog, Table3D{33, Interpolation::Tetrahedral}}});
    all.push_back({"conversion", {}, kConversions});
    all.push_back({"dither", {Dither()}, {{Tavrin::PF_RGBA_16i, Tavrin::PF_RGBA_8i}, {Tavrin::PF_RGB_16i, Tavrin::PF_RGB_8i}}});
    return all;
}

// The columns of red, green and blue in CIE XYZ, scaled so that they add up to the white.
Imath::M33d toXyz(Gamut gamut)
{
    auto const xyz = [](Chromaticity const& c) { return Imath::V3d(c.x / c.y, 1.0, (1.0 - c.x - c.y) / c.y); };
    std::array<Chromaticity, 3> const rgb = primaries(gamut);
    Imath::M33d rows;
    for (int i = 0; i < 3; ++i)
    {
        Imath::V3d const column = xyz(rgb[i]);
        for (int j = 0; j < 3; ++j)
            rows[i][j] = column[j];
    }
    // Imath multiplies row vectors, so the columns stand as rows.
    Imath::V3d const weights = xyz(kD65) * rows.inverse();
    for (int i = 0; i < 3; ++i)
    {
        for (int j = 0; j < 3; ++j)
            rows[i][j] *= weights[i];
    }
    return rows;
}

} // namespace

std::vector<Work> const& works()
{
    static std::vector<Work> const all = makeWorks();
    return all;
}

std::optional<Conversion> conversionOf(Work const& work)
{
    Conversion conversion;
    for (Operator const& op : work.operators)
    {
        if (auto const* const matrix = std::get_if<GamutMatrix>(&op))
        {
            conversion.from.gamut = matrix->from;
            conversion.to.gamut = matrix->to;
        }
        else if (auto const* const curve = std::get_if<SrgbCurve>(&op))
            (curve->direction == Direction::Forward ? conversion.from : conversion.to).linear = false;
        else
            return std::nullopt;
    }
    return conversion;
}

std::array<Chromaticity, 3> primaries(Gamut gamut)
{
    if (gamut == Gamut::Rec709)
        return {{{0.640, 0.330}, {0.300, 0.600}, {0.150, 0.060}}};
    return {{{0.708, 0.292}, {0.170, 0.797}, {0.131, 0.046}}};
}

std::array<double, 9> coefficients(GamutMatrix const& matrix)
{
    Imath::M33d const rows = toXyz(matrix.from) * toXyz(matrix.to).inverse();
    std::array<double, 9> result;
    for (int i = 0; i < 9; ++i)
        result[i] = rows[i % 3][i / 3];
    return result;
}

double srgbSlope()
{
    double const highest = std::pow((kSrgbBreak + kSrgbOffset) / (1.0 + kSrgbOffset), kSrgbGamma);
    return highest / kSrgbBreak;
}

FilmParameters filmParameters()
{
    double const multiplier = 0.002 * 1023.0 / kFilmGamma;
    double const gain = 1.0 / (1.0 - std::pow(10.0, multiplier * (kFilmBlack - kFilmWhite) / 1023.0));
    return {multiplier, kFilmWhite / 1023.0, gain, gain - 1.0};
}

} // namespace Bench
