// Gammas in files.
#include "xml/opDocuments.h"

#include "transform/gammaOp.h"

#include <gtest/gtest.h>

using namespace XmlTest;
using Color::GammaOp;
using Params = GammaOp::Params;
using Style = GammaOp::GammaStyle;

namespace
{

std::string gamma(std::string const& style, std::string const& content, std::string const& version = "1.5")
{
    return opDocument(version, "Gamma", "style='" + style + "'", content);
}

} // namespace

TEST(GammaElement, ReadsOneGammaForAllColours)
{
    GammaOp const op = readOp<GammaOp>(gamma("BASICFWD", "<GammaParams gamma='2.2'/>"));
    EXPECT_EQ(op.getGammaStyle(), Style::BasicFwd);
    EXPECT_EQ(op.getInputBitDepth(), Tavrin::BIT_DEPTH_8i);
    EXPECT_EQ(op.getOutputBitDepth(), Tavrin::BIT_DEPTH_10i);
    EXPECT_EQ(op.getRedParams(), Params{2.2});
    EXPECT_EQ(op.getGreenParams(), Params{2.2});
    EXPECT_EQ(op.getBlueParams(), Params{2.2});
    EXPECT_EQ(op.getAlphaParams(), Params{1.0});
}

TEST(GammaElement, ReadsEachChannelAlone)
{
    GammaOp const op = readOp<GammaOp>(gamma("moncurveRev", "<GammaParams channel='R' gamma='2' offset='0.1'/>"
                                                            "<gammaparams channel='g' gamma='3' offset='0.2'/>"
                                                            "<GammaParams channel='B' gamma='4' offset='0.3'/>"
                                                            "<GammaParams channel='a' gamma='5' offset='0.4'/>"));
    EXPECT_EQ(op.getRedParams(), (Params{2.0, 0.1}));
    EXPECT_EQ(op.getGreenParams(), (Params{3.0, 0.2}));
    EXPECT_EQ(op.getBlueParams(), (Params{4.0, 0.3}));
    EXPECT_EQ(op.getAlphaParams(), (Params{5.0, 0.4}));
}

TEST(GammaElement, FillsAMissingAlphaWithTheIdentity)
{
    std::string const colours = "<GammaParams channel='R' gamma='2' offset='0.1'/><GammaParams channel='G' gamma='2' offset='0.1'/>"
                                "<GammaParams channel='B' gamma='2' offset='0.1'/>";
    for (char const* version : {"1.2", "1.3", "1.4", "1.5"})
        EXPECT_EQ(readOp<GammaOp>(gamma("moncurveFwd", colours, version)).getAlphaParams(), (Params{1.0, 0.0})) << version;
}

TEST(GammaElement, HasNoAlphaBeforeVersion15)
{
    EXPECT_EQ(failureOfDocument(gamma("basicFwd", "<GammaParams channel='A' gamma='2'/>", "1.4")),
              (Failure{0x420013, "Illegal 'GammaParams' channel attribute 'A' line 0: "}));
    EXPECT_EQ(failureOfDocument(gamma("basicFwd", "<GammaParams channel='RGB' gamma='2'/>")).id, 0x420013U);
}

TEST(GammaElement, WantsAStyleThatItKnows)
{
    EXPECT_EQ(failureOfDocument(opDocument("1.5", "Gamma", "", "")),
              (Failure{0x420006, "Required attribute 'style' missing in 'Gamma' line 0: "}));
    EXPECT_EQ(failureOfDocument(gamma("sqrt", "")), (Failure{0x290001, "Unrecognized Gamma style: sqrt"}));
}

TEST(GammaElement, TellsNumbersThatAreMissingOrHaveNoPlaceInTheStyle)
{
    EXPECT_EQ(failureOfDocument(gamma("basicFwd", "<GammaParams/>")),
              (Failure{0x420014, "Param 'gamma' required for style 'basicFwd', 'GammaParams' line 0: "}));
    EXPECT_EQ(failureOfDocument(gamma("basicRev", "<GammaParams gamma='2' offset='0'/>")),
              (Failure{0x420015, "Param 'offset' not allowed in style 'basicRev', 'GammaParams' line 0: "}));
    EXPECT_EQ(failureOfDocument(gamma("moncurveFwd", "<GammaParams gamma='2'/>")),
              (Failure{0x420014, "Param 'offset' required for style 'moncurveFwd', 'GammaParams' line 0: "}));
    EXPECT_EQ(failureOfDocument(gamma("moncurveFwd", "<GammaParams offset='0.1'/>")).id, 0x420014U);
}

TEST(GammaElement, RefusesANumberThatIsNone)
{
    EXPECT_EQ(failureOfDocument(gamma("basicFwd", "<GammaParams gamma='nan'/>")), (Failure{0x420008, "Characters 'nan' illegal"}));
    EXPECT_EQ(failureOfDocument(gamma("basicFwd", "<GammaParams gamma=''/>")).id, 0x420008U);
}

TEST(GammaElement, IsValidatedAtItsEnd)
{
    EXPECT_EQ(failureOfDocument(gamma("basicFwd", "<GammaParams gamma='0.5'/>")).id, 0x210011U);
    EXPECT_EQ(failureOfDocument(gamma("basicFwd", "")).id, 0x290002U);
    EXPECT_EQ(failureOfDocument(gamma("basicFwd", "<GammaParams channel='R' gamma='2'/>")).id, 0x290002U);
}

TEST(GammaElement, ItsParametersStandNowhereElse)
{
    // Passed over, as unknown elements are.
    EXPECT_EQ(failureOfDocument(opDocument("1.5", "Range", "", "<GammaParams gamma='x'/>")), Failure());
}
