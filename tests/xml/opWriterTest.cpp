// What all operators have in files.
#include "xml/writing.h"

#include "transform/ops.h"
#include "transform/testOps.h"

#include <gtest/gtest.h>

#include <limits>

using namespace Color;
using namespace Tavrin;
using XmlTest::contentOf;
using XmlTest::startTagOf;
using XmlTest::written;

namespace
{

float versionOf(Op const& op)
{
    std::ostringstream stream;
    Xml::Writer::Formatter formatter(stream);
    return Xml::Writer::createOpWriter(formatter, op)->getMinimumVersion();
}

GammaOp gammaWithAlpha(double alpha)
{
    return {BIT_DEPTH_32f, BIT_DEPTH_32f, "", "", Descriptions(), GammaOp::GammaStyle::BasicFwd, {2.0}, {2.0}, {2.0}, {alpha}};
}

TEST(OpWriter, WritesTheAttributesOfAllOperatorsInOrder)
{
    RangeOp op(BIT_DEPTH_8i, BIT_DEPTH_16f, RangeOp::emptyValue(), RangeOp::emptyValue(), RangeOp::emptyValue(),
               RangeOp::emptyValue());
    EXPECT_EQ(written(op), "<Range inBitDepth=\"8i\" outBitDepth=\"16f\">\n</Range>\n");
    op.setName("a \"name\"");
    op.setId("an id");
    op.setBypass(bypass(true, false));
    EXPECT_EQ(startTagOf(op),
              "<Range id=\"an id\" name=\"a &quot;name&quot;\" inBitDepth=\"8i\" outBitDepth=\"16f\" bypass=\"true\">");
}

TEST(OpWriter, WritesEveryDepth)
{
    for (char const* const name : {"8i", "10i", "12i", "16i", "16f", "32f"})
    {
        GamutMapOp const op(getBitDepth(name), BIT_DEPTH_8i, GamutMapOp::GamutMapStyle::None);
        EXPECT_EQ(startTagOf(op), std::string("<GamutMap inBitDepth=\"") + name + "\" outBitDepth=\"8i\" style=\"none\">");
    }
}

TEST(OpWriter, WritesDescriptionsThenTheDynamicBypassThenItsOwn)
{
    RangeOp op(BIT_DEPTH_32f, BIT_DEPTH_32f, 0.0, RangeOp::emptyValue(), 0.0, RangeOp::emptyValue());
    op.getDescriptions() += "first";
    op.getDescriptions() += "second & last";
    op.setBypass(bypass(false, true));
    EXPECT_EQ(written(op), "<Range inBitDepth=\"32f\" outBitDepth=\"32f\">\n"
                           "    <Description>first</Description>\n"
                           "    <Description>second &amp; last</Description>\n"
                           "    <DynamicParameter param=\"LOOK_SWITCH\" />\n"
                           "    <minInValue>0</minInValue>\n"
                           "    <minOutValue>0</minOutValue>\n"
                           "</Range>\n");
}

TEST(OpWriter, WritesADynamicBypassThatIsSetAsBoth)
{
    GamutMapOp op;
    op.setBypass(bypass(true, true));
    EXPECT_EQ(startTagOf(op), "<GamutMap inBitDepth=\"32f\" outBitDepth=\"32f\" bypass=\"true\" style=\"none\">");
    EXPECT_EQ(contentOf(op), "    <DynamicParameter param=\"LOOK_SWITCH\" />\n");
}

TEST(OpWriter, StatesTheVersionThatAnOperatorNeeds)
{
    EXPECT_EQ(versionOf(MatrixOp()), 1.3F);
    EXPECT_EQ(versionOf(RangeOp()), 1.3F);
    EXPECT_EQ(versionOf(ReferenceOp()), 1.3F);
    EXPECT_EQ(versionOf(Lut3DOp(2U)), 1.3F);
    EXPECT_EQ(versionOf(ExposureContrastOp()), 1.3F);
    EXPECT_EQ(versionOf(LogOp()), 1.3F);
    EXPECT_EQ(versionOf(CDLOp()), 1.3F);
    EXPECT_EQ(versionOf(GamutMapOp()), 1.4F);
    EXPECT_EQ(versionOf(HueVectorOp()), 1.4F);
    EXPECT_EQ(versionOf(InvLut1DOp()), 1.3F);

    Lut1DOp lut(2U);
    EXPECT_EQ(versionOf(lut), 1.3F);
    lut.setHueAdjust(Lut1DOp::HueAdjust::Dw3);
    EXPECT_EQ(versionOf(lut), 1.4F);

    EXPECT_EQ(versionOf(gammaWithAlpha(1.0)), 1.3F);
    EXPECT_EQ(versionOf(gammaWithAlpha(2.0)), 1.5F);
}

// Reading takes it from 1.3 on.
TEST(OpWriter, StatesMoreForADitherThanReadingAsksFor)
{
    DitherOp const op(BIT_DEPTH_16i, BIT_DEPTH_8i, BIT_DEPTH_8i);
    EXPECT_EQ(versionOf(op), 1.4F);
    EXPECT_EQ(op.getMinimumVersion(), 1.3F);
}

} // namespace
