// Plain-text tables of three dimensions.
#include "xml/ostrand3DReader.h"

#include "transform/lut3DOp.h"
#include "xml/documents.h"
#include "xml/lut3dUtils.h"
#include "xml/tableFiles.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

using namespace Color::Lut3dUtils;
using namespace XmlTest;
using Color::Lut3DOp;
using Color::Ostrand3DReader;

namespace
{

std::string const kGrid = "0 64 128 192 256 320 384 448 512 576 640 704 768 832 896 960 1023\n";

// So many rows, each the same.
std::string rows(std::size_t count, std::string const& row = "1 2 3")
{
    std::string text;
    while (count-- > 0)
        text += row + "\n";
    return text;
}

Failure failureOfTable(std::string const& content)
{
    return readFile<Ostrand3DReader>(content, "a.3dl").failure;
}

Failure readingFailure(char const* words)
{
    return {0x4a0002, std::string("Error reading file: File: <file>") + words + " in <file>"};
}

Failure const kEndOfFile = readingFailure(" not valid. Unexpected end of file.");
Failure const kSyntax = readingFailure(" not valid. Syntax error.");
Failure const kDimension = readingFailure(" not valid. Unsupported LUT dimension.");
Failure const kWrongRows = {0x4a0004, "3d-LUT must have 17x17x17 rows of values: <file>"};

Lut3DOp readTable(std::string const& content)
{
    return onlyOp<Lut3DOp>(*readFile<Ostrand3DReader>(content, "a.3dl").transform);
}

void expectMixedCube(char const* name, Tavrin::BitDepth depth, double maximum)
{
    Ostrand3DReader const reader;
    reader.parseFile(textTable(name));
    auto const& op = onlyOp<Lut3DOp>(*reader.getTransform());
    EXPECT_EQ(op.getInputBitDepth(), depth);
    EXPECT_EQ(op.getOutputBitDepth(), depth);
    EXPECT_EQ(op.getInterpolation(), Lut3DOp::InterpolationAlgo::Trilinear);
    ASSERT_EQ(op.getArray().getDimension(), 17U);
    for (unsigned int row = 0; row < 4913; ++row)
    {
        double const r = row / 289;
        double const g = row / 17 % 17;
        double const b = row % 17;
        ASSERT_EQ(op.getArray().get(row * 3), codeOf(r / 16 * r / 16, maximum)) << row;
        ASSERT_EQ(op.getArray().get(row * 3 + 1), codeOf((g + b) / 32, maximum)) << row;
        ASSERT_EQ(op.getArray().get(row * 3 + 2), codeOf(1 - b / 16, maximum)) << row;
    }
}

} // namespace

TEST(Lut3DFile, HasAReader)
{
    Ostrand3DReader const reader;
    EXPECT_STREQ(reader.getName(), "Ostrand 3DL Reader");
    EXPECT_THAT(Ostrand3DReader::supportedFileFormats(), testing::ElementsAre(testing::Pair("3dl", "Ostrand 3d-LUT format")));
    EXPECT_TRUE(reader.isFileSupported("/b/a.3dl"));
    for (char const* path : {"a.3DL", "3dl", "a.lut", ""})
        EXPECT_FALSE(reader.isFileSupported(path)) << path;
}

TEST(Lut3DFile, IsNotReadFromMemory)
{
    EXPECT_EQ(readBuffer<Ostrand3DReader>(rows(4913)).failure,
              (Failure{0x4a0001, "Internal - Unsupported buffer parsing by Ostrand 3d-LUT reader"}));
}

TEST(Lut3DFile, HasItsRowsInTheOrderOfTheModel)
{
    expectMixedCube("mixed12.3dl", Tavrin::BIT_DEPTH_12i, 4095);
    expectMixedCube("mixed10.3dl", Tavrin::BIT_DEPTH_10i, 1023);
}

TEST(Lut3DFile, TellsItsDepthByItsHighestValue)
{
    for (auto const& [value, depth] : {std::pair{"1023", Tavrin::BIT_DEPTH_10i}, std::pair{"1024", Tavrin::BIT_DEPTH_12i},
                                       std::pair{"4095", Tavrin::BIT_DEPTH_12i}, std::pair{"0", Tavrin::BIT_DEPTH_10i}})
        EXPECT_EQ(readTable(rows(4912, "0 0 0") + "0 " + value + " 0\n").getOutputBitDepth(), depth) << value;
    EXPECT_EQ(failureOfTable(rows(4912) + "0 4096 0"), (Failure{0x4a0003, "Invalid bit depth range: Max value is 4096 in <file>"}));
    EXPECT_EQ(failureOfTable(rows(4912) + "99999999999 0 0"),
              (Failure{0x4a0003, "Invalid bit depth range: Max value is 2147483647 in <file>"}));
}

TEST(Lut3DFile, ReadsTheSameWithAndWithoutTheGrid)
{
    EXPECT_EQ(readTable(kGrid + rows(4913)), readTable(rows(4913)));
    EXPECT_EQ(readTable("  0\t64  128 192 256 320 384 448 512 576 640 704 768 832 896 960 1023 \r\n" + rows(4913)),
              readTable(rows(4913)));
}

TEST(Lut3DFile, MayHaveOtherTextBeforeItsNumbers)
{
    EXPECT_EQ(failureOfTable("3DMESH\nMesh 4 10\n# 1 2 3\n\n-1 2 3\n" + kGrid + rows(4913)), Failure());
}

TEST(Lut3DFile, MayHaveCommentsEmptyLinesAndEscapesAmongItsRows)
{
    EXPECT_EQ(failureOfTable(kGrid + "\n# one\n" + rows(4000, "1\t2 3 and more") + "\n \n" + rows(913, " 1 2 3\r") + "#end"),
              Failure());
    Lut3DOp const op = readTable(rows(1) + "4\\t5\\v6\n\\7 \\8\\n9\n" + rows(4910));
    EXPECT_THAT(std::vector<float>(op.getArray().getValues().begin(), op.getArray().getValues().begin() + 9),
                testing::ElementsAre(1, 2, 3, 4, 5, 6, 7, 8, 9));
}

TEST(Lut3DFile, MayHaveNegativeValues)
{
    EXPECT_EQ(readTable(rows(4912) + "-5 +6 7").getArray().get(4912 * 3), -5.0F);
}

TEST(Lut3DFile, WithoutNumbersHasAnUnexpectedEnd)
{
    EXPECT_EQ(failureOfTable(""), kEndOfFile);
    EXPECT_EQ(failureOfTable("# 1 2 3\nMesh\n1 2 3.5\n"), kEndOfFile);
}

TEST(Lut3DFile, WithRowsThatAreNotThreeNumbersIsRefused)
{
    for (char const* row : {"1 2", "1 2 x", "one 2 3", "1, 2, 3", "1 2\\", "\\a1 2 3", "1\\b2 3"})
        EXPECT_EQ(failureOfTable(rows(1) + row + "\n" + rows(4911)), kSyntax) << row;
    for (char const* first : {"1 2", "1", "1 2 3 4", "0 0 1 2"})
        EXPECT_EQ(failureOfTable(std::string(first) + "\n" + rows(4912)), kSyntax) << first;
}

TEST(Lut3DFile, WithAnotherNumberOfRowsIsRefused)
{
    EXPECT_EQ(failureOfTable(rows(4912)), kWrongRows);
    EXPECT_EQ(failureOfTable(kGrid + rows(4912)), kWrongRows);
    EXPECT_EQ(failureOfTable(kGrid), kWrongRows);
    EXPECT_EQ(failureOfTable(rows(4914)), kDimension);
    EXPECT_EQ(failureOfTable(rows(33 * 33 * 33)), kDimension);
}

TEST(Lut3DFile, OfAnotherGridIsRefused)
{
    for (int points : {2 * 2, 9, 33, 65})
    {
        std::string grid;
        for (int i = 0; i < points; ++i)
            grid += std::to_string(i * 1023 / (points - 1)) + " ";
        EXPECT_EQ(failureOfTable(grid + "\n" + rows(static_cast<std::size_t>(points) * points * points)), kWrongRows) << points;
    }
    // 17 points in 12 bits.
    EXPECT_EQ(failureOfTable("0 256 512 768 1024 1280 1536 1792 2048 2304 2560 2816 3072 3328 3584 3840 4095\n" + rows(4913)),
              kSyntax);
}

TEST(Lut3DFile, ThatIsMissingIsTold)
{
    EXPECT_EQ(failureOf([] { Ostrand3DReader().parseFile("/no/such/file.3dl"); }),
              (Failure{0x4a0002, "Error reading file: File: /no/such/file.3dl not found. in /no/such/file.3dl"}));
}

TEST(Lut3DErrors, HaveWords)
{
    EXPECT_EQ(errorToString("a", 0), "File: a No error.");
    EXPECT_EQ(errorToString("a", 1), "File: a not found.");
    EXPECT_EQ(errorToString("a", 2), "File: a not valid. Unexpected end of file.");
    EXPECT_EQ(errorToString("a", 3), "File: a not valid. Syntax error.");
    EXPECT_EQ(errorToString("a", 4), "File: a not valid. Decryption error.");
    EXPECT_EQ(errorToString("a", 5), "File: a not valid. Unknown error.");
    EXPECT_EQ(errorToString("a", 6), "File: a not valid. Unsupported LUT dimension.");
}

TEST(NumericText, IsOfDigitsAndWhiteSpace)
{
    EXPECT_TRUE(strIsNumeric("1 2\t3\v"));
    EXPECT_TRUE(strIsNumeric(""));
    for (char const* text : {"-1", "1.0", "a", "1,2", "\xff"})
        EXPECT_FALSE(strIsNumeric(text)) << text;
}
