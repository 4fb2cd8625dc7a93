// Matrices in files of all versions, and the array of values.
#include "xml/documents.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>
#include <vector>

using namespace XmlTest;
using Color::MatrixOp;
using testing::ElementsAre;
using testing::ElementsAreArray;

namespace
{

std::string matrix(std::string const& dimensions, std::string const& values, std::string const& depths = "'32f' outBitDepth='32f'")
{
    return "\n<Matrix inBitDepth=" + depths + ">\n<Array dim='" + dimensions + "'>" + values + "</Array></Matrix>";
}

MatrixOp matrixOf(std::string const& dimensions, std::string const& values, std::string const& version)
{
    return onlyOp<MatrixOp>(*transformOf(inRoot(matrix(dimensions, values), version)));
}

Failure failureOfMatrix(std::string const& dimensions, std::string const& values, std::string const& version)
{
    return failureOfFile(inRoot(matrix(dimensions, values), version));
}

std::vector<float> offsetsOf(MatrixOp const& op)
{
    return {op.getOffsets()[0], op.getOffsets()[1], op.getOffsets()[2], op.getOffsets()[3]};
}

// Alpha goes through.
std::vector<float> const kNineIn4x4 = {1, 2, 3, 0, 4, 5, 6, 0, 7, 8, 9, 0, 0, 0, 0, 1};
std::string const kNine = "1 2 3\n4 5 6\n7 8 9";

std::string values(int count)
{
    std::string text;
    for (int i = 1; i <= count; ++i)
        text += std::to_string(i) + " ";
    return text;
}

Failure illegalDimensions(std::string const& quoted)
{
    return {0x42000a, "Illegal 'Matrix' dimensions '" + quoted + "' line 3: <file>"};
}

// Told at the line of the operator.
Failure tooFew(std::string const& dimensions, int found, int line = 2)
{
    return {0x42000b, "Expected " + dimensions + " Array values, found " + std::to_string(found) + " in 'Matrix' line " +
                          std::to_string(line) + ": <file>"};
}

Failure tooMany(std::string const& dimensions, int line = 3)
{
    return {0x42000c,
            "Expected " + dimensions + " Array, found additional values in 'Matrix' line " + std::to_string(line) + ": <file>"};
}

} // namespace

TEST(MatrixElement, OfThreeByThreeValuesReadsAlikeInAllVersions)
{
    for (std::string const version : {"1.1", "1.2", "1.3", "1.4", "1.5"})
    {
        MatrixOp const op = matrixOf("3 3 3", kNine, version);
        EXPECT_THAT(op.getArray().getValues(), ElementsAreArray(kNineIn4x4)) << version;
        EXPECT_EQ(op.getArray().getDimension(), 4U);
        EXPECT_EQ(op.getArray().getNumColorComponents(), 4U);
        EXPECT_FALSE(op.getOffsets().isNotNull());
    }
}

TEST(MatrixElement, OfOldVersionsHasOffsetsInTheFourthColumnOfFourRows)
{
    MatrixOp const op = matrixOf("4 4 3", "1 2 3 .1  4 5 6 .2  7 8 9 .3  11 12 13 14", "1.2");
    EXPECT_THAT(op.getArray().getValues(), ElementsAreArray(kNineIn4x4));
    EXPECT_EQ(op.getArray().getNumColorComponents(), 4U);
    EXPECT_THAT(offsetsOf(op), ElementsAre(0.1F, 0.2F, 0.3F, 0.0F));
}

TEST(MatrixElement, HasOffsetsInTheFourthColumnOfThreeRows)
{
    MatrixOp const op = matrixOf("3 4 3", "1 2 3 .1  4 5 6 .2  7 8 9 .3", "1.3");
    EXPECT_THAT(op.getArray().getValues(), ElementsAreArray(kNineIn4x4));
    EXPECT_THAT(offsetsOf(op), ElementsAre(0.1F, 0.2F, 0.3F, 0.0F));
}

TEST(MatrixElement, MayMixAlpha)
{
    MatrixOp const op = matrixOf("4 4 4", values(16), "1.5");
    EXPECT_THAT(op.getArray().getValues(), ElementsAre(1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16));
    EXPECT_FALSE(op.getOffsets().isNotNull());
}

TEST(MatrixElement, MayMixAlphaWithOffsets)
{
    MatrixOp const op = matrixOf("4 5 4", values(20), "1.5");
    EXPECT_THAT(op.getArray().getValues(), ElementsAre(1, 2, 3, 4, 6, 7, 8, 9, 11, 12, 13, 14, 16, 17, 18, 19));
    EXPECT_THAT(offsetsOf(op), ElementsAre(5, 10, 15, 20));
    EXPECT_EQ(op.getArray().getDimension(), 4U);
}

// The values of the file hold at the depths of the file.
TEST(MatrixElement, CarriesAlphaAtTheScaleOfItsDepths)
{
    auto const transform = transformOf(inRoot(matrix("3 3 3", kNine, "'10i' outBitDepth='8i'")));
    MatrixOp const& op = onlyOp<MatrixOp>(*transform);
    EXPECT_EQ(op.getArray().get(0), 1.0F);
    EXPECT_EQ(op.getArray().get(15), 255.0F / 1023.0F);
}

TEST(MatrixElement, WithoutAnArrayIsTheIdentityOfItsDepths)
{
    auto const transform = transformOf(inRoot("<Matrix inBitDepth='8i' outBitDepth='16i'/>"));
    EXPECT_EQ(onlyOp<MatrixOp>(*transform).getArray().get(5), 257.0F);
}

TEST(MatrixElement, KnowsTheDimensionsOfItsVersion)
{
    for (std::string const dimensions : {"3 4 3", "4 4 4", "4 5 4", "3 3", "3 3 3 3", "3 3 4", "4 3 3"})
        EXPECT_EQ(failureOfMatrix(dimensions, "", "1.2"), illegalDimensions(dimensions)) << dimensions;
    for (std::string const dimensions : {"4 4 3", "4 3 3", "5 5 3", "3 3", "3 3 3 3", "3 3 4", "4 5 3", "0 0 3"})
        EXPECT_EQ(failureOfMatrix(dimensions, "", "1.3"), illegalDimensions(dimensions)) << dimensions;
}

TEST(MatrixElement, NeedsAllItsValues)
{
    EXPECT_EQ(failureOfMatrix("3 3 3", values(8), "1.2"), tooFew("3x3", 8));
    EXPECT_EQ(failureOfMatrix("4 4 3", values(15), "1.2"), tooFew("4x4", 15));
    EXPECT_EQ(failureOfMatrix("3 3 3", values(8), "1.3"), tooFew("3x3x3", 8));
    EXPECT_EQ(failureOfMatrix("3 4 3", values(11), "1.3"), tooFew("3x4x3", 11));
    EXPECT_EQ(failureOfMatrix("4 4 4", "", "1.3"), tooFew("4x4x4", 0));
    EXPECT_EQ(failureOfMatrix("4 5 4", values(19), "1.3"), tooFew("4x5x4", 19));
}

TEST(MatrixElement, TellsMissingValuesAtItsOwnLine)
{
    EXPECT_EQ(failureOfMatrix("3 3 3", "1\n2\n3\n", "1.3"), tooFew("3x3x3", 3, 2));
}

// While it is read an array is a square of so many columns; a value that still fits there is counted at the end.
TEST(MatrixElement, RefusesMoreValuesThanItHas)
{
    EXPECT_EQ(failureOfMatrix("3 3 3", values(10), "1.2"), tooMany("3x3"));
    EXPECT_EQ(failureOfMatrix("4 4 3", values(17), "1.2"), tooMany("4x4"));
    EXPECT_EQ(failureOfMatrix("3 3 3", values(10), "1.3"), tooMany("3x3"));
    EXPECT_EQ(failureOfMatrix("3 4 3", values(13), "1.3"), tooFew("3x4x3", 13));
    EXPECT_EQ(failureOfMatrix("3 4 3", values(17), "1.3"), tooMany("4x4"));
    EXPECT_EQ(failureOfMatrix("4 5 4", values(21), "1.3"), tooFew("4x5x4", 21));
    EXPECT_EQ(failureOfMatrix("4 5 4", values(26), "1.3"), tooMany("5x5"));
    EXPECT_EQ(failureOfMatrix("3 3 3", "1 2 3\n4 5 6\n7 8 9\n10", "1.3"), tooMany("3x3", 6));
}

TEST(MatrixElement, OfOldVersionsMayStateAnyDimensionButHasThreeOrFour)
{
    EXPECT_EQ(failureOfMatrix("2 2 3", values(4), "1.2"), (Failure{0x210005, "Array content illegal"}));
    EXPECT_EQ(failureOfMatrix("5 5 3", values(25), "1.2"), (Failure{0x210005, "Array content illegal"}));
    EXPECT_EQ(failureOfMatrix("5 5 3", values(24), "1.2"), tooFew("5x5", 24));
}

TEST(Arrays, TakeNumbersInAnyGrouping)
{
    EXPECT_THAT(matrixOf("3, 3,3", "1,2 3 4\n\n5 , 6\n,7 8\t9,\n", "1.5").getArray().getValues(), ElementsAreArray(kNineIn4x4));
}

TEST(Arrays, FromABufferAreTheSame)
{
    auto const transform = readBuffer(inRoot(matrix("3 3 3", "1,2 3 4\n\n5 , 6\r\n,7 8\t9,\n"))).transform;
    EXPECT_THAT(onlyOp<MatrixOp>(*transform).getArray().getValues(), ElementsAreArray(kNineIn4x4));
}

TEST(Arrays, HaveNumbersInAllSpellings)
{
    std::vector<float> const found =
        matrixOf("4 4 4", "12abc 1e400 -INF nan 0x10 .5 5. +1 -1e-1 1E2 1e inf 0 0 0 0", "1.5").getArray().getValues();
    float const infinity = std::numeric_limits<float>::infinity();
    EXPECT_TRUE(std::isnan(found[3]));
    EXPECT_THAT(std::vector<float>(found.begin(), found.begin() + 3), ElementsAre(12.0F, infinity, -infinity));
    EXPECT_THAT(std::vector<float>(found.begin() + 4, found.begin() + 12),
                ElementsAre(16.0F, 0.5F, 5.0F, 1.0F, -0.1F, 100.0F, 1.0F, infinity));
}

TEST(Arrays, DoNotSplitANumberOverLines)
{
    EXPECT_EQ(failureOfMatrix("3 3 3", "1 2 3 4 5 6 7 8 1\n2", "1.3"), tooMany("3x3", 4));
}

TEST(Arrays, TellValuesThatAreNoNumbers)
{
    EXPECT_EQ(failureOfMatrix("3 3 3", "1 2 3\n 4 five 6\n", "1.3"),
              (Failure{0x42000e, "Illegal values '4 five 6' in 'Matrix' line 4: <file>"}));
    EXPECT_EQ(failureOfMatrix("3 3 3", "1 2 3 4 5 6 7 8 nine and more", "1.3"),
              (Failure{0x42000e, "Illegal values '1 2 3 4 5 6 7 8 n...' in 'Matrix' line 3: <file>"}));
    // What is no number is told before what is too much.
    EXPECT_EQ(failureOfMatrix("3 3 3", values(9) + "x", "1.3").id, 0x42000eU);
}

TEST(Arrays, NeedDimensions)
{
    EXPECT_EQ(failureOfFile(inRoot("<Matrix inBitDepth='8i' outBitDepth='8i'>\n<Array>1</Array></Matrix>")),
              (Failure{0x420006, "Required attribute 'dim' missing in 'Matrix' line 2: <file>"}));
    for (std::string const dimensions : {"", " ", "3", "8", "3.5 3", "3 x 3", "-3 -3 3", "3 3 nan", "3 3 inf"})
        EXPECT_EQ(failureOfMatrix(dimensions, kNine, "1.3"), illegalDimensions(dimensions)) << dimensions;
    EXPECT_EQ(failureOfMatrix("three three three", kNine, "1.3"), illegalDimensions("three three three"));
    EXPECT_EQ(failureOfMatrix("three, three, three", kNine, "1.3"), illegalDimensions("three, three, thr..."));
}

TEST(Arrays, HaveDimensionsInTheSpellingsOfDoubles)
{
    EXPECT_THAT(matrixOf("3.0 3e0 0x3", kNine, "1.3").getArray().getValues(), ElementsAreArray(kNineIn4x4));
}

// They are refused before memory is taken: these would need up to 2^64 bytes and more, and overflow on the way.
TEST(Arrays, RefuseDimensionsThatNoTransformHas)
{
    for (std::string const dimensions : {"1e9 1e9 3", "4294967295 4294967295 3", "2365 2365 3", "65536 65536 3"})
        EXPECT_EQ(failureOfMatrix(dimensions, kNine, "1.2"),
                  illegalDimensions(dimensions.substr(0, 17) + (dimensions.size() > 17 ? "..." : "")))
            << dimensions;
    EXPECT_EQ(failureOfMatrix("2364 2364 3", kNine, "1.2"), tooFew("2364x2364", 9));
}
