// The root of a transform file and the texts that describe a transform.
#include "xml/documents.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

using namespace XmlTest;
using testing::ElementsAre;

namespace
{

Failure failureOfRoot(std::string const& attributes)
{
    return failureOfFile("<ProcessList\n" + attributes + ">" + kIdentityRange + "</ProcessList>");
}

std::shared_ptr<Color::Transform> transformOfRoot(std::string const& attributes)
{
    return transformOf("<ProcessList " + attributes + ">" + kIdentityRange + "</ProcessList>");
}

} // namespace

TEST(Root, TellsIdNameAndWhatItIsTheInverseOf)
{
    auto const transform = transformOfRoot("id='a' name='b &amp; c' inverseOf='d' other='e'");
    EXPECT_EQ(transform->getId(), "a");
    EXPECT_EQ(transform->getName(), "b & c");
    EXPECT_EQ(transform->getInverseOfId(), "d");
}

TEST(Root, NeedsAnId)
{
    EXPECT_EQ(failureOfRoot(" name='b'"),
              (Failure{0x420006, "Required attribute 'Identifier' missing in 'ProcessList' line 2: <file>"}));
    EXPECT_EQ(failureOfFile("<processlist/>"),
              (Failure{0x420006, "Required attribute 'Identifier' missing in 'ProcessList' line 1: <file>"}));
}

TEST(Root, HasNoEmptyAttributes)
{
    auto const empty = [](std::string const& name) {
        return Failure{0x420007, "Required attribute '" + name + "' empty in 'ProcessList' line 2: <file>"};
    };
    EXPECT_EQ(failureOfRoot(" id=''"), empty("Identifier"));
    EXPECT_EQ(failureOfRoot(" id='a' name=''"), empty("Name"));
    EXPECT_EQ(failureOfRoot(" id='a' inverseOf=''"), empty("InverseOf"));
    EXPECT_EQ(failureOfRoot(" id='a' version=''"), empty("Version"));
}

TEST(Root, TellsAVersionThatIsNoNumber)
{
    EXPECT_EQ(failureOfRoot(" id='a' version='new'"),
              (Failure{0x42001b, "Invalid transform version 'new' supplied at 'ProcessList' line 2: <file>"}));
    EXPECT_EQ(failureOfRoot(" id='a' version='v1.3'").id, 0x42001bU);
}

TEST(Root, TellsAVersionAboveTheNewest)
{
    EXPECT_EQ(failureOfRoot(" id='a' version='1.6'"),
              (Failure{0x42001c, "Unsupported transform file version '1.6' at 'ProcessList' line 2: <file>"}));
    EXPECT_EQ(failureOfRoot(" id='a' version='inf'"),
              (Failure{0x42001c, "Unsupported transform file version 'inf' at 'ProcessList' line 2: <file>"}));
    EXPECT_EQ(failureOfRoot(" id='a' version='1.50001'").id, 0x42001cU);
}

// It fails before any operator is read.
TEST(Root, TellsItsVersionBeforeItsOperatorsFaults)
{
    EXPECT_EQ(failureOfFile(inRoot("<Range/>", "1.6")).id, 0x42001cU);
}

TEST(Root, TakesVersionsAsTheyAreSpelled)
{
    for (std::string const version : {"1.5", "1.50", " 1.4", "1.3abc", "1.2", "1", "0", "-7", "1.5e0"})
        EXPECT_EQ(transformOfRoot("id='a' version='" + version + "'")->getOps().size(), 1U) << version;
}

// A version that is no number among the numbers knows no operator.
TEST(Root, OfVersionNanHasNoOperators)
{
    EXPECT_EQ(failureOfRoot(" id='a' version='nan'"),
              (Failure{0x42001d, "Unsupported transform file version 'nan' for Op 'Range' line 2: <file>"}));
}

TEST(Root, ValidatesTheTransformAtItsEnd)
{
    EXPECT_EQ(failureOfFile(
                  inRoot("<Range id='one' inBitDepth='8i' outBitDepth='10i'/><Range id='two' inBitDepth='12i' outBitDepth='8i'/>")),
              (Failure{0x26000a, "Bit depth mismatch between op 'one' and op 'two'"}));
}

TEST(Descriptions, AreOneEntryALine)
{
    auto const transform = transformOf(inRoot("<Description>one &amp;\n  two\n\n</Description>" + kIdentityRange +
                                              "<Description>three</Description><Description/>"));
    EXPECT_THAT(transform->getDescriptions().getList(), ElementsAre("one &", "two", "three"));
}

TEST(Descriptions, AreReadInAnyOrderWithOperators)
{
    auto const transform = transformOf(inRoot("<OutputDescriptor>out</OutputDescriptor>" + kIdentityRange +
                                              "<InputDescriptor>in</InputDescriptor><Description>d</Description>"));
    EXPECT_EQ(transform->getInputDescriptor(), "in");
    EXPECT_EQ(transform->getOutputDescriptor(), "out");
    EXPECT_THAT(transform->getDescriptions().getList(), ElementsAre("d"));
}

TEST(Descriptors, JoinTheirLinesWithNothingBetween)
{
    auto const transform = transformOf(inRoot("<InputDescriptor> scene \n linear\n</InputDescriptor>"
                                              "<OutputDescriptor>a\nb</OutputDescriptor><OutputDescriptor>c</OutputDescriptor>" +
                                              kIdentityRange));
    EXPECT_EQ(transform->getInputDescriptor(), "scenelinear");
    EXPECT_EQ(transform->getOutputDescriptor(), "abc");
}

TEST(Descriptors, FromABufferAreTheSame)
{
    auto const transform = readBuffer(inRoot("<InputDescriptor> scene \n linear\n</InputDescriptor>")).transform;
    EXPECT_EQ(transform->getInputDescriptor(), "scenelinear");
}
