// Ranges in files.
#include "xml/writing.h"

#include "transform/rangeOp.h"

#include <gtest/gtest.h>

using namespace Tavrin;
using Color::RangeOp;
using XmlTest::contentOf;

TEST(RangeWriter, WritesInputLimitsThenOutputLimits)
{
    double const none = RangeOp::emptyValue();
    EXPECT_EQ(contentOf(RangeOp(BIT_DEPTH_8i, BIT_DEPTH_16i, 1.5, 254, 257, 65535)), "    <minInValue>1.5</minInValue>\n"
                                                                                     "    <maxInValue>254</maxInValue>\n"
                                                                                     "    <minOutValue>257</minOutValue>\n"
                                                                                     "    <maxOutValue>65535</maxOutValue>\n");
    EXPECT_EQ(contentOf(RangeOp(BIT_DEPTH_32f, BIT_DEPTH_32f, 0.1, none, -0.25, none)), "    <minInValue>0.1</minInValue>\n"
                                                                                        "    <minOutValue>-0.25</minOutValue>\n");
    EXPECT_EQ(contentOf(RangeOp(BIT_DEPTH_32f, BIT_DEPTH_32f, none, 1, none, 2)), "    <maxInValue>1</maxInValue>\n"
                                                                                  "    <maxOutValue>2</maxOutValue>\n");
    EXPECT_EQ(contentOf(RangeOp(BIT_DEPTH_32f, BIT_DEPTH_8i, none, none, none, none)), "");
}
