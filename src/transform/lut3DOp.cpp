// A three-dimensional table: identities, depth changes and validation. Arithmetic on values is single precision.
#include "transform/lut3DOp.h"

#include "transform/tableOp.h"
#include "utils/errorMessage.h"
#include "utils/nameTable.h"

#include <array>
#include <cmath>

namespace Color
{

namespace
{

using InterpolationAlgo = Lut3DOp::InterpolationAlgo;

constexpr Utils::NameTable<InterpolationAlgo, 3> kInterpolations{{{{InterpolationAlgo::Trilinear, "trilinear"},
                                                                   {InterpolationAlgo::Tetrahedral, "tetrahedral"},
                                                                   {InterpolationAlgo::FourPointTetrahedral, "4pt tetrahedral"}}}};

// How far a value may be off and still belong to an identity, in code values.
constexpr float kIdentityTolerance = 0.0001F;
// Between depths whose full signals are closer than this, values stay as they are.
constexpr float kFactorTolerance = 0.0001F;

// Calls the function with each value and what it is in an identity; false as soon as it says so.
template <class Values, class Function>
bool everyValue(Values& values, unsigned int dimension, BitDepth outDepth, Function function)
{
    float const step = Op::getValueStepSize(outDepth, dimension);
    std::array<unsigned int, kTableComponents> point{}; // Grid indices of red, green and blue.
    std::size_t const end = values.size() - values.size() % kTableComponents;
    for (std::size_t entry = 0; entry < end; entry += kTableComponents)
    {
        for (unsigned int component = 0; component < kTableComponents; ++component)
        {
            if (!function(values[entry + component], static_cast<float>(point[component]) * step))
                return false;
        }
        for (unsigned int axis = kTableComponents; axis-- > 0 && ++point[axis] == dimension;)
            point[axis] = 0;
    }
    return true;
}

} // namespace

Lut3DOp::Lut3DArray::Lut3DArray(BitDepth outDepth, unsigned int dimension)
{
    resize(dimension, kTableComponents);
    _fill(outDepth);
}

unsigned int Lut3DOp::Lut3DArray::getNumValues() const
{
    return getDimension() * getDimension() * getDimension() * getMaxColorComponents();
}

void Lut3DOp::Lut3DArray::_fill(BitDepth outDepth)
{
    everyValue(getValues(), getDimension(), outDepth,
               [](float& value, float identity)
               {
                   value = identity;
                   return true;
               });
}

bool Lut3DOp::Lut3DArray::isIdentity(BitDepth outDepth) const
{
    return everyValue(getValues(), getDimension(), outDepth,
                      [](float value, float identity) { return !(std::abs(value - identity) > kIdentityTolerance); });
}

Lut3DOp::Lut3DOp(unsigned int dimension)
    : Lut3DOp(Tavrin::BIT_DEPTH_32f, Tavrin::BIT_DEPTH_32f, {}, {}, {}, InterpolationAlgo::Default, dimension)
{
}

Lut3DOp::Lut3DOp(BitDepth in, BitDepth out, std::string const& id, std::string const& name, Descriptions const& descriptions,
                 InterpolationAlgo interpolation, unsigned int dimension)
    : TypedOp(in, out, id, name, descriptions), m_interpolation(interpolation), m_array(out, dimension)
{
}

Lut3DOp::InterpolationAlgo Lut3DOp::getInterpolation(char const* name)
{
    return kInterpolations.find(name).value_or(InterpolationAlgo::Default);
}

char const* Lut3DOp::getInterpolationName(InterpolationAlgo interpolation)
{
    return kInterpolations.nameOf(interpolation, "default");
}

void Lut3DOp::setOutputBitDepth(BitDepth depth)
{
    float const factor = depthRatio(depth, getOutputBitDepth());
    Op::setOutputBitDepth(depth);
    if (std::abs(factor - 1.0F) > kFactorTolerance)
        m_array.scale(factor);
}

void Lut3DOp::validate() const
{
    Op::validate();
    m_indexMapping.validate();
    validateTable(*this, m_array);
    if (m_array.getNumColorComponents() != kTableComponents)
        throw failure(ErrorIds::kWrongColorComponents, Module::kTransform, getOpTypeName(), getMeaningfullIdentifier());
    if (m_array.getDimension() > maxSupportedDimension)
        throw failure(ErrorIds::kLut3DTooLarge, Module::kLut3D, m_array.getDimension(), maxSupportedDimension);
}

bool Lut3DOp::isIdentity() const
{
    return m_array.isIdentity(getOutputBitDepth());
}

bool Lut3DOp::operator==(Op const& other) const
{
    if (this == &other)
        return true;
    if (getOpType() != other.getOpType() || !Op::operator==(other))
        return false;
    auto const& lut = static_cast<Lut3DOp const&>(other);
    return m_interpolation == lut.m_interpolation && m_array == lut.m_array && m_indexMapping == lut.m_indexMapping;
}

} // namespace Color
