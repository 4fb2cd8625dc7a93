// What a work gives for one pixel, in double precision.
#include "peers/evaluate.h"

#include "shared/tables.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <numeric>

namespace Bench
{

namespace
{

template <class Function>
Rgb eachChannel(Rgb rgb, Function function)
{
    for (std::size_t c = 0; c < rgb.size(); ++c)
        rgb[c] = function(rgb[c], c);
    return rgb;
}

double clamped(double value)
{
    return std::clamp(value, 0.0, 1.0);
}

// A position among so many samples from 0 to 1: the one below, which never is the last, and the rest of the way.
struct Position
{
    Position(double value, unsigned int samples)
        : index(std::min(static_cast<unsigned int>(clamped(value) * (samples - 1)), samples - 2)),
          fraction(clamped(value) * (samples - 1) - index)
    {
    }

    unsigned int index;
    double fraction;
};

class Cube
{
public:
    explicit Cube(unsigned int points) : m_points(points), m_values(grid(points)) {}

    Rgb trilinear(Rgb const& rgb) const;
    Rgb tetrahedral(Rgb const& rgb) const;

private:
    std::array<Position, 3> positions(Rgb const& rgb) const;
    // Adds a weighted corner of the cell, its bits saying on which axes it lies above.
    void add(std::array<Position, 3> const& cell, unsigned int above, double weight, Rgb& sum) const;

    unsigned int m_points;
    std::vector<float> m_values;
};

std::array<Position, 3> Cube::positions(Rgb const& rgb) const
{
    return {Position(rgb[0], m_points), Position(rgb[1], m_points), Position(rgb[2], m_points)};
}

void Cube::add(std::array<Position, 3> const& cell, unsigned int above, double weight, Rgb& sum) const
{
    std::size_t entry = 0;
    for (std::size_t axis = 0; axis < 3; ++axis)
        entry = entry * m_points + cell[axis].index + (above >> axis & 1U);
    for (std::size_t c = 0; c < 3; ++c)
        sum[c] += weight * static_cast<double>(m_values[entry * 3 + c]);
}

Rgb Cube::trilinear(Rgb const& rgb) const
{
    std::array<Position, 3> const cell = positions(rgb);
    Rgb sum = {};
    for (unsigned int above = 0; above < 8; ++above)
    {
        double weight = 1.0;
        for (std::size_t axis = 0; axis < 3; ++axis)
            weight *= (above >> axis & 1U) != 0 ? cell[axis].fraction : 1.0 - cell[axis].fraction;
        add(cell, above, weight, sum);
    }
    return sum;
}

// From the lowest corner to the highest along the axes, that of the largest fraction first.
Rgb Cube::tetrahedral(Rgb const& rgb) const
{
    std::array<Position, 3> const cell = positions(rgb);
    std::array<std::size_t, 3> axes;
    std::iota(axes.begin(), axes.end(), 0U);
    std::stable_sort(axes.begin(), axes.end(), [&](std::size_t a, std::size_t b) { return cell[a].fraction > cell[b].fraction; });
    Rgb sum = {};
    unsigned int above = 0;
    double left = 1.0;
    for (std::size_t const axis : axes)
    {
        add(cell, above, left - cell[axis].fraction, sum);
        left = cell[axis].fraction;
        above |= 1U << axis;
    }
    add(cell, above, left, sum);
    return sum;
}

// Tables are made once for all the pixels.
Cube const& cubeOf(unsigned int points)
{
    static std::map<unsigned int, Cube> cubes;
    return cubes.try_emplace(points, points).first->second;
}

std::vector<float> const& columnOf(unsigned int rows)
{
    static std::map<unsigned int, std::vector<float>> columns;
    std::vector<float>& values = columns[rows];
    if (values.empty())
        values = column(rows);
    return values;
}

struct Evaluator
{
    Rgb operator()(GamutMatrix const& matrix) const
    {
        std::array<double, 9> const m = coefficients(matrix);
        return eachChannel(in,
                           [&](double, std::size_t c) { return std::inner_product(in.begin(), in.end(), m.begin() + c * 3, 0.0); });
    }

    Rgb operator()(SrgbCurve const& curve) const
    {
        double const slope = srgbSlope();
        auto const decode = [&](double x, std::size_t)
        { return x > kSrgbBreak ? std::pow((x + kSrgbOffset) / (1.0 + kSrgbOffset), kSrgbGamma) : x * slope; };
        auto const encode = [&](double x, std::size_t)
        { return x > kSrgbBreak * slope ? (1.0 + kSrgbOffset) * std::pow(x, 1.0 / kSrgbGamma) - kSrgbOffset : x / slope; };
        return curve.direction == Direction::Forward ? eachChannel(in, decode) : eachChannel(in, encode);
    }

    Rgb operator()(Table1D const& table) const
    {
        std::vector<float> const& values = columnOf(table.rows);
        return eachChannel(in,
                           [&](double x, std::size_t)
                           {
                               Position const at(x, table.rows);
                               return std::lerp(static_cast<double>(values[at.index]), static_cast<double>(values[at.index + 1]),
                                                at.fraction);
                           });
    }

    Rgb operator()(Table3D const& table) const
    {
        Cube const& cube = cubeOf(table.points);
        return table.interpolation == Interpolation::Tetrahedral ? cube.tetrahedral(in) : cube.trilinear(in);
    }

    Rgb operator()(Cdl const& cdl) const
    {
        Rgb const graded = eachChannel(in, [&](double x, std::size_t c)
                                       { return std::pow(clamped(x * cdl.slope[c] + cdl.offset[c]), cdl.power[c]); });
        double const luma = std::inner_product(graded.begin(), graded.end(), kLuma.begin(), 0.0);
        return eachChannel(graded, [&](double x, std::size_t) { return clamped(luma + cdl.saturation * (x - luma)); });
    }

    Rgb operator()(FilmLog const& log) const
    {
        FilmParameters const film = filmParameters();
        auto const toLinear = [&](double x, std::size_t)
        { return film.gain * std::pow(10.0, film.multiplier * (x - film.white)) - film.offset; };
        auto const toLog = [&](double x, std::size_t)
        { return film.white + std::log10((x + film.offset) / film.gain) / film.multiplier; };
        return log.direction == Direction::Forward ? eachChannel(in, toLinear) : eachChannel(in, toLog);
    }

    Rgb operator()(Exposure const& exposure) const
    {
        return eachChannel(in, [&](double x, std::size_t) { return x * std::exp2(exposure.stops); });
    }

    Rgb operator()(Dither const&) const { return in; }

    Rgb in;
};

} // namespace

Rgb evaluate(Work const& work, Rgb const& rgb)
{
    Rgb value = rgb;
    for (Operator const& op : work.operators)
        value = std::visit(Evaluator{value}, op);
    return value;
}

} // namespace Bench
