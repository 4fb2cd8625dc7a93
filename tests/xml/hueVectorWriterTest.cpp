// Hue vectors in files.
#include "xml/writing.h"

#include "transform/hueVectorOp.h"

#include <gtest/gtest.h>

using namespace Tavrin;
using Color::HueVectorOp;
using XmlTest::styleOf;
using XmlTest::written;

TEST(HueVectorWriter, WritesItsParameters)
{
    using Style = HueVectorOp::HueVectorStyle;
    HueVectorOp const op(BIT_DEPTH_32f, BIT_DEPTH_32f, Style::YCH_Fwd, HueVectorOp::HueVectorParamStyle::Chroma, {120.5, 60, 1.2});
    EXPECT_EQ(written(op), "<HueVector inBitDepth=\"32f\" outBitDepth=\"32f\" style=\"YCH_Fwd\">\n"
                           "    <HueVecParams style=\"chroma\" center=\"120.5\" width=\"60\" amount=\"1.2\" />\n"
                           "</HueVector>\n");
    HueVectorOp reverse = op;
    reverse.setStyle(Style::YCH_Rev);
    EXPECT_EQ(styleOf(reverse), "YCH_Rev");
}
