// What <LUT1D> and <InverseLUT1D> become.
#include "support/logCapture.h"
#include "transform/invLut1DOp.h"
#include "transform/lut1DOp.h"
#include "xml/documents.h"

#include <gmock/gmock.h>

#include <cmath>
#include <limits>
#include <sstream>

using namespace XmlTest;
using Color::InvLut1DOp;
using Color::Lut1DOp;
using testing::ElementsAre;
using testing::HasSubstr;

namespace
{

std::string lut(std::string const& attributes, std::string const& dim, std::string const& values, std::string const& tag = "LUT1D")
{
    return "<" + tag + " inBitDepth='32f' outBitDepth='32f' " + attributes + "><Array dim='" + dim + "'>" + values + "</Array></" +
           tag + ">";
}

Color::Array::Values valuesOf(std::string const& element, std::string const& version = "1.5")
{
    std::shared_ptr<Color::Transform> const transform = transformOf(inRoot(element, version));
    return dynamic_cast<Lut1DOp const&>(transform->getOps().get(0)).getArray().getValues();
}

Failure failureOfLut(std::string const& element)
{
    return failureOfFile(inRoot(element));
}

std::string numbers(unsigned int count)
{
    std::string text;
    for (unsigned int i = 0; i < count; ++i)
        text += std::to_string(i) + " ";
    return text;
}

} // namespace

TEST(Lut1DElt, ReadsRowsOfThreeColumns)
{
    auto const transform = transformOf(inRoot("<LUT1D id='i' name='n' inBitDepth='8i' outBitDepth='10i'>"
                                              "<Description>text</Description>"
                                              "<Array dim='2 3'>1 2 3\n4, 5 ,6</Array></LUT1D>"));
    auto const& op = onlyOp<Lut1DOp>(*transform);
    EXPECT_EQ(op.getId(), "i");
    EXPECT_EQ(op.getName(), "n");
    EXPECT_EQ(op.getInputBitDepth(), Tavrin::BIT_DEPTH_8i);
    EXPECT_EQ(op.getOutputBitDepth(), Tavrin::BIT_DEPTH_10i);
    EXPECT_THAT(op.getDescriptions().getList(), ElementsAre("text"));
    EXPECT_EQ(op.getArray().getDimension(), 2U);
    EXPECT_EQ(op.getArray().getNumColorComponents(), 3U);
    EXPECT_THAT(op.getArray().getValues(), ElementsAre(1, 2, 3, 4, 5, 6));
    EXPECT_EQ(op.getInterpolation(), Lut1DOp::InterpolationAlgo::Default);
    EXPECT_EQ(op.getHalfFlags(), 0U);
    EXPECT_EQ(op.getHueAdjust(), Lut1DOp::HueAdjust::None);
}

TEST(Lut1DElt, SpreadsOneColumnOverThree)
{
    EXPECT_THAT(valuesOf(lut("", "4 1", "0.5 1 2 4")), ElementsAre(0.5F, 0.5F, 0.5F, 1, 1, 1, 2, 2, 2, 4, 4, 4));
    // The numbers of a column may fill the whole table, and then they stand as they are.
    EXPECT_THAT(valuesOf(lut("", "4 1", numbers(12))), ElementsAre(0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11));
}

TEST(Lut1DElt, CountsTheValues)
{
    EXPECT_EQ(failureOfLut(lut("", "4 3", numbers(4))),
              (Failure{0x42000b, "Expected 4x3 Array values, found 4 in 'LUT 1D' line 1: <file>"}));
    EXPECT_EQ(failureOfLut(lut("", "4 1", numbers(3))),
              (Failure{0x42000b, "Expected 4x1 Array values, found 3 in 'LUT 1D' line 1: <file>"}));
    EXPECT_EQ(failureOfLut(lut("", "4 1", numbers(5))),
              (Failure{0x42000b, "Expected 4x1 Array values, found 5 in 'LUT 1D' line 1: <file>"}));
    EXPECT_EQ(failureOfLut(lut("", "2 3", "")),
              (Failure{0x42000b, "Expected 2x3 Array values, found 0 in 'LUT 1D' line 1: <file>"}));
    EXPECT_EQ(failureOfLut(lut("", "4 3", numbers(12) + "\n13")),
              (Failure{0x42000c, "Expected 4x3 Array, found additional values in 'LUT 1D' line 2: <file>"}));
    EXPECT_EQ(failureOfLut(lut("", "4 1", numbers(13))),
              (Failure{0x42000c, "Expected 4x1 Array, found additional values in 'LUT 1D' line 1: <file>"}));
}

TEST(Lut1DElt, RefusesOtherDimensions)
{
    for (std::string const dim : {"8", "", "2 2", "2 0", "2 4", "2 3 3", "3.5 3", "-2 3", "x 3", "1048577 1", "4294967295 3"})
    {
        EXPECT_EQ(failureOfLut(lut("", dim, "")), (Failure{0x42000a, "Illegal 'LUT 1D' dimensions '" + dim + "' line 1: <file>"}));
    }
    EXPECT_EQ(failureOfLut(lut("", "0 3", "")), (Failure{0x210004, "Array content empty"}));
    EXPECT_EQ(failureOfLut("<LUT1D inBitDepth='32f' outBitDepth='32f'><Array>1 2 3</Array></LUT1D>"),
              (Failure{0x420006, "Required attribute 'dim' missing in 'LUT 1D' line 1: <file>"}));
}

TEST(Lut1DElt, ReadsTheLargestTableThatItAllows)
{
    std::string column;
    for (unsigned int i = 0; i < Lut1DOp::kMaxDimension; ++i)
        column += "1\n";
    EXPECT_EQ(valuesOf(lut("", "1048576 1", column)).size(), 3U * 1048576U);
}

TEST(Lut1DElt, ReadsInterpolationsAndLogsOthers)
{
    auto const interpolationOf = [](std::string const& value)
    {
        auto const transform = transformOf(inRoot(lut("interpolation='" + value + "'", "1 1", "1")));
        return onlyOp<Lut1DOp>(*transform).getInterpolation();
    };
    LogCapture const log;
    EXPECT_EQ(interpolationOf("linear"), Lut1DOp::InterpolationAlgo::Linear);
    EXPECT_EQ(interpolationOf("cubic"), Lut1DOp::InterpolationAlgo::Cubic);
    EXPECT_TRUE(log.lines().empty());
    for (std::string const other : {"Linear", "default", "", "spline"})
    {
        std::size_t const before = log.lines().size();
        EXPECT_EQ(interpolationOf(other), Lut1DOp::InterpolationAlgo::Default);
        ASSERT_EQ(log.lines().size(), before + 1);
        EXPECT_EQ(log.lines().back().first, Tavrin::LOG_DEBUG);
        EXPECT_THAT(log.lines().back().second, HasSubstr("Illegal 'Interpolation' attribute '" + other + "' in 'LUT 1D' line 1: "));
    }
}

TEST(Lut1DElt, ReadsFlagsAsTheWordTrueInAnyCaseAndNothingElse)
{
    auto const transform = transformOf(inRoot(lut("rawHalfs='TRUE'", "1 1", "1")));
    EXPECT_EQ(onlyOp<Lut1DOp>(*transform).getHalfFlags(), Tavrin::HALF_FLAGS_OUTPUT_RAW_HALFS);
    for (std::string const other : {"false", "", "1", " true"})
    {
        EXPECT_EQ(failureOfLut(lut("halfDomain='" + other + "'", "1 1", "1")),
                  (Failure{0x42000f, "Illegal 'LUT 1D' halfDomain attribute '" + other + "' line 1: <file>"}));
        EXPECT_EQ(failureOfLut(lut("rawHalfs='" + other + "'", "1 1", "1")),
                  (Failure{0x420010, "Illegal 'LUT 1D' rawHalfs attribute '" + other + "' line 1: <file>"}));
    }
}

TEST(Lut1DElt, LeavesTheSizeOfAHalfDomainToTheOperator)
{
    EXPECT_EQ(failureOfLut(lut("name='n' halfDomain='true'", "4 1", numbers(4))),
              (Failure{0x24000e, "4 entries found, 65536 req'd for halfDomain lut LUT 1D: n "}));
}

TEST(Lut1DElt, TurnsRawHalfsIntoTheirValues)
{
    // 1, -2, infinity; fractions and higher bits do not count.
    Color::Array::Values const values = valuesOf(lut("rawHalfs='true'", "1 3", "15360 49152.9 97280"));
    EXPECT_THAT(values, ElementsAre(1.0F, -2.0F, std::numeric_limits<float>::infinity()));
    EXPECT_THAT(valuesOf(lut("rawHalfs='true'", "2 1", "15360 16384")), ElementsAre(1, 1, 1, 2, 2, 2));
}

TEST(Lut1DElt, ReadsAllHalfPatternsOfAHalfDomain)
{
    Color::Array::Values const values = valuesOf(lut("halfDomain='true' rawHalfs='true'", "65536 1", numbers(65536)));
    ASSERT_EQ(values.size(), 3U * 65536U);
    // Every row is its own pattern: the table is the identity, NaNs and infinities included.
    auto const transform = transformOf(inRoot(lut("halfDomain='true' rawHalfs='true'", "65536 1", numbers(65536))));
    EXPECT_TRUE(onlyOp<Lut1DOp>(*transform).isIdentity());
}

TEST(Lut1DElt, ReadsNumbersThatAreNotFinite)
{
    Color::Array::Values const values = valuesOf(lut("", "2 3", "inf -INF Infinity -infinity nan -NaN"));
    float const infinity = std::numeric_limits<float>::infinity();
    EXPECT_THAT(Color::Array::Values(values.begin(), values.begin() + 4), ElementsAre(infinity, -infinity, infinity, -infinity));
    EXPECT_TRUE(std::isnan(values[4]));
    EXPECT_TRUE(std::isnan(values[5]));
    EXPECT_THAT(valuesOf(lut("", "1 3", "1e400 -1e400 1e-400")), ElementsAre(infinity, -infinity, 0));
}

TEST(Lut1DElt, RefusesWhatIsNoNumber)
{
    EXPECT_EQ(failureOfLut(lut("", "2 3", "1 2\n3 abc 5 6")),
              (Failure{0x42000e, "Illegal values '3 abc 5 6' in 'LUT 1D' line 2: <file>"}));
    EXPECT_EQ(failureOfLut(lut("", "2 3", "1 2 3 4 5 6 7 8 abc")).words,
              "Expected 2x3 Array, found additional values in 'LUT 1D' line 1: <file>");
    EXPECT_EQ(failureOfLut(lut("", "9 3", "1 2 3 4 5 6 7 8 abc")).words,
              "Illegal values '1 2 3 4 5 6 7 8 a...' in 'LUT 1D' line 1: <file>");
}

TEST(Lut1DElt, KnowsHueAdjustmentsFrom14On)
{
    auto const hueAdjustOf = [](std::string const& attribute, std::string const& version)
    {
        auto const transform = transformOf(inRoot(lut(attribute, "1 1", "1"), version));
        return onlyOp<Lut1DOp>(*transform).getHueAdjust();
    };
    EXPECT_EQ(hueAdjustOf("hueAdjust='dw3'", "1.4"), Lut1DOp::HueAdjust::Dw3);
    EXPECT_EQ(hueAdjustOf("hueAdjust='DW3'", "1.5"), Lut1DOp::HueAdjust::Dw3);
    EXPECT_EQ(hueAdjustOf("hueAdjust='dw3'", "1.3"), Lut1DOp::HueAdjust::None);
    EXPECT_EQ(hueAdjustOf("hueAdjust='anything'", "1.2"), Lut1DOp::HueAdjust::None);
    EXPECT_EQ(failureOfLut(lut("hueAdjust='none'", "1 1", "1")),
              (Failure{0x420025, "Illegal 'LUT 1D' hueAdjust attribute 'none' line 1: <file>"}));
}

TEST(Lut1DElt, WithoutAnArrayIsAnIdentity)
{
    auto const transform = transformOf(inRoot("<LUT1D inBitDepth='8i' outBitDepth='10i'/>"));
    EXPECT_THAT(onlyOp<Lut1DOp>(*transform).getArray().getValues(), ElementsAre(0, 0, 0, 1023, 1023, 1023));
}

TEST(InvLut1DElt, ReadsTheTableThatItInverts)
{
    auto const transform = transformOf(inRoot("<InverseLUT1D inBitDepth='10i' outBitDepth='8i' interpolation='linear'>"
                                              "<Array dim='5 1'>0 0 700 600 1023</Array></InverseLUT1D>",
                                              "1.3"));
    auto const& op = onlyOp<InvLut1DOp>(*transform);
    EXPECT_EQ(op.getInputBitDepth(), Tavrin::BIT_DEPTH_10i);
    EXPECT_EQ(op.getOutputBitDepth(), Tavrin::BIT_DEPTH_8i);
    EXPECT_EQ(op.getInterpolation(), Lut1DOp::InterpolationAlgo::Linear);
    EXPECT_EQ(op.getArray().get(9), 700.0F); // Row 3 was a reversal.
    EXPECT_TRUE(op.getComponentProperties()[2].isIncreasing);
    EXPECT_EQ(op.getComponentProperties()[2].startDomain, 1U);
    EXPECT_EQ(op.getComponentProperties()[2].endDomain, 4U);
}

TEST(InvLut1DElt, DoesNotConvertRawHalfs)
{
    EXPECT_THAT(valuesOf(lut("rawHalfs='true'", "2 3", "0 0 0 15360 15360 15360", "InverseLUT1D")),
                ElementsAre(0, 0, 0, 15360, 15360, 15360));
}

TEST(InvLut1DElt, RefusesAHalfDomain)
{
    EXPECT_EQ(failureOfLut(lut("halfDomain='true'", "2 1", "0 1", "InverseLUT1D")),
              (Failure{0x240012, "Unsupported raw half output lut for inverse operation"}));
}

TEST(InvLut1DElt, PassesOverHueAdjustments)
{
    auto const transform = transformOf(inRoot(lut("hueAdjust='anything'", "2 1", "0 1", "InverseLUT1D")));
    EXPECT_EQ(onlyOp<InvLut1DOp>(*transform).getHueAdjust(), Lut1DOp::HueAdjust::None);
}

TEST(InvLut1DElt, CountsTheValuesInItsOwnWords)
{
    EXPECT_EQ(failureOfLut(lut("", "4 3", numbers(4), "InverseLUT1D")),
              (Failure{0x42000b, "Expected 4x3 Array values, found 4 in 'Inverse LUT 1D' line 1: <file>"}));
    EXPECT_EQ(failureOfLut(lut("", "4 3", numbers(13), "InverseLUT1D")),
              (Failure{0x42000c, "Expected 4x4 Array, found additional values in 'Inverse LUT 1D' line 1: <file>"}));
}

TEST(InvLut1DElt, IsUnknownBefore13)
{
    EXPECT_NE(failureOfFile(inRoot(lut("", "2 1", "0 1", "InverseLUT1D"), "1.2")).id, 0U);
    EXPECT_EQ(failureOfFile(inRoot(lut("", "2 1", "0 1", "InverseLUT1D"), "1.3")).id, 0U);
}
