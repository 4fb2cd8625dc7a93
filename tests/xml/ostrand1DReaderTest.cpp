// Plain-text tables of one dimension.
#include "xml/ostrand1DReader.h"

#include "transform/lut1DOp.h"
#include "xml/documents.h"
#include "xml/logLines.h"
#include "xml/lut1dUtils.h"
#include "xml/tableFiles.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

using namespace Color::Lut1dUtils;
using namespace XmlTest;
using Color::Lut1DOp;
using Color::Ostrand1DReader;

namespace
{

int identity(int i)
{
    return i;
}

std::string valuesFrom0(int count)
{
    return lines(count, identity);
}

Failure failureOfTable(std::string const& content, std::string const& name = "a.lut")
{
    return readFile<Ostrand1DReader>(content, name).failure;
}

Failure const kEndOfFile = {0x490002, "Error reading file: Premature EOF reading LUT file in <file>"};
Failure const kSyntax = {0x490002, "Error reading file: Syntax error reading LUT file in <file>"};

Lut1DOp readTable(std::string const& content, std::string const& name = "a.lut")
{
    Reading const reading = readFile<Ostrand1DReader>(content, name);
    if (!reading.transform)
        throw std::runtime_error(reading.failure.words);
    return onlyOp<Lut1DOp>(*reading.transform);
}

Lut1DOp loadTable(char const* name)
{
    Ostrand1DReader const reader;
    reader.parseFile(textTable(name));
    return onlyOp<Lut1DOp>(*reader.getTransform());
}

struct Depths
{
    Tavrin::BitDepth in;
    Tavrin::BitDepth out;
    bool operator==(Depths const&) const = default;
};

Depths depthsOf(Lut1DOp const& op)
{
    return {op.getInputBitDepth(), op.getOutputBitDepth()};
}

} // namespace

TEST(Lut1DFile, HasAReader)
{
    Ostrand1DReader const reader;
    EXPECT_STREQ(reader.getName(), "Ostrand LUT Reader");
    EXPECT_THAT(Ostrand1DReader::supportedFileFormats(), testing::ElementsAre(testing::Pair("lut", "Ostrand 1d-LUT format")));
    EXPECT_TRUE(reader.isFileSupported("/b/a.lut"));
    for (char const* path : {"a.LUT", "lut", "a.3dl", ""})
        EXPECT_FALSE(reader.isFileSupported(path)) << path;
}

TEST(Lut1DFile, IsNotReadFromMemory)
{
    EXPECT_EQ(readBuffer<Ostrand1DReader>(valuesFrom0(256)).failure,
              (Failure{0x490001, "Internal - Unsupported buffer parsing by Ostrand 1d-LUT reader"}));
}

TEST(Lut1DFile, HasAColumnForEachChannel)
{
    Lut1DOp const op = loadTable("powers10to16.lut");
    EXPECT_EQ(depthsOf(op), (Depths{Tavrin::BIT_DEPTH_10i, Tavrin::BIT_DEPTH_16i}));
    EXPECT_EQ(op.getInterpolation(), Lut1DOp::InterpolationAlgo::Linear);
    EXPECT_EQ(op.getHalfFlags(), Tavrin::HALF_FLAGS_NONE);
    ASSERT_EQ(op.getArray().getDimension(), 1024U);
    double const powers[] = {1.0, 2.2, 0.5};
    for (unsigned int i = 0; i < 3 * 1024; ++i)
        ASSERT_EQ(op.getArray().get(i), codeOf(std::pow(i / 3 / 1023.0, powers[i % 3]), 65535)) << i;
}

TEST(Lut1DFile, OfOneChannelServesAllThree)
{
    Lut1DOp const op = loadTable("display.lut");
    EXPECT_EQ(depthsOf(op), (Depths{Tavrin::BIT_DEPTH_8i, Tavrin::BIT_DEPTH_8i}));
    ASSERT_EQ(op.getArray().getDimension(), 256U);
    for (unsigned int i = 0; i < 3 * 256; ++i)
        ASSERT_EQ(op.getArray().get(i), codeOf(std::pow(i / 3 / 255.0, 1 / 2.2), 255)) << i;
}

// Rounding to half has 11 significant bits.
TEST(Lut1DFile, MayHoldHalfs)
{
    Lut1DOp const op = loadTable("twice.lut");
    EXPECT_EQ(depthsOf(op), (Depths{Tavrin::BIT_DEPTH_10i, Tavrin::BIT_DEPTH_16f}));
    EXPECT_FALSE(op.isInputHalfDomain());
    for (unsigned int i = 0; i < 3 * 1024; ++i)
    {
        double const exact = 2.0 * (i / 3) / 1023.0;
        ASSERT_NEAR(op.getArray().get(i), exact, exact / 2048) << i;
    }
}

TEST(Lut1DFile, OfFourChannelsGivesItsFirstThree)
{
    Lut1DOp const op = readTable("LUT: 4 256 256\n" + lines(1024, [](int i) { return i / 256 * 10; }));
    for (unsigned int i = 0; i < 3 * 256; ++i)
        ASSERT_EQ(op.getArray().get(i), static_cast<float>(i % 3) * 10) << i;
}

TEST(Lut1DFile, TellsItsDepthsByNumbersOfCodes)
{
    struct
    {
        char const* header;
        int rows;
        Depths depths;
    } const cases[] = {
        {"LUT: 1 256 256", 256, {Tavrin::BIT_DEPTH_8i, Tavrin::BIT_DEPTH_8i}},
        {"lut: 1 1024 1024", 1024, {Tavrin::BIT_DEPTH_10i, Tavrin::BIT_DEPTH_10i}},
        {"Lut: \t1\t4096 \t4096 and more", 4096, {Tavrin::BIT_DEPTH_12i, Tavrin::BIT_DEPTH_12i}},
        {"LUT: 1 65536 65536", 65536, {Tavrin::BIT_DEPTH_16i, Tavrin::BIT_DEPTH_16i}},
        {"LUT: 1 256 65536f", 256, {Tavrin::BIT_DEPTH_8i, Tavrin::BIT_DEPTH_16f}},
        {"LUT: 1 256 65536F", 256, {Tavrin::BIT_DEPTH_8i, Tavrin::BIT_DEPTH_16f}},
        {"LUT: 1 256 65536x", 256, {Tavrin::BIT_DEPTH_8i, Tavrin::BIT_DEPTH_16i}},
        {"LUT: 1 65536f 1024", 65536, {Tavrin::BIT_DEPTH_16f, Tavrin::BIT_DEPTH_10i}},
    };
    for (auto const& [header, rows, depths] : cases)
    {
        Lut1DOp const op = readTable(std::string(header) + "\n" + valuesFrom0(rows));
        EXPECT_EQ(depthsOf(op), depths) << header;
        EXPECT_EQ(op.isInputHalfDomain(), depths.in == Tavrin::BIT_DEPTH_16f) << header;
    }
}

TEST(Lut1DFile, TellsItsOutputDepthByItsName)
{
    struct
    {
        char const* name;
        IM_LutBitsPerChannel bits;
    } const cases[] = {
        {"log10to16.lut", IM_LUT_BITS_16},
        {"/tmp/to8/LIN10TO12.LUT", IM_LUT_BITS_12},
        {"to8.lut", IM_LUT_BITS_8},
        {"8to10bits.lut", IM_LUT_BITS_10},
        {"a to16f.lut", IM_LUT_BITS_16F},
        {"ato32f.lut", IM_LUT_BITS_32F},
        {"ato32.lut", IM_LUT_BITS_UNKNOWN},
        {"to/16.lut", IM_LUT_BITS_UNKNOWN},
        {"tone to8.lut", IM_LUT_BITS_UNKNOWN},
        {"log.lut", IM_LUT_BITS_UNKNOWN},
        {"", IM_LUT_BITS_UNKNOWN},
        {"to", IM_LUT_BITS_UNKNOWN},
    };
    for (auto const& [name, bits] : cases)
        EXPECT_EQ(IMLutGetBitDepthFromFileName(name), bits) << name;
    EXPECT_EQ(depthsOf(readTable("LUT: 1 1024\n" + valuesFrom0(1024), "ato16f.lut")),
              (Depths{Tavrin::BIT_DEPTH_10i, Tavrin::BIT_DEPTH_16f}));
    EXPECT_EQ(depthsOf(readTable("LUT: 1 1024 256\n" + valuesFrom0(1024), "ato16f.lut")),
              (Depths{Tavrin::BIT_DEPTH_10i, Tavrin::BIT_DEPTH_8i}))
        << "the header decides";
    EXPECT_EQ(depthsOf(readTable(valuesFrom0(256), "8to10.lut")), (Depths{Tavrin::BIT_DEPTH_8i, Tavrin::BIT_DEPTH_10i}));
}

TEST(Lut1DFile, WithoutADepthIsRefused)
{
    EXPECT_EQ(failureOfTable("LUT: 1 1024\n" + valuesFrom0(1024)),
              (Failure{0x210001, "'OutBitDepth' attribute missing in LUT 1D"}));
    EXPECT_EQ(failureOfTable("LUT: 1 100 256\n" + valuesFrom0(100)),
              (Failure{0x210001, "'InBitDepth' attribute missing in LUT 1D"}));
}

TEST(Lut1DFile, MayHaveCommentsAndEmptyLinesAroundItsValues)
{
    EXPECT_EQ(failureOfTable("# one\n\n \t\n  # two\nLUT: 1 256 256\n\n" + lines(256, identity) + "\n# end\n\n#\n"), Failure());
    EXPECT_EQ(failureOfTable("# one\n" + valuesFrom0(256) + "# end"), Failure());
    EXPECT_EQ(failureOfTable("LUT: 1 256 256\n" + lines(256, identity).insert(20, "\n\t\n")), Failure());
    EXPECT_EQ(failureOfTable("LUT: 1 256 256\n# no\n" + valuesFrom0(256)), kSyntax);
    EXPECT_EQ(failureOfTable("LUT: 1 256 256\r\n0 one\r\n" + valuesFrom0(255)), Failure());
}

TEST(Lut1DFile, WithABadHeaderIsRefused)
{
    for (char const* header : {"LUT: 2 256 256", "LUT: 0 256 256", "LUT: 5 256 256", "LUT: 3 0 256", "LUT: 3 -1 256", "LUT: 3",
                               "LUT:3 256 256", "LUT: ", "LUT", "LUT: three 256", "LUT: 1 256 255", "LUT: 1 256 f",
                               "LUT: 1 256 none", "LUX: 1 256 256", "-1", ".5", "LUT: 3.0 256 256"})
        EXPECT_EQ(failureOfTable(std::string(header) + "\n" + valuesFrom0(256)), kSyntax) << header;
    EXPECT_EQ(failureOfTable(""), kSyntax);
    EXPECT_EQ(failureOfTable("\n# nothing\n"), kSyntax);
}

TEST(Lut1DFile, WithBadValuesIsRefused)
{
    for (char const* value : {"x", "-1", "+1", ".5", "#", "65536", "99999999999999999999", "\r"})
        EXPECT_EQ(failureOfTable("LUT: 1 256 256\n" + std::string(value) + "\n" + valuesFrom0(255)), kSyntax) << value;
    EXPECT_EQ(failureOfTable("LUT: 1 256 256\n65535\n12abc\n007\n" + valuesFrom0(253)), Failure());
}

TEST(Lut1DFile, WithAnotherNumberOfValuesIsRefused)
{
    EXPECT_EQ(failureOfTable("LUT: 1 256 256\n" + valuesFrom0(255)), kEndOfFile);
    EXPECT_EQ(failureOfTable("LUT: 3 256 256\n" + valuesFrom0(767)), kEndOfFile);
    EXPECT_EQ(failureOfTable("LUT: 1 256 256\n" + valuesFrom0(257)), kSyntax);
    EXPECT_EQ(failureOfTable(valuesFrom0(255)), kEndOfFile);
    EXPECT_EQ(failureOfTable(valuesFrom0(1024)), kSyntax);
}

TEST(Lut1DFile, MayNotAskForAllMemory)
{
    Failure const memory = {0x490002, "Error reading file: Cannot allocate memory for LUT in <file>"};
    EXPECT_EQ(failureOfTable("LUT: 4 2147483647 256\n0\n"), memory);
    EXPECT_EQ(failureOfTable("LUT: 4 99999999999 256\n0\n"), memory);
    EXPECT_EQ(failureOfTable("LUT: 4 1048577 256\n0\n"), memory);
    EXPECT_EQ(failureOfTable("LUT: 4 1048576 256\n0\n"), kEndOfFile);
}

TEST(Lut1DFile, ThatIsMissingIsTold)
{
    EXPECT_EQ(failureOf([] { Ostrand1DReader().parseFile("/no/such/file.lut"); }),
              (Failure{0x490002, "Error reading file: Cannot open LUT file in /no/such/file.lut"}));
}

TEST(Lut1DFile, TellsTheLineOfAFaultInTheLog)
{
    LogCapture const log;
    EXPECT_EQ(failureOfTable("LUT: 1 256 256\n1\n\nx\n"), kSyntax);
    EXPECT_THAT(textsOf(log), testing::Contains(testing::StartsWith("Reading ended at line 4 of ")));
}

TEST(Lut1DErrors, HaveWords)
{
    EXPECT_STREQ(IMLutErrorStr(0), "");
    EXPECT_STREQ(IMLutErrorStr(1), "Premature EOF reading LUT file");
    EXPECT_STREQ(IMLutErrorStr(2), "Cannot open LUT file");
    EXPECT_STREQ(IMLutErrorStr(3), "Cannot allocate memory for LUT");
    EXPECT_STREQ(IMLutErrorStr(4), "Syntax error reading LUT file");
    EXPECT_STREQ(IMLutErrorStr(5), "Unknown error for LUT");
    EXPECT_STREQ(IMLutErrorStr(-1), "Unknown error for LUT");
}

TEST(Lut1DDepths, AreThoseOfTheirBits)
{
    EXPECT_EQ(getTavrinLut1DBitDepth(IM_LUT_BITS_32F), Tavrin::BIT_DEPTH_32f);
    EXPECT_EQ(getTavrinLut1DBitDepth(IM_LUT_BITS_UNKNOWN), Tavrin::BIT_DEPTH_UNKNOWN);
    EXPECT_EQ(getTavrinLut1DBitDepth(static_cast<IM_LutBitsPerChannel>(14)), Tavrin::BIT_DEPTH_UNKNOWN);
}
