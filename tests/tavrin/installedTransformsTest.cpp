// The transforms that are installed with the library, against the formulas of the standards and papers that they are made from.
#include "support/colorimetry.h"
#include "transformFixtures.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numbers>

using namespace Tavrin;
using namespace Colorimetry;

namespace
{

Row rendered(std::string const& file, Row const& rgb)
{
    TransformPtr transform;
    EXPECT_EQ(told(loadColorTransform((TAVRIN_INSTALLATION "/transforms/" + file).c_str(), transform)), kGood);
    EXPECT_EQ(told(finalizeForCpu(transform)), kGood);
    Pixels const pixel =
        render(transform, {static_cast<float>(rgb[0]), static_cast<float>(rgb[1]), static_cast<float>(rgb[2]), 1.0F});
    return {pixel[0], pixel[1], pixel[2]};
}

// The bound is a part of the largest value.
void expectNear(Row const& got, Row const& expected, double bound)
{
    double const largest = std::max({std::abs(expected[0]), std::abs(expected[1]), std::abs(expected[2])});
    for (int c = 0; c < 3; ++c)
        EXPECT_NEAR(got[c], expected[c], bound * largest) << c;
}

// A matrix over floats: three products of rounded factors, and their sum.
constexpr double kMatrixError = 4 * 0x1p-23;

// What the library's polynomials leave of a power, as parts of the value: log2 is off by 2.2e-5, exp2 by 2.8e-6 of its value.
constexpr double powerError(double exponent)
{
    return exponent * std::numbers::ln2 * 2.2e-5 + 2.8e-6;
}

// The encodings as their sources tell them: from light to a code of 0 to 1. The transforms go the other way.
double acescct(double x)
{
    return x <= 0.0078125 ? 10.5402377416545 * x + 0.0729055341958355 : (std::log2(x) + 9.72) / 17.52;
}

double logC3(double x)
{
    return x > 0.010591 ? 0.247190 * std::log10(5.555556 * x + 0.052272) + 0.385537 : 5.367655 * x + 0.092809;
}

double logC4(double x)
{
    double const a = (262144.0 - 16.0) / 117.45;
    return (std::log2(a * x + 64.0) - 6.0) / 14.0 * (928.0 / 1023.0) + 95.0 / 1023.0;
}

double sLog3(double x)
{
    return (x >= 0.01125 ? 420.0 + std::log10((x + 0.01) / 0.19) * 261.5 : x * (171.2102946929 - 95.0) / 0.01125 + 95.0) / 1023.0;
}

double vLog(double x)
{
    return x < 0.01 ? 5.6 * x + 0.125 : 0.241514 * std::log10(x + 0.00873) + 0.598206;
}

double log3G10(double x)
{
    return 0.224282 * std::log10((x + 0.01) * 155.975327 + 1.0);
}

// Kodak, "Conversion of 10-bit Log Film Data To 8-bit Linear or Video Data": black 95, white 685, 300 codes a factor of ten.
double cineon(double x)
{
    double const black = std::pow(10.0, -590.0 / 300.0);
    return (685.0 + 300.0 * std::log10(x * (1.0 - black) + black)) / 1023.0;
}

struct Encoding
{
    char const* file;
    double (*code)(double light);
    Primaries primaries;
};

constexpr Encoding kAcescct = {"interchange/ACES/ACEScct_to_ACES.ctf", acescct, kAp1};
constexpr Encoding kLogC3 = {
    "camera/ARRI/LogC3-EI800_to_ACES.ctf", logC3, {{{0.6840, 0.3130}, {0.2210, 0.8480}, {0.0861, -0.1020}, kD65}}};
constexpr Encoding kLogC4 = {
    "camera/ARRI/LogC4_to_ACES.ctf", logC4, {{{0.7347, 0.2653}, {0.1424, 0.8576}, {0.0991, -0.0308}, kD65}}};
constexpr Encoding kSLog3 = {
    "camera/Sony/S-Log3-S-Gamut3.Cine_to_ACES.ctf", sLog3, {{{0.766, 0.275}, {0.225, 0.800}, {0.089, -0.087}, kD65}}};
constexpr Encoding kVLog = {"camera/Panasonic/V-Log_to_ACES.ctf", vLog, {{{0.730, 0.280}, {0.165, 0.840}, {0.100, -0.030}, kD65}}};
constexpr Encoding kLog3G10 = {
    "camera/RED/Log3G10_to_ACES.ctf", log3G10, {{{0.780308, 0.304253}, {0.121595, 1.493994}, {0.095612, -0.084589}, kD65}}};
constexpr Encoding kCineon = {"film/Cineon-Rec709_to_ACES.ctf", cineon, kRec709};

class SceneEncoding : public testing::TestWithParam<Encoding>
{
};

TEST_P(SceneEncoding, BecomesTheLightOfItsFormula)
{
    Encoding const& encoding = GetParam();
    Matrix const toAces = rgbToRgb(encoding.primaries, kAp0);
    // Straight lines between 4096 rows of an exponential that grows by e over a twelfth of the rows at least: (12 / 4095)^2 / 8.
    // Rounding of the row's number in floats leaves a third of that, and coefficients of matrices go up to two. The film scan's
    // logarithm is no table.
    double const bound = encoding.file == kCineon.file ? powerError(1.0) : 3e-6;
    for (Row const& light : {Row{0.18, 0.18, 0.18}, Row{0.9, 0.02, 0.3}, Row{0.001, 4.0, 0.0}, Row{5.0, 0.5, 2.0}})
    {
        Row const code = {encoding.code(light[0]), encoding.code(light[1]), encoding.code(light[2])};
        expectNear(rendered(encoding.file, code), multiply(toAces, light), bound);
    }
}

INSTANTIATE_TEST_SUITE_P(All, SceneEncoding, testing::Values(kAcescct, kLogC3, kLogC4, kSLog3, kVLog, kLog3G10, kCineon));

// What the makers' papers tell in codes of 10 bits, rounded: the light lies between those of the neighbouring halves.
struct PublishedCode
{
    Encoding encoding;
    double light;
    double code;
};

class PublishedCodes : public testing::TestWithParam<PublishedCode>
{
};

TEST_P(PublishedCodes, HoldTheirLight)
{
    auto const& [encoding, light, code] = GetParam();
    for (double const side : {-0.5, 0.5})
    {
        double const signal = (code + side) / 1023.0;
        Row const grey = rendered(encoding.file, {signal, signal, signal});
        EXPECT_GT((grey[1] - light) * side, 0.0) << code + side;
    }
}

INSTANTIATE_TEST_SUITE_P(All, PublishedCodes,
                         testing::Values(PublishedCode{kSLog3, 0.0, 95}, PublishedCode{kSLog3, 0.18, 420},
                                         PublishedCode{kSLog3, 0.9, 598}, PublishedCode{kVLog, 0.0, 128},
                                         PublishedCode{kVLog, 0.18, 433}, PublishedCode{kVLog, 0.9, 602},
                                         PublishedCode{kLogC3, 0.0, 95}, PublishedCode{kLogC3, 0.18, 400},
                                         PublishedCode{kLogC4, 0.0, 95}, PublishedCode{kLogC4, 0.18, 285},
                                         PublishedCode{kLog3G10, 0.18, 341}, PublishedCode{kCineon, 1.0, 685}));

TEST(InstalledTransforms, ALogarithmOfTheSceneGoesBackToItsCodes)
{
    for (Row const& light : {Row{0.18, 0.18, 0.18}, Row{0.9, 0.02, 0.3}, Row{2.0, 4.0, 1.0}})
    {
        Row const code = {acescct(light[0]), acescct(light[1]), acescct(light[2])};
        // What the matrix leaves, divided by the smallest light beside the largest, is a twelfth of that in codes.
        expectNear(rendered("interchange/ACES/ACES_to_ACEScct.ctf", multiply(rgbToRgb(kAp1, kAp0), light)), code, 1e-6);
    }
}

struct Pair
{
    char const* there;
    char const* back;
    Matrix matrix;
};

class LinearSpace : public testing::TestWithParam<Pair>
{
};

TEST_P(LinearSpace, IsAMatrixThereAndBack)
{
    for (Row const& light : {Row{1, 0, 0}, Row{0, 1, 0}, Row{0, 0, 1}, Row{1, 1, 1}, Row{-0.1, 0.18, 40.0}})
    {
        Row const connected = multiply(GetParam().matrix, light);
        expectNear(rendered(GetParam().there, light), connected, kMatrixError);
        expectNear(rendered(GetParam().back, connected), light, kMatrixError);
    }
}

INSTANTIATE_TEST_SUITE_P(All, LinearSpace,
                         testing::Values(Pair{"interchange/ACES/ACEScg_to_ACES.ctf", "interchange/ACES/ACES_to_ACEScg.ctf",
                                              rgbToRgb(kAp1, kAp0)},
                                         Pair{"interchange/ACES/linear-Rec709_to_ACES.ctf",
                                              "interchange/ACES/ACES_to_linear-Rec709.ctf", rgbToRgb(kRec709, kAp0)}));

// AMPAS S-2014-004, 4.1.4, prints this matrix with ten digits.
TEST(InstalledTransforms, AcescgHasThePublishedMatrix)
{
    std::string const file = "interchange/ACES/ACEScg_to_ACES.ctf";
    expectNear(rendered(file, {1, 0, 0}), {0.6954522414, 0.0447945634, -0.0055258826}, kMatrixError);
    expectNear(rendered(file, {0, 1, 0}), {0.1406786965, 0.8596711185, 0.0040252103}, kMatrixError);
    expectNear(rendered(file, {0, 0, 1}), {0.1638690622, 0.0955343182, 1.0015006723}, kMatrixError);
}

// IEC 61966-2-1, 5.2, prints this matrix with four digits.
TEST(InstalledTransforms, SrgbHasThePublishedMatrix)
{
    Row const expected[] = {{0.4124, 0.2126, 0.0193}, {0.3576, 0.7152, 0.1192}, {0.1805, 0.0722, 0.9505}};
    for (int primary = 0; primary < 3; ++primary)
    {
        Row signal = {};
        signal[primary] = 1.0;
        Row const got = rendered("interchange/sRGB/sRGB_to_CIE-XYZ.ctf", signal);
        for (int c = 0; c < 3; ++c)
            EXPECT_NEAR(got[c], expected[primary][c], 0.00006);
    }
}

double bt1886Encode(double light)
{
    return std::pow(light, 1.0 / 2.4);
}

struct Display
{
    char const* there;
    char const* back;
    double (*encode)(double light);
    Primaries primaries;
};

class InstalledDisplay : public testing::TestWithParam<Display>
{
};

TEST_P(InstalledDisplay, ShowsItsLight)
{
    Display const& display = GetParam();
    for (Row const& light : {Row{1, 1, 1}, Row{0.18, 0.18, 0.18}, Row{0.8, 0.4, 0.001}})
    {
        Row const signal = {display.encode(light[0]), display.encode(light[1]), display.encode(light[2])};
        Row const emitted = multiply(toXyz(display.primaries), light);
        // The encoding's slope in the dark multiplies what the matrix leaves there.
        expectNear(rendered(display.back, emitted), signal, 2 * powerError(1.0));
        expectNear(rendered(display.there, signal), emitted, powerError(2.4));
    }
}

TEST_P(InstalledDisplay, ClipsWhatItCannotShow)
{
    Row const beyond = multiply(toXyz(GetParam().primaries), Row{3.0, -0.5, 0.5});
    expectNear(rendered(GetParam().back, beyond), {1.0, 0.0, GetParam().encode(0.5)}, powerError(1.0));
}

INSTANTIATE_TEST_SUITE_P(All, InstalledDisplay,
                         testing::Values(Display{"interchange/sRGB/sRGB_to_CIE-XYZ.ctf", "interchange/sRGB/CIE-XYZ_to_sRGB.ctf",
                                                 srgbEncode, kRec709},
                                         Display{"interchange/P3/Display-P3_to_CIE-XYZ.ctf",
                                                 "interchange/P3/CIE-XYZ_to_Display-P3.ctf", srgbEncode, kP3D65},
                                         Display{"display/broadcast/HD-video_to_CIE-XYZ.ctf",
                                                 "display/broadcast/CIE-XYZ_to_HD-video.ctf", bt1886Encode, kRec709}));

constexpr char kToOutput[] = "RRT+ODT/ACES_to_CIE-XYZ_v0.1.1.ctf";
constexpr char kToScene[] = "RRT+ODT/CIE-XYZ_to_ACES_v0.1.1.ctf";

// In logarithms the curve is steeper by 1.4 than the light, whose fourth root is a power.
constexpr double kToneCurveError = 1.4 * 4 * powerError(0.25);

// The tone curve: a straight line of slope 1.4 in logarithms that bends into white at 16, through 0.12 for a mid-grey of 0.18.
double toneCurve(double x)
{
    double const grey = std::pow(0.18, 1.4);
    double const white = std::pow(16.0, 1.4);
    double const half = grey * (1.0 - 0.12) / (0.12 - grey / white);
    double const power = std::pow(std::clamp(x, 0.0, 16.0), 1.4);
    return power / (power + half) * (white + half) / white;
}

TEST(SceneToOutputBridge, GivesGreysTheLightOfTheToneCurve)
{
    for (double const light : {-1.0, 0.0, 0.001, 0.02, 0.18, 1.0, 4.0, 16.0, 100.0})
    {
        Row white = xyz(kD65);
        for (double& v : white)
            v *= toneCurve(light);
        expectNear(rendered(kToOutput, {light, light, light}), white, kToneCurveError);
    }
}

TEST(SceneToOutputBridge, KeepsTheAnchorsThatItsCurveIsMadeFrom)
{
    EXPECT_NEAR(rendered(kToOutput, {0.18, 0.18, 0.18})[1], 0.12, 0.12 * kToneCurveError);
    EXPECT_NEAR(rendered(kToOutput, {16.0, 16.0, 16.0})[1], 1.0, kMatrixError);
}

TEST(OutputToSceneBridge, UndoesTheSceneToOutputBridge)
{
    for (Row const& light : {Row{0.18, 0.18, 0.18}, Row{0.02, 0.03, 0.025}, Row{0.8, 0.5, 0.6}})
        expectNear(rendered(kToScene, rendered(kToOutput, light)), light, 4 * (powerError(0.25) + powerError(4.0)));
}

TEST(InstalledTransforms, IdentityAndConnectionSpacesChangeNothing)
{
    for (char const* file : {"misc/identity.ctf", "misc/raw.ctf", "interchange/ACES/ACES2065-1.ctf", "interchange/CIE-XYZ.ctf"})
        EXPECT_EQ(rendered(file, {-1.5, 0.25, 70000.0}), (Row{-1.5, 0.25, 70000.0})) << file;
}

} // namespace
