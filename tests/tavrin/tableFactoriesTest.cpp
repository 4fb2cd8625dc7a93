// Tables from arrays, and how tables are displayed, through the public interface.
#include "contentRecorder.h"

#include <gmock/gmock.h>

#include <limits>
#include <string>
#include <vector>

using namespace Tavrin;
using testing::Contains;
using testing::ElementsAre;
using testing::IsSupersetOf;
using testing::MatchesRegex;
using testing::Not;

namespace
{

constexpr char kIdentifier[] = "Identifier: [0-9a-f]{8}-[0-9a-f]{4}-[0-9a-f]{4}-[0-9a-f]{4}-[0-9a-f]{12}";

// The three element types and their factories.
template <class Value>
struct Factories;
template <>
struct Factories<unsigned short>
{
    static constexpr auto k1D = &Create1DLutTransformFromShort;
    static constexpr auto k3D = &Create3DLutTransformFromShort;
};
template <>
struct Factories<unsigned int>
{
    static constexpr auto k1D = &Create1DLutTransformFromInt;
    static constexpr auto k3D = &Create3DLutTransformFromInt;
};
template <>
struct Factories<float>
{
    static constexpr auto k1D = &Create1DLutTransformFromFloat;
    static constexpr auto k3D = &Create3DLutTransformFromFloat;
};

template <class Value>
class TableFactories : public testing::Test
{
};
using Values = testing::Types<unsigned short, unsigned int, float>;
TYPED_TEST_SUITE(TableFactories, Values, );

} // namespace

TYPED_TEST(TableFactories, InterleaveThreeColumns)
{
    TypeParam const red[] = {0, 10};
    TypeParam const green[] = {1, 11};
    TypeParam const blue[] = {2, 1023};
    TransformPtr transform;
    ASSERT_TRUE(Factories<TypeParam>::k1D(BIT_DEPTH_8i, BIT_DEPTH_10i, 2, red, green, blue, HALF_FLAGS_NONE, transform));
    DisplayedOp const table = displayedOp(transform);
    EXPECT_EQ(table.name, "LUT 1D");
    EXPECT_THAT(table.common, ElementsAre(MatchesRegex(kIdentifier), "Name: none", "Input Bit Depth: 8i", "Output Bit Depth: 10i"));
    EXPECT_THAT(table.own,
                ElementsAre("Interpolation: default", "Array Dimension: 2", "Array Row 1:       0.0000      1.0000      2.0000",
                            "Array Row 2:      10.0000     11.0000   1023.0000"));
}

TYPED_TEST(TableFactories, ReadRawHalfs)
{
    // 1, 2 and -2.
    TypeParam const one[] = {15360, 15360};
    TypeParam const two[] = {16384, 16384};
    TypeParam const minusTwo[] = {49152, 49152};
    TransformPtr transform;
    ASSERT_TRUE(
        Factories<TypeParam>::k1D(BIT_DEPTH_8i, BIT_DEPTH_32f, 2, one, two, minusTwo, HALF_FLAGS_OUTPUT_RAW_HALFS, transform));
    EXPECT_THAT(displayedOp(transform).own, ElementsAre("Interpolation: default", "Array Dimension: 2", "Raw Halfs: Yes",
                                                        "Array Row 1:       1.0000      2.0000     -2.0000",
                                                        "Array Row 2:       1.0000      2.0000     -2.0000"));
}

TYPED_TEST(TableFactories, TakeAHalfDomain)
{
    std::vector<TypeParam> const column(65536, 1);
    TransformPtr transform;
    ASSERT_TRUE(Factories<TypeParam>::k1D(BIT_DEPTH_16f, BIT_DEPTH_32f, 65536, column.data(), column.data(), column.data(),
                                          HALF_FLAGS_INPUT_HALF_DOMAIN, transform));
    Lines const entries = displayedOp(transform).own;
    EXPECT_THAT(entries, Contains("Half Domain: Yes"));
    EXPECT_THAT(entries, Not(Contains("Raw Halfs: Yes")));
    EXPECT_EQ(entries.size(), 3U + 65536U);
    EXPECT_EQ(entries.back(), "Array Row 65536:       1.0000      1.0000      1.0000");
}

TYPED_TEST(TableFactories, CopyAGridInItsOrder)
{
    std::vector<TypeParam> values;
    for (unsigned int i = 0; i < 24; ++i)
        values.push_back(static_cast<TypeParam>(i));
    TransformPtr transform;
    ASSERT_TRUE(Factories<TypeParam>::k3D(BIT_DEPTH_10i, BIT_DEPTH_8i, 2, values.data(), transform));
    DisplayedOp const table = displayedOp(transform);
    EXPECT_EQ(table.name, "LUT 3D");
    EXPECT_THAT(table.common, IsSupersetOf({"Input Bit Depth: 10i", "Output Bit Depth: 8i"}));
    ASSERT_EQ(table.own.size(), 2U + 8U);
    EXPECT_EQ(table.own[0], "Interpolation: default");
    EXPECT_EQ(table.own[1], "Array Dimension: 2 x 2 x 2");
    EXPECT_EQ(table.own[2], "Array Row 1:       0.0000      1.0000      2.0000");
    EXPECT_EQ(table.own[9], "Array Row 8:      21.0000     22.0000     23.0000");
}

TYPED_TEST(TableFactories, RefuseNullAndKeepTheHandle)
{
    TypeParam const values[24] = {};
    TransformPtr transform;
    ASSERT_TRUE(Factories<TypeParam>::k3D(BIT_DEPTH_10i, BIT_DEPTH_8i, 2, values, transform));
    Transform const* const before = transform.get();

    auto const create = [&](TypeParam const* red, TypeParam const* green, TypeParam const* blue)
    { return told(Factories<TypeParam>::k1D(BIT_DEPTH_8i, BIT_DEPTH_8i, 2, red, green, blue, HALF_FLAGS_NONE, transform)); };
    EXPECT_EQ(create(nullptr, values, values), (Told{0x2030001, "NULL parameter: red"}));
    EXPECT_EQ(create(values, nullptr, values), (Told{0x2030001, "NULL parameter: green"}));
    EXPECT_EQ(create(values, values, nullptr), (Told{0x2030001, "NULL parameter: blue"}));
    EXPECT_EQ(told(Factories<TypeParam>::k3D(BIT_DEPTH_8i, BIT_DEPTH_8i, 2, nullptr, transform)),
              (Told{0x2030001, "NULL parameter: values"}));
    EXPECT_EQ(transform.get(), before);
}

TYPED_TEST(TableFactories, RefuseSizesThatNoTableCanHave)
{
    TypeParam const value[1] = {};
    TransformPtr transform;
    auto const create1D = [&](unsigned int size)
    { return told(Factories<TypeParam>::k1D(BIT_DEPTH_8i, BIT_DEPTH_8i, size, value, value, value, HALF_FLAGS_NONE, transform)); };
    auto const create3D = [&](unsigned int size)
    { return told(Factories<TypeParam>::k3D(BIT_DEPTH_8i, BIT_DEPTH_8i, size, value, transform)); };
    EXPECT_EQ(create1D(0), (Told{0x210004, "Array content empty"}));
    EXPECT_EQ(create1D(1), (Told{0x210005, "Array content illegal"}));
    EXPECT_EQ(create1D(1048577), (Told{0x210005, "Array content illegal"}));
    EXPECT_EQ(create1D(0xffffffffU), (Told{0x210005, "Array content illegal"}));
    EXPECT_EQ(create3D(0), (Told{0x210004, "Array content empty"}));
    EXPECT_EQ(create3D(1), (Told{0x210005, "Array content illegal"}));
    EXPECT_EQ(create3D(130), (Told{0x25000d, "130 exceeds maximum supported dimension 129"}));
    EXPECT_EQ(create3D(0xffffffffU).first, 0x25000dU);
    EXPECT_FALSE(transform);
}

TEST(TableFactoriesFromFloat, KeepFractionsAndDropThemFromRawHalfs)
{
    float const values[] = {0.25F, 15360.75F};
    TransformPtr transform;
    ASSERT_TRUE(Create1DLutTransformFromFloat(BIT_DEPTH_8i, BIT_DEPTH_32f, 2, values, values, values, HALF_FLAGS_NONE, transform));
    EXPECT_THAT(displayedOp(transform).own, Contains("Array Row 1:       0.2500      0.2500      0.2500"));
    ASSERT_TRUE(Create1DLutTransformFromFloat(BIT_DEPTH_8i, BIT_DEPTH_32f, 2, values, values, values, HALF_FLAGS_OUTPUT_RAW_HALFS,
                                              transform));
    EXPECT_THAT(displayedOp(transform).own, Contains("Array Row 2:       1.0000      1.0000      1.0000"));
}

TEST(TableFactoriesFromInt, ReadTheLowBitsOfRawHalfs)
{
    unsigned int const values[] = {0xabc03c00U, 0x14000U}; // 1 and 2.
    TransformPtr transform;
    ASSERT_TRUE(Create1DLutTransformFromInt(BIT_DEPTH_8i, BIT_DEPTH_32f, 2, values, values, values, HALF_FLAGS_OUTPUT_RAW_HALFS,
                                            transform));
    EXPECT_THAT(displayedOp(transform).own, Contains("Array Row 1:       1.0000      1.0000      1.0000"));
    EXPECT_THAT(displayedOp(transform).own, Contains("Array Row 2:       2.0000      2.0000      2.0000"));
}

TEST(TableDisplay, ShowsHueAdjustmentAndInterpolationOfAFile)
{
    TransformPtr transform;
    ASSERT_TRUE(loadColorTransformFromBuffer("<ProcessList id='a' version='1.4'><LUT1D inBitDepth='8i' outBitDepth='8i' "
                                             "interpolation='linear' hueAdjust='dw3'><Array dim='1 1'>0.00001</Array></LUT1D>"
                                             "</ProcessList>",
                                             transform));
    EXPECT_THAT(displayedOp(transform).own, ElementsAre("Interpolation: linear", "Array Dimension: 1", "Hue Adjustment: dw3",
                                                        "Array Row 1:   1.0000e-05  1.0000e-05  1.0000e-05"));
}

TEST(TableDisplay, ShowsAnInverseTableLikeATable)
{
    TransformPtr transform;
    ASSERT_TRUE(loadColorTransformFromBuffer("<ProcessList id='a' version='1.4'><InverseLUT1D inBitDepth='8i' outBitDepth='8i' "
                                             "interpolation='cubic'><Array dim='2 1'>0 255</Array></InverseLUT1D></ProcessList>",
                                             transform));
    EXPECT_EQ(displayedOp(transform).name, "Inverse LUT 1D");
    EXPECT_THAT(displayedOp(transform).own,
                ElementsAre("Interpolation: cubic", "Array Dimension: 2", "Array Row 1:       0.0000      0.0000      0.0000",
                            "Array Row 2:     255.0000    255.0000    255.0000"));
}
