// The element <Matrix>.
#include "xml/matrixElt.h"

#include <algorithm>
#include <iterator>

namespace Color::Xml::Reader
{

namespace
{

// The dim attributes of versions from 1.3. Until all values are there, the array is a square one of so many columns.
struct Layout
{
    unsigned int rows;
    unsigned int columns;
    unsigned int components;
};

constexpr Layout kLayouts[] = {{3, 3, 3}, {3, 4, 3}, {4, 4, 4}, {4, 5, 4}};

std::string toText(Layout const& layout)
{
    return std::to_string(layout.rows) + "x" + std::to_string(layout.columns) + "x" + std::to_string(layout.components);
}

} // namespace

Array* MatrixElt::updateDimension(std::vector<unsigned int> const& dimensions)
{
    if (dimensions.size() != 3 || dimensions[0] != dimensions[1] || dimensions[2] != 3)
    {
        return nullptr;
    }
    op().getArray().resize(dimensions[0], 3);
    return &op().getArray();
}

void MatrixElt::finalize(unsigned int valuesRead)
{
    MatrixOp::MatrixArray const& array = op().getArray();
    requireValues(*this, valuesRead, array.getNumValues(), getDimensionText(array));
    unsigned int const dimension = array.getDimension();
    if (dimension != 3 && dimension != 4)
    {
        throw Color::failure(ErrorIds::kArrayIllegal, Module::kXmlReader);
    }
    separateOffsets(3, dimension);
    complete();
}

void MatrixElt::separateOffsets(unsigned int rows, unsigned int columns)
{
    MatrixOp::MatrixArray& array = op().getArray();
    MatrixOp::Offsets& offsets = op().getOffsets();
    offsets = MatrixOp::Offsets();
    for (unsigned int row = 0; row < rows && rows < columns; ++row)
    {
        offsets[row] = array.get(row * columns + rows);
    }
    for (unsigned int row = 0; row < rows; ++row)
    {
        for (unsigned int column = 0; column < rows; ++column)
        {
            array.set(row * rows + column, array.get(row * columns + column));
        }
    }
    array.resize(rows, rows);
}

void MatrixElt::complete()
{
    setCompleted(true);
    op().getArray().validate();
}

Array* MatrixElt_1_3::updateDimension(std::vector<unsigned int> const& dimensions)
{
    auto const* const layout = std::find_if(std::begin(kLayouts), std::end(kLayouts),
                                            [&](Layout const& known) {
                                                return dimensions == std::vector{known.rows, known.columns, known.components};
                                            });
    if (layout == std::end(kLayouts))
    {
        return nullptr;
    }
    op().getArray().resize(layout->columns, layout->components);
    return &op().getArray();
}

void MatrixElt_1_3::finalize(unsigned int valuesRead)
{
    MatrixOp::MatrixArray const& array = op().getArray();
    auto const* const layout =
        std::find_if(std::begin(kLayouts), std::end(kLayouts),
                     [&](Layout const& known)
                     { return known.columns == array.getDimension() && known.components == array.getNumColorComponents(); });
    requireValues(*this, valuesRead, layout->rows * layout->columns, toText(*layout));
    separateOffsets(layout->rows, layout->columns);
    complete();
}

} // namespace Color::Xml::Reader
