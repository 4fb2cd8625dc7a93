// Reserved room beside a table for a remapping of its index.
#ifndef TAVRIN_TRANSFORM_INDEX_MAPPING_H
#define TAVRIN_TRANSFORM_INDEX_MAPPING_H

#include <array>
#include <utility>
#include <vector>

namespace Color
{

// A file can't state one yet and nothing fills it; it takes part in the comparison of tables.
class IndexMapping
{
public:
    static constexpr unsigned int kComponents = 3;
    using Indices = std::vector<std::pair<float, float>>;

    explicit IndexMapping(unsigned int dimension) : m_dimension(dimension) {}
    IndexMapping(IndexMapping const&) = default;
    IndexMapping& operator=(IndexMapping const&) = default;
    virtual ~IndexMapping() = default;

    unsigned int getDimension() const { return m_dimension; }
    unsigned int getComponents() const { return kComponents; }
    // One list per component.
    std::array<Indices, kComponents> const& getIndices() const { return m_indices; }
    std::array<Indices, kComponents>& getIndices() { return m_indices; }

    // Everything is valid.
    void validate() const {}

    bool operator==(IndexMapping const& other) const { return m_dimension == other.m_dimension && m_indices == other.m_indices; }

private:
    unsigned int m_dimension;
    std::array<Indices, kComponents> m_indices;
};

} // namespace Color

#endif
