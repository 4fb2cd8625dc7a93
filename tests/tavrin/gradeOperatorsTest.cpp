// Gamma, logarithm, colour decision and exposure/contrast as a caller meets them: how they are displayed, and values that change.
#include "contentRecorder.h"

#include <gmock/gmock.h>

#include <string>
#include <vector>

namespace
{

using testing::ElementsAre;

Tavrin::TransformPtr load(std::string const& op)
{
    Tavrin::TransformPtr transform;
    std::string const document =
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<ProcessList id=\"a\" version=\"1.5\">" + op + "</ProcessList>";
    EXPECT_EQ(Tavrin::loadColorTransformFromBuffer(document.c_str(), transform).getErrorCode(), 0U);
    return transform;
}

std::string element(std::string const& tag, std::string const& style, std::string const& content)
{
    return "<" + tag + " inBitDepth='32f' outBitDepth='32f' style='" + style + "'>" + content + "</" + tag + ">";
}

DisplayedOp display(std::string const& op)
{
    return displayedOp(load(op));
}

} // namespace

TEST(GradeDisplay, TellsGammaAndOffsetOfEachChannel)
{
    DisplayedOp const basic = display(element("Gamma", "basicRev", "<GammaParams gamma='2.2'/>"));
    EXPECT_EQ(basic.name, "Gamma");
    EXPECT_THAT(basic.own, ElementsAre("Gamma Style: basicRev", "gamma:       2.2000", "gamma:       2.2000", "gamma:       2.2000",
                                       "gamma:       1.0000"));
    DisplayedOp const moncurve = display(element("Gamma", "moncurveFwd", "<GammaParams gamma='2.4' offset='0.055'/>"));
    EXPECT_THAT(moncurve.own, ElementsAre("Gamma Style: moncurveFwd", "gamma:       2.4000", "offset:       0.0550",
                                          "gamma:       2.4000", "offset:       0.0550", "gamma:       2.4000",
                                          "offset:       0.0550", "gamma:       1.0000", "offset:       0.0000"));
}

TEST(GradeDisplay, TellsTheParametersOfTheFilmModel)
{
    EXPECT_THAT(display(element("Log", "log2", "")).own, ElementsAre("Log Style: log2"));
    DisplayedOp const film =
        display(element("Log", "linToLog", "<LogParams gamma='0.6' refWhite='685' refBlack='95' highlight='1' shadow='0.00005'/>"));
    EXPECT_EQ(film.name, "Log");
    EXPECT_THAT(film.own,
                ElementsAre("Log Style: linToLog", "RefWhite:     685.0000    685.0000    685.0000",
                            "RefBlack:      95.0000     95.0000     95.0000", "Highlight:       1.0000      1.0000      1.0000",
                            "Shadow:   5.0000e-05  5.0000e-05  5.0000e-05", "Gamma:       0.6000      0.6000      0.6000"));
}

TEST(GradeDisplay, TellsSlopeOffsetPowerAndSaturation)
{
    DisplayedOp const cdl =
        display(element("ASC_CDL", "noClampFwd",
                        "<SOPNode><Slope>1.5 1 0.5</Slope><Offset>-0.25 0 0.25</Offset><Power>1 2 3</Power></SOPNode>"
                        "<SatNode><Saturation>0.75</Saturation></SatNode>"));
    EXPECT_EQ(cdl.name, "ASC CDL");
    EXPECT_THAT(cdl.own, ElementsAre("CDL Style: noClampFwd", "Slope:       1.5000      1.0000      0.5000",
                                     "Offset:      -0.2500      0.0000      0.2500", "Power:       1.0000      2.0000      3.0000",
                                     "Saturation:       0.7500"));
}

TEST(GradeDisplay, TellsExposureContrastAndPivot)
{
    DisplayedOp const ec = display(element("ExposureContrast", "video", "<ECParams exposure='0.5' contrast='1.25' pivot='0.2'/>"));
    EXPECT_EQ(ec.name, "Exposure/Contrast");
    EXPECT_THAT(ec.own, ElementsAre("E/C Style: video", "Exposure:       0.5000", "Contrast:       1.2500", "Gamma:       1.0000",
                                    "Pivot:       0.2000"));
}

namespace
{

using Tavrin::DynamicProperty;

std::string const kDynamic = element("ExposureContrast", "linear",
                                     "<ECParams exposure='0' contrast='1' pivot='0.18'/>"
                                     "<DynamicParameter param='EXPOSURE'/><DynamicParameter param='CONTRAST'/>"
                                     "<DynamicParameter param='LOOK_SWITCH'/>");

float renderGrey(Tavrin::TransformPtr const& transform)
{
    std::vector<float> const in = {0.25F, 0.25F, 0.25F, 1.0F};
    std::vector<float> out(4);
    EXPECT_EQ(transform->applyCPU(in.data(), Tavrin::ROI(0, 0, 1, 1), out.data()).getErrorCode(), 0U);
    return out[0];
}

// Values that are at rest stay changeable.
void finalize(Tavrin::TransformPtr const& transform)
{
    Tavrin::OptimizerFlags const flags = Tavrin::OPTIMIZER_DEFAULT_THRESHOLD | Tavrin::OPTIMIZER_KEEP_DYNAMIC;
    EXPECT_EQ(transform->finalize(Tavrin::PF_RGBA_32f, Tavrin::PF_RGBA_32f, Tavrin::RENDERER_CPU, flags, 0).getErrorCode(), 0U);
}

} // namespace

TEST(DynamicGrade, ValuesSetOnATransformReachItsCloneWithoutFinalize)
{
    Tavrin::TransformPtr const transform = load(kDynamic);
    Tavrin::TransformPtr const clone = transform->clone();
    finalize(transform);
    finalize(clone);
    EXPECT_FLOAT_EQ(renderGrey(clone), 0.25F);
    ASSERT_EQ(transform->setDynamicProperty({DynamicProperty::EXPOSURE, 1.0}).getErrorCode(), 0U);
    EXPECT_FLOAT_EQ(renderGrey(transform), 0.5F);
    EXPECT_FLOAT_EQ(renderGrey(clone), 0.5F);
    ASSERT_EQ(clone->setDynamicProperty({DynamicProperty::BYPASS, true}).getErrorCode(), 0U);
    EXPECT_EQ(renderGrey(transform), 0.25F);
    DynamicProperty property(DynamicProperty::EXPOSURE, 0.0);
    ASSERT_EQ(clone->getDynamicProperty(property).getErrorCode(), 0U);
    EXPECT_EQ(static_cast<double>(property.value), 1.0);
}

TEST(DynamicGrade, ContrastTurnsAroundThePivot)
{
    Tavrin::TransformPtr const transform = load(kDynamic);
    finalize(transform);
    ASSERT_EQ(transform->setDynamicProperty({DynamicProperty::CONTRAST, 2.0}).getErrorCode(), 0U);
    // The power is a polynomial of four digits.
    EXPECT_NEAR(renderGrey(transform), 0.25 * 0.25 / 0.18, 1e-4);
}
