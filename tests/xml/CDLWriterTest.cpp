// Colour decisions in files.
#include "xml/writing.h"

#include "transform/CDLOp.h"

#include <gtest/gtest.h>

using namespace Tavrin;
using Color::CDLOp;
using XmlTest::styleOf;
using XmlTest::written;

TEST(CDLWriter, WritesItsNodes)
{
    CDLOp const op(BIT_DEPTH_32f, BIT_DEPTH_32f, "", "", Color::Descriptions(), CDLOp::CDLStyle::V1_2Fwd, {1.1, 1, 0.9},
                   {-0.05, 0, 0.1}, {1, 1.2, 1.0 / 3.0}, 0.85);
    EXPECT_EQ(written(op), "<ASC_CDL inBitDepth=\"32f\" outBitDepth=\"32f\" style=\"v1.2_Fwd\">\n"
                           "    <SOPNode>\n"
                           "        <Slope>1.1, 1, 0.9</Slope>\n"
                           "        <Offset>-0.05, 0, 0.1</Offset>\n"
                           "        <Power>1, 1.2, 0.333333</Power>\n"
                           "    </SOPNode>\n"
                           "    <SatNode>\n"
                           "        <Saturation>0.85</Saturation>\n"
                           "    </SatNode>\n"
                           "</ASC_CDL>\n");
}

TEST(CDLWriter, NamesItsStyles)
{
    auto const nameOf = [](CDLOp::CDLStyle style)
    {
        CDLOp op;
        op.setCDLStyle(style);
        return styleOf(op);
    };
    EXPECT_EQ(nameOf(CDLOp::CDLStyle::V1_2Rev), "v1.2_Rev");
    EXPECT_EQ(nameOf(CDLOp::CDLStyle::NoClampFwd), "noClampFwd");
    EXPECT_EQ(nameOf(CDLOp::CDLStyle::NoClampRev), "noClampRev");
}
