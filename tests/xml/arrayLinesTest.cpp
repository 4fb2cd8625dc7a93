// Lines of numbers, which reach an element without the parser, mean the same as lines that go through it.
#include "transform/lut1DOp.h"
#include "xml/documents.h"

#include <gmock/gmock.h>

using namespace XmlTest;
using Color::Lut1DOp;
using testing::ElementsAre;

namespace
{

// An array of one row, with the opening tag on line 1 and these lines from line 2 on.
std::string document(std::string const& lines)
{
    return inRoot("<LUT1D inBitDepth='32f' outBitDepth='32f'><Array dim='1 3'>\n" + lines + "</Array></LUT1D>");
}

Color::Array::Values valuesOf(std::string const& lines)
{
    auto const transform = transformOf(document(lines));
    return onlyOp<Lut1DOp>(*transform).getArray().getValues();
}

} // namespace

TEST(LinesOfNumbers, MayEndInEitherKindOfBreak)
{
    EXPECT_THAT(valuesOf("1\n2\n3\n"), ElementsAre(1, 2, 3));
    EXPECT_THAT(valuesOf("1\r\n2\r\n3\r\n"), ElementsAre(1, 2, 3));
    EXPECT_THAT(valuesOf("\r\n \t\n1 2\r\n\n+3e0,\n"), ElementsAre(1, 2, 3));
}

TEST(LinesOfNumbers, InACommentAreNone)
{
    EXPECT_THAT(valuesOf("1\n<!--\n7\n8\n9\n-->\n2\n3\n"), ElementsAre(1, 2, 3));
    EXPECT_THAT(valuesOf("1\n2<!-- 7\n8\n-->\n3"), ElementsAre(1, 2, 3));
    EXPECT_THAT(valuesOf("1\n2 <?x 7\n8\n?>\n3"), ElementsAre(1, 2, 3));
}

TEST(LinesOfNumbers, InASectionOfCharacterDataCount)
{
    EXPECT_THAT(valuesOf("<![CDATA[1\n2\n]]>\n3\n"), ElementsAre(1, 2, 3));
}

TEST(LinesOfNumbers, WithinATagBelongToIt)
{
    auto const transform =
        transformOf("<ProcessList id='\n12\n'\n>\n<LUT1D inBitDepth='32f'\n outBitDepth='32f'><Array dim='\n1\n 3'>"
                    "1 2\n3\n</Array></LUT1D></ProcessList>");
    EXPECT_EQ(transform->getId(), "12");
    EXPECT_THAT(onlyOp<Lut1DOp>(*transform).getArray().getValues(), ElementsAre(1, 2, 3));
}

TEST(LinesOfNumbers, AreCounted)
{
    EXPECT_EQ(failureOfFile(document("1\n2\n3\n4\n")),
              (Failure{0x42000c, "Expected 1x3 Array, found additional values in 'LUT 1D' line 5: <file>"}));
    EXPECT_EQ(failureOfFile(document("1\r\n2\r\n- +\r\n")), (Failure{0x42000e, "Illegal values '- +' in 'LUT 1D' line 4: <file>"}));
    EXPECT_EQ(failureOfFile(document("1\n2\n<a b>\n")),
              (Failure{0x420001, "XML Parsing error (not well-formed (invalid token)) line 4: <file>"}));
}

TEST(LinesOfNumbers, AreTextOfOtherElementsToo)
{
    auto const transform = transformOf(inRoot("<Description>\n12\n 34 \n</Description>\n" + kIdentityRange));
    EXPECT_THAT(transform->getDescriptions().getList(), ElementsAre("12", "34"));
}

TEST(LinesOfNumbers, InAnElementThatIsPassedOverAreToo)
{
    auto const transform = transformOf(inRoot("<Unknown>\n12\n</Unknown>\n" + kIdentityRange));
    EXPECT_EQ(transform->getOps().size(), 1U);
}

TEST(LinesOfNumbers, OutsideTheRootAreNoDocument)
{
    EXPECT_NE(failureOfFile("12\n" + inRoot(kIdentityRange)).id, 0U);
}
