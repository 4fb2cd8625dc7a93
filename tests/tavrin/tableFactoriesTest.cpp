// Tables from arrays, and how tables are displayed, through the public interface.
#include <tavrin/tavrin.h>

#include <gmock/gmock.h>

#include <limits>
#include <string>
#include <utility>
#include <vector>

using namespace Tavrin;
using testing::Contains;
using testing::ElementsAre;
using testing::MatchesRegex;
using testing::Not;
using testing::Pair;

namespace
{

using Entries = std::vector<std::pair<std::string, std::string>>;

// The entries of the operators' sections.
class Display : public Transform::ContentCallbacks
{
public:
    void beginSection(char const* name) override
    {
        ++m_depth;
        if (m_depth == 2)
            sections.emplace_back(name);
    }
    void endSection() override { --m_depth; }
    void addEntry(char const* key, char const* value) override
    {
        if (m_depth == 2)
            entries.emplace_back(key, value);
    }

    std::vector<std::string> sections;
    Entries entries;

private:
    int m_depth = 0;
};

Display displayOf(TransformPtr const& transform)
{
    Display display;
    EXPECT_TRUE(transform->extractContent(display));
    return display;
}

// What stands after the entries that all operators have.
Entries ownEntriesOf(TransformPtr const& transform)
{
    Entries entries = displayOf(transform).entries;
    entries.erase(entries.begin(), entries.begin() + 4);
    return entries;
}

struct Outcome
{
    ErrorId code;
    std::string message;

    bool operator==(Outcome const& other) const { return code == other.code && message == other.message; }
};

Outcome outcomeOf(TavStatus const& status)
{
    return {status.getErrorCode(), status.getErrorMessage() ? status.getErrorMessage() : ""};
}

constexpr char kUuid[] = "[0-9a-f]{8}-[0-9a-f]{4}-[0-9a-f]{4}-[0-9a-f]{4}-[0-9a-f]{12}";

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
    Display const display = displayOf(transform);
    EXPECT_THAT(display.sections, ElementsAre("LUT 1D"));
    EXPECT_THAT(display.entries,
                ElementsAre(Pair("Identifier", MatchesRegex(kUuid)), Pair("Name", "none"), Pair("Input Bit Depth", "8i"),
                            Pair("Output Bit Depth", "10i"), Pair("Interpolation", "default"), Pair("Array Dimension", "2"),
                            Pair("Array Row 1", "      0.0000      1.0000      2.0000"),
                            Pair("Array Row 2", "     10.0000     11.0000   1023.0000")));
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
    EXPECT_THAT(ownEntriesOf(transform),
                ElementsAre(Pair("Interpolation", "default"), Pair("Array Dimension", "2"), Pair("Raw Halfs", "Yes"),
                            Pair("Array Row 1", "      1.0000      2.0000     -2.0000"),
                            Pair("Array Row 2", "      1.0000      2.0000     -2.0000")));
}

TYPED_TEST(TableFactories, TakeAHalfDomain)
{
    std::vector<TypeParam> const column(65536, 1);
    TransformPtr transform;
    ASSERT_TRUE(Factories<TypeParam>::k1D(BIT_DEPTH_16f, BIT_DEPTH_32f, 65536, column.data(), column.data(), column.data(),
                                          HALF_FLAGS_INPUT_HALF_DOMAIN, transform));
    Entries const entries = ownEntriesOf(transform);
    EXPECT_THAT(entries, Contains(Pair("Half Domain", "Yes")));
    EXPECT_THAT(entries, Not(Contains(Pair("Raw Halfs", "Yes"))));
    EXPECT_EQ(entries.size(), 3U + 65536U);
    EXPECT_THAT(entries.back(), Pair("Array Row 65536", "      1.0000      1.0000      1.0000"));
}

TYPED_TEST(TableFactories, CopyAGridInItsOrder)
{
    std::vector<TypeParam> values;
    for (unsigned int i = 0; i < 24; ++i)
        values.push_back(static_cast<TypeParam>(i));
    TransformPtr transform;
    ASSERT_TRUE(Factories<TypeParam>::k3D(BIT_DEPTH_10i, BIT_DEPTH_8i, 2, values.data(), transform));
    Display const display = displayOf(transform);
    EXPECT_THAT(display.sections, ElementsAre("LUT 3D"));
    ASSERT_EQ(display.entries.size(), 4U + 2U + 8U);
    EXPECT_THAT(display.entries[2], Pair("Input Bit Depth", "10i"));
    EXPECT_THAT(display.entries[3], Pair("Output Bit Depth", "8i"));
    EXPECT_THAT(display.entries[4], Pair("Interpolation", "default"));
    EXPECT_THAT(display.entries[5], Pair("Array Dimension", "2 x 2 x 2"));
    EXPECT_THAT(display.entries[6], Pair("Array Row 1", "      0.0000      1.0000      2.0000"));
    EXPECT_THAT(display.entries[13], Pair("Array Row 8", "     21.0000     22.0000     23.0000"));
}

TYPED_TEST(TableFactories, RefuseNullAndKeepTheHandle)
{
    TypeParam const values[24] = {};
    TransformPtr transform;
    ASSERT_TRUE(Factories<TypeParam>::k3D(BIT_DEPTH_10i, BIT_DEPTH_8i, 2, values, transform));
    Transform const* const before = transform.get();

    auto const create = [&](TypeParam const* red, TypeParam const* green, TypeParam const* blue)
    { return outcomeOf(Factories<TypeParam>::k1D(BIT_DEPTH_8i, BIT_DEPTH_8i, 2, red, green, blue, HALF_FLAGS_NONE, transform)); };
    EXPECT_EQ(create(nullptr, values, values), (Outcome{0x2030001, "NULL parameter: red"}));
    EXPECT_EQ(create(values, nullptr, values), (Outcome{0x2030001, "NULL parameter: green"}));
    EXPECT_EQ(create(values, values, nullptr), (Outcome{0x2030001, "NULL parameter: blue"}));
    EXPECT_EQ(outcomeOf(Factories<TypeParam>::k3D(BIT_DEPTH_8i, BIT_DEPTH_8i, 2, nullptr, transform)),
              (Outcome{0x2030001, "NULL parameter: values"}));
    EXPECT_EQ(transform.get(), before);
}

TYPED_TEST(TableFactories, RefuseSizesThatNoTableCanHave)
{
    TypeParam const value[1] = {};
    TransformPtr transform;
    auto const create1D = [&](unsigned int size) {
        return outcomeOf(
            Factories<TypeParam>::k1D(BIT_DEPTH_8i, BIT_DEPTH_8i, size, value, value, value, HALF_FLAGS_NONE, transform));
    };
    auto const create3D = [&](unsigned int size)
    { return outcomeOf(Factories<TypeParam>::k3D(BIT_DEPTH_8i, BIT_DEPTH_8i, size, value, transform)); };
    EXPECT_EQ(create1D(0), (Outcome{0x210004, "Array content empty"}));
    EXPECT_EQ(create1D(1), (Outcome{0x210005, "Array content illegal"}));
    EXPECT_EQ(create1D(1048577), (Outcome{0x210005, "Array content illegal"}));
    EXPECT_EQ(create1D(0xffffffffU), (Outcome{0x210005, "Array content illegal"}));
    EXPECT_EQ(create3D(0), (Outcome{0x210004, "Array content empty"}));
    EXPECT_EQ(create3D(1), (Outcome{0x210005, "Array content illegal"}));
    EXPECT_EQ(create3D(130), (Outcome{0x25000d, "130 exceeds maximum supported dimension 129"}));
    EXPECT_EQ(create3D(0xffffffffU).code, 0x25000dU);
    EXPECT_FALSE(transform);
}

TEST(TableFactoriesFromFloat, KeepFractionsAndDropThemFromRawHalfs)
{
    float const values[] = {0.25F, 15360.75F};
    TransformPtr transform;
    ASSERT_TRUE(Create1DLutTransformFromFloat(BIT_DEPTH_8i, BIT_DEPTH_32f, 2, values, values, values, HALF_FLAGS_NONE, transform));
    EXPECT_THAT(ownEntriesOf(transform), Contains(Pair("Array Row 1", "      0.2500      0.2500      0.2500")));
    ASSERT_TRUE(Create1DLutTransformFromFloat(BIT_DEPTH_8i, BIT_DEPTH_32f, 2, values, values, values, HALF_FLAGS_OUTPUT_RAW_HALFS,
                                              transform));
    EXPECT_THAT(ownEntriesOf(transform), Contains(Pair("Array Row 2", "      1.0000      1.0000      1.0000")));
}

TEST(TableFactoriesFromInt, ReadTheLowBitsOfRawHalfs)
{
    unsigned int const values[] = {0xabc03c00U, 0x14000U}; // 1 and 2.
    TransformPtr transform;
    ASSERT_TRUE(Create1DLutTransformFromInt(BIT_DEPTH_8i, BIT_DEPTH_32f, 2, values, values, values, HALF_FLAGS_OUTPUT_RAW_HALFS,
                                            transform));
    EXPECT_THAT(ownEntriesOf(transform), Contains(Pair("Array Row 1", "      1.0000      1.0000      1.0000")));
    EXPECT_THAT(ownEntriesOf(transform), Contains(Pair("Array Row 2", "      2.0000      2.0000      2.0000")));
}

TEST(TableDisplay, ShowsHueAdjustmentAndInterpolationOfAFile)
{
    TransformPtr transform;
    ASSERT_TRUE(loadColorTransformFromBuffer("<ProcessList id='a' version='1.4'><LUT1D inBitDepth='8i' outBitDepth='8i' "
                                             "interpolation='linear' hueAdjust='dw3'><Array dim='1 1'>0.00001</Array></LUT1D>"
                                             "</ProcessList>",
                                             transform));
    EXPECT_THAT(ownEntriesOf(transform),
                ElementsAre(Pair("Interpolation", "linear"), Pair("Array Dimension", "1"), Pair("Hue Adjustment", "dw3"),
                            Pair("Array Row 1", "  1.0000e-05  1.0000e-05  1.0000e-05")));
}

TEST(TableDisplay, ShowsAnInverseTableLikeATable)
{
    TransformPtr transform;
    ASSERT_TRUE(loadColorTransformFromBuffer("<ProcessList id='a' version='1.4'><InverseLUT1D inBitDepth='8i' outBitDepth='8i' "
                                             "interpolation='cubic'><Array dim='2 1'>0 255</Array></InverseLUT1D></ProcessList>",
                                             transform));
    EXPECT_THAT(displayOf(transform).sections, ElementsAre("Inverse LUT 1D"));
    EXPECT_THAT(ownEntriesOf(transform), ElementsAre(Pair("Interpolation", "cubic"), Pair("Array Dimension", "2"),
                                                     Pair("Array Row 1", "      0.0000      0.0000      0.0000"),
                                                     Pair("Array Row 2", "    255.0000    255.0000    255.0000")));
}
