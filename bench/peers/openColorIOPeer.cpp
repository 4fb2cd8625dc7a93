// OpenColorIO: one group of its own transforms, as an optimized processor between the two depths, applied to the whole frame.
#include "peers/peers.h"
#include "shared/tables.h"

#include <OpenColorIO/OpenColorIO.h>

#include <memory>

namespace OCIO = OCIO_NAMESPACE;

namespace Bench
{

namespace
{

std::optional<OCIO::BitDepth> bitDepthOf(Tavrin::PixelFormat format)
{
    if (isPacked(format))
        return std::nullopt;
    switch (depthOf(format))
    {
    case Tavrin::BIT_DEPTH_8i:
        return OCIO::BIT_DEPTH_UINT8;
    case Tavrin::BIT_DEPTH_16i:
        return OCIO::BIT_DEPTH_UINT16;
    case Tavrin::BIT_DEPTH_16f:
        return OCIO::BIT_DEPTH_F16;
    case Tavrin::BIT_DEPTH_32f:
        return OCIO::BIT_DEPTH_F32;
    default:
        return std::nullopt;
    }
}

OCIO::TransformDirection directionOf(Direction direction)
{
    return direction == Direction::Forward ? OCIO::TRANSFORM_DIR_FORWARD : OCIO::TRANSFORM_DIR_INVERSE;
}

// Null where there is none for an operator.
struct TransformMaker
{
    OCIO::TransformRcPtr operator()(GamutMatrix const& matrix) const
    {
        std::array<double, 9> const m = coefficients(matrix);
        double const values[] = {m[0], m[1], m[2], 0, m[3], m[4], m[5], 0, m[6], m[7], m[8], 0, 0, 0, 0, 1};
        OCIO::MatrixTransformRcPtr const transform = OCIO::MatrixTransform::Create();
        transform->setMatrix(values);
        return transform;
    }

    OCIO::TransformRcPtr operator()(SrgbCurve const& curve) const
    {
        OCIO::ExponentWithLinearTransformRcPtr const transform = OCIO::ExponentWithLinearTransform::Create();
        transform->setGamma({kSrgbGamma, kSrgbGamma, kSrgbGamma, 1.0});
        transform->setOffset({kSrgbOffset, kSrgbOffset, kSrgbOffset, 0.0});
        transform->setDirection(directionOf(curve.direction));
        return transform;
    }

    OCIO::TransformRcPtr operator()(Table1D const& table) const
    {
        std::vector<float> const values = column(table.rows);
        OCIO::Lut1DTransformRcPtr const transform = OCIO::Lut1DTransform::Create(table.rows, false);
        transform->setInterpolation(OCIO::INTERP_LINEAR);
        for (unsigned int i = 0; i < table.rows; ++i)
            transform->setValue(i, values[i], values[i], values[i]);
        return transform;
    }

    OCIO::TransformRcPtr operator()(Table3D const& table) const
    {
        bool const tetrahedral = table.interpolation == Interpolation::Tetrahedral;
        unsigned int const n = table.points;
        std::vector<float> const values = grid(n);
        OCIO::Lut3DTransformRcPtr const transform = OCIO::Lut3DTransform::Create(n);
        transform->setInterpolation(tetrahedral ? OCIO::INTERP_TETRAHEDRAL : OCIO::INTERP_LINEAR);
        for (unsigned int i = 0; i < n * n * n; ++i)
            transform->setValue(i / n / n, i / n % n, i % n, values[i * 3], values[i * 3 + 1], values[i * 3 + 2]);
        return transform;
    }

    OCIO::TransformRcPtr operator()(Cdl const& cdl) const
    {
        OCIO::CDLTransformRcPtr const transform = OCIO::CDLTransform::Create();
        transform->setStyle(OCIO::CDL_ASC);
        transform->setSlope(cdl.slope.data());
        transform->setOffset(cdl.offset.data());
        transform->setPower(cdl.power.data());
        transform->setSat(cdl.saturation);
        return transform;
    }

    // Its forward direction leads to the logarithm.
    OCIO::TransformRcPtr operator()(FilmLog const& log) const
    {
        auto const [multiplier, white, gain, offset] = filmParameters();
        OCIO::LogAffineTransformRcPtr const transform = OCIO::LogAffineTransform::Create();
        transform->setBase(10.0);
        setAll(*transform, &OCIO::LogAffineTransform::setLogSideSlopeValue, 1.0 / multiplier);
        setAll(*transform, &OCIO::LogAffineTransform::setLogSideOffsetValue, white);
        setAll(*transform, &OCIO::LogAffineTransform::setLinSideSlopeValue, 1.0 / gain);
        setAll(*transform, &OCIO::LogAffineTransform::setLinSideOffsetValue, offset / gain);
        transform->setDirection(directionOf(log.direction == Direction::Forward ? Direction::Inverse : Direction::Forward));
        return transform;
    }

    OCIO::TransformRcPtr operator()(Exposure const& exposure) const
    {
        OCIO::ExposureContrastTransformRcPtr const transform = OCIO::ExposureContrastTransform::Create();
        transform->setStyle(OCIO::EXPOSURE_CONTRAST_LINEAR);
        transform->setExposure(exposure.stops);
        transform->setPivot(0.18);
        return transform;
    }

    OCIO::TransformRcPtr operator()(Dither const&) const { return nullptr; }

    using LogSetter = void (OCIO::LogAffineTransform::*)(double const (&)[3]);

    static void setAll(OCIO::LogAffineTransform& transform, LogSetter set, double value)
    {
        double const values[] = {value, value, value};
        (transform.*set)(values);
    }
};

// Null where some operator can't be done.
OCIO::ConstCPUProcessorRcPtr processorOf(Work const& work, OCIO::BitDepth in, OCIO::BitDepth out)
{
    OCIO::GroupTransformRcPtr const group = OCIO::GroupTransform::Create();
    for (Operator const& op : work.operators)
    {
        OCIO::TransformRcPtr const transform = std::visit(TransformMaker(), op);
        if (transform == nullptr)
            return nullptr;
        group->appendTransform(transform);
    }
    return OCIO::Config::CreateRaw()->getProcessor(group)->getOptimizedCPUProcessor(in, out, OCIO::OPTIMIZATION_DEFAULT);
}

std::shared_ptr<OCIO::PackedImageDesc> imageOf(unsigned char* frame, Tavrin::PixelFormat format, OCIO::BitDepth depth)
{
    return std::make_shared<OCIO::PackedImageDesc>(frame, kWidth, kHeight, Tavrin::getNumChannels(format), depth, OCIO::AutoStride,
                                                   OCIO::AutoStride, OCIO::AutoStride);
}

} // namespace

std::string openColorIOVersion()
{
    return std::string("OpenColorIO ") + OCIO::GetVersion();
}

std::optional<Runnable> openColorIO(Task const& task)
{
    std::optional<OCIO::BitDepth> const in = bitDepthOf(task.in);
    std::optional<OCIO::BitDepth> const out = bitDepthOf(task.out);
    OCIO::ConstCPUProcessorRcPtr const processor = in && out ? processorOf(task.work, *in, *out) : nullptr;
    if (processor == nullptr)
        return std::nullopt;
    std::shared_ptr<OCIO::PackedImageDesc> const source = imageOf(picture(task.in, Arrangement::Interleaved), task.in, *in);
    std::shared_ptr<OCIO::PackedImageDesc> const destination = imageOf(destinationFrame(), task.out, *out);
    return Runnable{Arrangement::Interleaved, [=] { processor->apply(*source, *destination); }};
}

} // namespace Bench
