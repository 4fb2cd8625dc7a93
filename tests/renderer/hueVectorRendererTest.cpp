// The hue vector's renderers: which one is chosen, and what they compute, on every instruction set.
#include "renderer/plainVectorMath.h"
#include "renderer/rendererHarness.h"

#include "transform/hueVectorOp.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

using namespace RendererHarness;
using Color::HueVectorOp;
using testing::ElementsAre;
using testing::FloatNear;

namespace
{

using Style = HueVectorOp::HueVectorStyle;

HueVectorOp hueVector(double center, double width, double amount, Style style = Style::YCH_Fwd)
{
    return {Tavrin::BIT_DEPTH_32f, Tavrin::BIT_DEPTH_32f, style, HueVectorOp::HueVectorParamStyle::Chroma, {center, width, amount}};
}

// Cubic coefficients of the weight's pieces, the highest power first. They are those of a uniform B-spline with knots a quarter of
// the range apart, times 3/2, which makes its top 1.
constexpr double kSpline[4][4] = {
    {0.25, 0.0, 0.0, 0.0}, {-0.75, 0.75, 0.75, 0.25}, {0.75, -1.5, 0.0, 1.0}, {-0.25, 0.75, -0.75, 0.25}};

// One pixel by the text of the operation, in single precision and its order.
void scalePixel(HueVectorOp const& op, float const* in, float depthScale, float* out)
{
    auto const center = static_cast<float>(op.getParams()[0] * 3.1415927 / 180.0);
    auto const widthScale = static_cast<float>(4.0 / (op.getParams()[1] * 3.1415927 / 180.0));
    auto const amountGain = static_cast<float>(op.getParams()[2] - 1.0);
    float const pi = 3.1415927F;
    float const twoPi = PlainVectorMath::ofBits(0x40c90fdbU);

    float const r = in[0];
    float const g = in[1];
    float const b = in[2];
    float const y = (g - b) * 0.4330127F;
    float const luma = (r + g + b) * 0.33333334F;
    float const x = r * 0.5F - (g + b) * 0.25F;
    float d = PlainVectorMath::atan2(y, x) - center;
    if (-pi > d)
        d = d + twoPi;
    if (d > pi)
        d = d - twoPi;
    float const t = d * widthScale + 2.0F;

    out[3] = in[3] * depthScale;
    if (!(t >= 1.0F && t < 4.0F))
    {
        for (unsigned int c = 0; c < 3; ++c)
            out[c] = in[c] * depthScale;
        return;
    }
    int const i = static_cast<int>(t);
    float const f = t - static_cast<float>(i);
    float c[4];
    for (unsigned int k = 0; k < 4; ++k)
        c[k] = static_cast<float>(kSpline[i][k]);
    float const w = (((c[0] * f + c[1]) * f + c[2]) * f + c[3]) * amountGain + 1.0F;
    bool const isReverse = op.getStyle() == Style::YCH_Rev;
    float const xw = isReverse ? x / w : x * w;
    float const yw = isReverse ? y / w : y * w;
    float const m = -0.6666667F * xw + luma;
    float const n = yw * 1.1547005F;
    out[0] = (1.3333334F * xw + luma) * depthScale;
    out[1] = (m + n) * depthScale;
    out[2] = (m - n) * depthScale;
}

// What the operator means, in double precision: the distance of each channel from the luma is multiplied by the weight. False for a
// hue so close to an end of the weighted range, or to the opposite of the centre, that rounding decides.
bool meaning(HueVectorOp const& op, float const* in, double* out)
{
    double const radians = std::numbers::pi / 180.0;
    double const luma = (double{in[0]} + in[1] + in[2]) / 3.0;
    double const hue = std::atan2((double{in[1]} - in[2]) * std::sqrt(3.0) / 2.0, in[0] - (double{in[1]} + in[2]) / 2.0);
    double const distance = std::remainder(hue - op.getParams()[0] * radians, 2.0 * std::numbers::pi);
    double const t = distance * 4.0 / (op.getParams()[1] * radians) + 2.0;
    double weight = 1.0;
    if (t >= 1.0 && t < 4.0)
    {
        double const f = t - std::floor(t);
        double const* const c = kSpline[static_cast<int>(t)];
        weight = (((c[0] * f + c[1]) * f + c[2]) * f + c[3]) * (op.getParams()[2] - 1.0) + 1.0;
        if (op.getStyle() == Style::YCH_Rev)
            weight = 1.0 / weight;
    }
    for (unsigned int c = 0; c < 3; ++c)
        out[c] = luma + weight * (in[c] - luma);
    return std::fabs(t - 1.0) > 1e-4 && std::fabs(std::fabs(distance) - std::numbers::pi) > 1e-5;
}

} // namespace

TEST(HueVectorRenderer, EachStyleHasItsRenderer)
{
    EXPECT_THAT(kindsOf(hueVector(0, 60, 2)), ElementsAre(RendererKind::HueVectorRendererYCH_Fwd));
    EXPECT_THAT(kindsOf(hueVector(0, 60, 2, Style::YCH_Rev)), ElementsAre(RendererKind::HueVectorRendererYCH_Rev));
}

// Red is at hue 0; its luma is a third.
TEST(HueVectorRenderer, MultipliesTheChromaAtTheCenterByTheAmount)
{
    forEveryTarget(
        []
        {
            std::vector<float> const out = render(hueVector(0, 60, 2), {1.0F, 0.0F, 0.0F, 0.5F});
            EXPECT_THAT(out,
                        ElementsAre(FloatNear(5.0F / 3, 2e-7F), FloatNear(-1.0F / 3, 1e-7F), FloatNear(-1.0F / 3, 1e-7F), 0.5F));
        });
}

TEST(HueVectorRenderer, ReverseDividesByTheAmount)
{
    std::vector<float> const out = render(hueVector(0, 60, 2, Style::YCH_Rev), {1.0F, 0.0F, 0.0F, 0.5F});
    EXPECT_THAT(out, ElementsAre(FloatNear(2.0F / 3, 2e-7F), FloatNear(1.0F / 6, 1e-7F), FloatNear(1.0F / 6, 1e-7F), 0.5F));
}

TEST(HueVectorRenderer, FindsEachOfTheSixHues)
{
    float const hues[6][4] = {{1, 0, 0, 1}, {1, 1, 0, 1}, {0, 1, 0, 1}, {0, 1, 1, 1}, {0, 0, 1, 1}, {1, 0, 1, 1}};
    for (unsigned int i = 0; i < 6; ++i)
    {
        std::vector<float> const in(hues[i], hues[i] + 4);
        float const luma = (in[0] + in[1] + in[2]) / 3;
        for (unsigned int center = 0; center < 6; ++center)
        {
            std::vector<float> const out = render(hueVector(60.0 * center, 40, 0), in);
            for (unsigned int c = 0; c < 3; ++c)
                EXPECT_NEAR(out[c], center == i ? luma : in[c], 1e-6F) << "hue " << i << ", center " << center;
        }
    }
}

// Half the width before the centre nothing happens yet, a quarter before it the weight sets in at once with a quarter of its
// effect, and behind the centre it falls back to nothing at half the width.
TEST(HueVectorRenderer, WeighsHuesFromAQuarterOfTheWidthBeforeTheCenterToHalfOfItBehind)
{
    std::vector<float> const red = {1.0F, 0.0F, 0.0F, 1.0F};
    auto const gainAt = [&](double distanceInWidths)
    {
        double const width = 120.0;
        double center = -distanceInWidths * width;
        if (center < 0)
            center += 360;
        std::vector<float> const out = render(hueVector(center, width, 2), red);
        return (out[0] - 1.0F) * 1.5F; // Red lies 2 / 3 above its luma.
    };
    EXPECT_FLOAT_EQ(gainAt(-0.51), 0.0F);
    EXPECT_FLOAT_EQ(gainAt(-0.375), 0.0F) << "where a weight would be, but is cut off";
    EXPECT_FLOAT_EQ(gainAt(-0.251), 0.0F);
    EXPECT_NEAR(gainAt(-0.2499), 0.25F, 1e-3F);
    EXPECT_NEAR(gainAt(0.0), 1.0F, 1e-6F);
    EXPECT_NEAR(gainAt(0.25), 0.25F, 1e-6F);
    EXPECT_NEAR(gainAt(0.4999), 0.0F, 1e-6F);
    EXPECT_FLOAT_EQ(gainAt(0.51), 0.0F);
}

TEST(HueVectorRenderer, LeavesHuesOutsideTheRangeExactlyAsTheyAre)
{
    std::vector<float> const in = {0.1F, 0.7F, 0.3F, 0.9F};
    forEveryTarget([&] { EXPECT_EQ(render(hueVector(300, 60, 5), in), in); });
}

TEST(HueVectorRenderer, LeavesBlackAndGreyWhereTheyAre)
{
    forEveryTarget(
        []
        {
            EXPECT_THAT(render(hueVector(0, 360, 50), {0.0F, 0.0F, 0.0F, 1.0F}), ElementsAre(0.0F, 0.0F, 0.0F, 1.0F));
            EXPECT_THAT(render(hueVector(0, 360, 50), {0.5F, 0.5F, 0.5F, 1.0F}), ElementsAre(0.5F, 0.5F, 0.5F, 1.0F));
        });
}

TEST(HueVectorRenderer, LeavesPixelsWithNaNAlone)
{
    std::vector<float> const out = render(hueVector(0, 360, 2), {0.25F, NAN, 0.75F, 1.0F});
    EXPECT_EQ(out[0], 0.25F);
    EXPECT_TRUE(std::isnan(out[1]));
    EXPECT_EQ(out[2], 0.75F);
    EXPECT_EQ(out[3], 1.0F);
}

TEST(HueVectorRenderer, ChangesTheDepthInsideAndOutsideTheRange)
{
    // Red within the range of weights, blue outside.
    std::vector<half> const in = {half(0.5F), half(0.0F), half(0.0F), half(1.0F), half(0.0F), half(0.0F), half(0.5F), half(0.25F)};
    // Red's luma is 1/6; half of its chroma leaves 1/3, 1/12, 1/12.
    EXPECT_THAT((renderAs<half, unsigned char>(hueVector(0, 60, 0.5), Tavrin::PF_RGBA_16f, Tavrin::PF_RGBA_8i, in, 2)),
                ElementsAre(85, 21, 21, 255, 0, 0, 128, 64));
}

TEST(HueVectorRenderer, ReverseUndoesForwardAtTheCenter)
{
    std::vector<float> const red = {0.8F, 0.3F, 0.3F, 1.0F};
    std::vector<float> const out = render(hueVector(0, 90, 1.7, Style::YCH_Rev), render(hueVector(0, 90, 1.7), red));
    for (std::size_t c = 0; c < 4; ++c)
        EXPECT_NEAR(out[c], red[c], 2e-7F);
}

// Tolerances: chroma of up to 3 is weighted with up to 4, and each of some ten roundings is half a unit of values below 8; an angle
// that is off by some 1e-6 moves the weight by up to 1e-6 * 4 / width * 3, which the narrowest range makes 4e-5.
TEST(HueVectorRenderer, MeansAWeightOnTheDistanceFromTheLuma)
{
    std::mt19937 generator(51);
    std::uniform_real_distribution<float> values(-0.5F, 1.5F);
    std::vector<float> in(4 * 20011);
    std::generate(in.begin(), in.end(), [&] { return values(generator); });
    for (HueVectorOp const& op : {hueVector(0, 60, 2), hueVector(120, 90, 0.25), hueVector(345, 180, 4), hueVector(200, 720, 1.5),
                                  hueVector(15, 60, 2, Style::YCH_Rev), hueVector(360, 330, 0.5, Style::YCH_Rev)})
    {
        std::vector<float> const out = render(op, in);
        std::size_t compared = 0;
        double largest = 0.0;
        for (std::size_t i = 0; i < in.size(); i += 4)
        {
            double expected[3];
            if (!meaning(op, &in[i], expected))
                continue;
            ++compared;
            for (unsigned int c = 0; c < 3; ++c)
                largest = std::max(largest, std::fabs(out[i + c] - expected[c]));
        }
        EXPECT_LT(largest, 2e-5);
        EXPECT_GT(compared, in.size() / 4 * 99 / 100);
    }
}

TEST(HueVectorRenderer, HasTheBitsOfItsFormulaOnEveryInstructionSet)
{
    std::vector<float> const in = nastyFloats(1000000, 52);
    for (HueVectorOp const& op : {hueVector(30, 60, 2), hueVector(350, 200, 0.25), hueVector(120, 1000, 3), hueVector(0, 0.5, 100),
                                  hueVector(90, 0, 2), hueVector(30, 90, 2, Style::YCH_Rev), hueVector(10, 400, 0, Style::YCH_Rev)})
    {
        std::vector<float> expected(in.size());
        for (std::size_t i = 0; i < in.size(); i += 4)
            scalePixel(op, &in[i], 1.0F, &expected[i]);
        forEveryTarget([&] { expectSameFloats(expected, render(op, in)); });
    }
}

TEST(HueVectorRenderer, HasTheBitsOfItsFormulaBetweenDepths)
{
    HueVectorOp const op = hueVector(60, 300, 1.5);
    std::mt19937 generator(53);
    std::vector<std::uint16_t> codes(4 * 10007);
    std::generate(codes.begin(), codes.end(), [&] { return static_cast<std::uint16_t>(generator()); });
    std::vector<float> const in(codes.begin(), codes.end());
    std::vector<float> expected(in.size());
    for (std::size_t i = 0; i < in.size(); i += 4)
        scalePixel(op, &in[i], 1.0F / 65535.0F, &expected[i]);
    forEveryTarget(
        [&]
        {
            expectSameFloats(expected, renderAs<std::uint16_t, float>(op, Tavrin::PF_RGBA_16i, Tavrin::PF_RGBA_32f, codes,
                                                                      static_cast<unsigned int>(codes.size() / 4)));
        });
}
