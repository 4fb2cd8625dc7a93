// The engine as a whole: regions, strides, places in memory, bypass, chains, long lines, threads.
#include "renderer/lut1DTables.h"
#include "renderer/pixelModel.h"
#include "renderer/rendererHarness.h"
#include "renderer/usualOps.h"

#include "transform/ditherOp.h"
#include "transform/matrixOp.h"
#include "transform/rangeOp.h"
#include "utils/errorMessage.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <thread>

using namespace RendererHarness;
using Color::MatrixOp;
using Rendering::ROI;
using testing::Each;
using testing::ElementsAre;

namespace
{

MatrixOp scaleBy(float factor)
{
    MatrixOp op;
    for (unsigned int c = 0; c < 4; ++c)
        op.setArrayValue(5 * c, factor);
    return op;
}

// Mixes the colours, keeps alpha.
// What mixing gives, in double precision, between any two formats.
PixelModel::Pixel mixed(PixelFormat from, PixelFormat to, PixelModel::Pixel const& in)
{
    static double const coefficients[3][3] = {{0.5, 0.25, 0.25}, {0.125, 0.75, 0.125}, {0.0625, 0.1875, 0.75}};
    double const scale = PixelModel::maximum(to) / PixelModel::maximum(from);
    PixelModel::Pixel out{};
    for (int r = 0; r < 3; ++r)
    {
        for (int c = 0; c < 3; ++c)
            out[r] += coefficients[r][c] * scale * in[c];
    }
    out[3] = in[3] * scale;
    return out;
}

// A stored value may be off where the engine's single precision falls on the other side of a rounding. Four roundings of 2^-24 each
// to coefficients and sums make 2^-21 of the largest term; a half has 2^-11, or 2^-25 near zero.
void expectNear(PixelFormat from, PixelFormat to, std::size_t channel, double exact, double stored, double largest)
{
    double const error = std::ldexp(std::max(largest, std::abs(exact)), -21);
    if (!PixelModel::isFloat(to))
    {
        double const low = PixelModel::storedValue(to, channel, exact - error);
        double const high = PixelModel::storedValue(to, channel, exact + error);
        EXPECT_TRUE(stored == low || stored == high)
            << Tavrin::pfToStr(from) << " to " << Tavrin::pfToStr(to) << ": " << stored << " for " << exact;
        return;
    }
    double const rounding =
        PixelModel::depthBits(to) == 0x10000U ? std::max(std::ldexp(std::abs(exact), -11), std::ldexp(1.0, -25)) : 0.0;
    EXPECT_NEAR(exact, stored, error + rounding) << Tavrin::pfToStr(from) << " to " << Tavrin::pfToStr(to);
}

template <class T>
std::vector<T> repeated(std::size_t count, std::vector<T> const& pattern)
{
    std::vector<T> values(count);
    for (std::size_t i = 0; i < count; ++i)
        values[i] = pattern[i % pattern.size()];
    return values;
}

std::shared_ptr<Color::BypassDynamicProperty> dynamicBypass(bool value)
{
    return std::make_shared<Color::BypassDynamicProperty>(value, true);
}

} // namespace

TEST(Engine, EveryPairOfFormatsRendersAMatrixLikeTheDoublePrecisionModel)
{
    constexpr unsigned int kCount = 53;
    MatrixOp const op = mixing();
    for (PixelFormat from : PixelModel::allFormats())
    {
        std::vector<unsigned char> const source = PixelModel::sensiblePixels(from, kCount, from);
        for (PixelFormat to : PixelModel::allFormats())
        {
            std::vector<unsigned char> const out = renderAs<unsigned char, unsigned char>(op, from, to, source, kCount);
            double const largest = 2 * PixelModel::maximum(to);
            for (unsigned int i = 0; i < kCount; ++i)
            {
                PixelModel::Pixel const exact =
                    mixed(from, to, PixelModel::read(from, source.data() + i * PixelModel::pixelBytes(from)));
                PixelModel::Pixel const stored = PixelModel::read(to, out.data() + i * PixelModel::pixelBytes(to));
                for (std::size_t c = 0; c < (PixelModel::hasAlpha(to) ? 4U : 3U); ++c)
                    expectNear(from, to, c, exact[c], stored[c], largest);
            }
        }
    }
}

TEST(Engine, ATransformWithoutOperatorsKeepsCodeValuesAsNumbers)
{
    Rendering::CPURenderer renderer = rendererOf(std::make_shared<Color::Transform>(), Tavrin::PF_RGB_8i, Tavrin::PF_RGBA_32f);
    EXPECT_EQ(1U, renderer.getNumRenderers());
    unsigned char const in[3] = {1, 128, 255};
    float out[4];
    renderer.apply(in, out, ROI(0, 0, 1, 1), 0, 0);
    EXPECT_THAT(out, ElementsAre(1.0F, 128.0F, 255.0F, 255.0F));

    // The one renderer is a scale between bytes; the pixels need not be.
    float const values[4] = {1.0F, 2.6F, 300.0F, 7.0F};
    unsigned char codes[4];
    rendererOf(std::make_shared<Color::Transform>(), Tavrin::PF_RGBA_32f, Tavrin::PF_RGBA_8i)
        .apply(values, codes, ROI(0, 0, 1, 1), 0, 0);
    EXPECT_THAT(codes, ElementsAre(1, 3, 255, 7));
}

TEST(Engine, AnIdentityRendersThroughOneScale)
{
    EXPECT_THAT(kindsOf(MatrixOp()), ElementsAre(RendererKind::ScaleRenderer));
    std::vector<unsigned char> const in = {1, 2, 3};
    EXPECT_THAT((renderAs<unsigned char, unsigned char>(MatrixOp(), Tavrin::PF_RGB_8i, Tavrin::PF_RGBA_8i, in, 1)),
                ElementsAre(1, 2, 3, 255));
}

TEST(Engine, ClampsOverflowIntoIntegersAndRoundsAtTheHalf)
{
    std::vector<float> const in = {1.5F, 254.5F / 255.0F, 254.49F / 255.0F, 1.0F};
    EXPECT_THAT((renderAs<float, unsigned char>(MatrixOp(), Tavrin::PF_RGBA_32f, Tavrin::PF_RGBA_8i, in, 1)),
                ElementsAre(255, 255, 254, 255));
}

TEST(Engine, NaNIsZeroInIntegersAndStaysInFloats)
{
    std::vector<float> const in(4, std::nanf(""));
    EXPECT_THAT((renderAs<float, std::uint16_t>(MatrixOp(), Tavrin::PF_RGBA_32f, Tavrin::PF_RGBA_12i, in, 1)), Each(0));
    EXPECT_TRUE(std::isnan(render(MatrixOp(), in)[0]));
    std::uint16_t const bits = renderAs<float, std::uint16_t>(MatrixOp(), Tavrin::PF_RGBA_32f, Tavrin::PF_RGBA_16f, in, 1)[0];
    EXPECT_TRUE(std::isnan(PixelModel::halfValue(bits)));
}

TEST(Engine, PackedAlphaPassesAFloatChainUnscaledAtEqualDepths)
{
    MatrixOp const half = scaleBy(0.5F);
    MatrixOp const twice = scaleBy(2.0F);
    std::vector<unsigned char> const in = {0x12, 0x34, 0x56, 0x7a}; // alpha 2
    EXPECT_EQ(in, (renderAs<unsigned char, unsigned char>(MatrixOp(), Tavrin::PF_RGBA_10iP, Tavrin::PF_RGBA_10iP, in, 1)));
    EXPECT_EQ(in, (renderAs<unsigned char, unsigned char>({&half, &twice}, Tavrin::PF_RGBA_10iP, Tavrin::PF_RGBA_10iP, in, 1)));
}

TEST(Engine, ARegionIsReadAndWrittenAtItsPlaceAndNothingElse)
{
    // 3 by 2 pixels at (2, 1) of an image 7 wide and 5 high, with 8 bytes of padding in the source and 12 in the destination.
    constexpr unsigned int kSourceStride = 7 * 4 + 8;
    constexpr unsigned int kDestinationStride = 7 * 16 + 12;
    std::vector<unsigned char> source(kSourceStride * 5);
    for (std::size_t i = 0; i < source.size(); ++i)
        source[i] = static_cast<unsigned char>(i * 7);
    std::vector<unsigned char> destination(kDestinationStride * 5, 0xcd);
    rendererOf(transformOf({std::make_unique<MatrixOp>(MatrixOp()).get()}), Tavrin::PF_RGBA_8i, Tavrin::PF_RGBA_32f)
        .apply(source.data(), destination.data(), ROI(2, 1, 3, 2, 7, 5), 8, 12);
    for (unsigned int y = 0; y < 5; ++y)
    {
        for (unsigned int b = 0; b < kDestinationStride; ++b)
        {
            unsigned int const x = b / 16;
            std::size_t const at = y * kDestinationStride + b;
            bool const isInside = y >= 1 && y <= 2 && x >= 2 && x <= 4;
            if (!isInside)
            {
                ASSERT_EQ(0xcd, destination[at]) << "row " << y << " byte " << b;
            }
            else if (b % 4 == 0)
            {
                float const expected = static_cast<float>(source[y * kSourceStride + b / 4]) * (1.0F / 255.0F);
                ASSERT_EQ(expected, PixelModel::readAs<float>(&destination[at]));
            }
        }
    }
}

TEST(Engine, ARegionWithoutWidthOrHeightTouchesNothing)
{
    Rendering::CPURenderer renderer = rendererOf(transformOf({}), Tavrin::PF_RGBA_8i, Tavrin::PF_RGBA_8i);
    std::vector<unsigned char> pixels(64, 0xcd);
    renderer.apply(pixels.data(), pixels.data(), ROI(0, 0, 0, 4, 4, 4), 0, 0);
    renderer.apply(pixels.data(), pixels.data(), ROI(1, 1, 2, 0, 4, 4), 0, 0);
    EXPECT_THAT(pixels, Each(0xcd));
}

TEST(Engine, LinesLongerThanABlockAndChainsOfManyRenderersGiveWhatEachStepGives)
{
    // Halving and doubling floats is exact, so 40 steps give the input back; 5003 pixels are not a multiple of anything.
    MatrixOp const half = scaleBy(0.5F);
    MatrixOp const twice = scaleBy(2.0F);
    std::vector<Color::Op const*> ops;
    for (int i = 0; i < 20; ++i)
        ops.insert(ops.end(), {&half, &twice});
    std::vector<float> in(5003 * 4);
    for (std::size_t i = 0; i < in.size(); ++i)
        in[i] = static_cast<float>(i) - 7000.0F;
    EXPECT_EQ(in, (renderAs<float, float>(ops, Tavrin::PF_RGBA_32f, Tavrin::PF_RGBA_32f, in, 5003)));
}

TEST(Engine, ShortLinesThatShareABlockGiveWhatEachOfThemGives)
{
    constexpr unsigned int kHeight = 140; // More lines than a block has pixels.
    constexpr unsigned int kImageWidth = 140;
    MatrixOp const matrix = mixing();
    Color::DitherOp const dither(Tavrin::BIT_DEPTH_32f, Tavrin::BIT_DEPTH_32f, Tavrin::BIT_DEPTH_8i);
    Color::Lut1DOp const table = tableOf(Tavrin::BIT_DEPTH_32f, Tavrin::BIT_DEPTH_32f, 33, curve);
    std::vector<Color::Op const*> const chains[] = {{&matrix}, {&matrix, &dither}, {&table}, {&table, &matrix}};
    forEveryTarget(
        [&]
        {
            for (PixelFormat format : {Tavrin::PF_RGB_8i, Tavrin::PF_BGRA_16i, Tavrin::PF_RGBA_10iP, Tavrin::PF_RGBA_16f,
                                       Tavrin::PF_RGB_32f, Tavrin::PF_RGBA_32f})
            {
                std::vector<unsigned char> const source = PixelModel::sensiblePixels(format, kImageWidth * kHeight, 11);
                for (std::size_t chain = 0; chain < std::size(chains); ++chain)
                {
                    Rendering::CPURenderer renderer = rendererOf(transformOf(chains[chain]), format, format);
                    for (unsigned int width : {1U, 2U, 3U, 5U, 8U, 15U, 16U, 17U, 42U, 64U, 65U, 127U, 128U, 129U})
                    {
                        std::vector<unsigned char> together(source.size(), 0xcd);
                        std::vector<unsigned char> apart = together;
                        renderer.apply(source.data(), together.data(), ROI(3, 0, width, kHeight, kImageWidth, kHeight), 0, 0);
                        for (unsigned int y = 0; y < kHeight; ++y)
                            renderer.apply(source.data(), apart.data(), ROI(3, y, width, 1, kImageWidth, kHeight), 0, 0);
                        ASSERT_EQ(apart, together) << Tavrin::pfToStr(format) << " chain " << chain << " width " << width;
                    }
                }
            }
        });
}

TEST(Engine, RendersInPlace)
{
    MatrixOp const op = mixing();
    for (PixelFormat format : PixelModel::allFormats())
    {
        std::vector<unsigned char> pixels = PixelModel::sensiblePixels(format, 3001, 4);
        std::vector<unsigned char> const separate = renderAs<unsigned char, unsigned char>(op, format, format, pixels, 3001);
        rendererOf(transformOf({&op}), format, format).apply(pixels.data(), pixels.data(), ROI(0, 0, 3001, 1), 0, 0);
        EXPECT_EQ(separate, pixels) << Tavrin::pfToStr(format);
    }
}

TEST(Engine, LargePicturesThatAreStreamedHaveTheSameBytesAsSmallOnes)
{
    // 5.2 MB of output are streamed; a row alone is not. Rows start at all sorts of addresses, and the noise of a dither follows
    // the place in the picture.
    constexpr unsigned int kWidth = 1027;
    constexpr unsigned int kHeight = 320;
    MatrixOp const op = mixing();
    constexpr unsigned int kDitherRows = 64; // after which the noise repeats, if not before
    Color::DitherOp const dither(Tavrin::BIT_DEPTH_32f, Tavrin::BIT_DEPTH_32f, Tavrin::BIT_DEPTH_8i);
    std::vector<unsigned char> const source = PixelModel::sensiblePixels(Tavrin::PF_RGB_16i, kWidth * kHeight, 9);
    for (PixelFormat out : {Tavrin::PF_RGBA_32f, Tavrin::PF_ABGR_32f, Tavrin::PF_RGB_32f})
    {
        std::size_t const bytes = PixelModel::pixelBytes(out);
        Rendering::CPURenderer renderer = rendererOf(transformOf({&op, &dither}), Tavrin::PF_RGB_16i, out);
        for (unsigned int shift : {0U, 4U, 20U})
        {
            std::vector<unsigned char> whole(kWidth * kHeight * bytes + shift);
            renderer.apply(source.data(), whole.data() + shift, ROI(0, 0, kWidth, kHeight), 0, 0);
            std::vector<unsigned char> rows(kWidth * kDitherRows * bytes);
            for (unsigned int y = 0; y < kHeight; y += kDitherRows)
            {
                renderer.apply(source.data() + y * kWidth * 6, rows.data(), ROI(0, 0, kWidth, kDitherRows), 0, 0);
                ASSERT_EQ(0, std::memcmp(rows.data(), whole.data() + shift + y * kWidth * bytes, rows.size())) << y;
            }
        }
    }
}

TEST(Engine, RegionsOfALargePictureThatAreStreamedHaveTheBytesOfTheWholeAndTouchNothingElse)
{
    // 5.2 MB of output, in squares that start and end at all sorts of addresses.
    constexpr unsigned int kWidth = 1027;
    constexpr unsigned int kHeight = 320;
    constexpr unsigned int kSide = 37;
    MatrixOp const op = mixing();
    std::vector<unsigned char> const source = PixelModel::sensiblePixels(Tavrin::PF_RGB_16i, kWidth * kHeight, 9);
    Rendering::CPURenderer renderer = rendererOf(transformOf({&op}), Tavrin::PF_RGB_16i, Tavrin::PF_RGBA_32f);
    std::vector<float> whole(kWidth * kHeight * 4);
    renderer.apply(source.data(), whole.data(), ROI(0, 0, kWidth, kHeight), 0, 0);
    std::vector<float> const untouched(whole.size(), -1.0F);
    for (unsigned int y = 0; y < kHeight; y += 2 * kSide)
    {
        for (unsigned int x = 0; x < kWidth; x += 2 * kSide)
        {
            ROI const square(x, y, std::min(kSide, kWidth - x), std::min(kSide, kHeight - y), kWidth, kHeight);
            std::vector<float> expected = untouched;
            for (unsigned int row = y; row < y + square.height; ++row)
            {
                std::size_t const begin = std::size_t{4} * (row * kWidth + x);
                std::copy_n(&whole[begin], square.width * 4, &expected[begin]);
            }
            std::vector<float> part = untouched;
            renderer.apply(source.data(), part.data(), square, 0, 0);
            ASSERT_EQ(0, std::memcmp(expected.data(), part.data(), part.size() * sizeof(float))) << x << ' ' << y;
        }
    }
}

TEST(Engine, ABypassedRendererOnlyChangesTheDepthThatItsPlaceAsksFor)
{
    MatrixOp op = scaleBy(0.25F);
    auto const bypass = dynamicBypass(true);
    op.setBypass(bypass);
    std::vector<unsigned char> const in = {255, 51, 0, 255};
    std::vector<std::uint16_t> const out =
        renderAs<unsigned char, std::uint16_t>(op, Tavrin::PF_RGBA_8i, Tavrin::PF_RGBA_16f, in, 1);
    EXPECT_THAT(out, ElementsAre(half(1.0F).bits(), half(0.2F).bits(), 0, half(1.0F).bits()));

    // First, in the middle and last of a chain.
    MatrixOp const twice = scaleBy(2.0F);
    std::vector<Color::Op const*> const chains[] = {{&op, &twice}, {&twice, &op}, {&twice, &op, &op}};
    for (auto const& chain : chains)
        EXPECT_THAT((renderAs<unsigned char, float>(chain, Tavrin::PF_RGBA_8i, Tavrin::PF_RGBA_32f, in, 1)),
                    ElementsAre(2.0F, testing::FloatEq(0.4F), 0.0F, 2.0F));
}

TEST(Engine, APackedAlphaOfABypassedRendererIsScaledLikeANumber)
{
    MatrixOp op = scaleBy(0.25F);
    op.setBypass(dynamicBypass(true));
    std::vector<unsigned char> const in = {0xff, 0xff, 0xff, 0xff};
    EXPECT_THAT(
        (renderAs<unsigned char, float>(op, Tavrin::PF_RGBA_10iP, Tavrin::PF_RGBA_32f, in, 1)),
        ElementsAre(testing::FloatEq(1.0F), testing::FloatEq(1.0F), testing::FloatEq(1.0F), testing::FloatEq(3.0F / 1023.0F)));
}

TEST(Engine, ADynamicBypassIsSeenByTheNextCall)
{
    MatrixOp op = scaleBy(3.0F);
    auto const bypass = dynamicBypass(false);
    op.setBypass(bypass);
    Rendering::CPURenderer renderer = rendererOf(transformOf({&op}), Tavrin::PF_RGBA_32f, Tavrin::PF_RGBA_32f);
    std::vector<float> const in = {1, 2, 3, 4};
    std::vector<float> out(4);
    renderer.apply(in.data(), out.data(), ROI(0, 0, 1, 1), 0, 0);
    EXPECT_THAT(out, ElementsAre(3, 6, 9, 12));
    bypass->setValue(true);
    renderer.apply(in.data(), out.data(), ROI(0, 0, 1, 1), 0, 0);
    EXPECT_EQ(in, out);
}

TEST(Engine, AStaticBypassThatReachesTheRendererIsRefused)
{
    MatrixOp op;
    op.setBypass(std::make_shared<Color::BypassDynamicProperty>(true, false));
    try
    {
        rendererOf(transformOf({&op}), Tavrin::PF_RGBA_32f, Tavrin::PF_RGBA_32f);
        FAIL();
    }
    catch (Color::Exception const& e)
    {
        EXPECT_EQ(0x810008U, e.getId());
    }
}

TEST(Engine, ANullTransformIsRefusedAndLeavesNoRenderer)
{
    Rendering::CPURenderer renderer = rendererOf(transformOf({}), Tavrin::PF_RGBA_32f, Tavrin::PF_RGBA_32f);
    EXPECT_EQ(1U, renderer.getNumRenderers());
    EXPECT_THROW(renderer.finalize(nullptr, Tavrin::PF_RGBA_32f, Tavrin::PF_RGBA_32f), Color::Exception);
    EXPECT_EQ(0U, renderer.getNumRenderers());
    try
    {
        renderer.getRendererType(0);
        FAIL();
    }
    catch (Color::Exception const& e)
    {
        EXPECT_EQ(0x81000aU, e.getId());
    }
}

TEST(Engine, AChainEndsInTheDepthsOfTheFormatsAndIsFloatInside)
{
    Color::RangeOp const toCodes(Tavrin::BIT_DEPTH_32f, Tavrin::BIT_DEPTH_8i, 0, 1, 0, 255);
    Color::RangeOp const fromCodes(Tavrin::BIT_DEPTH_8i, Tavrin::BIT_DEPTH_32f, 0, 255, 0, 1);
    // Inside the chain no value is rounded to a code.
    std::vector<float> const in = {0.1234F, -1.0F, 2.0F, 0.5F};
    EXPECT_THAT((renderAs<float, float>({&toCodes, &fromCodes}, Tavrin::PF_RGBA_32f, Tavrin::PF_RGBA_32f, in, 1)),
                ElementsAre(testing::FloatEq(0.1234F), 0.0F, 1.0F, 0.5F));
}

TEST(Engine, SeveralThreadsRenderTheSameBytes)
{
    constexpr unsigned int kWidth = 613;
    constexpr unsigned int kHeight = 64;
    MatrixOp op = mixing();
    auto const bypass = dynamicBypass(false);
    op.setBypass(bypass);
    Rendering::CPURenderer renderer = rendererOf(transformOf({&op}), Tavrin::PF_RGBA_16f, Tavrin::PF_RGB_10iP);
    std::vector<unsigned char> const source = PixelModel::sensiblePixels(Tavrin::PF_RGBA_16f, kWidth * kHeight, 2);
    std::vector<unsigned char> expected(kWidth * kHeight * 4);
    renderer.apply(source.data(), expected.data(), ROI(0, 0, kWidth, kHeight), 0, 0);

    std::vector<unsigned char> shared(expected.size());
    std::vector<std::thread> threads;
    for (unsigned int t = 0; t < 4; ++t)
        threads.emplace_back(
            [&, t]
            {
                for (unsigned int y = t; y < kHeight; y += 4)
                {
                    renderer.apply(source.data(), shared.data(), ROI(0, y, kWidth, 1, kWidth, kHeight), 0, 0);
                    bypass->setValue(false); // The value that it has: setting beside a render is allowed.
                }
            });
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(expected, shared);
}
