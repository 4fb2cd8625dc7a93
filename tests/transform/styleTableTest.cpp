// Names of styles in both directions, and bounds of parameters.
#include "transform/styleTable.h"

#include "support/failure.h"
#include "transform/parameterBounds.h"

#include <gtest/gtest.h>

namespace
{

enum class Sample : unsigned int
{
    First,
    Second
};

constexpr Color::StyleTable<Sample, 2> kSamples{"firstFwd", "second"};

Sample parse(char const* name)
{
    return kSamples.parse(name, Color::ErrorIds::kGammaStyleUnrecognized, Color::Module::kGamma);
}

} // namespace

TEST(StyleTable, FindsNamesWithoutRegardToCase)
{
    EXPECT_EQ(parse("firstFwd"), Sample::First);
    EXPECT_EQ(parse("FIRSTFWD"), Sample::First);
    EXPECT_EQ(parse("sEcOnD"), Sample::Second);
}

TEST(StyleTable, FindsNothingForNullEmptyAndOtherTexts)
{
    EXPECT_FALSE(kSamples.find(nullptr).has_value());
    EXPECT_FALSE(kSamples.find("").has_value());
    EXPECT_FALSE(kSamples.find("secon").has_value());
    EXPECT_FALSE(kSamples.find("second ").has_value());
}

TEST(StyleTable, RefusesUnknownNamesWithTheTextInTheMessage)
{
    EXPECT_EQ(failureOf([] { parse("third"); }).id, 0x290001U);
    EXPECT_EQ(failureOf([] { parse("third"); }).words, "Unrecognized Gamma style: third");
    EXPECT_EQ(failureOf([] { parse(nullptr); }).words, "Unrecognized Gamma style: ");
}

TEST(StyleTable, GivesAnEmptyNameToValuesWithoutOne)
{
    EXPECT_STREQ(kSamples.getName(Sample::First), "firstFwd");
    EXPECT_STREQ(kSamples.getName(static_cast<Sample>(2)), "");
    EXPECT_STREQ(kSamples.getName(static_cast<Sample>(0xffffffffU)), "");
}

namespace
{

void check(std::vector<double> const& params)
{
    static constexpr Color::ParameterBounds kBounds[] = {{1.0, 10.0}, {0.0, 0.9}};
    Color::validateParams(params, kBounds, Color::ErrorIds::kGammaParameterCount, Color::Module::kGamma);
}

} // namespace

TEST(ParameterBounds, AllowsTheBoundsThemselves)
{
    EXPECT_EQ(failureOf([] { check({1.0, 0.0}); }).id, 0U);
    EXPECT_EQ(failureOf([] { check({10.0, 0.9}); }).id, 0U);
}

TEST(ParameterBounds, NamesTheParameterAndTheBoundThatItPasses)
{
    EXPECT_EQ(failureOf([] { check({0.5, 0.0}); }).id, 0x210011U);
    EXPECT_EQ(failureOf([] { check({0.5, 0.0}); }).words, "Parameter 0.500000 < lower bound 1.000000");
    EXPECT_EQ(failureOf([] { check({1.0, 1.5}); }).id, 0x210012U);
    EXPECT_EQ(failureOf([] { check({1.0, 1.5}); }).words, "Parameter 1.500000 > upper bound 0.900000");
}

TEST(ParameterBounds, ReportsTheFirstParameterThatFails)
{
    EXPECT_EQ(failureOf([] { check({11.0, -1.0}); }).words, "Parameter 11.000000 > upper bound 10.000000");
}

TEST(ParameterBounds, RefusesAnotherNumberOfParametersWithTheRightOne)
{
    EXPECT_EQ(failureOf([] { check({1.0}); }).id, 0x290002U);
    EXPECT_EQ(failureOf([] { check({1.0, 0.0, 0.0}); }).words, "The specified Gamma style must have 2 parameters");
}
