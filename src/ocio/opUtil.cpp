// The operators of a processor, by number and by type.
#include "ocio/opUtil.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace Color::OpUtil
{

namespace
{

template <class... Arrays>
bool areFinite(Arrays const&... arrays)
{
    auto const isFinite = [](auto value) { return std::isfinite(value); };
    return (std::all_of(arrays.begin(), arrays.end(), isFinite) && ...);
}

// Values of a table may be anything; its domain may not, and it has to have rows.
bool isUsable(Lut1D const& lut)
{
    return areFinite(lut.from, lut.to) && std::none_of(lut.luts.begin(), lut.luts.end(), [](auto const& l) { return l.empty(); });
}

bool isUsable(Lut3D const& lut)
{
    return areFinite(lut.from, lut.to) && lut.lut.size() == std::size_t{3} * lut.sizes[0] * lut.sizes[1] * lut.sizes[2];
}

bool isUsable(Matrix const& matrix)
{
    return areFinite(matrix.matrix, matrix.offsets);
}

bool isUsable(Log const& log)
{
    return areFinite(log.k, log.m, log.b, log.kb, std::array{log.base});
}

bool isUsable(Exponent const& exponent)
{
    return areFinite(exponent.exponents);
}

bool isUsable(Moncurve const& curve)
{
    return areFinite(curve.gamma, curve.offset);
}

// Not a number is the limit that is not there.
bool isUsable(Range const&)
{
    return true;
}

bool isUsable(Cdl const& cdl)
{
    return areFinite(cdl.slope, cdl.offset, cdl.power, std::array{cdl.saturation});
}

bool isUsable(ExposureContrast const& grade)
{
    return areFinite(std::array{grade.exposure, grade.contrast, grade.pivot});
}

template <class Operator>
Operator const* find(Processor const& processor, unsigned int index)
{
    auto const* const found = std::get_if<Operator>(&processor.getOperations().at(index));
    return found != nullptr && isUsable(*found) ? found : nullptr;
}

} // namespace

unsigned int getOperationsCount(Processor const& processor)
{
    return static_cast<unsigned int>(processor.getOperations().size());
}

OpType getOpType(Processor const& processor, unsigned int index)
{
    return std::visit([](auto const& operation) { return operation.kType; }, processor.getOperations().at(index));
}

Lut1D const* getLut1DOpProperties(Processor const& processor, unsigned int index)
{
    return find<Lut1D>(processor, index);
}

Lut3D const* getLut3DOpProperties(Processor const& processor, unsigned int index)
{
    return find<Lut3D>(processor, index);
}

Matrix const* getMatrixOpProperties(Processor const& processor, unsigned int index)
{
    return find<Matrix>(processor, index);
}

Log const* getLogOpProperties(Processor const& processor, unsigned int index)
{
    return find<Log>(processor, index);
}

Exponent const* getExponentOpProperties(Processor const& processor, unsigned int index)
{
    return find<Exponent>(processor, index);
}

Moncurve const* getMoncurveOpProperties(Processor const& processor, unsigned int index)
{
    return find<Moncurve>(processor, index);
}

Range const* getRangeOpProperties(Processor const& processor, unsigned int index)
{
    return find<Range>(processor, index);
}

Cdl const* getCDLOpProperties(Processor const& processor, unsigned int index)
{
    return find<Cdl>(processor, index);
}

ExposureContrast const* getExposureContrastOpProperties(Processor const& processor, unsigned int index)
{
    return find<ExposureContrast>(processor, index);
}

void createScaleOp(Processor& processor, std::array<float, 4> const& scale)
{
    Matrix matrix;
    for (std::size_t channel = 0; channel < scale.size(); ++channel)
        matrix.matrix[channel * (scale.size() + 1)] = scale[channel];
    processor.append(matrix);
}

void createMatrixOffsetOp(Processor& processor, Matrix const& matrix)
{
    processor.append(matrix);
}

void createExponentOp(Processor& processor, Exponent const& exponent)
{
    processor.append(exponent);
}

void createLogOp(Processor& processor, Log const& log)
{
    processor.append(log);
}

void createLut1DOp(Processor& processor, Lut1D lut)
{
    processor.append(std::move(lut));
}

void createLut3DOp(Processor& processor, Lut3D lut)
{
    processor.append(std::move(lut));
}

void buildCDLOp(Processor& processor, Cdl const& cdl)
{
    processor.append(cdl);
}

} // namespace Color::OpUtil
