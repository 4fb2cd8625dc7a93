// The element <LUT1D>, and what it shares with <InverseLUT1D>.
#include "xml/lut1DElt.h"

#include "xml/ctfVocabulary.h"
#include "xml/xmlReaderAttributes.h"

#include <algorithm>

namespace Color::Xml::Reader
{

namespace
{

constexpr unsigned int kColumns = 3;

std::string rowsByColumns(Array const& array)
{
    return std::to_string(array.getDimension()) + "x" + std::to_string(array.getNumColorComponents());
}

Lut1DOp& tableOf(OpElt const& element)
{
    return static_cast<Lut1DOp&>(*element.getOp());
}

} // namespace

void BaseLut1DElt::start(char const** attributes)
{
    OpElt::start(attributes);
    AttributeReader reader(*this);
    addRules(reader);
    reader.read(attributes);
}

void BaseLut1DElt::addRules(AttributeReader& reader)
{
    Lut1DOp& op = tableOf(*this);
    reader.knownName(
        ATTR_INTERPOLATION, FRIENDLY_ATTR_INTERPOLATION, [](char const* name) { return Lut1DOp::getInterpolation(name); },
        [&op](Lut1DOp::InterpolationAlgo interpolation) { op.setInterpolation(interpolation); });
    reader.word(ATTR_HALF_DOMAIN, "true", ErrorIds::kHalfDomainAttributeIllegal, [&op] { op.setInputHalfDomain(true); });
    reader.word(ATTR_RAW_HALFS, "true", ErrorIds::kRawHalfsAttributeIllegal, [&op] { op.setOutputRawHalfs(true); });
}

Array* BaseLut1DElt::updateDimension(std::vector<unsigned int> const& dimensions)
{
    if (dimensions.size() != 2 || dimensions[0] > Lut1DOp::kMaxDimension || (dimensions[1] != 1 && dimensions[1] != kColumns))
        return nullptr;
    Array& array = tableOf(*this).getArray();
    array.resize(dimensions[0], dimensions[1]);
    return &array;
}

void BaseLut1DElt::finalize(unsigned int valuesRead)
{
    Array const& array = tableOf(*this).getArray();
    if (array.getNumColorComponents() == 1 && valuesRead == array.getDimension())
        _spreadColumn();
    else
        requireValues(*this, valuesRead, array.getNumValues(), rowsByColumns(array));
    array.validate();
    setCompleted(true);
}

void BaseLut1DElt::_spreadColumn()
{
    Array& array = tableOf(*this).getArray();
    // From the end, since the column lies where the first rows will be.
    for (unsigned int row = array.getDimension(); row-- > 0;)
        std::fill_n(&array.getValues()[row * kColumns], kColumns, float(array.get(row)));
}

Lut1DElt::Lut1DElt() : BaseLut1DElt(std::make_unique<Lut1DOp>(2U)) {}

std::string Lut1DElt::getDimensionText(Array const& array) const
{
    return rowsByColumns(array);
}

void Lut1DElt::finalize(unsigned int valuesRead)
{
    if (op().isOutputRawHalfs())
    {
        for (float& value : op().getArray().getValues())
            value = Lut1DOp::rawHalfToFloat(value);
    }
    BaseLut1DElt::finalize(valuesRead);
}

void Lut1DElt_1_4::addRules(AttributeReader& reader)
{
    Lut1DElt::addRules(reader);
    reader.word(ATTR_HUE_ADJUST, Lut1DOp::getHueAdjustName(Lut1DOp::HueAdjust::Dw3), ErrorIds::kHueAdjustAttributeIllegal,
                [this] { op().setHueAdjust(Lut1DOp::HueAdjust::Dw3); });
}

} // namespace Color::Xml::Reader
