// Numbers in the texts and attributes of documents.
#include "xml/xmlReaderNumbers.h"

#include "support/failure.h"
#include "support/temporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <bit>
#include <clocale>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <random>
#include <string>
#include <vector>

using namespace Color::Xml::Reader;
using testing::ElementsAre;
using testing::IsEmpty;

namespace
{

constexpr std::size_t kEnd = std::string::npos;
constexpr float kInfinity = std::numeric_limits<float>::infinity();

Failure illegalCharacters(std::string const& quoted)
{
    return {0x420008, "Characters '" + quoted + "' illegal"};
}

// Texts of up to 12 characters that look like numbers, and texts of numbers.
class Spellings
{
public:
    std::string next()
    {
        switch (m_random() % 4)
        {
        case 0:
            return _characters("0123456789", 9);
        case 1:
            return _characters("0123456789.eE+-", 12);
        case 2:
            return _characters("0123456789abcdefxXpPinftyINFTYnaNA.+-, \t()_", 12);
        default:
            return _number();
        }
    }

private:
    std::string _characters(std::string const& alphabet, std::size_t longest)
    {
        std::string text;
        for (std::size_t length = m_random() % (longest + 1); text.size() < length;)
            text += alphabet[m_random() % alphabet.size()];
        return text;
    }

    // Any finite double or float, with as many digits as it needs, more, or fewer.
    std::string _number()
    {
        static char const* const kFormats[] = {"%.9g", "%.17g", "%.3f", "%g", "%.25e", "%a", "%+.8g", "%.7f"};
        char text[400];
        double const wide = std::bit_cast<double>(m_random());
        double const narrow = std::bit_cast<float>(static_cast<std::uint32_t>(m_random()));
        std::snprintf(text, sizeof text, kFormats[m_random() % 8], m_random() % 2 == 0 ? wide : narrow);
        return text;
    }

    std::mt19937_64 m_random{20240607};
};

template <class T>
void expectSameAsSscanf(std::string const& text, char const* format)
{
    T expected{};
    T found{};
    bool const isNumber = std::sscanf(text.c_str(), format, &expected) == 1;
    ASSERT_EQ(scanNumber(text, found), isNumber) << "'" << text << "'";
    if (isNumber)
    {
        using Bits = std::conditional_t<sizeof(T) == 4, std::uint32_t, std::uint64_t>;
        ASSERT_EQ(std::bit_cast<Bits>(found), std::bit_cast<Bits>(expected)) << "'" << text << "'";
    }
}

// The process with a decimal comma for the length of a test.
class DecimalComma
{
public:
    DecimalComma()
    {
        std::string const locale = "de_DE.UTF-8";
        m_isSet = std::setlocale(LC_NUMERIC, locale.c_str()) != nullptr || _makeLocale(locale);
    }
    ~DecimalComma() { std::setlocale(LC_NUMERIC, "C"); }
    bool isSet() const { return m_isSet; }

private:
    bool _makeLocale(std::string const& locale)
    {
        std::string const command = "localedef -i de_DE -f UTF-8 '" + m_folder.file(locale) + "' >/dev/null 2>&1";
        setenv("LOCPATH", m_folder.path().string().c_str(), 1);
        return std::system(command.c_str()) == 0 && std::setlocale(LC_NUMERIC, locale.c_str()) != nullptr;
    }

    TemporaryFolder m_folder;
    bool m_isSet = false;
};

} // namespace

TEST(Tokens, AreSeparatedByWhiteSpaceAndCommasInAnyGrouping)
{
    EXPECT_THAT(getNumbers<float>(" ,1, 2\t,,\n3\r\v\f4 , "), ElementsAre(1.0F, 2.0F, 3.0F, 4.0F));
    EXPECT_THAT(getNumbers<float>(""), IsEmpty());
    EXPECT_THAT(getNumbers<float>(" , "), IsEmpty());
}

TEST(Tokens, StartAndEndAtSeparatorsOrTheEndOfTheText)
{
    EXPECT_EQ(findNextTokenStart("  ,a", 0), 3U);
    EXPECT_EQ(findNextTokenStart("a ", 1), kEnd);
    EXPECT_EQ(findNextTokenStart("", 0), kEnd);
    EXPECT_EQ(findDelim("ab,c", 0), 2U);
    EXPECT_EQ(findDelim("ab", 0), kEnd);
}

TEST(Tokens, NextNumberMovesToTheFollowingOneOrToTheEnd)
{
    std::string const text = "1 ,22";
    std::size_t position = 0;
    EXPECT_EQ(getNextNumber<float>(text, position), 1.0F);
    EXPECT_EQ(position, 3U);
    EXPECT_EQ(getNextNumber<float>(text, position), 22.0F);
    EXPECT_EQ(position, kEnd);
}

TEST(FloatNumbers, MayHaveATailThatIsPassedOver)
{
    EXPECT_EQ(parseNumber<float>("12abc"), 12.0F);
    EXPECT_THAT(getNumbers<float>("12abc 3"), ElementsAre(12.0F, 3.0F));
}

TEST(FloatNumbers, MustBeginWithTheNumber)
{
    EXPECT_EQ(failureOf([] { parseNumber<float>("abc12"); }), illegalCharacters("abc12"));
    EXPECT_EQ(failureOf([] { parseNumber<float>("- 5"); }), illegalCharacters("- 5"));
    EXPECT_EQ(failureOf([] { parseNumber<float>(""); }), illegalCharacters(""));
}

TEST(FloatNumbers, FailWithAtMostSeventeenCharactersOfTheRest)
{
    EXPECT_EQ(failureOf([] { getNumbers<float>("1 x2345678901234567"); }), illegalCharacters("x2345678901234567"));
    EXPECT_EQ(failureOf([] { getNumbers<float>("1 x2345678901234567 9"); }), illegalCharacters("x2345678901234567..."));
}

TEST(FloatNumbers, KnowInfinityInAnyCase)
{
    for (char const* text : {"INF", "inf", "Infinity", "INFINITY", "inf,", "infinity 1"})
        EXPECT_EQ(parseNumber<float>(text), kInfinity) << text;
    for (char const* text : {"-INF", "-inf", "-Infinity", "-INFINITY\n"})
        EXPECT_EQ(parseNumber<float>(text), -kInfinity) << text;
    EXPECT_EQ(failureOf([] { parseNumber<float>("infi"); }), illegalCharacters("infi"));
}

TEST(FloatNumbers, TakeWhatBeginsWithNanForOne)
{
    for (char const* text : {"nan", "NAN", "-nan", "-NaN", "nanny", "NaN(12)"})
        EXPECT_TRUE(std::isnan(parseNumber<float>(text))) << text;
}

TEST(FloatNumbers, BeyondTheRangeAreInfinityOrZero)
{
    EXPECT_EQ(parseNumber<float>("1e400"), kInfinity);
    EXPECT_EQ(parseNumber<float>("-1e39"), -kInfinity);
    EXPECT_EQ(parseNumber<float>("1e-400"), 0.0F);
    EXPECT_EQ(parseNumber<float>("1e-45"), std::numeric_limits<float>::denorm_min());
}

TEST(FloatNumbers, MayBeHexadecimal)
{
    EXPECT_EQ(parseNumber<float>("0x1.8p1"), 3.0F);
    EXPECT_EQ(parseNumber<float>("0x10"), 16.0F);
}

// Half way between two floats ties go to the even one; just above it the digit far behind decides.
TEST(FloatNumbers, AreRoundedOnceAndCorrectly)
{
    EXPECT_EQ(parseNumber<float>("16777217"), 16777216.0F);
    EXPECT_EQ(parseNumber<float>("16777219"), 16777220.0F);
    EXPECT_EQ(parseNumber<float>("16777217.0000000000000000000000000000000001"), 16777218.0F);
}

TEST(DoubleNumbers, RefuseNan)
{
    EXPECT_EQ(parseNumber<double>("2.2"), 2.2);
    EXPECT_EQ(parseNumber<double>(" \t2.2"), 2.2);
    EXPECT_EQ(parseNumber<double>("inf"), std::numeric_limits<double>::infinity());
    EXPECT_EQ(failureOf([] { parseNumber<double>("nan"); }), illegalCharacters("nan"));
    EXPECT_EQ(failureOf([] { parseNumber<double>("x"); }), illegalCharacters("x"));
    EXPECT_EQ(failureOf([] { parseNumber<double>(""); }), illegalCharacters(""));
}

TEST(WholeNumbers, MayBeSpelledAsDoubles)
{
    EXPECT_THAT(getNumbers<unsigned int>("0 3, 1e1 0x10 4.0 4294967295 -0"), ElementsAre(0U, 3U, 10U, 16U, 4U, 4294967295U, 0U));
}

TEST(WholeNumbers, RefuseWhatTheTypeCanNotHold)
{
    for (char const* text : {"3.5", "-1", "4294967296", "1e9999", "inf", "nan", "x"})
        EXPECT_EQ(failureOf([&] { parseNumber<unsigned int>(text); }), illegalCharacters(text)) << text;
}

TEST(Quotations, AreCutAfterSeventeenCharacters)
{
    EXPECT_EQ(truncateString("12345678901234567"), "12345678901234567");
    EXPECT_EQ(truncateString("123456789012345678"), "12345678901234567...");
}

TEST(Scanning, GivesWhatSscanfGivesForAMillionSpellings)
{
    Spellings spellings;
    for (int i = 0; i < 1000000 && !HasFatalFailure(); ++i)
    {
        std::string const text = spellings.next();
        expectSameAsSscanf<float>(text, "%f");
        expectSameAsSscanf<double>(text, "%lf");
    }
}

TEST(Scanning, DoesNotDependOnTheDecimalPointOfTheProcess)
{
    DecimalComma const comma;
    if (!comma.isSet())
        GTEST_SKIP() << "no locale with a decimal comma, and none can be made";
    float sensitive = 0.0F;
    ASSERT_EQ(std::sscanf("0,5", "%f", &sensitive), 1);
    ASSERT_EQ(sensitive, 0.5F);

    EXPECT_THAT(getNumbers<float>("0.25,7 0x0.8 1e400"), ElementsAre(0.25F, 7.0F, 0.5F, kInfinity));
    EXPECT_EQ(parseNumber<double>("0.1x"), 0.1);
}
