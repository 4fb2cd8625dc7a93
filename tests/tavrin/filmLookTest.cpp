// The film look of share/demo, at the points of its grid, against the formula that its generator tells, in double precision.
#include "support/colorimetry.h"

#include <tavrin/tavrin.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <numeric>
#include <vector>

using namespace Tavrin;

namespace
{

using Rgb = std::array<double, 3>;

constexpr Rgb kLuma = {0.2126, 0.7152, 0.0722}; // ITU-R BT.709-6, item 3.2
constexpr unsigned int kPoints = 33;

double lumaOf(Rgb const& rgb)
{
    return std::inner_product(rgb.begin(), rgb.end(), kLuma.begin(), 0.0);
}

// Black is code 95 and white code 685 of 1023; 300 codes are a factor of ten.
double light(double signal)
{
    double const black = std::pow(10.0, -590.0 / 300.0);
    return std::max(0.0, (std::pow(10.0, (signal * 1023.0 - 685.0) / 300.0) - black) / (1.0 - black));
}

// Through (0, 0), (0.18, 0.18) and (light(1), 1).
double filmCurve(double x)
{
    double const top = std::pow(light(1.0), 1.3);
    double const grey = std::pow(0.18, 1.3);
    double const half = grey * 0.82 / (0.18 - grey / top);
    double const power = std::pow(x, 1.3);
    return power / (power + half) * (top + half) / top;
}

Rgb look(Rgb const& signal)
{
    Rgb rgb = {filmCurve(light(signal[0])), filmCurve(light(signal[1])), filmCurve(light(signal[2]))};
    double const before = lumaOf(rgb);
    for (double& v : rgb)
        v = Colorimetry::srgbEncode(std::clamp(before + 1.12 * (v - before), 0.0, 1.0));

    double const luma = lumaOf(rgb);
    double const shadows = 256.0 / 27.0 * luma * std::pow(1.0 - luma, 3);
    double const highlights = 256.0 / 27.0 * std::pow(luma, 3) * (1.0 - luma);
    Rgb const teal = {-0.018, 0.004, 0.018};
    Rgb const amber = {0.022, 0.006, -0.026};
    for (unsigned int c = 0; c < 3; ++c)
        rgb[c] = std::clamp(rgb[c] + shadows * teal[c] + highlights * amber[c], 0.0, 1.0);
    return rgb;
}

std::vector<float> rendered(std::vector<float> const& pixels)
{
    TransformPtr transform;
    EXPECT_TRUE(loadColorTransform(TAVRIN_TEST_DATA "/../../share/demo/filmLook.ctf", transform));
    EXPECT_TRUE(transform->finalize(PF_RGB_32f, PF_RGB_32f, RENDERER_CPU, OPTIMIZER_DEFAULT_THRESHOLD, RESOLVE_GRAPHICS_MONITOR));
    std::vector<float> result(pixels.size());
    ROI const line(0, 0, static_cast<unsigned int>(pixels.size() / 3), 1);
    EXPECT_TRUE(transform->applyCPU(pixels.data(), line, result.data()));
    return result;
}

} // namespace

TEST(FilmLook, HoldsItsFormulaAtThePointsOfItsGrid)
{
    std::vector<float> grid;
    for (unsigned int i = 0; i < kPoints * kPoints * kPoints; ++i)
    {
        for (unsigned int const index : {i / kPoints / kPoints, i / kPoints % kPoints, i % kPoints})
            grid.push_back(static_cast<float>(index) / (kPoints - 1));
    }
    std::vector<float> const result = rendered(grid);
    double largest = 0.0;
    for (std::size_t i = 0; i < grid.size(); i += 3)
    {
        Rgb const expected = look({grid[i], grid[i + 1], grid[i + 2]});
        for (std::size_t c = 0; c < 3; ++c)
            largest = std::max(largest, std::abs(result[i + c] - expected[c]));
    }
    // Rounded to codes of 12 bits, and to floats when divided by full signal.
    EXPECT_LE(largest, 0.5 / 4095.0 + 0x1p-23);
    EXPECT_GE(largest, 0.4 / 4095.0);
}

TEST(FilmLook, LeavesBlackAndTheBrightestWhiteNeutral)
{
    EXPECT_EQ(rendered({0, 0, 0, 1, 1, 1}), (std::vector<float>{0, 0, 0, 1, 1, 1}));
}
