// Ordered noise: its matrices, and the renderer that adds them by the place in the picture.
#include "renderer/rendererHarness.h"

#include "renderer/ditherOpUtil.h"
#include "support/failure.h"
#include "transform/ditherOp.h"
#include "transform/matrixOp.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <set>
#include <thread>

using namespace RendererHarness;
using Color::DitherOp;
using Rendering::ROI;
using Rendering::DitherOpUtil::BayerMatrix;
using Rendering::DitherOpUtil::getBayerMatrixInstance;
using Rendering::DitherOpUtil::getIntBayerMatrix;
using testing::ElementsAre;

namespace
{

// The 16 by 16 number of a place, by the well-known interleaving of the bits of row and column: from the lowest bits of both
// upwards, two bits of the number each, the highest first.
unsigned int bayerNumber(unsigned int row, unsigned int column)
{
    unsigned int number = 0;
    for (unsigned int bit = 0; bit < 4; ++bit)
    {
        unsigned int const r = (row >> bit) & 1U;
        unsigned int const c = (column >> bit) & 1U;
        number = number * 4 + 2 * (r ^ c) + r;
    }
    return number;
}

float noise(unsigned int row, unsigned int column, float scale)
{
    return ((static_cast<float>(bayerNumber(row & 15U, column & 15U)) + 0.5F) / 256.0F - 0.5F) * scale;
}

// What an integer depth stores.
unsigned int stored(float value, float maximum)
{
    float const rounded = value + 0.5F;
    return static_cast<unsigned int>(rounded > maximum ? maximum : rounded >= 0.0F ? rounded : 0.0F);
}

// 16-bit RGBA pictures into 8 bits.
constexpr unsigned int kWidth = 2100; // Some blocks, and a part of one.
constexpr unsigned int kHeight = 37;

std::vector<std::uint16_t> picture()
{
    std::mt19937 generator(61);
    std::vector<std::uint16_t> codes(std::size_t{4} * kWidth * kHeight);
    for (std::uint16_t& code : codes)
        code = static_cast<std::uint16_t>(generator());
    return codes;
}

DitherOp to8i()
{
    return {Tavrin::BIT_DEPTH_16i, Tavrin::BIT_DEPTH_8i, Tavrin::BIT_DEPTH_8i};
}

std::vector<std::uint8_t> expectedPicture(std::vector<std::uint16_t> const& in)
{
    float const scale = 65535.0F / 255.0F;
    float const ratio = 255.0F / 65535.0F;
    std::vector<std::uint8_t> out(in.size());
    for (std::size_t i = 0; i < in.size(); ++i)
    {
        auto const column = static_cast<unsigned int>(i / 4 % kWidth);
        auto const row = static_cast<unsigned int>(i / 4 / kWidth);
        out[i] = static_cast<std::uint8_t>(stored((static_cast<float>(in[i]) + noise(row, column, scale)) * ratio, 255.0F));
    }
    return out;
}

} // namespace

TEST(BayerMatrix, StartsFromTwoByTwo)
{
    EXPECT_THAT(getIntBayerMatrix(1), ElementsAre(0));
    EXPECT_THAT(getIntBayerMatrix(2), ElementsAre(0, 2, 3, 1));
}

// As it stands in textbooks.
TEST(BayerMatrix, FourByFourIsTheClassicOne)
{
    EXPECT_THAT(getIntBayerMatrix(4), ElementsAre(0, 8, 2, 10, 12, 4, 14, 6, 3, 11, 1, 9, 15, 7, 13, 5));
}

TEST(BayerMatrix, SixteenBySixteenInterleavesTheBitsOfThePlace)
{
    for (unsigned int i = 0; i < 256; ++i)
        ASSERT_EQ(getIntBayerMatrix(16)[i], bayerNumber(i / 16, i % 16)) << "at " << i;
}

TEST(BayerMatrix, HoldsEachNumberOnce)
{
    for (unsigned int dimension : {8U, 16U, 256U})
    {
        auto const& matrix = getIntBayerMatrix(dimension);
        std::set<unsigned int> const numbers(matrix.begin(), matrix.end());
        EXPECT_EQ(numbers.size(), std::size_t{dimension} * dimension);
        EXPECT_EQ(*numbers.rbegin(), dimension * dimension - 1);
    }
}

TEST(BayerMatrix, MayBeAskedForByManyThreadsAtOnce)
{
    std::vector<std::thread> threads;
    std::vector<std::uint16_t const*> found(8);
    for (std::size_t i = 0; i < found.size(); ++i)
        threads.emplace_back([i, &found] { found[i] = getIntBayerMatrix(1U << (4 + i % 4)).data(); });
    for (std::thread& thread : threads)
        thread.join();
    for (std::size_t i = 0; i < found.size(); ++i)
        EXPECT_EQ(found[i], getIntBayerMatrix(1U << (4 + i % 4)).data());
}

TEST(BayerMatrix, NoiseSpansAlmostOneStepAroundZero)
{
    BayerMatrix const matrix(1.0F, 16);
    EXPECT_EQ(matrix.getDimension(), 16U);
    EXPECT_EQ(matrix[0][0], 0.5F / 256.0F - 0.5F);
    float sum = 0.0F;
    float largest = 0.0F;
    for (int row = 0; row < 16; ++row)
    {
        for (int column = 0; column < 16; ++column)
        {
            sum += matrix[row][column];
            largest = std::max(largest, std::fabs(matrix[row][column]));
        }
    }
    EXPECT_EQ(sum, 0.0F);
    EXPECT_EQ(largest, 0.5F - 0.5F / 256.0F);
}

TEST(BayerMatrix, RefusesRowsThatThereAreNot)
{
    BayerMatrix const matrix(1.0F, 16);
    Failure const failure = {0x810009, "Internal error: illegal matrix row index."};
    EXPECT_EQ(failureOf([&] { matrix[-1]; }), failure);
    EXPECT_EQ(failureOf([&] { matrix[16]; }), failure);
    EXPECT_EQ(failureOf([&] { BayerMatrix()[0]; }), failure);
    EXPECT_EQ(failureOf([&] { matrix[15]; }), Failure{});
}

TEST(BayerMatrix, IsOneStepOfTheDitherDepthInTheScaleOfTheInput)
{
    EXPECT_EQ(Rendering::DitherOpUtil::getMaskDim(), 16U);
    BayerMatrix const matrix = getBayerMatrixInstance(Tavrin::BIT_DEPTH_16i, Tavrin::BIT_DEPTH_8i);
    EXPECT_EQ(matrix.getDimension(), 16U);
    EXPECT_EQ(matrix[0][0], (0.5F / 256.0F - 0.5F) * 257.0F);
    EXPECT_EQ(getBayerMatrixInstance(Tavrin::BIT_DEPTH_32f, Tavrin::BIT_DEPTH_10i)[0][0],
              (0.5F / 256.0F - 0.5F) * (1.0F / 1023.0F));
}

TEST(BayerMatrix, IsEmptyWhereADitherWouldBeBypassed)
{
    EXPECT_EQ(getBayerMatrixInstance(Tavrin::BIT_DEPTH_8i, Tavrin::BIT_DEPTH_10i).getDimension(), 0U);
    EXPECT_EQ(getBayerMatrixInstance(Tavrin::BIT_DEPTH_16i, Tavrin::BIT_DEPTH_16f).getDimension(), 0U);
}

TEST(DitherRenderer, IsAlwaysThere)
{
    EXPECT_THAT(kindsOf(to8i(), Tavrin::PF_RGBA_16i, Tavrin::PF_RGBA_8i), ElementsAre(RendererKind::DitherRenderer));
    EXPECT_THAT(kindsOf(DitherOp(Tavrin::BIT_DEPTH_8i, Tavrin::BIT_DEPTH_8i, Tavrin::BIT_DEPTH_10i), Tavrin::PF_RGBA_8i,
                        Tavrin::PF_RGBA_8i),
                ElementsAre(RendererKind::DitherRenderer));
}

TEST(DitherRenderer, AddsTheNoiseOfEachPlaceToAllChannels)
{
    std::vector<std::uint16_t> const in = picture();
    std::vector<std::uint8_t> const expected = expectedPicture(in);
    forEveryTarget(
        [&]
        {
            std::vector<std::uint8_t> out(in.size());
            rendererOf(transformOf({std::make_unique<DitherOp>(to8i()).get()}), Tavrin::PF_RGBA_16i, Tavrin::PF_RGBA_8i)
                .apply(in.data(), out.data(), ROI(0, 0, kWidth, kHeight), 0, 0);
            EXPECT_TRUE(out == expected);
        });
}

TEST(DitherRenderer, HasTheBitsOfItsFormulaOnEveryInstructionSet)
{
    std::vector<float> const in = nastyFloats(1000000, 62);
    auto const count = static_cast<unsigned int>(in.size() / 4);
    std::vector<float> expected(in.size());
    for (std::size_t i = 0; i < in.size(); ++i)
        expected[i] = (in[i] + noise(0, static_cast<unsigned int>(i / 4), 1.0F / 1023.0F)) * 1.0F;
    DitherOp const op(Tavrin::BIT_DEPTH_32f, Tavrin::BIT_DEPTH_32f, Tavrin::BIT_DEPTH_10i);
    forEveryTarget(
        [&] { expectSameFloats(expected, renderAs<float, float>(op, Tavrin::PF_RGBA_32f, Tavrin::PF_RGBA_32f, in, count)); });
}

TEST(DitherRenderer, AverageOverATileIsTheTrueValue)
{
    // A flat field between two codes: of the 256 places of a tile the fraction gets the upper one.
    constexpr unsigned int kCode = 257 * 100 + 64; // 100 and 64 / 257
    std::vector<std::uint16_t> const in(256 * 4, kCode);
    std::vector<std::uint8_t> out(in.size());
    rendererOf(transformOf({std::make_unique<DitherOp>(to8i()).get()}), Tavrin::PF_RGBA_16i, Tavrin::PF_RGBA_8i)
        .apply(in.data(), out.data(), ROI(0, 0, 16, 16), 0, 0);
    unsigned int upper = 0;
    for (std::uint8_t const code : out)
    {
        ASSERT_TRUE(code == 100 || code == 101);
        upper += code - 100U;
    }
    EXPECT_NEAR(upper, 4 * 256 * 64 / 257.0, 4);
}

TEST(DitherRenderer, StripsAndRegionsGiveThePixelsOfTheWholePicture)
{
    std::vector<std::uint16_t> const in = picture();
    std::vector<std::uint8_t> const expected = expectedPicture(in);
    std::vector<std::uint8_t> out(in.size());
    auto renderer = rendererOf(transformOf({std::make_unique<DitherOp>(to8i()).get()}), Tavrin::PF_RGBA_16i, Tavrin::PF_RGBA_8i);
    unsigned int const columns[] = {0, 5, 1031, 1999, kWidth};
    unsigned int const rows[] = {0, 3, 20, 21, kHeight};
    for (unsigned int i = 0; i + 1 < std::size(columns); ++i)
    {
        for (unsigned int j = 0; j + 1 < std::size(rows); ++j)
        {
            ROI const region(columns[i], rows[j], columns[i + 1] - columns[i], rows[j + 1] - rows[j], kWidth, kHeight);
            renderer.apply(in.data(), out.data(), region, 0, 0);
        }
    }
    EXPECT_TRUE(out == expected);
}

TEST(DitherRenderer, ScalesWithoutNoiseWhereItIsBypassed)
{
    std::vector<std::uint8_t> in(4 * 257);
    for (std::size_t i = 0; i < in.size(); ++i)
        in[i] = static_cast<std::uint8_t>(i);
    DitherOp const op(Tavrin::BIT_DEPTH_8i, Tavrin::BIT_DEPTH_16i, Tavrin::BIT_DEPTH_10i);
    auto const out = renderAs<std::uint8_t, std::uint16_t>(op, Tavrin::PF_RGBA_8i, Tavrin::PF_RGBA_16i, in, 257);
    for (std::size_t i = 0; i < in.size(); ++i)
        ASSERT_EQ(out[i], in[i] * 257U);
}

TEST(DitherRenderer, LeavesValuesExactWhereItIsBypassedBetweenEqualDepths)
{
    std::vector<float> const in = nastyFloats(4 * 1003, 63);
    DitherOp const op(Tavrin::BIT_DEPTH_32f, Tavrin::BIT_DEPTH_32f, Tavrin::BIT_DEPTH_16f);
    expectSameFloats(in, render(op, in));
}

TEST(DitherRenderer, ABypassThatIsSwitchedOnScalesWithoutNoise)
{
    DitherOp op = to8i();
    op.getBypass()->setDynamic(true);
    op.getBypass()->setValue(true);
    std::vector<std::uint16_t> const in = {257 * 100 + 100, 0, 65535, 257 * 3 + 150};
    EXPECT_THAT((renderAs<std::uint16_t, std::uint8_t>(op, Tavrin::PF_RGBA_16i, Tavrin::PF_RGBA_8i, in, 1)),
                ElementsAre(100, 0, 255, 4));
}

TEST(DitherRenderer, TakesFloatsInsideAChain)
{
    // The noise of an 8-bit step is added to floats, before a matrix that doubles.
    Color::MatrixOp matrix;
    for (unsigned int c = 0; c < 4; ++c)
        matrix.setArrayValue(5 * c, 2.0F);
    DitherOp const op(Tavrin::BIT_DEPTH_32f, Tavrin::BIT_DEPTH_32f, Tavrin::BIT_DEPTH_8i);
    std::vector<float> const in(4 * 40, 0.25F);
    std::vector<float> const out = renderAs<float, float>(std::vector<Color::Op const*>{&matrix, &op, &matrix}, Tavrin::PF_RGBA_32f,
                                                          Tavrin::PF_RGBA_32f, in, 40);
    for (unsigned int i = 0; i < out.size(); ++i)
        EXPECT_EQ(out[i], (0.5F + noise(0, i / 4, 1.0F / 255.0F)) * 1.0F * 2.0F);
}
