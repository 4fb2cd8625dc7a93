// Operators of configurations: what the reader makes of them gives the pixels that OpenColorIO gives, for all that it knows, and
// nothing else passes.
#include "ocio/config.h"
#include "renderer/CPURenderer.h"
#include "support/failure.h"
#include "support/openColorIOPixels.h"
#include "support/temporaryFolder.h"
#include "xml/ocioReader.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <random>
#include <string>
#include <vector>

using namespace Color;
namespace OCIO = OpenColorIOPixels::OCIO;
using testing::HasSubstr;

namespace
{

using Pixels = std::vector<float>;

// Matrices and ranges differ by single roundings; powers and logarithms by the accuracy of the polynomials that we render them
// with.
constexpr double kRounding = 2e-7;
constexpr double kPower = 4e-5;
constexpr double kLog = 2e-5; // Also of powers of small exponents.

// An antilogarithm of 16.5 stops makes a relative error of what stands before it 16.5 ln 2 times as large.
constexpr double kAmplified = 16.5 * 0.6931 * kLog;

// RGBA, on both sides of 0 and, if the highest value lets them, of 1.
Pixels colours(float highest)
{
    std::mt19937 generator(3);
    std::uniform_real_distribution<float> values(-0.5F, highest);
    Pixels pixels(4 * 1000);
    std::generate(pixels.begin(), pixels.end(), [&] { return values(generator); });
    for (float const special : {0.0F, 1.0F, 0.18F, 0.5F})
        pixels.insert(pixels.end(), 4, special);
    return pixels;
}

Pixels render(std::shared_ptr<Transform> const& transform, Pixels const& pixels)
{
    Rendering::CPURenderer renderer;
    renderer.finalize(transform, Tavrin::PF_RGBA_32f, Tavrin::PF_RGBA_32f);
    Pixels result(pixels.size());
    renderer.apply(pixels.data(), result.data(), Tavrin::ROI(0, 0, static_cast<unsigned int>(pixels.size() / 4), 1), 0, 0);
    return result;
}

// Relative to the largest channel of a pixel, where that is above 1: matrices let channels cancel.
double largestError(Pixels const& expected, Pixels const& actual)
{
    double largest = 0.0;
    for (std::size_t i = 0; i < expected.size(); ++i)
    {
        auto const pixel = expected.begin() + static_cast<std::ptrdiff_t>(i - i % 4);
        auto const [low, high] = std::minmax_element(pixel, pixel + 4);
        double const scale = std::max({1.0, std::abs(double{*low}), std::abs(double{*high})});
        double const error = std::abs(double{expected[i]} - actual[i]) / scale;
        largest = std::isnan(error) ? HUGE_VAL : std::max(largest, error);
    }
    return largest;
}

// From one colour space of a configuration to another, by the reader and our renderer, and by OpenColorIO.
struct BothWays
{
    std::shared_ptr<OpUtil::Config const> ours;
    OCIO::ConstConfigRcPtr theirs;

    explicit BothWays(std::string const& path)
        : ours(OpUtil::Config::CreateFromFile(path)), theirs(OCIO::Config::CreateFromFile(path.c_str()))
    {
    }

    std::shared_ptr<Transform> transform(std::string const& from, std::string const& to) const
    {
        OCIOReader const reader;
        reader.parse(ours->getProcessor(from, to));
        return reader.getTransform();
    }

    double difference(std::string const& from, std::string const& to, float highest = 2.0F) const
    {
        Pixels const source = colours(highest);
        Pixels const expected = OpenColorIOPixels::render(theirs->getProcessor(from.c_str(), to.c_str()), source);
        return largestError(expected, render(transform(from, to), source));
    }
};

// A configuration whose colour space "other" is this transform away from the reference.
std::string configOf(std::string const& transform)
{
    return "ocio_profile_version: 2\nsearch_path: .\nstrictparsing: true\nroles: {default: linear}\ndisplays:\n  screen:\n"
           "    - !<View> {name: Raw, colorspace: linear}\ncolorspaces:\n  - !<ColorSpace>\n    name: linear\n"
           "  - !<ColorSpace>\n    name: other\n    from_scene_reference: " +
           transform + "\n";
}

struct OperatorCase
{
    std::string name;
    std::string transform;
    double tolerance;
    bool hasInverse = true;
};

void PrintTo(OperatorCase const& c, std::ostream* out)
{
    *out << c.name;
}

class OperatorsOfConfigurations : public testing::TestWithParam<OperatorCase>
{
};

} // namespace

TEST_P(OperatorsOfConfigurations, GiveThePixelsOfOpenColorIO)
{
    TemporaryFolder const folder;
    BothWays const config(folder.write("config.ocio", configOf(GetParam().transform)));
    EXPECT_LE(config.difference("linear", "other"), GetParam().tolerance);
    if (GetParam().hasInverse)
    {
        EXPECT_LE(config.difference("other", "linear"), GetParam().tolerance);
    }
}

INSTANTIATE_TEST_SUITE_P(
    EachOne, OperatorsOfConfigurations,
    testing::Values(
        OperatorCase{
            "Matrix",
            "!<MatrixTransform> {matrix: [0.5, 0.25, 0.25, 0, 0, 0.75, 0.25, 0, 0.125, 0, 1.5, 0, 0, 0, 0, 1], offset: [0.1, "
            "0, -0.1, 0]}",
            kRounding},
        OperatorCase{"ExponentAbove1", "!<ExponentTransform> {value: [2.4, 2.2, 1.5, 1]}", kPower},
        OperatorCase{"ExponentBelow1", "!<ExponentTransform> {value: [0.45, 0.5, 0.6, 1]}", kPower},
        OperatorCase{"Moncurve", "!<ExponentWithLinearTransform> {gamma: [2.4, 2.2, 2.4, 1], offset: [0.055, 0.099, 0.055, 0]}",
                     kPower},
        OperatorCase{"Log2", "!<LogTransform> {base: 2}", kLog}, OperatorCase{"Log10", "!<LogTransform> {base: 10}", kLog},
        OperatorCase{"NaturalLog", "!<LogTransform> {base: 2.718281828459045}", kLog},
        OperatorCase{"LogAffineBase10",
                     "!<LogAffineTransform> {base: 10, log_side_slope: 0.25, log_side_offset: 0.4, lin_side_slope: 5.5, "
                     "lin_side_offset: 0.05}",
                     kLog},
        OperatorCase{
            "LogAffineBase2",
            "!<LogAffineTransform> {base: 2, log_side_slope: [0.07, 0.08, 0.09], log_side_offset: 0.4, lin_side_slope: 0.9, "
            "lin_side_offset: 0.02}",
            kLog},
        OperatorCase{"Allocation", "!<AllocationTransform> {allocation: lg2, vars: [-8, 4]}", kLog},
        OperatorCase{"AllocationWithOffset", "!<AllocationTransform> {allocation: lg2, vars: [-8, 4, 0.00390625]}", kLog},
        OperatorCase{"AllocationUniform", "!<AllocationTransform> {allocation: uniform, vars: [0, 0.66]}", kRounding},
        OperatorCase{"Range", "!<RangeTransform> {min_in_value: 0.1, max_in_value: 0.9, min_out_value: 0.2, max_out_value: 1.5}",
                     kRounding},
        OperatorCase{"RangeFromBelow", "!<RangeTransform> {min_in_value: 0.1, min_out_value: 0.1}", kRounding},
        OperatorCase{"RangeFromAbove", "!<RangeTransform> {max_in_value: 0.9, max_out_value: 0.9}", kRounding},
        OperatorCase{
            "RangeWithoutClamp",
            "!<RangeTransform> {min_in_value: 0.1, max_in_value: 0.9, min_out_value: 0.2, max_out_value: 1.5, style: noClamp}",
            kRounding},
        OperatorCase{
            "ColourDecision",
            "!<CDLTransform> {slope: [1.1, 1.2, 0.9], offset: [0.05, 0, -0.05], power: [0.9, 1, 1.3], sat: 0.8, style: asc}", kLog},
        OperatorCase{"ColourDecisionWithoutClamp",
                     "!<CDLTransform> {slope: [1.1, 1.2, 0.9], offset: [0.05, 0, -0.05], power: [0.9, 1, 1.3], sat: 0.8, style: "
                     "noClamp}",
                     kLog},
        OperatorCase{"ExposureContrastOfLight",
                     "!<ExposureContrastTransform> {style: linear, exposure: 0.75, contrast: 1.2, gamma: 1.1, pivot: 0.2}", kLog,
                     false},
        OperatorCase{"ExposureContrastOfVideo",
                     "!<ExposureContrastTransform> {style: video, exposure: -0.75, contrast: 0.8, gamma: 1, pivot: 0.18}", kLog,
                     false},
        OperatorCase{"Exposure", "!<ExposureContrastTransform> {style: linear, exposure: 0.75, contrast: 1, gamma: 1, pivot: 0.2}",
                     kRounding, false}),
    [](auto const& info) { return info.param.name; });

TEST(OperatorsWithoutCounterpart, AreRefused)
{
    for (char const* transform :
         {"!<ExponentTransform> {value: [2.4, 2.4, 2.4, 1], style: mirror}", "!<ExponentTransform> {value: 2.4, style: pass_thru}",
          "!<ExponentWithLinearTransform> {gamma: 2.4, offset: 0.055, style: mirror}",
          "!<LogCameraTransform> {lin_side_break: 0.0078125}", "!<FixedFunctionTransform> {style: RGB_TO_HSV}",
          "!<ExposureContrastTransform> {style: log, exposure: 0.75, contrast: 1.2, pivot: 0.2}",
          "!<ExposureContrastTransform> {style: linear, exposure: 0.75, contrast: 1.2, pivot: 0.2, direction: inverse}",
          "!<GradingPrimaryTransform> {style: log, saturation: 0.5}"})
    {
        TemporaryFolder const folder;
        BothWays const config(folder.write("config.ocio", configOf(transform)));
        EXPECT_EQ(failureOf([&] { config.transform("linear", "other"); }),
                  (Failure{0x470003, "Unsupported OCIO Unknown operation"}))
            << transform;
    }
}

// Half-domain tables come from Academy files, with or without the hue adjustment of early Academy transforms.
TEST(TablesOfAcademyFiles, GiveThePixelsOfOpenColorIO)
{
    for (char const* attributes : {"halfDomain='true'", "halfDomain='true' hueAdjust='dw3'"})
    {
        std::string rows;
        for (unsigned int code = 0; code < 65536; ++code)
        {
            // The code of half of the value, which is one exponent down, for normal numbers; all else stays.
            unsigned int const exponent = code >> 10U & 31U;
            rows += std::to_string(exponent > 1 && exponent < 31 ? code - 1024 : code) + "\n";
        }
        TemporaryFolder const folder;
        folder.write("half.ctf",
                     std::string("<ProcessList version='1.4' id='a'><LUT1D inBitDepth='16f' outBitDepth='16f' rawHalfs='true' ") +
                         attributes + "><Array dim='65536 1'>\n" + rows + "</Array></LUT1D></ProcessList>");
        BothWays const config(folder.write("config.ocio", configOf("!<FileTransform> {src: half.ctf}")));
        EXPECT_LE(config.difference("linear", "other"), kRounding) << attributes;
    }
}

// A real configuration, which is not kept here: TAVRIN_SAMPLES names the folder above it. Two of its tables are missing.
TEST(RealConfigurations, GiveThePixelsOfOpenColorIOBetweenAllColourSpaces)
{
    char const* const samples = std::getenv("TAVRIN_SAMPLES");
    if (samples == nullptr)
        GTEST_SKIP() << "TAVRIN_SAMPLES does not name a folder with a real configuration";
    unsigned int compared = 0;
    unsigned int missing = 0;
    for (auto const& entry : std::filesystem::recursive_directory_iterator(samples))
    {
        if (entry.path().extension() != ".ocio")
            continue;
        BothWays const config(entry.path());
        EXPECT_NO_THROW(config.ours->sanityCheck());
        for (std::string const& from : config.ours->getColorSpaceNames())
            for (std::string const& to : config.ours->getColorSpaceNames())
            {
                SCOPED_TRACE(from + " -> " + to);
                try
                {
                    config.theirs->getProcessor(from.c_str(), to.c_str());
                }
                catch (OCIO::ExceptionMissingFile const& exception)
                {
                    ++missing;
                    EXPECT_THROW(config.transform(from, to), OpUtil::Error) << exception.what();
                    continue;
                }
                ++compared;
                // Logarithmic spaces end at 1, 4 stops over white; beyond, a channel is so large that matrices lose the others.
                bool const isLog = from.find("Filmic Log") != std::string::npos;
                EXPECT_LE(config.difference(from, to, isLog ? 1.0F : 2.0F), isLog ? kAmplified : kPower);
            }
    }
    EXPECT_GT(compared, 0U);
    EXPECT_GT(missing, 0U);
}
