// The ICC profiles of Debian's packages colord-data, icc-profiles-free and ghostscript (libgs-common): those of three primaries and
// three tables of numbers are read and agree with Little CMS, all others are refused with the message that fits.
#include "xml/iccProfileReader.h"

#include "renderer/rendererHarness.h"
#include "support/failure.h"

#include <Imath/ImathMatrix.h>
#include <Imath/ImathVec.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <cmath>
#include <filesystem>
#include <lcms2.h>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

namespace
{

// What comes of reading one, by the kinds of its tags: id 0 when it can be read.
struct InstalledProfile
{
    Color::ErrorId failure;
    char const* file;

    std::string path() const { return std::string("/usr/share/color/icc/") + file; }
};

void PrintTo(InstalledProfile const& profile, std::ostream* out)
{
    *out << profile.file;
}

constexpr Color::ErrorId kNoPrimaries = 0x480004;
constexpr Color::ErrorId kFormulaCurves = 0x480006;

constexpr InstalledProfile kProfiles[] = {
    {kFormulaCurves, "colord/AdobeRGB1998.icc"},
    {kFormulaCurves, "colord/AppleRGB.icc"},
    {kFormulaCurves, "colord/BestRGB.icc"},
    {kFormulaCurves, "colord/BetaRGB.icc"},
    {kFormulaCurves, "colord/Bluish.icc"},
    {kFormulaCurves, "colord/BruceRGB.icc"},
    {kFormulaCurves, "colord/CIE-RGB.icc"},
    {kFormulaCurves, "colord/ColorMatchRGB.icc"},
    {kNoPrimaries, "colord/Crayons.icc"},
    {kFormulaCurves, "colord/DonRGB4.icc"},
    {kFormulaCurves, "colord/ECI-RGBv1.icc"},
    {kFormulaCurves, "colord/ECI-RGBv2.icc"},
    {kFormulaCurves, "colord/EktaSpacePS5.icc"},
    {kFormulaCurves, "colord/Gamma5000K.icc"},
    {kFormulaCurves, "colord/Gamma5500K.icc"},
    {kFormulaCurves, "colord/Gamma6500K.icc"},
    {kFormulaCurves, "colord/NTSC-RGB.icc"},
    {kFormulaCurves, "colord/PAL-RGB.icc"},
    {kFormulaCurves, "colord/ProPhotoRGB.icc"},
    {0, "colord/Rec709.icc"},
    {kFormulaCurves, "colord/SMPTE-C-RGB.icc"},
    {kFormulaCurves, "colord/SwappedRedAndGreen.icc"},
    {kFormulaCurves, "colord/WideGamutRGB.icc"},
    {kFormulaCurves, "colord/sRGB.icc"},
    {kNoPrimaries, "colord/x11-colors.icc"},
    {kNoPrimaries, "CineLogCurve.icc"},
    {0, "CineonLog_M.icc"},
    {0, "CineonLog_M_Knee_10.icc"},
    {0, "CineonLog_M_Knee_20.icc"},
    {0, "CineonLog_M_Knee_30.icc"},
    {0, "CineonLog_M_Knee_60.icc"},
    {kNoPrimaries, "Gray-CIE_L.icc"},
    {kNoPrimaries, "Gray.icc"},
    {kNoPrimaries, "ITULab.icc"},
    {kNoPrimaries, "LCMSLABI.ICM"},
    {kNoPrimaries, "LCMSXYZI.ICM"},
    {0, "LStar-RGB.icc"},
    {0, "compatibleWithAdobeRGB1998.icc"},
    {0, "sRGB.icc"},
    {0, "ghostscript/a98.icc"},
    {kNoPrimaries, "ghostscript/default_cmyk.icc"},
    {kNoPrimaries, "ghostscript/default_gray.icc"},
    {0, "ghostscript/default_rgb.icc"},
    {0, "ghostscript/esrgb.icc"},
    {kNoPrimaries, "ghostscript/gray_to_k.icc"},
    {kNoPrimaries, "ghostscript/lab.icc"},
    {kNoPrimaries, "ghostscript/ps_cmyk.icc"},
    {kNoPrimaries, "ghostscript/ps_gray.icc"},
    {0, "ghostscript/ps_rgb.icc"},
    {0, "ghostscript/rommrgb.icc"},
    {0, "ghostscript/scrgb.icc"},
    {kNoPrimaries, "ghostscript/sgray.icc"},
    {0, "ghostscript/srgb.icc"},
};

struct CloseProfile
{
    void operator()(void* profile) const { cmsCloseProfile(profile); }
};
using Profile = std::unique_ptr<void, CloseProfile>;

struct DeleteTransform
{
    void operator()(void* transform) const { cmsDeleteTransform(transform); }
};

using Triple = Imath::V3d;
using Matrix = Imath::M33d; // Of rows: a vector stands on its left.

// The same adaptation as that of the reader, in double precision.
Matrix const kD65ToD50 =
    Matrix(1.0478895902633667, 0.0229206420481205, -0.050218306481838226, 0.029584422707557678, 0.9904819130897522,
           -0.017079530283808708, -0.009252188727259636, 0.01507304236292839, 0.7516689300537109)
        .transposed();

// A profile as Little CMS reads it.
class LittleCms
{
public:
    explicit LittleCms(std::string const& path) : m_profile(cmsOpenProfileFromFile(path.c_str(), "r"))
    {
        constexpr cmsTagSignature kPrimaries[] = {cmsSigRedColorantTag, cmsSigGreenColorantTag, cmsSigBlueColorantTag};
        constexpr cmsTagSignature kCurves[] = {cmsSigRedTRCTag, cmsSigGreenTRCTag, cmsSigBlueTRCTag};
        for (int color = 0; color < 3; ++color)
        {
            auto const& xyz = *static_cast<cmsCIEXYZ const*>(cmsReadTag(m_profile.get(), kPrimaries[color]));
            m_toXyz[color][0] = xyz.X;
            m_toXyz[color][1] = xyz.Y;
            m_toXyz[color][2] = xyz.Z;
            m_curves[color] = static_cast<cmsToneCurve const*>(cmsReadTag(m_profile.get(), kCurves[color]));
        }
        Profile const xyz(cmsCreateXYZProfile());
        m_fromXyz.reset(cmsCreateTransform(xyz.get(), TYPE_XYZ_DBL, m_profile.get(), TYPE_RGB_DBL, INTENT_RELATIVE_COLORIMETRIC,
                                           cmsFLAGS_NOOPTIMIZE | cmsFLAGS_NOCACHE));
    }

    // From XYZ of D50 to device values.
    Triple device(Triple const& xyz) const
    {
        Triple rgb;
        cmsDoTransform(m_fromXyz.get(), &xyz, &rgb, 1);
        return rgb;
    }
    Triple light(Triple const& xyz) const { return xyz * m_toXyz.inverse(); }
    Triple xyz(Triple const& light) const { return light * m_toXyz; }

    bool isTable(int color) const { return cmsGetToneCurveParametricType(m_curves[color]) == 0; }
    // The lowest device value from 0 to 1 that has at least so much light, and the highest that has at most so much.
    double lowest(int color, double light) const
    {
        return bisect([&](double value) { return lightOf(color, value) < light; });
    }
    double highest(int color, double light) const
    {
        return bisect([&](double value) { return lightOf(color, value) <= light; });
    }

private:
    double lightOf(int color, double device) const { return cmsEvalToneCurveFloat(m_curves[color], static_cast<float>(device)); }

    // Where the answer turns from yes to no.
    template <class Question>
    static double bisect(Question&& question)
    {
        double low = 0;
        double high = 1;
        for (int i = 0; i < 30; ++i)
        {
            double const middle = (low + high) / 2;
            (question(middle) ? low : high) = middle;
        }
        return high;
    }

    Profile m_profile;
    Matrix m_toXyz; // The primaries in rows.
    std::array<cmsToneCurve const*, 3> m_curves{};
    std::unique_ptr<void, DeleteTransform> m_fromXyz;
};

// XYZ of D50: a grid over all of it, and one over what the device can show.
std::vector<Triple> sweptColors(LittleCms const& profile)
{
    constexpr int kSteps = 14;
    std::vector<Triple> colors;
    for (int i = 0; i < kSteps * kSteps * kSteps; ++i)
    {
        Triple const point = Triple(i / kSteps / kSteps, i / kSteps % kSteps, i % kSteps) / (kSteps - 1);
        colors.push_back(point);
        colors.push_back(profile.xyz(point));
    }
    return colors;
}

// What our transform makes of them. The gamut mapping between matrix and curves is for the preferences to choose: none here.
std::vector<float> render(Color::OpList const& ops, std::vector<Triple> const& colors)
{
    std::vector<float> pixels;
    for (Triple const& color : colors)
    {
        Triple const d65 = color * kD65ToD50.inverse();
        pixels.insert(pixels.end(), {static_cast<float>(d65.x), static_cast<float>(d65.y), static_cast<float>(d65.z), 1.0F});
    }
    return RendererHarness::renderAs<float, float>({&ops.get(0), &ops.get(1), &ops.get(3)}, Tavrin::PF_RGBA_32f,
                                                   Tavrin::PF_RGBA_32f, pixels, static_cast<unsigned int>(colors.size()));
}

// How far Little CMS may be from the inverse of a curve. It evaluates a table backwards by a table of 4096 entries, in 16 bits:
// what lies between two entries is on the line between them, and where a curve is flat an entry may be any of the device values. On
// top comes what single precision does to the light (nine products of values up to 3, 2^-24 each), where the curve is steep, and to
// powers, which are polynomials of 16 bits.
double bound(LittleCms const& profile, int color, double light)
{
    constexpr double kCode = 1.0 / 65535.0;
    constexpr double kLightError = 9 * 3 / 16777216.0;
    light = std::clamp(light, 0.0, 1.0);
    auto const spread = [&](double error) { return profile.highest(color, light + error) - profile.lowest(color, light - error); };
    if (!profile.isTable(color))
        return spread(kLightError) + kCode;
    double const entry = std::min(std::floor(light * 4095), 4094.0);
    auto const deviation = [&](auto const& inverse)
    {
        double const low = inverse(entry / 4095);
        double const slope = (inverse((entry + 1) / 4095) - low) * 4095;
        double const onLine = low + (light - entry / 4095) * slope;
        return std::abs(onLine - inverse(light)) + slope * (kLightError + kCode / 2);
    };
    return std::max(deviation([&](double value) { return profile.lowest(color, value); }),
                    deviation([&](double value) { return profile.highest(color, value); })) +
           spread(kLightError + kCode / 2) + kCode;
}

class InstalledProfiles : public testing::TestWithParam<InstalledProfile>
{
protected:
    void SetUp() override
    {
        if (!std::filesystem::exists(GetParam().path()))
            GTEST_SKIP() << GetParam().path() << " is not installed";
    }
};

std::string nameOf(testing::TestParamInfo<InstalledProfile> const& info)
{
    std::string name = info.param.file;
    std::replace_if(
        name.begin(), name.end(), [](unsigned char c) { return !std::isalnum(c); }, '_');
    return name;
}

} // namespace

TEST_P(InstalledProfiles, AreReadOrRefused)
{
    Color::ICCProfileReader const reader;
    std::string const path = GetParam().path();
    std::string words;
    if (GetParam().failure == kNoPrimaries)
        words = "Unsupported transform model in ICC profile: " + path;
    if (GetParam().failure == kFormulaCurves)
        words = "Illegal curve tag in ICC profile: " + path;
    EXPECT_EQ(failureOf([&] { reader.parseFile(path); }), (Failure{GetParam().failure, words}));
}

TEST_P(InstalledProfiles, AgreeWithLittleCms)
{
    if (GetParam().failure != 0)
        return;
    Color::ICCProfileReader const reader;
    reader.parseFile(GetParam().path());
    LittleCms const littleCms(GetParam().path());
    std::vector<Triple> const colors = sweptColors(littleCms);
    std::vector<float> const rendered = render(reader.getTransform()->getOps(), colors);
    double largestDifference = 0;
    double largestPart = 0;
    for (std::size_t i = 0; i < colors.size(); ++i)
    {
        Triple const theirs = littleCms.device(colors[i]);
        Triple const light = littleCms.light(colors[i]);
        for (int color = 0; color < 3; ++color)
        {
            double const ours = std::clamp<double>(rendered[i * 4 + static_cast<std::size_t>(color)], 0, 1);
            double const difference = std::abs(ours - std::clamp(theirs[color], 0.0, 1.0));
            double const largest = bound(littleCms, color, light[color]);
            ASSERT_LE(difference, largest) << colors[i] << " channel " << color << " light " << light[color] << " ours " << ours;
            largestDifference = std::max(largestDifference, difference);
            largestPart = std::max(largestPart, difference / largest);
        }
    }
    RecordProperty("largestDifference", std::to_string(largestDifference));
    RecordProperty("largestPartOfItsBound", std::to_string(largestPart));
}

INSTANTIATE_TEST_SUITE_P(OfDebian, InstalledProfiles, testing::ValuesIn(kProfiles), nameOf);
