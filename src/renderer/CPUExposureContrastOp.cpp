// Renderers of exposure and contrast. They share the operator's properties and read them at the start of each line.
#include "renderer/CPUExposureContrastOp.h"

#include "renderer/CPURangeOp.h"
#include "renderer/exposureContrastOpUtil.h"
#include "renderer/kernelsArithmetic.h"
#include "renderer/opRenderers.h"
#include "transform/exposureContrastOp.h"

#include <algorithm>
#include <cmath>

namespace Rendering
{

namespace
{

using Color::ExposureContrastOp;
using namespace ExposureContrastOpUtil;

constexpr float kLeastPivot = 0.001F;
constexpr float kLeastContrast = 0.001F;

constexpr float kVideoGamma = 0.5464481F; // 1 / 1.83, the exponent from linear light to video.

double limitedPivot(ExposureContrastOp const& op)
{
    return op.getPivot() >= 0.001 ? op.getPivot() : kLeastPivot;
}

class ECRendererBase : public VirtualRenderer
{
public:
    // The pivot is in the encoding of the pixels, from 0 to 1.
    template <class Number>
    ECRendererBase(ExposureContrastOp const& op, Number pivot)
        : VirtualRenderer(op),
          m_exposure(op.getExposure()),
          m_contrast(op.getContrast()),
          m_inRange(Tavrin::getBitDepthValueRange(op.getInputBitDepth())),
          m_alphaScale(Tavrin::getBitDepthValueRange(op.getOutputBitDepth()) / m_inRange),
          m_pivotIn(static_cast<float>(m_inRange * pivot)),
          m_pivotOut(static_cast<float>(Tavrin::getBitDepthValueRange(op.getOutputBitDepth()) * pivot))
    {
    }

protected:
    double getExposure() const { return m_exposure->getValue(); }
    float getContrast() const
    {
        float const contrast = static_cast<float>(m_contrast->getValue());
        return contrast < kLeastContrast ? kLeastContrast : contrast;
    }

private:
    std::shared_ptr<Color::ExposureDynamicProperty const> m_exposure;
    std::shared_ptr<Color::ContrastDynamicProperty const> m_contrast;

protected:
    float const m_inRange;
    float const m_alphaScale;
    float const m_pivotIn;
    float const m_pivotOut;
};

// A power around the pivot, with the exposure as a factor before it.
class ECPowerRenderer : public ECRendererBase
{
public:
    template <class Number>
    ECPowerRenderer(ExposureContrastOp const& op, Number pivot)
        : ECRendererBase(op, pivot),
          m_exposureAlone(getArithmeticKernel(ArithmeticKernel::ExposureAlone)),
          m_exposureAndContrast(getArithmeticKernel(ArithmeticKernel::ExposureAndContrast))
    {
    }

    LineKernel prepareLine(LineParameters& room) const final
    {
        float const contrast = getContrast();
        float const gain = getGain(std::pow(2.0F, static_cast<float>(getExposure())));
        ExposureContrastParameters const parameters{gain / m_pivotIn, contrast, m_pivotOut, m_alphaScale};
        return makeLineKernel(contrast == 1.0F ? m_exposureAlone : m_exposureAndContrast, room.hold(parameters));
    }

protected:
    // The factor in the pixels' encoding for one in linear light.
    virtual float getGain(float linearGain) const = 0;

private:
    BlockFunction m_exposureAlone;
    BlockFunction m_exposureAndContrast;
};

class ECLinearRenderer : public ECPowerRenderer
{
public:
    explicit ECLinearRenderer(ExposureContrastOp const& op) : ECPowerRenderer(op, limitedPivot(op)) {}

    RendererKind getOpType() const override { return RendererKind::ECLinearRenderer; }

protected:
    float getGain(float linearGain) const override { return linearGain; }
};

class ECVideoRenderer : public ECPowerRenderer
{
public:
    explicit ECVideoRenderer(ExposureContrastOp const& op)
        : ECPowerRenderer(op, std::pow(static_cast<float>(limitedPivot(op)), kVideoGamma))
    {
    }

    RendererKind getOpType() const override { return RendererKind::ECVideoRenderer; }

protected:
    float getGain(float linearGain) const override { return std::pow(linearGain, kVideoGamma); }
};

// A straight line: exposure adds, contrast is the slope.
class ECLogarithmicRenderer : public ECRendererBase
{
public:
    explicit ECLogarithmicRenderer(ExposureContrastOp const& op)
        : ECRendererBase(op, std::max(std::log10(limitedPivot(op) / kLogWhite) * kLogSlope + kLogOffset, 0.0)),
          m_kernel(getArithmeticKernel(ArithmeticKernel::RangeScale))
    {
    }

    RendererKind getOpType() const override { return RendererKind::ECLogarithmicRenderer; }

    LineKernel prepareLine(LineParameters& room) const override
    {
        float const slope = getContrast() * m_alphaScale;
        float const shift = static_cast<float>(kLog10Of2 * getExposure() * kLogSlope * m_inRange) - m_pivotIn;
        RangeParameters parameters{};
        parameters.scale = slope;
        parameters.offset = shift * slope + m_pivotOut;
        parameters.alphaScale = m_alphaScale;
        return makeLineKernel(m_kernel, room.hold(parameters));
    }

private:
    BlockFunction m_kernel;
};

} // namespace

void ExposureContrastRenderer::addAlgorithm(ExposureContrastOp const& op, TransformProcessor& processor)
{
    switch (op.getStyle())
    {
    case ExposureContrastOp::Style::Video:
        return processor.append(std::make_unique<ECVideoRenderer>(op));
    case ExposureContrastOp::Style::Log:
        return processor.append(std::make_unique<ECLogarithmicRenderer>(op));
    case ExposureContrastOp::Style::Linear:
        return processor.append(std::make_unique<ECLinearRenderer>(op));
    }
}

} // namespace Rendering
