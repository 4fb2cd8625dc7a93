// Exposure and contrast in files.
#include "xml/writing.h"

#include "transform/exposureContrastOp.h"

#include <gtest/gtest.h>

#include <limits>

using namespace Tavrin;
using Color::ExposureContrastOp;
using XmlTest::contentOf;
using XmlTest::styleOf;
using XmlTest::written;

TEST(ExposureContrastWriter, WritesItsNumbersAndWhatMayChange)
{
    ExposureContrastOp op(BIT_DEPTH_32f, BIT_DEPTH_32f, ExposureContrastOp::Style::Video);
    op.getExposure()->setValue(-0.5);
    op.getContrast()->setValue(1.25);
    op.setPivot(0.18);
    EXPECT_EQ(written(op), "<ExposureContrast inBitDepth=\"32f\" outBitDepth=\"32f\" style=\"video\">\n"
                           "    <ECParams exposure=\"-0.5\" contrast=\"1.25\" pivot=\"0.18\" />\n"
                           "</ExposureContrast>\n");
    op.getContrast()->setDynamic(true);
    EXPECT_EQ(contentOf(op), "    <ECParams exposure=\"-0.5\" contrast=\"1.25\" pivot=\"0.18\" />\n"
                             "    <DynamicParameter param=\"CONTRAST\" />\n");
    op.getExposure()->setDynamic(true);
    op.setPivot(std::numeric_limits<double>::infinity());
    EXPECT_EQ(contentOf(op), "    <ECParams exposure=\"-0.5\" contrast=\"1.25\" pivot=\"inf\" />\n"
                             "    <DynamicParameter param=\"EXPOSURE\" />\n"
                             "    <DynamicParameter param=\"CONTRAST\" />\n");
    EXPECT_EQ(styleOf(ExposureContrastOp(BIT_DEPTH_32f, BIT_DEPTH_32f, ExposureContrastOp::Style::Log)), "log");
    EXPECT_EQ(styleOf(ExposureContrastOp(BIT_DEPTH_32f, BIT_DEPTH_32f, ExposureContrastOp::Style::Linear)), "linear");
}
