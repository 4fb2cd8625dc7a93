// Tables of a smooth curve, for benchmarks that do not care what is in a table.
#include "curves.h"

#include <cmath>
#include <vector>

namespace Bench
{

namespace
{

float curve(unsigned int index, unsigned int last)
{
    return static_cast<float>(std::pow(static_cast<double>(index) / last, 1.2));
}

} // namespace

Tavrin::TransformPtr curveTable(unsigned int rows)
{
    std::vector<float> column(rows);
    for (unsigned int i = 0; i < rows; ++i)
        column[i] = curve(i, rows - 1);
    Tavrin::TransformPtr transform;
    Tavrin::Create1DLutTransformFromFloat(Tavrin::BIT_DEPTH_32f, Tavrin::BIT_DEPTH_32f, rows, column.data(), column.data(),
                                          column.data(), Tavrin::HALF_FLAGS_NONE, transform);
    return transform;
}

Tavrin::TransformPtr curveGrid(unsigned int points)
{
    std::vector<float> values;
    for (unsigned int i = 0; i < points * points * points; ++i)
    {
        for (unsigned int index : {i / points / points, i / points % points, i % points})
            values.push_back(curve(index, points - 1));
    }
    Tavrin::TransformPtr transform;
    Tavrin::Create3DLutTransformFromFloat(Tavrin::BIT_DEPTH_32f, Tavrin::BIT_DEPTH_32f, points, values.data(), transform);
    return transform;
}

} // namespace Bench
