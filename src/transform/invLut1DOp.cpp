// The inverse of a one-dimensional table: how the forward table becomes one that can be searched.
#include "transform/invLut1DOp.h"

#include "transform/opList.h"
#include "utils/errorMessage.h"
#include "utils/nameTable.h"

namespace Color
{

namespace
{

using InvStyle = InvLut1DOp::InvStyle;

constexpr Utils::NameTable<InvStyle, 2> kInvStyles{{{{InvStyle::Exact, "exact"}, {InvStyle::Fast, "fast"}}}};

// One component of the rows of a table.
template <class Values>
class Column
{
public:
    Column(Values& values, unsigned int components, unsigned int component)
        : m_values(values), m_components(components), m_component(component)
    {
    }

    auto& operator[](unsigned int row) const { return m_values[row * m_components + m_component]; }

private:
    Values& m_values;
    unsigned int m_components;
    unsigned int m_component;
};

using ConstColumn = Column<Array::Values const>;
using MutableColumn = Column<Array::Values>;

// A value that runs against the direction is replaced by its predecessor, so that a reversal becomes a flat stretch.
void makeMonotonic(MutableColumn column, unsigned int dimension, bool isIncreasing)
{
    float previous = column[0];
    for (unsigned int row = 1; row < dimension; ++row)
    {
        if ((column[row] > previous) != isIncreasing)
            column[row] = previous;
        else
            previous = column[row];
    }
}

// The first row of the flat stretch at the end. Nothing equals a NaN, which so ends the walk.
unsigned int findEndDomain(MutableColumn column, unsigned int dimension)
{
    unsigned int row = dimension - 1;
    while (row > 0 && column[row - 1] == column[dimension - 1])
        --row;
    return row;
}

// The last row of the flat stretch at the beginning.
unsigned int findStartDomain(MutableColumn column, unsigned int endDomain)
{
    unsigned int row = 0;
    while (row < endDomain && column[row + 1] == column[0])
        ++row;
    return row;
}

} // namespace

InvLut1DOp::InvLut1DOp() : TypedOp(2U) {}

InvLut1DOp::InvLut1DOp(Lut1DOp const& forward) : InvLut1DOp()
{
    Lut1DOp::operator=(forward);
    // The values keep their scale, which is now that of the input.
    Op::setInputBitDepth(forward.getOutputBitDepth());
    Op::setOutputBitDepth(forward.getInputBitDepth()); // NOLINT(bugprone-parent-virtual-call): the table's would scale the values.
    initializeFromLut1D();
}

InvLut1DOp::InvStyle InvLut1DOp::getInvStyle(char const* name)
{
    if (name == nullptr || *name == '\0')
        throw failure(ErrorIds::kInvStyleUnrecognized, Module::kLut1D);
    auto const style = kInvStyles.findIgnoringCase(name);
    if (!style)
        throw failure(ErrorIds::kInvStyleInvalid, Module::kLut1D, name);
    return *style;
}

char const* InvLut1DOp::getInvStyleName(InvStyle style)
{
    return kInvStyles.nameOf(style, "");
}

void InvLut1DOp::setInputBitDepth(BitDepth depth)
{
    float const factor = depthRatio(depth, getInputBitDepth());
    Op::setInputBitDepth(depth);
    if (factor != 1.0F)
        getArray().scale(factor);
}

void InvLut1DOp::setOutputBitDepth(BitDepth depth)
{
    Op::setOutputBitDepth(depth);
}

void InvLut1DOp::inverse(OpList& list) const
{
    auto forward = std::make_unique<Lut1DOp>(static_cast<Lut1DOp const&>(*this));
    forward->Op::setInputBitDepth(getOutputBitDepth());
    forward->Op::setOutputBitDepth(getInputBitDepth());
    list.append(forward.release());
}

bool InvLut1DOp::hasExtendedDomain() const
{
    float const minimum = Tavrin::getBitDepthMinValue(getInputBitDepth());
    float const maximum = Tavrin::getBitDepthMaxValue(getInputBitDepth());
    Lut3by1DArray const& array = getArray();
    if (array.getDimension() == 0)
        return false;
    for (unsigned int component = 0; component < array.getNumColorComponents(); ++component)
    {
        ConstColumn const column(array.getValues(), array.getMaxColorComponents(), component);
        float const first = column[0];
        float const last = column[array.getDimension() - 1];
        bool const isIncreasing = m_componentProperties[component].isIncreasing;
        float const lowest = isIncreasing ? first : last;
        float const highest = isIncreasing ? last : first;
        if (minimum > lowest || highest > maximum)
            return true;
    }
    return false;
}

void InvLut1DOp::initializeFromLut1D()
{
    if (isInputHalfDomain())
        throw failure(ErrorIds::kHalfDomainInverse, Module::kLut1D);
    _prepareArray();
}

void InvLut1DOp::_prepareArray()
{
    unsigned int const components = getArray().getNumColorComponents();
    for (unsigned int component = 0; component < components; ++component)
        m_componentProperties[component] = _prepareComponent(component);
    if (components == 1)
        m_componentProperties.fill(ComponentProperties(m_componentProperties[0]));
}

InvLut1DOp::ComponentProperties InvLut1DOp::_prepareComponent(unsigned int component)
{
    ComponentProperties properties;
    unsigned int const dimension = getArray().getDimension();
    if (dimension == 0)
        return properties;
    MutableColumn const column(getArray().getValues(), getArray().getMaxColorComponents(), component);
    properties.isIncreasing = column[dimension - 1] > column[0];
    makeMonotonic(column, dimension, properties.isIncreasing);
    properties.endDomain = findEndDomain(column, dimension);
    properties.startDomain = findStartDomain(column, properties.endDomain);
    return properties;
}

} // namespace Color
