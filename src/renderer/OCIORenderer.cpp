// Renders pictures in memory through OpenColorIO: our operators as its own, values in code values between them.
#include "renderer/OCIORenderer.h"

#include "renderer/CPUSelector.h"
#include "renderer/logOpUtil.h"
#include "transform/ops.h"
#include "utils/errorMessage.h"
#include "utils/utils.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <string>
#include <utility>
#include <vector>

namespace Rendering
{

namespace
{

using Color::BitDepth;
using Color::Op;
using Color::OpUtil::Direction;
using Color::OpUtil::Interpolation;
using Color::OpUtil::Processor;
namespace ErrorIds = Color::ErrorIds;
namespace Module = Color::Module;
namespace OpUtil = Color::OpUtil;

Color::Exception notSupported(std::string const& what)
{
    return Color::failure(ErrorIds::kOcioRendererOperation, Module::kOcioRenderer, what);
}

// OpenColorIO's values are 0 to 1 where ours are codes of an integer depth.
void addInputScaling(Processor& processor, Op const& op)
{
    if (!Tavrin::isIntegerDepth(op.getInputBitDepth()))
        return;
    float const scale = 1.0F / Tavrin::getBitDepthMaxValue(op.getInputBitDepth());
    OpUtil::createScaleOp(processor, {scale, scale, scale, scale});
}

void addOutputScaling(Processor& processor, Op const& op)
{
    if (!Tavrin::isIntegerDepth(op.getOutputBitDepth()))
        return;
    float const scale = Tavrin::getBitDepthMaxValue(op.getOutputBitDepth());
    OpUtil::createScaleOp(processor, {scale, scale, scale, scale});
}

// Tables hold code values, but leave alpha alone.
void addAlphaScaling(Processor& processor, Op const& op)
{
    float const ratio = Color::depthRatio(op.getOutputBitDepth(), op.getInputBitDepth());
    if (ratio != 1.0F)
        OpUtil::createScaleOp(processor, {1.0F, 1.0F, 1.0F, ratio});
}

template <class Lut>
void setDomain(Lut& lut, BitDepth depth)
{
    lut.from.fill(Tavrin::getBitDepthMinValue(depth));
    lut.to.fill(Tavrin::getBitDepthMaxValue(depth));
}

// An inverse table holds the forward one, and so has its domain at its output.
void addTable(Processor& processor, Color::Lut1DOp const& op, Direction direction)
{
    if (op.isInputHalfDomain())
        throw Color::failure(ErrorIds::kOcioRendererHalfDomain, Module::kOcioRenderer);
    if (op.isOutputRawHalfs())
        throw Color::failure(ErrorIds::kOcioRendererRawHalfs, Module::kOcioRenderer);
    OpUtil::Lut1D lut;
    setDomain(lut, direction == Direction::Forward ? op.getInputBitDepth() : op.getOutputBitDepth());
    unsigned int const dimension = op.getArray().getDimension();
    for (unsigned int channel = 0; channel < lut.luts.size(); ++channel)
        for (unsigned int row = 0; row < dimension; ++row)
            lut.luts[channel].push_back(op.getArray().get(row * 3 + channel));
    lut.interpolation = Interpolation::Linear;
    lut.direction = direction;
    lut.adjustsHue = op.getHueAdjust() == Color::Lut1DOp::HueAdjust::Dw3;
    OpUtil::createLut1DOp(processor, std::move(lut));
    addAlphaScaling(processor, op);
}

Interpolation interpolationOf(Color::Lut3DOp const& op)
{
    using Algo = Color::Lut3DOp::InterpolationAlgo;
    bool const isTetrahedral = op.getInterpolation() == Algo::Tetrahedral || op.getInterpolation() == Algo::FourPointTetrahedral;
    return isTetrahedral ? Interpolation::Tetrahedral : Interpolation::Linear;
}

// Blue varies fastest here, red there.
std::vector<float> withRedFastest(Color::Lut3DOp::Lut3DArray const& array)
{
    std::size_t const size = array.getDimension();
    std::vector<float> values(array.getValues().size());
    float* target = values.data();
    for (std::size_t b = 0; b < size; ++b)
        for (std::size_t g = 0; g < size; ++g)
            for (std::size_t r = 0; r < size; ++r, target += 3)
                std::copy_n(array.getValues().data() + ((r * size + g) * size + b) * 3, 3, target);
    return values;
}

// Logarithms of styles whose base and direction say all.
OpUtil::Log plainLog(float base, Direction direction)
{
    OpUtil::Log log;
    log.base = base;
    log.direction = direction;
    return log;
}

OpUtil::Log filmLog(Color::LogOp const& op, Direction direction)
{
    OpUtil::Log log = plainLog(10.0F, direction);
    std::array const params{&op.getRedParams(), &op.getGrnParams(), &op.getBluParams()};
    for (std::size_t channel = 0; channel < params.size(); ++channel)
        LogOpUtil::getOCIOLogParams(*params[channel], log.k[channel], log.m[channel], log.b[channel], log.kb[channel]);
    return log;
}

OpUtil::Log logOf(Color::LogOp const& op)
{
    using Style = Color::LogOp::LogStyle;
    switch (op.getLogStyle())
    {
    case Style::Log10:
        return plainLog(10.0F, Direction::Forward);
    case Style::Log2:
        return plainLog(2.0F, Direction::Forward);
    case Style::AntiLog10:
        return plainLog(10.0F, Direction::Inverse);
    case Style::AntiLog2:
        return plainLog(2.0F, Direction::Inverse);
    case Style::LogToLin:
        return filmLog(op, Direction::Inverse);
    case Style::LinToLog:
        return filmLog(op, Direction::Forward);
    }
    throw notSupported(op.getOpTypeName());
}

std::array<double, 3> coloursOf(Color::CDLOp::ChannelParams const& params)
{
    return {params[0], params[1], params[2]};
}

bool clamps(Color::CDLOp const& op)
{
    using Style = Color::CDLOp::CDLStyle;
    return op.getCDLStyle() == Style::V1_2Fwd || op.getCDLStyle() == Style::V1_2Rev;
}

// Operators without an overload of their own below have no counterpart.
template <class AnyOp>
void addOp(Processor&, AnyOp const& op)
{
    throw notSupported(op.getOpTypeName());
}

void addOp(Processor& processor, Color::Lut1DOp const& op)
{
    addTable(processor, op, Direction::Forward);
}

void addOp(Processor& processor, Color::InvLut1DOp const& op)
{
    addTable(processor, op, Direction::Inverse);
}

void addOp(Processor& processor, Color::Lut3DOp const& op)
{
    OpUtil::Lut3D lut;
    lut.sizes.fill(op.getArray().getDimension());
    lut.lut = withRedFastest(op.getArray());
    setDomain(lut, op.getInputBitDepth());
    lut.interpolation = interpolationOf(op);
    OpUtil::createLut3DOp(processor, std::move(lut));
    addAlphaScaling(processor, op);
}

void addOp(Processor& processor, Color::MatrixOp const& op)
{
    OpUtil::Matrix matrix;
    std::copy_n(op.getArray().getValues().data(), matrix.matrix.size(), matrix.matrix.begin());
    std::copy_n(op.getOffsets().getValues(), matrix.offsets.size(), matrix.offsets.begin());
    OpUtil::createMatrixOffsetOp(processor, matrix);
}

void addOp(Processor& processor, Color::GammaOp const& op)
{
    using Style = Color::GammaOp::GammaStyle;
    if (op.getGammaStyle() != Style::BasicFwd && op.getGammaStyle() != Style::BasicRev)
        throw notSupported("Gamma Moncurve");
    OpUtil::Exponent exponent;
    std::array const params{&op.getRedParams(), &op.getGreenParams(), &op.getBlueParams(), &op.getAlphaParams()};
    for (std::size_t channel = 0; channel < params.size(); ++channel)
    {
        double const gamma = params[channel]->at(0);
        exponent.exponents[channel] = static_cast<float>(op.getGammaStyle() == Style::BasicFwd ? gamma : 1.0 / gamma);
    }
    addInputScaling(processor, op);
    OpUtil::createExponentOp(processor, exponent);
    addOutputScaling(processor, op);
}

void addOp(Processor& processor, Color::LogOp const& op)
{
    addInputScaling(processor, op);
    OpUtil::createLogOp(processor, logOf(op));
    addOutputScaling(processor, op);
}

void addOp(Processor& processor, Color::CDLOp const& op)
{
    OpUtil::Cdl cdl;
    cdl.slope = coloursOf(op.getSlopeParams());
    cdl.offset = coloursOf(op.getOffsetParams());
    cdl.power = coloursOf(op.getPowerParams());
    cdl.saturation = op.getSaturation();
    cdl.clamps = clamps(op);
    cdl.direction = op.isReverse() ? Direction::Inverse : Direction::Forward;
    addInputScaling(processor, op);
    OpUtil::buildCDLOp(processor, cdl);
    addOutputScaling(processor, op);
}

using AddOp = void (*)(Processor& processor, Op const& op);

constexpr std::array kAddOps = {
#define TAVRIN_OP(number, Class, name, Family) \
    AddOp([](Processor& processor, Op const& op) { addOp(processor, static_cast<Color::Class const&>(op)); }),
#include "transform/opTypes.def"
#undef TAVRIN_OP
};

void addTransform(Processor& processor, Color::Transform const& transform)
{
    Color::OpList const& ops = transform.getOps();
    for (unsigned int i = 0; i < ops.size(); ++i)
        kAddOps.at(static_cast<std::size_t>(ops.get(i).getOpType()))(processor, ops.get(i));
}

std::shared_ptr<Processor const> createProcessor(Color::Transform const& transform)
{
    auto processor = std::make_shared<Processor>();
    addTransform(*processor, transform);
    try
    {
        processor->finalize();
    }
    catch (OpUtil::Error const& error)
    {
        throw notSupported(error.what());
    }
    return processor;
}

ROI rowOf(ROI const& roi, unsigned int row)
{
    ROI result = roi;
    result.y += row;
    result.height = 1;
    return result;
}

} // namespace

void OCIORenderer::finalize(std::shared_ptr<Color::Transform> const& transform, PixelFormat in, PixelFormat out)
{
    m_processor.reset();
    if (transform == nullptr)
        throw Color::failure(ErrorIds::kRendererTransformNull, Module::kRenderer);
    if (!transform->getOps().empty())
    {
        transform->setInputBitDepth(Color::Utils::depthOf(in));
        transform->setOutputBitDepth(Color::Utils::depthOf(out));
    }
    m_processor = createProcessor(*transform);
    m_inPF = in;
    m_outPF = out;
}

// Row by row, so that the copy in floats takes little memory.
void OCIORenderer::apply(void const* source, void* destination, ROI const& roi, unsigned int sourcePadding,
                         unsigned int destinationPadding)
{
    if (source == nullptr || destination == nullptr)
        throw Color::failure(ErrorIds::kImageNull, Module::kRenderer);
    constexpr unsigned int kChannels = 4;
    std::vector<float> floats(std::size_t{roi.width} * kChannels);
    ROI const tightRow(0, 0, roi.width, 1);
    for (unsigned int row = 0; row < roi.height && roi.width > 0; ++row)
    {
        ROI const pictureRow = rowOf(roi, row);
        copyBuffer(source, m_inPF, sourcePadding, pictureRow, floats.data(), Tavrin::PF_RGBA_32f, 0, tightRow);
        m_processor->apply(floats.data(), roi.width, 1, kChannels);
        copyBuffer(floats.data(), Tavrin::PF_RGBA_32f, 0, tightRow, destination, m_outPF, destinationPadding, pictureRow);
    }
}

} // namespace Rendering
