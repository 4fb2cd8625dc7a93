// The numbers of the interface and the queries about them.
#include <tavrin/tavrin.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>
#include <string>

namespace
{

using namespace Tavrin;
using testing::ElementsAre;

struct Depth
{
    BitDepth depth;
    unsigned int value;
    char const* name;
    float maximum;
    unsigned int precision;
    bool isFloat;
};

constexpr Depth kDepths[] = {
    {BIT_DEPTH_8i, 4096, "8i", 255.0F, 8, false},      {BIT_DEPTH_10i, 8192, "10i", 1023.0F, 10, false},
    {BIT_DEPTH_12i, 16384, "12i", 4095.0F, 12, false}, {BIT_DEPTH_16i, 32768, "16i", 65535.0F, 16, false},
    {BIT_DEPTH_16f, 65536, "16f", 1.0F, 16, true},     {BIT_DEPTH_32f, 131072, "32f", 1.0F, 32, true},
};

struct Format
{
    char const* name;
    unsigned int value;
    unsigned int decimal;
    unsigned int bytes;
    unsigned int channels;
};

constexpr Format kFormats[] = {
    {"PF_RGB_8i", 0x1017, 4119, 3, 3},      {"PF_RGB_10i", 0x2017, 8215, 6, 3},      {"PF_RGB_10iP", 0x2117, 8471, 4, 3},
    {"PF_RGB_12i", 0x4017, 16407, 6, 3},    {"PF_RGB_16i", 0x8017, 32791, 6, 3},     {"PF_RGB_16f", 0x10017, 65559, 6, 3},
    {"PF_RGB_32f", 0x20017, 131095, 12, 3}, {"PF_RGBA_8i", 0x101f, 4127, 4, 4},      {"PF_RGBA_10i", 0x201f, 8223, 8, 4},
    {"PF_RGBA_10iP", 0x211f, 8479, 4, 4},   {"PF_RGBA_12i", 0x401f, 16415, 8, 4},    {"PF_RGBA_16i", 0x801f, 32799, 8, 4},
    {"PF_RGBA_16f", 0x1001f, 65567, 8, 4},  {"PF_RGBA_32f", 0x2001f, 131103, 16, 4}, {"PF_BGR_8i", 0x1027, 4135, 3, 3},
    {"PF_BGR_10i", 0x2027, 8231, 6, 3},     {"PF_BGR_12i", 0x4027, 16423, 6, 3},     {"PF_BGR_16i", 0x8027, 32807, 6, 3},
    {"PF_BGR_16f", 0x10027, 65575, 6, 3},   {"PF_BGR_32f", 0x20027, 131111, 12, 3},  {"PF_BGRA_8i", 0x102f, 4143, 4, 4},
    {"PF_BGRA_10i", 0x202f, 8239, 8, 4},    {"PF_BGRA_12i", 0x402f, 16431, 8, 4},    {"PF_BGRA_16i", 0x802f, 32815, 8, 4},
    {"PF_BGRA_16f", 0x1002f, 65583, 8, 4},  {"PF_BGRA_32f", 0x2002f, 131119, 16, 4}, {"PF_ABGR_8i", 0x104f, 4175, 4, 4},
    {"PF_ABGR_10i", 0x204f, 8271, 8, 4},    {"PF_ABGR_12i", 0x404f, 16463, 8, 4},    {"PF_ABGR_16i", 0x804f, 32847, 8, 4},
    {"PF_ABGR_16f", 0x1004f, 65615, 8, 4},  {"PF_ABGR_32f", 0x2004f, 131151, 16, 4},
};

PixelFormat formatOf(unsigned int value)
{
    return static_cast<PixelFormat>(value);
}

BitDepth depthOf(unsigned int value)
{
    return static_cast<BitDepth>(value);
}

TEST(BitDepth, HasItsValueNameMaximumAndPrecision)
{
    for (Depth const& row : kDepths)
    {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(row.depth, row.value);
        EXPECT_EQ(getBitDepth(row.name), row.depth);
        EXPECT_STREQ(getBitDepthName(row.depth), row.name);
        EXPECT_EQ(getBitDepthMaxValue(row.depth), row.maximum);
        EXPECT_EQ(getBitDepthMinValue(row.depth), 0.0F);
        EXPECT_EQ(getBitDepthValueRange(row.depth), row.maximum);
        EXPECT_EQ(getBitDepthPrecision(row.depth), row.precision);
        EXPECT_EQ(isFloatDepth(row.depth), row.isFloat);
        EXPECT_EQ(isIntegerDepth(row.depth), !row.isFloat);
    }
}

TEST(BitDepth, IsUnknownForNamesInAnotherCaseAndForeignNames)
{
    for (char const* const name : {"8I", "32F", "", "8", "Unknown", " 8i", "8i ", "14i"})
    {
        EXPECT_EQ(getBitDepth(name), BIT_DEPTH_UNKNOWN) << name;
    }
}

TEST(BitDepth, HasNeutralAnswersForUnknownValues)
{
    for (unsigned int const value : {0U, 3U, 0x3000U, 0x40000U, 0xffffffffU})
    {
        EXPECT_STREQ(getBitDepthName(depthOf(value)), "Unknown");
        EXPECT_EQ(getBitDepthMaxValue(depthOf(value)), 0.0F);
        EXPECT_EQ(getBitDepthMinValue(depthOf(value)), 0.0F);
        EXPECT_EQ(getBitDepthValueRange(depthOf(value)), 0.0F);
        EXPECT_EQ(getBitDepthPrecision(depthOf(value)), 0U);
        EXPECT_FALSE(isFloatDepth(depthOf(value)));
    }
}

TEST(BitDepth, CountsEveryValueButZeroAndFloatsAsInteger)
{
    EXPECT_FALSE(isIntegerDepth(BIT_DEPTH_UNKNOWN));
    EXPECT_TRUE(isIntegerDepth(depthOf(3)));
}

TEST(PixelFormat, HasItsValueNameSizeAndChannels)
{
    std::set<unsigned int> values;
    for (Format const& row : kFormats)
    {
        SCOPED_TRACE(row.name);
        values.insert(row.value);
        EXPECT_EQ(row.value, row.decimal);
        EXPECT_EQ(strToPF(row.name), row.value);
        EXPECT_STREQ(pfToStr(formatOf(row.value)), row.name);
        EXPECT_EQ(strToPF(pfToStr(formatOf(row.value))), row.value);
        EXPECT_EQ(getPixelSizeInByte(formatOf(row.value)), row.bytes);
        EXPECT_EQ(getNumChannels(formatOf(row.value)), row.channels);
    }
    EXPECT_EQ(values.size(), 32U);
}

TEST(PixelFormat, IsKnownForThe32ValuesAlone)
{
    unsigned int known = 0;
    for (unsigned int value = 0; value < 0x40000; ++value)
    {
        known += getPixelSizeInByte(formatOf(value)) != 0;
    }
    EXPECT_EQ(known, 32U);
}

TEST(PixelFormat, HoldsItsDepthUnderAMask)
{
    for (Format const& row : kFormats)
    {
        std::string const name = row.name;
        std::string depth = name.substr(name.rfind('_') + 1);
        if (depth.back() == 'P')
        {
            depth.pop_back();
        }
        EXPECT_STREQ(getBitDepthName(depthOf(row.value & 0xff000U)), depth.c_str()) << name;
    }
}

TEST(PixelFormat, HasEnumeratorsOfTheSameValues)
{
    EXPECT_EQ(PF_UNKNOWN, 0U);
    EXPECT_EQ(PF_RGB_8i, 0x1017U);
    EXPECT_EQ(PF_RGBA_10iP, 0x211fU);
    EXPECT_EQ(PF_BGR_12i, 0x4027U);
    EXPECT_EQ(PF_BGRA_16f, 0x1002fU);
    EXPECT_EQ(PF_ABGR_32f, 0x2004fU);
}

TEST(PixelFormat, IsPackedIntoFourBytes)
{
    EXPECT_EQ(getPixelSizeInByte(PF_RGB_10iP), 4U);
    EXPECT_EQ(getPixelSizeInByte(PF_RGBA_10iP), 4U);
}

TEST(PixelFormat, IsUnknownForNamesThatAreNoFormats)
{
    for (char const* const name : {"Unknown", "", "pf_rgb_8i", "RGB_8i", "PF_RGB_8", "PF_BGR_10iP", "PF_BGRA_10iP", "PF_ABGR_10iP",
                                   "PF_RGB_12iP", "PF_ABG_8i"})
    {
        EXPECT_EQ(strToPF(name), PF_UNKNOWN) << name;
    }
}

TEST(PixelFormat, HasNeutralAnswersForUnknownValues)
{
    for (unsigned int const value : {0U, 0x17U, 0x1000U, 0x1117U, 0xffffffffU})
    {
        EXPECT_STREQ(pfToStr(formatOf(value)), "Unknown");
        EXPECT_EQ(getPixelSizeInByte(formatOf(value)), 0U);
        EXPECT_EQ(getNumChannels(formatOf(value)), 0U);
    }
}

TEST(ROI, OfFourNumbersIsAWholeImage)
{
    ROI const roi(3, 5, 40, 20);
    EXPECT_EQ(roi.x, 3U);
    EXPECT_EQ(roi.y, 5U);
    EXPECT_EQ(roi.width, 40U);
    EXPECT_EQ(roi.height, 20U);
    EXPECT_EQ(roi.imageWidth, 40U);
    EXPECT_EQ(roi.imageHeight, 20U);
}

TEST(ROI, OfSixNumbersIsAPartOfAnImage)
{
    ROI const roi(3, 5, 40, 20, 100, 50);
    EXPECT_EQ(roi.x, 3U);
    EXPECT_EQ(roi.y, 5U);
    EXPECT_EQ(roi.width, 40U);
    EXPECT_EQ(roi.height, 20U);
    EXPECT_EQ(roi.imageWidth, 100U);
    EXPECT_EQ(roi.imageHeight, 50U);
}

TEST(ROI, HasTheSizeOfATightCopyOfItsActiveArea)
{
    EXPECT_EQ(getImageSizeInByte(ROI(0, 0, 4, 2, 100, 100), PF_RGBA_32f), 128U);
    EXPECT_EQ(getImageSizeInByte(ROI(7, 9, 5, 3), PF_RGB_8i), 45U);
    EXPECT_EQ(getImageSizeInByte(ROI(0, 0, 4, 2), PF_UNKNOWN), 0U);
    EXPECT_EQ(getImageSizeInByte(ROI(0, 0, 0, 2), PF_RGB_8i), 0U);
}

// 65536 x 65537 pixels of 4 bytes are 2^34 + 2^18 bytes, of which 32 bits hold 2^18.
TEST(ROI, HasASizeOf32Bits)
{
    EXPECT_EQ(getImageSizeInByte(ROI(0, 0, 65536, 65537), PF_RGBA_8i), 262144U);
}

TEST(Vertices, WalkRoundARectangleFromItsOrigin)
{
    EXPECT_THAT(Vertices(Rect(1.0F, 2.0F, 10.0F, 20.0F)).values, ElementsAre(1, 2, 1, 22, 11, 22, 11, 2));
}

TEST(Vertices, TakeEightNumbersInOrder)
{
    EXPECT_THAT(Vertices(1, 2, 3, 4, 5, 6, 7, 8).values, ElementsAre(1, 2, 3, 4, 5, 6, 7, 8));
}

TEST(BasePath, HasNamesInAnyCase)
{
    for (char const* const name : {"Norvane", "norvane", "NORVANE"})
    {
        EXPECT_EQ(getBasePath(name), BASE_PATH_VENDOR) << name;
    }
    for (char const* const name : {"Shared", "shared", "SHARED"})
    {
        EXPECT_EQ(getBasePath(name), BASE_PATH_SHARED) << name;
    }
    EXPECT_STREQ(getBasePathName(BASE_PATH_VENDOR), "Norvane");
    EXPECT_STREQ(getBasePathName(BASE_PATH_SHARED), "Shared");
}

TEST(BasePath, IsNoneForEverythingElse)
{
    for (char const* const name : {static_cast<char const*>(nullptr), "", "Other", "Shared "})
    {
        EXPECT_EQ(getBasePath(name), BASE_PATH_NONE);
    }
    EXPECT_STREQ(getBasePathName(BASE_PATH_NONE), "");
    EXPECT_STREQ(getBasePathName(static_cast<BasePath>(3)), "");
}

TEST(Flags, HaveTheirValues)
{
    EXPECT_EQ(BASE_PATH_NONE, 0U);
    EXPECT_EQ(BASE_PATH_VENDOR, 1U);
    EXPECT_EQ(BASE_PATH_SHARED, 2U);
    EXPECT_EQ(LOG_USER, 0U);
    EXPECT_EQ(LOG_DEBUG, 1U);
    EXPECT_EQ(RENDERER_CPU, 1U);
    EXPECT_EQ(RENDERER_GPU, 2U);
    EXPECT_EQ(OPTIMIZER_DEFAULT_THRESHOLD, 90U);
    EXPECT_EQ(OPTIMIZER_KEEP_DYNAMIC, 0x80000000U);
    EXPECT_EQ(RESOLVE_GRAPHICS_MONITOR, 0U);
    EXPECT_EQ(RESOLVE_BROADCAST_MONITOR, 1U);
}

TEST(Types, AreOf32Bits)
{
    EXPECT_EQ(sizeof(BitDepth), 4U);
    EXPECT_EQ(sizeof(PixelFormat), 4U);
    EXPECT_EQ(sizeof(BasePath), 4U);
    EXPECT_EQ(sizeof(ErrorId), 4U);
    EXPECT_EQ(sizeof(ROI), 24U);
    EXPECT_EQ(sizeof(Rect), 16U);
    EXPECT_EQ(sizeof(Vertices), 32U);
}

TEST(Version, OfTheLibraryIsThatOfItsHeaders)
{
    EXPECT_STREQ(getVersion(), TAVRIN_VERSION_STRING);
}

} // namespace
