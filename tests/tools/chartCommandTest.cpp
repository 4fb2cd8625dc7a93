// The command 'chart': values of known places, sizes and encodings.
#include "pictureFiles.h"
#include "programRun.h"

#include <cmath>

using Imath::half;
using testing::HasSubstr;

namespace
{

// The chart at half its usual size: 960 x 540.
constexpr unsigned int kWidth = 960;
constexpr unsigned int kHeight = 540;

// The middle of a cell of the grid in the rectangle, in parts of the picture.
struct Spot
{
    unsigned int x;
    unsigned int y;
};
Spot cell(double left, double top, double right, double bottom, unsigned int column, unsigned int row, unsigned int columns,
          unsigned int rows)
{
    return {static_cast<unsigned int>((left + (right - left) * (column + 0.5) / columns) * kWidth),
            static_cast<unsigned int>((top + (bottom - top) * (row + 0.5) / rows) * kHeight)};
}
Spot patch(unsigned int column, unsigned int row)
{
    return cell(0.025, 0.040, 0.485, 0.540, column, row, 6, 4);
}
// The upper half of the sweep: 14 steps of one stop, from 2 to the power of -8.
Spot stop(int s)
{
    return cell(0.025, 0.815, 0.975, 0.960, static_cast<unsigned int>(s + 8), 0, 14, 2);
}

// IEC 61966-2-1.
double srgbToLinear(double code)
{
    const double v = code / 255.0;
    return v <= 0.04045 ? v / 12.92 : std::pow((v + 0.055) / 1.055, 2.4);
}

class ChartCommand : public ProgramTest
{
protected:
    void draw(std::vector<std::string> arguments)
    {
        arguments.insert(arguments.begin(), {"chart", "--size", "960x540"});
        const Outcome outcome = run(arguments);
        ASSERT_EQ(outcome.status, 0) << outcome.err;
    }
};

TEST_F(ChartCommand, PatchesHaveTheirPublishedSrgbCodes)
{
    draw({"chart.png", "--depth", "8i"});
    const Picture8 chart = readPngFile<std::uint8_t>(folder / "chart.png");
    const auto expectCodes = [&](Spot s, int red, int green, int blue)
    {
        EXPECT_EQ(chart.at(s.x, s.y, 0), red);
        EXPECT_EQ(chart.at(s.x, s.y, 1), green);
        EXPECT_EQ(chart.at(s.x, s.y, 2), blue);
    };
    expectCodes(patch(0, 0), 115, 82, 68);   // dark skin
    expectCodes(patch(1, 0), 194, 150, 130); // light skin
    expectCodes(patch(2, 2), 175, 54, 60);   // red
    expectCodes(patch(5, 2), 8, 133, 161);   // cyan
    expectCodes(patch(0, 3), 243, 243, 242); // white
    expectCodes(patch(5, 3), 52, 52, 52);    // black
}

TEST_F(ChartCommand, PatchesOfTheLinearChartAreTheirLight)
{
    draw({"chart.exr", "--depth", "32f"});
    const PictureFloat chart = readExrFile<float>(folder / "chart.exr");
    const Spot red = patch(2, 2);
    EXPECT_NEAR(chart.at(red.x, red.y, 0), srgbToLinear(175), 1e-7);
    EXPECT_NEAR(chart.at(red.x, red.y, 1), srgbToLinear(54), 1e-8);
    EXPECT_NEAR(chart.at(red.x, red.y, 2), srgbToLinear(60), 1e-8);
}

TEST_F(ChartCommand, StepsOfLightArePowersOfTwo)
{
    draw({"chart.exr"});
    const PictureHalf chart = readExrFile<half>(folder / "chart.exr");
    for (int s = -8; s <= 5; ++s)
    {
        const Spot spot = stop(s);
        for (unsigned int c = 0; c < 3; ++c)
            EXPECT_EQ(chart.at(spot.x, spot.y, c), std::ldexp(1.0f, s)) << s;
    }
}

TEST_F(ChartCommand, DpxOf10BitsIsLogarithmic)
{
    draw({"chart.dpx"});
    const Picture16 chart = readDpxFile(folder / "chart.dpx");
    // 685 + 300 log10(light x (1 - black) + black) with black = 10^(-590 / 300), rounded:
    // 1 is 685, 2 is 685 + 300 log10(1.98921...) = 774.6, 0.5 is 685 + 300 log10(0.50540...) = 596.1.
    EXPECT_EQ(chart.at(stop(0).x, stop(0).y, 0), 685);
    EXPECT_EQ(chart.at(stop(1).x, stop(1).y, 1), 775);
    EXPECT_EQ(chart.at(stop(-1).x, stop(-1).y, 2), 596);
    // Beyond the last code: 685 + 300 log10(31.67) is above 1023.
    EXPECT_EQ(chart.at(stop(5).x, stop(5).y, 0), 1023);
}

TEST_F(ChartCommand, EncodingCanBeChosen)
{
    draw({"chart.tif", "--encoding", "linear"});
    const Picture16 chart = readTiffFile<std::uint16_t>(folder / "chart.tif");
    EXPECT_EQ(chart.at(stop(-2).x, stop(-2).y, 0), 16384); // 0.25 x 65535 = 16383.75
}

TEST_F(ChartCommand, HasTheSizeThatIsAskedFor)
{
    ASSERT_EQ(run({"chart", "a.png", "--size", "7x5"}).out, "a.png (RGB 16i), 7 x 5\n");
    const Picture16 chart = readPngFile<std::uint16_t>(folder / "a.png");
    EXPECT_EQ(chart.width, 7u);
    EXPECT_EQ(chart.height, 5u);
}

TEST_F(ChartCommand, BadSizeIsMisuse)
{
    for (char const* size :
         {"", "12", "12x", "x12", "0x5", "5x0", "-5x5", "12x34x", "131073x1", "4294967297x1", "10 x 10", "1e3x9"})
        expectFailure(run({"chart", "a.png", "--size", size}), 2, HasSubstr("--size"));
    EXPECT_TRUE(folder.names().empty());
}

TEST_F(ChartCommand, UnknownEncodingOrExtensionIsMisuse)
{
    expectFailure(run({"chart", "a.png", "--encoding", "gamma"}), 2, HasSubstr("--encoding: gamma not in "));
    expectFailure(run({"chart", "a.gif"}), 2, HasSubstr("cannot tell the image type of 'a.gif'"));
    expectFailure(run({"chart"}), 2, "tavrin: OUT is required (see 'tavrin chart --help')");
}

} // namespace
