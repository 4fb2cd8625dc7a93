// The works that all participants are measured with, in terms that favour none of them.
#ifndef TAVRIN_BENCH_PEERS_WORK_H
#define TAVRIN_BENCH_PEERS_WORK_H

#include <tavrin/tavrin.h>

#include <array>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace Bench
{

using Rgb = std::array<double, 3>;

// All white points are D65.
enum class Gamut
{
    Rec709,
    Rec2020
};

enum class Direction
{
    Forward,
    Inverse
};

enum class Interpolation
{
    Tetrahedral,
    Trilinear
};

// From linear light of one gamut to that of the other.
struct GamutMatrix
{
    Gamut from;
    Gamut to;
};

// The sRGB curve; forward gives linear light.
struct SrgbCurve
{
    Direction direction;
};

// shared/tables.h has the values of both tables.
struct Table1D
{
    unsigned int rows;
};

struct Table3D
{
    unsigned int points;
    Interpolation interpolation;
};

// ASC CDL 1.2, which clamps.
struct Cdl
{
    Rgb slope;
    Rgb offset;
    Rgb power;
    double saturation;
};

// The logarithm of a film scan; forward gives linear light.
struct FilmLog
{
    Direction direction;
};

struct Exposure
{
    double stops;
};

// Noise ahead of a reduction to 8 bits, of any pattern.
struct Dither
{
};

using Operator = std::variant<GamutMatrix, SrgbCurve, Table1D, Table3D, Cdl, FilmLog, Exposure, Dither>;

struct FormatPair
{
    Tavrin::PixelFormat in;
    Tavrin::PixelFormat out;
};

// Without operators it is a change of format.
struct Work
{
    std::string name;
    std::vector<Operator> operators;
    // Where it is measured; if empty, from each of the usual formats to itself.
    std::vector<FormatPair> formats = {};
};

std::vector<Work> const& works();

// A space of colours, as libraries know them that convert between such.
struct Space
{
    Gamut gamut = Gamut::Rec709;
    // Otherwise values have the sRGB curve.
    bool linear = true;
};

struct Conversion
{
    Space from;
    Space to;
};

// The spaces that a work leads between if it is at most a curve, a matrix and a curve; nothing for other works.
std::optional<Conversion> conversionOf(Work const& work);

// ---------------------------------------------------------------- the numbers of the operators

struct Chromaticity
{
    double x;
    double y;
};

constexpr Chromaticity kD65 = {0.3127, 0.3290};

// Red, green and blue of ITU-R BT.709 or BT.2020.
std::array<Chromaticity, 3> primaries(Gamut gamut);

// Nine coefficients by row.
std::array<double, 9> coefficients(GamutMatrix const& matrix);

// The power of the sRGB curve, which a straight line touches near black: ((x + offset) / (1 + offset)) ^ gamma above the break.
constexpr double kSrgbGamma = 2.4;
constexpr double kSrgbOffset = 0.055;
constexpr double kSrgbBreak = kSrgbOffset / (kSrgbGamma - 1.0);
double srgbSlope();

// A film scan as the operators of files state it: codes of 10 bits, 0.002 of density a code.
constexpr double kFilmGamma = 0.6;
constexpr double kFilmWhite = 685.0;
constexpr double kFilmBlack = 95.0;

// The same as linear = gain * 10 ^ (multiplier * (x - white)) - offset, with x, white and linear from 0 to 1.
struct FilmParameters
{
    double multiplier;
    double white;
    double gain;
    double offset;
};

FilmParameters filmParameters();

constexpr Rgb kLuma = {0.2126, 0.7152, 0.0722};

} // namespace Bench

#endif
