// Operators whose parameters stand in attributes or small elements, in files.
#include "xml/writing.h"

#include "transform/ops.h"

#include <gtest/gtest.h>

#include <limits>

using namespace Color;
using namespace Tavrin;
using XmlTest::contentOf;
using XmlTest::startTagOf;
using XmlTest::written;

namespace
{

using GammaStyle = GammaOp::GammaStyle;
using LogStyle = LogOp::LogStyle;

GammaOp gammaOp(GammaStyle style, GammaOp::Params const& red, GammaOp::Params const& green, GammaOp::Params const& blue,
                GammaOp::Params const& alpha)
{
    return {BIT_DEPTH_32f, BIT_DEPTH_32f, "", "", Descriptions(), style, red, green, blue, alpha};
}

LogOp logOp(LogStyle style, LogOp::Params const& red, LogOp::Params const& green, LogOp::Params const& blue)
{
    return {BIT_DEPTH_32f, BIT_DEPTH_32f, style, red, green, blue};
}

// The attribute of the styles without parameters to speak of, and of those that have them.
template <class AnyOp>
std::string styleOf(AnyOp const& op)
{
    std::string const tag = startTagOf(op);
    std::size_t const begin = tag.find("style=\"") + 7;
    return tag.substr(begin, tag.find('"', begin) - begin);
}

} // namespace

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

TEST(ReferenceWriter, WritesAnAliasOrAPath)
{
    ReferenceOp op;
    op.setPath("a/b & c.ctf", BASE_PATH_NONE);
    EXPECT_EQ(written(op), "<Reference inBitDepth=\"32f\" outBitDepth=\"32f\" path=\"a/b &amp; c.ctf\">\n</Reference>\n");
    op.setPath("b.ctf", BASE_PATH_VENDOR);
    EXPECT_EQ(startTagOf(op), "<Reference inBitDepth=\"32f\" outBitDepth=\"32f\" path=\"b.ctf\" basePath=\"Norvane\">");
    op.setPath("b.ctf", BASE_PATH_SHARED);
    EXPECT_EQ(startTagOf(op), "<Reference inBitDepth=\"32f\" outBitDepth=\"32f\" path=\"b.ctf\" basePath=\"Shared\">");
    op.setAlias("currentMonitor");
    EXPECT_EQ(startTagOf(op), "<Reference inBitDepth=\"32f\" outBitDepth=\"32f\" alias=\"currentMonitor\">");
}

// Also one whose alias was taken for another, and which knows its operators.
TEST(ReferenceWriter, WritesWhatItPointsAtAndNotWhatThatHolds)
{
    ReferenceOp op;
    op.setAlias("currentMonitor");
    op.resolveAlias(RESOLVE_GRAPHICS_MONITOR);
    OpList ops;
    ops.append(new MatrixOp());
    op.setResolvedOps(ops);
    EXPECT_EQ(written(op), "<Reference inBitDepth=\"32f\" outBitDepth=\"32f\" alias=\"currentMonitor\">\n</Reference>\n");
}

TEST(GammaWriter, WritesOneSetWhereAllColoursAreEqual)
{
    GammaOp::Params const same{2.4};
    EXPECT_EQ(written(gammaOp(GammaStyle::BasicFwd, same, same, same, {1.0})),
              "<Gamma inBitDepth=\"32f\" outBitDepth=\"32f\" style=\"basicFwd\">\n"
              "    <GammaParams gamma=\"2.4\" />\n"
              "</Gamma>\n");
}

TEST(GammaWriter, WritesASetForEachColour)
{
    EXPECT_EQ(contentOf(gammaOp(GammaStyle::BasicRev, {2.4}, {2.2}, {4.0 / 3.0}, {1.0})),
              "    <GammaParams channel=\"R\" gamma=\"2.4\" />\n"
              "    <GammaParams channel=\"G\" gamma=\"2.2\" />\n"
              "    <GammaParams channel=\"B\" gamma=\"1.33333\" />\n");
}

TEST(GammaWriter, WritesAlphaThatIsNoIdentityAndOffsetsWhereTheStyleHasThem)
{
    GammaOp::Params const same{2.4, 0.055};
    EXPECT_EQ(contentOf(gammaOp(GammaStyle::MoncurveFwd, same, same, same, {1.5, 0.1})),
              "    <GammaParams channel=\"R\" gamma=\"2.4\" offset=\"0.055\" />\n"
              "    <GammaParams channel=\"G\" gamma=\"2.4\" offset=\"0.055\" />\n"
              "    <GammaParams channel=\"B\" gamma=\"2.4\" offset=\"0.055\" />\n"
              "    <GammaParams channel=\"A\" gamma=\"1.5\" offset=\"0.1\" />\n");
    EXPECT_EQ(contentOf(gammaOp(GammaStyle::MoncurveRev, same, same, same, {1.0, 0.0})),
              "    <GammaParams gamma=\"2.4\" offset=\"0.055\" />\n");
}

TEST(GammaWriter, NamesItsStyles)
{
    GammaOp::Params const basic{2.0};
    GammaOp::Params const moncurve{2.0, 0.1};
    EXPECT_EQ(styleOf(gammaOp(GammaStyle::BasicRev, basic, basic, basic, {1.0})), "basicRev");
    EXPECT_EQ(styleOf(gammaOp(GammaStyle::MoncurveFwd, moncurve, moncurve, moncurve, {1.0, 0.0})), "moncurveFwd");
    EXPECT_EQ(styleOf(gammaOp(GammaStyle::MoncurveRev, moncurve, moncurve, moncurve, {1.0, 0.0})), "moncurveRev");
}

TEST(LogWriter, WritesParametersOfTheFilmStylesAlone)
{
    for (auto const& [style, name] : {std::pair(LogStyle::Log10, "log10"), std::pair(LogStyle::Log2, "log2"),
                                      std::pair(LogStyle::AntiLog10, "antiLog10"), std::pair(LogStyle::AntiLog2, "antiLog2")})
    {
        EXPECT_EQ(written(logOp(style, {}, {}, {})),
                  std::string("<Log inBitDepth=\"32f\" outBitDepth=\"32f\" style=\"") + name + "\">\n</Log>\n");
    }
    LogOp::Params const same{0.6, 685, 95, 1, 0.002};
    EXPECT_EQ(written(logOp(LogStyle::LogToLin, same, same, same)),
              "<Log inBitDepth=\"32f\" outBitDepth=\"32f\" style=\"logToLin\">\n"
              "    <LogParams gamma=\"0.6\" refWhite=\"685\" refBlack=\"95\" highlight=\"1\" shadow=\"0.002\" />\n"
              "</Log>\n");
    EXPECT_EQ(styleOf(logOp(LogStyle::LinToLog, same, same, same)), "linToLog");
}

TEST(LogWriter, WritesASetForEachColourWhereTheyDiffer)
{
    LogOp::Params const same{0.6, 685, 95, 1, 0};
    EXPECT_EQ(
        contentOf(logOp(LogStyle::LinToLog, same, {0.5, 700, 100, 0.75, 0.001}, same)),
        "    <LogParams channel=\"R\" gamma=\"0.6\" refWhite=\"685\" refBlack=\"95\" highlight=\"1\" shadow=\"0\" />\n"
        "    <LogParams channel=\"G\" gamma=\"0.5\" refWhite=\"700\" refBlack=\"100\" highlight=\"0.75\" shadow=\"0.001\" />\n"
        "    <LogParams channel=\"B\" gamma=\"0.6\" refWhite=\"685\" refBlack=\"95\" highlight=\"1\" shadow=\"0\" />\n");
}

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

TEST(CDLWriter, WritesItsNodes)
{
    CDLOp const op(BIT_DEPTH_32f, BIT_DEPTH_32f, "", "", Descriptions(), CDLOp::CDLStyle::V1_2Fwd, {1.1, 1, 0.9}, {-0.05, 0, 0.1},
                   {1, 1.2, 1.0 / 3.0}, 0.85);
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

TEST(DitherWriter, WritesItsDitherDepth)
{
    EXPECT_EQ(written(DitherOp(BIT_DEPTH_16i, BIT_DEPTH_8i, BIT_DEPTH_10i)),
              "<Dither inBitDepth=\"16i\" outBitDepth=\"8i\" ditherBitDepth=\"10i\">\n</Dither>\n");
}

TEST(GamutMapWriter, WritesItsStyle)
{
    EXPECT_EQ(written(GamutMapOp(BIT_DEPTH_32f, BIT_DEPTH_16f, GamutMapOp::GamutMapStyle::DW3)),
              "<GamutMap inBitDepth=\"32f\" outBitDepth=\"16f\" style=\"dw3\">\n</GamutMap>\n");
}

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
