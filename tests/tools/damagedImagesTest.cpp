// Picture files that are cut off, lie about their size, or hold what is not read: a clear word, no memory, no output.
#include "pictureFiles.h"
#include "programRun.h"

using Imath::half;
using testing::AllOf;
using testing::AnyOf;
using testing::Contains;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

namespace
{

class DamagedImages : public ProgramTest
{
protected:
    void SetUp() override { writeIdentityTransform(folder / "none.ctf"); }

    Outcome apply(std::string const& in) { return run({"apply", "none.ctf", in, "out.tif"}); }

    void expectRefused(std::string const& in, testing::Matcher<std::string const&> const& line)
    {
        expectFailure(apply(in), 1, line);
        EXPECT_THAT(folder.names(), Not(Contains(StartsWith("out.tif"))));
    }

    // Overwrites bytes of a file.
    void patch(std::string const& name, std::size_t position, std::string const& bytes)
    {
        std::string text = readText(folder / name);
        ASSERT_LE(position + bytes.size(), text.size());
        text.replace(position, bytes.size(), bytes);
        writeText(folder / name, text);
    }

    // A picture whose header has other bytes somewhere.
    void expectRefusedDpx(std::size_t position, std::string const& bytes, testing::Matcher<std::string const&> const& line)
    {
        writeDpxFile(folder / "in.dpx", Picture16(4, 4, 3));
        patch("in.dpx", position, bytes);
        expectRefused("in.dpx", line);
    }
};

// As a gtest parameter: the name of a picture file.
class CutOff : public DamagedImages, public testing::WithParamInterface<char const*>
{
};

TEST_P(CutOff, IsRefusedWhereverItIsCut)
{
    const std::string name = GetParam();
    ASSERT_EQ(run({"chart", name, "--size", "64x36"}).status, 0);
    const std::string whole = readText(folder / name);
    for (double part : {0.001, 0.01, 0.1, 0.3, 0.5, 0.8, 0.95, 0.999})
    {
        std::size_t const length = std::max<std::size_t>(8, static_cast<std::size_t>(part * static_cast<double>(whole.size())));
        writeText(folder / name, whole.substr(0, length));
        const Outcome outcome = apply(name);
        expectFailure(outcome, 1, AllOf(StartsWith("tavrin: '" + name + "' is "), HasSubstr("cut off")));
        EXPECT_THAT(folder.names(), Not(Contains(StartsWith("out.tif")))) << length;
    }
}

INSTANTIATE_TEST_SUITE_P(Types, CutOff, testing::Values("a.exr", "a.png", "a.tif", "a.dpx"));

TEST_F(DamagedImages, ChangedBytesOfAPngAreNoticed)
{
    ASSERT_EQ(run({"chart", "in.png", "--size", "64x36"}).status, 0);
    patch("in.png", 500, "xxxx");
    expectRefused("in.png", StartsWith("tavrin: 'in.png' is damaged or cut off: "));
}

// A header that claims a huge picture must not cost memory or time.
TEST_F(DamagedImages, SizeBeyondTheLimitsIsRefused)
{
    expectRefusedDpx(772, std::string("\x00\x10\x00\x00\x00\x00\x00\x04", 8),
                     HasSubstr("'in.dpx' holds a picture of 1048576 x 4: more than 131072 pixels on a side"));
    expectRefusedDpx(772, std::string("\xff\xff\xff\xff\xff\xff\xff\xff", 8),
                     HasSubstr("'in.dpx' holds a picture of 4294967295 x 4294967295: more than "));
    expectRefusedDpx(772, std::string("\x00\x02\x00\x00\x00\x02\x00\x00", 8),
                     HasSubstr("'in.dpx' holds a picture of 131072 x 131072: more than "));

    writeTiffFile(folder / "in.tif", Picture16(4, 4, 3));
    std::string tiff = readText(folder / "in.tif");
    // The entry of tag 256 (width) of a little-endian directory: tag, type LONG or SHORT, count 1, value.
    const std::size_t entry = tiff.find(std::string("\x00\x01\x04\x00\x01\x00\x00\x00\x04\x00\x00\x00", 12)) != std::string::npos
                                  ? tiff.find(std::string("\x00\x01\x04\x00\x01\x00\x00\x00\x04\x00\x00\x00", 12))
                                  : tiff.find(std::string("\x00\x01\x03\x00\x01\x00\x00\x00\x04\x00", 10));
    ASSERT_NE(entry, std::string::npos);
    patch("in.tif", entry + 2, std::string("\x04\x00\x01\x00\x00\x00\xff\xff\xff\x7f", 10));
    expectRefused("in.tif", HasSubstr("'in.tif' holds a picture of 2147483647 x 4: more than "));
}

TEST_F(DamagedImages, EmptyPictureIsRefused)
{
    expectRefusedDpx(772, std::string("\x00\x00\x00\x00\x00\x00\x00\x04", 8), "tavrin: 'in.dpx' holds an empty picture (0 x 4)");
}

TEST_F(DamagedImages, DpxThatIsTooShortForItsSizeTellsHowMuchIsThere)
{
    // 4096 x 4096 words of 4 bytes.
    expectRefusedDpx(772, std::string("\x00\x00\x10\x00\x00\x00\x10\x00", 8),
                     "tavrin: 'in.dpx' is cut off: its DPX header tells 4096 x 4096 pixels, and 64 of 67108864 bytes are there");
}

TEST_F(DamagedImages, DpxWhosePixelsWouldBeginBeyondTheFileIsRefused)
{
    expectRefusedDpx(808, std::string("\x7f\xff\xff\xff", 4),
                     "tavrin: 'in.dpx' is damaged: its DPX pixels would begin at byte 2147483647 of 2112");
}

TEST_F(DamagedImages, DpxOfOtherLayoutsIsRefusedByName)
{
    expectRefusedDpx(803, "\x08",
                     StartsWith("tavrin: 'in.dpx' holds DPX pixels that are not read (descriptor 50, 8 bits, packing 1): "));
    expectRefusedDpx(806, std::string("\x00\x01", 2), "tavrin: 'in.dpx' holds run-length encoded DPX pixels, which are not read");
    expectRefusedDpx(770, std::string("\x00\x03", 2), "tavrin: 'in.dpx' holds 3 DPX image elements: only one is read");
    expectRefusedDpx(768, std::string("\x00\x01", 2),
                     "tavrin: 'in.dpx' holds a DPX picture that is turned or mirrored (orientation 1), which is not read");
}

TEST_F(DamagedImages, ExrOfAHugeWindowIsRefused)
{
    PictureHalf small(4, 4, 3);
    writeExrFile(folder / "in.exr", small);
    const std::string text = readText(folder / "in.exr");
    const std::size_t window = text.find("dataWindow");
    ASSERT_NE(window, std::string::npos);
    // Name, a zero, "box2i", a zero, the size; then left, top, right, bottom.
    const std::size_t right = window + 11 + 6 + 4 + 8;
    patch("in.exr", right, std::string("\xff\xff\xff\x3f", 4));
    expectRefused("in.exr", StartsWith("tavrin: 'in.exr' is damaged or cut off: "));
    // 131072 x 131072 are too many together.
    patch("in.exr", right, std::string("\xff\xff\x01\x00\xff\xff\x01\x00", 8));
    expectRefused("in.exr", AnyOf(HasSubstr("'in.exr' holds a picture of 131072 x 131072: more than "),
                                  AllOf(StartsWith("tavrin: 'in.exr' is "), HasSubstr("cut off"))));
}

// The header chunk of a PNG of that size, with its check sum, and no pixels.
std::string pngHeader(std::string const& size, std::string const& checkSum)
{
    return std::string("\x89PNG\r\n\x1a\n\0\0\0\x0dIHDR", 16) + size + std::string("\x08\x02\0\0\0", 5) + checkSum +
           std::string("\0\0\x10\0IDAT", 8);
}

TEST_F(DamagedImages, PngOfAHugeSizeIsRefused)
{
    // Check sums by Python's zlib.crc32.
    writeText(folder / "in.png", pngHeader(std::string("\x7f\xff\xff\xff\x7f\xff\xff\xff", 8), "\x9b\xab\x9c\x31"));
    expectRefused("in.png", StartsWith("tavrin: 'in.png' is damaged or cut off: "));
    // Within the limits, but not in a file of 41 bytes.
    writeText(folder / "in.png", pngHeader(std::string("\x00\x00\x80\x00\x00\x00\x80\x00", 8), "\x4b\x1e\x34\x28"));
    expectRefused("in.png", "tavrin: 'in.png' is damaged or cut off: 41 bytes can't hold 32768 x 32768 pixels");
}

TEST_F(DamagedImages, TiffOfInksIsRefused)
{
    Picture8 small(4, 4, 3);
    writeTiffFile(folder / "in.tif", small);
    // Photometric interpretation 2 (RGB) becomes 5 (separated inks): tag 262, type SHORT, count 1.
    const std::size_t entry = readText(folder / "in.tif").find(std::string("\x06\x01\x03\x00\x01\x00\x00\x00\x02\x00", 10));
    ASSERT_NE(entry, std::string::npos);
    patch("in.tif", entry + 8, "\x05");
    expectRefused("in.tif", "tavrin: 'in.tif' holds TIFF pixels of photometric interpretation 5: grey (1) and RGB (2) are read");
}

TEST_F(DamagedImages, FoldersAndDevicesAreNoPictures)
{
    expectFailure(run({"apply", "none.ctf", ".", "out.tif"}), 1, "tavrin: cannot read '.': it is not a regular file");
    expectFailure(run({"apply", "none.ctf", "/dev/zero", "out.tif"}), 1,
                  "tavrin: cannot read '/dev/zero': it is not a regular file");
}

} // namespace
