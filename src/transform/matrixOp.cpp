// A 4 by 4 matrix on red, green, blue and alpha, with offsets. Values and factors of depth changes are single precision.
#include "transform/matrixOp.h"

#include "transform/opList.h"
#include "utils/errorMessage.h"

#include <Imath/ImathMatrix.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <stdexcept>

namespace Color
{

namespace
{

constexpr unsigned int kChannels = 4; // red, green, blue, alpha
constexpr unsigned int kAlpha = 3;

// How far an element may be off, relative to the depth scale, and still belong to an identity.
constexpr float kIdentityTolerance = 1e-6F;

// Rounding noise of a composition, relative to the largest value, which itself counts as no less than the second number.
constexpr float kNoise = 1e-6F;
constexpr float kSmallestMagnitude = 1e-4F;

void requireOffsets(float const* values)
{
    if (values == nullptr)
        throw failure(ErrorIds::kMatrixOffsetsNull, Module::kMatrix);
}

// Negated product of the matrix and the offsets.
void setInverseOffsets(MatrixOp& inverse, MatrixOp::Offsets const& offsets)
{
    for (unsigned int row = 0; row < kChannels; ++row)
    {
        float sum = 0.0F;
        for (unsigned int column = 0; column < kChannels; ++column)
            sum += inverse.getArray().get(row * kChannels + column) * offsets[column];
        inverse.setOffsetValue(row, -sum);
    }
}

// False when the matrix is singular; the result is then left alone.
bool invertValues(Array const& values, Array& result)
{
    Imath::Matrix44<double> matrix;
    for (unsigned int i = 0; i < kChannels * kChannels; ++i)
        matrix[i / kChannels][i % kChannels] = values.get(i);
    try
    {
        matrix.gjInvert(true);
    }
    catch (std::invalid_argument const&)
    {
        return false;
    }
    for (unsigned int i = 0; i < kChannels * kChannels; ++i)
        result.set(i, static_cast<float>(matrix[i / kChannels][i % kChannels]));
    return true;
}

// second * first, each sum in the order of the inner index.
void multiply(Array const& second, Array const& first, Array& result)
{
    for (unsigned int row = 0; row < kChannels; ++row)
    {
        for (unsigned int column = 0; column < kChannels; ++column)
        {
            float sum = 0.0F;
            for (unsigned int k = 0; k < kChannels; ++k)
                sum += second.get(row * kChannels + k) * first.get(k * kChannels + column);
            result.set(row * kChannels + column, sum);
        }
    }
}

// Offsets of the first matrix, seen through the second, plus those of the second. Returns the largest magnitude among the two.
float composeOffsets(MatrixOp const& first, MatrixOp const& second, MatrixOp::Offsets& result)
{
    float maxOffset = 0.0F;
    for (unsigned int row = 0; row < kChannels; ++row)
    {
        float carried = 0.0F;
        for (unsigned int column = 0; column < kChannels; ++column)
            carried += second.getArray().get(row * kChannels + column) * first.getOffsets()[column];
        float const own = second.getOffsets()[row];
        maxOffset = std::max({maxOffset, std::abs(carried), std::abs(own)});
        result[row] = carried + own;
    }
    return maxOffset;
}

float snapped(float value, float tolerance)
{
    float const rounded = std::round(value);
    return std::abs(value - rounded) < tolerance ? rounded : value;
}

} // namespace

void MatrixOp::Offsets::setRGBAValues(float const* values)
{
    requireOffsets(values);
    std::copy_n(values, kChannels, m_values.begin());
}

void MatrixOp::Offsets::setRGBValues(float const* values)
{
    requireOffsets(values);
    std::copy_n(values, kAlpha, m_values.begin());
    m_values[kAlpha] = 0.0F;
}

void MatrixOp::Offsets::scale(float factor)
{
    for (float& value : m_values)
        value *= factor;
}

bool MatrixOp::Offsets::isNotNull() const
{
    return !(*this == Offsets());
}

bool MatrixOp::Offsets::operator==(Offsets const& other) const
{
    // Equal are the same bits: a NaN equals itself. NOLINTNEXTLINE(bugprone-suspicious-memory-comparison)
    return std::memcmp(m_values.data(), other.m_values.data(), sizeof m_values) == 0;
}

MatrixOp::MatrixArray::MatrixArray(BitDepth in, BitDepth out, unsigned int dimension, unsigned int components)
    : m_inBitDepth(in), m_outBitDepth(out)
{
    resize(dimension, components);
    _fill();
}

unsigned int MatrixOp::MatrixArray::getNumValues() const
{
    return getDimension() * getDimension();
}

void MatrixOp::MatrixArray::validate() const
{
    Array::validate();
    if (getDimension() == 3)
        const_cast<MatrixArray*>(this)->_expandFrom3x3To4x4();
    if (getDimension() != kChannels || getNumColorComponents() != kChannels)
        throw failure(ErrorIds::kArrayIllegal, Module::kTransform);
}

void MatrixOp::MatrixArray::setInputBitDepth(BitDepth depth)
{
    scale(depthRatio(m_inBitDepth, depth));
    m_inBitDepth = depth;
}

void MatrixOp::MatrixArray::setOutputBitDepth(BitDepth depth)
{
    scale(depthRatio(depth, m_outBitDepth));
    m_outBitDepth = depth;
}

bool MatrixOp::MatrixArray::isIdentity() const
{
    unsigned int const dimension = getDimension();
    for (unsigned int i = 0; i < getNumValues(); ++i)
    {
        bool const onDiagonal = i / dimension == i % dimension;
        if (get(i) != (onDiagonal ? 1.0F : 0.0F))
            return false;
    }
    return true;
}

float MatrixOp::MatrixArray::getDepthScale() const
{
    return Tavrin::getBitDepthValueRange(m_outBitDepth) / Tavrin::getBitDepthValueRange(m_inBitDepth);
}

void MatrixOp::MatrixArray::_fill()
{
    std::fill(getValues().begin(), getValues().end(), 0.0F);
    for (unsigned int i = 0; i < getDimension(); ++i)
        set(i * (getDimension() + 1), getDepthScale());
}

void MatrixOp::MatrixArray::_expandFrom3x3To4x4()
{
    Values const nine = getValues();
    resize(kChannels, kChannels);
    _fill();
    for (unsigned int i = 0; i < nine.size(); ++i)
        set(i / 3 * kChannels + i % 3, nine[i]);
}

MatrixOp::MatrixOp() : MatrixOp(Tavrin::BIT_DEPTH_32f, Tavrin::BIT_DEPTH_32f, {}, {}, {}) {}

MatrixOp::MatrixOp(BitDepth in, BitDepth out, std::string const& id, std::string const& name, Descriptions const& descriptions)
    : TypedOp(in, out, id, name, descriptions), m_array(in, out, kChannels, kChannels)
{
}

MatrixOp* MatrixOp::createDiagonalMatrix(BitDepth in, BitDepth out, float value)
{
    auto matrix = std::make_unique<MatrixOp>(in, out, "none", "Diagonal matrix", Descriptions());
    for (unsigned int channel = 0; channel < kChannels; ++channel)
        matrix->setArrayValue(channel * (kChannels + 1), value);
    return matrix.release();
}

void MatrixOp::setInputBitDepth(BitDepth depth)
{
    Op::setInputBitDepth(depth);
    m_array.setInputBitDepth(depth);
}

void MatrixOp::setOutputBitDepth(BitDepth depth)
{
    m_offsets.scale(depthRatio(depth, getOutputBitDepth()));
    Op::setOutputBitDepth(depth);
    m_array.setOutputBitDepth(depth);
}

void MatrixOp::validate() const
{
    Op::validate();
    try
    {
        m_array.validate(); // Passes 4 by 4 arrays of 4 components only.
    }
    catch (Exception const& cause)
    {
        throw failure(cause, ErrorIds::kOpArrayIllegal, Module::kTransform, getMeaningfullIdentifier());
    }
}

bool MatrixOp::isIdentity() const
{
    if (m_offsets.isNotNull() || hasAlpha() || !isDiagonal())
        return false;
    float const scale = m_array.getDepthScale();
    for (unsigned int channel = 0; channel < kChannels; ++channel)
    {
        float const error = std::abs(m_array.get(channel * (kChannels + 1)) - scale);
        if (!(error <= scale * kIdentityTolerance))
            return false;
    }
    return true;
}

bool MatrixOp::operator==(Op const& other) const
{
    if (this == &other)
        return true;
    if (!Op::operator==(other) || other.getOpType() != getOpType())
        return false;
    auto const& matrix = static_cast<MatrixOp const&>(other);
    return m_array == matrix.m_array && m_offsets == matrix.m_offsets;
}

// A singular matrix has the depth-correct identity as its inverse, which the new operator already holds.
void MatrixOp::inverse(OpList& list) const
{
    auto result = std::make_unique<MatrixOp>(getOutputBitDepth(), getInputBitDepth(), std::string(), std::string(), Descriptions());
    invertValues(m_array, result->m_array);
    if (m_offsets.isNotNull())
        setInverseOffsets(*result, m_offsets);
    list.append(result.release());
}

void MatrixOp::setRGBAValues(float const* values)
{
    std::copy_n(values, kChannels * kChannels, m_array.getValues().begin());
}

void MatrixOp::setRGBValues(float const* values)
{
    for (unsigned int row = 0; row < kChannels; ++row)
    {
        for (unsigned int column = 0; column < kChannels; ++column)
        {
            bool const inAlpha = row == kAlpha || column == kAlpha;
            m_array.set(row * kChannels + column, inAlpha ? 0.0F : values[row * kAlpha + column]);
        }
    }
    m_array.set(kChannels * kChannels - 1, m_array.getDepthScale());
}

void MatrixOp::setArrayValue(unsigned int index, float value)
{
    m_array.set(index, value);
}

void MatrixOp::setOffsetValue(unsigned int index, float value)
{
    _requireOffsetIndex(index);
    m_offsets[index] = value;
}

float MatrixOp::getOffsetValue(unsigned int index) const
{
    _requireOffsetIndex(index);
    return m_offsets[index];
}

bool MatrixOp::isDiagonal() const
{
    unsigned int const dimension = m_array.getDimension();
    for (unsigned int i = 0; i < m_array.getNumValues(); ++i)
    {
        if (i / dimension != i % dimension && m_array.get(i) != 0.0F)
            return false;
    }
    return true;
}

bool MatrixOp::isEye() const
{
    return m_array.isIdentity();
}

bool MatrixOp::hasAlpha() const
{
    for (unsigned int i = 0; i < kAlpha; ++i)
    {
        bool const mixesAlphaIn = m_array.get(i * kChannels + kAlpha) != 0.0F;
        bool const mixesIntoAlpha = m_array.get(kAlpha * kChannels + i) != 0.0F;
        if (mixesAlphaIn || mixesIntoAlpha)
            return true;
    }
    float const scale = m_array.getDepthScale();
    return std::abs(m_array.get(kChannels * kChannels - 1) - scale) > scale * kIdentityTolerance;
}

void MatrixOp::cleanUp(float maxOffset)
{
    float maxValue = 0.0F;
    for (float const value : m_array.getValues())
        maxValue = std::max(maxValue, std::abs(value));

    float const tolerance = std::max(maxValue, kSmallestMagnitude) * kNoise;
    for (float& value : m_array.getValues())
        value = snapped(value, tolerance);

    float const offsetTolerance = std::max(maxOffset, kSmallestMagnitude) * kNoise;
    for (unsigned int channel = 0; channel < kChannels; ++channel)
        m_offsets[channel] = snapped(m_offsets[channel], offsetTolerance);
}

MatrixOp MatrixOp::compose(MatrixOp const& second) const
{
    validateJoint(*this, second);
    if (m_array.getDimension() != kChannels || second.m_array.getDimension() != kChannels)
        throw failure(ErrorIds::kMatrixComposeDimension, Module::kMatrix);

    MatrixOp result(getInputBitDepth(), second.getOutputBitDepth(), getId() + second.getId(), getName() + second.getName(),
                    getDescriptions() + second.getDescriptions());
    multiply(second.m_array, m_array, result.m_array);
    result.cleanUp(composeOffsets(*this, second, result.m_offsets));
    return result;
}

void MatrixOp::_requireOffsetIndex(unsigned int index) const
{
    if (index >= std::min(m_array.getDimension(), kChannels))
        throw failure(ErrorIds::kMatrixOffsetIndex, Module::kMatrix, getMeaningfullIdentifier(), index);
}

} // namespace Color
