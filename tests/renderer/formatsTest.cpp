// Loads and stores of all formats, against the plain model of pixels and on every instruction set.
#include "renderer/pixelModel.h"

#include "renderer/CPUSelector.h"
#include "renderer/simdTarget.h"
#include "utils/errorMessage.h"

#include <gtest/gtest.h>

#include <cmath>
#include <memory>

using namespace Rendering;
using PixelModel::allFormats;

namespace
{

std::string nameOf(PixelFormat format)
{
    return Tavrin::pfToStr(format);
}

std::vector<unsigned char> convert(std::vector<unsigned char> const& source, PixelFormat from, PixelFormat to, unsigned int count)
{
    std::vector<unsigned char> destination(count * PixelModel::pixelBytes(to), 0xcd);
    ROI const line(0, 0, count, 1);
    copyBuffer(source.data(), from, 0, line, destination.data(), to, 0, line);
    return destination;
}

void expectStored(PixelFormat to, PixelModel::Pixel const& values, unsigned char const* p, std::string const& where)
{
    PixelModel::Pixel const stored = PixelModel::read(to, p);
    for (std::size_t c = 0; c < (PixelModel::hasAlpha(to) ? 4U : 3U); ++c)
    {
        double const expected = PixelModel::storedValue(to, c, values[c]);
        if (std::isnan(expected))
        {
            EXPECT_TRUE(std::isnan(stored[c])) << where << " channel " << c;
        }
        else
        {
            EXPECT_EQ(expected, stored[c]) << where << " channel " << c << " of " << values[c];
        }
    }
}

// An odd count, so that the last pixels do not fill a vector.
constexpr unsigned int kCount = 16 * 5 + 7;

} // namespace

TEST(Formats, ThereAre32WithTheSizesOfTheTable)
{
    EXPECT_EQ(32U, allFormats().size());
    for (PixelFormat format : allFormats())
        EXPECT_EQ(PixelModel::pixelBytes(format), Tavrin::getPixelSizeInByte(format)) << nameOf(format);
}

TEST(Formats, EveryPairCopiesCodeValuesLikeTheModel)
{
    for (PixelFormat from : allFormats())
    {
        std::vector<unsigned char> const source = PixelModel::randomBytes(kCount * PixelModel::pixelBytes(from), from);
        for (PixelFormat to : allFormats())
        {
            std::vector<unsigned char> const destination = convert(source, from, to, kCount);
            for (unsigned int i = 0; i < kCount; ++i)
                expectStored(to, PixelModel::read(from, source.data() + i * PixelModel::pixelBytes(from)),
                             destination.data() + i * PixelModel::pixelBytes(to),
                             nameOf(from) + " to " + nameOf(to) + " pixel " + std::to_string(i));
        }
    }
}

TEST(Formats, EveryPairGivesTheSameBytesOnEveryInstructionSet)
{
    for (PixelFormat from : allFormats())
    {
        std::vector<unsigned char> const source = PixelModel::randomBytes(kCount * PixelModel::pixelBytes(from), from + 7U);
        for (PixelFormat to : allFormats())
        {
            std::vector<unsigned char> reference;
            for (SimdTarget target : getSupportedSimdTargets())
            {
                ScopedSimdTarget const scope(target);
                std::vector<unsigned char> const destination = convert(source, from, to, kCount);
                if (target == SimdTarget::Scalar)
                    reference = destination;
                else
                    ASSERT_EQ(reference, destination)
                        << nameOf(from) << " to " << nameOf(to) << " on " << getSimdTargetName(target);
            }
        }
    }
}

TEST(Formats, EveryCountOfPixelsWritesItsBytesAndNoMore)
{
    for (SimdTarget target : getSupportedSimdTargets())
    {
        ScopedSimdTarget const scope(target);
        for (PixelFormat format : allFormats())
        {
            std::size_t const bytes = PixelModel::pixelBytes(format);
            FormatFunctions const& functions = getFormatFunctions(format);
            auto const block = std::make_unique<Block>();
            for (unsigned int count = 1; count <= 40; ++count)
            {
                std::vector<unsigned char> const source = PixelModel::sensiblePixels(format, count, count);
                functions.load(source.data(), {0, count}, *block);
                for (StoreFunction store : {functions.store, functions.stream})
                {
                    std::vector<unsigned char> destination(count * bytes + 64, 0xcd);
                    store(*block, {0, count}, destination.data(), {source.data(), 1});
                    for (unsigned int i = 0; i < count; ++i)
                        expectStored(format, PixelModel::read(format, source.data() + i * bytes), destination.data() + i * bytes,
                                     nameOf(format) + " count " + std::to_string(count));
                    for (std::size_t i = count * bytes; i < destination.size(); ++i)
                        ASSERT_EQ(0xcd, destination[i]) << nameOf(format) << " count " << count << " wrote beyond its pixels";
                }
            }
        }
    }
}

TEST(Formats, StreamedStoresGiveTheSameBytesFromAnyAddress)
{
    constexpr unsigned int kPixels = Block::kPixels;
    for (SimdTarget target : getSupportedSimdTargets())
    {
        ScopedSimdTarget const scope(target);
        for (PixelFormat format : allFormats())
        {
            FormatFunctions const& functions = getFormatFunctions(format);
            std::size_t const bytes = PixelModel::pixelBytes(format);
            std::vector<unsigned char> const source = PixelModel::sensiblePixels(format, kPixels, 3);
            auto const block = std::make_unique<Block>();
            functions.load(source.data(), {0, kPixels}, *block);
            for (std::size_t shift = 0; shift < 64; ++shift)
            {
                std::vector<unsigned char> ordinary(kPixels * bytes + 128, 0xcd);
                std::vector<unsigned char> streamed = ordinary;
                functions.store(*block, {0, kPixels}, ordinary.data() + shift, {source.data(), 1});
                functions.stream(*block, {0, kPixels}, streamed.data() + shift, {source.data(), 1});
                finishStreaming();
                ASSERT_EQ(ordinary, streamed) << nameOf(format) << " shifted by " << shift;
            }
        }
    }
}

TEST(Formats, HalfsLoadExactlyAndNaNStaysNaN)
{
    std::vector<std::uint16_t> codes(65536);
    for (unsigned int i = 0; i < 65536; ++i)
        codes[i] = static_cast<std::uint16_t>(i);
    for (SimdTarget target : getSupportedSimdTargets())
    {
        ScopedSimdTarget const scope(target);
        std::vector<float> values(65536);
        ROI const line(0, 0, 65536 / 4, 1);
        copyBuffer(codes.data(), Tavrin::PF_RGBA_16f, 0, line, values.data(), Tavrin::PF_RGBA_32f, 0, line);
        for (unsigned int i = 0; i < 65536; ++i)
        {
            double const expected = PixelModel::halfValue(i);
            if (std::isnan(expected))
            {
                ASSERT_TRUE(std::isnan(values[i])) << i;
            }
            else
            {
                ASSERT_EQ(expected, values[i]) << i;
            }
            ASSERT_EQ((i & 0x8000U) != 0, std::signbit(values[i])) << i;
        }
    }
}

// The values between each half and the next decide how rounding falls: both ends, the middle, and the floats beside the middle.
TEST(Formats, FloatsBecomeTheNearestHalfWithTiesToEven)
{
    std::vector<float> values;
    for (unsigned int code = 0; code < 0x7c00; ++code)
    {
        float const low = static_cast<float>(PixelModel::halfValue(code));
        float const high = code == 0x7bff ? 65536.0F : static_cast<float>(PixelModel::halfValue(code + 1));
        float const middle = (low + high) / 2;
        for (float v : {low, std::nextafterf(middle, low), middle, std::nextafterf(middle, high)})
        {
            values.push_back(v);
            values.push_back(-v);
        }
    }
    std::vector<float> const special = {65519.996F, 65520.0F, 1e30F, INFINITY, NAN, 1e-45F, 2.98e-8F, 1.17549435e-38F};
    values.insert(values.end(), special.begin(), special.end());
    values.resize((values.size() + 3) / 4 * 4);
    for (SimdTarget target : getSupportedSimdTargets())
    {
        ScopedSimdTarget const scope(target);
        std::vector<std::uint16_t> codes(values.size());
        ROI const line(0, 0, static_cast<unsigned int>(values.size() / 4), 1);
        copyBuffer(values.data(), Tavrin::PF_RGBA_32f, 0, line, codes.data(), Tavrin::PF_RGBA_16f, 0, line);
        for (std::size_t i = 0; i < values.size(); ++i)
        {
            if (std::isnan(values[i]))
            {
                ASSERT_TRUE(std::isnan(PixelModel::halfValue(codes[i])));
            }
            else
            {
                ASSERT_EQ(half(values[i]).bits(), codes[i]) << values[i] << " on " << getSimdTargetName(target);
            }
        }
    }
}

TEST(Formats, IntegerStoresRoundAtTheHalfAndClampAndMakeNaNZero)
{
    struct
    {
        float value;
        unsigned int code;
    } const cases[] = {{-1e30F, 0},   {-0.5F, 0},    {-0.0F, 0},   {0.49F, 0},      {0.5F, 1},      {254.49F, 254}, {254.5F, 255},
                       {255.4F, 255}, {382.5F, 255}, {1e30F, 255}, {INFINITY, 255}, {-INFINITY, 0}, {NAN, 0},       {-NAN, 0}};
    for (SimdTarget target : getSupportedSimdTargets())
    {
        ScopedSimdTarget const scope(target);
        for (auto const& c : cases)
        {
            float const pixel[4] = {c.value, c.value, c.value, c.value};
            unsigned char stored[4];
            ROI const one(0, 0, 1, 1);
            copyBuffer(pixel, Tavrin::PF_RGBA_32f, 0, one, stored, Tavrin::PF_RGBA_8i, 0, one);
            for (unsigned char code : stored)
                EXPECT_EQ(c.code, code) << c.value << " on " << getSimdTargetName(target);
        }
    }
}

TEST(Formats, PackedWordsAreBigEndianAndTheirAlphaIsNotScaled)
{
    ROI const one(0, 0, 1, 1);
    unsigned char word[4];
    auto const pack = [&](PixelFormat to, float alpha)
    {
        float const pixel[4] = {1023, 512, 1, alpha};
        copyBuffer(pixel, Tavrin::PF_RGBA_32f, 0, one, word, to, 0, one);
        return PixelModel::readPackedWord(word);
    };
    std::uint32_t const colors = 1023U << 22 | 512U << 12 | 1U << 2;
    EXPECT_EQ(colors | 3, pack(Tavrin::PF_RGBA_10iP, 1023)); // 1023 modulo 4
    EXPECT_EQ(colors, pack(Tavrin::PF_RGBA_10iP, 1020));
    EXPECT_EQ(colors | 2, pack(Tavrin::PF_RGBA_10iP, 2));
    EXPECT_EQ(colors | 3, pack(Tavrin::PF_RGBA_10iP, 5000)); // clamped to 1023 first

    std::memset(word, 0xff, 4); // old low bits are cleared
    EXPECT_EQ(colors, pack(Tavrin::PF_RGB_10iP, 1023));
}

TEST(Formats, AnUnknownFormatIsRefused)
{
    ROI const one(0, 0, 1, 1);
    float pixel[4] = {};
    for (unsigned int format : {0U, 0x1018U, 0x2127U, 0x20017U + 0x100U, 0xffffffffU})
    {
        try
        {
            copyBuffer(pixel, static_cast<PixelFormat>(format), 0, one, pixel, Tavrin::PF_RGBA_32f, 0, one);
            FAIL() << format;
        }
        catch (Color::Exception const& e)
        {
            EXPECT_EQ(0x110004U, e.getId());
            EXPECT_EQ("Illegal pixel format", e.getMessage());
        }
    }
}

TEST(CopyBuffer, TakesRegionsOfTheSameActiveSizeOnly)
{
    float pixels[16] = {};
    auto const idOf = [&](ROI const& a, ROI const& b) -> unsigned int
    {
        try
        {
            copyBuffer(pixels, Tavrin::PF_RGBA_32f, 0, a, pixels, Tavrin::PF_RGBA_32f, 0, b);
            return 0;
        }
        catch (Color::Exception const& e)
        {
            return e.getId();
        }
    };
    EXPECT_EQ(0U, idOf(ROI(0, 0, 1, 2), ROI(0, 0, 1, 2, 2, 2)));
    EXPECT_EQ(0x110001U, idOf(ROI(0, 0, 1, 2), ROI(0, 0, 2, 2)));
    EXPECT_EQ(0x110001U, idOf(ROI(0, 0, 2, 1), ROI(0, 0, 2, 2)));
}

TEST(CopyBuffer, EachSideHasItsOwnPlaceAndRowStep)
{
    // 3 by 2 pixels from (1, 1) of a 5 wide image with 4 bytes of padding to (0, 1) of a 4 wide one.
    std::vector<unsigned char> source(4 * (5 * 4 + 4));
    for (std::size_t i = 0; i < source.size(); ++i)
        source[i] = static_cast<unsigned char>(i);
    std::vector<float> destination(4 * 4 * 4, -1.0F);
    copyBuffer(source.data(), Tavrin::PF_RGBA_8i, 4, ROI(1, 1, 3, 2, 5, 4), destination.data(), Tavrin::PF_RGBA_32f, 0,
               ROI(0, 1, 3, 2, 4, 4));
    for (unsigned int y = 0; y < 4; ++y)
    {
        for (unsigned int x = 0; x < 4; ++x)
        {
            bool const inside = x < 3 && y >= 1 && y < 3;
            float const expected = inside ? static_cast<float>(static_cast<unsigned char>(y * 24 + (x + 1) * 4)) : -1.0F;
            EXPECT_EQ(expected, destination[(y * 4 + x) * 4]) << x << ", " << y;
        }
    }
}
