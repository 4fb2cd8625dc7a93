// Numbers of tables as text.
#include "xml/arrayWriter.h"

#include "support/failure.h"
#include "transform/tableValues.h"

#include <gtest/gtest.h>

#include <bit>
#include <cstdint>
#include <cstdio>
#include <limits>
#include <random>
#include <sstream>
#include <string>
#include <vector>

using namespace Color::Xml::Writer;
using namespace Tavrin;

namespace
{

std::string values(std::vector<float> const& numbers, unsigned int valuesPerLine, BitDepth depth, unsigned int stride = 1)
{
    std::ostringstream stream;
    Formatter formatter(stream);
    writeValues(formatter, numbers.data(), numbers.data() + numbers.size(), valuesPerLine, depth, stride);
    return stream.str();
}

std::string line(float number, BitDepth depth)
{
    return values({number}, 1, depth);
}

struct Form
{
    BitDepth depth;
    char const* format; // that of printf with the same outcome
};

constexpr Form kForms[] = {
    {BIT_DEPTH_8i, "%3.6g\n"},  {BIT_DEPTH_10i, "%4.6g\n"},  {BIT_DEPTH_12i, "%4.6g\n"},
    {BIT_DEPTH_16i, "%5.6g\n"}, {BIT_DEPTH_16f, "%11.5g\n"}, {BIT_DEPTH_32f, "%15.8g\n"},
};

std::string printed(char const* format, float number)
{
    char text[64];
    std::snprintf(text, sizeof(text), format, static_cast<double>(number));
    return text;
}

void expectAsPrinted(std::vector<float> const& numbers)
{
    for (Form const& form : kForms)
    {
        std::string expected;
        for (float const number : numbers)
            expected += printed(form.format, number);
        EXPECT_TRUE(values(numbers, 1, form.depth) == expected) << getBitDepthName(form.depth);
    }
}

// Any bits but those of NaN, which float depths print without a sign.
std::vector<float> randomFloats(std::size_t count)
{
    std::mt19937 random(7);
    std::vector<float> numbers;
    while (numbers.size() < count)
    {
        auto const number = std::bit_cast<float>(static_cast<std::uint32_t>(random()));
        if (number == number)
            numbers.push_back(number);
    }
    return numbers;
}

std::vector<float> randomFractions(std::size_t count)
{
    std::mt19937 random(8);
    std::uniform_real_distribution<float> fraction(0.0F, 1.0F);
    std::vector<float> numbers(count);
    for (float& number : numbers)
        number = fraction(random);
    return numbers;
}

// Decimal fractions that lie in the middle of two texts, or so near that only all binary digits tell.
std::vector<float> halfwayFractions()
{
    std::vector<float> numbers;
    for (unsigned int i = 1; i < 1U << 12U; i += 2)
    {
        for (int exponent = -30; exponent <= 30; ++exponent)
            numbers.push_back(std::ldexp(static_cast<float>(i), exponent));
    }
    return numbers;
}

} // namespace

TEST(WriteValues, JustifiesByDepth)
{
    EXPECT_EQ(line(7.0F, BIT_DEPTH_8i), "  7\n");
    EXPECT_EQ(line(7.0F, BIT_DEPTH_10i), "   7\n");
    EXPECT_EQ(line(7.0F, BIT_DEPTH_12i), "   7\n");
    EXPECT_EQ(line(7.0F, BIT_DEPTH_16i), "    7\n");
    EXPECT_EQ(line(7.0F, BIT_DEPTH_16f), "          7\n");
    EXPECT_EQ(line(7.0F, BIT_DEPTH_32f), "              7\n");
}

TEST(WriteValues, GivesDigitsByDepth)
{
    // The float next to a third is 0.3333333432674407958984375.
    float const third = 1.0F / 3.0F;
    EXPECT_EQ(line(third, BIT_DEPTH_8i), "0.333333\n");
    EXPECT_EQ(line(third, BIT_DEPTH_16i), "0.333333\n");
    EXPECT_EQ(line(third, BIT_DEPTH_16f), "    0.33333\n");
    EXPECT_EQ(line(third, BIT_DEPTH_32f), "     0.33333334\n");
    EXPECT_EQ(line(-0.0F, BIT_DEPTH_32f), "             -0\n");
    EXPECT_EQ(line(1234567.0F, BIT_DEPTH_16i), "1.23457e+06\n");
}

TEST(WriteValues, NamesWhatIsNotFinite)
{
    EXPECT_EQ(line(kInfinity, BIT_DEPTH_32f), "            inf\n");
    EXPECT_EQ(line(-kInfinity, BIT_DEPTH_16f), "       -inf\n");
    EXPECT_EQ(line(kNaN, BIT_DEPTH_16f), "        nan\n");
    EXPECT_EQ(line(std::copysign(kNaN, -1.0F), BIT_DEPTH_32f), "            nan\n");
    EXPECT_EQ(line(kInfinity, BIT_DEPTH_8i), "inf\n");
    EXPECT_EQ(line(std::copysign(kNaN, -1.0F), BIT_DEPTH_10i), "-nan\n");
}

TEST(WriteValues, PutsSoManyOnALine)
{
    EXPECT_EQ(values({1, 2, 3, 4, 5, 6}, 3, BIT_DEPTH_8i), "  1   2   3\n  4   5   6\n");
    EXPECT_EQ(values({1, 2, 3, 4, 5, 6}, 1, BIT_DEPTH_8i), "  1\n  2\n  3\n  4\n  5\n  6\n");
    EXPECT_EQ(values({1, 2, 3, 4}, 3, BIT_DEPTH_8i), "  1   2   3\n  4 ");
    EXPECT_EQ(values({}, 3, BIT_DEPTH_8i), "");
}

TEST(WriteValues, TakesEachValueOfAStride)
{
    EXPECT_EQ(values({1, 2, 3, 4, 5, 6}, 1, BIT_DEPTH_8i, 3), "  1\n  4\n");
    EXPECT_EQ(values({1, 2, 3, 4, 5, 6, 7}, 3, BIT_DEPTH_8i, 2), "  1   3\n  5   7 ");
}

TEST(WriteValues, RefusesADepthThatThereIsNot)
{
    EXPECT_EQ(failureOf([] { line(1.0F, BIT_DEPTH_UNKNOWN); }), (Failure{0x430005, "BitDepth unknown"}));
}

// The C library is the witness.
TEST(WriteValues, PrintsEveryHalfAsPrintfDoes)
{
    std::vector<float> halfs;
    for (unsigned int bits = 0; bits < 65536; ++bits)
    {
        auto const value = static_cast<float>(halfValue(bits));
        if (value == value)
            halfs.push_back(value);
    }
    expectAsPrinted(halfs);
}

TEST(WriteValues, PrintsIntegerCodesAsPrintfDoes)
{
    std::vector<float> codes(65536);
    for (std::size_t i = 0; i < codes.size(); ++i)
        codes[i] = static_cast<float>(i);
    expectAsPrinted(codes);
}

TEST(WriteValues, PrintsFloatsOfAllMagnitudesAsPrintfDoes)
{
    expectAsPrinted(randomFloats(100'000));
    expectAsPrinted(randomFractions(100'000));
    expectAsPrinted(halfwayFractions());
    using Limits = std::numeric_limits<float>;
    expectAsPrinted({Limits::max(), Limits::lowest(), Limits::min(), Limits::denorm_min(), -Limits::denorm_min(), 0.0F, -0.0F,
                     99999.99F, 999999.5F, 9999999.5F, 99999999.0F, 0.0001F, 0.000099999F});
}

TEST(WriteArray, TellsItsDimensionsAndKeepsNumbersAtTheMargin)
{
    std::ostringstream stream;
    Formatter formatter(stream);
    ScopeIndent const indent(formatter);
    writeArray(formatter, {2, 3}, {0, 1, 2, 3, 4, 5}, 3, BIT_DEPTH_8i);
    EXPECT_EQ(stream.str(), "    <Array dim=\"2 3\">\n"
                            "  0   1   2\n"
                            "  3   4   5\n"
                            "    </Array>\n");
}
