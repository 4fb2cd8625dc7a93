// Each type of picture file, in every form that is read, through a transform that changes nothing: what comes out is what went
// in, to the last bit.
#include "pictureFiles.h"
#include "programRun.h"

#include <png.h>
#include <tiffio.h>

#include <cmath>
#include <limits>

using Imath::half;

namespace
{

// Every value of 8 or 16 bits, every finite half, or floats of every exponent and sign; channels start at different values.
template <class Sample>
std::vector<Sample> interestingSamples()
{
    std::vector<Sample> samples;
    for (unsigned int code = 0; code <= std::numeric_limits<Sample>::max(); ++code)
        samples.push_back(static_cast<Sample>(code));
    return samples;
}

template <>
std::vector<half> interestingSamples()
{
    std::vector<half> samples;
    for (unsigned int bits = 0; bits < 65536; ++bits)
    {
        half value;
        value.setBits(static_cast<unsigned short>(bits));
        if (value.isFinite())
            samples.push_back(value);
    }
    return samples;
}

template <>
std::vector<float> interestingSamples()
{
    std::vector<float> samples = {0.0f, -0.0f, std::numeric_limits<float>::max(), std::numeric_limits<float>::lowest()};
    for (int exponent = -126; exponent < 128; ++exponent)
    {
        for (float mantissa : {1.0f, -1.0f, 1.2345679f, -1.9999999f})
            samples.push_back(std::ldexp(mantissa, exponent));
    }
    return samples;
}

// At most maximum is the largest code.
template <class Sample>
Picture<Sample> interestingPicture(unsigned int channels, unsigned int width = 0,
                                   unsigned int maximum = std::numeric_limits<unsigned int>::max())
{
    std::vector<Sample> samples = interestingSamples<Sample>();
    if (samples.size() > maximum)
        samples.resize(maximum + 1);
    const unsigned int count = static_cast<unsigned int>(samples.size());
    if (width == 0)
        width = std::min(count, 251u);
    Picture<Sample> picture(width, (count + width - 1) / width, channels);
    for (std::size_t i = 0; i < picture.samples.size(); ++i)
        picture.samples[i] = samples[(i / channels + (i % channels) * (count / 4 + 1)) % count];
    return picture;
}

// As a gtest parameter: the channels of a picture.
class RoundTrip : public ProgramTest, public testing::WithParamInterface<unsigned int>
{
protected:
    // Reads in, writes out.
    void convert(std::string const& in, std::string const& out)
    {
        writeIdentityTransform(folder / "none.ctf");
        const Outcome outcome = run({"apply", "--quiet", "none.ctf", in, out});
        ASSERT_EQ(outcome.status, 0) << outcome.err;
        ASSERT_EQ(outcome.out + outcome.err, "");
    }

    template <class Sample>
    void expectSamePng()
    {
        const Picture<Sample> picture = interestingPicture<Sample>(GetParam());
        writePngFile(folder / "in.png", picture);
        convert("in.png", "out.png");
        EXPECT_TRUE(readPngFile<Sample>(folder / "out.png") == picture);
    }

    template <class Sample>
    void expectSameTiff(TiffOptions const& options = {})
    {
        const Picture<Sample> picture = interestingPicture<Sample>(GetParam());
        writeTiffFile(folder / "in.tif", picture, options);
        convert("in.tif", "out.tif");
        EXPECT_TRUE(readTiffFile<Sample>(folder / "out.tif") == picture);
    }

    template <class Sample>
    void expectSameExr(ExrOptions const& options = {})
    {
        const Picture<Sample> picture = interestingPicture<Sample>(GetParam());
        writeExrFile(folder / "in.exr", picture, options);
        convert("in.exr", "out.exr");
        EXPECT_TRUE(readExrFile<Sample>(folder / "out.exr") == picture);
    }

    void expectSameDpx(DpxOptions const& options, unsigned int channels, unsigned int width)
    {
        const Picture16 picture = interestingPicture<std::uint16_t>(channels, width, (1u << options.bits) - 1);
        writeDpxFile(folder / "in.dpx", picture, options);
        convert("in.dpx", "out.dpx");
        EXPECT_TRUE(readDpxFile(folder / "out.dpx") == picture);
    }
};

TEST_P(RoundTrip, PngOf8Bits)
{
    expectSamePng<std::uint8_t>();
}
TEST_P(RoundTrip, PngOf16Bits)
{
    expectSamePng<std::uint16_t>();
}
TEST_P(RoundTrip, TiffOf8Bits)
{
    expectSameTiff<std::uint8_t>();
}
TEST_P(RoundTrip, TiffOf16Bits)
{
    expectSameTiff<std::uint16_t>();
}
TEST_P(RoundTrip, TiffOfHalfs)
{
    expectSameTiff<half>();
}
TEST_P(RoundTrip, TiffOfFloats)
{
    expectSameTiff<float>();
}
TEST_P(RoundTrip, TiledTiff)
{
    expectSameTiff<std::uint16_t>({.tileSide = 32});
}
TEST_P(RoundTrip, TiffOfSeparatePlanes)
{
    expectSameTiff<float>({.separatePlanes = true});
}
TEST_P(RoundTrip, TiledTiffOfSeparatePlanes)
{
    expectSameTiff<std::uint8_t>({.tileSide = 64, .separatePlanes = true});
}
TEST_P(RoundTrip, BigEndianCompressedTiff)
{
    expectSameTiff<std::uint16_t>({.bigEndian = true, .compression = COMPRESSION_LZW});
}
TEST_P(RoundTrip, ExrOfHalfs)
{
    expectSameExr<half>();
}
TEST_P(RoundTrip, ExrOfFloats)
{
    expectSameExr<float>();
}
TEST_P(RoundTrip, TiledExr)
{
    expectSameExr<half>({.tileSide = 48});
}
TEST_P(RoundTrip, ExrInALargerFrame)
{
    const ExrOptions options = {.x = -7, .y = 33, .display = {-20, -10, 1000, 900}};
    expectSameExr<float>(options);
    EXPECT_EQ(readExrWindows(folder / "out.exr"), readExrWindows(folder / "in.exr"));
}
TEST_P(RoundTrip, DpxOf12And16Bits)
{
    const unsigned int descriptor = GetParam() == 3 ? 50 : 51;
    for (unsigned int bits : {12u, 16u})
    {
        for (bool bigEndian : {true, false})
            expectSameDpx({.bits = bits, .bigEndian = bigEndian, .descriptor = descriptor}, GetParam(), 128);
    }
}
TEST_P(RoundTrip, DpxOfRowsThatEndInsideAWord)
{
    // Three channels of two bytes in a row of odd width fill no whole words: some writers pad, others don't.
    const unsigned int descriptor = GetParam() == 3 ? 50 : 51;
    for (unsigned int padding : {0u, 2u, 6u})
        expectSameDpx({.bits = 16, .descriptor = descriptor, .rowPadding = padding}, GetParam(), 129);
}

INSTANTIATE_TEST_SUITE_P(Channels, RoundTrip, testing::Values(3u, 4u), testing::PrintToStringParamName());

class ImageTypes : public ProgramTest
{
protected:
    // Reads in, writes out.png or whatever is asked for.
    void convert(std::string const& in, std::string const& out)
    {
        writeIdentityTransform(folder / "none.ctf");
        const Outcome outcome = run({"apply", "none.ctf", in, out});
        ASSERT_EQ(outcome.status, 0) << outcome.err;
    }
};

TEST_F(ImageTypes, DpxOf10BitsKeepsAllCodesInBothByteOrders)
{
    const Picture16 picture = interestingPicture<std::uint16_t>(3, 33, 1023);
    for (bool bigEndian : {true, false})
    {
        writeDpxFile(folder / "in.dpx", picture, {.bigEndian = bigEndian});
        convert("in.dpx", "out.dpx");
        EXPECT_TRUE(readDpxFile(folder / "out.dpx") == picture);
    }
}

TEST_F(ImageTypes, DpxOfAnotherProgramIsReadToTheLastCode)
{
    // The factors of the columns and rows in the pictures' formula, see tests/data/ORIGINS.
    const unsigned int factors[3][3] = {{150, 100, 30}, {600, 400, 120}, {9000, 6000, 2000}};
    for (unsigned int kind = 0; kind < 3; ++kind)
    {
        const unsigned int bits[] = {10, 12, 16};
        const unsigned int maximum = (1u << bits[kind]) - 1;
        for (char const* order : {"Be", "Le"})
        {
            convert(TAVRIN_TEST_DATA "/tools/rgb" + std::to_string(bits[kind]) + order + ".dpx", "out.dpx");
            const Picture16 out = readDpxFile(folder / "out.dpx");
            ASSERT_EQ(out.samples.size(), 7u * 5 * 3);
            for (unsigned int y = 0; y < 5; ++y)
            {
                for (unsigned int x = 0; x < 7; ++x)
                {
                    EXPECT_EQ(out.at(x, y, 0), x * factors[kind][0] + y);
                    EXPECT_EQ(out.at(x, y, 1), maximum - x * factors[kind][1] - y * 7);
                    EXPECT_EQ(out.at(x, y, 2), x * y * factors[kind][2] + 3);
                }
            }
        }
    }
}

TEST_F(ImageTypes, DpxWithAlphaFirstIsReadInItsOrder)
{
    const Picture16 picture = interestingPicture<std::uint16_t>(4, 64, 4095);
    writeDpxFile(folder / "in.dpx", picture, {.bits = 12, .descriptor = 52});
    convert("in.dpx", "out.dpx");
    EXPECT_TRUE(readDpxFile(folder / "out.dpx") == picture);
}

TEST_F(ImageTypes, GreyPngBecomesRgb)
{
    // 1 bit a pixel: two rows of 0b1010'0000.
    writeRawPngFile(folder / "in.png", {3, 2, 1, PNG_COLOR_TYPE_GRAY, {0xa0, 0x40}});
    convert("in.png", "out.png");
    const Picture8 out = readPngFile<std::uint8_t>(folder / "out.png");
    EXPECT_EQ(out.samples, (std::vector<std::uint8_t>{255, 255, 255, 0, 0, 0, 255, 255, 255, 0, 0, 0, 255, 255, 255, 0, 0, 0}));
}

TEST_F(ImageTypes, GreyPngWithAlphaOf16BitsBecomesRgba)
{
    writeRawPngFile(folder / "in.png", {1, 1, 16, PNG_COLOR_TYPE_GRAY_ALPHA, {0x12, 0x34, 0xfe, 0xdc}});
    convert("in.png", "out.png");
    EXPECT_EQ(readPngFile<std::uint16_t>(folder / "out.png").samples, (std::vector<std::uint16_t>{0x1234, 0x1234, 0x1234, 0xfedc}));
}

TEST_F(ImageTypes, PalettePngBecomesItsColours)
{
    writeRawPngFile(folder / "in.png", {2, 1, 8, PNG_COLOR_TYPE_PALETTE, {1, 0}, {10, 20, 30, 200, 150, 100}});
    convert("in.png", "out.png");
    EXPECT_EQ(readPngFile<std::uint8_t>(folder / "out.png").samples, (std::vector<std::uint8_t>{200, 150, 100, 10, 20, 30}));
}

TEST_F(ImageTypes, PalettePngWithTransparencyGetsAlpha)
{
    writeRawPngFile(folder / "in.png", {2, 1, 8, PNG_COLOR_TYPE_PALETTE, {1, 0}, {10, 20, 30, 200, 150, 100}, {77}});
    convert("in.png", "out.png");
    EXPECT_EQ(readPngFile<std::uint8_t>(folder / "out.png").samples,
              (std::vector<std::uint8_t>{200, 150, 100, 255, 10, 20, 30, 77}));
}

TEST_F(ImageTypes, InterlacedPngIsReadWhole)
{
    const Picture8 picture = interestingPicture<std::uint8_t>(3, 19);
    writeRawPngFile(folder / "in.png", {picture.width, picture.height, 8, PNG_COLOR_TYPE_RGB, picture.samples, {}, {}, true});
    convert("in.png", "out.png");
    EXPECT_TRUE(readPngFile<std::uint8_t>(folder / "out.png") == picture);
}

TEST_F(ImageTypes, GreyTiffBecomesRgb)
{
    Picture16 grey(2, 1, 1);
    grey.samples = {1234, 65535};
    writeTiffFile(folder / "in.tif", grey);
    convert("in.tif", "out.tif");
    EXPECT_EQ(readTiffFile<std::uint16_t>(folder / "out.tif").samples,
              (std::vector<std::uint16_t>{1234, 1234, 1234, 65535, 65535, 65535}));
}

TEST_F(ImageTypes, GreyTiffWithAlphaBecomesRgba)
{
    for (bool separate : {false, true})
    {
        Picture8 grey(1, 2, 2);
        grey.samples = {10, 200, 20, 100};
        writeTiffFile(folder / "in.tif", grey, {.separatePlanes = separate});
        convert("in.tif", "out.tif");
        EXPECT_EQ(readTiffFile<std::uint8_t>(folder / "out.tif").samples,
                  (std::vector<std::uint8_t>{10, 10, 10, 200, 20, 20, 20, 100}));
    }
}

TEST_F(ImageTypes, LuminanceExrBecomesGrey)
{
    PictureHalf grey(2, 1, 1);
    grey.samples = {half(0.25f), half(16.0f)};
    writeExrFile(folder / "in.exr", grey, {.channels = {"Y"}});
    convert("in.exr", "out.exr");
    const PictureHalf out = readExrFile<half>(folder / "out.exr");
    EXPECT_EQ(out.samples, (std::vector<half>{half(0.25f), half(0.25f), half(0.25f), half(16.0f), half(16.0f), half(16.0f)}));
}

TEST_F(ImageTypes, LuminanceExrKeepsItsAlpha)
{
    PictureFloat grey(1, 1, 2);
    grey.samples = {0.125f, 0.5f};
    writeExrFile(folder / "in.exr", grey, {.channels = {"Y", "A"}});
    convert("in.exr", "out.exr");
    EXPECT_EQ(readExrFile<float>(folder / "out.exr").samples, (std::vector<float>{0.125f, 0.125f, 0.125f, 0.5f}));
}

TEST_F(ImageTypes, ExrOfOtherChannelsIsRefusedByTheirNames)
{
    PictureHalf picture(1, 1, 2);
    writeExrFile(folder / "in.exr", picture, {.channels = {"depth.Z", "motion.X"}});
    writeIdentityTransform(folder / "none.ctf");
    expectFailure(run({"apply", "none.ctf", "in.exr", "out.exr"}), 1,
                  "tavrin: 'in.exr' has the channels depth.Z, motion.X: R, G and B (or Y alone, without RY and BY), of halfs or "
                  "floats at full resolution, are read");
}

TEST_F(ImageTypes, TheTypeOfTheReadFileIsToldByItsContent)
{
    const Picture8 picture = interestingPicture<std::uint8_t>(3);
    writePngFile(folder / "picture.dat", picture);
    convert("picture.dat", "out.png");
    EXPECT_TRUE(readPngFile<std::uint8_t>(folder / "out.png") == picture);
}

TEST_F(ImageTypes, TheExtensionOfTheWrittenFileMayBeInCapitals)
{
    const Picture8 picture = interestingPicture<std::uint8_t>(3);
    writePngFile(folder / "in.png", picture);
    convert("in.png", "OUT.TIFF");
    EXPECT_TRUE(readTiffFile<std::uint8_t>(folder / "OUT.TIFF") == picture);
}

} // namespace
