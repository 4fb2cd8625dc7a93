// The log: levels, the installed function and the default one.
#include "utils/logger.h"

#include "support/logCapture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdio>
#include <functional>

namespace
{

using Color::Logger;
using testing::ElementsAre;
using testing::Pair;

std::string printedBy(std::function<void()> const& action)
{
    testing::internal::CaptureStdout();
    action();
    std::fflush(stdout);
    return testing::internal::GetCapturedStdout();
}

TEST(Logger, StartsAtTheUserLevel)
{
    EXPECT_EQ(Logger::getLogLevel(), Color::LOG_USER);
}

TEST(Logger, AnswersWithTheOldLevel)
{
    EXPECT_EQ(Logger::setLogLevel(Color::LOG_DEBUG), Color::LOG_USER);
    EXPECT_EQ(Logger::getLogLevel(), Color::LOG_DEBUG);
    EXPECT_EQ(Logger::setLogLevel(Color::LOG_USER), Color::LOG_DEBUG);
}

TEST(Logger, NamesItsLevels)
{
    EXPECT_STREQ(Logger::levelToStr(Color::LOG_USER), "USER");
    EXPECT_STREQ(Logger::levelToStr(Color::LOG_DEBUG), "DEBUG");
    EXPECT_EQ(Logger::levelToStr(static_cast<Color::LogLevel>(2)), nullptr);
}

TEST(Logger, PrintsLinesUpToTheCurrentLevelByDefault)
{
    EXPECT_EQ(printedBy([] { Logger::log(Color::LOG_USER, "for people %d", 1); }), "for people 1\n");
    EXPECT_EQ(printedBy([] { Logger::log(Color::LOG_DEBUG, "for developers"); }), "");

    Logger::setLogLevel(Color::LOG_DEBUG);
    EXPECT_EQ(printedBy([] { Logger::log(Color::LOG_DEBUG, "for developers"); }), "for developers\n");
    Logger::setLogLevel(Color::LOG_USER);
}

TEST(Logger, PrintsNoEmptyLineByDefault)
{
    EXPECT_EQ(printedBy([] { Logger::log(Color::LOG_USER, "%s", ""); }), "");
}

TEST(Logger, HandsLinesOfAllLevelsToAnInstalledFunctionAndPrintsNothing)
{
    LogCapture const log;
    EXPECT_EQ(printedBy(
                  []
                  {
                      Logger::log(Color::LOG_USER, "%s of %d", "one", 2);
                      Logger::log(Color::LOG_DEBUG, "two");
                  }),
              "");
    EXPECT_THAT(log.lines(), ElementsAre(Pair(Color::LOG_USER, "one of 2"), Pair(Color::LOG_DEBUG, "two")));
}

TEST(Logger, DoesNothingForNoFormat)
{
    LogCapture const log;
    for (char const* const format : {static_cast<char const*>(nullptr), ""})
    {
        Logger::log(Color::LOG_USER, format, 0);
    }
    EXPECT_TRUE(log.lines().empty());
}

TEST(Logger, CutsALineAt4095Characters)
{
    LogCapture const log;
    Logger::log(Color::LOG_USER, "%s", std::string(4095, 'x').c_str());
    Logger::log(Color::LOG_USER, "%s", std::string(5000, 'x').c_str());
    EXPECT_THAT(log.lines(),
                ElementsAre(Pair(Color::LOG_USER, std::string(4095, 'x')), Pair(Color::LOG_USER, std::string(4095, 'x'))));
}

TEST(Logger, AnswersWithTheInstalledFunctionAndGoesBackToPrintingForNull)
{
    Logger::LogFunction const function = [](Color::LogLevel, char const*) {};
    Logger::LogFunction const original = Logger::setLogFunc(function);
    EXPECT_NE(original, nullptr);
    EXPECT_EQ(Logger::setLogFunc(nullptr), function);
    EXPECT_EQ(printedBy([] { Logger::log(Color::LOG_USER, "printed"); }), "printed\n");
    EXPECT_EQ(Logger::setLogFunc(original), original);
}

} // namespace
