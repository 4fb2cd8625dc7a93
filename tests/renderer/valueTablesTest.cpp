// Pictures of 8 and 16 bits a channel are looked up in tables of what the first renderers make of each element, once there have
// been enough pixels: the same bytes as by way of the renderers themselves.
#include "renderer/beforeAnAbyss.h"
#include "renderer/lut1DTables.h"
#include "renderer/pixelModel.h"
#include "renderer/rendererHarness.h"
#include "renderer/shaderSamples.h"
#include "renderer/usualOps.h"

#include "renderer/CPUSelector.h"
#include "renderer/kernelsBytes.h"
#include "renderer/valueTables.h"
#include "transform/exposureContrastOp.h"
#include "transform/gammaOp.h"
#include "transform/matrixOp.h"
#include "transform/rangeOp.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <thread>

using namespace RendererHarness;
using Rendering::ROI;
using Rendering::RunningRenderers;
using Rendering::TransformProcessor;

namespace
{

constexpr unsigned int kSide = 256;                     // of a picture with as many pixels as there are words
constexpr std::size_t kEnough = std::size_t{512} * 512; // pixels, for tables

// Each channel has every element, and no two channels are alike.
std::vector<unsigned char> everyElement(PixelFormat format)
{
    std::size_t const channels = PixelModel::channels(format).size();
    std::size_t const bytes = PixelModel::elementBytes(format);
    std::vector<unsigned char> pixels(std::size_t{kSide} * kSide * channels * bytes);
    for (std::size_t i = 0; i < pixels.size() / bytes; ++i)
    {
        // An odd factor leaves none of them out.
        std::uint64_t const element = i / channels * 40503U + i % channels * 12345U;
        for (std::size_t byte = 0; byte < bytes; ++byte)
            pixels[i * bytes + byte] = static_cast<unsigned char>(element >> 8 * byte);
    }
    return pixels;
}

// On the current target.
bool isServed(PixelFormat format)
{
    bool const areInRegisters = PixelModel::elementBytes(format) == 1 && Rendering::getCodeFunctions() != nullptr;
    return !PixelModel::isPacked(format) && PixelModel::elementBytes(format) <= 2 && !areInRegisters;
}

Color::GammaOp sameGammas()
{
    Color::GammaOp op;
    op.setParams({2.2});
    return op;
}

// A transform between two formats, with tables for its first renderers.
class Tabulated
{
public:
    Tabulated(std::shared_ptr<Color::Transform> const& transform, PixelFormat from, PixelFormat to)
        : m_from(from),
          m_to(to),
          m_renderers(Rendering::makePipeline(transform, from, to).renderers),
          m_running(*m_renderers, from, to)
    {
        m_running.prepareLines();
        if (lasting() > 0 && Rendering::ValueTables::serve(from))
            m_tables.emplace(m_running, lasting(), from);
    }

    std::size_t lasting() const { return m_running.lasting(); }

    // For how many renderers the tables would be taken now.
    std::size_t taken()
    {
        m_running.prepareLines();
        return m_tables->renderersOf(m_running);
    }

    void applyWithTables(void const* source, void* destination, ROI const& roi) const
    {
        Rendering::CPUEngine(m_from, m_to).apply(source, destination, roi, 0, 0, *m_renderers, &*m_tables);
    }
    void applyWithout(void const* source, void* destination, ROI const& roi) const
    {
        Rendering::CPUEngine(m_from, m_to).apply(source, destination, roi, 0, 0, *m_renderers);
    }

    // If there are any tables.
    void expectTheBytesOfTheRenderers() const
    {
        if (!m_tables)
            return;
        ROI const roi(0, 0, kSide, kSide);
        std::vector<unsigned char> const source = everyElement(m_from);
        std::vector<unsigned char> expected(std::size_t{kSide} * kSide * PixelModel::pixelBytes(m_to));
        std::vector<unsigned char> actual(expected.size());
        applyWithout(source.data(), expected.data(), roi);
        applyWithTables(source.data(), actual.data(), roi);
        ASSERT_TRUE(expected == actual) << Tavrin::pfToStr(m_from) << " to " << Tavrin::pfToStr(m_to);
    }

private:
    PixelFormat m_from;
    PixelFormat m_to;
    std::shared_ptr<TransformProcessor> m_renderers;
    RunningRenderers m_running;
    std::optional<Rendering::ValueTables> m_tables;
};

class ValueTables : public testing::TestWithParam<ShaderSample>
{
};

} // namespace

TEST_P(ValueTables, GiveTheBytesOfTheRenderers)
{
    auto const transform = GetParam().makeTransform();
    forEveryTarget(
        [&]
        {
            for (auto [from, to] :
                 {std::pair{Tavrin::PF_RGBA_16i, Tavrin::PF_RGBA_32f}, std::pair{Tavrin::PF_BGR_16f, Tavrin::PF_ABGR_16i},
                  std::pair{Tavrin::PF_ABGR_12i, Tavrin::PF_RGB_16f}})
            {
                Tabulated const tabulated(transform, from, to);
                ASSERT_NO_FATAL_FAILURE(tabulated.expectTheBytesOfTheRenderers());
            }
        });
}

TEST_P(ValueTables, GiveTheBytesOfTheRenderersInFrontOfOneThatMixes)
{
    auto const transform = GetParam().makeTransform();
    transform->getOps().append(mixing().clone());
    GetParam().append(transform->getOps());
    forEveryTarget(
        [&]
        {
            Tabulated const tabulated(transform, Tavrin::PF_BGRA_16f, Tavrin::PF_RGBA_32f);
            ASSERT_NO_FATAL_FAILURE(tabulated.expectTheBytesOfTheRenderers());
        });
}

INSTANTIATE_TEST_SUITE_P(EveryOperator, ValueTables, testing::ValuesIn(shaderSamples()),
                         [](auto const& info) { return info.param.name; });

TEST(ValueTables, ServeEveryFormatOf8And16BitsAChannel)
{
    Color::GammaOp const gammas = fourGammas();
    Color::MatrixOp const matrix = mixing();
    forEveryTarget(
        [&]
        {
            for (PixelFormat const from : PixelModel::allFormats())
            {
                ASSERT_EQ(isServed(from), Rendering::ValueTables::serve(from)) << Tavrin::pfToStr(from);
                for (PixelFormat const to : {Tavrin::PF_RGBA_32f, Tavrin::PF_BGR_8i})
                    ASSERT_NO_FATAL_FAILURE(Tabulated(transformOf({&gammas, &matrix}), from, to).expectTheBytesOfTheRenderers());
            }
        });
}

// Codes of 10 and 12 bits that are none, and NaNs with a payload, are among the words, too.
TEST(ValueTables, HoldWhatATableOfCodesGives)
{
    Color::MatrixOp const matrix = mixing();
    forEveryTarget(
        [&]
        {
            for (auto [from, rows] : {std::pair{Tavrin::PF_RGB_10i, 1024U}, std::pair{Tavrin::PF_RGBA_12i, 4096U},
                                      std::pair{Tavrin::PF_BGRA_16i, 65536U}, std::pair{Tavrin::PF_ABGR_8i, 256U}})
            {
                Color::Lut1DOp const table = tableOf(Color::Utils::depthOf(from), Tavrin::BIT_DEPTH_32f, rows, curve);
                Tabulated const tabulated(transformOf({&table, &matrix}), from, Tavrin::PF_RGBA_32f);
                ASSERT_EQ(1U, tabulated.lasting());
                ASSERT_NO_FATAL_FAILURE(tabulated.expectTheBytesOfTheRenderers());
            }
        });
}

// Whole blocks, and one pixel in the middle of a block or at its end, have another alpha.
TEST(ValueTables, GiveTheBytesOfTheRenderersWhereAlphaIsNearlyTheSameAllOver)
{
    constexpr unsigned int kWidth = 3 * 128 + 5;
    Color::GammaOp const gammas = fourGammas();
    for (PixelFormat const from : {Tavrin::PF_RGBA_16i, Tavrin::PF_ABGR_16f, Tavrin::PF_BGRA_8i})
    {
        std::size_t const pixelBytes = PixelModel::pixelBytes(from);
        std::size_t const alpha = PixelModel::channels(from).find('A') * PixelModel::elementBytes(from);
        forEveryTarget(
            [&]
            {
                if (!isServed(from))
                    return;
                Tabulated const tabulated(transformOf({&gammas}), from, Tavrin::PF_RGBA_32f);
                for (unsigned int const other : {kWidth, 0U, 60U, 127U, 128U, 255U, kWidth - 1})
                {
                    std::vector<unsigned char> source = PixelModel::sensiblePixels(from, kWidth, other);
                    for (std::size_t pixel = 0; pixel < kWidth; ++pixel)
                        for (std::size_t byte = 0; byte < PixelModel::elementBytes(from); ++byte)
                            source[pixel * pixelBytes + alpha + byte] = pixel == other ? 0x2a : 0x35;
                    std::vector<unsigned char> expected(std::size_t{kWidth} * 16);
                    std::vector<unsigned char> actual(expected.size());
                    tabulated.applyWithout(source.data(), expected.data(), ROI(0, 0, kWidth, 1));
                    tabulated.applyWithTables(source.data(), actual.data(), ROI(0, 0, kWidth, 1));
                    ASSERT_TRUE(expected == actual) << Tavrin::pfToStr(from) << ", pixel " << other;
                }
            });
    }
}

TEST(ValueTables, ServeEveryWidthAndTouchNothingBeyondThePixels)
{
    Color::GammaOp const gammas = fourGammas();
    Color::MatrixOp const matrix = mixing();
    forEveryTarget(
        [&]
        {
            for (auto [from, to] :
                 {std::pair{Tavrin::PF_RGBA_16f, Tavrin::PF_RGBA_32f}, std::pair{Tavrin::PF_RGB_16i, Tavrin::PF_BGR_8i},
                  std::pair{Tavrin::PF_RGB_8i, Tavrin::PF_RGB_16i}})
            {
                if (!isServed(from))
                    continue;
                Tabulated const tabulated(transformOf({&gammas, &matrix}), from, to);
                for (unsigned int width = 1; width <= 150; ++width)
                {
                    ROI const roi(0, 0, width, 3);
                    std::size_t const pixels = std::size_t{width} * 3;
                    std::vector<unsigned char> const content = PixelModel::sensiblePixels(from, pixels, width);
                    BeforeAnAbyss const source(content.size());
                    std::copy(content.begin(), content.end(), source.begin());
                    std::vector<unsigned char> expected(pixels * PixelModel::pixelBytes(to));
                    BeforeAnAbyss const actual(expected.size());
                    tabulated.applyWithout(source.begin(), expected.data(), roi);
                    tabulated.applyWithTables(source.begin(), actual.begin(), roi);
                    ASSERT_TRUE(std::equal(expected.begin(), expected.end(), actual.begin())) << width;
                }
            }
        });
}

TEST(ValueTables, StandForTheRenderersThatSeeEachChannelForItselfAndNeverChange)
{
    Color::GammaOp const gammas = fourGammas();
    Color::RangeOp const range(Tavrin::BIT_DEPTH_32f, Tavrin::BIT_DEPTH_32f, 0.125, 0.875, 0.25, 0.75);
    Color::ExposureContrastOp const exposure(Tavrin::BIT_DEPTH_32f, Tavrin::BIT_DEPTH_32f, Color::ExposureContrastOp::Style::Video);
    Color::Lut1DOp hueAdjusted = tableOf(Tavrin::BIT_DEPTH_16i, Tavrin::BIT_DEPTH_32f, 65536, curve);
    hueAdjusted.setHueAdjust(Color::Lut1DOp::HueAdjust::Dw3);
    Color::MatrixOp const matrix = mixing();
    auto const lasting = [](std::vector<Color::Op const*> const& ops)
    { return Tabulated(transformOf(ops), Tavrin::PF_RGBA_16i, Tavrin::PF_RGBA_16i).lasting(); };
    EXPECT_EQ(2U, lasting({&gammas, &range, &matrix, &gammas}));
    EXPECT_EQ(1U, lasting({&gammas, &exposure, &gammas}));
    EXPECT_EQ(0U, lasting({&exposure, &gammas}));
    EXPECT_EQ(0U, lasting({&matrix, &gammas}));
    EXPECT_EQ(0U, lasting({&hueAdjusted, &gammas}));
}

TEST(ValueTables, AreNotTakenWhileARendererIsBypassed)
{
    Color::GammaOp gammas = fourGammas();
    auto const bypass = std::make_shared<Color::BypassDynamicProperty>(false, true);
    gammas.setBypass(bypass);
    Color::MatrixOp const matrix = mixing();
    Tabulated tabulated(transformOf({&gammas, &matrix}), Tavrin::PF_RGBA_16i, Tavrin::PF_RGBA_32f);
    EXPECT_EQ(1U, tabulated.taken());
    bypass->setValue(true);
    EXPECT_EQ(0U, tabulated.taken());
    EXPECT_NO_FATAL_FAILURE(tabulated.expectTheBytesOfTheRenderers());
    bypass->setValue(false);
    EXPECT_EQ(1U, tabulated.taken());
    EXPECT_NO_FATAL_FAILURE(tabulated.expectTheBytesOfTheRenderers());
}

namespace
{

// A transform's tables on demand.
struct OnDemand
{
    OnDemand(std::vector<Color::Op const*> const& ops, PixelFormat from)
        : renderers(Rendering::makePipeline(transformOf(ops), from, from).renderers), tables(*renderers, from, from)
    {
    }

    std::shared_ptr<TransformProcessor> renderers;
    Rendering::ValueTablesOnDemand tables;
};

} // namespace

TEST(ValueTablesOnDemand, ComeWithEnoughPixelsAndAreForLargeRegionsAlone)
{
    constexpr std::size_t kOfCall = 1024;
    Color::GammaOp const gammas = sameGammas();
    OnDemand demand({&gammas}, Tavrin::PF_RGBA_16i);
    for (std::size_t pixels = 0; pixels < 2 * kEnough; pixels += kOfCall - 1)
        ASSERT_EQ(nullptr, demand.tables.get(kOfCall - 1));
    for (std::size_t pixels = kOfCall; pixels < kEnough; pixels += kOfCall)
        ASSERT_EQ(nullptr, demand.tables.get(kOfCall));
    Rendering::ValueTables const* const tables = demand.tables.get(kOfCall);
    ASSERT_NE(nullptr, tables);
    EXPECT_EQ(tables, demand.tables.get(kOfCall));
    EXPECT_EQ(nullptr, demand.tables.get(kOfCall - 1));
}

TEST(ValueTablesOnDemand, AreNotForOtherFormatsNorForLittleWork)
{
    Color::GammaOp const gammas = sameGammas();
    for (PixelFormat const format : PixelModel::allFormats())
        EXPECT_EQ(isServed(format), OnDemand({&gammas}, format).tables.get(kEnough) != nullptr) << Tavrin::pfToStr(format);
    Color::MatrixOp const matrix = mixing();
    EXPECT_EQ(nullptr, OnDemand({&matrix, &gammas}, Tavrin::PF_RGB_16f).tables.get(kEnough));
    Color::RangeOp const range(Tavrin::BIT_DEPTH_32f, Tavrin::BIT_DEPTH_32f, 0.125, 0.875, 0.25, 0.75);
    EXPECT_EQ(nullptr, OnDemand({&range, &matrix}, Tavrin::PF_RGB_16f).tables.get(kEnough));
}

TEST(ValueTablesOnDemand, ComeOnceTheRendererIsNoLongerBypassed)
{
    Color::GammaOp gammas = sameGammas();
    auto const bypass = std::make_shared<Color::BypassDynamicProperty>(true, true);
    gammas.setBypass(bypass);
    OnDemand demand({&gammas}, Tavrin::PF_RGBA_16i);
    EXPECT_EQ(nullptr, demand.tables.get(kEnough));
    bypass->setValue(false);
    EXPECT_NE(nullptr, demand.tables.get(kEnough));
}

TEST(ValueTablesOnDemand, GiveTheBytesOfTheRenderersInLargePictures)
{
    constexpr unsigned int kWidth = 1031;
    constexpr unsigned int kHeight = 600;
    ROI const roi(0, 0, kWidth, kHeight);
    Color::GammaOp const gammas = sameGammas();
    Color::MatrixOp const matrix = mixing();
    for (PixelFormat const format : {Tavrin::PF_RGBA_16f, Tavrin::PF_RGB_16i})
    {
        std::vector<unsigned char> const source = PixelModel::sensiblePixels(format, std::size_t{kWidth} * kHeight, 5);
        std::vector<unsigned char> expected(source.size());
        Rendering::CPUEngine(format, format)
            .apply(source.data(), expected.data(), roi, 0, 0,
                   *Rendering::makePipeline(transformOf({&gammas, &matrix}), format, format).renderers);
        Rendering::CPURenderer renderer = rendererOf(transformOf({&gammas, &matrix}), format, format);
        std::vector<unsigned char> actual(source.size());
        renderer.apply(source.data(), actual.data(), roi, 0, 0);
        EXPECT_TRUE(expected == actual);
    }
}

TEST(ValueTablesOnDemand, AreMadeBySeveralThreadsAtOnce)
{
    constexpr unsigned int kWidth = 1031;
    constexpr unsigned int kHeight = 512;
    constexpr unsigned int kThreads = 4;
    constexpr PixelFormat kFormat = Tavrin::PF_RGBA_16i;
    Color::GammaOp const gammas = fourGammas();
    std::vector<unsigned char> const source = PixelModel::sensiblePixels(kFormat, std::size_t{kWidth} * kHeight, 7);
    std::vector<unsigned char> expected(source.size());
    Tabulated(transformOf({&gammas}), kFormat, kFormat).applyWithout(source.data(), expected.data(), ROI(0, 0, kWidth, kHeight));

    Rendering::CPURenderer renderer = rendererOf(transformOf({&gammas}), kFormat, kFormat);
    std::vector<unsigned char> actual(source.size());
    std::vector<std::thread> threads;
    for (unsigned int t = 0; t < kThreads; ++t)
        threads.emplace_back(
            [&, t]
            {
                for (unsigned int y = t; y < kHeight; y += kThreads)
                    renderer.apply(source.data(), actual.data(), ROI(0, y, kWidth, 1, kWidth, kHeight), 0, 0);
            });
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_TRUE(expected == actual);
}
