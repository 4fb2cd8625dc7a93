// Limits, the scale and offset that follow from them, and the clamps that the depths leave necessary. All in double precision.
#include "transform/rangeOp.h"

#include "utils/errorMessage.h"
#include "utils/utils.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace Color
{

namespace
{

// Below this magnitude values are compared by their difference, above it by their ratio.
constexpr double kSmallMagnitude = 0.001;
constexpr double kTolerance = 1e-6;

// Limits arrive in single precision from files; emptiness is tested there too.
bool isEmpty(double limit)
{
    return std::isnan(static_cast<float>(limit));
}

bool isNear(double value, double reference)
{
    if (std::abs(value) >= kSmallMagnitude)
        return std::abs(1.0 - reference / value) <= kTolerance;
    return std::abs(value - reference) <= kTolerance;
}

bool sameLimit(double a, double b)
{
    return isEmpty(a) ? isEmpty(b) : a == b;
}

double maxOf(BitDepth depth)
{
    return Tavrin::getBitDepthMaxValue(depth);
}

void requireBothOrNone(double in, double out, char const* which)
{
    if (isEmpty(in) != isEmpty(out))
        throw failure(ErrorIds::kRangeLimitsHalfSet, Module::kRange, which);
}

void scaleLimit(double& limit, double factor)
{
    if (!isEmpty(limit))
        limit *= factor;
}

} // namespace

RangeOp::RangeOp()
    : TypedOp(Tavrin::BIT_DEPTH_32f, Tavrin::BIT_DEPTH_32f),
      m_minIn(emptyValue()),
      m_maxIn(emptyValue()),
      m_minOut(emptyValue()),
      m_maxOut(emptyValue())
{
}

RangeOp::RangeOp(BitDepth in, BitDepth out, double minIn, double maxIn, double minOut, double maxOut)
    : RangeOp(in, out, minIn, maxIn, minOut, maxOut, {}, {}, {})
{
}

RangeOp::RangeOp(BitDepth in, BitDepth out, double minIn, double maxIn, double minOut, double maxOut, std::string const& id,
                 std::string const& name, Descriptions const& descriptions)
    : TypedOp(in, out, id, name, descriptions), m_minIn(minIn), m_maxIn(maxIn), m_minOut(minOut), m_maxOut(maxOut)
{
    RangeOp::validate();
}

void RangeOp::setInputBitDepth(BitDepth depth)
{
    double const factor = maxOf(depth) / maxOf(getInputBitDepth());
    Op::setInputBitDepth(depth);
    scaleLimit(m_minIn, factor);
    scaleLimit(m_maxIn, factor);
    _fillScaleOffset();
    _fillBounds();
}

void RangeOp::setOutputBitDepth(BitDepth depth)
{
    double const factor = maxOf(depth) / maxOf(getOutputBitDepth());
    Op::setOutputBitDepth(depth);
    if (!minIsEmpty())
        m_minOut *= factor;
    if (!maxIsEmpty())
        m_maxOut *= factor;
    _fillScaleOffset();
    _fillBounds();
}

void RangeOp::validate() const
{
    Op::validate();
    requireBothOrNone(m_minIn, m_minOut, "Min");
    requireBothOrNone(m_maxIn, m_maxOut, "Max");
    if (!minIsEmpty() && !maxIsEmpty() && (m_minIn > m_maxIn || m_minOut > m_maxOut))
        throw failure(ErrorIds::kRangeLimitsReversed, Module::kRange);
    _fillScaleOffset();
    _fillBounds();
}

bool RangeOp::isIdentity() const
{
    return minIsEmpty() && maxIsEmpty() && !scales(true);
}

bool RangeOp::operator==(Op const& other) const
{
    if (this == &other)
        return true;
    if (!Op::operator==(other) || other.getOpType() != getOpType())
        return false;
    auto const& range = static_cast<RangeOp const&>(other);
    return sameLimit(m_minIn, range.m_minIn) && sameLimit(m_maxIn, range.m_maxIn) && sameLimit(m_minOut, range.m_minOut) &&
           sameLimit(m_maxOut, range.m_maxOut);
}

double RangeOp::emptyValue()
{
    return std::numeric_limits<double>::quiet_NaN();
}

bool RangeOp::minIsEmpty() const
{
    return isEmpty(m_minIn);
}

bool RangeOp::maxIsEmpty() const
{
    return isEmpty(m_maxIn);
}

bool RangeOp::minClips() const
{
    return !std::isnan(m_derived.lowerBound);
}

bool RangeOp::maxClips() const
{
    return !std::isnan(m_derived.upperBound);
}

std::string RangeOp::getMinInString() const
{
    return Utils::valueString(m_minIn);
}

std::string RangeOp::getMaxInString() const
{
    return Utils::valueString(m_maxIn);
}

std::string RangeOp::getMinOutString() const
{
    return Utils::valueString(m_minOut);
}

std::string RangeOp::getMaxOutString() const
{
    return Utils::valueString(m_maxOut);
}

bool RangeOp::scales(bool depthAware) const
{
    double const neutral = depthAware ? _depthScale() : 1.0;
    return std::abs(m_derived.offset) > kTolerance || !isNear(m_derived.scale, neutral) || !isNear(m_derived.alphaScale, neutral);
}

bool RangeOp::clampsToLutDomain() const
{
    return !minIsEmpty() && !maxIsEmpty() && m_minIn >= Tavrin::getBitDepthMinValue(getOutputBitDepth()) &&
           m_maxIn <= maxOf(getOutputBitDepth());
}

bool RangeOp::wouldClip(double value) const
{
    double const scaled = m_derived.scale * value + m_derived.offset;
    double clipped = scaled;
    if (!minIsEmpty())
        clipped = std::max(clipped, m_minOut);
    if (!maxIsEmpty())
        clipped = std::min(clipped, m_maxOut);
    if (Tavrin::isIntegerDepth(getOutputBitDepth()))
        clipped = std::clamp(clipped, 0.0, maxOf(getOutputBitDepth()));
    return !isNear(scaled, clipped);
}

// The factor that a mere change of depth has.
double RangeOp::_depthScale() const
{
    return maxOf(getOutputBitDepth()) / maxOf(getInputBitDepth());
}

void RangeOp::_fillScaleOffset() const
{
    double const depthScale = _depthScale();
    m_derived.alphaScale = depthScale;
    m_derived.scale = depthScale;
    m_derived.offset = 0.0;
    if (minIsEmpty() && maxIsEmpty())
        return;
    if (minIsEmpty())
    {
        m_derived.offset = m_maxOut - depthScale * m_maxIn;
        return;
    }
    if (!maxIsEmpty())
    {
        if (std::abs(m_maxIn - m_minIn) < kTolerance)
            throw failure(ErrorIds::kRangeInputTooNarrow, Module::kRange);
        m_derived.scale = (m_maxOut - m_minOut) / (m_maxIn - m_minIn);
    }
    m_derived.offset = m_minOut - m_derived.scale * m_minIn;
}

void RangeOp::_fillBounds() const
{
    m_derived.lowerBound = _clipOverride(true);
    m_derived.upperBound = _clipOverride(false);
}

// The clamp that is needed on one side, NaN for none: values of an integer depth can't leave their range.
double RangeOp::_clipOverride(bool lower) const
{
    double const limitOut = lower ? m_minOut : m_maxOut;
    double const edgeIn = lower ? 0.0 : maxOf(getInputBitDepth());
    double const edgeOut = lower ? 0.0 : maxOf(getOutputBitDepth());
    bool const hasLimit = lower ? !minIsEmpty() : !maxIsEmpty();
    bool const integerOut = Tavrin::isIntegerDepth(getOutputBitDepth());

    if (hasLimit)
    {
        if (Tavrin::isIntegerDepth(getInputBitDepth()) && !wouldClip(edgeIn))
            return emptyValue(); // No input can reach the limit.
        bool const beyondEdge = lower ? edgeOut > limitOut : limitOut > edgeOut;
        return integerOut && beyondEdge ? edgeOut : limitOut;
    }
    if (integerOut && (Tavrin::isFloatDepth(getInputBitDepth()) || wouldClip(edgeIn)))
        return edgeOut;
    return limitOut;
}

} // namespace Color
