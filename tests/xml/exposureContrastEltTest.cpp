// Exposure and contrast in files.
#include "xml/opDocuments.h"

#include "transform/exposureContrastOp.h"

#include <gtest/gtest.h>

using namespace XmlTest;
using Color::ExposureContrastOp;

namespace
{

std::string ec(std::string const& content, std::string const& style = "linear")
{
    return opDocument("1.3", "ExposureContrast", "style='" + style + "'", content);
}

std::string const kParams = "<ECParams exposure='0.5' contrast='1.25' pivot='0.2'/>";

} // namespace

TEST(ExposureContrastElement, ReadsItsNumbers)
{
    ExposureContrastOp const op = readOp<ExposureContrastOp>(ec(kParams, "LOG"));
    EXPECT_EQ(op.getStyle(), ExposureContrastOp::Style::Log);
    EXPECT_EQ(op.getExposure()->getValue(), 0.5);
    EXPECT_EQ(op.getContrast()->getValue(), 1.25);
    EXPECT_EQ(op.getPivot(), 0.2);
    EXPECT_FALSE(op.isDynamic());
}

TEST(ExposureContrastElement, MakesItsValuesDynamic)
{
    ExposureContrastOp const op = readOp<ExposureContrastOp>(ec("<DynamicParameter param='exposure'/>" + kParams));
    EXPECT_TRUE(op.getExposure()->isDynamic());
    EXPECT_FALSE(op.getContrast()->isDynamic());
    EXPECT_FALSE(op.getBypass()->isDynamic());
    EXPECT_EQ(op.getExposure()->getValue(), 0.5);
    EXPECT_TRUE(readOp<ExposureContrastOp>(ec("<DynamicParameter param='CONTRAST'/>")).getContrast()->isDynamic());
    EXPECT_TRUE(readOp<ExposureContrastOp>(ec("<DynamicParameter param='LOOK_SWITCH'/>")).getBypass()->isDynamic());
}

TEST(ExposureContrastElement, OtherOperatorsHaveNoExposure)
{
    EXPECT_EQ(failureOfDocument(opDocument("1.3", "Range", "", "<DynamicParameter param='EXPOSURE'/>")),
              (Failure{0x420019, "Invalid dynamic parameter 'EXPOSURE' for op 'Range'"}));
    EXPECT_EQ(failureOfDocument(ec("<DynamicParameter param='PIVOT'/>")),
              (Failure{0x420019, "Invalid dynamic parameter 'PIVOT' for op 'Exposure/Contrast'"}));
}

TEST(ExposureContrastElement, TellsTheFirstNumberThatIsMissing)
{
    EXPECT_EQ(failureOfDocument(ec("<ECParams pivot='0.18'/>")),
              (Failure{0x420014, "Param 'exposure' required for style 'linear', 'ECParams' line 0: "}));
    EXPECT_EQ(failureOfDocument(ec("<ECParams exposure='0' contrast='1'/>", "video")),
              (Failure{0x420014, "Param 'pivot' required for style 'video', 'ECParams' line 0: "}));
}

TEST(ExposureContrastElement, WantsAStyleThatItKnows)
{
    EXPECT_EQ(failureOfDocument(opDocument("1.3", "ExposureContrast", "", "")),
              (Failure{0x420006, "Required attribute 'style' missing in 'Exposure/Contrast' line 0: "}));
    EXPECT_EQ(failureOfDocument(ec("", "film")), (Failure{0x2a0001, "Unrecognized E/C style: film"}));
}

TEST(ExposureContrastElement, StandsAtRestWithoutNumbers)
{
    EXPECT_TRUE(readOp<ExposureContrastOp>(ec("")).isIdentity());
}
