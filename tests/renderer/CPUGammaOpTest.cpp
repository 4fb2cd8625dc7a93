// The gamma renderers: to the bit against the formulas in single precision, and within a derived bound against the curve itself.
#include "renderer/kernelHarness.h"
#include "renderer/polynomialModel.h"

#include "renderer/gammaOpUtil.h"
#include "transform/gammaOp.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace RendererHarness;
using Color::GammaOp;
using testing::ElementsAre;
using Style = GammaOp::GammaStyle;
using Params = GammaOp::Params;
using Tavrin::BIT_DEPTH_10i;
using Tavrin::BIT_DEPTH_32f;

namespace
{

using Channels = std::array<Params, 4>;

Channels const kBasic{Params{2.2}, Params{1.8}, Params{10.0}, Params{1.0}};
Channels const kMoncurve{Params{2.4, 0.055}, Params{3.0, 0.16}, Params{10.0, 0.9}, Params{1.0, 0.0}};

GammaOp gamma(Style style, Channels const& c)
{
    return {BIT_DEPTH_32f, BIT_DEPTH_32f, "", "", {}, style, c[0], c[1], c[2], c[3]};
}

GammaOp gamma(Style style, Params const& params)
{
    return gamma(style, Channels{params, params, params, params});
}

// The basic gamma of one channel, code values in and out.
float basic(float in, float exponent, float maxIn, float maxOut)
{
    float const inScale = 1.0F / maxIn;
    return PolynomialModel::power(in * inScale, exponent) * maxOut;
}

// The curve's constants in double precision, each rounded once.
struct Curve
{
    double g, o;

    explicit Curve(Params const& params) : g(std::max(params[0], 1.000001)), o(std::max(params[1], 1e-6)) {}

    double valueAtBreak() const { return std::pow(g * o / ((g - 1.0) * (1.0 + o)), g); }

    float forward(float in, double maxIn, double maxOut) const
    {
        float const scale = static_cast<float>(1.0 / (1.0 + o) / maxIn);
        float const offset = static_cast<float>(o / (1.0 + o));
        float const breakPoint = static_cast<float>(o / (g - 1.0) * maxIn);
        float const slope = static_cast<float>(valueAtBreak() * (g - 1.0) / o * maxOut / maxIn);
        float const p = PolynomialModel::power(in * scale + offset, static_cast<float>(g)) * static_cast<float>(maxOut);
        return breakPoint < in ? p : in * slope;
    }

    float reverse(float in, double maxIn, double maxOut) const
    {
        float const scale = static_cast<float>((1.0 + o) * maxOut);
        float const offset = static_cast<float>(o * maxOut);
        float const breakPoint = static_cast<float>(valueAtBreak() * maxIn);
        float const slope = static_cast<float>(std::pow((g - 1.0) / o, g - 1.0) * std::pow((1.0 + o) / g, g) * maxOut / maxIn);
        float const depthScale = 1.0F / static_cast<float>(maxIn);
        float const p = PolynomialModel::power(in * depthScale, static_cast<float>(1.0 / g)) * scale - offset;
        return breakPoint < in ? p : in * slope;
    }
};

// 0 to 1 in steps that floats hold.
std::vector<float> ramp()
{
    std::vector<float> values(4 * 4097);
    for (std::size_t i = 0; i < values.size(); ++i)
    {
        std::size_t const step = i / 4;
        values[i] = static_cast<float>(step) / 4096.0F;
    }
    return values;
}

constexpr double kRampLog = 12.0; // The logarithm's magnitude at the ramp's first step.

// Pixels of ordinary numbers, with a number that a quick power would get wrong here and there: each in many places of a vector, and
// far enough from the next for there to be vectors without any.
std::vector<float> rareAmongOrdinary()
{
    float const infinity = std::numeric_limits<float>::infinity();
    float const rare[] = {0.0F,        -0.0F,     -0.25F,    NAN,         infinity,    -infinity, 0x1p-149F,
                          0x1.8p-130F, 0x1p-126F, 0x1p-125F, 0x1.8p-125F, 0x1.8p-100F, 0x1p+64F,  0x1.8p+127F};
    std::vector<float> values(4 * 67 * 3 * std::size(rare));
    for (std::size_t i = 0; i < values.size(); ++i)
        values[i] = static_cast<float>(i % 127 + 1) / 128.0F;
    for (std::size_t i = 0; i < values.size() / 67; ++i)
        values[i * 67 + i % 5] = rare[i % std::size(rare)];
    return values;
}

} // namespace

TEST(GammaRenderer, TheKindFollowsFromTheStyle)
{
    EXPECT_THAT(kindsOf(gamma(Style::BasicFwd, {2.0})), ElementsAre(RendererKind::GammaBasicRenderer));
    EXPECT_THAT(kindsOf(gamma(Style::BasicRev, {2.0})), ElementsAre(RendererKind::GammaBasicRenderer));
    EXPECT_THAT(kindsOf(gamma(Style::MoncurveFwd, {2.0, 0.1})), ElementsAre(RendererKind::GammaMoncurveRendererFwd));
    EXPECT_THAT(kindsOf(gamma(Style::MoncurveRev, {2.0, 0.1})), ElementsAre(RendererKind::GammaMoncurveRendererRev));
}

TEST(GammaRenderer, BasicRaisesEveryChannelToItsExponentOnEveryInstructionSet)
{
    GammaOp const forward = gamma(Style::BasicFwd, kBasic);
    expectEveryTargetToMatch(forward,
                             [](RGBA v)
                             {
                                 for (unsigned int c = 0; c < 4; ++c)
                                     v[c] = basic(v[c], static_cast<float>(kBasic[c][0]), 1.0F, 1.0F);
                                 return v;
                             });
    GammaOp const reverse = gamma(Style::BasicRev, kBasic);
    expectEveryTargetToMatch(reverse,
                             [](RGBA v)
                             {
                                 for (unsigned int c = 0; c < 4; ++c)
                                     v[c] = basic(v[c], static_cast<float>(1.0 / kBasic[c][0]), 1.0F, 1.0F);
                                 return v;
                             });
}

TEST(GammaRenderer, MoncurveChoosesLineOrPowerOnEveryInstructionSet)
{
    GammaOp const forward = gamma(Style::MoncurveFwd, kMoncurve);
    expectEveryTargetToMatch(forward,
                             [](RGBA v)
                             {
                                 for (unsigned int c = 0; c < 4; ++c)
                                     v[c] = Curve(kMoncurve[c]).forward(v[c], 1.0, 1.0);
                                 return v;
                             });
    GammaOp const reverse = gamma(Style::MoncurveRev, kMoncurve);
    expectEveryTargetToMatch(reverse,
                             [](RGBA v)
                             {
                                 for (unsigned int c = 0; c < 4; ++c)
                                     v[c] = Curve(kMoncurve[c]).reverse(v[c], 1.0, 1.0);
                                 return v;
                             });
}

// Where the logarithm times the gamma is a negative whole number, the exponential takes the number below as the integer part.
TEST(GammaRenderer, BasicHasTheBitsOfItsFormulaWhereTheExponentOfTwoIsWhole)
{
    float const exponent = 10.0F;
    std::vector<float> pixels;
    for (float x = 0x1p-12F; x < 0x1p-7F && pixels.size() < 64; x = std::nextafter(x, 1.0F))
    {
        float const exponentOfTwo = exponent * PolynomialModel::log2(x);
        if (exponentOfTwo == std::floor(exponentOfTwo))
            pixels.insert(pixels.end(), {x, std::nextafter(x, 1.0F), x, 0.5F});
    }
    ASSERT_EQ(pixels.size(), 64U) << "too few of these numbers";
    std::vector<float> expected(pixels.size());
    std::transform(pixels.begin(), pixels.end(), expected.begin(), [&](float x) { return PolynomialModel::power(x, exponent); });
    forEveryTarget([&] { expectSameFloats(expected, render(gamma(Style::BasicFwd, {exponent}), pixels)); });
}

TEST(GammaRenderer, BasicHasTheBitsOfItsFormulaForNumbersThatAreHardlyEverMet)
{
    std::vector<float> const in = rareAmongOrdinary();
    for (double const exponent : {1.0, 2.4, 10.0})
    {
        std::vector<float> forward;
        std::vector<float> reverse;
        for (float const x : in)
        {
            forward.push_back(PolynomialModel::power(x, static_cast<float>(exponent)));
            reverse.push_back(PolynomialModel::power(x, static_cast<float>(1.0 / exponent)));
        }
        forEveryTarget([&] { expectSameFloats(forward, render(gamma(Style::BasicFwd, {exponent}), in)); });
        forEveryTarget([&] { expectSameFloats(reverse, render(gamma(Style::BasicRev, {exponent}), in)); });
    }
}

TEST(GammaRenderer, MoncurveHasTheBitsOfItsFormulaForNumbersThatAreHardlyEverMet)
{
    std::vector<float> const in = rareAmongOrdinary();
    Params const sRGB{2.4, 0.055};
    std::vector<float> forward;
    std::vector<float> reverse;
    for (float const x : in)
    {
        forward.push_back(Curve(sRGB).forward(x, 1.0, 1.0));
        reverse.push_back(Curve(sRGB).reverse(x, 1.0, 1.0));
    }
    forEveryTarget([&] { expectSameFloats(forward, render(gamma(Style::MoncurveFwd, sRGB), in)); });
    forEveryTarget([&] { expectSameFloats(reverse, render(gamma(Style::MoncurveRev, sRGB), in)); });
}

// Without an offset the curve begins so low that its high powers end below the normal numbers, where there is only 0.
TEST(GammaRenderer, MoncurveHasTheBitsOfItsFormulaForPowersBelowTheNormalNumbers)
{
    Params const params{10.0, 0.0};
    std::vector<float> in;
    for (float x = 0x1p-19F; in.size() < 4 * 100; x *= 1.07F)
        in.insert(in.end(), 4, x);
    std::vector<float> forward;
    std::vector<float> reverse;
    for (float const x : in)
    {
        forward.push_back(Curve(params).forward(x, 1.0, 1.0));
        reverse.push_back(Curve(params).reverse(x, 1.0, 1.0));
    }
    ASSERT_EQ(forward[8], 0.0F);
    ASSERT_GT(forward.back(), 0.0F);
    forEveryTarget([&] { expectSameFloats(forward, render(gamma(Style::MoncurveFwd, params), in)); });
    forEveryTarget([&] { expectSameFloats(reverse, render(gamma(Style::MoncurveRev, params), in)); });
}

TEST(GammaRenderer, TakesTheScalesOfItsDepthsIntoItsConstants)
{
    expectScalesOfDepths(gamma(Style::BasicFwd, kBasic),
                         [](float maxIn, float maxOut)
                         {
                             return [=](RGBA v)
                             {
                                 for (unsigned int c = 0; c < 4; ++c)
                                     v[c] = basic(v[c], static_cast<float>(kBasic[c][0]), maxIn, maxOut);
                                 return v;
                             };
                         });
    expectScalesOfDepths(gamma(Style::MoncurveFwd, kMoncurve),
                         [](float maxIn, float maxOut)
                         {
                             return [=](RGBA v)
                             {
                                 for (unsigned int c = 0; c < 4; ++c)
                                     v[c] = Curve(kMoncurve[c]).forward(v[c], maxIn, maxOut);
                                 return v;
                             };
                         });
    expectScalesOfDepths(gamma(Style::MoncurveRev, kMoncurve),
                         [](float maxIn, float maxOut)
                         {
                             return [=](RGBA v)
                             {
                                 for (unsigned int c = 0; c < 4; ++c)
                                     v[c] = Curve(kMoncurve[c]).reverse(v[c], maxIn, maxOut);
                                 return v;
                             };
                         });
}

TEST(GammaRenderer, BasicIsAPowerWithinThePolynomialsError)
{
    std::vector<float> const in = ramp();
    for (double const exponent : {1.0, 2.2, 10.0})
    {
        double const bound = PolynomialModel::powerError(exponent, kRampLog);
        std::vector<float> const out = render(gamma(Style::BasicFwd, {exponent}), in);
        for (std::size_t i = 4; i < in.size(); ++i)
        {
            double const expected = std::pow(static_cast<double>(in[i]), static_cast<double>(static_cast<float>(exponent)));
            // Below the smallest normal number there is only 0.
            if (expected > 2.0 * std::numeric_limits<float>::min())
            {
                ASSERT_NEAR(out[i] / expected, 1.0, bound) << in[i] << " to the power " << exponent;
            }
        }
    }
}

TEST(GammaRenderer, BasicIsZeroForWhatIsNotAboveZero)
{
    EXPECT_THAT(render(gamma(Style::BasicFwd, {2.0}), {-1.0F, 0.0F, NAN, -0.0F}), ElementsAre(0.0F, 0.0F, 0.0F, 0.0F));
}

// The transfer function of IEC 61966-2-1 has the same gamma and offset but rounds the slope of its line, which is 12.9232,
// to 12.92: there the two differ by 2.5e-4 of the value.
TEST(GammaRenderer, MoncurveFollowsTheStandardsFormula)
{
    std::vector<float> const in = ramp();
    std::vector<float> const out = render(gamma(Style::MoncurveFwd, {2.4, 0.055}), in);
    double const bound = PolynomialModel::powerError(2.4, 5.0) + 2.6e-4;
    for (std::size_t i = 4; i < in.size(); ++i)
    {
        double const x = in[i];
        double const expected = x <= 0.04045 ? x / 12.92 : std::pow((x + 0.055) / 1.055, 2.4);
        ASSERT_NEAR(out[i] / expected, 1.0, bound) << x;
    }
}

TEST(GammaRenderer, MoncurveIsTheExactCurveWithinThePolynomialsError)
{
    std::vector<float> const in = ramp();
    std::vector<float> const out = render(gamma(Style::MoncurveFwd, {3.0, 0.16}), in);
    double const bound = PolynomialModel::powerError(3.0, 4.0) + 8.0 * PolynomialModel::kRounding; // and that of the base, thrice
    double const breakPoint = 0.16 / 2.0;
    double const slope = std::pow((breakPoint + 0.16) / 1.16, 3.0) / breakPoint;
    for (std::size_t i = 4; i < in.size(); ++i)
    {
        double const x = in[i];
        double const expected = x <= breakPoint ? x * slope : std::pow((x + 0.16) / 1.16, 3.0);
        ASSERT_NEAR(out[i] / expected, 1.0, bound) << x;
    }
}

TEST(GammaRenderer, ForwardAndReverseUndoEachOther)
{
    std::vector<float> const in = ramp();
    // The reverse of the forward's error, and its own.
    double const basicBound =
        PolynomialModel::powerError(2.2, kRampLog) / 2.2 + PolynomialModel::powerError(1.0 / 2.2, 2.2 * kRampLog);
    std::vector<float> out = render(gamma(Style::BasicRev, {2.2}), render(gamma(Style::BasicFwd, {2.2}), in));
    for (std::size_t i = 4; i < in.size(); ++i)
        ASSERT_NEAR(out[i] / in[i], 1.0, basicBound) << in[i];

    // Of the base, which is 1.055 at most before the offset is taken off.
    double const curveBound = 1.055 * (PolynomialModel::powerError(2.4, 4.0) / 2.4 + PolynomialModel::powerError(1.0 / 2.4, 9.0)) +
                              4.0 * PolynomialModel::kRounding;
    out = render(gamma(Style::MoncurveRev, {2.4, 0.055}), render(gamma(Style::MoncurveFwd, {2.4, 0.055}), in));
    for (std::size_t i = 0; i < in.size(); ++i)
        ASSERT_NEAR(out[i], in[i], curveBound) << in[i];
}

TEST(GammaRenderer, AtTheBreakMoncurveTakesTheLine)
{
    Params const params{2.4, 0.055};
    auto const constantsOf = [&](auto compute)
    {
        Rendering::gammaOpUtil::MoncurveParams constants;
        compute(params, BIT_DEPTH_32f, BIT_DEPTH_32f, constants);
        return constants;
    };
    auto const expectLineUpTo = [&](Style style, Rendering::gammaOpUtil::MoncurveParams const& constants)
    {
        float const at = static_cast<float>(constants.breakPoint);
        float const above = std::nextafter(at, 1.0F);
        float const line = at * static_cast<float>(constants.slope);
        std::vector<float> const out = render(gamma(style, params), {at, at, above, above});
        EXPECT_EQ(out[0], line);
        EXPECT_EQ(out[1], line);
        EXPECT_NE(out[2], above * static_cast<float>(constants.slope)) << "the polynomial is off the line";
    };
    expectLineUpTo(Style::MoncurveFwd, constantsOf(&Rendering::gammaOpUtil::computeParamsFwd));
    expectLineUpTo(Style::MoncurveRev, constantsOf(&Rendering::gammaOpUtil::computeParamsRev));
}

TEST(GammaRenderer, MoncurveTakesTheLineForNaNAndNegativeValues)
{
    std::vector<float> const out = render(gamma(Style::MoncurveFwd, {2.4, 0.055}), {NAN, -1.0F, -INFINITY, 0.0F});
    EXPECT_TRUE(std::isnan(out[0]));
    EXPECT_NEAR(out[1], -1.0 / 12.9232, 1e-6);
    EXPECT_EQ(out[2], -INFINITY);
    EXPECT_EQ(out[3], 0.0F);
}

TEST(GammaRenderer, AnIdentityAlphaIsCloseToItsInputAndNotEqualToIt)
{
    Channels const channels{Params{2.4, 0.055}, Params{2.4, 0.055}, Params{2.4, 0.055}, Params{1.0, 0.0}};
    std::vector<float> in(4 * 256);
    for (std::size_t i = 0; i < in.size(); ++i)
    {
        std::size_t const step = i / 4 + 1;
        in[i] = static_cast<float>(step) / 128.0F; // to 2: above 1, where an identity breaks, it is a power
    }
    std::vector<float> const out = render(gamma(Style::MoncurveFwd, channels), in);
    bool differs = false;
    for (std::size_t i = 3; i < in.size(); i += 4)
    {
        ASSERT_NEAR(out[i] / in[i], 1.0, PolynomialModel::powerError(1.0, 1.0) + 3e-6);
        differs = differs || out[i] != in[i];
    }
    EXPECT_TRUE(differs);
}

TEST(GammaRenderer, AFormatWithoutAlphaSendsAnOpaqueOneThroughTheCurve)
{
    std::vector<float> const in = {0.25F, 0.5F, 1.0F};
    std::vector<float> const out =
        renderAs<float, float>(gamma(Style::BasicFwd, {2.0}), Tavrin::PF_RGB_32f, Tavrin::PF_RGBA_32f, in, 1);
    EXPECT_EQ(out[3], PolynomialModel::power(1.0F, 2.0F));
    EXPECT_EQ(out[3], out[2]);
}

TEST(GammaOpUtil, ScalesTheForwardConstantsByTheDepths)
{
    Rendering::gammaOpUtil::MoncurveParams p;
    EXPECT_EQ(p.gamma, 1.0);
    EXPECT_EQ(p.offset, 0.0);
    EXPECT_EQ(p.breakPoint, 0.0);
    EXPECT_EQ(p.slope, 1.0);
    EXPECT_EQ(p.scale, 1.0);
    Rendering::gammaOpUtil::computeParamsFwd({2.0, 0.25}, Tavrin::BIT_DEPTH_8i, BIT_DEPTH_10i, p);
    // gamma 2, offset 1/4: break 1/4, value there (2/4 / (5/4))^2 = 4/25, slope 16/25, scale 4/5
    EXPECT_DOUBLE_EQ(p.gamma, 2.0);
    EXPECT_DOUBLE_EQ(p.offset, 0.2);
    EXPECT_DOUBLE_EQ(p.breakPoint, 0.25 * 255.0);
    EXPECT_DOUBLE_EQ(p.slope, 0.64 * 1023.0 / 255.0);
    EXPECT_DOUBLE_EQ(p.scale, 0.8 / 255.0);
}

TEST(GammaOpUtil, ScalesTheReverseConstantsByTheDepths)
{
    Rendering::gammaOpUtil::MoncurveParams p;
    Rendering::gammaOpUtil::computeParamsRev({2.0, 0.25}, Tavrin::BIT_DEPTH_8i, BIT_DEPTH_10i, p);
    EXPECT_DOUBLE_EQ(p.gamma, 0.5);
    EXPECT_DOUBLE_EQ(p.offset, 0.25 * 1023.0);
    EXPECT_DOUBLE_EQ(p.breakPoint, 0.16 * 255.0);
    EXPECT_DOUBLE_EQ(p.slope, 1023.0 / 255.0 / 0.64);
    EXPECT_DOUBLE_EQ(p.scale, 1.25 * 1023.0);
}
