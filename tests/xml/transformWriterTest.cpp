// The root of transform files.
#include "xml/transformWriter.h"

#include "support/failure.h"
#include "support/temporaryFolder.h"
#include "transform/ops.h"
#include "xml/documents.h"
#include "xml/writing.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

using namespace Color;
using namespace Tavrin;
using XmlTest::readBuffer;
using XmlTest::written;

namespace
{

std::string const kProlog = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";
std::string const kGamutMap = "    <GamutMap inBitDepth=\"32f\" outBitDepth=\"32f\" style=\"none\">\n    </GamutMap>\n";

std::shared_ptr<Transform> newTransform(std::string const& id = "id")
{
    return std::make_shared<Transform>(id, "", Descriptions(), "", "");
}

std::shared_ptr<Transform> transformOf(Op* op)
{
    auto transform = newTransform();
    transform->getOps().append(op);
    return transform;
}

// The version that the root states.
std::string versionOf(Transform& transform)
{
    std::string const document = written(std::shared_ptr<Transform>(&transform, [](Transform*) {}));
    std::size_t const begin = document.find("<ProcessList version=\"") + 22;
    return document.substr(begin, document.find('"', begin) - begin);
}

} // namespace

TEST(TransformWriter, WritesTheLeast)
{
    EXPECT_EQ(written(newTransform("an id")), kProlog + "<ProcessList version=\"1.3\" id=\"an id\">\n</ProcessList>\n");
}

TEST(TransformWriter, WritesWhatDescribesATransformThenItsOperators)
{
    auto const transform = transformOf(new GamutMapOp());
    transform->setName("A <name>");
    transform->setInverseOfId("other");
    transform->getDescriptions() += "first";
    transform->getDescriptions() += "'second' \"and\" last";
    transform->setInputDescriptor("in > out");
    transform->setOutputDescriptor("out");
    transform->getInfo()["Copyright"] = "me & you";
    transform->getInfo()["Release"]["Year"] = "2015";
    transform->getInfo()["Release"]["Empty"] = "";
    transform->getOps().append(new GamutMapOp());
    EXPECT_EQ(written(transform), kProlog +
                                      "<ProcessList version=\"1.4\" id=\"id\" name=\"A &lt;name&gt;\" inverseOf=\"other\">\n"
                                      "    <Description>first</Description>\n"
                                      "    <Description>&apos;second&apos; &quot;and&quot; last</Description>\n"
                                      "    <InputDescriptor>in &gt; out</InputDescriptor>\n"
                                      "    <OutputDescriptor>out</OutputDescriptor>\n"
                                      "    <Info>\n"
                                      "        <Copyright>me &amp; you</Copyright>\n"
                                      "        <Release>\n"
                                      "            <Year>2015</Year>\n"
                                      "            <Empty></Empty>\n"
                                      "        </Release>\n"
                                      "    </Info>\n" +
                                      kGamutMap + kGamutMap + "</ProcessList>\n");
}

TEST(TransformWriter, WritesInformationThatIsATextItself)
{
    auto const transform = newTransform();
    transform->getInfo() = "text";
    EXPECT_EQ(written(transform), kProlog + "<ProcessList version=\"1.3\" id=\"id\">\n    <Info>text</Info>\n</ProcessList>\n");
}

TEST(TransformWriter, KeepsTheChildrenOfInformationAlone)
{
    auto const reading = readBuffer(XmlTest::inRoot("<Info><a>text<b>1</b></a></Info>" + XmlTest::kIdentityRange));
    ASSERT_TRUE(reading.transform);
    EXPECT_NE(written(reading.transform).find("        <a>\n            <b>1</b>\n        </a>\n"), std::string::npos);
}

TEST(TransformWriter, StatesTheHighestVersionOfItsOperators)
{
    auto const transform = transformOf(new MatrixOp());
    EXPECT_EQ(versionOf(*transform), "1.3");
    transform->getOps().append(new DitherOp(BIT_DEPTH_32f, BIT_DEPTH_32f, BIT_DEPTH_8i));
    transform->getOps().append(new MatrixOp());
    EXPECT_EQ(versionOf(*transform), "1.4");
    transform->getOps().append(new GammaOp(BIT_DEPTH_32f, BIT_DEPTH_32f, "", "", Descriptions(), GammaOp::GammaStyle::BasicFwd,
                                           {2.0}, {2.0}, {2.0}, {2.0}));
    EXPECT_EQ(versionOf(*transform), "1.5");
    transform->getOps().append(new DitherOp(BIT_DEPTH_32f, BIT_DEPTH_32f, BIT_DEPTH_8i));
    EXPECT_EQ(versionOf(*transform), "1.5");
}

// Such a document can't be read, so a transform is given an id before it is written.
TEST(TransformWriter, AlwaysWritesTheId)
{
    auto const transform = newTransform("");
    transform->getOps().append(new RangeOp());
    std::ostringstream stream;
    Xml::Writer::Formatter formatter(stream);
    Xml::Writer::TransformWriter(formatter, *transform).write();
    EXPECT_EQ(stream.str().substr(0, stream.str().find('\n')), "<ProcessList version=\"1.3\" id=\"\">");
    EXPECT_EQ(readBuffer(stream.str()).failure.id, 0x420007U);

    EXPECT_EQ(readBuffer(written(transform)).failure, Failure());
    EXPECT_EQ(transform->getId().size(), 36U);
}

TEST(XMLTransformWriter, RefusesNullAndAnInvalidTransformBeforeItWrites)
{
    std::ostringstream stream;
    XMLTransformWriter const writer;
    EXPECT_EQ(failureOf([&] { writer.writeStream(nullptr, stream); }), (Failure{0x430001, "Transform null"}));

    auto const transform = transformOf(new ReferenceOp());
    EXPECT_EQ(failureOf([&] { writer.writeStream(transform, stream); }),
              (Failure{0x410002, "Transform invalid: 'Reference 'Reference' requires Alias or Path attributes'"}));
    EXPECT_EQ(stream.str(), "");
}

TEST(XMLTransformWriter, WritesAFileInThePlaceOfAnother)
{
    TemporaryFolder const folder;
    auto const transform = transformOf(new GamutMapOp());
    std::string const path = folder.write("a.ctf", "something longer than the document " + std::string(1000, '.'));
    XMLTransformWriter().writeFile(transform, path);
    EXPECT_EQ(contentOfFile(path), written(transform));
    EXPECT_EQ(contentOfFile(path), kProlog + "<ProcessList version=\"1.4\" id=\"id\">\n" + kGamutMap + "</ProcessList>\n");
}

TEST(XMLTransformWriter, LeavesAFileWhereATransformCanNotBeWritten)
{
    TemporaryFolder const folder;
    std::string const path = folder.write("a.ctf", "before");
    EXPECT_EQ(failureOf([&] { XMLTransformWriter().writeFile(transformOf(new ReferenceOp()), path); }).id, 0x410002U);
    EXPECT_EQ(contentOfFile(path), "before");
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.path()), {}), 1);
}

TEST(XMLTransformWriter, TellsWhyAPathCanNotBeWritten)
{
    TemporaryFolder const folder;
    std::filesystem::create_directory(folder.file("sub"));
    auto const failureAt = [&](std::string const& path)
    { return failureOf([&] { XMLTransformWriter().writeFile(transformOf(new GamutMapOp()), path); }); };
    std::string const missing = folder.file("no/such/folder.ctf");
    EXPECT_EQ(failureAt(missing), (Failure{0x430004, "Invalid file path: '" + missing + "'"}));
    std::string const sub = folder.file("sub");
    EXPECT_EQ(failureAt(sub), (Failure{0x430002, "Unable to write file: '" + sub + "'"}));
}
