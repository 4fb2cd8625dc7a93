// Every operator and style, drawn by the graphics and held against the pixels of the CPU.
#include "drawing.h"
#include "renderer/shaderSamples.h"
#include "transform/ops.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <map>
#include <string>
#include <vector>

using namespace Tavrin;

namespace
{

using Pixels = std::vector<float>;

// What the CPU's pixels become before they are compared, where the two sides differ by design.
using Adapt = std::function<void(Picture const& input, Pixels& pixels)>;

struct Expectation
{
    // Of the difference, as a part of the value, or of 1 where that is more.
    double bound;
    Adapt adapt = [](Picture const&, Pixels&) {};
};

// Bounds are a little under twice what Mesa's renderer showed, whose instructions depend on the processor.

// Sums and products in another order, or with one rounding less.
constexpr double kRounding = 2.5e-7;
// Constants of a shader have six digits: a scale and an offset are each off by up to half a millionth part.
constexpr double kSixDigits = 1.2e-6;
// What the graphics interpolate is a table of 4096 rows, resampled from fewer or from the search that the CPU makes.
constexpr double kResampled = 8e-7;
constexpr double kInverse = 1.4e-6;
// Powers, exponentials and logarithms are those of the graphics, which give up digits for speed; on the CPU they are polynomials of
// ours. A film logarithm is flat, a power below 1 halves the difference, one above 2 doubles it, and so does another one behind it.
constexpr double kFilmLogarithm = 2.5e-6;
constexpr double kExponential = 5e-6;
constexpr double kSmallPower = 1.7e-5;
constexpr double kPower = 2.5e-5;
constexpr double kLargePower = 4.5e-5;
constexpr double kPowerOfAPower = 1e-4;
// The graphics' arc tangent, stretched by the range of hues.
constexpr double kNarrowAngle = 1.3e-5;
constexpr double kWideAngle = 4e-6;

// A style that does not exist, and a dither between its own depths, leave everything alone.
void keepAll(Picture const& input, Pixels& pixels)
{
    pixels = input.values;
}

// A diagonal matrix leaves alpha alone.
void keepAlpha(Picture const& input, Pixels& pixels)
{
    for (std::size_t i = 3; i < pixels.size(); i += 4)
        pixels[i] = input.values[i];
}

// Offsets between equal depths stay code values.
void addCodeValues(Picture const& input, Pixels& pixels)
{
    static float const offsets[] = {16, -32, 0, 64};
    for (std::size_t i = 0; i < pixels.size(); ++i)
        pixels[i] = input.values[i] + offsets[i % 4];
}

// One step of noise is a power of two, where the CPU takes one code value of 255.
void shrinkNoise(Picture const& input, Pixels& pixels)
{
    for (std::size_t i = 0; i < pixels.size(); ++i)
        pixels[i] = input.values[i] + (pixels[i] - input.values[i]) * 255.0F / 256.0F;
}

// The weight of a hue vector rises over the first quarter of its range in a shader; the CPU leaves that quarter alone.
Adapt weightFirstQuarter(double center, double width, double amount, bool isReverse)
{
    return [=](Picture const& input, Pixels& pixels)
    {
        constexpr double kPi = 3.14159265358979;
        for (std::size_t i = 0; i < pixels.size(); i += 4)
        {
            // Grey, and the two axes of the plane of hues.
            double const red = input.values[i];
            double const green = input.values[i + 1];
            double const blue = input.values[i + 2];
            double const grey = (red + green + blue) / 3.0;
            double x = red * 0.5 - (green + blue) * 0.25;
            double y = (green - blue) * 0.4330127;
            double const hue = std::remainder(std::atan2(y, x) - center * kPi / 180.0, 2.0 * kPi);
            double const place = 2.0 + hue * 4.0 / (width * kPi / 180.0);
            if (place <= 0.0 || place >= 1.0)
                continue;
            double const weight = 1.0 + 0.25 * place * place * place * (amount - 1.0);
            x = isReverse ? x / weight : x * weight;
            y = isReverse ? y / weight : y * weight;
            pixels[i] = static_cast<float>(grey + x * 4.0 / 3.0);
            pixels[i + 1] = static_cast<float>(grey - x * 2.0 / 3.0 + y * 1.1547005);
            pixels[i + 2] = static_cast<float>(grey - x * 2.0 / 3.0 - y * 1.1547005);
        }
    };
}

std::map<std::string, Expectation> expectations()
{
    return {
        {"empty", {0}},
        {"matrixIdentity", {0}},
        {"matrixDiagonal", {kRounding, keepAlpha}},
        {"matrixFull", {kRounding}},
        {"matrixOffsets", {kRounding}},
        {"matrixBetweenDepths", {kSixDigits}},
        {"matrixAtOneDepth", {kRounding, addCodeValues}},
        {"rangeWithoutLimits", {0}},
        {"rangeBetweenDepths", {kSixDigits}},
        {"rangeScales", {kSixDigits}},
        {"rangeLowerLimit", {0}},
        {"rangeUpperLimit", {0}},
        {"gammaBasicFwd", {kLargePower}},
        {"gammaBasicRev", {kSmallPower}},
        {"gammaMoncurveFwd", {kLargePower}},
        {"gammaMoncurveRev", {kPower}},
        {"logLog10", {kExponential}},
        {"logLog2", {kPower}},
        {"logAntiLog10", {kExponential}},
        {"logAntiLog2", {kExponential}},
        {"logLogToLin", {kExponential}},
        {"logLinToLog", {kFilmLogarithm}},
        {"cdlV1_2Fwd", {kPower}},
        {"cdlV1_2Rev", {kSmallPower}},
        {"cdlNoClampFwd", {kPower}},
        {"cdlNoClampRev", {kPower}},
        {"exposureContrastVideo", {kPower}},
        {"exposureContrastLog", {kRounding}},
        {"exposureContrastLinear", {kPower}},
        {"exposureContrastVideoLowPivot", {kPower}},
        {"exposureContrastLogLowPivot", {kRounding}},
        {"exposureContrastLinearLowPivot", {kPower}},
        {"gamutMapNone", {0}},
        {"gamutMapDW3", {kRounding}},
        {"hueVectorFwd", {kNarrowAngle, weightFirstQuarter(120.0, 60.0, 1.5, false)}},
        {"hueVectorRev", {kWideAngle, weightFirstQuarter(240.0, 90.0, 1.25, true)}},
        {"hueVectorUnknownStyle", {0, keepAll}},
        {"lut1D", {kRounding}},
        {"lut1DOneColumn", {kRounding}},
        {"lut1DFewRows", {kResampled}},
        {"lut1DFolded", {kRounding}},
        {"lut1DHalfDomain", {kRounding}},
        {"lut1DHueAdjust", {kRounding}},
        {"invLut1D", {kInverse}},
        {"lut3DTrilinear", {kRounding}},
        {"lut3DTetrahedral", {kRounding}},
        {"dither", {kRounding, shrinkNoise}},
        {"ditherIdentity", {0, keepAll}},
        {"twoGammas", {kPower}},
        {"chain", {kPowerOfAPower}},
        {"chainOfTables", {kPower}},
    };
}

double difference(float a, float b)
{
    return std::abs(double(a) - b) / std::max(1.0, std::abs(double(b)));
}

class DrawnSamples : public Drawing, public testing::WithParamInterface<ShaderSample>
{
};

TEST_P(DrawnSamples, ComeCloseToThePixelsOfTheCpu)
{
    ShaderSample const& sample = GetParam();
    std::map<std::string, Expectation> const all = expectations();
    auto const expectation = all.find(sample.name);
    ASSERT_NE(expectation, all.end()) << "says how close this sample has to come";

    TransformPtr const transform = publicTransform(sample.makeTransform());
    ASSERT_EQ(wordsOf(finalize(transform, new TavrinGL::OpenGLAdaptor)), "");
    Picture const picture = randomPicture(61, 37);
    Pixels expected = rendered(transform, picture);
    expectation->second.adapt(picture, expected);
    Pixels const actual = drawn(transform, picture);

    double largest = 0.0;
    std::size_t place = 0;
    for (std::size_t i = 0; i < actual.size(); ++i)
    {
        double const here = difference(actual[i], expected[i]);
        if (!(here <= largest))
        {
            largest = here;
            place = i;
        }
    }
    RecordProperty("difference", testing::PrintToString(largest));
    EXPECT_LE(largest, expectation->second.bound)
        << "channel " << place % 4 << " of pixel " << place / 4 << ": " << picture.values[place] << " became " << actual[place]
        << ", not " << expected[place];
}

INSTANTIATE_TEST_SUITE_P(Samples, DrawnSamples, testing::ValuesIn(shaderSamples()),
                         [](auto const& info) { return info.param.name; });

} // namespace
