// Hue vectors in files, and their parameters.
#include "xml/documents.h"

#include "transform/hueVectorOp.h"

#include <gtest/gtest.h>

#include <string>

using namespace XmlTest;
using Color::HueVectorOp;

namespace
{

std::string hueVector(std::string const& content, std::string const& style = "YCH_Fwd")
{
    return inRoot("<HueVector inBitDepth='16f' outBitDepth='16f' style='" + style + "'>\n" + content + "</HueVector>");
}

Failure failureOfParams(std::string const& attributes)
{
    return failureOfFile(hueVector("<HueVecParams " + attributes + "/>"));
}

constexpr char kParams[] = "<HueVecParams style='chroma' center='120' width='60.5' amount='1.25'/>";

} // namespace

TEST(HueVectorElement, ReadsStyleAndParameters)
{
    auto const transform = transformOf(hueVector(kParams, "ych_REV"));
    auto const& op = onlyOp<HueVectorOp>(*transform);
    EXPECT_EQ(op.getStyle(), HueVectorOp::HueVectorStyle::YCH_Rev);
    EXPECT_EQ(op.getParamStyle(), HueVectorOp::HueVectorParamStyle::Chroma);
    EXPECT_EQ(op.getParams(), (HueVectorOp::Params{120, 60.5, 1.25}));
}

TEST(HueVectorElement, ReadsParametersInAnyOrder)
{
    auto const transform = transformOf(hueVector("<HUEVECPARAMS Amount='3' Width='2' Center='1' Style='CHROMA'/>"));
    EXPECT_EQ(onlyOp<HueVectorOp>(*transform).getParams(), (HueVectorOp::Params{1, 2, 3}));
}

TEST(HueVectorElement, NeedsAStyle)
{
    EXPECT_EQ(failureOfFile(inRoot("<HueVector inBitDepth='16f' outBitDepth='16f'/>")),
              (Failure{0x420006, "Required attribute 'style' missing in 'HueVector' line 1: <file>"}));
    EXPECT_EQ(failureOfFile(hueVector(kParams, "YCH")), (Failure{0x2f0001, "Unrecognized Hue Vector style: YCH"}));
}

TEST(HueVectorElement, NeedsParameters)
{
    EXPECT_EQ(failureOfFile(hueVector("")), (Failure{0x2f0002, "The specified Hue Vector style must have 3 parameters"}));
}

TEST(HueVectorElement, ParametersNeedAStyle)
{
    EXPECT_EQ(failureOfParams("center='120' width='60' amount='1'"),
              (Failure{0x420006, "Required attribute 'hue vector parameter style' missing in 'HueVecParams' line 2: <file>"}));
}

TEST(HueVectorElement, RefusesParameterStylesThatNothingRenders)
{
    EXPECT_EQ(failureOfParams("style='Luma' center='120' width='60' amount='1'"),
              (Failure{0x2f0001, "Unrecognized Hue Vector style: luma"}));
    EXPECT_EQ(failureOfParams("style='hue'"), (Failure{0x2f0001, "Unrecognized Hue Vector style: hue"}));
    EXPECT_EQ(failureOfParams("style='other'"), (Failure{0x2f0001, "Unrecognized Hue Vector style: other"}));
}

TEST(HueVectorElement, NeedsEachNumber)
{
    EXPECT_EQ(failureOfParams("style='chroma'"),
              (Failure{0x420014, "Param 'center' required for style 'chroma', 'HueVecParams' line 2: <file>"}));
    EXPECT_EQ(failureOfParams("style='chroma' center='1'").words,
              "Param 'width' required for style 'chroma', 'HueVecParams' line 2: <file>");
    EXPECT_EQ(failureOfParams("style='chroma' center='1' width='1'").words,
              "Param 'amount' required for style 'chroma', 'HueVecParams' line 2: <file>");
}

TEST(HueVectorElement, RefusesWhatIsNoNumber)
{
    EXPECT_EQ(failureOfParams("style='chroma' center='x' width='1' amount='1'").id, 0x420008U);
    EXPECT_EQ(failureOfParams("style='chroma' center='nan' width='1' amount='1'").id, 0x420008U);
}

TEST(HueVectorElement, ChecksTheBoundsAtItsEnd)
{
    EXPECT_EQ(failureOfParams("style='chroma' center='120' width='1000.5' amount='1'"),
              (Failure{0x210012, "Parameter 1000.500000 > upper bound 1000.000000"}));
    EXPECT_EQ(failureOfParams("style='chroma' center='360' width='60' amount='1'"), Failure{});
}

TEST(HueVectorElement, ParametersStandInNoOtherOperator)
{
    // Passed over with a note in the log.
    EXPECT_EQ(
        failureOfFile(inRoot("<GamutMap inBitDepth='16f' outBitDepth='16f' style='dw3'>" + std::string(kParams) + "</GamutMap>")),
        Failure{});
}

TEST(HueVectorElement, StandsInVersionsFrom1_4)
{
    std::string const content =
        "<HueVector inBitDepth='16f' outBitDepth='16f' style='YCH_Fwd'>" + std::string(kParams) + "</HueVector>";
    EXPECT_EQ(failureOfFile(inRoot(content, "1.3")).id, 0x42001dU);
    EXPECT_EQ(failureOfFile(inRoot(content, "1.4")).id, 0U);
}
