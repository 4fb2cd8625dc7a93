// Dithers in files.
#include "xml/writing.h"

#include "transform/ditherOp.h"

#include <gtest/gtest.h>

using namespace Tavrin;
using Color::DitherOp;
using XmlTest::written;

TEST(DitherWriter, WritesItsDitherDepth)
{
    EXPECT_EQ(written(DitherOp(BIT_DEPTH_16i, BIT_DEPTH_8i, BIT_DEPTH_10i)),
              "<Dither inBitDepth=\"16i\" outBitDepth=\"8i\" ditherBitDepth=\"10i\">\n</Dither>\n");
}
