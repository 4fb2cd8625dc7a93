// What <LUT3D> becomes.
#include "support/logCapture.h"
#include "transform/lut3DOp.h"
#include "xml/documents.h"

#include <gmock/gmock.h>

using namespace XmlTest;
using Color::Lut3DOp;
using testing::ElementsAreArray;
using testing::HasSubstr;

namespace
{

std::string lut(std::string const& attributes, std::string const& dim, std::string const& values)
{
    return "<LUT3D inBitDepth='8i' outBitDepth='10i' " + attributes + "><Array dim='" + dim + "'>" + values + "</Array></LUT3D>";
}

std::string numbers(unsigned int count)
{
    std::string text;
    for (unsigned int i = 0; i < count; ++i)
        text += std::to_string(i) + "\n";
    return text;
}

} // namespace

TEST(Lut3DElt, ReadsTheGridInTheOrderOfTheFile)
{
    auto const transform = transformOf(inRoot(lut("", "2 2 2 3", numbers(24))));
    auto const& op = onlyOp<Lut3DOp>(*transform);
    EXPECT_EQ(op.getInputBitDepth(), Tavrin::BIT_DEPTH_8i);
    EXPECT_EQ(op.getOutputBitDepth(), Tavrin::BIT_DEPTH_10i);
    EXPECT_EQ(op.getArray().getDimension(), 2U);
    EXPECT_EQ(op.getArray().getNumColorComponents(), 3U);
    for (unsigned int i = 0; i < 24; ++i)
        EXPECT_EQ(op.getArray().get(i), static_cast<float>(i));
}

TEST(Lut3DElt, ReadsInterpolationsAndLogsOthers)
{
    auto const interpolationOf = [](std::string const& value)
    {
        auto const transform = transformOf(inRoot(lut("interpolation='" + value + "'", "2 2 2 3", numbers(24))));
        return onlyOp<Lut3DOp>(*transform).getInterpolation();
    };
    LogCapture const log;
    EXPECT_EQ(interpolationOf("trilinear"), Lut3DOp::InterpolationAlgo::Trilinear);
    EXPECT_EQ(interpolationOf("tetrahedral"), Lut3DOp::InterpolationAlgo::Tetrahedral);
    EXPECT_EQ(interpolationOf("4pt tetrahedral"), Lut3DOp::InterpolationAlgo::FourPointTetrahedral);
    EXPECT_TRUE(log.lines().empty());
    EXPECT_EQ(interpolationOf("Tetrahedral"), Lut3DOp::InterpolationAlgo::Default);
    ASSERT_EQ(log.lines().size(), 1U);
    EXPECT_EQ(log.lines()[0].first, Tavrin::LOG_DEBUG);
    EXPECT_THAT(log.lines()[0].second, HasSubstr("Illegal 'Interpolation' attribute 'Tetrahedral' in 'LUT 3D' line 1: "));
}

TEST(Lut3DElt, CountsTheValues)
{
    EXPECT_EQ(failureOfFile(inRoot(lut("", "2 2 2 3", numbers(23)))),
              (Failure{0x42000b, "Expected 2x2x2x3 Array values, found 23 in 'LUT 3D' line 1: <file>"}));
    EXPECT_EQ(failureOfFile(inRoot(lut("", "2 2 2 3", numbers(25)))),
              (Failure{0x42000c, "Expected 2x2x2x3 Array, found additional values in 'LUT 3D' line 25: <file>"}));
}

TEST(Lut3DElt, RefusesOtherDimensions)
{
    for (std::string const dim :
         {"2", "2 2 2", "2 2 2 1", "2 2 3 3", "2 3 3 3", "2 2 2 3 3", "2.5 2.5 2.5 3", "65536 65536 65536 3"})
        EXPECT_EQ(failureOfFile(inRoot(lut("", dim, ""))).id, 0x42000aU) << dim;
    EXPECT_EQ(failureOfFile(inRoot(lut("", "2 2 2 1", ""))),
              (Failure{0x42000a, "Illegal 'LUT 3D' dimensions '2 2 2 1' line 1: <file>"}));
    EXPECT_EQ(failureOfFile(inRoot(lut("", "0 0 0 3", ""))), (Failure{0x210004, "Array content empty"}));
}

TEST(Lut3DElt, RefusesAGridOfMoreThan129PointsAtOnce)
{
    EXPECT_EQ(failureOfFile(inRoot(lut("", "130 130 130 3", ""))),
              (Failure{0x25000d, "130 exceeds maximum supported dimension 129"}));
    EXPECT_EQ(failureOfFile(inRoot(lut("", "129 129 129 3", ""))).id, 0x42000bU); // Counted, and so allowed.
}
