// Transform files: which element a tag becomes, what is passed over, and what is no transform.
#include "xml/xmlTransformReader.h"

#include "xml/documents.h"
#include "xml/logLines.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

using namespace XmlTest;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

namespace
{

// The log lines about passed over elements of a document that is read all the same.
std::vector<std::string> ignoredIn(std::string const& document)
{
    LogCapture const log;
    Reading const reading = readBuffer(document);
    EXPECT_EQ(reading.failure, Failure());
    return textsOf(log);
}

std::string ignored(std::string const& tag, std::string const& parent, std::string const& reason)
{
    return "Ignore element '" + tag + "' (line 0) where its parent is '" + parent + "' (line 0) " + reason + ": ";
}

std::string withMatrix(std::string const& content)
{
    return "<Matrix inBitDepth='32f' outBitDepth='32f'>" + content + "</Matrix>";
}

} // namespace

TEST(TransformFiles, HoldATransformWithItsOperatorsInOrder)
{
    auto const transform = transformOf("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                                       "<ProcessList id='a' version='1.3'>\n" +
                                       kIdentityRange + withMatrix("") + kIdentityRange + "</ProcessList>\n");
    ASSERT_EQ(transform->getOps().size(), 3U);
    EXPECT_EQ(transform->getOps().get(0).getOpType(), Color::Op::OpType::RangeOp);
    EXPECT_EQ(transform->getOps().get(1).getOpType(), Color::Op::OpType::MatrixOp);
    EXPECT_EQ(transform->getOps().get(2).getOpType(), Color::Op::OpType::RangeOp);
}

TEST(TransformFiles, MatchTagsAndAttributesInAnyCase)
{
    auto const transform = transformOf("<processlist ID='a' VERSION='1.3'><DESCRIPTION>d</DESCRIPTION>"
                                       "<rAnGe INBITDEPTH='8i' outbitdepth='10i'/></processlist>");
    EXPECT_THAT(transform->getDescriptions().getList(), ElementsAre("d"));
    EXPECT_EQ(onlyOp<Color::RangeOp>(*transform).getOutputBitDepth(), Tavrin::BIT_DEPTH_10i);
}

TEST(TransformFiles, WithoutOperatorsAreRefusedAndBuffersAreNot)
{
    EXPECT_EQ(failureOfFile(inRoot("")), (Failure{0x42001a, "No color operators found in file: <file>"}));
    EXPECT_TRUE(readBuffer(inRoot("")).transform->getOps().empty());
}

TEST(TransformFiles, WithAnotherRootHoldNoTransform)
{
    for (std::string const document :
         {"", "text", "<a/>", "<a>text<b>text</b></a>", "<?xml version='1.0'?>", "<!-- <ProcessList/> -->", "<ProcessList"})
    {
        EXPECT_EQ(failureOfFile(document).id, 0x410002U) << document;
        EXPECT_EQ(readBuffer(document).failure.id, 0x410001U) << document;
    }
    EXPECT_EQ(failureOfFile("<a/>"), (Failure{0x410002, "Transform invalid: '<file>'"}));
    EXPECT_EQ(readBuffer("<a/>").failure, (Failure{0x410001, "Transform invalid"}));
}

TEST(TransformFiles, TellTheLogWhoFoundTheFault)
{
    for (std::string const document : {"<a/>", "<a>", "<ProcessList/>"})
    {
        LogCapture const log;
        readBuffer(document);
        EXPECT_THAT(textsOf(log).back(), HasSubstr("): COLOR:XML:READER: ")) << document;
    }
}

TEST(TransformFiles, SkipOperatorsUnderAnotherRootOrAsTheRoot)
{
    EXPECT_EQ(failureOfFile("<a>" + kIdentityRange + "</a>"), (Failure{0x410002, "Transform invalid: '<file>'"}));
    EXPECT_EQ(failureOfFile(kIdentityRange), (Failure{0x410002, "Transform invalid: '<file>'"}));

    LogCapture const log;
    readBuffer("<a>" + kIdentityRange + "</a>");
    EXPECT_THAT(textsOf(log), Contains(ignored("Range", "a", ": The Range's parent can only be a Transform")));
    readBuffer(kIdentityRange);
    EXPECT_THAT(textsOf(log), Contains(ignored("Range", "", ": The Range's parent can only be a Transform")));
}

// The transform is found; its operators are not directly under the root of the document, so it has none.
TEST(TransformFiles, MayBeWithinAnotherRootButHaveNoOperatorsThere)
{
    EXPECT_EQ(failureOfFile("<a>" + inRoot(kIdentityRange) + "</a>"),
              (Failure{0x42001a, "No color operators found in file: <file>"}));
    EXPECT_EQ(readBuffer("<a>" + inRoot(kIdentityRange) + "</a>").transform->getId(), "a");
}

TEST(TransformFiles, MayHaveCommentsInstructionsAndNamespaces)
{
    auto const transform = transformOf("<?xml version='1.0'?><!-- <Matrix/> --><?pi <Matrix/>?>\n"
                                       "<ProcessList xmlns='urn:x' xmlns:y='urn:y' id='a' y:name='b'><!-- c -->" +
                                       kIdentityRange + "<?pi?></ProcessList><!-- end -->");
    EXPECT_EQ(transform->getOps().size(), 1U);
    EXPECT_EQ(transform->getName(), "");
}

TEST(TransformFiles, MayBeginWithAByteOrderMark)
{
    EXPECT_EQ(transformOf("\xef\xbb\xbf" + inRoot(kIdentityRange))->getId(), "a");
}

TEST(TransformFiles, TellOperatorsThatTheirVersionDoesNotKnow)
{
    EXPECT_EQ(failureOfFile("<ProcessList id='a'>\n<Log inBitDepth='32f' outBitDepth='32f'/></ProcessList>"),
              (Failure{0x42001d, "Unsupported transform file version '1.2' for Op 'Log' line 2: <file>"}));
    EXPECT_EQ(failureOfFile(inRoot("\n\n<gamutmap/>", "1.3")),
              (Failure{0x42001d, "Unsupported transform file version '1.3' for Op 'gamutmap' line 3: <file>"}));
    EXPECT_EQ(readBuffer(inRoot("<ASC_CDL/>", "1.2")).failure,
              (Failure{0x42001d, "Unsupported transform file version '1.2' for Op 'ASC_CDL' line 0: "}));
}

TEST(TransformFiles, StopAtAnIndexMap)
{
    EXPECT_EQ(failureOfFile(inRoot(withMatrix("\n<indexMap/>"))),
              (Failure{0x420011, "Attribute 'indexMap' not supported in '<file>' line 2"}));
    EXPECT_EQ(failureOfFile(inRoot("<IndexMap/>")), (Failure{0x420011, "Attribute 'IndexMap' not supported in '<file>' line 1"}));
}

TEST(TransformFiles, TellTextWhereNoneMayBe)
{
    EXPECT_EQ(failureOfFile(inRoot("\n some text" + kIdentityRange)),
              (Failure{0x420005, "XML Parsing error: Attribute end 'some text' illegal line 2: <file>"}));
    EXPECT_EQ(failureOfFile(inRoot(withMatrix("1 0 0"))),
              (Failure{0x420005, "XML Parsing error: Attribute end '1 0 0' illegal line 1: <file>"}));
}

TEST(TransformFiles, TellParsingErrors)
{
    EXPECT_EQ(failureOfFile(inRoot("\n<Range></Matrix>")).id, 0x420006U); // The range's missing depth comes first.
    EXPECT_EQ(failureOfFile(inRoot("\n<Range inBitDepth='8i' outBitDepth='8i'></Matrix>")),
              (Failure{0x420004, "XML Parsing error (no closing tag for 'Range') line 2: <file>"}));
    EXPECT_EQ(failureOfFile("<ProcessList id='a'>\n" + kIdentityRange + "\n\n"),
              (Failure{0x420004, "XML Parsing error (no closing tag for 'ProcessList') line 3: <file>"}));
    EXPECT_EQ(failureOfFile(inRoot("\n<Range <")),
              (Failure{0x420001, "XML Parsing error (not well-formed (invalid token)) line 2: <file>"}));
}

TEST(PassedOver, IsAnUnknownElementWithAllThatIsInIt)
{
    EXPECT_THAT(ignoredIn(inRoot("<New>text" + withMatrix("<Array dim='nonsense'>nonsense</Array>") + "</New>" + kIdentityRange)),
                ElementsAre(ignored("New", "ProcessList", ": Unknown element"),
                            ignored("Matrix", "New", ": The Matrix's parent can only be a Transform"),
                            ignored("Array", "Matrix", "")));
}

TEST(PassedOver, IsASecondTransformInTheFirst)
{
    std::string const document = inRoot("<processlist version='9' id=''>" + kIdentityRange + "</processlist>" + kIdentityRange);
    EXPECT_EQ(transformOf(document)->getOps().size(), 1U);
    EXPECT_THAT(ignoredIn(document), Contains(ignored("processlist", "ProcessList", ": The Color::Transform already exists")));
    EXPECT_THAT(ignoredIn(inRoot(withMatrix(inRoot("")))),
                ElementsAre(ignored("ProcessList", "ProcessList", ": The Color::Transform already exists")));
}

TEST(PassedOver, IsAnOperatorInAnother)
{
    EXPECT_THAT(ignoredIn(inRoot(withMatrix("<LUT1D/><Range/>"))),
                ElementsAre(ignored("LUT1D", "Matrix", ": The LUT1D's parent can only be a Transform"),
                            ignored("Range", "Matrix", ": The Range's parent can only be a Transform")));
}

TEST(PassedOver, IsWhatHasNoPlaceInAnElement)
{
    struct Case
    {
        char const* tag;
        char const* reason;
    };
    Case const inMatrix[] = {
        {"Info", ": Info not allowed in this element"},
        {"InputDescriptor", ": InputDescriptor not allowed in this element"},
        {"OutputDescriptor", ": OutputDescriptor not allowed in this element"},
        {"minInValue", ": Range Value tags not allowed in this element"},
        {"maxInValue", ": Range Value tags not allowed in this element"},
        {"minOutValue", ": Range Value tags not allowed in this element"},
        {"maxOutValue", ": Range Value tags not allowed in this element"},
        {"GammaParams", ": Gamma Params not allowed in this element"},
        {"ECParams", ": E/C Params not allowed in this element"},
        {"LogParams", ": Log Params not allowed in this element"},
        {"HueVecParams", ": HueVector Params not allowed in this element"},
        {"SOPNode", ": SOPNode not allowed in this element"},
        {"Slope", ": Slope, Offset or Power tags not allowed in this element"},
        {"Offset", ": Slope, Offset or Power tags not allowed in this element"},
        {"Power", ": Slope, Offset or Power tags not allowed in this element"},
        {"SatNode", ": SatNode not allowed in this element"},
        {"Saturation", ": Saturation not allowed in this element"},
        {"Arrays", ": Unknown element"},
    };
    for (Case const& c : inMatrix)
    {
        std::string const tag = c.tag;
        EXPECT_THAT(ignoredIn(inRoot(withMatrix(element(tag, "text")))), ElementsAre(ignored(tag, "Matrix", c.reason)));
    }
    Case const inTransform[] = {
        {"array", ": Color::Array not allowed in this element"},
        {"DynamicParameter", ": Dynamic properties not allowed in this element"},
        {"MININVALUE", ": Range Value tags not allowed in this element"},
    };
    for (Case const& c : inTransform)
    {
        std::string const tag = c.tag;
        EXPECT_THAT(ignoredIn(inRoot(element(tag, "text"))), ElementsAre(ignored(tag, "ProcessList", c.reason)));
    }
    EXPECT_THAT(ignoredIn(inRoot("<Range inBitDepth='8i' outBitDepth='8i'><Array dim='3'>x</Array></Range>")),
                ElementsAre(ignored("Array", "Range", ": Color::Array not allowed in this element")));
}

TEST(PassedOver, IsASecondArray)
{
    std::string const document =
        inRoot(withMatrix("<Array dim='3 3 3'>2 0 0 0 2 0 0 0 2</Array><Array dim='3 3 3'>nonsense</Array>"));
    EXPECT_THAT(ignoredIn(document), ElementsAre(ignored("Array", "Matrix", ": Only one Color::Array allowed per op")));
    EXPECT_EQ(onlyOp<Color::MatrixOp>(*transformOf(inRoot(withMatrix("<Array dim='3 3 3'>2 0 0 0 2 0 0 0 2</Array>"
                                                                     "<Array dim='3 3 3'>3</Array>"))))
                  .getArray()
                  .get(0),
              2.0F);
}

TEST(PassedOver, IsWhatStandsInAPlainElement)
{
    EXPECT_THAT(ignoredIn(inRoot("<Description>a<b>c</b>d</Description>")), ElementsAre(ignored("b", "Description", "")));
}

TEST(TransformReader, SaysWhatItIs)
{
    Color::XMLTransformReader const reader;
    EXPECT_STREQ(reader.getName(), "Tavrin Transform Reader");
    EXPECT_STREQ(Color::XMLTransformReader::getColorTransformFileExtension(), "ctf");
}

TEST(TransformReader, TakesFilesByTheirExtensionsExactSpelling)
{
    Color::XMLTransformReader const reader;
    for (char const* path : {"a.ctf", "/b/a.xml", "a.b.ctf", ".ctf"})
        EXPECT_TRUE(reader.isFileSupported(path)) << path;
    for (char const* path : {"a.CTF", "a.Xml", "a", "", "ctf", "a.ctf/b", "a.ctf ", "a.ctfx"})
        EXPECT_FALSE(reader.isFileSupported(path)) << path;
}

TEST(TransformReader, TellsTransformsByAnOpeningRootInTheFirstFiveThousandBytes)
{
    TemporaryFolder const folder;
    Color::XMLTransformReader const reader;
    auto const isLoadable = [&](std::string const& content) { return reader.isFileLoadable(folder.write("a.xml", content)); };
    std::string const root = "<ProcessList";

    EXPECT_TRUE(isLoadable(root));
    EXPECT_TRUE(isLoadable("<?xml version='1.0'?>\n\n  <ProcessList id='a'>"));
    EXPECT_FALSE(isLoadable("<processlist>"));
    EXPECT_FALSE(isLoadable("<Process\nList>"));
    EXPECT_FALSE(isLoadable(""));
    // Lines of 99 characters: 51 of them make 5049, one more makes 5148.
    std::string lines;
    for (int i = 0; i < 51; ++i)
        lines += std::string(99, ' ') + "\n";
    EXPECT_TRUE(isLoadable(lines + root));
    EXPECT_FALSE(isLoadable(lines + std::string(99, ' ') + "\n" + root));
    // A line of 5119 characters fits, and uses up less than there is; one of 5120 does not fit.
    EXPECT_TRUE(isLoadable(std::string(5119 - root.size(), ' ') + root));
    EXPECT_TRUE(isLoadable(std::string(5119, ' ') + "\n" + root));
    EXPECT_FALSE(isLoadable(std::string(5120 - root.size(), ' ') + root));
    EXPECT_FALSE(reader.isFileLoadable(folder.file("missing.xml")));
    EXPECT_FALSE(reader.isFileLoadable(folder.path().string()));
}
