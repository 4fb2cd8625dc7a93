// The gamut map's renderer: which one is chosen, and what it computes, on every instruction set.
#include "renderer/rendererHarness.h"

#include "transform/gamutMapOp.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>

using namespace RendererHarness;
using Color::GamutMapOp;
using testing::ElementsAre;

namespace
{

using Style = GamutMapOp::GamutMapStyle;

GamutMapOp gamutMap(Style style = Style::DW3)
{
    return {Tavrin::BIT_DEPTH_32f, Tavrin::BIT_DEPTH_32f, style};
}

// Places of the largest, middle and smallest channel by a table of the three comparisons' outcomes. False for the outcome that only
// a NaN in green brings about, where any order will do.
bool order(float r, float g, float b, std::array<unsigned int, 3>& channels)
{
    int const outcome = (r > g ? 5 : 0) + (g > b ? 4 : 0) - (r > b ? 3 : 0);
    if (outcome < 0)
        return false;
    static constexpr unsigned int kTable[] = {2, 1, 0, 2, 1, 2, 0, 1, 2};
    auto const k = static_cast<unsigned int>(outcome);
    channels = {kTable[k], kTable[k + 1], kTable[k + 2]};
    return true;
}

// One pixel by the text of the operation. False where it does not decide.
bool mapPixel(float const* in, float scale, float* out)
{
    float const rgb[] = {in[0] * scale, in[1] * scale, in[2] * scale};
    std::array<unsigned int, 3> channels;
    if (!order(rgb[0], rgb[1], rgb[2], channels))
        return false;
    auto const [max, mid, min] = channels;
    float const range = rgb[max] - rgb[min];
    float const chroma = range != 0.0F ? (rgb[mid] - rgb[min]) / range : 0.0F;
    for (unsigned int c = 0; c < 3; ++c)
        out[c] = rgb[c] > 0.0F ? rgb[c] : 0.0F;
    out[mid] = chroma * (out[max] - out[min]) + out[min];
    out[3] = in[3] * scale;
    return true;
}

} // namespace

TEST(GamutMapRenderer, OnlyTheMapHasARenderer)
{
    EXPECT_THAT(kindsOf(gamutMap()), ElementsAre(RendererKind::GamutMapRendererDW3));
    EXPECT_THAT(kindsOf(gamutMap(Style::None)), ElementsAre(RendererKind::ScaleRenderer))
        << "none adds nothing, and a scale stands in for an empty pipeline";
}

TEST(GamutMapRenderer, StyleNoneLeavesValuesAlone)
{
    EXPECT_THAT(render(gamutMap(Style::None), {1.0F, 0.25F, -0.5F, -2.0F}), ElementsAre(1.0F, 0.25F, -0.5F, -2.0F));
}

// The middle channel stays half way between the others.
TEST(GamutMapRenderer, MovesTheMiddleChannelWhereverItStands)
{
    std::array<unsigned int, 3> channels = {0, 1, 2};
    do
    {
        std::vector<float> in(4, -0.75F);
        std::vector<float> expected(4, -0.75F); // Alpha is no component.
        in[channels[0]] = 1.0F;
        in[channels[1]] = 0.25F;
        in[channels[2]] = -0.5F;
        expected[channels[0]] = 1.0F;
        expected[channels[1]] = 0.5F;
        expected[channels[2]] = 0.0F;
        forEveryTarget([&] { EXPECT_EQ(render(gamutMap(), in), expected); });
    } while (std::next_permutation(channels.begin(), channels.end()));
}

TEST(GamutMapRenderer, MovesTheMiddleChannelAlsoWhereItWasNegative)
{
    // A quarter of the way from -0.5 to 0.5, and of the way from 0 to 0.5.
    EXPECT_THAT(render(gamutMap(), {-0.25F, 0.5F, -0.5F, 1.0F}), ElementsAre(0.125F, 0.5F, 0.0F, 1.0F));
}

TEST(GamutMapRenderer, KeepsPositiveValues)
{
    EXPECT_THAT(render(gamutMap(), {0.75F, 0.5F, 0.25F, 0.5F}), ElementsAre(0.75F, 0.5F, 0.25F, 0.5F));
}

TEST(GamutMapRenderer, KeepsPositiveGreyAndClipsNegativeGrey)
{
    EXPECT_THAT(render(gamutMap(), {0.3F, 0.3F, 0.3F, 1.0F}), ElementsAre(0.3F, 0.3F, 0.3F, 1.0F));
    EXPECT_THAT(render(gamutMap(), {-0.3F, -0.3F, -0.3F, 1.0F}), ElementsAre(0.0F, 0.0F, 0.0F, 1.0F));
}

TEST(GamutMapRenderer, AllNegativeBecomesBlack)
{
    EXPECT_THAT(render(gamutMap(), {-0.1F, -0.2F, -0.3F, 1.0F}), ElementsAre(0.0F, 0.0F, 0.0F, 1.0F));
}

TEST(GamutMapRenderer, NaNInAnEndBecomesZero)
{
    // Red takes the last place; the middle channel's place among the others is then unknown.
    std::vector<float> const out = render(gamutMap(), {NAN, 1.0F, 0.5F, 1.0F});
    EXPECT_EQ(out[0], 0.0F);
    EXPECT_EQ(out[1], 1.0F);
    EXPECT_EQ(out[3], 1.0F);
}

TEST(GamutMapRenderer, ChangesTheDepthOfColorsAndAlpha)
{
    std::vector<half> const in = {half(1.0F), half(0.25F), half(-0.5F), half(0.5F)};
    EXPECT_THAT((renderAs<half, unsigned char>(gamutMap(), Tavrin::PF_RGBA_16f, Tavrin::PF_RGBA_8i, in, 1)),
                ElementsAre(255, 128, 0, 128));
}

TEST(GamutMapRenderer, HasTheBitsOfItsFormulaOnEveryInstructionSet)
{
    std::vector<float> const in = nastyFloats(1000000, 41);
    std::vector<float> expected(in.size());
    std::vector<bool> isDecided(in.size() / 4);
    for (std::size_t i = 0; i < isDecided.size(); ++i)
        isDecided[i] = mapPixel(&in[4 * i], 1.0F, &expected[4 * i]);
    forEveryTarget(
        [&]
        {
            std::vector<float> out = render(gamutMap(), in);
            for (std::size_t i = 0; i < isDecided.size(); ++i)
            {
                if (!isDecided[i])
                    std::copy_n(&expected[4 * i], 4, &out[4 * i]);
            }
            expectSameFloats(expected, out);
        });
}

TEST(GamutMapRenderer, HasTheBitsOfItsFormulaBetweenDepths)
{
    std::vector<std::uint16_t> codes;
    std::mt19937 generator(42);
    for (unsigned int i = 0; i < 4 * 10007; ++i)
        codes.push_back(static_cast<std::uint16_t>(generator()));
    std::vector<float> expected(codes.size());
    for (std::size_t i = 0; i < codes.size(); i += 4)
    {
        float const in[] = {float(codes[i]), float(codes[i + 1]), float(codes[i + 2]), float(codes[i + 3])};
        ASSERT_TRUE(mapPixel(in, 1.0F / 65535.0F, &expected[i]));
    }
    forEveryTarget(
        [&]
        {
            expectSameFloats(expected, renderAs<std::uint16_t, float>(gamutMap(), Tavrin::PF_RGBA_16i, Tavrin::PF_RGBA_32f, codes,
                                                                      static_cast<unsigned int>(codes.size() / 4)));
        });
}
