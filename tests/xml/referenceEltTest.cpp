// References to other files in files.
#include "xml/documents.h"
#include "xml/logLines.h"

#include "transform/referenceOp.h"

#include <gmock/gmock.h>

#include <string>

using namespace XmlTest;
using Color::ReferenceOp;
using testing::ElementsAre;
using testing::IsEmpty;

namespace
{

std::string reference(std::string const& attributes)
{
    return inRoot("<Reference inBitDepth='16i' outBitDepth='8i' " + attributes + "/>");
}

} // namespace

TEST(ReferenceElement, ReadsAnAlias)
{
    auto const transform = transformOf(reference("id='i' name='n' alias='currentMonitor'"));
    auto const& op = onlyOp<ReferenceOp>(*transform);
    EXPECT_EQ(op.getAlias(), "currentMonitor");
    EXPECT_EQ(op.getCurrentAlias(), "currentMonitor");
    EXPECT_EQ(op.getPath(), "");
    EXPECT_EQ(op.getInputBitDepth(), Tavrin::BIT_DEPTH_16i);
    EXPECT_EQ(op.getOutputBitDepth(), Tavrin::BIT_DEPTH_8i);
    EXPECT_EQ(op.getId(), "i");
    EXPECT_EQ(op.getName(), "n");
    EXPECT_TRUE(op.needsResolving());
}

TEST(ReferenceElement, ReadsAPathWithAndWithoutABasePath)
{
    auto const withBase = transformOf(reference("path='a/b.ctf' basePath='shared'"));
    EXPECT_EQ(onlyOp<ReferenceOp>(*withBase).getPath(), "a/b.ctf");
    EXPECT_EQ(onlyOp<ReferenceOp>(*withBase).getBasePath(), Tavrin::BASE_PATH_SHARED);
    EXPECT_EQ(onlyOp<ReferenceOp>(*withBase).getAlias(), "");
    auto const vendor = transformOf(reference("BASEPATH='Norvane' PATH='b.ctf'"));
    EXPECT_EQ(onlyOp<ReferenceOp>(*vendor).getBasePath(), Tavrin::BASE_PATH_VENDOR);
    auto const absolute = transformOf(reference("path='/a/b.ctf'"));
    EXPECT_EQ(onlyOp<ReferenceOp>(*absolute).getPath(), "/a/b.ctf");
    EXPECT_EQ(onlyOp<ReferenceOp>(*absolute).getBasePath(), Tavrin::BASE_PATH_NONE);
}

TEST(ReferenceElement, LogsABasePathThatThereIsNotAndGoesOn)
{
    LogCapture const log;
    auto const transform = transformOf(reference("path='b.ctf' basePath='elsewhere'"));
    EXPECT_EQ(onlyOp<ReferenceOp>(*transform).getBasePath(), Tavrin::BASE_PATH_NONE);
    ASSERT_EQ(log.lines().size(), 1U);
    EXPECT_THAT(log.lines().front().second,
                testing::StartsWith("Illegal 'basePath' attribute 'elsewhere' in 'Reference' line 1: "));
}

TEST(ReferenceElement, RefusesAPathOrABasePathBesideAnAlias)
{
    EXPECT_EQ(failureOfFile(reference("alias='a' path='b.ctf'")),
              (Failure{0x420012, "Attribute 'path' not supported with alias at 'Reference' line 1: <file>"}));
    EXPECT_EQ(failureOfFile(reference("alias='a' path='b.ctf' basePath='Shared'")),
              (Failure{0x420012, "Attribute 'path' not supported with alias at 'Reference' line 1: <file>"}));
    EXPECT_EQ(failureOfFile(reference("basePath='Shared' alias='a'")),
              (Failure{0x420012, "Attribute 'basePath' not supported with alias at 'Reference' line 1: <file>"}));
    EXPECT_EQ(failureOfFile(reference("alias='a' path='' basePath='elsewhere'")), Failure());
}

TEST(ReferenceElement, NeedsAnAliasOrAPath)
{
    Failure const missing{0x420006, "Required attribute 'path' missing in 'Reference' line 1: <file>"};
    EXPECT_EQ(failureOfFile(reference("")), missing);
    EXPECT_EQ(failureOfFile(reference("alias='' path=''")), missing);
    EXPECT_EQ(failureOfFile(reference("basePath='Shared'")), missing);
}

TEST(ReferenceElement, StandsInAllVersions)
{
    for (std::string const version : {"1.0", "1.2", "1.3", "1.5"})
        EXPECT_EQ(failureOfFile(inRoot("<Reference inBitDepth='16i' outBitDepth='8i' alias='a'/>", version)), Failure()) << version;
}

TEST(ReferenceElement, MayBeSwitchedWhileItRenders)
{
    auto const transform = transformOf(inRoot("<Reference inBitDepth='16i' outBitDepth='8i' alias='a' bypass='true'>"
                                              "<DynamicParameter param='LOOK_SWITCH'/></Reference>"));
    auto const& bypass = *onlyOp<ReferenceOp>(*transform).getBypass();
    EXPECT_TRUE(bypass.isDynamic());
    EXPECT_TRUE(bypass.getValue());
}
