// Pictures through OpenColorIO are those of our own renderer, for every operator that both have; others are refused.
#include "renderer/OCIORenderer.h"

#include "renderer/CPURenderer.h"
#include "renderer/rendererHarness.h"
#include "support/failure.h"
#include "transform/ops.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <Imath/half.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <functional>
#include <random>
#include <string>
#include <vector>

using namespace Color;
using namespace Rendering;
using RendererHarness::transformOf;
using testing::ElementsAre;

namespace
{

// An operator in a pair of depths, made in code values that have the same meaning in all of them.
struct OperatorCase
{
    std::string name;
    std::function<std::shared_ptr<Op>()> make; // 32f to 32f
    double tolerance;                          // Of full signal, in floats.
};

std::shared_ptr<Op> rescaled(OperatorCase const& c, BitDepth in, BitDepth out)
{
    std::shared_ptr<Op> op = c.make();
    op->setInputBitDepth(in);
    op->setOutputBitDepth(out);
    return op;
}

std::shared_ptr<Lut1DOp> makeLut1D(unsigned int rows = 33)
{
    auto lut = std::make_shared<Lut1DOp>(rows);
    for (unsigned int row = 0; row < rows; ++row)
    {
        float const x = static_cast<float>(row) / static_cast<float>(rows - 1);
        lut->getArray().set(row * 3, x * x * 0.75F + 0.25F * x);
        lut->getArray().set(row * 3 + 1, std::sqrt(x));
        lut->getArray().set(row * 3 + 2, 0.25F + 0.5F * x);
    }
    return lut;
}

std::shared_ptr<Op> makeInvLut1D()
{
    auto inverse = std::make_shared<InvLut1DOp>(*makeLut1D());
    return inverse;
}

std::shared_ptr<Op> makeLut3D(Lut3DOp::InterpolationAlgo interpolation)
{
    auto lut = std::make_shared<Lut3DOp>(5);
    lut->setInterpolation(interpolation);
    for (float& value : lut->getArray().getValues())
        value = value * value * 0.5F + 0.25F;
    // No symmetry between the axes.
    auto& values = lut->getArray().getValues();
    for (std::size_t i = 0; i + 2 < values.size(); i += 3)
        values[i] += 0.25F * values[i + 1];
    return lut;
}

std::shared_ptr<Op> makeMatrix()
{
    auto matrix = std::make_shared<MatrixOp>();
    float const values[] = {0.5F, 0.25F, 0.125F, 0.0F, 0.0F, 0.75F, 0.25F, 0.0F, 0.125F, 0.0F, 0.75F, 0.0F, 0.0F, 0.0F, 0.0F, 1.0F};
    float const offsets[] = {0.125F, 0.0F, 0.0625F, 0.0F};
    matrix->setRGBAValues(values);
    matrix->getOffsets().setRGBAValues(offsets);
    return matrix;
}

std::shared_ptr<Op> makeGamma(GammaOp::GammaStyle style)
{
    return std::make_shared<GammaOp>(Tavrin::BIT_DEPTH_32f, Tavrin::BIT_DEPTH_32f, "", "", Descriptions(), style,
                                     GammaOp::Params{2.2}, GammaOp::Params{1.5}, GammaOp::Params{3.0}, GammaOp::Params{1.25});
}

std::shared_ptr<Op> makeLog(LogOp::LogStyle style)
{
    LogOp::Params const red{0.6, 685, 95, 1.0, 0.0};
    LogOp::Params const green{0.5, 700, 90, 1.0, 0.01};
    LogOp::Params const none;
    bool const isFilm = LogOp::hasParameters(style);
    return std::make_shared<LogOp>(Tavrin::BIT_DEPTH_32f, Tavrin::BIT_DEPTH_32f, style, isFilm ? red : none, isFilm ? green : none,
                                   isFilm ? red : none);
}

std::shared_ptr<Op> makeCDL(CDLOp::CDLStyle style)
{
    return std::make_shared<CDLOp>(Tavrin::BIT_DEPTH_32f, Tavrin::BIT_DEPTH_32f, "", "", Descriptions(), style,
                                   CDLOp::ChannelParams(1.25, 1.0, 0.75), CDLOp::ChannelParams(-0.0625, 0.0, 0.125),
                                   CDLOp::ChannelParams(0.75, 1.0, 1.5), 0.875);
}

std::vector<OperatorCase> const& operatorCases()
{
    using Gamma = GammaOp::GammaStyle;
    using Log = LogOp::LogStyle;
    using CDL = CDLOp::CDLStyle;
    using Algo = Lut3DOp::InterpolationAlgo;
    // Tables and matrices differ by a rounding; powers, logarithms and exponentials by the accuracy of our polynomials.
    constexpr double kRounding = 2e-7;
    static std::vector<OperatorCase> const cases{
        {"Lut1D", [] { return makeLut1D(); }, kRounding},
        {"InvLut1D", makeInvLut1D, kRounding},
        {"Lut3DTrilinear", [] { return makeLut3D(Algo::Trilinear); }, kRounding},
        {"Lut3DDefault", [] { return makeLut3D(Algo::Default); }, kRounding},
        {"Lut3DTetrahedral", [] { return makeLut3D(Algo::Tetrahedral); }, kRounding},
        {"Matrix", makeMatrix, kRounding},
        {"GammaForward", [] { return makeGamma(Gamma::BasicFwd); }, 4e-5},
        {"GammaReverse", [] { return makeGamma(Gamma::BasicRev); }, 1.5e-5},
        {"Log10", [] { return makeLog(Log::Log10); }, 8e-6},
        {"Log2", [] { return makeLog(Log::Log2); }, 2e-5},
        {"AntiLog10", [] { return makeLog(Log::AntiLog10); }, 6e-6},
        {"AntiLog2", [] { return makeLog(Log::AntiLog2); }, 6e-6},
        {"LogToLin", [] { return makeLog(Log::LogToLin); }, 6e-6},
        {"LinToLog", [] { return makeLog(Log::LinToLog); }, 2.4e-6},
        {"CDLClamped", [] { return makeCDL(CDL::V1_2Fwd); }, 2e-5},
        {"CDLClampedReverse", [] { return makeCDL(CDL::V1_2Rev); }, 2e-5},
        {"CDLOpen", [] { return makeCDL(CDL::NoClampFwd); }, 2e-5},
        {"CDLOpenReverse", [] { return makeCDL(CDL::NoClampRev); }, 2e-5},
    };
    return cases;
}

void PrintTo(OperatorCase const& c, std::ostream* out)
{
    *out << c.name;
}

// RGBA floats of the whole range from a little below 0 to a little above 1, in the scale of a depth.
std::vector<float> signal(BitDepth depth)
{
    float const maximum = Tavrin::getBitDepthMaxValue(depth);
    bool const isFloat = Tavrin::isFloatDepth(depth);
    std::mt19937 generator(7);
    std::uniform_real_distribution<float> values(isFloat ? -0.25F : 0.0F, isFloat ? 1.25F : 1.0F);
    std::vector<float> pixels(4 * 256);
    for (float& value : pixels)
        value = isFloat ? values(generator) : std::floor(values(generator) * maximum);
    return pixels;
}

template <class Renderer, class In, class Out>
std::vector<Out> renderBy(std::shared_ptr<Transform> const& transform, PixelFormat in, PixelFormat out,
                          std::vector<In> const& pixels)
{
    Renderer renderer;
    renderer.finalize(transform, in, out);
    auto const count = static_cast<unsigned int>(pixels.size() / 4);
    std::vector<Out> result(pixels.size());
    renderer.apply(pixels.data(), result.data(), Rendering::ROI(0, 0, count, 1), 0, 0);
    return result;
}

template <class In, class Out>
double largestDifference(OperatorCase const& c, PixelFormat in, PixelFormat out)
{
    BitDepth const inDepth = Utils::depthOf(in);
    BitDepth const outDepth = Utils::depthOf(out);
    std::shared_ptr<Op> const op = rescaled(c, inDepth, outDepth);
    std::vector<float> const source = signal(inDepth);
    std::vector<In> const pixels(source.begin(), source.end());
    auto const ours = renderBy<CPURenderer, In, Out>(transformOf({op.get()}), in, out, pixels);
    auto const theirs = renderBy<OCIORenderer, In, Out>(transformOf({op.get()}), in, out, pixels);
    double largest = 0.0;
    for (std::size_t i = 0; i < ours.size(); ++i)
    {
        double const a = static_cast<double>(ours[i]);
        double const b = static_cast<double>(theirs[i]);
        largest = std::max(largest, std::abs(a - b) / std::max(double{Tavrin::getBitDepthMaxValue(outDepth)}, std::abs(a)));
    }
    return largest;
}

template <class Base>
class NeedsOpenColorIO : public Base
{
protected:
    void SetUp() override
    {
        if (!OpUtil::isAvailable())
            GTEST_SKIP() << "this build has no OpenColorIO";
    }
};

using OperatorsOfBoth = NeedsOpenColorIO<testing::TestWithParam<OperatorCase>>;
using PicturesThroughOpenColorIO = NeedsOpenColorIO<testing::Test>;

Failure failureOfFinalize(std::shared_ptr<Transform> const& transform)
{
    return failureOf([&] { OCIORenderer().finalize(transform, Tavrin::PF_RGBA_32f, Tavrin::PF_RGBA_32f); });
}

template <class AnyOp>
Failure failureOfOp(AnyOp const& op)
{
    return failureOfFinalize(transformOf({&op}));
}

Failure unsupported(std::string const& what)
{
    return {0x840001, what + " operation not supported by OCIO"};
}

} // namespace

TEST_P(OperatorsOfBoth, GiveTheSameFloats)
{
    EXPECT_LE((largestDifference<float, float>(GetParam(), Tavrin::PF_RGBA_32f, Tavrin::PF_RGBA_32f)), GetParam().tolerance);
}

// Half of a unit in the last place of a half on top.
TEST_P(OperatorsOfBoth, GiveTheSameHalfs)
{
    EXPECT_LE((largestDifference<Imath::half, Imath::half>(GetParam(), Tavrin::PF_RGBA_16f, Tavrin::PF_RGBA_16f)),
              GetParam().tolerance + 1.0 / 1024);
}

// To one code, where a value lies between two.
TEST_P(OperatorsOfBoth, GiveTheSameCodesWhateverTheDepths)
{
    OperatorCase const& c = GetParam();
    EXPECT_LE((largestDifference<std::uint8_t, std::uint8_t>(c, Tavrin::PF_RGBA_8i, Tavrin::PF_RGBA_8i)), 1.0 / 255);
    EXPECT_LE((largestDifference<std::uint16_t, std::uint8_t>(c, Tavrin::PF_RGBA_10i, Tavrin::PF_RGBA_8i)), 1.0 / 255);
    EXPECT_LE((largestDifference<std::uint8_t, std::uint16_t>(c, Tavrin::PF_RGBA_8i, Tavrin::PF_RGBA_12i)), 1.0 / 4095);
    EXPECT_LE((largestDifference<std::uint16_t, std::uint16_t>(c, Tavrin::PF_RGBA_16i, Tavrin::PF_RGBA_16i)), 2.0 / 65535);
    EXPECT_LE((largestDifference<std::uint16_t, float>(c, Tavrin::PF_RGBA_10i, Tavrin::PF_RGBA_32f)), c.tolerance);
    EXPECT_LE((largestDifference<float, std::uint8_t>(c, Tavrin::PF_RGBA_32f, Tavrin::PF_RGBA_8i)), 1.0 / 255);
}

INSTANTIATE_TEST_SUITE_P(EachOne, OperatorsOfBoth, testing::ValuesIn(operatorCases()),
                         [](auto const& info) { return info.param.name; });

// Tables interpolate in code values: the operators between keep their depths, and pixels are floats all the same.
TEST_F(PicturesThroughOpenColorIO, KeepTheDepthsBetweenOperators)
{
    std::shared_ptr<Op> const first = rescaled({"", [] { return makeLut1D(); }, 0.0}, Tavrin::BIT_DEPTH_8i, Tavrin::BIT_DEPTH_10i);
    std::shared_ptr<Op> const second = rescaled({"", makeMatrix, 0.0}, Tavrin::BIT_DEPTH_10i, Tavrin::BIT_DEPTH_16f);
    auto const transform = transformOf({first.get(), second.get()});
    std::vector<float> const source = signal(Tavrin::BIT_DEPTH_8i);
    std::vector<std::uint8_t> const pixels(source.begin(), source.end());
    auto const ours = renderBy<CPURenderer, std::uint8_t, float>(transform, Tavrin::PF_RGBA_8i, Tavrin::PF_RGBA_32f, pixels);
    auto const theirs = renderBy<OCIORenderer, std::uint8_t, float>(transform, Tavrin::PF_RGBA_8i, Tavrin::PF_RGBA_32f, pixels);
    for (std::size_t i = 0; i < ours.size(); ++i)
        ASSERT_NEAR(ours[i], theirs[i], 2e-7) << i;
}

TEST_F(PicturesThroughOpenColorIO, HaveFullAlphaWhereTheSourceHasNone)
{
    MatrixOp const identity(Tavrin::BIT_DEPTH_8i, Tavrin::BIT_DEPTH_8i, "", "", Descriptions());
    OCIORenderer renderer;
    renderer.finalize(transformOf({&identity}), Tavrin::PF_RGB_8i, Tavrin::PF_BGRA_10i);
    std::uint8_t const source[] = {0, 255, 51};
    std::uint16_t destination[4] = {};
    renderer.apply(source, destination, Rendering::ROI(0, 0, 1, 1), 0, 0);
    EXPECT_THAT(destination, ElementsAre(205, 1023, 0, 1023));
}

TEST_F(PicturesThroughOpenColorIO, AreLeftAloneOutsideOfTheRegion)
{
    auto const doubled = std::make_unique<MatrixOp>();
    float const two[] = {2, 0, 0, 0, 0, 2, 0, 0, 0, 0, 2, 0, 0, 0, 0, 1};
    doubled->setRGBAValues(two);
    OCIORenderer renderer;
    renderer.finalize(transformOf({doubled.get()}), Tavrin::PF_RGBA_32f, Tavrin::PF_RGBA_32f);
    // 3 columns and 3 rows, a float of padding behind each row.
    constexpr unsigned int kRow = 3 * 4 + 1;
    std::vector<float> pixels(3 * kRow, 1.0F);
    renderer.apply(pixels.data(), pixels.data(), Rendering::ROI(1, 1, 2, 1, 3, 3), sizeof(float), sizeof(float));
    for (unsigned int i = 0; i < pixels.size(); ++i)
    {
        bool const isInside = i >= kRow + 4 && i < kRow + 12 && (i - kRow) % 4 != 3;
        EXPECT_EQ(pixels[i], isInside ? 2.0F : 1.0F) << i;
    }
}

TEST_F(PicturesThroughOpenColorIO, OfNoSizeAndOfNoOperatorsNeedNoWork)
{
    OCIORenderer renderer;
    renderer.finalize(std::make_shared<Transform>(), Tavrin::PF_RGBA_32f, Tavrin::PF_RGBA_32f);
    float const source[4] = {0.25F, -1.0F, 7.0F, 0.5F};
    float destination[4] = {};
    renderer.apply(source, destination, Rendering::ROI(0, 0, 0, 0), 0, 0);
    EXPECT_THAT(destination, ElementsAre(0.0F, 0.0F, 0.0F, 0.0F));
    renderer.apply(source, destination, Rendering::ROI(0, 0, 1, 1), 0, 0);
    EXPECT_THAT(destination, ElementsAre(0.25F, -1.0F, 7.0F, 0.5F));
}

TEST_F(PicturesThroughOpenColorIO, HaveToBeThere)
{
    OCIORenderer renderer;
    renderer.finalize(std::make_shared<Transform>(), Tavrin::PF_RGBA_32f, Tavrin::PF_RGBA_32f);
    float pixel[4] = {};
    Failure const imageNull{0x810001, "Image null"};
    EXPECT_EQ(failureOf([&] { renderer.apply(nullptr, pixel, Rendering::ROI(0, 0, 1, 1), 0, 0); }), imageNull);
    EXPECT_EQ(failureOf([&] { renderer.apply(pixel, nullptr, Rendering::ROI(0, 0, 1, 1), 0, 0); }), imageNull);
}

TEST_F(PicturesThroughOpenColorIO, TakeTheTransformToTheirDepths)
{
    std::shared_ptr<Op> const matrix = makeMatrix();
    auto const transform = transformOf({matrix.get()});
    OCIORenderer renderer;
    renderer.finalize(transform, Tavrin::PF_RGBA_8i, Tavrin::PF_RGBA_16i);
    EXPECT_EQ(transform->getInputBitDepth(), Tavrin::BIT_DEPTH_8i);
    EXPECT_EQ(transform->getOutputBitDepth(), Tavrin::BIT_DEPTH_16i);
    EXPECT_EQ(renderer.getType(), RENDERING_OCIO);
}

TEST(OperatorsOfOurOwn, AreRefusedByTheirNames)
{
    EXPECT_EQ(failureOfOp(RangeOp(Tavrin::BIT_DEPTH_32f, Tavrin::BIT_DEPTH_32f, 0.0, 1.0, 0.0, 1.0)), unsupported("Range"));
    EXPECT_EQ(failureOfOp(ReferenceOp()), unsupported("Reference"));
    EXPECT_EQ(failureOfOp(ExposureContrastOp()), unsupported("Exposure/Contrast"));
    EXPECT_EQ(failureOfOp(DitherOp()), unsupported("Dither"));
    EXPECT_EQ(failureOfOp(GamutMapOp()), unsupported("GamutMap"));
    EXPECT_EQ(failureOfOp(HueVectorOp()), unsupported("HueVector"));
}

TEST(OperatorsOfOurOwn, WithParametersThatOpenColorIOLacksAreRefused)
{
    using Gamma = GammaOp::GammaStyle;
    for (Gamma const style : {Gamma::MoncurveFwd, Gamma::MoncurveRev})
    {
        GammaOp::Params const params{2.4, 0.055};
        GammaOp const gamma(Tavrin::BIT_DEPTH_32f, Tavrin::BIT_DEPTH_32f, "", "", Descriptions(), style, params, params, params,
                            params);
        EXPECT_EQ(failureOfOp(gamma), unsupported("Gamma Moncurve"));
    }
    Lut1DOp halfDomain(Tavrin::BIT_DEPTH_16f, Tavrin::BIT_DEPTH_16f, "", "", Descriptions(), Lut1DOp::InterpolationAlgo::Default,
                       Tavrin::HALF_FLAGS_INPUT_HALF_DOMAIN);
    EXPECT_EQ(failureOfOp(halfDomain), (Failure{0x840002, "Unsupported LUT1D half domain"}));
    Lut1DOp rawHalfs(4U);
    rawHalfs.setOutputRawHalfs(true);
    EXPECT_EQ(failureOfOp(rawHalfs), (Failure{0x840003, "Unsupported raw halfs output"}));
}

TEST(OperatorsOfOurOwn, NeedATransform)
{
    EXPECT_EQ(failureOfFinalize(nullptr), (Failure{0x810002, "Transform null"}));
}
