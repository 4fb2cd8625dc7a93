// Colour decision lists.
#include "xml/cdlReader.h"

#include "support/scopedEnvironment.h"
#include "transform/CDLOp.h"
#include "xml/documents.h"
#include "xml/logLines.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

using namespace XmlTest;
using Color::CDLOp;
using Color::CDLReader;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using Numbers = CDLOp::ChannelParams;

namespace
{

std::string const kSop = "<SOPNode><Slope>1.1 1.2 1.3</Slope><Offset>-0.1 0 0.1</Offset><Power>0.8 0.9 1</Power></SOPNode>";
std::string const kSat = "<SatNode><Saturation>0.5</Saturation></SatNode>";

std::string correction(std::string const& content, std::string const& attributes = "id='a'")
{
    return "<ColorCorrection " + attributes + ">" + content + "</ColorCorrection>";
}

std::string collection(std::string const& content)
{
    return element("ColorCorrectionCollection", content);
}

std::string decision(std::string const& content)
{
    return element("ColorDecision", content);
}

std::string decisionList(std::string const& content)
{
    return element("ColorDecisionList", content);
}

Failure failureOfCorrection(std::string const& content, std::string const& attributes = "id='a'")
{
    return readFile<CDLReader>(correction(content, attributes)).failure;
}

CDLReader::TransformList readList(std::string const& document)
{
    CDLReader const reader;
    reader.parseBuffer(document);
    return reader.getTransformList();
}

// The operator of a document with one correction.
CDLOp readCorrection(std::string const& document)
{
    CDLReader::TransformList const list = readList(document);
    if (list.size() != 1)
        throw std::runtime_error("not one correction");
    return onlyOp<CDLOp>(*list.front());
}

std::vector<std::string> descriptionsOf(std::string const& document)
{
    return readCorrection(document).getDescriptions().getList();
}

std::vector<std::string> logOf(std::string const& document)
{
    LogCapture const log;
    readBuffer<CDLReader>(document);
    return textsOf(log);
}

std::string const kCorrectionReason =
    ": ColorCorrection must be under a ColorDecision (CDL), ColorCorrectionCollection (CCC), or must "
    "be the root element (CC)";

std::string ignored(std::string const& tag, std::string const& parent, std::string const& reason)
{
    return "Ignore element '" + tag + "' (line 0) where its parent is '" + parent + "' (line 0) " + reason + ": ";
}

} // namespace

TEST(CDLReader, IsNamedForMessages)
{
    EXPECT_STREQ(CDLReader().getName(), "CDL Reader");
}

TEST(CDLReader, TakesThreeExtensionsInAnyCase)
{
    CDLReader const reader;
    for (char const* path : {"a.cdl", "a.ccc", "a.cc", "/b/a.CDL", "a.Ccc", "a.cC"})
        EXPECT_TRUE(reader.isFileSupported(path)) << path;
    for (char const* path : {"a.ctf", "cdl", "a.cdl.xml", "a.cccc", "a.c", ""})
        EXPECT_FALSE(reader.isFileSupported(path)) << path;
}

TEST(CDLReader, ListsItsFormats)
{
    EXPECT_THAT(CDLReader::supportedFileFormats(),
                ElementsAre(testing::Pair("cdl", "ASC CDL color decision list XML format"),
                            testing::Pair("ccc", "ASC CDL color correction collection XML format"),
                            testing::Pair("cc", "CDL fragment format")));
}

TEST(ColorCorrection, HasAllItsNumbers)
{
    CDLOp const op = readCorrection(correction(kSop + kSat, "id='first look'"));
    EXPECT_EQ(op.getId(), "first look");
    EXPECT_EQ(op.getInputBitDepth(), Tavrin::BIT_DEPTH_32f);
    EXPECT_EQ(op.getOutputBitDepth(), Tavrin::BIT_DEPTH_32f);
    EXPECT_EQ(op.getSlopeParams(), Numbers(1.1, 1.2, 1.3, 1));
    EXPECT_EQ(op.getOffsetParams(), Numbers(-0.1, 0, 0.1, 1));
    EXPECT_EQ(op.getPowerParams(), Numbers(0.8, 0.9, 1, 1));
    EXPECT_EQ(op.getSaturation(), 0.5);
    EXPECT_TRUE(op.getDescriptions().getList().empty());
}

TEST(ColorCorrection, GivesItsIdToTheTransform)
{
    EXPECT_EQ(readBuffer<CDLReader>(correction(kSop, "id='cc0001'")).transform->getId(), "cc0001");
}

TEST(ColorCorrection, NeedsNoNodes)
{
    EXPECT_EQ(readCorrection(correction(kSop)).getSaturation(), 1.0);
    EXPECT_EQ(readCorrection(correction(kSat)).getSlopeParams(), Numbers(1, 1, 1, 1));
    EXPECT_TRUE(readCorrection(correction("")).isIdentity());
}

TEST(ColorCorrection, NeedsAnId)
{
    EXPECT_EQ(failureOfCorrection(kSop, "name='a'"),
              (Failure{0x420006, "Required attribute 'Identifier' missing in 'ColorCorrection' line 1: <file>"}));
    EXPECT_EQ(failureOfCorrection(kSop, "id=''"),
              (Failure{0x420007, "Required attribute 'Identifier' empty in 'ColorCorrection' line 1: <file>"}));
}

TEST(ColorCorrection, ReadsItsNumbersAsTransformFilesDo)
{
    EXPECT_EQ(failureOfCorrection("\n<SOPNode>\n<Slope>1 1 1</Slope></SOPNode>"),
              (Failure{0x420020, "SOPNode: offset required at 'SOPNode' line 2: <file>"}));
    EXPECT_EQ(failureOfCorrection("<SOPNode><Slope>1 1</Slope></SOPNode>"),
              (Failure{0x42001e, "SOPNode: 3 values required at 'Slope' line 1: <file>"}));
    EXPECT_EQ(failureOfCorrection("<SatNode><Saturation>half</Saturation></SatNode>"),
              (Failure{0x42000e, "Illegal values 'half' in 'Saturation' line 1: <file>"}));
    EXPECT_EQ(failureOfCorrection("<SatNode><Saturation>1 2</Saturation></SatNode>"),
              (Failure{0x420022, "SatNode: non-single value at 'Saturation' line 1: <file>"}));
}

TEST(ColorCorrection, IsValidatedAtItsEnd)
{
    EXPECT_EQ(failureOfCorrection("<SatNode><Saturation>-1</Saturation></SatNode>"),
              (Failure{0x2c0004, "Invalid saturation (-1.000000), saturation should be greater than 0.000000"}));
}

TEST(ColorCorrection, CanBeSwitchedWhileItRenders)
{
    CDLOp const op = readCorrection(correction(kSop));
    EXPECT_TRUE(op.hasDynamicProperty(Tavrin::DynamicProperty::BYPASS));
    EXPECT_FALSE(op.getBypass()->getValue());
}

TEST(ColorCorrection, HasTheStyleOfTheEnvironment)
{
    using Style = CDLOp::CDLStyle;
    EXPECT_EQ(readCorrection(correction(kSop)).getCDLStyle(), Style::V1_2Fwd);
    struct
    {
        char const* value;
        Style style;
    } const cases[] = {
        {"", Style::V1_2Fwd},
        {"v1.2_Fwd", Style::V1_2Fwd},
        {"v1.2_Rev", Style::V1_2Rev},
        {"NOCLAMPFWD", Style::NoClampFwd},
        {"noClampRev", Style::NoClampRev},
    };
    for (auto const& [value, style] : cases)
    {
        ScopedEnvironment const environment("TAVRIN_DEFAULT_CDL_STYLE", value);
        EXPECT_EQ(readCorrection(correction(kSop)).getCDLStyle(), style) << value;
    }
}

TEST(ColorCorrection, FailsWithAStyleThatIsNone)
{
    ScopedEnvironment const environment("TAVRIN_DEFAULT_CDL_STYLE", "v1.1");
    EXPECT_EQ(failureOfCorrection(kSop), (Failure{0x2c0002, "Unrecognized CDL style: v1.1"}));
}

TEST(ColorDecisionList, HasOneTransformForEachCorrection)
{
    CDLReader::TransformList const list = readList(decisionList(decision("<MediaRef ref='a.dpx'/>" + correction(kSop, "id='1'")) +
                                                                decision(correction(kSat, "id='2'") + correction("", "id='3'"))));
    ASSERT_THAT(list, SizeIs(3));
    EXPECT_EQ(list[0]->getId(), "1");
    EXPECT_EQ(list[1]->getId(), "2");
    EXPECT_EQ(list[2]->getId(), "3");
    EXPECT_EQ(onlyOp<CDLOp>(*list[1]).getSaturation(), 0.5);
}

TEST(ColorCorrectionCollection, GivesItsFirstCorrectionToALoader)
{
    std::string corrections;
    for (char const* id : {"1", "2", "3", "4", "5"})
        corrections += correction(kSop, std::string("id='") + id + "'");
    EXPECT_THAT(readList(collection(corrections)), SizeIs(5));
    EXPECT_EQ(readFile<CDLReader>(collection(corrections)).transform->getId(), "1");
}

TEST(ColorCorrectionFragment, HasOneTransform)
{
    EXPECT_THAT(readList(correction(kSop)), SizeIs(1));
}

TEST(ColorDecisions, AreToldByTheRootWhateverTheExtension)
{
    for (std::string const& document : {correction(kSop), collection(correction(kSop)), decisionList(decision(correction(kSop)))})
    {
        for (char const* name : {"a.cdl", "a.ccc", "a.cc"})
            EXPECT_EQ(readFile<CDLReader>(document, name).failure, Failure()) << name << document;
    }
}

TEST(ColorDecisions, AreReadInAnyCaseAndBehindAProlog)
{
    EXPECT_EQ(readFile<CDLReader>("<?xml version='1.0'?>\n<!-- <ColorDecisionList> -->\n<COLORCORRECTION ID='a' xmlns='urn:ASC'>\n"
                                  "<sopnode><slope>2 2 2</slope><OFFSET>0 0 0</OFFSET><power>1 1 1</power></sopnode>\n"
                                  "<satNODE><saturation>1</saturation></satNODE></COLORCORRECTION>\n")
                  .failure,
              Failure());
}

TEST(ColorDecisions, WithoutACorrectionAreNoTransform)
{
    for (std::string const& document : {decisionList(""), decisionList(decision("")), collection(""), inRoot(kIdentityRange),
                                        std::string(), decisionList(correction(kSop)), collection(decision(correction(kSop)))})
    {
        EXPECT_EQ(readFile<CDLReader>(document).failure, (Failure{0x410002, "Transform invalid: '<file>'"})) << document;
        EXPECT_EQ(readBuffer<CDLReader>(document).failure, (Failure{0x410002, "Transform invalid: ''"})) << document;
    }
}

TEST(ColorDecisions, GiveAnEmptyTransformBeforeTheyAreRead)
{
    CDLReader const reader;
    EXPECT_THAT(reader.getTransformList(), IsEmpty());
    ASSERT_TRUE(reader.getTransform());
    EXPECT_TRUE(reader.getTransform()->getOps().empty());
}

TEST(ColorDecisions, TellWhatIsWrongWithTheDocument)
{
    EXPECT_EQ(readFile<CDLReader>("<ColorDecisionList>\n<ColorDecision>").failure,
              (Failure{0x420004, "XML Parsing error (no closing tag for 'ColorDecision') line 2: <file>"}));
    EXPECT_EQ(readFile<CDLReader>(decisionList("stray text")).failure,
              (Failure{0x420005, "XML Parsing error: Attribute end 'stray text' illegal line 1: <file>"}));
    EXPECT_EQ(failureOf([] { CDLReader().parseFile("/no/such/file.cdl"); }),
              (Failure{0x420018, "File open failed: /no/such/file.cdl"}));
}

TEST(ColorDecisionDescriptions, AreMarkedWithWhatTheyDescribe)
{
    auto const describe = [](std::string const& text) { return element("Description", text); };
    EXPECT_THAT(
        descriptionsOf(decisionList(
            describe("1") + decision(describe("2") + correction(describe("3") + "<SOPNode>" + describe("4") + kSop.substr(9) +
                                                                "<SatNode>" + describe("5") + kSat.substr(9) + describe("6"))))),
        ElementsAre("CDL: 1", "CD: 2", "CC: 3", "SOP: 4", "Sat: 5", "CC: 6"));
    EXPECT_THAT(descriptionsOf(collection(describe("1") + correction(describe("2")))), ElementsAre("CCC: 1", "CC: 2"));
    EXPECT_THAT(descriptionsOf(correction("<DESCRIPTION>one\n\n two </DESCRIPTION>")), ElementsAre("CC: one", "CC: two"));
}

TEST(ColorDecisionDescriptions, OfInputAndViewingAreMarkedSo)
{
    std::string const both = "<InputDescription>camera</InputDescription><ViewingDescription>dark room</ViewingDescription>";
    EXPECT_THAT(descriptionsOf(decisionList(both + decision(both + correction(both)))),
                ElementsAre("InputDesc: camera", "ViewingDesc: dark room", "InputDesc: camera", "ViewingDesc: dark room",
                            "InputDesc: camera", "ViewingDesc: dark room"));
}

TEST(ColorDecisionDescriptions, AreThoseThatStandBeforeTheCorrection)
{
    auto const descriptions = [](Color::Transform const& transform)
    { return onlyOp<CDLOp>(transform).getDescriptions().getList(); };
    CDLReader::TransformList const list =
        readList(collection("<Description>1</Description>" + correction("<Description>own</Description>") +
                            "<Description>2</Description>" + correction("")));
    EXPECT_THAT(descriptions(*list[0]), ElementsAre("CCC: 1", "CC: own"));
    EXPECT_THAT(descriptions(*list[1]), ElementsAre("CCC: 1", "CCC: 2"));
}

// Each correction has a copy of them.
TEST(ColorDecisionDescriptions, MayNotTakeAllMemory)
{
    std::string const description = element("Description", std::string(100000, 'x'));
    std::string corrections;
    for (int i = 0; i < 1000; ++i)
        corrections += correction("");
    EXPECT_EQ(readFile<CDLReader>(collection(description + corrections)).failure,
              (Failure{0x420001, "XML Parsing error (descriptions too long) line 1: <file>"}));
    EXPECT_EQ(readFile<CDLReader>(collection(corrections + description)).failure, Failure());
}

TEST(MisplacedColorDecisions, ArePassedOverWithAReason)
{
    struct
    {
        std::string document;
        std::string line;
    } const cases[] = {
        {decisionList(decisionList("")),
         ignored("ColorDecisionList", "ColorDecisionList", ": The ColorDecisionList already exists")},
        {collection(collection("")),
         ignored("ColorCorrectionCollection", "ColorCorrectionCollection", ": The ColorCorrectionCollection already exists")},
        {decisionList(decision(decision(""))),
         ignored("ColorDecision", "ColorDecision", ": ColorDecision must be under a ColorDecisionList")},
        {collection(decision("")), ignored("ColorDecision", "ColorCorrectionCollection", ": Unknown element")},
        {collection(decisionList("")), ignored("ColorDecisionList", "ColorCorrectionCollection", ": Unknown element")},
        {decisionList(correction("")), ignored("ColorCorrection", "ColorDecisionList", kCorrectionReason)},
        {correction(correction("")), ignored("ColorCorrection", "ColorCorrection", kCorrectionReason)},
        {collection("<SOPNode/>"), ignored("SOPNode", "ColorCorrectionCollection", ": SOPNode must be under a ColorCorrection")},
        {collection("<SatNode/>"), ignored("SatNode", "ColorCorrectionCollection", ": SatNode must be under a ColorCorrection")},
        {correction("<Slope/>"), ignored("Slope", "ColorCorrection", ": Slope, Offset or Power tags must be under SOPNode")},
        {correction("<Offset/>"), ignored("Offset", "ColorCorrection", ": Slope, Offset or Power tags must be under SOPNode")},
        {correction("<SatNode><Power/></SatNode>"),
         ignored("Power", "SatNode", ": Slope, Offset or Power tags must be under SOPNode")},
        {correction("<Saturation/>"), ignored("Saturation", "ColorCorrection", ": Saturation tags must be under SatNode")},
        {correction("<SatNode><InputDescription>x</InputDescription></SatNode>"),
         ignored("InputDescription", "SatNode", ": Unknown element")},
        {correction("<SatNode><ViewingDescription>x</ViewingDescription></SatNode>"),
         ignored("ViewingDescription", "SatNode", ": Unknown element")},
        {correction("<Description><b/></Description>"), ignored("b", "Description", ": Unknown element")},
        {correction("<New>text</New>"), ignored("New", "ColorCorrection", ": Unknown element")},
    };
    for (auto const& [document, line] : cases)
        EXPECT_THAT(logOf(document), testing::Contains(line)) << document;
}

TEST(MisplacedColorDecisions, ArePassedOverWithAllThatIsInThem)
{
    EXPECT_THAT(readList(decisionList(decisionList(decision(correction(kSop))) + decision(correction(kSat)))), SizeIs(1));
    EXPECT_EQ(readCorrection(correction("<New>" + kSop + "</New>")).getSlopeParams(), Numbers(1, 1, 1, 1));
    EXPECT_EQ(readCorrection(correction("<SOPNode><InputDescription>x</InputDescription>" + kSop.substr(9))).getSlopeParams(),
              Numbers(1.1, 1.2, 1.3, 1));
}
