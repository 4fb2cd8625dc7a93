// Gamut maps in files.
#include "xml/writing.h"

#include "transform/gamutMapOp.h"

#include <gtest/gtest.h>

using namespace Tavrin;
using Color::GamutMapOp;
using XmlTest::written;

TEST(GamutMapWriter, WritesItsStyle)
{
    EXPECT_EQ(written(GamutMapOp(BIT_DEPTH_32f, BIT_DEPTH_16f, GamutMapOp::GamutMapStyle::DW3)),
              "<GamutMap inBitDepth=\"32f\" outBitDepth=\"16f\" style=\"dw3\">\n</GamutMap>\n");
}
