// Scalar number helpers against closed formulas and hand-worked patterns.
#include "utils/numerics.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>

namespace
{

using namespace Foundation::Numerics;

constexpr float kInfinity = std::numeric_limits<float>::infinity();
constexpr float kNan = std::numeric_limits<float>::quiet_NaN();
constexpr float kMax = std::numeric_limits<float>::max();
constexpr float kSmallestNormal = std::numeric_limits<float>::min();
constexpr float kSmallestDenormal = std::numeric_limits<float>::denorm_min();

half halfOf(unsigned short bits)
{
    half value;
    value.setBits(bits);
    return value;
}

float floatOf(std::uint32_t bits)
{
    return std::bit_cast<float>(bits);
}

float stepsAbove(float value, int steps)
{
    for (int i = 0; i < steps; ++i)
    {
        value = std::nextafter(value, kInfinity);
    }
    return value;
}

// IEEE 754's meaning of a half pattern: 5 bits of exponent, 10 of mantissa.
double meaningOfHalf(unsigned int bits)
{
    double const sign = bits & 0x8000U ? -1.0 : 1.0;
    int const exponent = bits >> 10 & 31;
    double const mantissa = bits & 1023;
    return exponent == 0 ? sign * std::ldexp(mantissa, -24) : sign * std::ldexp(1024.0 + mantissa, exponent - 25);
}

TEST(ComputeNextPowerOf2, IsTheSmallestPowerThatIsNotBelow)
{
    EXPECT_EQ(computeNextPowerOf2(1000), 1024U);
    EXPECT_EQ(computeNextPowerOf2(1), 1U);
    EXPECT_EQ(computeNextPowerOf2(3), 4U);
    EXPECT_EQ(computeNextPowerOf2(0x80000000U), 0x80000000U);
    for (unsigned int n = 1; n < 70000; ++n)
    {
        ASSERT_EQ(computeNextPowerOf2(n), std::exp2(std::ceil(std::log2(static_cast<double>(n))))) << n;
    }
    for (unsigned int bit = 2; bit < 32; ++bit)
    {
        EXPECT_EQ(computeNextPowerOf2((1U << bit) - 1), 1U << bit);
        EXPECT_EQ(computeNextPowerOf2(1U << bit), 1U << bit);
    }
}

TEST(ComputeNextPowerOf2, IsZeroForZeroAndBeyond32Bits)
{
    EXPECT_EQ(computeNextPowerOf2(0), 0U);
    EXPECT_EQ(computeNextPowerOf2(0x80000001U), 0U);
    EXPECT_EQ(computeNextPowerOf2(0xffffffffU), 0U);
}

TEST(ConvertHalfBitsToFloat, FollowsTheStandardsMeaningForEveryPattern)
{
    for (unsigned int bits = 0; bits < 0x10000; ++bits)
    {
        float const value = convertHalfBitsToFloat(static_cast<unsigned short>(bits));
        if ((bits & 0x7c00U) != 0x7c00U)
        {
            ASSERT_EQ(value, meaningOfHalf(bits)) << bits;
            ASSERT_EQ(std::signbit(value), bits >= 0x8000U) << bits;
        }
        else if (bits & 0x3ffU)
        {
            ASSERT_TRUE(std::isnan(value)) << bits;
        }
        else
        {
            ASSERT_EQ(value, bits == 0x7c00U ? kInfinity : -kInfinity);
        }
    }
}

TEST(SanitizeFloat, MakesEveryValueFinite)
{
    EXPECT_EQ(sanitizeFloat(kInfinity), 3.4028235e38F);
    EXPECT_EQ(sanitizeFloat(-kInfinity), -3.4028235e38F);
    EXPECT_EQ(std::bit_cast<std::uint32_t>(sanitizeFloat(kNan)), 0U);
    EXPECT_EQ(std::bit_cast<std::uint32_t>(sanitizeFloat(-kNan)), 0U);
}

TEST(SanitizeFloat, LeavesFiniteValuesAlone)
{
    for (float const value : {0.0F, -0.0F, 1.0F, -2.5F, kMax, -kMax, kSmallestNormal, kSmallestDenormal, -kSmallestDenormal})
    {
        EXPECT_EQ(std::bit_cast<std::uint32_t>(sanitizeFloat(value)), std::bit_cast<std::uint32_t>(value)) << value;
    }
}

// 1 is 0.5 * 2^1, so a difference of 0.25 counts as 0.125; the comparison is strict.
TEST(CompareMantissa, MeasuresTheDifferenceByTheMagnitudeOfTheFirst)
{
    EXPECT_TRUE(compareMantissa(1.0F, 1.25F, 0.126F));
    EXPECT_FALSE(compareMantissa(1.0F, 1.25F, 0.125F));
    EXPECT_TRUE(compareMantissa(1024.0F, 1280.0F, 0.126F));
    EXPECT_FALSE(compareMantissa(1024.0F, 1280.0F, 0.125F));
}

// 1 and 2 differ by 0.5 in units of 2^1, and by 0.25 in units of 2^2.
TEST(CompareMantissa, DependsOnWhichComesFirst)
{
    EXPECT_FALSE(compareMantissa(1.0F, 2.0F, 0.3F));
    EXPECT_TRUE(compareMantissa(2.0F, 1.0F, 0.3F));
}

TEST(CompareMantissa, WorksAcrossTheBordersOfBinaryMagnitudes)
{
    EXPECT_TRUE(compareMantissa(std::nextafter(1.0F, 0.0F), 1.0F, 1e-6F));
    EXPECT_TRUE(compareMantissa(1.0F, std::nextafter(1.0F, 0.0F), 1e-6F));
    EXPECT_FALSE(compareMantissa(1.0F, -1.0F, 0.9F));
}

TEST(CompareMantissa, TakesZeroAndDenormals)
{
    EXPECT_TRUE(compareMantissa(0.0F, -0.0F, 1e-9F));
    EXPECT_FALSE(compareMantissa(0.0F, 0.0F, 0.0F));
    EXPECT_TRUE(compareMantissa(0.0F, 1e-6F, 1e-5F)); // Zero has the exponent 0: an absolute comparison.
    EXPECT_FALSE(compareMantissa(1e-6F, 0.0F, 1e-5F));
    EXPECT_FALSE(compareMantissa(kSmallestDenormal, 2 * kSmallestDenormal, 0.1F));
}

TEST(CompareMantissa, NeverHoldsForNan)
{
    EXPECT_FALSE(compareMantissa(kNan, kNan, 1.0F));
    EXPECT_FALSE(compareMantissa(1.0F, kNan, 1.0F));
}

TEST(HalfsDiffer, CountsUnitsInTheLastPlace)
{
    EXPECT_FALSE(halfsDiffer(halfOf(0x3c00), halfOf(0x3c00), 0));
    EXPECT_TRUE(halfsDiffer(halfOf(0x3c00), halfOf(0x3c01), 0));
    EXPECT_FALSE(halfsDiffer(halfOf(0x3c00), halfOf(0x3c01), 1));
    EXPECT_FALSE(halfsDiffer(halfOf(0xbc03), halfOf(0xbc00), 3));
    EXPECT_TRUE(halfsDiffer(halfOf(0xbc03), halfOf(0xbc00), 2));
}

TEST(HalfsDiffer, CountsThroughZero)
{
    EXPECT_FALSE(halfsDiffer(halfOf(0x0000), halfOf(0x8000), 0));
    EXPECT_FALSE(halfsDiffer(halfOf(0x0001), halfOf(0x8001), 2));
    EXPECT_TRUE(halfsDiffer(halfOf(0x0001), halfOf(0x8001), 1));
    EXPECT_TRUE(halfsDiffer(halfOf(0x7bff), halfOf(0xfbff), 2 * 0x7bff - 1));
    EXPECT_FALSE(halfsDiffer(halfOf(0x7bff), halfOf(0xfbff), 2 * 0x7bff));
}

TEST(HalfsDiffer, TakesANanToEqualAnyNanAndNothingElse)
{
    half const nan = halfOf(0x7e00);
    half const otherNan = halfOf(0xfc01);
    EXPECT_FALSE(halfsDiffer(nan, nan, 0));
    EXPECT_FALSE(halfsDiffer(nan, otherNan, 0));
    EXPECT_FALSE(halfsDiffer(halfOf(0x7fff), halfOf(0xffff), 0));
    for (unsigned short const other : {0x0000, 0x3c00, 0x7bff, 0x7c00, 0xfc00})
    {
        EXPECT_TRUE(halfsDiffer(nan, halfOf(other), 0x20000)) << other;
        EXPECT_TRUE(halfsDiffer(halfOf(other), nan, 0x20000)) << other;
    }
}

TEST(HalfsDiffer, TakesAnInfinityToEqualItselfAlone)
{
    half const infinity = halfOf(0x7c00);
    EXPECT_FALSE(halfsDiffer(infinity, infinity, 0));
    EXPECT_TRUE(halfsDiffer(infinity, halfOf(0xfc00), 0x20000));
    EXPECT_TRUE(halfsDiffer(infinity, halfOf(0x7bff), 1));
    EXPECT_TRUE(halfsDiffer(halfOf(0x7bff), infinity, 1));
}

TEST(FloatsDiffer, CountsUnitsInTheLastPlace)
{
    for (bool const compressDenorms : {false, true})
    {
        for (float const value : {1.0F, -1.0F, 1e-30F, -1e30F, kSmallestNormal, stepsAbove(-2.0F, 1)})
        {
            EXPECT_FALSE(floatsDiffer(value, value, 0, compressDenorms));
            EXPECT_FALSE(floatsDiffer(value, stepsAbove(value, 5), 5, compressDenorms));
            EXPECT_TRUE(floatsDiffer(value, stepsAbove(value, 5), 4, compressDenorms));
            EXPECT_TRUE(floatsDiffer(stepsAbove(value, 5), value, 4, compressDenorms));
        }
    }
}

TEST(FloatsDiffer, TakesBothZerosForOne)
{
    EXPECT_FALSE(floatsDiffer(0.0F, -0.0F, 0, true));
    EXPECT_FALSE(floatsDiffer(0.0F, -0.0F, 0, false));
}

TEST(FloatsDiffer, CountsThroughZero)
{
    EXPECT_TRUE(floatsDiffer(floatOf(0x00000003), floatOf(0x80000002), 4, false));
    EXPECT_FALSE(floatsDiffer(floatOf(0x00000003), floatOf(0x80000002), 5, false));
}

TEST(FloatsDiffer, TakesAllDenormalsForZeroWhenTheyAreCompressed)
{
    float const largestDenormal = floatOf(0x007fffff);
    EXPECT_FALSE(floatsDiffer(largestDenormal, -largestDenormal, 0, true));
    EXPECT_FALSE(floatsDiffer(0.0F, kSmallestDenormal, 0, true));
    EXPECT_TRUE(floatsDiffer(0.0F, kSmallestDenormal, 0, false));
    EXPECT_TRUE(floatsDiffer(0.0F, largestDenormal, 0x7ffffe, false));
    EXPECT_FALSE(floatsDiffer(0.0F, largestDenormal, 0x7fffff, false));
}

// The smallest normal numbers are one step from zero, so two steps from each other.
TEST(FloatsDiffer, KeepsNormalNumbersNextToCompressedDenormals)
{
    EXPECT_TRUE(floatsDiffer(0.0F, kSmallestNormal, 0, true));
    EXPECT_FALSE(floatsDiffer(0.0F, kSmallestNormal, 1, true));
    EXPECT_TRUE(floatsDiffer(-kSmallestNormal, kSmallestNormal, 1, true));
    EXPECT_FALSE(floatsDiffer(-kSmallestNormal, kSmallestNormal, 2, true));
}

TEST(FloatsDiffer, SeesTheDifferenceOfNumbersFarApart)
{
    for (bool const compressDenorms : {false, true})
    {
        EXPECT_TRUE(floatsDiffer(2.0F, -2.0F, 1000000, compressDenorms));
        EXPECT_TRUE(floatsDiffer(-3.0F, 3.0F, 1000000, compressDenorms));
        EXPECT_TRUE(floatsDiffer(-kMax, kMax, std::numeric_limits<int>::max(), compressDenorms));
    }
}

TEST(FloatsDiffer, TakesANanToEqualAnyNanAndNothingElse)
{
    for (bool const compressDenorms : {false, true})
    {
        EXPECT_FALSE(floatsDiffer(kNan, kNan, 0, compressDenorms));
        EXPECT_FALSE(floatsDiffer(kNan, floatOf(0xff800001), 0, compressDenorms));
        for (float const other : {0.0F, 1.0F, kMax, kInfinity, -kInfinity})
        {
            EXPECT_TRUE(floatsDiffer(kNan, other, std::numeric_limits<int>::max(), compressDenorms)) << other;
            EXPECT_TRUE(floatsDiffer(other, kNan, std::numeric_limits<int>::max(), compressDenorms)) << other;
        }
    }
}

TEST(FloatsDiffer, TakesAnInfinityToEqualItselfAlone)
{
    for (bool const compressDenorms : {false, true})
    {
        EXPECT_FALSE(floatsDiffer(kInfinity, kInfinity, 0, compressDenorms));
        EXPECT_FALSE(floatsDiffer(-kInfinity, -kInfinity, 0, compressDenorms));
        EXPECT_TRUE(floatsDiffer(kInfinity, -kInfinity, std::numeric_limits<int>::max(), compressDenorms));
        EXPECT_TRUE(floatsDiffer(kInfinity, kMax, 1, compressDenorms));
        EXPECT_TRUE(floatsDiffer(kMax, kInfinity, 1, compressDenorms));
    }
}

} // namespace
