// The logarithm's renderers: to the bit against the formulas in single precision, and within a derived bound against the logarithm.
#include "renderer/kernelHarness.h"
#include "renderer/polynomialModel.h"

#include "renderer/CPULogOp.h"
#include "renderer/logOpUtil.h"
#include "support/failure.h"
#include "transform/logOp.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <bit>

using namespace RendererHarness;
using Color::LogOp;
using testing::ElementsAre;
using Style = LogOp::LogStyle;
using Params = LogOp::Params;
using Tavrin::BIT_DEPTH_32f;

namespace
{

using Channels = std::array<Params, 3>;

Params const kFilm{0.6, 685.0, 95.0, 1.0, 0.0};
Channels const kChannels{kFilm, Params{0.55, 700.0, 64.0, 2.0, 0.01}, Params{1.0, 100.0, 99.99, 1.0, -0.5}};

constexpr float kSmallestNormal = 1.17549435e-38F;
float const kLog10Of2 = std::bit_cast<float>(0x3E9A209BU);
float const kLog2Of10 = std::bit_cast<float>(0x40549A78U);

LogOp logOp(Style style)
{
    if (LogOp::hasParameters(style))
        return {BIT_DEPTH_32f, BIT_DEPTH_32f, style, kChannels[0], kChannels[1], kChannels[2]};
    return {BIT_DEPTH_32f, BIT_DEPTH_32f, style, {}, {}, {}};
}

LogOp film(Style style, Params const& params)
{
    return {BIT_DEPTH_32f, BIT_DEPTH_32f, style, params, params, params};
}

float floored(float x)
{
    return x > kSmallestNormal ? x : kSmallestNormal;
}

// The operator on one pixel of code values.
struct Model
{
    Style style;
    float maxIn = 1.0F;
    float maxOut = 1.0F;

    RGBA operator()(RGBA v) const
    {
        float const inScale = 1.0F / maxIn;
        for (unsigned int c = 0; c < 3; ++c)
            v[c] = colour(v[c], c, inScale);
        v[3] = v[3] * (maxOut * inScale);
        return v;
    }

private:
    float colour(float in, unsigned int channel, float inScale) const
    {
        switch (style)
        {
        case Style::Log10:
        case Style::Log2:
            return PolynomialModel::log2(floored(in * inScale)) * ((style == Style::Log10 ? kLog10Of2 : 1.0F) * maxOut);
        case Style::AntiLog10:
        case Style::AntiLog2:
            return PolynomialModel::exp2(in * inScale * (style == Style::AntiLog10 ? kLog2Of10 : 1.0F)) * maxOut;
        default:
            return filmColour(in, channel, inScale);
        }
    }

    float filmColour(float in, unsigned int channel, float inScale) const
    {
        auto const number = [&](unsigned int i) { return static_cast<float>(kChannels[channel][i]); };
        float const refWhite = number(1) / 1023.0F;
        float const multFactor = 2.046F / number(0);
        float const exponent = std::min((number(2) / 1023.0F - refWhite) * multFactor, -0.0001F);
        float const range = number(3) - number(4);
        float const gain = range / (1.0F - std::pow(10.0F, exponent));
        float const offset = gain - range;
        float const shadow = number(4);
        if (style == Style::LinToLog)
        {
            float const y = floored(in * (inScale / gain) + (offset - shadow) / gain);
            return PolynomialModel::log2(y) * (kLog10Of2 * maxOut / multFactor) + refWhite * maxOut;
        }
        float const t = (in * (inScale * multFactor) + (-refWhite * multFactor)) * kLog2Of10;
        return PolynomialModel::exp2(t) * (gain * maxOut) + (shadow - offset) * maxOut;
    }
};

std::vector<float> greys(std::vector<float> const& values)
{
    std::vector<float> pixels;
    for (float const value : values)
        pixels.insert(pixels.end(), {value, value, value, 1.0F});
    return pixels;
}

} // namespace

TEST(LogRenderer, TheKindFollowsFromTheStyle)
{
    EXPECT_THAT(kindsOf(logOp(Style::Log10)), ElementsAre(RendererKind::LogRenderer));
    EXPECT_THAT(kindsOf(logOp(Style::Log2)), ElementsAre(RendererKind::LogRenderer));
    EXPECT_THAT(kindsOf(logOp(Style::AntiLog10)), ElementsAre(RendererKind::AntiLogRenderer));
    EXPECT_THAT(kindsOf(logOp(Style::AntiLog2)), ElementsAre(RendererKind::AntiLogRenderer));
    EXPECT_THAT(kindsOf(logOp(Style::LogToLin)), ElementsAre(RendererKind::Log2LinRenderer));
    EXPECT_THAT(kindsOf(logOp(Style::LinToLog)), ElementsAre(RendererKind::Lin2LogRenderer));
}

TEST(LogRenderer, FollowsTheFormulasOnEveryInstructionSet)
{
    for (unsigned int style = 0; style < 6; ++style)
    {
        SCOPED_TRACE(LogOp::getLogStyleName(static_cast<Style>(style)));
        LogOp const op = logOp(static_cast<Style>(style));
        expectEveryTargetToMatch(op, Model{static_cast<Style>(style)});
    }
}

// Blocks of whole numbers alone, of those from 0 on among fractions, and of numbers that are none of it.
TEST(LogRenderer, TheAntiLogarithmHasTheBitsOfItsFormulaForWholeNumbers)
{
    std::vector<float> values;
    for (int i = -200; i < 200; ++i)
        values.push_back(static_cast<float>(i));
    for (int i = 0; i < 512; ++i)
        values.push_back(i % 3 == 0 ? std::floor(static_cast<float>(i) / 64.0F) : static_cast<float>(i - 256) / 3.0F);
    for (int i = 0; i < 512; ++i)
        values.push_back(i % 7 == 0 ? -0.0F : i % 11 == 0 ? INFINITY : i % 13 == 0 ? -INFINITY : i % 17 == 0 ? NAN : 0.5F);
    std::vector<float> const pixels = greys(values);
    std::vector<float> expected;
    for (std::size_t i = 0; i < pixels.size(); ++i)
        expected.push_back(i % 4 == 3 ? pixels[i] : PolynomialModel::exp2(pixels[i]));
    forEveryTarget([&] { expectSameFloats(expected, render(logOp(Style::AntiLog2), pixels)); });
}

TEST(LogRenderer, TakesTheScalesOfItsDepthsIntoItsConstants)
{
    for (unsigned int i = 0; i < 6; ++i)
    {
        auto const style = static_cast<Style>(i);
        SCOPED_TRACE(LogOp::getLogStyleName(style));
        expectScalesOfDepths(logOp(style), [=](float maxIn, float maxOut) { return Model{style, maxIn, maxOut}; });
    }
}

TEST(LogRenderer, IsTheLogarithmWithinThePolynomialsError)
{
    std::vector<float> values;
    for (float x = 1e-6F; x < 100.0F; x *= 1.01F)
        values.push_back(x);
    double const roundings = 20.0 * 2.0 * PolynomialModel::kRounding; // of results up to 20
    double const bound = PolynomialModel::log2Error() + roundings;
    std::vector<float> const log2 = render(logOp(Style::Log2), greys(values));
    std::vector<float> const log10 = render(logOp(Style::Log10), greys(values));
    for (std::size_t i = 0; i < values.size(); ++i)
    {
        ASSERT_NEAR(log2[4 * i], std::log2(static_cast<double>(values[i])), bound);
        ASSERT_NEAR(log10[4 * i], std::log10(static_cast<double>(values[i])), bound * 0.30103);
    }
}

TEST(LogRenderer, TheAntiLogarithmIsTheExponentialWithinThePolynomialsError)
{
    std::vector<float> values;
    for (float x = -8.0F; x < 8.0F; x += 0.03125F)
        values.push_back(x);
    // The product with log2(10) is up to 27, and its rounding shifts the exponent by so much.
    double const bound = PolynomialModel::exp2Error() + 27.0 * 2.0 * PolynomialModel::kRounding;
    std::vector<float> const exp2 = render(logOp(Style::AntiLog2), greys(values));
    std::vector<float> const exp10 = render(logOp(Style::AntiLog10), greys(values));
    for (std::size_t i = 0; i < values.size(); ++i)
    {
        ASSERT_NEAR(exp2[4 * i] / std::exp2(static_cast<double>(values[i])), 1.0, bound);
        ASSERT_NEAR(exp10[4 * i] / std::pow(10.0, static_cast<double>(values[i])), 1.0, bound);
    }
}

TEST(LogRenderer, OfZeroNegativeAndNaNIsTheLogarithmOfTheSmallestNormalNumber)
{
    double const expected = -126.0 * 0.30103;
    std::vector<float> const out = render(logOp(Style::Log10), {0.0F, -5.0F, NAN, 0.5F});
    for (unsigned int c = 0; c < 3; ++c)
        EXPECT_NEAR(out[c], expected, PolynomialModel::log2Error() + 1e-4);
    EXPECT_EQ(out[3], 0.5F);
}

TEST(LogRenderer, LinToLogBelowTheShadowIsLargeNegativeAndFinite)
{
    std::vector<float> const out = render(film(Style::LinToLog, kFilm), {-1.0F, -100.0F, -INFINITY, 1.0F});
    // refWhite + log10(smallest normal) / multFactor
    double const expected = 685.0 / 1023.0 - 126.0 * std::log10(2.0) / (2.046 / 0.6);
    for (unsigned int c = 0; c < 3; ++c)
        EXPECT_NEAR(out[c], expected, 1e-3);
}

TEST(LogRenderer, LogToLinTakesTheWhiteCodeToTheHighlight)
{
    std::vector<std::uint16_t> const in = {685, 685, 685, 1023};
    std::vector<float> const out =
        renderAs<std::uint16_t, float>(film(Style::LogToLin, kFilm), Tavrin::PF_RGBA_10i, Tavrin::PF_RGBA_32f, in, 1);
    double const gain = 1.0 / (1.0 - std::pow(10.0, (95.0 - 685.0) / 1023.0 * 2.046 / 0.6));
    for (unsigned int c = 0; c < 3; ++c)
        EXPECT_NEAR(out[c], 1.0, gain * (PolynomialModel::exp2Error() + 4.0 * PolynomialModel::kRounding));
    EXPECT_NEAR(out[3], 1.0, 2.0 * PolynomialModel::kRounding);
}

// The published form of the film curve: linear = gain * (10^((code - white) * 0.002 / gamma) - 10^((black - white) * 0.002 /
// gamma)).
TEST(LogRenderer, LogToLinFollowsTheFilmCurve)
{
    std::vector<float> values;
    for (int code = 0; code <= 1023; ++code)
        values.push_back(static_cast<float>(code) / 1023.0F);
    std::vector<float> const out = render(film(Style::LogToLin, kFilm), greys(values));
    double const black = std::pow(10.0, (95.0 - 685.0) * 0.002 / 0.6);
    double const gain = 1.0 / (1.0 - black);
    for (int code = 0; code <= 1023; ++code)
    {
        double const power = std::pow(10.0, (code - 685.0) * 0.002 / 0.6);
        // The polynomial, and the rounding of an exponent of up to 8 and of the numbers that it is made of.
        double const bound = gain * power * (PolynomialModel::exp2Error() + 8.0 * 4.0 * PolynomialModel::kRounding) + 1e-7;
        ASSERT_NEAR(out[4 * static_cast<std::size_t>(code)], gain * (power - black), bound) << code;
    }
}

TEST(LogRenderer, ForwardAndReverseUndoEachOther)
{
    std::vector<float> values;
    for (float x = 0.125F; x <= 1.0F; x += 1.0F / 512.0F)
        values.push_back(x);
    double const error = PolynomialModel::log2Error() + PolynomialModel::exp2Error() / std::log(2.0) + 1e-5;
    // Log of linear: errors of both add up, in units of the logarithm.
    std::vector<float> out = render(film(Style::LinToLog, kFilm), render(film(Style::LogToLin, kFilm), greys(values)));
    for (std::size_t i = 0; i < values.size(); ++i)
        ASSERT_NEAR(out[4 * i], values[i], error * 0.30103 * 0.6 / 2.046) << values[i];
    out = render(logOp(Style::AntiLog2), render(logOp(Style::Log2), greys(values)));
    for (std::size_t i = 0; i < values.size(); ++i)
        ASSERT_NEAR(out[4 * i] / values[i], 1.0, error * std::log(2.0)) << values[i];
}

TEST(LogRenderer, ScalesAlphaByTheDepthsAlone)
{
    std::vector<unsigned char> const in = {128, 128, 128, 51};
    std::vector<float> const out =
        renderAs<unsigned char, float>(logOp(Style::Log2), Tavrin::PF_RGBA_8i, Tavrin::PF_RGBA_32f, in, 1);
    EXPECT_NEAR(out[3], 0.2, 0.2 * 2.0 * PolynomialModel::kRounding);
}

TEST(LogRendererParameters, RefuseStylesThatTheyAreNotFor)
{
    EXPECT_EQ(failureOf([] { Rendering::getLogParameters(logOp(Style::AntiLog2)); }),
              (Failure{0x820004, "Illegal log style 'antiLog2' for renderer 25"}));
    EXPECT_EQ(failureOf([] { Rendering::getAntiLogParameters(logOp(Style::Log10)); }),
              (Failure{0x820004, "Illegal log style 'log10' for renderer 26"}));
    EXPECT_EQ(failureOf([] { Rendering::getLogToLinParameters(logOp(Style::Log2)); }),
              (Failure{0x820004, "Illegal log style 'log2' for renderer 27"}));
    EXPECT_EQ(failureOf([] { Rendering::getLinToLogParameters(logOp(Style::AntiLog10)); }),
              (Failure{0x820004, "Illegal log style 'antiLog10' for renderer 28"}));
}

TEST(LogOpUtil, BuildsTheRecordOfTheFilmModel)
{
    Rendering::LogOpUtil::RendererParams record;
    EXPECT_EQ(record.refWhite, 0.0F);
    EXPECT_EQ(record.multFactor, 1.0F);
    EXPECT_EQ(record.gain, 1.0F);
    EXPECT_EQ(record.offset, 0.0F);
    EXPECT_EQ(record.shadow, 0.0F);
    // Ten to the power of -1: white 1023, black so far below it that the densities differ by 1.
    Rendering::LogOpUtil::buildRendererParameters({2.046, 1023.0, 0.0, 2.0, 0.2}, record);
    EXPECT_FLOAT_EQ(record.refWhite, 1.0F);
    EXPECT_FLOAT_EQ(record.multFactor, 1.0F);
    EXPECT_FLOAT_EQ(record.gain, 2.0F);
    EXPECT_NEAR(record.offset, 0.2, 5e-7);
    EXPECT_FLOAT_EQ(record.shadow, 0.2F);
}

TEST(LogOpUtil, KeepsBlackApartFromWhite)
{
    Rendering::LogOpUtil::RendererParams record;
    Rendering::LogOpUtil::buildRendererParameters({1.0, 100.0, 99.99, 1.0, 0.0}, record);
    // (99.99 - 100) / 1023 * 2.046 is -0.00002, so that -0.0001 counts; 1 - 10^-0.0001 has four digits in single precision.
    EXPECT_NEAR(record.gain * (1.0 - std::pow(10.0, -0.0001)), 1.0, 0x1p-24 / (1.0 - std::pow(10.0, -0.0001)));
}

TEST(LogOpUtil, WantsFiveParameters)
{
    Rendering::LogOpUtil::RendererParams record;
    EXPECT_EQ(failureOf([&] { Rendering::LogOpUtil::buildRendererParameters({1.0}, record); }),
              (Failure{0x2b0003, "The specified Log style must have 5 parameters"}));
}

// a * log10(b * x + c) + d is the renderer's curve.
TEST(LogOpUtil, TellsTheCurveInTheFormOfOtherSystems)
{
    float a = 0.0F, b = 0.0F, c = 0.0F, d = 0.0F;
    Rendering::LogOpUtil::getOCIOLogParams(kChannels[1], a, b, c, d);
    double const multFactor = 2.046 / 0.55;
    double const black = std::pow(10.0, (64.0 - 700.0) / 1023.0 * multFactor);
    double const gain = (2.0 - 0.01) / (1.0 - black);
    EXPECT_NEAR(a, 1.0 / multFactor, 1e-7);
    EXPECT_NEAR(b, 1.0 / gain, 1e-6);
    EXPECT_NEAR(c, (gain * black - 0.01) / gain, 1e-6);
    EXPECT_NEAR(d, 700.0 / 1023.0, 1e-7);
}
