// A one-dimensional table: identities, depth changes, validation, and the domain over which it is resampled. Arithmetic on values
// is single precision.
#include "transform/lut1DOp.h"

#include "transform/invLut1DOp.h"
#include "transform/opList.h"
#include "transform/tableOp.h"
#include "utils/errorMessage.h"
#include "utils/nameTable.h"
#include "utils/numerics.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace Color
{

namespace
{

using InterpolationAlgo = Lut1DOp::InterpolationAlgo;
using HueAdjust = Lut1DOp::HueAdjust;

constexpr Utils::NameTable<InterpolationAlgo, 2> kInterpolations{
    {{{InterpolationAlgo::Linear, "linear"}, {InterpolationAlgo::Cubic, "cubic"}}}};
constexpr Utils::NameTable<HueAdjust, 1> kHueAdjusts{{{{HueAdjust::Dw3, "dw3"}}}};

// How far a value may be off and still belong to an identity: as a part of the depth's range, and in units in the last place of a
// half.
constexpr float kIdentityTolerance = 1e-6F;
constexpr int kIdentityHalfTolerance = 1;

float halfDomainIdentity(unsigned int row, float maximum)
{
    return Foundation::Numerics::convertHalfBitsToFloat(static_cast<unsigned short>(row)) * maximum;
}

// Codes of an integer depth.
unsigned int codeCount(BitDepth depth)
{
    return static_cast<unsigned int>(Tavrin::getBitDepthValueRange(depth)) + 1;
}

// Calls the function with each row's number and its three values; false as soon as it says so.
template <class Values, class Function>
bool everyRow(Values& values, Function function)
{
    auto const rows = static_cast<unsigned int>(values.size() / kTableComponents);
    for (unsigned int row = 0; row < rows; ++row)
    {
        if (!function(row, &values[row * kTableComponents]))
            return false;
    }
    return true;
}

} // namespace

Lut1DOp::Lut3by1DArray::Lut3by1DArray(BitDepth outDepth, HalfFlags halfFlags, unsigned int dimension)
{
    resize(dimension, kTableComponents);
    _fill(halfFlags, outDepth);
}

Lut1DOp::Lut3by1DArray::Lut3by1DArray(BitDepth inDepth, BitDepth outDepth, HalfFlags halfFlags)
    : Lut3by1DArray(outDepth, halfFlags, getLutIdealSize(inDepth, halfFlags))
{
}

unsigned int Lut1DOp::Lut3by1DArray::getNumValues() const
{
    return getDimension() * getMaxColorComponents();
}

void Lut1DOp::Lut3by1DArray::_fill(HalfFlags halfFlags, BitDepth outDepth)
{
    bool const halfDomain = (halfFlags & Tavrin::HALF_FLAGS_INPUT_HALF_DOMAIN) != 0;
    float const step = getValueStepSize(outDepth, getDimension());
    float const maximum = Tavrin::getBitDepthMaxValue(outDepth);
    everyRow(getValues(),
             [&](unsigned int row, float* values)
             {
                 float const value = halfDomain ? halfDomainIdentity(row, maximum) : static_cast<float>(row) * step;
                 std::fill_n(values, kTableComponents, value);
                 return true;
             });
}

bool Lut1DOp::Lut3by1DArray::isIdentity(HalfFlags halfFlags, BitDepth outDepth) const
{
    return (halfFlags & Tavrin::HALF_FLAGS_INPUT_HALF_DOMAIN) != 0 ? _isHalfIdentity(outDepth) : _isLinearIdentity(outDepth);
}

bool Lut1DOp::Lut3by1DArray::_isHalfIdentity(BitDepth outDepth) const
{
    float const maximum = Tavrin::getBitDepthMaxValue(outDepth);
    return everyRow(getValues(),
                    [&](unsigned int row, float const* values)
                    {
                        half const expected(halfDomainIdentity(row, maximum));
                        return std::none_of(
                            values, values + kTableComponents,
                            [&](float value)
                            { return Foundation::Numerics::halfsDiffer(expected, half(value), kIdentityHalfTolerance); });
                    });
}

bool Lut1DOp::Lut3by1DArray::_isLinearIdentity(BitDepth outDepth) const
{
    float const step = getValueStepSize(outDepth, getDimension());
    float const tolerance = Tavrin::getBitDepthValueRange(outDepth) * kIdentityTolerance;
    return everyRow(getValues(),
                    [&](unsigned int row, float const* values)
                    {
                        float const expected = static_cast<float>(row) * step;
                        return std::none_of(values, values + kTableComponents,
                                            [&](float value) { return std::abs(value - expected) > tolerance; });
                    });
}

Lut1DOp::Lut1DOp(unsigned int dimension)
    : Lut1DOp(Tavrin::BIT_DEPTH_32f, Tavrin::BIT_DEPTH_32f, {}, {}, {}, InterpolationAlgo::Default, Tavrin::HALF_FLAGS_NONE,
              dimension)
{
}

Lut1DOp::Lut1DOp(BitDepth in, BitDepth out, std::string const& id, std::string const& name, Descriptions const& descriptions,
                 InterpolationAlgo interpolation, HalfFlags halfFlags)
    : Lut1DOp(in, out, id, name, descriptions, interpolation, halfFlags, getLutIdealSize(in, halfFlags))
{
}

Lut1DOp::Lut1DOp(BitDepth in, BitDepth out, std::string const& id, std::string const& name, Descriptions const& descriptions,
                 InterpolationAlgo interpolation, HalfFlags halfFlags, unsigned int dimension)
    : TypedOp(in, out, id, name, descriptions),
      m_interpolation(interpolation),
      m_array(out, halfFlags, dimension),
      m_halfFlags(halfFlags)
{
}

Lut1DOp::InterpolationAlgo Lut1DOp::getInterpolation(char const* name)
{
    return kInterpolations.find(name).value_or(InterpolationAlgo::Default);
}

char const* Lut1DOp::getInterpolationName(InterpolationAlgo interpolation)
{
    return kInterpolations.nameOf(interpolation, "default");
}

char const* Lut1DOp::getHueAdjustName(HueAdjust hueAdjust)
{
    return kHueAdjusts.nameOf(hueAdjust, "none");
}

unsigned int Lut1DOp::getLutIdealSize(BitDepth inDepth, HalfFlags halfFlags)
{
    bool const halfDomain = (halfFlags & Tavrin::HALF_FLAGS_INPUT_HALF_DOMAIN) != 0;
    return halfDomain || !Tavrin::isIntegerDepth(inDepth) ? kHalfDomainDimension : codeCount(inDepth);
}

float Lut1DOp::rawHalfToFloat(double number)
{
    // A magnitude from here on has no low bits left, and an integer conversion would not be defined for all of them.
    constexpr double kNoLowBits = 0x1p62;
    std::int64_t const integer = std::abs(number) < kNoLowBits ? static_cast<std::int64_t>(number) : 0;
    return Foundation::Numerics::convertHalfBitsToFloat(static_cast<unsigned short>(integer & 0xFFFF));
}

void Lut1DOp::setOutputBitDepth(BitDepth depth)
{
    float const factor = depthRatio(depth, getOutputBitDepth());
    Op::setOutputBitDepth(depth);
    if (factor != 1.0F)
        m_array.scale(factor);
}

void Lut1DOp::validate() const
{
    Op::validate();
    m_indexMapping.validate();
    validateTable(*this, m_array);
    if (isInputHalfDomain() && m_array.getDimension() != kHalfDomainDimension)
        throw failure(ErrorIds::kHalfDomainRows, Module::kLut1D, m_array.getDimension(), kHalfDomainDimension, getOpTypeName(),
                      getMeaningfullIdentifier());
}

bool Lut1DOp::isIdentity() const
{
    return m_array.isIdentity(m_halfFlags, getOutputBitDepth());
}

bool Lut1DOp::operator==(Op const& other) const
{
    if (this == &other)
        return true;
    if (getOpType() != other.getOpType() || !Op::operator==(other))
        return false;
    auto const& lut = static_cast<Lut1DOp const&>(other);
    return m_interpolation == lut.m_interpolation && m_array == lut.m_array && m_indexMapping == lut.m_indexMapping &&
           m_halfFlags == lut.m_halfFlags && m_hueAdjust == lut.m_hueAdjust;
}

void Lut1DOp::inverse(OpList& list) const
{
    // The middle channel's place depends on the other two, so the adjustment can't be undone channel by channel.
    if (m_hueAdjust != HueAdjust::None)
        throw failure(ErrorIds::kInverseNotSupported, Module::kTransform, "LUT1D with hue adjust");
    list.append(new InvLut1DOp(*this));
}

float Lut1DOp::getMinimumVersion() const
{
    return m_hueAdjust != HueAdjust::None ? 1.4F : Op::getMinimumVersion();
}

bool Lut1DOp::mayLookup(BitDepth depth) const
{
    if (isInputHalfDomain())
        return depth == Tavrin::BIT_DEPTH_16f;
    return Tavrin::isIntegerDepth(depth) && m_array.getDimension() == codeCount(depth);
}

std::unique_ptr<Lut1DOp> Lut1DOp::makeLookupDomain(BitDepth depth) const
{
    HalfFlags const flags = Tavrin::isFloatDepth(depth) ? Tavrin::HALF_FLAGS_INPUT_HALF_DOMAIN : Tavrin::HALF_FLAGS_NONE;
    return std::make_unique<Lut1DOp>(depth, depth, getId(), getName(), getDescriptions(), m_interpolation, flags);
}

} // namespace Color
