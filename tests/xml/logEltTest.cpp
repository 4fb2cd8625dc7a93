// Logarithms in files.
#include "xml/opDocuments.h"

#include "transform/logOp.h"

#include <gtest/gtest.h>

using namespace XmlTest;
using Color::LogOp;
using Params = LogOp::Params;

namespace
{

std::string logDocument(std::string const& style, std::string const& content, std::string const& version = "1.3")
{
    return opDocument(version, "Log", "style='" + style + "'", content);
}

} // namespace

TEST(LogElement, ReadsStylesWithoutParameters)
{
    EXPECT_EQ(readOp<LogOp>(logDocument("antilog2", "")).getLogStyle(), LogOp::LogStyle::AntiLog2);
    EXPECT_TRUE(readOp<LogOp>(logDocument("log10", "")).getRedParams().empty());
}

TEST(LogElement, ReadsOneSetOfParametersForAllChannels)
{
    LogOp const op =
        readOp<LogOp>(logDocument("logToLin", "<LogParams shadow='0' highlight='1' refBlack='95' refWhite='685' gamma='0.6'/>"));
    EXPECT_EQ(op.getRedParams(), (Params{0.6, 685, 95, 1, 0}));
    EXPECT_TRUE(op.allComponentsEqual());
}

TEST(LogElement, ReadsEachChannelAlone)
{
    auto const params = [](std::string const& channel, std::string const& gamma) {
        return "<LogParams channel='" + channel + "' gamma='" + gamma + "' refWhite='685' refBlack='95' highlight='1' shadow='0'/>";
    };
    LogOp const op = readOp<LogOp>(logDocument("linToLog", params("b", "0.8") + params("R", "0.6") + params("G", "0.7")));
    EXPECT_EQ(op.getRedParams()[0], 0.6);
    EXPECT_EQ(op.getGrnParams()[0], 0.7);
    EXPECT_EQ(op.getBluParams()[0], 0.8);
    EXPECT_EQ(failureOfDocument(logDocument("linToLog", params("A", "1"))),
              (Failure{0x420013, "Illegal 'LogParams' channel attribute 'A' line 0: "}));
}

TEST(LogElement, TellsTheFirstNumberThatIsMissing)
{
    EXPECT_EQ(failureOfDocument(logDocument("linToLog", "<LogParams shadow='0'/>")),
              (Failure{0x420014, "Param 'gamma' required for style 'linToLog', 'LogParams' line 0: "}));
    EXPECT_EQ(failureOfDocument(logDocument("linToLog", "<LogParams gamma='1' refWhite='685' refBlack='95' highlight='1'/>")),
              (Failure{0x420014, "Param 'shadow' required for style 'linToLog', 'LogParams' line 0: "}));
}

TEST(LogElement, WantsAStyleThatItKnows)
{
    EXPECT_EQ(failureOfDocument(opDocument("1.3", "Log", "", "")),
              (Failure{0x420006, "Required attribute 'style' missing in 'Log' line 0: "}));
    EXPECT_EQ(failureOfDocument(logDocument("ln", "")), (Failure{0x2b0002, "Unrecognized Log style: ln"}));
    EXPECT_EQ(failureOfDocument(logDocument("", "")), (Failure{0x2b0001, "Invalid Log style"}));
}

TEST(LogElement, IsValidatedAtItsEnd)
{
    EXPECT_EQ(failureOfDocument(logDocument("linToLog", "")).id, 0x2b0003U);
}

TEST(LogElement, IsNotKnownBeforeVersion13)
{
    EXPECT_EQ(failureOfDocument(logDocument("log2", "", "1.2")).id, 0x42001dU);
}
