// Gamut maps in files.
#include "xml/documents.h"

#include "transform/gamutMapOp.h"

#include <gtest/gtest.h>

#include <string>

using namespace XmlTest;
using Color::GamutMapOp;

namespace
{

std::string gamutMap(std::string const& attributes)
{
    return "<GamutMap inBitDepth='16f' outBitDepth='32f' " + attributes + "/>";
}

GamutMapOp::GamutMapStyle styleOf(std::string const& attributes)
{
    return onlyOp<GamutMapOp>(*transformOf(inRoot(gamutMap(attributes), "1.4"))).getStyle();
}

} // namespace

TEST(GamutMapElement, ReadsStylesInAnyCase)
{
    EXPECT_EQ(styleOf("style='none'"), GamutMapOp::GamutMapStyle::None);
    EXPECT_EQ(styleOf("style='dw3'"), GamutMapOp::GamutMapStyle::DW3);
    EXPECT_EQ(styleOf("STYLE='DW3'"), GamutMapOp::GamutMapStyle::DW3);
}

TEST(GamutMapElement, NeedsAStyle)
{
    EXPECT_EQ(failureOfFile(inRoot(gamutMap(""))),
              (Failure{0x420006, "Required attribute 'style' missing in 'GamutMap' line 1: <file>"}));
}

TEST(GamutMapElement, RefusesUnknownStyles)
{
    EXPECT_EQ(failureOfFile(inRoot(gamutMap("style='dw2'"))), (Failure{0x2e0001, "Unrecognized Gamut Map style: dw2"}));
    EXPECT_EQ(failureOfFile(inRoot(gamutMap("style=''"))), (Failure{0x2e0001, "Unrecognized Gamut Map style: "}));
}

TEST(GamutMapElement, StandsInVersionsFrom1_4)
{
    EXPECT_EQ(failureOfFile(inRoot(gamutMap("style='dw3'"), "1.3")).id, 0x42001dU);
    EXPECT_EQ(failureOfFile(inRoot(gamutMap("style='dw3'"), "1.4")).id, 0U);
}
