// The shared functions on vectors: the bits of their formulas on every instruction set, and how far they are from the truth.
#include "renderer/kernelsArithmetic.h"
#include "renderer/plainVectorMath.h"
#include "renderer/rendererHarness.h"

#include "transform/gammaOp.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <numbers>
#include <string>
#include <vector>

using namespace RendererHarness;
namespace SSE2 = Color::SSE2;

namespace
{

using Floats = std::vector<float>;

constexpr float kInfinity = std::numeric_limits<float>::infinity();
constexpr std::size_t kMillion = 1000000;

Floats allExp2(Floats const& x)
{
    Floats result(x.size());
    SSE2::sseExp2(x.data(), result.data(), static_cast<unsigned int>(x.size()));
    return result;
}

Floats allLog2(Floats const& x)
{
    Floats result(x.size());
    SSE2::sseLog2(x.data(), result.data(), static_cast<unsigned int>(x.size()));
    return result;
}

Floats allPower(Floats const& x, Floats const& exponent)
{
    Floats result(x.size());
    SSE2::ssePower(x.data(), exponent.data(), result.data(), static_cast<unsigned int>(x.size()));
    return result;
}

Floats allAtan2(Floats const& y, Floats const& x)
{
    Floats result(x.size());
    SSE2::sseAtan2(y.data(), x.data(), result.data(), static_cast<unsigned int>(x.size()));
    return result;
}

template <class Function>
Floats mapped(Floats const& x, Function const& function)
{
    Floats result(x.size());
    std::transform(x.begin(), x.end(), result.begin(), function);
    return result;
}

template <class Function>
Floats mapped(Floats const& x, Floats const& y, Function const& function)
{
    Floats result(x.size());
    std::transform(x.begin(), x.end(), y.begin(), result.begin(), function);
    return result;
}

// Floats of any sort and, for functions that only have something to say there, some in a range.
Floats mixed(float lowest, float highest, unsigned int seed)
{
    Floats values = nastyFloats(kMillion, seed);
    std::mt19937 generator(seed + 1);
    std::uniform_real_distribution<float> inRange(lowest, highest);
    for (std::size_t i = 0; i < values.size(); i += 2)
        values[i] = inRange(generator);
    return values;
}

Floats uniform(float lowest, float highest, std::size_t count, unsigned int seed)
{
    Floats values(count);
    std::mt19937 generator(seed);
    std::uniform_real_distribution<float> inRange(lowest, highest);
    std::generate(values.begin(), values.end(), [&] { return inRange(generator); });
    return values;
}

// Positive normal numbers of every exponent.
Floats positiveNormals(std::size_t count, unsigned int seed)
{
    Floats values(count);
    std::mt19937 generator(seed);
    std::uniform_int_distribution<std::uint32_t> bits(0x00800000U, 0x7f7fffffU);
    std::generate(values.begin(), values.end(), [&] { return PlainVectorMath::ofBits(bits(generator)); });
    return values;
}

// The distance in units of the last place of the float that is nearest to the exact value.
double unitsFrom(double exact, float value)
{
    auto const nearest = static_cast<float>(std::fabs(exact));
    double const unit = static_cast<double>(std::nextafter(nearest, kInfinity)) - nearest;
    return std::fabs(value - exact) / unit;
}

// What the polynomials are off, by evaluating them on a dense grid in higher precision (the logarithm's with its constants as
// floats), and what single precision may add: a rounding in each step, whose sum is below three units of the result for the
// exponential and below 1.2e-6 for the logarithm's polynomial. Adding the exponent costs half a unit more, and since the polynomial
// passes 1 by a hair below the end of its range, that of a number above 128.
constexpr double kExp2RelativeBound = 2.6e-6 + 3 * 0x1p-24;
constexpr double kLog2AbsoluteBound = 1.3e-5 + 1.2e-6 + 0x1p-17;

bool wantsLongTests()
{
    return std::getenv("TAVRIN_LONG_TESTS") != nullptr;
}

// Every float there is, a million and some at a time.
template <class Body>
void forAllFloats(Body const& body)
{
    constexpr std::uint32_t kChunk = 1U << 22;
    Floats values(kChunk);
    for (std::uint64_t first = 0; first < std::uint64_t{1} << 32 && !testing::Test::HasFatalFailure(); first += kChunk)
    {
        for (std::uint32_t i = 0; i < kChunk; ++i)
            values[i] = PlainVectorMath::ofBits(static_cast<std::uint32_t>(first) + i);
        body(values);
    }
}

} // namespace

TEST(VectorExp2, HasTheBitsOfItsFormulaOnEveryInstructionSet)
{
    Floats const x = mixed(-150.0F, 150.0F, 21);
    Floats const expected = mapped(x, &PlainVectorMath::exp2);
    forEveryTarget([&] { expectSameFloats(expected, allExp2(x)); });
}

TEST(VectorExp2, HasTheBitsOfItsFormulaAtWholeNumbersAndBesideThem)
{
    Floats x;
    for (int i = -200; i <= 200; ++i)
    {
        auto const whole = static_cast<float>(i);
        x.insert(x.end(), {std::nextafter(whole, -kInfinity), whole, std::nextafter(whole, kInfinity)});
    }
    Floats const expected = mapped(x, &PlainVectorMath::exp2);
    forEveryTarget([&] { expectSameFloats(expected, allExp2(x)); });
}

TEST(VectorExp2, IsZeroBelowNormalNumbersAndInfiniteAboveThem)
{
    forEveryTarget(
        []
        {
            Floats const zeros = allExp2({-127.0F, -126.0F, -126.5F, -1e10F, -kInfinity});
            expectSameFloats({0.0F, 0.0F, 0.0F, 0.0F, 0.0F}, zeros);
            expectSameFloats({kInfinity, kInfinity, kInfinity, kInfinity}, allExp2({128.0F, 129.5F, 1e10F, kInfinity}));
            Floats const finite = allExp2({-125.99F, 127.99F});
            EXPECT_GT(finite[0], 0.0F);
            EXPECT_LT(finite[1], kInfinity);
            EXPECT_TRUE(std::isnan(allExp2({std::nanf("")})[0]));
        });
}

TEST(VectorExp2, IsWithinItsPolynomialsBoundOfTheTruth)
{
    Floats const x = uniform(-125.99F, 127.99F, kMillion, 22);
    Floats const result = allExp2(x);
    double largest = 0.0;
    for (std::size_t i = 0; i < x.size(); ++i)
        largest = std::max(largest, std::fabs(result[i] / std::exp2(static_cast<double>(x[i])) - 1.0));
    EXPECT_LT(largest, kExp2RelativeBound);
    EXPECT_GT(largest, kExp2RelativeBound / 2) << "the bound is too loose to tell anything";
}

TEST(VectorLog2, HasTheBitsOfItsFormulaOnEveryInstructionSet)
{
    Floats const x = mixed(0.0F, 4.0F, 23);
    Floats const expected = mapped(x, &PlainVectorMath::log2);
    forEveryTarget([&] { expectSameFloats(expected, allLog2(x)); });
}

TEST(VectorLog2, IsWithinItsPolynomialsBoundOfTheTruth)
{
    Floats const x = positiveNormals(kMillion, 24);
    Floats const result = allLog2(x);
    double largest = 0.0;
    for (std::size_t i = 0; i < x.size(); ++i)
        largest = std::max(largest, std::fabs(result[i] - std::log2(static_cast<double>(x[i]))));
    EXPECT_LT(largest, kLog2AbsoluteBound);
    EXPECT_GT(largest, kLog2AbsoluteBound / 2) << "the bound is too loose to tell anything";
}

TEST(VectorPower, HasTheBitsOfItsFormulaOnEveryInstructionSet)
{
    Floats const x = mixed(0.0F, 4.0F, 25);
    Floats const exponent = mixed(-3.0F, 3.0F, 26);
    Floats const expected = mapped(x, exponent, &PlainVectorMath::power);
    forEveryTarget([&] { expectSameFloats(expected, allPower(x, exponent)); });
}

TEST(VectorPower, IsZeroForWhatIsNotAboveZero)
{
    forEveryTarget(
        []
        {
            Floats const bases = {0.0F, 0.0F, 0.0F, -0.0F, -1.0F, std::nanf(""), -kInfinity};
            Floats const exponents = {0.0F, 2.0F, -1.0F, 2.0F, 2.0F, 2.0F, 1.0F};
            expectSameFloats(Floats(bases.size(), 0.0F), allPower(bases, exponents));
        });
}

TEST(VectorPower, IsNearTheTruthButNotExact)
{
    float const eight = allPower({2.0F}, {3.0F})[0];
    EXPECT_NEAR(eight, 8.0F, 8e-3F);
    EXPECT_NE(eight, 8.0F);
}

// An error of the logarithm grows with the exponent; so does the rounding of their product.
TEST(VectorPower, IsWithinItsPolynomialsBoundOfTheTruth)
{
    Floats const x = positiveNormals(kMillion, 27);
    Floats exponent = uniform(-4.0F, 4.0F, kMillion, 28);
    Floats const result = allPower(x, exponent);
    double closest = 0.0;
    for (std::size_t i = 0; i < x.size(); ++i)
    {
        double const y = exponent[i] * std::log2(static_cast<double>(x[i]));
        if (y < -125.9 || y > 127.9)
            continue;
        double const error = std::fabs(result[i] / std::pow(static_cast<double>(x[i]), static_cast<double>(exponent[i])) - 1.0);
        double const bound =
            std::numbers::ln2 * (std::fabs(exponent[i]) * kLog2AbsoluteBound + std::fabs(y) * 0x1p-24) + kExp2RelativeBound + 1e-8;
        closest = std::max(closest, error / bound);
    }
    EXPECT_LT(closest, 1.0);
    EXPECT_GT(closest, 0.5) << "the bound is too loose to tell anything";
}

TEST(VectorAtan2, HasTheBitsOfItsFormulaOnEveryInstructionSet)
{
    Floats const y = nastyFloats(kMillion, 29);
    Floats const x = nastyFloats(kMillion, 30);
    Floats const expected = mapped(y, x, &PlainVectorMath::atan2);
    forEveryTarget([&] { expectSameFloats(expected, allAtan2(y, x)); });
}

TEST(VectorAtan2, FollowsTheRulesForZerosAndInfinities)
{
    Floats const special = {0.0F, -0.0F, 1.0F, -1.0F, kInfinity, -kInfinity};
    Floats ys;
    Floats xs;
    Floats expected;
    for (float const y : special)
    {
        for (float const x : special)
        {
            ys.push_back(y);
            xs.push_back(x);
            expected.push_back(static_cast<float>(std::atan2(static_cast<double>(y), static_cast<double>(x))));
        }
    }
    forEveryTarget(
        [&]
        {
            Floats const result = allAtan2(ys, xs);
            for (std::size_t i = 0; i < result.size(); ++i)
            {
                EXPECT_FLOAT_EQ(result[i], expected[i]) << ys[i] << ", " << xs[i];
                EXPECT_EQ(std::signbit(result[i]), std::signbit(expected[i])) << ys[i] << ", " << xs[i];
            }
        });
}

TEST(VectorAtan2, IsNotANumberForWhatIsNone)
{
    Floats const result = allAtan2({std::nanf(""), 1.0F, std::nanf("")}, {1.0F, std::nanf(""), kInfinity});
    EXPECT_TRUE(std::all_of(result.begin(), result.end(), [](float value) { return std::isnan(value); }));
}

// Both signs, both sides of the diagonals, and ratios from 1 to those beyond all floats.
TEST(VectorAtan2, IsWithinTwoUnitsOfTheLastPlaceInAllOctants)
{
    Floats ys;
    Floats xs;
    Floats const lengths = positiveNormals(kMillion, 31);
    Floats const angles = uniform(-3.1415927F, 3.1415927F, kMillion, 32);
    for (std::size_t i = 0; i < kMillion; ++i)
    {
        bool const isAlongAxes = i % 4 == 0;
        float const width = isAlongAxes ? lengths[i] : std::cos(angles[i]);
        float const height = isAlongAxes ? lengths[kMillion - 1 - i] : std::sin(angles[i]);
        xs.push_back(i % 8 == 0 ? -width : width);
        ys.push_back(i % 16 < 8 ? height : -height);
    }
    for (std::uint32_t bits = 0; bits < 1000; ++bits) // Numbers below the normal ones.
    {
        ys.push_back(PlainVectorMath::ofBits(bits * 8000));
        xs.push_back(PlainVectorMath::ofBits(1 + bits * 7919));
    }
    Floats const result = allAtan2(ys, xs);
    double largest = 0.0;
    for (std::size_t i = 0; i < result.size(); ++i)
        largest = std::max(largest, unitsFrom(std::atan2(static_cast<double>(ys[i]), static_cast<double>(xs[i])), result[i]));
    EXPECT_LT(largest, 2.0);
    EXPECT_GT(largest, 1.0) << "the bound is too loose to tell anything";
}

// These take minutes, and run where the environment has TAVRIN_LONG_TESTS.

TEST(VectorMathLong, Exp2HasTheBitsOfItsFormulaForEveryFloat)
{
    if (!wantsLongTests())
        GTEST_SKIP() << "set TAVRIN_LONG_TESTS to run it";
    forAllFloats(
        [](Floats const& x)
        {
            Floats const expected = mapped(x, &PlainVectorMath::exp2);
            forEveryTarget([&] { expectSameFloats(expected, allExp2(x)); });
        });
}

TEST(VectorMathLong, Log2HasTheBitsOfItsFormulaForEveryFloat)
{
    if (!wantsLongTests())
        GTEST_SKIP() << "set TAVRIN_LONG_TESTS to run it";
    forAllFloats(
        [](Floats const& x)
        {
            Floats const expected = mapped(x, &PlainVectorMath::log2);
            forEveryTarget([&] { expectSameFloats(expected, allLog2(x)); });
        });
}

TEST(VectorMathLong, PowersHaveTheBitsOfTheirFormulaForEveryFloat)
{
    if (!wantsLongTests())
        GTEST_SKIP() << "set TAVRIN_LONG_TESTS to run it";
    constexpr float kExponent = 2.4F;
    Color::GammaOp::Params const params{kExponent};
    Color::GammaOp const op(Tavrin::BIT_DEPTH_32f, Tavrin::BIT_DEPTH_32f, "", "", {}, Color::GammaOp::GammaStyle::BasicFwd, params,
                            params, params, params);
    forAllFloats(
        [&](Floats const& x)
        {
            Floats const expected = mapped(x, [](float value) { return PlainVectorMath::power(value, kExponent); });
            forEveryTarget([&] { expectSameFloats(expected, render(op, x)); });
        });
}

TEST(VectorMathLong, Exp2AndLog2AreWithinTheirBoundsForEveryFloat)
{
    if (!wantsLongTests())
        GTEST_SKIP() << "set TAVRIN_LONG_TESTS to run it";
    double largestExp2 = 0.0;
    double largestLog2 = 0.0;
    forAllFloats(
        [&](Floats const& x)
        {
            Floats const exponentials = allExp2(x);
            Floats const logarithms = allLog2(x);
            for (std::size_t i = 0; i < x.size(); ++i)
            {
                if (x[i] > -126.0F && x[i] < 128.0F)
                    largestExp2 = std::max(largestExp2, std::fabs(exponentials[i] / std::exp2(static_cast<double>(x[i])) - 1.0));
                if (std::isnormal(x[i]) && x[i] > 0.0F)
                    largestLog2 = std::max(largestLog2, std::fabs(logarithms[i] - std::log2(static_cast<double>(x[i]))));
            }
        });
    EXPECT_LT(largestExp2, kExp2RelativeBound);
    EXPECT_LT(largestLog2, kLog2AbsoluteBound);
    RecordProperty("largestExp2RelativeError", std::to_string(largestExp2 * 1e6) + "e-6");
    RecordProperty("largestLog2AbsoluteError", std::to_string(largestLog2 * 1e6) + "e-6");
}
