// The transforms of share/demo do what their descriptions say, against arithmetic in double precision from the published numbers.
#include "pictureFiles.h"
#include "programRun.h"
#include "support/colorimetry.h"

#include <cmath>

namespace
{

using Colorimetry::srgbEncode;

class DemoTransforms : public ProgramTest
{
protected:
    static std::string demo(std::string const& name) { return TAVRIN_TEST_DATA "/../../share/demo/" + name; }

    void apply(std::vector<std::string> arguments)
    {
        arguments.insert(arguments.begin(), "apply");
        const Outcome outcome = run(arguments);
        ASSERT_EQ(outcome.status, 0) << outcome.err;
    }
};

// What the library's polynomials for powers and exponentials leave, in parts of the value; far below a code of 12 bits. The
// transforms' curve for sRGB is continuous at the break with a slope of 12.9232 in place of 12.92, which is as little.
constexpr double kPowerError = 1e-5;

TEST_F(DemoTransforms, Rec709LightBecomesThatOfDisplayP3)
{
    const Colorimetry::Matrix expected = Colorimetry::rgbToRgb(Colorimetry::kRec709, Colorimetry::kP3D65);
    Picture16 in(5, 1, 3);
    in.samples = {65535, 0, 0, 0, 65535, 0, 0, 0, 65535, 11796, 11796, 11796, 65535, 300, 20000};
    writePngFile(folder / "in.png", in);
    apply({demo("lightToDisplayP3.ctf"), "in.png", "out.png"});
    const Picture16 out = readPngFile<std::uint16_t>(folder / "out.png");
    for (unsigned int x = 0; x < in.width; ++x)
    {
        for (unsigned int c = 0; c < 3; ++c)
        {
            double light = 0.0;
            for (unsigned int k = 0; k < 3; ++k)
                light += expected[c][k] * in.at(x, 0, k) / 65535.0;
            EXPECT_NEAR(out.at(x, 0, c), 65535.0 * srgbEncode(std::min(std::max(light, 0.0), 1.0)), 1.5) << x << ' ' << c;
        }
    }
}

TEST_F(DemoTransforms, LightOfTheChartBecomesTheChartOfADisplay)
{
    ASSERT_EQ(run({"chart", "light.exr", "--size", "320x180", "--depth", "32f"}).status, 0);
    ASSERT_EQ(run({"chart", "display.png", "--size", "320x180", "--depth", "16i"}).status, 0);
    apply({demo("lightToSrgb.ctf"), "light.exr", "out.png"});
    const Picture16 out = readPngFile<std::uint16_t>(folder / "out.png");
    const Picture16 expected = readPngFile<std::uint16_t>(folder / "display.png");
    ASSERT_EQ(out.samples.size(), expected.samples.size());
    for (std::size_t i = 0; i < out.samples.size(); ++i)
        ASSERT_NEAR(out.samples[i], expected.samples[i], 1) << i;
}

TEST_F(DemoTransforms, FilmScanBecomesItsLight)
{
    // Black, grey, white, and 300 codes above white: a factor of ten less what black takes.
    Picture16 in(4, 1, 3);
    in.samples = {95, 95, 95, 470, 470, 470, 685, 685, 685, 985, 985, 985};
    writeDpxFile(folder / "in.dpx", in);
    apply({demo("scanToLight.ctf"), "in.dpx", "out.exr", "--depth", "32f"});
    const PictureFloat out = readExrFile<float>(folder / "out.exr");
    const double black = std::pow(10.0, -590.0 / 300.0);
    for (unsigned int x = 0; x < in.width; ++x)
    {
        const double light = (std::pow(10.0, (in.at(x, 0, 0) - 685.0) / 300.0) - black) / (1.0 - black);
        EXPECT_NEAR(out.at(x, 0, 0), light, kPowerError * std::max(light, 1.0)) << x;
    }
}

TEST_F(DemoTransforms, FilmKeepsGreyAndBendsHighlights)
{
    // 1 / (1 + (K / light)^1.3) with K such that 0.18 stays 0.18, encoded for sRGB.
    const double k = 0.18 * std::pow(1.0 / 0.18 - 1.0, 1.0 / 1.3);
    PictureFloat in(5, 1, 3);
    in.samples = {0.02f, 0.02f, 0.02f, 0.18f, 0.18f, 0.18f, 1, 1, 1, 4, 4, 4, 12, 12, 12};
    writeExrFile(folder / "in.exr", in);
    apply({demo("film.ctf"), "in.exr", "out.exr"});
    const PictureFloat out = readExrFile<float>(folder / "out.exr");
    for (unsigned int x = 0; x < in.width; ++x)
    {
        const double expected = srgbEncode(1.0 / (1.0 + std::pow(k / static_cast<double>(in.at(x, 0, 1)), 1.3)));
        // Straight lines between 129 points of a curve whose second derivative by the code stays below 12: 12 / 8 / 128^2.
        EXPECT_NEAR(out.at(x, 0, 1), expected, 1e-4) << x;
    }
}

TEST_F(DemoTransforms, WarmFollowsTheColourDecision)
{
    PictureFloat in(1, 1, 3);
    in.samples = {0.5f, 0.4f, 0.3f};
    writeExrFile(folder / "in.exr", in);
    apply({demo("warm.ctf"), "in.exr", "out.exr"});
    const double r = std::pow(0.5 * 1.06 + 0.01, 0.95);
    const double g = 0.4;
    const double b = std::pow(0.3 * 0.88 - 0.01, 1.08);
    const double luma = 0.2126 * r + 0.7152 * g + 0.0722 * b;
    const PictureFloat out = readExrFile<float>(folder / "out.exr");
    EXPECT_NEAR(out.at(0, 0, 0), luma + 1.15 * (r - luma), kPowerError);
    EXPECT_NEAR(out.at(0, 0, 1), luma + 1.15 * (g - luma), kPowerError);
    EXPECT_NEAR(out.at(0, 0, 2), luma + 1.15 * (b - luma), kPowerError);
}

TEST_F(DemoTransforms, ExposureIsThreeStopsDown)
{
    PictureFloat in(1, 1, 3);
    in.samples = {32.0f, 1.0f, -0.375f};
    writeExrFile(folder / "in.exr", in);
    apply({demo("exposureDown3.ctf"), "in.exr", "out.exr"});
    EXPECT_EQ(readExrFile<float>(folder / "out.exr").samples, (std::vector<float>{4.0f, 0.125f, -0.046875f}));
}

TEST_F(DemoTransforms, LumaAndVideoLevelsGiveTheirCodes)
{
    Picture8 in(5, 1, 3);
    in.samples = {0, 0, 0, 255, 255, 255, 255, 0, 0, 0, 255, 0, 0, 0, 255};
    writePngFile(folder / "in.png", in);
    // 255 x 0.2126 = 54.2, 255 x 0.7152 = 182.4, 255 x 0.0722 = 18.4.
    apply({demo("luma.ctf"), "in.png", "luma.png"});
    EXPECT_EQ(readPngFile<std::uint8_t>(folder / "luma.png").samples,
              (std::vector<std::uint8_t>{0, 0, 0, 255, 255, 255, 54, 54, 54, 182, 182, 182, 18, 18, 18}));
    // 16 + 219 x 0.2126 = 62.6, 16 + 219 x 0.7152 = 172.6, 16 + 219 x 0.0722 = 31.8.
    apply({demo("luma.ctf"), demo("videoLevels.ctf"), "in.png", "video.png"});
    EXPECT_EQ(readPngFile<std::uint8_t>(folder / "video.png").samples,
              (std::vector<std::uint8_t>{16, 16, 16, 235, 235, 235, 63, 63, 63, 173, 173, 173, 32, 32, 32}));
}

} // namespace
