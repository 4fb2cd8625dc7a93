// OpenColorIO's operators as ours.
#include "xml/ocioOps.h"

#include "transform/CDLOp.h"
#include "transform/exposureContrastOp.h"
#include "transform/gammaOp.h"
#include "transform/invLut1DOp.h"
#include "transform/logOp.h"
#include "transform/lut3DOp.h"
#include "transform/matrixOp.h"
#include "transform/rangeOp.h"
#include "utils/errorMessage.h"
#include "xml/ocioUtil.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <memory>

namespace Color::OCIOUtil
{

namespace
{

using Tavrin::BIT_DEPTH_32f;

Exception unsupportedOperation()
{
    return failure(ErrorIds::kOcioOperationUnsupported, Module::kOcioReader, "Unknown");
}

// What a query gives, unless it fails.
template <class Operator>
Operator const& required(Operator const* op, ErrorSite illegal)
{
    if (op == nullptr)
        throw failure(illegal, Module::kOcioReader);
    return *op;
}

// The same for operators whose failure has no message of its own.
template <class Operator>
Operator const& required(Operator const* op)
{
    if (op == nullptr)
        throw unsupportedOperation();
    return *op;
}

void append(OpList& ops, std::unique_ptr<Op> op)
{
    ops.append(op.release());
}

template <std::size_t kCount>
bool areEqual(std::array<unsigned int, kCount> const& sizes)
{
    return std::all_of(sizes.begin(), sizes.end(), [&](unsigned int size) { return size == sizes[0]; });
}

Lut1DOp::InterpolationAlgo lut1DInterpolation(OpUtil::Interpolation interpolation)
{
    using Algo = Lut1DOp::InterpolationAlgo;
    return interpolation == OpUtil::Interpolation::Linear ? Algo::Linear : Algo::Default;
}

// The best one is what each library takes for it.
Lut3DOp::InterpolationAlgo lut3DInterpolation(OpUtil::Interpolation interpolation)
{
    using Algo = Lut3DOp::InterpolationAlgo;
    switch (interpolation)
    {
    case OpUtil::Interpolation::Linear:
        return Algo::Trilinear;
    case OpUtil::Interpolation::Tetrahedral:
        return Algo::Tetrahedral;
    case OpUtil::Interpolation::Best:
    case OpUtil::Interpolation::Unknown:
        break;
    }
    return Algo::Default;
}

// The three channels become columns of rows.
std::unique_ptr<Lut1DOp> makeLut1DOp(OpUtil::Lut1D const& lut)
{
    auto op = std::make_unique<Lut1DOp>(2);
    op->setInterpolation(lut1DInterpolation(lut.interpolation));
    op->setInputHalfDomain(lut.hasHalfDomain);
    op->setHueAdjust(lut.adjustsHue ? Lut1DOp::HueAdjust::Dw3 : Lut1DOp::HueAdjust::None);
    auto& array = op->getArray();
    array.setDimension(static_cast<unsigned int>(lut.luts[0].size()));
    for (unsigned int channel = 0; channel < 3; ++channel)
        for (unsigned int row = 0; row < lut.luts[channel].size(); ++row)
            array.set(row * 3 + channel, lut.luts[channel][row]);
    op->validate();
    return op;
}

// Red varies fastest there, blue here.
std::unique_ptr<Lut3DOp> makeLut3DOp(OpUtil::Lut3D const& lut)
{
    unsigned int const size = lut.sizes[0];
    auto op = std::make_unique<Lut3DOp>(size);
    op->setInterpolation(lut3DInterpolation(lut.interpolation));
    float* target = op->getArray().getValues().data();
    for (std::size_t r = 0; r < size; ++r)
        for (std::size_t g = 0; g < size; ++g)
            for (std::size_t b = 0; b < size; ++b, target += 3)
                std::copy_n(lut.lut.data() + ((b * size + g) * size + r) * 3, 3, target);
    op->validate();
    return op;
}

std::unique_ptr<Op> takeInverse(Op const& op)
{
    OpList list;
    op.inverse(list);
    return std::unique_ptr<Op>(list.remove(0));
}

// Bounds of gamma operators begin at 1; a power below it is told as the inverse of its reciprocal, which is bounded too.
constexpr float kSmallestExponent = 0.1F;
constexpr double kLargestGamma = 10.0;

double reciprocalGamma(float exponent)
{
    return exponent < kSmallestExponent ? kLargestGamma : 1.0 / exponent;
}

GammaOp::GammaStyle basicStyle(bool isForward)
{
    return isForward ? GammaOp::GammaStyle::BasicFwd : GammaOp::GammaStyle::BasicRev;
}

std::unique_ptr<Op> makeGammaOp(GammaOp::GammaStyle style, std::array<GammaOp::Params, 4> const& params)
{
    return std::make_unique<GammaOp>(BIT_DEPTH_32f, BIT_DEPTH_32f, "", "", Descriptions(), style, params[0], params[1], params[2],
                                     params[3]);
}

CDLOp::CDLStyle cdlStyle(OpUtil::Cdl const& cdl)
{
    using Style = CDLOp::CDLStyle;
    bool const isForward = cdl.direction == OpUtil::Direction::Forward;
    if (cdl.clamps)
        return isForward ? Style::V1_2Fwd : Style::V1_2Rev;
    return isForward ? Style::NoClampFwd : Style::NoClampRev;
}

CDLOp::ChannelParams channelParams(std::array<double, 3> const& values)
{
    return {values[0], values[1], values[2]};
}

LogOp::LogStyle plainLogStyle(bool isBase2, bool isForward)
{
    using Style = LogOp::LogStyle;
    if (isBase2)
        return isForward ? Style::Log2 : Style::AntiLog2;
    return isForward ? Style::Log10 : Style::AntiLog10;
}

// A domain other than 0 to 1 as a scale and offset onto it.
void addMatrixOp(OpList& ops, OpUtil::Triple const& from, OpUtil::Triple const& to, bool inverse)
{
    auto matrix = std::make_unique<MatrixOp>();
    bool isStandard = true;
    for (unsigned int channel = 0; channel < 3; ++channel)
    {
        float const scale = 1.0F / (to[channel] - from[channel]);
        float const offset = -from[channel] * scale;
        matrix->setArrayValue(channel * 5, scale);
        matrix->setOffsetValue(channel, offset);
        isStandard &= scale == 1.0F && offset == 0.0F;
    }
    if (!isStandard)
        append(ops, inverse ? takeInverse(*matrix) : std::move(matrix));
}

void retrieveLut1DOp(OpList& ops, OpUtil::Lut1D const& lut)
{
    std::array<unsigned int, 3> sizes;
    std::transform(lut.luts.begin(), lut.luts.end(), sizes.begin(),
                   [](auto const& l) { return static_cast<unsigned int>(l.size()); });
    if (!areEqual(sizes))
        throw failure(ErrorIds::kOcioLut1DDimensions, Module::kOcioReader, "", sizes[0], sizes[1], sizes[2]);
    std::unique_ptr<Lut1DOp> op = makeLut1DOp(lut);
    if (lut.direction == OpUtil::Direction::Inverse)
    {
        auto inverse = std::make_unique<InvLut1DOp>(*op);
        inverse->setInvStyle(InvLut1DOp::InvStyle::Exact);
        append(ops, std::move(inverse));
        addMatrixOp(ops, lut.from, lut.to, true);
    }
    else
    {
        addMatrixOp(ops, lut.from, lut.to, false);
        append(ops, std::move(op));
    }
}

void retrieveLut3DOp(OpList& ops, OpUtil::Lut3D const& lut)
{
    if (lut.sizes[0] == 0 || !areEqual(lut.sizes))
        throw failure(ErrorIds::kOcioLut3DDimensions, Module::kOcioReader, "", lut.sizes[0], lut.sizes[1], lut.sizes[2]);
    if (lut.direction == OpUtil::Direction::Inverse)
        throw failure(ErrorIds::kOcioLut3DInverse, Module::kOcioReader);
    addMatrixOp(ops, lut.from, lut.to, false);
    append(ops, makeLut3DOp(lut));
}

void retrieveMatrixOp(OpList& ops, OpUtil::Matrix const& matrix)
{
    auto op = std::make_unique<MatrixOp>();
    op->setRGBAValues(matrix.matrix.data());
    op->getOffsets().setRGBAValues(matrix.offsets.data());
    append(ops, matrix.direction == OpUtil::Direction::Inverse ? takeInverse(*op) : std::move(op));
}

void retrieveLogOp(OpList& ops, OpUtil::Log const& log)
{
    std::array<LogOp::Params, 3> params;
    bool isPlain = true;
    for (std::size_t channel = 0; channel < params.size(); ++channel)
        isPlain &= !getLogParams(params[channel], log.k[channel], log.m[channel], log.b[channel], log.kb[channel], log.base);
    bool const isForward = log.direction == OpUtil::Direction::Forward;
    if (isPlain && (log.base == 2.0F || log.base == 10.0F))
    {
        auto op = std::make_unique<LogOp>();
        op->setLogStyle(plainLogStyle(log.base == 2.0F, isForward));
        append(ops, std::move(op));
        return;
    }
    append(ops,
           std::make_unique<LogOp>(BIT_DEPTH_32f, BIT_DEPTH_32f, isForward ? LogOp::LogStyle::LinToLog : LogOp::LogStyle::LogToLin,
                                   params[0], params[1], params[2]));
}

void retrieveExponentOp(OpList& ops, OpUtil::Exponent const& exponent)
{
    bool const isForward = exponent.direction == OpUtil::Direction::Forward;
    bool const isGamma = *std::min_element(exponent.exponents.begin(), exponent.exponents.end()) >= 1.0F;
    std::array<GammaOp::Params, 4> params;
    std::transform(exponent.exponents.begin(), exponent.exponents.end(), params.begin(),
                   [&](float value) { return GammaOp::Params{isGamma ? value : reciprocalGamma(value)}; });
    append(ops, makeGammaOp(basicStyle(isForward == isGamma), params));
}

void retrieveMoncurveOp(OpList& ops, OpUtil::Moncurve const& curve)
{
    std::array<GammaOp::Params, 4> params;
    for (std::size_t channel = 0; channel < params.size(); ++channel)
        params[channel] = {curve.gamma[channel], curve.offset[channel]};
    bool const isForward = curve.direction == OpUtil::Direction::Forward;
    append(ops, makeGammaOp(isForward ? GammaOp::GammaStyle::MoncurveFwd : GammaOp::GammaStyle::MoncurveRev, params));
}

void retrieveRangeOp(OpList& ops, OpUtil::Range const& range)
{
    append(ops, std::make_unique<RangeOp>(BIT_DEPTH_32f, BIT_DEPTH_32f, range.minIn, range.maxIn, range.minOut, range.maxOut));
}

void retrieveExposureContrastOp(OpList& ops, OpUtil::ExposureContrast const& grade)
{
    using Style = ExposureContrastOp::Style;
    auto op = std::make_unique<ExposureContrastOp>(BIT_DEPTH_32f, BIT_DEPTH_32f, grade.isVideo ? Style::Video : Style::Linear);
    op->getExposure()->setValue(grade.exposure);
    op->getContrast()->setValue(grade.contrast);
    op->setPivot(grade.pivot);
    append(ops, std::move(op));
}

void retrieveOp(OpList& ops, OpUtil::Processor const& processor, unsigned int index)
{
    switch (OpUtil::getOpType(processor, index))
    {
    case OpUtil::OpType::Lut1D:
        return retrieveLut1DOp(ops, required(OpUtil::getLut1DOpProperties(processor, index), ErrorIds::kOcioLut1DIllegal));
    case OpUtil::OpType::Lut3D:
        return retrieveLut3DOp(ops, required(OpUtil::getLut3DOpProperties(processor, index), ErrorIds::kOcioLut3DIllegal));
    case OpUtil::OpType::Matrix:
        return retrieveMatrixOp(ops, required(OpUtil::getMatrixOpProperties(processor, index), ErrorIds::kOcioMatrixIllegal));
    case OpUtil::OpType::Log:
        return retrieveLogOp(ops, required(OpUtil::getLogOpProperties(processor, index), ErrorIds::kOcioLogIllegal));
    case OpUtil::OpType::Exponent:
        return retrieveExponentOp(ops, required(OpUtil::getExponentOpProperties(processor, index), ErrorIds::kOcioExponentIllegal));
    case OpUtil::OpType::NoOp:
        return;
    case OpUtil::OpType::Moncurve:
        return retrieveMoncurveOp(ops, required(OpUtil::getMoncurveOpProperties(processor, index), ErrorIds::kOcioExponentIllegal));
    case OpUtil::OpType::Range:
        return retrieveRangeOp(ops, required(OpUtil::getRangeOpProperties(processor, index)));
    case OpUtil::OpType::Cdl:
        return appendCDLOp(ops, required(OpUtil::getCDLOpProperties(processor, index)));
    case OpUtil::OpType::ExposureContrast:
        return retrieveExposureContrastOp(ops, required(OpUtil::getExposureContrastOpProperties(processor, index)));
    case OpUtil::OpType::Unknown:
        break;
    }
    throw unsupportedOperation();
}

} // namespace

void appendCDLOp(OpList& ops, OpUtil::Cdl const& cdl)
{
    append(ops,
           std::make_unique<CDLOp>(BIT_DEPTH_32f, BIT_DEPTH_32f, "", "", Descriptions(), cdlStyle(cdl), channelParams(cdl.slope),
                                   channelParams(cdl.offset), channelParams(cdl.power), cdl.saturation));
}

void appendOps(OpList& ops, OpUtil::Processor const& processor)
{
    for (unsigned int index = 0; index < OpUtil::getOperationsCount(processor); ++index)
        retrieveOp(ops, processor, index);
}

} // namespace Color::OCIOUtil
