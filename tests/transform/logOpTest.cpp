// The logarithm's model: styles, parameters and their order, texts.
#include "transform/logOp.h"

#include "support/failure.h"
#include "transform/opList.h"

#include <gtest/gtest.h>

#include <limits>
#include <memory>

namespace
{

using Color::LogOp;
using Style = LogOp::LogStyle;
using Params = LogOp::Params;

Params const kFilm{0.6, 685.0, 95.0, 1.0, 0.0};

LogOp logOp(Style style, Params const& params)
{
    LogOp op;
    op.setLogStyle(style);
    op.setParams(params);
    return op;
}

Failure validation(LogOp const& op)
{
    return failureOf([&] { op.validate(); });
}

Failure validation(Params const& params)
{
    return validation(logOp(Style::LogToLin, params));
}

} // namespace

TEST(LogOp, IsALog10WithoutParametersByDefault)
{
    LogOp const op;
    EXPECT_EQ(static_cast<unsigned int>(op.getOpType()), 8U);
    EXPECT_EQ(op.getOpTypeName(), "Log");
    EXPECT_EQ(op.getLogStyle(), Style::Log10);
    EXPECT_TRUE(op.getRedParams().empty());
    EXPECT_EQ(op.getMinimumVersion(), 1.3F);
    EXPECT_EQ(validation(op), Failure());
}

TEST(LogOp, KnowsItsStylesByNameInAnyCase)
{
    char const* const names[] = {"log10", "log2", "antiLog10", "antiLog2", "logToLin", "linToLog"};
    for (unsigned int i = 0; i < 6; ++i)
    {
        EXPECT_EQ(LogOp::getLogStyle(names[i]), static_cast<Style>(i));
        EXPECT_STREQ(LogOp::getLogStyleName(static_cast<Style>(i)), names[i]);
    }
    EXPECT_EQ(LogOp::getLogStyle("LINTOLOG"), Style::LinToLog);
    EXPECT_STREQ(LogOp::getLogStyleName(static_cast<Style>(6)), "");
}

TEST(LogOp, TellsAnEmptyStyleNameFromAnUnknownOne)
{
    EXPECT_EQ(failureOf([] { LogOp::getLogStyle(nullptr); }), (Failure{0x2b0001, "Invalid Log style"}));
    EXPECT_EQ(failureOf([] { LogOp::getLogStyle(""); }), (Failure{0x2b0001, "Invalid Log style"}));
    EXPECT_EQ(failureOf([] { LogOp::getLogStyle("ln"); }), (Failure{0x2b0002, "Unrecognized Log style: ln"}));
}

TEST(LogOp, WantsFiveParametersForTheFilmModelOnly)
{
    EXPECT_EQ(validation(logOp(Style::Log2, {})), Failure());
    EXPECT_EQ(validation(logOp(Style::AntiLog10, {-1.0})), Failure()) << "they are not looked at";
    EXPECT_EQ(validation(logOp(Style::LinToLog, {0.6, 685.0, 95.0, 1.0})),
              (Failure{0x2b0003, "The specified Log style must have 5 parameters"}));
    EXPECT_EQ(validation(kFilm), Failure());
}

TEST(LogOp, WantsAGammaAboveAHundredthInSinglePrecision)
{
    Failure const failure{0x2b0004, "Invalid gamma (0.010000), gamma should be greater than 0.010000"};
    EXPECT_EQ(validation(Params{static_cast<double>(0.01F), 685, 95, 1, 0}), failure);
    EXPECT_EQ(validation(Params{0.01, 685, 95, 1, 0}), Failure()) << "in double precision it is above the limit";
    EXPECT_EQ(validation(Params{std::numeric_limits<double>::quiet_NaN(), 685, 95, 1, 0}).id, 0x2b0004U);
}

TEST(LogOp, WantsWhiteAboveBlackAndHighlightAboveShadow)
{
    EXPECT_EQ(
        validation(Params{0.6, 95, 95, 1, 0}),
        (Failure{0x2b0005, "Invalid refWhite (95.000000) and refBlack (95.000000), refWhite should be greater than refBlack"}));
    EXPECT_EQ(validation(Params{0.6, 685, 95, 0.5, 0.5}),
              (Failure{0x2b0005, "Invalid highlight (0.500000) and shadow (0.500000), highlight should be greater than shadow"}));
}

TEST(LogOp, ValidatesEveryChannel)
{
    for (auto const set : {&LogOp::setRedParams, &LogOp::setGrnParams, &LogOp::setBluParams})
    {
        LogOp op = logOp(Style::LinToLog, kFilm);
        (op.*set)({});
        EXPECT_EQ(validation(op).id, 0x2b0003U);
    }
}

TEST(LogOp, TheFullConstructorValidates)
{
    auto const make = [](Params const& blue)
    { return LogOp(Tavrin::BIT_DEPTH_8i, Tavrin::BIT_DEPTH_10i, Style::LogToLin, kFilm, kFilm, blue); };
    EXPECT_EQ(failureOf([&] { make({}); }).id, 0x2b0003U);
    LogOp const op = make({0.7, 685, 95, 1, 0});
    EXPECT_EQ(op.getBluParams()[0], 0.7);
    EXPECT_EQ(op.getOutputBitDepth(), Tavrin::BIT_DEPTH_10i);
    EXPECT_FALSE(op.allComponentsEqual());
}

TEST(LogOp, NeverFoldsAway)
{
    EXPECT_FALSE(LogOp().isIdentity());
    EXPECT_FALSE(LogOp().isNoop());
}

TEST(LogOp, HasNoInverse)
{
    Color::OpList list;
    EXPECT_EQ(failureOf([&] { LogOp().inverse(list); }), (Failure{0x210014, "Log inverse not supported"}));
}

TEST(LogOp, ComparesOnlyWhatAllOperatorsHave)
{
    LogOp const op = logOp(Style::LogToLin, kFilm);
    EXPECT_TRUE(op == logOp(Style::Log2, {}));
    LogOp named = op;
    named.setName("n");
    EXPECT_FALSE(op == named);
}

TEST(LogOp, ClonesItsParameters)
{
    LogOp const op = logOp(Style::LinToLog, kFilm);
    std::unique_ptr<Color::Op> const copy(op.clone());
    auto const& clone = dynamic_cast<LogOp const&>(*copy);
    EXPECT_EQ(clone.getLogStyle(), Style::LinToLog);
    EXPECT_EQ(clone.getGrnParams(), kFilm);
}

TEST(LogOp, PrintsOneNumberOrThree)
{
    LogOp op = logOp(Style::LinToLog, kFilm);
    EXPECT_TRUE(op.allComponentsEqual());
    EXPECT_EQ(op.getGammaString(), "0.6");
    EXPECT_EQ(op.getRefWhiteString(), "685");
    EXPECT_EQ(op.getRefBlackString(), "95");
    EXPECT_EQ(op.getHighlightString(), "1");
    EXPECT_EQ(op.getShadowString(), "0");
    op.setGrnParams({0.7, 600, 90, 2, 0.5});
    EXPECT_EQ(op.getGammaString(), "0.6, 0.7, 0.6");
    EXPECT_EQ(op.getShadowString(), "0, 0.5, 0");
    EXPECT_EQ(op.getParameterString(5), "");
    EXPECT_EQ(LogOp().getGammaString(), "");
}
