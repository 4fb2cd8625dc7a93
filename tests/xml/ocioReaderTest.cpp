// Operators of OpenColorIO rebuilt as ours, and the reader of its files around that.
#include "xml/ocioReader.h"

#include "support/failure.h"
#include "support/tableFiles.h"
#include "support/temporaryFolder.h"
#include "transform/ops.h"
#include "xml/documents.h"
#include "xml/ocioUtil.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <filesystem>
#include <limits>
#include <string>
#include <thread>
#include <utility>
#include <vector>

using namespace Color;
using testing::AllOf;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;
using testing::Pair;
using XmlTest::onlyOp;

namespace
{

using OpUtil::Direction;
using OpUtil::Interpolation;

constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();

template <class... Operators>
std::shared_ptr<OpUtil::Processor const> processorOf(Operators const&... operators)
{
    auto processor = std::make_shared<OpUtil::Processor>();
    (processor->append(operators), ...);
    return processor;
}

template <class... Operators>
std::shared_ptr<Transform> transformOf(Operators const&... operators)
{
    OCIOReader const reader;
    reader.parse(processorOf(operators...));
    return reader.getTransform();
}

template <class... Operators>
Failure failureOfParse(Operators const&... operators)
{
    return failureOf([&] { transformOf(operators...); });
}

// Read forward, or in inverse, from a file of this text.
Failure failureOfFile(std::string const& name, std::string const& text,
                      OCIOReader::DIRECTION direction = OCIOReader::DIRECTION::FORWARD)
{
    TemporaryFolder const folder;
    std::string const path = folder.write(name, text);
    OCIOReader const reader;
    Failure failure = failureOf([&] { reader.parseFile(path, direction); });
    failure.words = XmlTest::withShortFileName(failure.words, path);
    return failure;
}

std::shared_ptr<Transform> transformOfFile(std::string const& name, std::string const& text,
                                           OCIOReader::DIRECTION direction = OCIOReader::DIRECTION::FORWARD)
{
    TemporaryFolder const folder;
    OCIOReader const reader;
    reader.parseFile(folder.write(name, text), direction);
    return reader.getTransform();
}

template <class Operator>
Operator const& op(std::shared_ptr<Transform> const& transform, unsigned int index)
{
    return dynamic_cast<Operator const&>(transform->getOps().get(index));
}

OpUtil::Lut1D lut1D(Direction direction = Direction::Forward)
{
    OpUtil::Lut1D lut;
    lut.luts = {std::vector<float>{0.0F, 0.25F, 1.0F}, {0.0F, 0.5F, 1.0F}, {0.0F, 0.75F, 1.5F}};
    lut.direction = direction;
    return lut;
}

// Each value tells its place: hundreds for red, tens for green, ones for blue, and the channel behind the point.
OpUtil::Lut3D lut3D(unsigned int size = 2)
{
    OpUtil::Lut3D lut;
    lut.sizes = {size, size, size};
    for (unsigned int b = 0; b < size; ++b)
        for (unsigned int g = 0; g < size; ++g)
            for (unsigned int r = 0; r < size; ++r)
                for (unsigned int channel = 0; channel < 3; ++channel)
                    lut.lut.push_back(static_cast<float>(100 * r + 10 * g + b) + 0.25F * static_cast<float>(channel));
    return lut;
}

OpUtil::Exponent exponent(float value, Direction direction = Direction::Forward)
{
    return {{value, value, value, 1.0F}, direction};
}

bool hasOpenColorIO()
{
    return OpUtil::isAvailable();
}

#define SKIP_WITHOUT_OPENCOLORIO() \
    if (!hasOpenColorIO())         \
    GTEST_SKIP() << "this build has no OpenColorIO"

} // namespace

TEST(OCIOOperators, MatrixKeepsItsNumbers)
{
    OpUtil::Matrix matrix;
    for (std::size_t i = 0; i < matrix.matrix.size(); ++i)
        matrix.matrix[i] = static_cast<float>(i) + 0.5F;
    matrix.offsets = {0.1F, 0.2F, 0.3F, 0.4F};
    auto const transform = transformOf(matrix);
    auto const& result = onlyOp<MatrixOp>(*transform);
    for (unsigned int i = 0; i < 16; ++i)
        EXPECT_EQ(result.getArray().get(i), matrix.matrix[i]);
    for (unsigned int i = 0; i < 4; ++i)
        EXPECT_EQ(result.getOffsetValue(i), matrix.offsets[i]);
    EXPECT_EQ(result.getInputBitDepth(), Tavrin::BIT_DEPTH_32f);
    EXPECT_EQ(result.getOutputBitDepth(), Tavrin::BIT_DEPTH_32f);
}

TEST(OCIOOperators, MatrixInInverseIsInverted)
{
    OpUtil::Matrix matrix;
    matrix.matrix = {2, 0, 0, 0, 0, 4, 0, 0, 0, 0, 0.5F, 0, 0, 0, 0, 1};
    matrix.offsets = {1.0F, -2.0F, 0.25F, 0.0F};
    matrix.direction = Direction::Inverse;
    auto const transform = transformOf(matrix);
    auto const& result = onlyOp<MatrixOp>(*transform);
    EXPECT_EQ(result.getArray().get(0), 0.5F);
    EXPECT_EQ(result.getArray().get(5), 0.25F);
    EXPECT_EQ(result.getArray().get(10), 2.0F);
    EXPECT_EQ(result.getOffsetValue(0), -0.5F);
    EXPECT_EQ(result.getOffsetValue(1), 0.5F);
    EXPECT_EQ(result.getOffsetValue(2), -0.5F);
}

TEST(OCIOOperators, MatrixThatIsNotFiniteIsIllegal)
{
    OpUtil::Matrix matrix;
    matrix.matrix[7] = kNaN;
    EXPECT_EQ(failureOfParse(matrix), (Failure{0x470008, "Received illegal Matrix op from OCIO"}));
}

TEST(OCIOOperators, Lut1DBecomesRowsOfThreeChannels)
{
    auto const transform = transformOf(lut1D());
    auto const& lut = onlyOp<Lut1DOp>(*transform);
    EXPECT_THAT(lut.getArray().getValues(), ElementsAre(0.0F, 0.0F, 0.0F, 0.25F, 0.5F, 0.75F, 1.0F, 1.0F, 1.5F));
    EXPECT_EQ(lut.getArray().getDimension(), 3U);
    EXPECT_FALSE(lut.isInputHalfDomain());
    EXPECT_EQ(lut.getHueAdjust(), Lut1DOp::HueAdjust::None);
}

TEST(OCIOOperators, Lut1DInterpolatesLinearlyOrByDefault)
{
    using Algo = Lut1DOp::InterpolationAlgo;
    for (auto const& [from, to] :
         {std::pair{Interpolation::Linear, Algo::Linear}, std::pair{Interpolation::Best, Algo::Default},
          std::pair{Interpolation::Tetrahedral, Algo::Default}, std::pair{Interpolation::Unknown, Algo::Default}})
    {
        OpUtil::Lut1D lut = lut1D();
        lut.interpolation = from;
        auto const transform = transformOf(lut);
        EXPECT_EQ(onlyOp<Lut1DOp>(*transform).getInterpolation(), to);
    }
}

TEST(OCIOOperators, Lut1DOfAnotherDomainHasAMatrixAheadOfIt)
{
    OpUtil::Lut1D lut = lut1D();
    lut.from = {0.0F, -1.0F, 0.0F};
    lut.to = {2.0F, 1.0F, 1.0F};
    auto const transform = transformOf(lut);
    ASSERT_EQ(transform->getOps().size(), 2U);
    auto const& matrix = op<MatrixOp>(transform, 0);
    EXPECT_EQ(matrix.getArray().get(0), 0.5F);
    EXPECT_EQ(matrix.getArray().get(5), 0.5F);
    EXPECT_EQ(matrix.getArray().get(10), 1.0F);
    EXPECT_EQ(matrix.getArray().get(15), 1.0F);
    EXPECT_EQ(matrix.getOffsetValue(0), 0.0F);
    EXPECT_EQ(matrix.getOffsetValue(1), 0.5F);
    EXPECT_EQ(op<Lut1DOp>(transform, 1).getArray().getDimension(), 3U);
}

TEST(OCIOOperators, Lut1DInInverseComesBeforeTheInverseOfItsDomain)
{
    OpUtil::Lut1D lut = lut1D(Direction::Inverse);
    lut.from = {0.0F, -1.0F, 0.0F};
    lut.to = {2.0F, 1.0F, 2.0F};
    auto const transform = transformOf(lut);
    ASSERT_EQ(transform->getOps().size(), 2U);
    EXPECT_EQ(op<InvLut1DOp>(transform, 0).getInvStyle(), InvLut1DOp::InvStyle::Exact);
    auto const& matrix = op<MatrixOp>(transform, 1);
    EXPECT_EQ(matrix.getArray().get(0), 2.0F);
    EXPECT_EQ(matrix.getArray().get(5), 2.0F);
    EXPECT_EQ(matrix.getOffsetValue(1), -1.0F);
}

TEST(OCIOOperators, Lut1DWithoutRowsIsIllegal)
{
    OpUtil::Lut1D lut = lut1D();
    lut.luts[1].clear();
    Failure const illegal{0x470004, "Received illegal Lut1D op from OCIO"};
    EXPECT_EQ(failureOfParse(lut), illegal);
    lut = lut1D();
    lut.to[0] = kNaN;
    EXPECT_EQ(failureOfParse(lut), illegal);
}

TEST(OCIOOperators, Lut1DNeedsChannelsOfOneLength)
{
    OpUtil::Lut1D lut = lut1D();
    lut.luts[1].push_back(1.0F);
    EXPECT_EQ(failureOfParse(lut),
              (Failure{0x470005, "Illegal Lut1D channel dimensions:                         red 3, green 4, blue 3"}));
}

TEST(OCIOOperators, Lut1DKeepsHalfDomainAndHue)
{
    OpUtil::Lut1D lut;
    lut.luts.fill(std::vector<float>(65536, 0.5F));
    lut.hasHalfDomain = true;
    lut.adjustsHue = true;
    auto const transform = transformOf(lut);
    EXPECT_TRUE(onlyOp<Lut1DOp>(*transform).isInputHalfDomain());
    EXPECT_EQ(onlyOp<Lut1DOp>(*transform).getHueAdjust(), Lut1DOp::HueAdjust::Dw3);
}

TEST(OCIOOperators, Lut3DChangesItsAxes)
{
    auto const transform = transformOf(lut3D());
    auto const& values = onlyOp<Lut3DOp>(*transform).getArray().getValues();
    ASSERT_EQ(values.size(), 24U);
    // Blue fastest: the second point is that of blue 1, the fifth that of red 1.
    for (unsigned int i = 0; i < 8; ++i)
    {
        float const point = static_cast<float>(100 * (i >> 2U) + 10 * (i >> 1U & 1U) + (i & 1U));
        EXPECT_EQ(values[i * 3], point);
        EXPECT_EQ(values[i * 3 + 1], point + 0.25F);
        EXPECT_EQ(values[i * 3 + 2], point + 0.5F);
    }
}

TEST(OCIOOperators, Lut3DInterpolatesAsAskedOrByDefault)
{
    using Algo = Lut3DOp::InterpolationAlgo;
    for (auto const& [from, to] :
         {std::pair{Interpolation::Linear, Algo::Trilinear}, std::pair{Interpolation::Tetrahedral, Algo::Tetrahedral},
          std::pair{Interpolation::Best, Algo::Default}, std::pair{Interpolation::Unknown, Algo::Default}})
    {
        OpUtil::Lut3D lut = lut3D();
        lut.interpolation = from;
        auto const transform = transformOf(lut);
        EXPECT_EQ(onlyOp<Lut3DOp>(*transform).getInterpolation(), to);
    }
}

TEST(OCIOOperators, Lut3DOfAnotherDomainHasAMatrixAheadOfIt)
{
    OpUtil::Lut3D lut = lut3D();
    lut.to = {4.0F, 4.0F, 4.0F};
    auto const transform = transformOf(lut);
    ASSERT_EQ(transform->getOps().size(), 2U);
    EXPECT_EQ(op<MatrixOp>(transform, 0).getArray().get(0), 0.25F);
    EXPECT_EQ(op<Lut3DOp>(transform, 1).getArray().getDimension(), 2U);
}

TEST(OCIOOperators, Lut3DNeedsACube)
{
    OpUtil::Lut3D lut = lut3D();
    lut.sizes = {2, 4, 1};
    EXPECT_EQ(failureOfParse(lut),
              (Failure{0x470007, "Illegal Lut3D channel dimensions:                         red 2, green 4, blue 1"}));
    EXPECT_EQ(failureOfParse(OpUtil::Lut3D()),
              (Failure{0x470007, "Illegal Lut3D channel dimensions:                         red 0, green 0, blue 0"}));
    lut.sizes = {3, 3, 3};
    EXPECT_EQ(failureOfParse(lut), (Failure{0x470006, "Received illegal Lut3D op from OCIO"}));
}

TEST(OCIOOperators, Lut3DHasNoInverse)
{
    OpUtil::Lut3D lut = lut3D();
    lut.direction = Direction::Inverse;
    EXPECT_EQ(failureOfParse(lut), (Failure{0x47000b, "Unsupported Lut3D inverse operation"}));
}

TEST(OCIOOperators, Lut3DHasAtMost129PointsAnAxis)
{
    EXPECT_EQ(failureOfParse(lut3D(130)), (Failure{0x25000d, "130 exceeds maximum supported dimension 129"}));
}

TEST(OCIOOperators, PlainLogarithmsHaveStylesOfTheirOwn)
{
    using Style = LogOp::LogStyle;
    struct Case
    {
        float base;
        Direction direction;
        Style style;
    };
    for (Case const& expected : {Case{2.0F, Direction::Forward, Style::Log2}, Case{2.0F, Direction::Inverse, Style::AntiLog2},
                                 Case{10.0F, Direction::Forward, Style::Log10}, Case{10.0F, Direction::Inverse, Style::AntiLog10}})
    {
        OpUtil::Log log;
        log.base = expected.base;
        log.direction = expected.direction;
        auto const transform = transformOf(log);
        EXPECT_EQ(onlyOp<LogOp>(*transform).getLogStyle(), expected.style);
    }
}

// Worked by hand for k * log10(m * x + b) + kb: gamma = 2.046 k, refWhite = 1023 kb, highlight = (1 - b) / m,
// shadow = 95 / 685 highlight, and refBlack the code of the shadow.
TEST(OCIOOperators, OtherLogarithmsHaveFiveParameters)
{
    OpUtil::Log log;
    log.k = {0.25F, 0.25F, 0.5F};
    log.m = {2.0F, 2.0F, 2.0F};
    log.b = {0.5F, 0.0F, 0.0F};
    log.kb = {0.75F, 0.5F, 0.5F};
    auto const transform = transformOf(log);
    auto const& result = onlyOp<LogOp>(*transform);
    EXPECT_EQ(result.getLogStyle(), LogOp::LogStyle::LinToLog);
    auto const& red = result.getRedParams();
    ASSERT_EQ(red.size(), 5U);
    EXPECT_FLOAT_EQ(static_cast<float>(red[0]), 2.046F * 0.25F);
    EXPECT_FLOAT_EQ(static_cast<float>(red[1]), 1023.0F * 0.75F);
    EXPECT_FLOAT_EQ(static_cast<float>(red[2]), static_cast<float>(1023.0 * (std::log10(1.0 - 0.5 * 590.0 / 685.0) * 0.25 + 0.75)));
    EXPECT_FLOAT_EQ(static_cast<float>(red[3]), 0.25F);
    EXPECT_FLOAT_EQ(static_cast<float>(red[4]), static_cast<float>(0.25 * 95.0 / 685.0));
    EXPECT_FLOAT_EQ(static_cast<float>(result.getGrnParams()[3]), 0.5F);
    EXPECT_FLOAT_EQ(static_cast<float>(result.getBluParams()[0]), 2.046F * 0.5F);

    log.direction = Direction::Inverse;
    auto const inverse = transformOf(log);
    EXPECT_EQ(onlyOp<LogOp>(*inverse).getLogStyle(), LogOp::LogStyle::LogToLin);
}

TEST(OCIOOperators, LogarithmParametersTellPlainOnes)
{
    LogOp::Params params;
    EXPECT_FALSE(OCIOUtil::getLogParams(params, 1.0F, 1.0F, 0.0F, 0.0F, 2.0F));
    // ln(10) * 2.046 / ln(2).
    EXPECT_FLOAT_EQ(static_cast<float>(params[0]), 6.7966650F);
    EXPECT_TRUE(OCIOUtil::getLogParams(params, 0.5F, 1.0F, 0.0F, 0.0F, 10.0F));
    EXPECT_TRUE(OCIOUtil::getLogParams(params, 1.0F, 0.5F, 0.0F, 0.0F, 10.0F));
    EXPECT_TRUE(OCIOUtil::getLogParams(params, 1.0F, 1.0F, 0.5F, 0.0F, 10.0F));
    EXPECT_TRUE(OCIOUtil::getLogParams(params, 1.0F, 1.0F, 0.0F, 0.5F, 10.0F));
}

TEST(OCIOOperators, LogarithmThatIsNotFiniteIsIllegal)
{
    OpUtil::Log log;
    log.kb[2] = kNaN;
    EXPECT_EQ(failureOfParse(log), (Failure{0x47000a, "Received illegal Log op from OCIO"}));
}

TEST(OCIOOperators, LogarithmBeyondTheModelFailsWithItsMessage)
{
    OpUtil::Log log;
    log.b = {1.5F, 1.5F, 1.5F};
    EXPECT_EQ(failureOfParse(log).id, 0x2b0005U);
}

TEST(OCIOOperators, ExponentsFromOneOnAreGammas)
{
    OpUtil::Exponent powers{{1.0F, 2.0F, 10.0F, 1.5F}, Direction::Forward};
    auto const forward = transformOf(powers);
    auto const& gamma = onlyOp<GammaOp>(*forward);
    EXPECT_EQ(gamma.getGammaStyle(), GammaOp::GammaStyle::BasicFwd);
    EXPECT_THAT(gamma.getRedParams(), ElementsAre(1.0));
    EXPECT_THAT(gamma.getGreenParams(), ElementsAre(2.0));
    EXPECT_THAT(gamma.getBlueParams(), ElementsAre(10.0));
    EXPECT_THAT(gamma.getAlphaParams(), ElementsAre(1.5));
    powers.direction = Direction::Inverse;
    auto const inverse = transformOf(powers);
    EXPECT_EQ(onlyOp<GammaOp>(*inverse).getGammaStyle(), GammaOp::GammaStyle::BasicRev);
    EXPECT_THAT(onlyOp<GammaOp>(*inverse).getGreenParams(), ElementsAre(2.0));
}

TEST(OCIOOperators, SmallerExponentsAreReciprocalGammasTheOtherWay)
{
    auto const forward = transformOf(exponent(0.5F));
    EXPECT_EQ(onlyOp<GammaOp>(*forward).getGammaStyle(), GammaOp::GammaStyle::BasicRev);
    EXPECT_THAT(onlyOp<GammaOp>(*forward).getRedParams(), ElementsAre(2.0));
    EXPECT_THAT(onlyOp<GammaOp>(*forward).getAlphaParams(), ElementsAre(1.0));
    auto const inverse = transformOf(exponent(0.25F, Direction::Inverse));
    EXPECT_EQ(onlyOp<GammaOp>(*inverse).getGammaStyle(), GammaOp::GammaStyle::BasicFwd);
    EXPECT_THAT(onlyOp<GammaOp>(*inverse).getRedParams(), ElementsAre(4.0));
}

TEST(OCIOOperators, ExponentsBelowATenthCountAsReciprocalsOfTen)
{
    for (float const value : {0.05F, 0.0F, -2.0F})
    {
        auto const transform = transformOf(exponent(value));
        EXPECT_THAT(onlyOp<GammaOp>(*transform).getRedParams(), ElementsAre(10.0));
    }
}

TEST(OCIOOperators, ExponentsBeyondTheBoundsOfAGammaFailWithItsMessage)
{
    EXPECT_EQ(failureOfParse(exponent(10.5F)).id, 0x210012U);
    EXPECT_EQ(failureOfParse(OpUtil::Exponent{{0.5F, 2.0F, 1.0F, 1.0F}, Direction::Forward}).id, 0x210011U);
    EXPECT_EQ(failureOfParse(exponent(kNaN)), (Failure{0x470009, "Received illegal Exponent op from OCIO"}));
}

TEST(OCIOOperators, OperatorsWithNothingToConvertAreSkipped)
{
    auto const transform = transformOf(OpUtil::NoOp(), exponent(2.0F), OpUtil::NoOp());
    EXPECT_EQ(transform->getOps().size(), 1U);
}

TEST(OCIOOperators, NoneAtAllIsAnIdentityThatDepthsCanChangeThrough)
{
    for (auto const& transform : {transformOf(), transformOf(OpUtil::NoOp())})
        EXPECT_TRUE(onlyOp<MatrixOp>(*transform).isIdentity());
}

TEST(OCIOOperators, StandInTheProcessorsOrder)
{
    auto const transform = transformOf(lut1D(), OpUtil::Matrix(), exponent(2.0F), OpUtil::Log(), lut3D());
    std::vector<Op::OpType> types;
    for (unsigned int i = 0; i < transform->getOps().size(); ++i)
        types.push_back(transform->getOps().get(i).getOpType());
    EXPECT_THAT(
        types, ElementsAre(Op::OpType::Lut1DOp, Op::OpType::MatrixOp, Op::OpType::GammaOp, Op::OpType::LogOp, Op::OpType::Lut3DOp));
    EXPECT_FALSE(transform->getId().empty());
}

TEST(OCIOOperators, UnknownOnesFail)
{
    EXPECT_EQ(failureOfParse(exponent(2.0F), OpUtil::Unknown()), (Failure{0x470003, "Unsupported OCIO Unknown operation"}));
}

TEST(OCIOOperators, MoncurvesAreGammasWithAToe)
{
    OpUtil::Moncurve curve;
    curve.gamma = {2.4, 2.2, 3.0, 1.0};
    curve.offset = {0.055, 0.099, 0.16, 0.0};
    auto const forward = transformOf(curve);
    EXPECT_EQ(onlyOp<GammaOp>(*forward).getGammaStyle(), GammaOp::GammaStyle::MoncurveFwd);
    EXPECT_THAT(onlyOp<GammaOp>(*forward).getGreenParams(), ElementsAre(2.2, 0.099));
    curve.direction = Direction::Inverse;
    auto const inverse = transformOf(curve);
    EXPECT_EQ(onlyOp<GammaOp>(*inverse).getGammaStyle(), GammaOp::GammaStyle::MoncurveRev);
    curve.gamma[0] = kNaN;
    EXPECT_EQ(failureOfParse(curve).id, 0x470009U);
}

TEST(OCIOOperators, RangesKeepTheirLimits)
{
    auto const transform = transformOf(OpUtil::Range{0.1, 0.9, 0.25, 0.75});
    auto const& range = onlyOp<RangeOp>(*transform);
    EXPECT_EQ(range.getMinInValue(), 0.1);
    EXPECT_EQ(range.getMaxInValue(), 0.9);
    EXPECT_EQ(range.getMinOutValue(), 0.25);
    EXPECT_EQ(range.getMaxOutValue(), 0.75);
}

TEST(OCIOOperators, ColourDecisionsClampOrDoNot)
{
    using Style = CDLOp::CDLStyle;
    OpUtil::Cdl cdl;
    cdl.slope = {1.1, 1.2, 1.3};
    cdl.offset = {0.1, 0.0, -0.1};
    cdl.power = {0.9, 1.0, 1.5};
    cdl.saturation = 0.8;
    for (auto const& [clamps, direction, style] :
         {std::tuple{true, Direction::Forward, Style::V1_2Fwd}, std::tuple{true, Direction::Inverse, Style::V1_2Rev},
          std::tuple{false, Direction::Forward, Style::NoClampFwd}, std::tuple{false, Direction::Inverse, Style::NoClampRev}})
    {
        cdl.clamps = clamps;
        cdl.direction = direction;
        auto const transform = transformOf(cdl);
        auto const& result = onlyOp<CDLOp>(*transform);
        EXPECT_EQ(result.getCDLStyle(), style);
        EXPECT_EQ(result.getSlopeParams(), CDLOp::ChannelParams(1.1, 1.2, 1.3));
        EXPECT_EQ(result.getOffsetParams(), CDLOp::ChannelParams(0.1, 0.0, -0.1));
        EXPECT_EQ(result.getPowerParams(), CDLOp::ChannelParams(0.9, 1.0, 1.5));
        EXPECT_EQ(result.getSaturation(), 0.8);
    }
    cdl.saturation = std::nan("");
    EXPECT_EQ(failureOfParse(cdl), (Failure{0x470003, "Unsupported OCIO Unknown operation"}));
}

TEST(OCIOOperators, ExposureAndContrastKeepTheirNumbers)
{
    auto const transform = transformOf(OpUtil::ExposureContrast{true, 1.5, 1.25, 0.25});
    auto const& grade = onlyOp<ExposureContrastOp>(*transform);
    EXPECT_EQ(grade.getStyle(), ExposureContrastOp::Style::Video);
    EXPECT_EQ(grade.getExposure()->getValue(), 1.5);
    EXPECT_EQ(grade.getContrast()->getValue(), 1.25);
    EXPECT_EQ(grade.getPivot(), 0.25);
    auto const linear = transformOf(OpUtil::ExposureContrast());
    EXPECT_EQ(onlyOp<ExposureContrastOp>(*linear).getStyle(), ExposureContrastOp::Style::Linear);
}

TEST(OCIOReader, TakesWhatOpenColorIOListsAndNoOtherReaderHas)
{
    SKIP_WITHOUT_OPENCOLORIO();
    auto const formats = OCIOReader::supportedFileFormats();
    for (char const* extension :
         {"3dl", "cdl", "csp", "cub", "cube", "itx", "look", "lut", "m3d", "mga", "spi1d", "spi3d", "spimtx", "vf"})
        EXPECT_THAT(formats, Contains(Pair(extension, Not(""))));
    for (char const* extension : {"ccc", "cc", "ctf", "clf", "icc", "icm", "pf"})
        EXPECT_THAT(formats, Not(Contains(Pair(extension, testing::_)))) << extension;
    OCIOReader const reader;
    EXPECT_TRUE(reader.isFileSupported("no/such/look.cube"));
    EXPECT_TRUE(reader.isFileSupported("LOOK.CUBE"));
    EXPECT_FALSE(reader.isFileSupported("look.ctf"));
    EXPECT_FALSE(reader.isFileSupported("cube"));
    EXPECT_TRUE(OCIOReader::isFormatSupported("spi1d"));
    EXPECT_STREQ(reader.getName(), "OpenColorIO Reader");
}

TEST(OCIOReader, ListsNothingInABuildWithoutOpenColorIO)
{
    if (hasOpenColorIO())
        GTEST_SKIP() << "this build has OpenColorIO";
    EXPECT_TRUE(OCIOReader::supportedFileFormats().empty());
    EXPECT_FALSE(OCIOReader::isFormatSupported("cube"));
    EXPECT_EQ(failureOfFile("a.cube", ""),
              (Failure{0x470001, "Error reading <" + std::string(XmlTest::kFile) + "> : This build of Tavrin has no OpenColorIO"}));
}

TEST(OCIOReader, ReadsNoBuffers)
{
    OCIOReader const reader;
    EXPECT_EQ(failureOf([&] { reader.parseBuffer("LUT_3D_SIZE 2"); }),
              (Failure{0x470002, "Internal - Unsupported buffer parsing by OCIO reader"}));
}

TEST(OCIOReader, ReadsADomainAsAScaleAheadOfTheTable)
{
    SKIP_WITHOUT_OPENCOLORIO();
    auto const transform = transformOfFile("wide.spi1d", TableFiles::spi1d("0.0", "2.0"));
    ASSERT_EQ(transform->getOps().size(), 2U);
    EXPECT_EQ(op<MatrixOp>(transform, 0).getArray().get(0), 0.5F);
    EXPECT_EQ(op<Lut1DOp>(transform, 1).getArray().getDimension(), 5U);
    EXPECT_EQ(op<Lut1DOp>(transform, 1).getInterpolation(), Lut1DOp::InterpolationAlgo::Linear);
}

TEST(OCIOReader, ReadsADomainInInverseAsAScaleBehindTheInverseTable)
{
    SKIP_WITHOUT_OPENCOLORIO();
    auto const transform = transformOfFile("wide.spi1d", TableFiles::spi1d("0.0", "2.0"), OCIOReader::DIRECTION::INVERSE);
    ASSERT_EQ(transform->getOps().size(), 2U);
    EXPECT_EQ(op<InvLut1DOp>(transform, 0).getInvStyle(), InvLut1DOp::InvStyle::Exact);
    EXPECT_EQ(op<MatrixOp>(transform, 1).getArray().get(0), 2.0F);
}

TEST(OCIOReader, ReadsNoCubeInInverse)
{
    SKIP_WITHOUT_OPENCOLORIO();
    EXPECT_EQ(failureOfFile("look.spi3d", TableFiles::spi3d(), OCIOReader::DIRECTION::INVERSE),
              (Failure{0x47000b, "Unsupported Lut3D inverse operation"}));
}

// A processor would be made of what OpenColorIO takes for the file's clamping, and could not be told forward from inverse.
TEST(OCIOReader, ReadsColourDecisionsWithoutAProcessor)
{
    SKIP_WITHOUT_OPENCOLORIO();
    std::string const correction =
        "<ColorCorrection id='a'><SOPNode><Slope>1.5 1.25 1</Slope><Offset>0.25 0 -0.25</Offset>"
        "<Power>1 1.5 2</Power></SOPNode><SatNode><Saturation>0.5</Saturation></SatNode></ColorCorrection>";
    std::string const list =
        "<ColorDecisionList xmlns='urn:ASC:CDL:v1.01'><ColorDecision>" + correction + "</ColorDecision></ColorDecisionList>";
    std::string const collection =
        "<ColorCorrectionCollection xmlns='urn:ASC:CDL:v1.2'>" + correction + "</ColorCorrectionCollection>";
    for (auto const& [name, text] : {std::pair{"a.cdl", list}, std::pair{"a.ccc", collection}, std::pair{"a.cc", correction}})
    {
        auto const forward = transformOfFile(name, text);
        auto const& cdl = onlyOp<CDLOp>(*forward);
        EXPECT_EQ(cdl.getCDLStyle(), CDLOp::CDLStyle::V1_2Fwd) << name;
        EXPECT_EQ(cdl.getSlopeParams(), CDLOp::ChannelParams(1.5, 1.25, 1.0));
        EXPECT_EQ(cdl.getOffsetParams(), CDLOp::ChannelParams(0.25, 0.0, -0.25));
        EXPECT_EQ(cdl.getPowerParams(), CDLOp::ChannelParams(1.0, 1.5, 2.0));
        EXPECT_EQ(cdl.getSaturation(), 0.5);
        auto const inverse = transformOfFile(name, text, OCIOReader::DIRECTION::INVERSE);
        EXPECT_EQ(onlyOp<CDLOp>(*inverse).getCDLStyle(), CDLOp::CDLStyle::V1_2Rev);
    }
}

TEST(OCIOReader, TellsWhatOpenColorIOSaysAboutAFile)
{
    SKIP_WITHOUT_OPENCOLORIO();
    std::string const beginning = std::string("Error reading <") + XmlTest::kFile + "> : ";
    for (char const* name : {"a.cube", "a.spi1d", "a.csp", "a.vf", "a.cub", "a.look", "a.cdl", "a.cc"})
        for (std::string const& text : {std::string(), std::string("nothing of the kind\n"), std::string("\xff\xfe\0\x01", 4)})
        {
            Failure const failure = failureOfFile(name, text);
            EXPECT_EQ(failure.id, 0x470001U) << name;
            EXPECT_THAT(failure.words, testing::StartsWith(beginning)) << name;
        }
}

// Sizes far beyond what the file holds, with hardly any rows.
TEST(OCIOReader, RefusesTablesThatAreLargerThanTheirFiles)
{
    SKIP_WITHOUT_OPENCOLORIO();
    for (auto const& [name, text] :
         {std::pair{"a.spi1d", "Version 1\nFrom 0.0 1.0\nLength 2000000000\nComponents 1\n{\n0\n1\n}\n"},
          std::pair{"a.spi3d", "SPILUT 1.0\n3 3\n2000 2000 2000\n0 0 0 0 0 0\n"}, std::pair{"a.cube", "LUT_3D_SIZE 100\n0 0 0\n"},
          std::pair{"b.cube", "LUT_1D_SIZE 2000000000\n0 0 0\n"},
          std::pair{"a.vf", "#Inventor V2.1 ascii\ngrid_size 100 100 100\ndata\n0 0 0\n"}})
        EXPECT_EQ(failureOfFile(name, text).id, 0x470001U) << name;
}

TEST(OCIOReader, ReadsAFileAnewWhenItHasChanged)
{
    SKIP_WITHOUT_OPENCOLORIO();
    TemporaryFolder const folder;
    for (float const scale : {2.0F, 3.0F})
    {
        OCIOReader const reader;
        reader.parseFile(folder.write("a.spimtx", TableFiles::line("%g 0 0 0\n0 1 0 0\n0 0 1 0\n", scale)));
        EXPECT_EQ(onlyOp<MatrixOp>(*reader.getTransform()).getArray().get(0), scale);
    }
}

TEST(OCIOReader, TakesPathsAsTheyStand)
{
    SKIP_WITHOUT_OPENCOLORIO();
    TemporaryFolder const folder;
    for (char const* name : {"a b \xc3\xa4.spimtx", "a$HOME.spimtx", "a%HOME%.spimtx", "a:b.spimtx", "%s.spimtx"})
    {
        OCIOReader const reader;
        reader.parseFile(folder.write(name, "2 0 0 0\n0 1 0 0\n0 0 1 0\n"));
        EXPECT_EQ(onlyOp<MatrixOp>(*reader.getTransform()).getArray().get(0), 2.0F) << name;
    }
}

TEST(OCIOReader, ReadsFilesInSeveralThreadsAtOnce)
{
    SKIP_WITHOUT_OPENCOLORIO();
    TemporaryFolder const folder;
    std::array<std::string, 4> failures;
    std::vector<std::thread> threads;
    for (std::size_t i = 0; i < failures.size(); ++i)
        threads.emplace_back(
            [&, i]
            {
                std::string const path = folder.write(std::to_string(i) + ".spi3d", TableFiles::spi3d());
                for (int round = 0; round < 20; ++round)
                    failures[i] += failureOf([&] { OCIOReader().parseFile(path); }).words;
            });
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_THAT(failures, testing::Each(""));
}
