// The command 'apply': the arithmetic, the choice of formats, threads and options.
#include "pictureFiles.h"
#include "programRun.h"

#include <algorithm>
#include <cmath>
#include <fstream>

using Imath::half;
using testing::AllOf;
using testing::HasSubstr;
using testing::MatchesRegex;
using testing::StartsWith;

namespace
{

// Coefficients with few bits: with samples of few bits all sums are exact in single precision, so that results are known to the
// last bit from arithmetic in double precision.
constexpr double kMatrix[3][3] = {{0.5, 0.25, 0.25}, {0.125, 0.75, 0.125}, {-0.25, 0.5, 0.75}};
char const* const kMatrixText = "0.5 0.25 0.25  0.125 0.75 0.125  -0.25 0.5 0.75";

template <class Sample>
double rowOfMatrix(Picture<Sample> const& in, unsigned int x, unsigned int y, unsigned int channel)
{
    double sum = 0.0;
    for (unsigned int c = 0; c < 3; ++c)
        sum += kMatrix[channel][c] * static_cast<double>(in.at(x, y, c));
    return sum;
}

double toCode(double value, double maximum)
{
    return std::floor(std::min(std::max(value + 0.5, 0.0), maximum));
}

class ApplyCommand : public ProgramTest
{
protected:
    void SetUp() override
    {
        writeIdentityTransform(folder / "none.ctf");
        writeMatrixTransform(folder / "matrix.ctf", kMatrixText);
    }

    void apply(std::vector<std::string> arguments)
    {
        arguments.insert(arguments.begin(), "apply");
        const Outcome outcome = run(arguments);
        ASSERT_EQ(outcome.status, 0) << outcome.err;
    }
};

TEST_F(ApplyCommand, MatrixOnFloatsGivesTheSumsOfProducts)
{
    PictureFloat in(40, 30, 3);
    for (std::size_t i = 0; i < in.samples.size(); ++i)
        in.samples[i] = static_cast<float>(static_cast<int>(i * 37 % 2001) - 500) / 64.0f;
    writeExrFile(folder / "in.exr", in);
    apply({"matrix.ctf", "in.exr", "out.exr"});
    const PictureFloat out = readExrFile<float>(folder / "out.exr");
    for (unsigned int y = 0; y < in.height; ++y)
    {
        for (unsigned int x = 0; x < in.width; ++x)
        {
            for (unsigned int c = 0; c < 3; ++c)
                ASSERT_EQ(out.at(x, y, c), rowOfMatrix(in, x, y, c)) << x << ' ' << y << ' ' << c;
        }
    }
}

// The table has the rows 0, 1/4 and 1 on the domain 0 to 2; samples have few bits, so that interpolation is exact.
TEST_F(ApplyCommand, TableOfAnotherProgramIsLookedUp)
{
    std::ofstream(folder / "curve.cube") << "LUT_1D_SIZE 3\nLUT_1D_INPUT_RANGE 0.0 2.0\n0 0 0\n0.25 0.25 0.25\n1 1 1\n";
    PictureFloat in(40, 30, 3);
    for (std::size_t i = 0; i < in.samples.size(); ++i)
        in.samples[i] = static_cast<float>(i % 161) / 64.0f;
    writeExrFile(folder / "in.exr", in);
    const Outcome outcome = run({"apply", "curve.cube", "in.exr", "out.exr"});
    if (outcome.status != 0 && outcome.err.find("Unsupported file format") != std::string::npos)
        GTEST_SKIP() << "this build has no OpenColorIO";
    ASSERT_EQ(outcome.status, 0) << outcome.err;
    const PictureFloat out = readExrFile<float>(folder / "out.exr");
    for (std::size_t i = 0; i < in.samples.size(); ++i)
    {
        const float x = std::min(in.samples[i], 2.0f);
        ASSERT_EQ(out.samples[i], x < 1.0f ? 0.25f * x : 0.25f + (x - 1.0f) * 0.75f) << i;
    }
}

TEST_F(ApplyCommand, MatrixOnCodesIsRoundedAndClamped)
{
    Picture8 in(64, 64, 3);
    for (std::size_t i = 0; i < in.samples.size(); ++i)
        in.samples[i] = static_cast<std::uint8_t>(i * 101 % 256);
    writePngFile(folder / "in.png", in);
    apply({"matrix.ctf", "in.png", "out.png"});
    const Picture8 out = readPngFile<std::uint8_t>(folder / "out.png");
    for (unsigned int y = 0; y < in.height; ++y)
    {
        for (unsigned int x = 0; x < in.width; ++x)
        {
            for (unsigned int c = 0; c < 3; ++c)
                ASSERT_EQ(out.at(x, y, c), toCode(rowOfMatrix(in, x, y, c), 255.0)) << x << ' ' << y << ' ' << c;
        }
    }
}

TEST_F(ApplyCommand, ValuesOfFloatsBecomeCodesOfTheWrittenDepth)
{
    PictureHalf in(2, 1, 3);
    in.samples = {half(0.0f), half(0.25f), half(0.5f), half(1.0f), half(-3.0f), half(7.0f)};
    writeExrFile(folder / "in.exr", in);
    // 0.25 and 0.5 of the largest code, rounded: 16383.75, 32767.5; 63.75, 127.5; 255.75, 511.5.
    apply({"none.ctf", "in.exr", "out16.png"});
    EXPECT_EQ(readPngFile<std::uint16_t>(folder / "out16.png").samples,
              (std::vector<std::uint16_t>{0, 16384, 32768, 65535, 0, 65535}));
    apply({"none.ctf", "in.exr", "out8.tif", "--depth", "8i"});
    EXPECT_EQ(readTiffFile<std::uint8_t>(folder / "out8.tif").samples, (std::vector<std::uint8_t>{0, 64, 128, 255, 0, 255}));
    apply({"none.ctf", "in.exr", "out10.dpx"});
    EXPECT_EQ(readDpxFile(folder / "out10.dpx").samples, (std::vector<std::uint16_t>{0, 256, 512, 1023, 0, 1023}));
}

TEST_F(ApplyCommand, CodesBecomeFloatsBetween0And1)
{
    Picture8 in(3, 1, 3);
    in.samples = {0, 51, 255, 1, 2, 3, 102, 153, 204};
    writePngFile(folder / "in.png", in);
    apply({"none.ctf", "in.png", "out.exr", "--depth", "32f"});
    const PictureFloat out = readExrFile<float>(folder / "out.exr");
    // The factor 1/255 and the product are rounded once each, to 24 bits.
    for (std::size_t i = 0; i < in.samples.size(); ++i)
        EXPECT_NEAR(out.samples[i], in.samples[i] / 255.0, std::ldexp(in.samples[i] / 255.0, -23)) << i;
}

TEST_F(ApplyCommand, TransformsApplyInTheirOrder)
{
    // First red goes to green, then green is doubled; the other way round nothing would be doubled.
    writeMatrixTransform(folder / "move.ctf", "0 0 0  1 0 0  0 0 1");
    writeMatrixTransform(folder / "double.ctf", "1 0 0  0 2 0  0 0 1");
    PictureFloat in(1, 1, 3);
    in.samples = {0.25f, 9.0f, 0.75f};
    writeExrFile(folder / "in.exr", in);
    apply({"move.ctf", "double.ctf", "in.exr", "out.exr"});
    EXPECT_EQ(readExrFile<float>(folder / "out.exr").samples, (std::vector<float>{0.0f, 0.5f, 0.75f}));
    apply({"double.ctf", "move.ctf", "in.exr", "out.exr"});
    EXPECT_EQ(readExrFile<float>(folder / "out.exr").samples, (std::vector<float>{0.0f, 0.25f, 0.75f}));
    apply({"double.ctf", "double.ctf", "double.ctf", "in.exr", "out.exr"});
    EXPECT_EQ(readExrFile<float>(folder / "out.exr").samples, (std::vector<float>{0.25f, 72.0f, 0.75f}));
}

TEST_F(ApplyCommand, AlphaIsKeptWhereTheFileTypeHasIt)
{
    Picture16 in(1, 2, 4);
    in.samples = {1000, 2000, 3000, 4000, 65535, 0, 1, 32769};
    writePngFile(folder / "in.png", in);
    apply({"none.ctf", "in.png", "out.tif"});
    EXPECT_TRUE(readTiffFile<std::uint16_t>(folder / "out.tif") == in);
    apply({"none.ctf", "in.png", "out.dpx", "--depth", "10i"});
    EXPECT_EQ(readDpxFile(folder / "out.dpx").channels, 3u);
}

// The depth of the written file without --depth: that of the read one if the type has it, else the first that holds all its
// values, else the usual one.
struct DepthCase
{
    char const* in;
    char const* wishedIn; // depth of the read file
    char const* out;
    char const* expected;
};

class DefaultDepth : public ApplyCommand, public testing::WithParamInterface<DepthCase>
{
};

TEST_P(DefaultDepth, FollowsTheReadFile)
{
    const DepthCase c = GetParam();
    ASSERT_EQ(run({"chart", c.in, "--size", "16x9", "--depth", c.wishedIn}).status, 0);
    const Outcome outcome = run({"apply", "none.ctf", c.in, c.out});
    EXPECT_THAT(outcome.out, HasSubstr(std::string(c.out) + " (RGB " + c.expected + ")"));
}

INSTANTIATE_TEST_SUITE_P(Depths, DefaultDepth,
                         testing::Values(DepthCase{"a.png", "8i", "b.tif", "8i"}, DepthCase{"a.png", "8i", "b.exr", "16f"},
                                         DepthCase{"a.png", "8i", "b.dpx", "10iP"}, DepthCase{"a.png", "16i", "b.exr", "32f"},
                                         DepthCase{"a.png", "16i", "b.dpx", "16i"}, DepthCase{"a.dpx", "10i", "b.png", "16i"},
                                         DepthCase{"a.dpx", "10i", "b.exr", "16f"}, DepthCase{"a.dpx", "12i", "b.exr", "32f"},
                                         DepthCase{"a.dpx", "12i", "b.tif", "16i"}, DepthCase{"a.exr", "16f", "b.png", "16i"},
                                         DepthCase{"a.exr", "16f", "b.tif", "16f"}, DepthCase{"a.exr", "32f", "b.tif", "32f"},
                                         DepthCase{"a.exr", "32f", "b.dpx", "10iP"}, DepthCase{"a.tif", "16f", "b.exr", "16f"}));

TEST_F(ApplyCommand, AnyNumberOfThreadsGivesTheSameBytes)
{
    // Large enough to be shared out.
    ASSERT_EQ(run({"chart", "in.exr", "--size", "1500x700"}).status, 0);
    for (char const* extension : {"tif", "dpx", "exr"})
    {
        std::vector<std::string> bytes;
        for (char const* threads : {"1", "2", "7"})
        {
            const std::string out = std::string("out") + threads + "." + extension;
            apply({"matrix.ctf", "in.exr", out, "--threads", threads});
            bytes.push_back(readText(folder / out));
        }
        EXPECT_TRUE(bytes[0] == bytes[1]) << extension;
        EXPECT_TRUE(bytes[0] == bytes[2]) << extension;
    }
}

TEST_F(ApplyCommand, OptimizingChangesNoExactValue)
{
    PictureFloat in(1, 1, 3);
    in.samples = {0.25f, 9.0f, 0.75f};
    writeExrFile(folder / "in.exr", in);
    apply({"matrix.ctf", "none.ctf", "matrix.ctf", "in.exr", "a.exr", "--optimize", "101"});
    apply({"matrix.ctf", "none.ctf", "matrix.ctf", "in.exr", "b.exr", "--optimize", "90"});
    EXPECT_TRUE(readExrFile<float>(folder / "a.exr") == readExrFile<float>(folder / "b.exr"));
}

TEST_F(ApplyCommand, SaysWhatItDidInOneLine)
{
    ASSERT_EQ(run({"chart", "in.exr", "--size", "32x18"}).status, 0);
    const Outcome outcome = run({"apply", "none.ctf", "in.exr", "out.png", "--depth", "8i"});
    EXPECT_THAT(outcome.out, MatchesRegex("in\\.exr \\(RGB 16f\\) -> out\\.png \\(RGB 8i\\), 32 x 18, [0-9]+\\.[0-9][0-9] s\n"));
    EXPECT_EQ(outcome.err, "");
}

TEST_F(ApplyCommand, QuietSaysNothing)
{
    ASSERT_EQ(run({"chart", "in.exr", "--size", "32x18", "--quiet"}).out, "");
    const Outcome outcome = run({"apply", "-q", "none.ctf", "in.exr", "out.png"});
    EXPECT_EQ(outcome.out + outcome.err, "");
    EXPECT_EQ(outcome.status, 0);
}

TEST_F(ApplyCommand, MissingTransformIsNamed)
{
    ASSERT_EQ(run({"chart", "in.exr", "--size", "32x18"}).status, 0);
    expectFailure(run({"apply", "gone.ctf", "in.exr", "out.png"}), 1,
                  "tavrin: cannot load the transform 'gone.ctf': No file found: 'gone.ctf'");
}

TEST_F(ApplyCommand, FaultInATransformIsToldWithItsLine)
{
    ASSERT_EQ(run({"chart", "in.exr", "--size", "32x18"}).status, 0);
    // The array of the third to fifth line has two numbers where nine are announced.
    writeText(folder / "bad.ctf", "<ProcessList version=\"1.3\" id=\"x\">\n"
                                  "    <Matrix inBitDepth=\"32f\" outBitDepth=\"32f\">\n"
                                  "        <Array dim=\"3 3 3\">\n"
                                  "            1 0\n"
                                  "        </Array>\n"
                                  "    </Matrix>\n"
                                  "</ProcessList>\n");
    expectFailure(
        run({"apply", "bad.ctf", "in.exr", "out.png"}), 1,
        AllOf(StartsWith("tavrin: cannot load the transform 'bad.ctf': Expected 3x3x3 Array values, found 2 in 'Matrix' line "),
              HasSubstr("bad.ctf")));
    EXPECT_THAT(folder.names(), testing::Not(testing::Contains("out.png")));
}

TEST_F(ApplyCommand, MissingPictureIsNamed)
{
    expectFailure(run({"apply", "none.ctf", "gone.exr", "out.png"}), 1,
                  "tavrin: cannot open 'gone.exr': No such file or directory");
}

// Linear light: a stop doubles it, a contrast of 1 is exact.
char const* const kExposureOp = "    <ExposureContrast inBitDepth=\"32f\" outBitDepth=\"32f\" style=\"linear\">\n"
                                "        <ECParams exposure=\"0\" contrast=\"1\" pivot=\"0.18\"/>\n"
                                "        %\n"
                                "    </ExposureContrast>\n";

void writeExposureTransform(std::string const& path, std::string const& dynamicParameters)
{
    std::string op = kExposureOp;
    op.replace(op.find('%'), 1, dynamicParameters);
    writeText(path,
              "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<ProcessList version=\"1.3\" id=\"test\">\n" + op + "</ProcessList>\n");
}

PictureFloat greyPicture()
{
    PictureFloat picture(2, 2, 3);
    for (float& sample : picture.samples)
        sample = 0.25f;
    return picture;
}

TEST_F(ApplyCommand, ExposureAndContrastAreSetOnATransformThatLetsThemChange)
{
    writeExposureTransform(folder / "view.ctf", "<DynamicParameter param=\"EXPOSURE\"/><DynamicParameter param=\"CONTRAST\"/>");
    writeExrFile(folder / "in.exr", greyPicture());
    apply({"view.ctf", "in.exr", "stop.exr", "--exposure", "1"});
    EXPECT_FLOAT_EQ(readExrFile<float>(folder / "stop.exr").at(1, 1, 2), 0.5f);
    apply({"none.ctf", "view.ctf", "in.exr", "both.exr", "--exposure=-1", "--contrast", "2"});
    // (0.125 / 0.18)^2 * 0.18 by a polynomial of four digits
    EXPECT_NEAR(readExrFile<float>(folder / "both.exr").at(0, 0, 0), 0.125 * 0.125 / 0.18, 1e-4);
}

TEST_F(ApplyCommand, ExposureOfATransformThatDoesNotLetItChangeIsMisuse)
{
    writeExposureTransform(folder / "view.ctf", "<DynamicParameter param=\"CONTRAST\"/>");
    writeExrFile(folder / "in.exr", greyPicture());
    expectFailure(run({"apply", "view.ctf", "in.exr", "out.exr", "--exposure", "1"}), 2,
                  HasSubstr("--exposure: the transform has no dynamic Exposure"));
    expectFailure(run({"apply", "none.ctf", "in.exr", "out.exr", "--contrast", "1"}), 2,
                  HasSubstr("--contrast: the transform has no dynamic Contrast"));
    EXPECT_THAT(folder.names(), testing::Not(testing::Contains("out.exr")));
}

TEST_F(ApplyCommand, UnknownContentIsRefused)
{
    writeText(folder / "in.jpg", "\xff\xd8\xff\xe0 not one of ours");
    expectFailure(run({"apply", "none.ctf", "in.jpg", "out.png"}), 1,
                  "tavrin: 'in.jpg' is no picture of a known type (OpenEXR, PNG, TIFF, DPX)");
    writeText(folder / "empty.png", "");
    expectFailure(run({"apply", "none.ctf", "empty.png", "out.png"}), 1,
                  "tavrin: 'empty.png' is no picture of a known type (OpenEXR, PNG, TIFF, DPX)");
}

TEST_F(ApplyCommand, UnknownExtensionIsMisuse)
{
    expectFailure(run({"apply", "none.ctf", "in.exr", "out.jpg"}), 2,
                  "tavrin: cannot tell the image type of 'out.jpg': its extension is none of .exr, .png, .tif, .tiff, .dpx");
    expectFailure(run({"apply", "none.ctf", "in.exr", "out"}), 2,
                  "tavrin: cannot tell the image type of 'out': its extension is none of .exr, .png, .tif, .tiff, .dpx");
}

TEST_F(ApplyCommand, DepthThatTheFileTypeHasNotIsMisuse)
{
    ASSERT_EQ(run({"chart", "in.exr", "--size", "32x18"}).status, 0);
    expectFailure(run({"apply", "none.ctf", "in.exr", "out.png", "--depth", "16f"}), 2,
                  "tavrin: PNG files hold no pixels of depth 16f: choose one of 8i, 16i");
}

TEST_F(ApplyCommand, WrongArgumentsAreMisuse)
{
    expectFailure(run({"apply"}), 2, "tavrin: [TRANSFORM...] IN OUT is required (see 'tavrin apply --help')");
    expectFailure(run({"apply", "out.exr"}), 2,
                  "tavrin: [TRANSFORM...] IN OUT: At least 2 required but received 1 (see 'tavrin apply --help')");
    expectFailure(run({"apply", "in.exr", "out.exr"}), 2, "tavrin: a transform is missing (see 'tavrin apply --help')");
    expectFailure(run({"apply", "none.ctf", "a.exr", "b.exr", "--depth", "9i"}), 2, HasSubstr("--depth: 9i not in "));
    expectFailure(run({"apply", "none.ctf", "a.exr", "b.exr", "--threads", "0"}), 2, HasSubstr("--threads: "));
    expectFailure(run({"apply", "none.ctf", "a.exr", "b.exr", "--threads", "many"}), 2, HasSubstr("--threads"));
    expectFailure(run({"apply", "none.ctf", "a.exr", "b.exr", "--optimize", "0"}), 2, HasSubstr("--optimize: "));
    expectFailure(run({"apply", "none.ctf", "a.exr", "b.exr", "--frob"}), 2, HasSubstr("--frob"));
}

TEST_F(ApplyCommand, ControlCharactersOfAFileNameDoNotReachTheTerminal)
{
    expectFailure(run({"apply", "none.ctf", "a\x1b[2J\nb.exr", "out.png"}), 1,
                  "tavrin: cannot open 'a?[2J b.exr': No such file or directory");
}

// The graphics compute in floats too, and their sums may round apart from ours.
TEST_F(ApplyCommand, GpuGivesAlmostTheSamePixels)
{
    Picture16 in(37, 21, 3);
    for (std::size_t i = 0; i < in.samples.size(); ++i)
        in.samples[i] = static_cast<std::uint16_t>(i * 7919 % 65536);
    writePngFile(folder / "in.png", in);
    apply({"matrix.ctf", "in.png", "cpu.png"});
    const Outcome outcome = run({"apply", "--gpu", "matrix.ctf", "in.png", "gpu.png"});
#ifdef TAVRIN_PROGRAM_HAS_OPENGL
    ASSERT_EQ(outcome.status, 0) << outcome.err;
    const Picture16 cpu = readPngFile<std::uint16_t>(folder / "cpu.png");
    const Picture16 gpu = readPngFile<std::uint16_t>(folder / "gpu.png");
    ASSERT_EQ(gpu.samples.size(), cpu.samples.size());
    for (std::size_t i = 0; i < cpu.samples.size(); ++i)
        ASSERT_NEAR(gpu.samples[i], cpu.samples[i], 1) << i;
#else
    expectFailure(outcome, 1, HasSubstr("built without OpenGL"));
#endif
}

} // namespace
