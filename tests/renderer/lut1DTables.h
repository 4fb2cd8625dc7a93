// 1D tables for tests: identities, and tables by a formula.
#ifndef TAVRIN_TESTS_RENDERER_LUT_1D_TABLES_H
#define TAVRIN_TESTS_RENDERER_LUT_1D_TABLES_H

#include "transform/lut1DOp.h"

#include <cmath>

namespace RendererHarness
{

inline constexpr Color::Lut1DOp::InterpolationAlgo kLinear = Color::Lut1DOp::InterpolationAlgo::Linear;

inline Color::Lut1DOp table(Tavrin::BitDepth in, Tavrin::BitDepth out, unsigned int rows,
                            Tavrin::HalfFlags flags = Tavrin::HALF_FLAGS_NONE)
{
    return {in, out, "", "", Color::Descriptions(), kLinear, flags, rows};
}

// Every column by a formula of the row, from 0 to 1, and the column; values in the scale of the output depth.
template <class Formula>
Color::Lut1DOp tableOf(Tavrin::BitDepth in, Tavrin::BitDepth out, unsigned int rows, Formula const& formula)
{
    Color::Lut1DOp op = table(in, out, rows);
    for (unsigned int i = 0; i < rows; ++i)
    {
        for (unsigned int c = 0; c < 3; ++c)
            op.getArray().set(3 * i + c, static_cast<float>(formula(i / (rows - 1.0), c) * Tavrin::getBitDepthMaxValue(out)));
    }
    return op;
}

// A curve for each column, none of them straight.
inline double curve(double x, unsigned int column)
{
    return std::pow(x, 1.5 + 0.4 * column) * (1.0 - 0.1 * column) + 0.02;
}

} // namespace RendererHarness

#endif
