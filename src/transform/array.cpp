// The values of a table-like operator.
#include "transform/array.h"

#include "utils/errorMessage.h"

namespace Color
{

void Array::validate() const
{
    if (m_dimension == 0)
        throw failure(ErrorIds::kArrayEmpty, Module::kTransform);
    if (m_values.size() != getNumValues())
        throw failure(ErrorIds::kArrayIllegal, Module::kTransform);
}

void Array::setDimension(unsigned int dimension)
{
    if (dimension != m_dimension)
        resize(dimension, m_numColorComponents);
}

void Array::setNumColorComponents(unsigned int components)
{
    if (components != m_numColorComponents)
        resize(m_dimension, components);
}

void Array::resize(unsigned int dimension, unsigned int components)
{
    m_dimension = dimension;
    m_numColorComponents = components;
    m_values.resize(getNumValues());
}

void Array::scale(float factor)
{
    for (float& value : m_values)
        value *= factor;
}

bool Array::operator==(Array const& other) const
{
    return m_dimension == other.m_dimension && m_values == other.m_values;
}

} // namespace Color
