// Files of strangers: whatever they hold, reading ends soon with a transform or a clear failure.
#include "xml/documents.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

using namespace XmlTest;
using testing::ElementsAre;
using testing::SizeIs;

namespace
{

// With something of everything that is read.
std::string const kDocument = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                              "<!-- a comment -->\n"
                              "<ProcessList version='1.3' id='a' name='b' inverseOf='c'>\n"
                              "  <Description>one &amp;\n two \xc3\xa4 <![CDATA[<x>]]></Description>\n"
                              "  <InputDescriptor>in</InputDescriptor><OutputDescriptor>out</OutputDescriptor>\n"
                              "  <Info><Author>me</Author><Release><Year>2015</Year></Release></Info>\n"
                              "  <New><Other/></New>\n"
                              "  <Matrix inBitDepth='8i' outBitDepth='32f' bypass='true'>\n"
                              "    <Array dim='3 4 3'>\n1 0 0 .1\n0 1e0 0, inf\n0 0 0x1 nan</Array>\n"
                              "    <DynamicParameter param='LOOK_SWITCH'/>\n"
                              "  </Matrix>\n"
                              "  <Range inBitDepth='32f' outBitDepth='10i'>\n"
                              "    <minInValue>0</minInValue><maxInValue>1</maxInValue>\n"
                              "    <minOutValue>64</minOutValue><maxOutValue>940</maxOutValue>\n"
                              "  </Range>\n"
                              "</ProcessList>";

std::string repeated(std::string const& text, std::size_t count)
{
    std::string all;
    while (count-- > 0)
        all += text;
    return all;
}

// Both ways of reading come to a transform or to a failure with words.
void expectAnOutcome(std::string const& document)
{
    for (Reading const& reading : {readFile(document), readBuffer(document)})
    {
        if (!reading.transform)
        {
            EXPECT_NE(reading.failure.id, 0U);
            EXPECT_FALSE(reading.failure.words.empty());
        }
    }
}

} // namespace

TEST(BadDocuments, AreNotThis)
{
    EXPECT_EQ(transformOf(kDocument)->getOps().size(), 2U);
    EXPECT_EQ(readBuffer(kDocument).failure, Failure());
}

TEST(BadDocuments, MayEndAnywhere)
{
    for (std::size_t length = 0; length < kDocument.size(); ++length)
    {
        std::string const start = kDocument.substr(0, length);
        EXPECT_NE(readFile(start).failure.id, 0U) << length;
        EXPECT_NE(readBuffer(start).failure.id, 0U) << length;
    }
}

TEST(BadDocuments, MayHaveAnyByteAnywhere)
{
    std::mt19937 random(20240607);
    for (int i = 0; i < 800; ++i)
    {
        std::string document = kDocument;
        for (unsigned int changes = 1 + random() % 3; changes > 0; --changes)
            document[random() % document.size()] = static_cast<char>(random());
        expectAnOutcome(document);
    }
}

TEST(BadDocuments, MayHavePartsTwiceOrNotAtAll)
{
    std::mt19937 random(20240608);
    for (int i = 0; i < 800; ++i)
    {
        std::string document = kDocument;
        std::string const part = document.substr(random() % document.size(), random() % 80);
        if (i % 2 == 0)
            document.insert(random() % document.size(), part);
        else
            document.erase(random() % document.size(), part.size());
        expectAnOutcome(document);
    }
}

TEST(BadDocuments, MayBeNoDocumentsAtAll)
{
    std::mt19937 random(20240609);
    for (int i = 0; i < 400; ++i)
    {
        std::string bytes(random() % 5000, '\0');
        for (char& byte : bytes)
            byte = static_cast<char>(random());
        EXPECT_NE(readFile(bytes).failure.id, 0U);
        EXPECT_NE(readBuffer(bytes).failure.id, 0U);
    }
    EXPECT_EQ(readFile(std::string(100000, '\0')).failure.id, 0x420001U);
    EXPECT_EQ(readFile("\x7f"
                       "ELF\x02\x01\x01")
                  .failure.id,
              0x420001U);
}

TEST(BadDocuments, MayBeInAnotherEncoding)
{
    std::string const latin1 =
        "<?xml version='1.0' encoding='ISO-8859-1'?><ProcessList id='\xe4'>" + kIdentityRange + "</ProcessList>";
    EXPECT_EQ(transformOf(latin1)->getId(), "\xc3\xa4");
    expectAnOutcome("\xff\xfe<\0P\0r\0>\0");
    expectAnOutcome("<?xml version='1.0' encoding='no-such'?>" + inRoot(kIdentityRange));
    EXPECT_EQ(readFile("<?xml version='1.0' encoding='no-such'?>" + inRoot(kIdentityRange)).failure,
              (Failure{0x420001, "XML Parsing error (unknown encoding) line 1: <file>"}));
}

TEST(BadDocuments, WithNulsAreToldTheirLine)
{
    std::string document = inRoot("\n" + kIdentityRange + "\n");
    document.insert(document.find("<Range") + 3, 1, '\0');
    EXPECT_EQ(readFile(document).failure,
              (Failure{0x420001, "XML Parsing error (not well-formed (invalid token)) line 2: <file>"}));
    EXPECT_EQ(readBuffer(document).failure.id, 0x420001U);
}

TEST(BadDocuments, MayBeDeep)
{
    Failure const tooDeep = {0x420001, "XML Parsing error (elements nested too deeply) line 1: <file>"};
    for (char const* tag : {"<ProcessList id='a'>", "<a>", "<Info>", "<Description>"})
        EXPECT_EQ(readFile(inRoot(repeated(tag, 100000))).failure, tooDeep) << tag;
    EXPECT_EQ(readFile(inRoot("<Info>" + repeated("<a>", 100000))).failure, tooDeep);
}

TEST(BadDocuments, MayBeWide)
{
    EXPECT_EQ(transformOf(inRoot(repeated("<a/>", 200000) + kIdentityRange))->getOps().size(), 1U);
    EXPECT_THAT(transformOf(inRoot(repeated("<Description>a</Description>", 100000) + kIdentityRange))->getDescriptions().getList(),
                SizeIs(100000));
    EXPECT_THAT(
        transformOf(inRoot(repeated("<InputDescriptor>a</InputDescriptor>", 200000) + kIdentityRange))->getInputDescriptor(),
        SizeIs(200000));
    std::string attributes;
    for (int i = 0; i < 100000; ++i)
        attributes += " a" + std::to_string(i) + "=''";
    EXPECT_EQ(transformOf(inRoot("<Range inBitDepth='8i' outBitDepth='8i'" + attributes + "/>"))->getOps().size(), 1U);
}

// Each new name is looked for among all others.
TEST(BadDocuments, MayHaveVeryManyPiecesOfInformation)
{
    std::string items;
    for (int i = 0; i < 200000; ++i)
        items += "<a" + std::to_string(i) + "/>";
    EXPECT_THAT(transformOf(inRoot("<Info>" + items + items + "</Info>" + kIdentityRange))->getInfo().getItems(), SizeIs(200000));
}

TEST(BadDocuments, MayHaveVeryLongLines)
{
    std::string const text(5000000, 'x');
    EXPECT_THAT(transformOf(inRoot("<Description>" + text + "</Description>" + kIdentityRange))->getDescriptions().getList(),
                ElementsAre(text));
    EXPECT_EQ(transformOf(inRoot("<Range inBitDepth='8i' outBitDepth='8i' name='" + text + "'/>"))->getOps().get(0).getName(),
              text);
    EXPECT_EQ(transformOf("<!--" + text + "-->" + inRoot(kIdentityRange))->getOps().size(), 1U);
    EXPECT_EQ(readFile(text).failure, (Failure{0x420001, "XML Parsing error (markup too long) line 1: <file>"}));
    EXPECT_EQ(readFile("<ProcessList id='a'><" + text).failure.id, 0x420004U);
    EXPECT_EQ(readFile(inRoot("<" + text + "/>" + kIdentityRange)).failure, Failure());
    EXPECT_EQ(readFile(inRoot("<Matrix inBitDepth='8i' outBitDepth='8i'><Array dim='3 3 3'>" + text + "</Array></Matrix>")).failure,
              (Failure{0x42000e, "Illegal values 'xxxxxxxxxxxxxxxxx...' in 'Matrix' line 1: <file>"}));
    EXPECT_EQ(readFile(inRoot("<Matrix inBitDepth='8i' outBitDepth='8i'><Array dim='3 3 3'>" + repeated("1 ", 2500000) +
                              "</Array></Matrix>"))
                  .failure,
              (Failure{0x42000c, "Expected 3x3 Array, found additional values in 'Matrix' line 1: <file>"}));
}

// A number of any length is one number.
TEST(BadDocuments, MayHaveVeryLongNumbers)
{
    std::string const digits(1000000, '1');
    auto const transform = transformOf(inRoot("<Range inBitDepth='32f' outBitDepth='32f'><minInValue>0." + digits +
                                              "</minInValue><minOutValue>0</minOutValue></Range>"));
    EXPECT_EQ(onlyOp<Color::RangeOp>(*transform).getMinInValue(), static_cast<double>(1.0F / 9.0F));
}

TEST(BadDocuments, MayHaveMessagesThatDoNotFit)
{
    std::string const name(100000, 'n');
    Failure const failure = readFile(inRoot("<" + name + ">")).failure;
    EXPECT_EQ(failure.id, 0x420004U);
    EXPECT_THAT(failure.words, SizeIs(1023));
    EXPECT_EQ(readFile(inRoot("<Range inBitDepth='%s%n%1$s' outBitDepth='8i'/>")).failure,
              (Failure{0x420009, "Illegal 'Input Bit Depth' attribute '%s%n%1$s' in 'Range' line 1: <file>"}));
}
