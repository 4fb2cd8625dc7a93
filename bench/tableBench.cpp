// 1D and 3D tables in several depths, and the inverse.
#include "cases.h"

namespace Bench
{

namespace
{

using Tavrin::PixelFormat;

constexpr PixelFormat kFormats[] = {Tavrin::PF_RGBA_8i, Tavrin::PF_RGBA_16i, Tavrin::PF_RGBA_16f, Tavrin::PF_RGBA_32f};

// Each column is a curve of its own, where other tables have one for all channels.
Tavrin::TransformPtr threeCurves(unsigned int rows)
{
    std::vector<float> columns[3];
    float gain = 1.0F;
    for (std::vector<float>& values : columns)
    {
        values = column(rows);
        for (float& value : values)
            value *= gain;
        gain *= 0.9F;
    }
    Tavrin::TransformPtr transform;
    check(Tavrin::Create1DLutTransformFromFloat(Tavrin::BIT_DEPTH_32f, Tavrin::BIT_DEPTH_32f, rows, columns[0].data(),
                                                columns[1].data(), columns[2].data(), Tavrin::HALF_FLAGS_NONE, transform));
    return transform;
}

// A row for every half, as a fast inverse is sampled.
Tavrin::TransformPtr halfDomain()
{
    std::vector<float> values(65536);
    for (unsigned int i = 0; i < values.size(); ++i)
        values[i] = static_cast<float>(i) / 65535.0F;
    Tavrin::TransformPtr transform;
    check(Tavrin::Create1DLutTransformFromFloat(Tavrin::BIT_DEPTH_32f, Tavrin::BIT_DEPTH_32f, 65536, values.data(), values.data(),
                                                values.data(), Tavrin::HALF_FLAGS_INPUT_HALF_DOMAIN, transform));
    return transform;
}

Tavrin::TransformPtr inverse1D(unsigned int rows)
{
    return fromElements(table1DElement("InverseLUT1D", rows));
}

} // namespace

void addTables()
{
    for (PixelFormat format : kFormats)
    {
        for (unsigned int rows : {1024U, 4096U, 65536U})
            addRender("table/1D " + std::to_string(rows), table1D(rows), format, format);
        addRender("table/1D 4096, three curves", threeCurves(4096), format, format);
        for (unsigned int points : {17U, 33U, 65U})
        {
            for (char const* interpolation : {"tetrahedral", "trilinear"})
                addRender("table/3D " + std::to_string(points) + " " + interpolation, table3D(points, interpolation), format,
                          format);
        }
    }
    addRender("table/1D half domain, as a fast inverse is", halfDomain(), Tavrin::PF_RGBA_32f, Tavrin::PF_RGBA_32f);
    addRender("table/inverse 1D 4096 exact", inverse1D(4096), Tavrin::PF_RGBA_32f, Tavrin::PF_RGBA_32f);
    addRender("table/inverse 1D 65536 exact", inverse1D(65536), Tavrin::PF_RGBA_32f, Tavrin::PF_RGBA_32f);
}

} // namespace Bench
