// The caller's hold on the log, through calls that fail.
#include <tavrin/tavrin.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdio>
#include <string>
#include <utility>
#include <vector>

namespace
{

using namespace Tavrin;
using testing::ElementsAre;
using testing::EndsWith;
using testing::Pair;

std::vector<std::pair<LogLevel, std::string>> receivedLines;

void receive(LogLevel level, char const* text)
{
    receivedLines.emplace_back(level, text);
}

TavStatus failingCall()
{
    TransformPtr transform;
    return concatenateTransforms(TransformPtr(), TransformPtr(), transform);
}

TEST(SetLoggerFunction, HandsTheLineOfAFailureToTheCaller)
{
    receivedLines.clear();
    EXPECT_TRUE(setLoggerFunction(receive));
    TavStatus const status = failingCall();
    EXPECT_TRUE(setLoggerFunction(nullptr));
    ASSERT_FALSE(status);
    EXPECT_THAT(receivedLines, ElementsAre(Pair(LOG_DEBUG, EndsWith(": " + std::string(status.getErrorMessage())))));
}

TEST(SetLoggerFunction, LeavesAFailureUnprintedByDefault)
{
    EXPECT_TRUE(setLoggerFunction(nullptr));
    testing::internal::CaptureStdout();
    TavStatus const status = failingCall();
    std::fflush(stdout);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
    EXPECT_EQ(status.getErrorCode(), 0x24000fU);
    EXPECT_STREQ(status.getErrorMessage(), "Transform was NULL when attempting to concatenate");
}

} // namespace
