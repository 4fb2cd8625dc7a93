// The element <LUT3D>.
#include "xml/lut3DElt.h"

#include "xml/ctfVocabulary.h"
#include "xml/xmlReaderAttributes.h"

namespace Color::Xml::Reader
{

Lut3DElt::Lut3DElt() : TypedOpElt(2U) {}

void Lut3DElt::start(char const** attributes)
{
    OpElt::start(attributes);
    AttributeReader reader(*this);
    reader.knownName(
        ATTR_INTERPOLATION, FRIENDLY_ATTR_INTERPOLATION, [](char const* name) { return Lut3DOp::getInterpolation(name); },
        [this](Lut3DOp::InterpolationAlgo interpolation) { op().setInterpolation(interpolation); });
    reader.read(attributes);
}

Array* Lut3DElt::updateDimension(std::vector<unsigned int> const& dimensions)
{
    if (dimensions.size() != 4 || dimensions[0] != dimensions[1] || dimensions[1] != dimensions[2] || dimensions[3] != 3)
        return nullptr;
    // What the operator's validation would say, but before memory is taken for it.
    if (dimensions[2] > Lut3DOp::maxSupportedDimension)
        throw Color::failure(ErrorIds::kLut3DTooLarge, Module::kLut3D, dimensions[2], Lut3DOp::maxSupportedDimension);
    op().getArray().resize(dimensions[2], dimensions[3]);
    return &op().getArray();
}

void Lut3DElt::finalize(unsigned int valuesRead)
{
    Array const& array = op().getArray();
    requireValues(*this, valuesRead, array.getNumValues(), getDimensionText(array));
    array.validate();
    setCompleted(true);
}

std::string Lut3DElt::getDimensionText(Array const& array) const
{
    std::string const dimension = std::to_string(array.getDimension());
    return dimension + "x" + dimension + "x" + dimension + "x" + std::to_string(array.getNumColorComponents());
}

} // namespace Color::Xml::Reader
