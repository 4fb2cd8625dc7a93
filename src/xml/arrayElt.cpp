// The table of values of an operator.
#include "xml/arrayElt.h"

#include "xml/ctfVocabulary.h"
#include "xml/xmlReaderAttributes.h"
#include "xml/xmlReaderLimits.h"
#include "xml/xmlReaderNumbers.h"

#include <algorithm>
#include <cstdint>

namespace Color::Xml::Reader
{

namespace
{

// Whether the product stays within the limit, found out without overflow.
bool isWithinLimit(std::vector<unsigned int> const& dimensions)
{
    std::uint64_t product = 1;
    return std::all_of(dimensions.begin(), dimensions.end(),
                       [&](unsigned int dimension)
                       {
                           product *= dimension; // Below 2^24 before, so below 2^56 now.
                           return product <= Limits::kArrayValues;
                       });
}

} // namespace

std::string ArrayMgt::getDimensionText(Array const& array) const
{
    std::string const dimension = std::to_string(array.getDimension());
    return dimension + "x" + dimension;
}

void requireValues(Element const& opElement, unsigned int found, unsigned int expected, std::string const& dimensionText)
{
    if (found != expected)
    {
        throw opElement.failure(ErrorIds::kArrayValuesMissing, dimensionText, found, opElement.getTypeName());
    }
}

void ArrayElt::start(char const** attributes)
{
    AttributeReader reader(*this);
    reader.text(ATTR_DIMENSION, [this](char const* value) { _setDimensions(value); }).required(ATTR_DIMENSION);
    reader.read(attributes);
}

void ArrayElt::_setDimensions(char const* text)
{
    auto const illegal = [&] { return failure(ErrorIds::kArrayDimensionsIllegal, getTypeName(), truncateString(text)); };
    std::vector<unsigned int> dimensions;
    try
    {
        dimensions = getNumbers<unsigned int>(text);
    }
    catch (Exception const&)
    {
        throw illegal();
    }
    if (dimensions.size() < 2 || !isWithinLimit(dimensions))
    {
        throw illegal();
    }
    m_array = parentAs<ArrayMgt>().updateDimension(dimensions);
    if (!m_array)
    {
        throw illegal();
    }
    m_count = m_array->getNumValues();
    m_position = 0;
}

void ArrayElt::setRawData(std::string const& text, unsigned int line)
{
    for (std::size_t position = findNextTokenStart(text, 0); position != std::string::npos;)
    {
        float value = 0.0F;
        try
        {
            value = getNextNumber<float>(text, position);
        }
        catch (Exception const&)
        {
            throw failureAt(ErrorIds::kValuesIllegal, line, truncateString(text), getTypeName());
        }
        _append(value, line);
    }
}

void ArrayElt::_append(float value, unsigned int line)
{
    if (m_position >= m_count)
    {
        throw failureAt(ErrorIds::kArrayValuesTooMany, line, parentAs<ArrayMgt>().getDimensionText(*m_array), getTypeName());
    }
    m_array->set(m_position, value);
    ++m_position;
}

void ArrayElt::end()
{
    parentAs<ArrayMgt>().finalize(m_position);
}

} // namespace Color::Xml::Reader
