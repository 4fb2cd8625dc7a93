// Gammas in files.
#include "xml/writing.h"

#include "transform/gammaOp.h"

#include <gtest/gtest.h>

using namespace Tavrin;
using Color::GammaOp;
using XmlTest::contentOf;
using XmlTest::styleOf;
using XmlTest::written;

namespace
{

using GammaStyle = GammaOp::GammaStyle;

GammaOp gammaOp(GammaStyle style, GammaOp::Params const& red, GammaOp::Params const& green, GammaOp::Params const& blue,
                GammaOp::Params const& alpha)
{
    return {BIT_DEPTH_32f, BIT_DEPTH_32f, "", "", Color::Descriptions(), style, red, green, blue, alpha};
}

} // namespace

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
