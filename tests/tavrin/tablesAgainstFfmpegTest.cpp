// 3D tables beside ffmpeg's lut3d filter, which interpolates the same grid from a .cube file in single precision.
#include "support/temporaryFolder.h"

#include <tavrin/tavrin.h>

#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

namespace
{

constexpr unsigned int kWidth = 256;
constexpr unsigned int kHeight = 64;
constexpr std::size_t kPixels = std::size_t{kWidth} * kHeight;

bool hasFfmpeg()
{
    return std::system("ffmpeg -hide_banner -version > /dev/null 2>&1") == 0;
}

// A smooth, twisted grid: no channel is a function of one other alone.
void lookAt(double r, double g, double b, float (&out)[3])
{
    out[0] = static_cast<float>(0.5 + 0.5 * std::sin(2.0 * r + g) * std::cos(b));
    out[1] = static_cast<float>(std::pow(g, 1.7) * 0.8 + 0.2 * r * b);
    out[2] = static_cast<float>(std::sqrt(0.2 * r * r + 0.3 * g * g + 0.5 * b * b));
}

std::string numbers(float const (&values)[3])
{
    char text[64];
    std::snprintf(text, sizeof text, "%.9g %.9g %.9g\n", values[0], values[1], values[2]);
    return text;
}

// Red varies fastest in a .cube file, blue in a transform file.
std::string cubeFile(unsigned int points)
{
    std::string text = "LUT_3D_SIZE " + std::to_string(points) + "\n";
    double const last = points - 1;
    for (unsigned int b = 0; b < points; ++b)
    {
        for (unsigned int g = 0; g < points; ++g)
        {
            for (unsigned int r = 0; r < points; ++r)
            {
                float values[3];
                lookAt(r / last, g / last, b / last, values);
                text += numbers(values);
            }
        }
    }
    return text;
}

std::string transformFile(unsigned int points, std::string const& interpolation)
{
    std::string const n = std::to_string(points);
    std::string text = R"(<ProcessList version="1.5" id="grid"><LUT3D inBitDepth="32f" outBitDepth="32f" interpolation=")" +
                       interpolation + R"("><Array dim=")" + n + " " + n + " " + n + " 3\">\n";
    double const last = points - 1;
    for (unsigned int r = 0; r < points; ++r)
    {
        for (unsigned int g = 0; g < points; ++g)
        {
            for (unsigned int b = 0; b < points; ++b)
            {
                float values[3];
                lookAt(r / last, g / last, b / last, values);
                text += numbers(values);
            }
        }
    }
    return text + "</Array></LUT3D></ProcessList>";
}

// Values from 0 to 1 without a pattern.
std::vector<float> picture()
{
    std::vector<float> rgb(3 * kPixels);
    unsigned int state = 12345;
    for (float& value : rgb)
    {
        state = state * 1664525U + 1013904223U;
        value = static_cast<float>(state >> 8) / 16777215.0F;
    }
    return rgb;
}

// The planes of the filter's float format come in the order green, blue, red.
constexpr int kPlane[3] = {2, 0, 1};

std::vector<float> throughFfmpeg(TemporaryFolder const& folder, std::string const& cube, std::string const& interpolation,
                                 std::vector<float> const& rgb)
{
    std::vector<float> planes(rgb.size());
    for (std::size_t i = 0; i < rgb.size(); ++i)
        planes[static_cast<std::size_t>(kPlane[i % 3]) * kPixels + i / 3] = rgb[i];
    std::string const in = folder.file("in.raw");
    std::string const out = folder.file("out.raw");
    std::ofstream(in, std::ios::binary)
        .write(reinterpret_cast<char const*>(planes.data()), static_cast<std::streamsize>(planes.size() * sizeof(float)));
    std::string const size = std::to_string(kWidth) + "x" + std::to_string(kHeight);
    std::string const format = "-f rawvideo -pix_fmt gbrpf32le -s " + size;
    std::string const command = "ffmpeg -v error -nostdin -y " + format + " -i " + in + " -vf lut3d=file=" + cube +
                                ":interp=" + interpolation + " " + format + " " + out;
    EXPECT_EQ(0, std::system(command.c_str()));
    std::ifstream(out, std::ios::binary)
        .read(reinterpret_cast<char*>(planes.data()), static_cast<std::streamsize>(planes.size() * sizeof(float)));
    std::vector<float> result(rgb.size());
    for (std::size_t i = 0; i < rgb.size(); ++i)
        result[i] = planes[static_cast<std::size_t>(kPlane[i % 3]) * kPixels + i / 3];
    return result;
}

std::vector<float> throughTavrin(std::string const& document, std::vector<float> const& rgb)
{
    Tavrin::TransformPtr transform;
    EXPECT_TRUE(Tavrin::loadColorTransformFromBuffer(document.c_str(), transform));
    EXPECT_TRUE(transform->finalize(Tavrin::PF_RGB_32f, Tavrin::PF_RGB_32f, Tavrin::RENDERER_CPU,
                                    Tavrin::OPTIMIZER_DEFAULT_THRESHOLD, Tavrin::RESOLVE_GRAPHICS_MONITOR));
    std::vector<float> result(rgb.size());
    EXPECT_TRUE(transform->applyCPU(rgb.data(), Tavrin::ROI(0, 0, kWidth, kHeight), result.data()));
    return result;
}

class TablesAgainstFfmpeg : public testing::TestWithParam<char const*>
{
};

} // namespace

TEST_P(TablesAgainstFfmpeg, GiveTheSamePicture)
{
    if (!hasFfmpeg())
        GTEST_SKIP() << "ffmpeg is not installed";
    std::string const interpolation = GetParam();
    std::vector<float> const rgb = picture();
    for (unsigned int points : {2U, 17U, 33U})
    {
        TemporaryFolder const folder;
        std::string const cube = folder.write("look.cube", cubeFile(points));
        std::vector<float> const expected = throughFfmpeg(folder, cube, interpolation, rgb);
        std::vector<float> const actual = throughTavrin(transformFile(points, interpolation), rgb);
        // Both reckon in single precision, in different orders. A position in the grid is off by two roundings of points * 2^-24,
        // which the steepest step between neighbouring entries, less than 2 / (points - 1) here, turns into less than 2^-21; a
        // dozen roundings of values up to 1 add less than that again.
        double const bound = std::ldexp(1.0, -20);
        for (std::size_t i = 0; i < rgb.size(); ++i)
            ASSERT_NEAR(expected[i], actual[i], bound) << points << " points, value " << i;
    }
}

INSTANTIATE_TEST_SUITE_P(Interpolations, TablesAgainstFfmpeg, testing::Values("trilinear", "tetrahedral"),
                         [](auto const& parameter) { return std::string(parameter.param); });
