// Table files of other programs: pixels mean what the file says, and are those of OpenColorIO.
#include "support/openColorIOPixels.h"
#include "support/tableFiles.h"
#include "support/temporaryFolder.h"

#include <tavrin/tavrin.h>

#include <gtest/gtest.h>

#include <Imath/half.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <random>
#include <string>
#include <vector>

using namespace Tavrin;
using TableFiles::TableFile;

namespace
{

using Pixels = std::vector<float>;

// Both sides work in single precision, in another order: up to two units in the last place below 1 were seen.
constexpr double kRounding = 3e-7;

TransformPtr load(std::string const& path)
{
    TransformPtr transform;
    TavStatus const status = loadColorTransform(path.c_str(), transform);
    EXPECT_TRUE(status) << status.getErrorMessage();
    return transform;
}

// One line of pixels in a format of four channels.
template <class Channel>
std::vector<Channel> render(TransformPtr const& transform, PixelFormat format, std::vector<Channel> pixels)
{
    TavStatus const finalized =
        transform->finalize(format, format, RENDERER_CPU, OPTIMIZER_DEFAULT_THRESHOLD, RESOLVE_BROADCAST_MONITOR);
    EXPECT_TRUE(finalized) << finalized.getErrorMessage();
    EXPECT_TRUE(transform->applyCPU(pixels.data(), ROI(0, 0, static_cast<unsigned int>(pixels.size() / 4), 1), pixels.data()));
    return pixels;
}

// Colours on both sides of every domain of the tests, and those that are shares of 8: the points of grids and rows.
Pixels colours()
{
    std::mt19937 generator(1);
    std::uniform_real_distribution<float> wide(-1.5F, 4.5F);
    std::uniform_real_distribution<float> unit(0.0F, 1.0F);
    Pixels pixels;
    for (int i = 0; i < 500; ++i)
    {
        for (int channel = 0; channel < 4; ++channel)
            pixels.push_back(i % 2 == 0 ? wide(generator) : unit(generator));
        for (int channel = 0; channel < 4; ++channel)
            pixels.push_back(std::floor(8.0F * unit(generator)) / 8.0F);
    }
    return pixels;
}

void expectNear(Pixels const& expected, Pixels const& actual, double tolerance, std::string const& file)
{
    ASSERT_EQ(expected.size(), actual.size());
    double largest = 0.0;
    std::size_t where = 0;
    for (std::size_t i = 0; i < expected.size(); ++i)
    {
        double const error = std::abs(expected[i] - actual[i]) / std::max(1.0, std::abs(double{expected[i]}));
        if (!(error <= largest))
        {
            largest = error;
            where = i;
        }
    }
    EXPECT_LE(largest, tolerance) << file << " at " << where << ": expected " << expected[where] << ", got " << actual[where];
}

Pixels meaningOf(TableFile const& file, Pixels pixels)
{
    for (std::size_t i = 0; i < pixels.size(); i += 4)
    {
        TableFiles::Rgb const rgb = file.meaning({pixels[i], pixels[i + 1], pixels[i + 2]});
        std::transform(rgb.begin(), rgb.end(), pixels.begin() + static_cast<std::ptrdiff_t>(i),
                       [](double value) { return static_cast<float>(value); });
    }
    return pixels;
}

class TablesOfOtherPrograms : public testing::TestWithParam<TableFile>
{
};

} // namespace

TEST_P(TablesOfOtherPrograms, MeanWhatTheFileSays)
{
    TemporaryFolder const folder;
    TableFile const& file = GetParam();
    TransformPtr const transform = load(folder.write(file.name, file.text));
    ASSERT_TRUE(transform);
    expectNear(meaningOf(file, colours()), render(transform, PF_RGBA_32f, colours()), file.precision + kRounding, file.name);
}

TEST_P(TablesOfOtherPrograms, GiveThePixelsOfOpenColorIO)
{
    TemporaryFolder const folder;
    TableFile const& file = GetParam();
    std::string const path = folder.write(file.name, file.text);
    TransformPtr const transform = load(path);
    ASSERT_TRUE(transform);
    expectNear(OpenColorIOPixels::renderFile(path, colours()), render(transform, PF_RGBA_32f, colours()), kRounding, file.name);
}

TEST_P(TablesOfOtherPrograms, GiveThePixelsOfOpenColorIOInHalfsToo)
{
    TemporaryFolder const folder;
    TableFile const& file = GetParam();
    std::string const path = folder.write(file.name, file.text);
    TransformPtr const transform = load(path);
    ASSERT_TRUE(transform);
    Pixels const source = colours();
    std::vector<Imath::half> const halfs(source.begin(), source.end());
    std::vector<Imath::half> const rendered = render(transform, PF_RGBA_16f, halfs);
    // Half of a unit in the last place of a half, relative to the value.
    constexpr double kHalfRounding = 1.0 / 2048;
    expectNear(OpenColorIOPixels::renderFile(path, Pixels(halfs.begin(), halfs.end())), Pixels(rendered.begin(), rendered.end()),
               kHalfRounding + kRounding, file.name);
}

// Real files, which are not kept here: TAVRIN_SAMPLES names the folder that holds them.
TEST(RealTables, GiveThePixelsOfOpenColorIO)
{
    char const* const samples = std::getenv("TAVRIN_SAMPLES");
    if (samples == nullptr)
        GTEST_SKIP() << "TAVRIN_SAMPLES does not name a folder of real table files";
    unsigned int count = 0;
    for (auto const& entry : std::filesystem::recursive_directory_iterator(samples))
    {
        if (!entry.is_regular_file() || entry.path().extension() == ".ocio" || !isFileSupported(entry.path().c_str()))
            continue;
        ++count;
        TransformPtr const transform = load(entry.path());
        ASSERT_TRUE(transform);
        expectNear(OpenColorIOPixels::renderFile(entry.path(), colours()), render(transform, PF_RGBA_32f, colours()), kRounding,
                   entry.path());
    }
    EXPECT_GT(count, 0U);
}

INSTANTIATE_TEST_SUITE_P(EveryFormat, TablesOfOtherPrograms, testing::ValuesIn(TableFiles::all()),
                         [](auto const& info)
                         {
                             std::string name = info.param.name;
                             std::replace(name.begin(), name.end(), '.', '_');
                             return name;
                         });
