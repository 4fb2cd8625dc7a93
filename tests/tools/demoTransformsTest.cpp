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

TEST_F(DemoTransforms, Rec709LightBecomesThatOfP3AndIsCutOff)
{
    const Matrix expected = multiply(inverse(toXyz({{{0.680, 0.320}, {0.265, 0.690}, {0.150, 0.060}}})),
                                     toXyz({{{0.640, 0.330}, {0.300, 0.600}, {0.150, 0.060}}}));
    PictureFloat in(5, 1, 3);
    in.samples = {1, 0, 0, 0, 1, 0, 0, 0, 1, 0.18f, 0.18f, 0.18f, 4, -2, 0.5f};
    writeExrFile(folder / "in.exr", in);
    apply({demo("rec709ToP3D65.ctf"), "in.exr", "out.exr"});
    const PictureFloat out = readExrFile<float>(folder / "out.exr");
    for (unsigned int x = 0; x < in.width; ++x)
    {
        for (unsigned int c = 0; c < 3; ++c)
        {
            double sum = 0.0;
            double magnitude = 0.0;
            for (unsigned int k = 0; k < 3; ++k)
            {
                sum += expected[c][k] * static_cast<double>(in.at(x, 0, k));
                magnitude += std::abs(expected[c][k] * static_cast<double>(in.at(x, 0, k)));
            }
            // Rounded once each: coefficients, products, three sums, and the scale of the range; and ten decimals in the file.
            EXPECT_NEAR(out.at(x, 0, c), std::min(std::max(sum, 0.0), 1.0), 6 * std::ldexp(magnitude, -24) + 1e-10)
                << x << ' ' << c;
        }
    }
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
