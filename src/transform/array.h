// The values of a table-like operator.
#ifndef TAVRIN_TRANSFORM_ARRAY_H
#define TAVRIN_TRANSFORM_ARRAY_H

#include <vector>

namespace Color
{

// A derived class decides how dimension and component count make up the number of values.
class Array
{
public:
    using Values = std::vector<float>;

    Array() = default;
    Array(Array const&) = default;
    Array& operator=(Array const&) = default;
    virtual ~Array() = default;

    virtual unsigned int getNumValues() const = 0;
    // Throws when the array is empty or holds a wrong number of values.
    virtual void validate() const;

    unsigned int getDimension() const { return m_dimension; }
    unsigned int getNumColorComponents() const { return m_numColorComponents; }
    unsigned int getMaxColorComponents() const { return 3; }
    Values const& getValues() const { return m_values; }
    Values& getValues() { return m_values; }
    // Unchecked.
    float get(unsigned int index) const { return m_values[index]; }
    void set(unsigned int index, float value) { m_values[index] = value; }

    // Growth fills with zeros, shrinking cuts the tail.
    void setDimension(unsigned int dimension);
    void setNumColorComponents(unsigned int components);
    void resize(unsigned int dimension, unsigned int components);
    // Multiplies every value.
    void scale(float factor);

    // Dimension and values, as numbers; the component count plays no part.
    bool operator==(Array const& other) const;

private:
    unsigned int m_dimension = 0;
    unsigned int m_numColorComponents = 0;
    Values m_values;
};

} // namespace Color

#endif
