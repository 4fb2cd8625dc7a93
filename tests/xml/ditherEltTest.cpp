// Dithers in files.
#include "xml/documents.h"

#include "transform/ditherOp.h"

#include <gtest/gtest.h>

#include <string>

using namespace XmlTest;
using Color::DitherOp;

namespace
{

std::string dither(std::string const& attributes)
{
    return "<Dither inBitDepth='16i' outBitDepth='8i' " + attributes + "/>";
}

} // namespace

TEST(DitherElement, ReadsTheDitherDepth)
{
    auto const transform = transformOf(inRoot(dither("id='i' ditherBitDepth='10i'"), "1.3"));
    auto const& op = onlyOp<DitherOp>(*transform);
    EXPECT_EQ(op.getDitherBitDepth(), Tavrin::BIT_DEPTH_10i);
    EXPECT_EQ(op.getInputBitDepth(), Tavrin::BIT_DEPTH_16i);
    EXPECT_EQ(op.getOutputBitDepth(), Tavrin::BIT_DEPTH_8i);
    EXPECT_EQ(op.getId(), "i");
}

TEST(DitherElement, ReadsAttributeNamesInAnyCase)
{
    auto const transform = transformOf(inRoot(dither("DITHERBITDEPTH='8i'")));
    EXPECT_EQ(onlyOp<DitherOp>(*transform).getDitherBitDepth(), Tavrin::BIT_DEPTH_8i);
}

TEST(DitherElement, NeedsADitherDepth)
{
    EXPECT_EQ(failureOfFile(inRoot(dither(""))),
              (Failure{0x420006, "Required attribute 'Dither Bit Depth' missing in 'Dither' line 1: <file>"}));
}

TEST(DitherElement, RefusesADepthThatThereIsNot)
{
    EXPECT_EQ(failureOfFile(inRoot(dither("ditherBitDepth='9i'"))),
              (Failure{0x420009, "Illegal 'Dither Bit Depth' attribute '9i' in 'Dither' line 1: <file>"}));
    EXPECT_EQ(failureOfFile(inRoot(dither("ditherBitDepth=''"))).id, 0x420009U);
    EXPECT_EQ(failureOfFile(inRoot(dither("ditherBitDepth='8I'"))).id, 0x420009U);
}

TEST(DitherElement, TellsWhatIsWrongWithCommonAttributesFirst)
{
    EXPECT_EQ(failureOfFile(inRoot("<Dither outBitDepth='8i'/>")).words,
              "Required attribute 'Input Bit Depth' missing in 'Dither' line 1: <file>");
}

TEST(DitherElement, StandsInVersionsFrom1_3)
{
    EXPECT_EQ(failureOfFile(inRoot(dither("ditherBitDepth='8i'"), "1.2")).id, 0x42001dU);
    EXPECT_EQ(failureOfFile(inRoot(dither("ditherBitDepth='8i'"), "1.3")).id, 0U);
    EXPECT_EQ(failureOfFile(inRoot(dither("ditherBitDepth='8i'"), "1.5")).id, 0U);
}

TEST(DitherElement, MayBeSwitchedWhileItRenders)
{
    auto const transform = transformOf(inRoot("<Dither inBitDepth='16i' outBitDepth='8i' ditherBitDepth='8i'>"
                                              "<DynamicParameter param='LOOK_SWITCH'/></Dither>"));
    EXPECT_TRUE(onlyOp<DitherOp>(*transform).isDynamic());
}
