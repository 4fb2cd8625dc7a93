// Message texts: what printf makes of a format that fits, and something harmless for one that does not.
#include "utils/messageFormat.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <climits>
#include <cstdio>
#include <vector>

namespace
{

using Color::MessageArgument;

std::string format(char const* format, std::vector<MessageArgument> const& arguments = {})
{
    return Color::formatMessage(format, arguments);
}

// The C library's text, the witness for formats that fit their arguments.
template <class... Arguments>
std::string printed(char const* format, Arguments... arguments)
{
    char buffer[2000];
    std::snprintf(buffer, sizeof(buffer), format, arguments...);
    return buffer;
}

TEST(MessageFormat, FollowsPrintfForTexts)
{
    for (char const* const text : {"[%1$s]", "[%s]", "[%8s]", "[%-8s]", "[%.2s]", "[%1$-8.2s]"})
    {
        EXPECT_EQ(format(text, {"name"}), printed(text, "name")) << text;
    }
}

TEST(MessageFormat, FollowsPrintfForWholeNumbers)
{
    for (char const* const text : {"[%1$d]", "[%d]", "[%i]", "[%5d]", "[%-5d]", "[%05d]", "[%+d]", "[% d]", "[%.4d]", "[%1$+6.3d]"})
    {
        for (int const number : {0, 1, -42, INT_MAX, INT_MIN})
        {
            EXPECT_EQ(format(text, {number}), printed(text, number)) << text;
        }
    }
    for (char const* const text : {"[%u]", "[%x]", "[%#x]", "[%X]", "[%o]", "[%08x]"})
    {
        EXPECT_EQ(format(text, {3054U}), printed(text, 3054U)) << text;
    }
}

TEST(MessageFormat, FollowsPrintfForNumbers)
{
    for (char const* const text : {"[%1$f]", "[%f]", "[%.2f]", "[%10.3f]", "[%-10.3f]", "[%e]", "[%E]", "[%g]", "[%G]", "[%a]"})
    {
        for (double const number : {0.0, 1.0, -0.125, 1e300, 1e-300})
        {
            EXPECT_EQ(format(text, {number}), printed(text, number)) << text;
        }
    }
}

TEST(MessageFormat, TakesLengthModifiersAsPartOfTheConversion)
{
    EXPECT_EQ(format("%ld %lld %zu %hhd %Lf", {1, 2, 3, 4, 5.0}), "1 2 3 4 5.000000");
}

TEST(MessageFormat, TakesEveryKindOfNumber)
{
    enum Plain : unsigned int
    {
        PLAIN = 7
    };
    enum class Scoped
    {
        Value = 8
    };
    EXPECT_EQ(format("%d %d %d %d", {PLAIN, Scoped::Value, true, static_cast<unsigned short>(9)}), "7 8 1 9");
    EXPECT_EQ(format("%d", {UINT_MAX}), "4294967295");
    EXPECT_EQ(format("%f", {0.5F}), "0.500000");
}

TEST(MessageFormat, MayUseAnArgumentTwiceAndLeaveOneOut)
{
    EXPECT_EQ(format("Invalid %1$s (%2$f), %1$s should be greater than %3$f", {"power", -1.0, 0.0}),
              "Invalid power (-1.000000), power should be greater than 0.000000");
    EXPECT_EQ(format("red %2$d, green %3$d", {"unused", 3, 4}), "red 3, green 4");
}

TEST(MessageFormat, TakesArgumentsInTurn)
{
    EXPECT_EQ(format("%s: %d of %d", {"line", 3, 4}), "line: 3 of 4");
}

TEST(MessageFormat, WritesOnePercentSignForTwo)
{
    EXPECT_EQ(format("100%% of %1$d%%", {50}), "100% of 50%");
}

TEST(MessageFormat, DoesNotReadTextsOfArgumentsAsFormats)
{
    EXPECT_EQ(format("'%1$s'", {"100%s%n%5$d"}), "'100%s%n%5$d'");
}

TEST(MessageFormat, IsEmptyForNoFormat)
{
    EXPECT_EQ(format(nullptr), "");
    EXPECT_EQ(format("", {"unused"}), "");
}

TEST(MessageFormat, LeavesNothingOfAMissingArgument)
{
    EXPECT_EQ(format("style: %1$s"), "style: ");
    EXPECT_EQ(format("%s, %s", {"one"}), "one, ");
    EXPECT_EQ(format("%3$d|%1$d", {1, 2}), "|1");
    EXPECT_EQ(format("%99999999999999999999999$d|", {1}), "%99999999999999999999999$d|");
}

TEST(MessageFormat, WritesAnArgumentOfAnotherKindInItsOwnWay)
{
    EXPECT_EQ(format("'%1$s' and '%2$d'", {"active width", "image width"}), "'active width' and 'image width'");
    EXPECT_EQ(format("%f", {"text"}), "text");
    EXPECT_EQ(format("%s", {-12}), "-12");
    EXPECT_EQ(format("%s", {0.25}), "0.25");
    EXPECT_EQ(format("%d", {0.25}), "0.25");
    EXPECT_EQ(format("%.1f", {3}), "3.0");
}

TEST(MessageFormat, KeepsWhatIsNoConversion)
{
    EXPECT_EQ(format("space %1$: %2$s", {"Lab", "file.icc"}), "space %1$: file.icc");
    EXPECT_EQ(format("%"), "%");
    EXPECT_EQ(format("50%"), "50%");
    EXPECT_EQ(format("%1$", {1}), "%1$");
    EXPECT_EQ(format("%5.", {1}), "%5.");
    EXPECT_EQ(format("%l", {1}), "%l");
    EXPECT_EQ(format("%*d", {1, 2}), "%*d");
    EXPECT_EQ(format("%k %s", {"one"}), "%k one");
}

TEST(MessageFormat, NeverWritesThroughAnArgument)
{
    EXPECT_EQ(format("%1$n %n %p", {1}), "%1$n %n %p");
}

TEST(MessageFormat, ReadsANullTextAsEmpty)
{
    EXPECT_EQ(format("[%1$s]", {static_cast<char const*>(nullptr)}), "[]");
}

TEST(MessageFormat, SurvivesWidthsBeyondReason)
{
    EXPECT_THAT(format("%99999d", {1}), testing::StartsWith("  "));
    EXPECT_NO_THROW(format("%99999999999999999999d", {1}));
    EXPECT_NO_THROW(format("%.99999999999999999999f", {1.0}));
}

} // namespace
