// The transforms of share/demo do what their descriptions say, against arithmetic in double precision from the published numbers.
#include "pictureFiles.h"
#include "programRun.h"

#include <array>
#include <cmath>

namespace
{

using Row = std::array<double, 3>;
using Matrix = std::array<Row, 3>;

Matrix multiply(Matrix const& a, Matrix const& b)
{
    Matrix c = {};
    for (int i = 0; i < 3; ++i)
    {
        for (int j = 0; j < 3; ++j)
            c[i][j] = a[i][0] * b[0][j] + a[i][1] * b[1][j] + a[i][2] * b[2][j];
    }
    return c;
}

// By Gauss and Jordan, without pivoting: these matrices have no zero on their diagonal.
Matrix inverse(Matrix m)
{
    Matrix r = {Row{1, 0, 0}, Row{0, 1, 0}, Row{0, 0, 1}};
    for (int k = 0; k < 3; ++k)
    {
        const double pivot = m[k][k];
        for (int j = 0; j < 3; ++j)
        {
            m[k][j] /= pivot;
            r[k][j] /= pivot;
        }
        for (int i = 0; i < 3; ++i)
        {
            const double factor = m[i][k];
            for (int j = 0; i != k && j < 3; ++j)
            {
                m[i][j] -= factor * m[k][j];
                r[i][j] -= factor * r[k][j];
            }
        }
    }
    return r;
}

// SMPTE RP 177: the primaries' XYZ in columns, scaled to add up to the white of D65 (0.3127, 0.3290).
Matrix toXyz(std::array<std::array<double, 2>, 3> const& primaries)
{
    const auto xyz = [](double x, double y) { return Row{x / y, 1.0, (1.0 - x - y) / y}; };
    Matrix m;
    for (int j = 0; j < 3; ++j)
    {
        const Row column = xyz(primaries[j][0], primaries[j][1]);
        for (int i = 0; i < 3; ++i)
            m[i][j] = column[i];
    }
    const Row white = xyz(0.3127, 0.3290);
    const Matrix scale = inverse(m);
    for (int j = 0; j < 3; ++j)
    {
        const double s = scale[j][0] * white[0] + scale[j][1] * white[1] + scale[j][2] * white[2];
        for (int i = 0; i < 3; ++i)
            m[i][j] *= s;
    }
    return m;
}

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

// What the library's polynomials for powers and exponentials leave, in parts of the value; far below a code of 12 bits.
constexpr double kPowerError = 1e-5;

// IEC 61966-2-1. The transforms' curve is continuous at the break with a slope of 12.9232 in place of 12.92, and the table's value
// is off by as little.
double srgbEncode(double light)
{
    return light <= 0.0031308 ? 12.92 * light : 1.055 * std::pow(light, 1.0 / 2.4) - 0.055;
}

TEST_F(DemoTransforms, Rec709LightBecomesThatOfDisplayP3)
{
    const Matrix expected = multiply(inverse(toXyz({{{0.680, 0.320}, {0.265, 0.690}, {0.150, 0.060}}})),
                                     toXyz({{{0.640, 0.330}, {0.300, 0.600}, {0.150, 0.060}}}));
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
