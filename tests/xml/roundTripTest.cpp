// What is read, written, and read again.
#include "support/operatorElements.h"
#include "xml/documents.h"
#include "xml/writing.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <string>

using XmlTest::inRoot;
using XmlTest::readBuffer;
using XmlTest::written;

namespace
{

std::shared_ptr<Color::Transform> read(std::string const& document)
{
    auto const reading = readBuffer(document);
    EXPECT_EQ(reading.failure, Failure());
    return reading.transform;
}

std::shared_ptr<Color::Transform> rewritten(std::string const& document)
{
    return read(written(read(document)));
}

// Documents that the writer would have written itself.
class GoldenDocument : public testing::TestWithParam<char const*>
{
};

TEST_P(GoldenDocument, IsWrittenAsItWasRead)
{
    std::ifstream file(TAVRIN_TEST_DATA "/written/" + std::string(GetParam()) + ".ctf", std::ios::binary);
    std::string const text{std::istreambuf_iterator<char>(file), {}};
    ASSERT_NE(text, "");
    auto const transform = read(text);
    ASSERT_TRUE(transform);
    EXPECT_EQ(written(transform), text);
}

INSTANTIATE_TEST_SUITE_P(All, GoldenDocument, testing::Values("operators", "tables", "matrices"),
                         [](auto const& info) { return std::string(info.param); });

TEST(RoundTrip, KeepsEveryOperatorInEveryStyleVersionAndDepth)
{
    for (OperatorElements::Sample const& sample : OperatorElements::allSamples())
    {
        SCOPED_TRACE(sample.description);
        auto const first = read(sample.document);
        ASSERT_TRUE(first);
        std::string const text = written(first);
        auto const second = read(text);
        ASSERT_TRUE(second);
        EXPECT_TRUE(*second == *first) << text;
        EXPECT_EQ(written(second), text);
    }
}

TEST(RoundTrip, KeepsReferences)
{
    for (std::string const target : {"alias='currentMonitor'", "path='/a b.ctf'", "path='b.ctf' basePath='Shared'",
                                     "path='b.ctf' basePath='Norvane'", "path='&lt;&amp;&quot;&apos;.ctf'"})
    {
        std::string const document = inRoot("<Reference inBitDepth='8i' outBitDepth='32f' " + target + "/>");
        EXPECT_TRUE(*rewritten(document) == *read(document)) << target;
    }
}

TEST(RoundTrip, KeepsWhatDescribesATransform)
{
    std::string const document = "<ProcessList id='a' version='1.5' name='b &amp; c' inverseOf='d'>"
                                 "<Description>one &amp; two</Description><Description>&lt;three&gt;</Description>"
                                 "<InputDescriptor>\"in\"</InputDescriptor><OutputDescriptor>'out'</OutputDescriptor>"
                                 "<Info><A>1</A><B><C>&amp;</C><D></D></B></Info>" +
                                 XmlTest::kIdentityRange + "</ProcessList>";
    auto const first = read(document);
    auto const second = rewritten(document);
    EXPECT_TRUE(*second == *first);
    EXPECT_EQ(second->getDescriptions().getList(), (std::vector<std::string>{"one & two", "<three>"}));
    EXPECT_EQ(second->getInfo()["A"].getValue(), "1");
    EXPECT_EQ(second->getInfo()["B"].getItemsNames(), (std::vector<std::string>{"C", "D"}));
    EXPECT_EQ(second->getInfo()["B"]["C"].getValue(), "&");
}

// Nothing is lost with it: the column says nothing, like the row and column of an alpha that is left alone.
TEST(RoundTrip, DropsTheOffsetsOfAMatrixThatAreAllZero)
{
    auto const matrix = [](std::string const& dimensions, std::string const& values)
    { return inRoot(OperatorElements::element("Matrix", "32f", "32f", "", OperatorElements::array(dimensions, values))); };
    std::string const full = matrix("4 5 4", "1 2 3 0 0\n4 5 6 0 0\n7 8 9 0 0\n0 0 0 1 0");
    std::string const text = written(read(full));
    EXPECT_NE(text.find("dim=\"3 3 3\""), std::string::npos);
    EXPECT_TRUE(*read(text) == *read(full));
    EXPECT_TRUE(*read(text) == *read(matrix("3 3 3", "1 2 3\n4 5 6\n7 8 9")));
}

// Every pattern that is a number, and infinities; processors may change the bits of a NaN.
TEST(RoundTrip, KeepsEveryRawHalfOfAHalfDomain)
{
    std::string values;
    for (unsigned int bits = 0; bits < 65536; ++bits)
    {
        bool const isNaN = (bits & 0x7FFFU) > 0x7C00U;
        values += std::to_string(isNaN ? 0U : bits) + "\n";
    }
    std::string const document = inRoot(OperatorElements::element("LUT1D", "16f", "16f", "halfDomain='true' rawHalfs='true'",
                                                                  OperatorElements::array("65536 1", values)));
    auto const first = read(document);
    ASSERT_TRUE(first);
    EXPECT_TRUE(*rewritten(document) == *first);
}

} // namespace
