// The tables that are measured, and transforms made of documents.
#include "shared/tables.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <iterator>

namespace Bench
{

namespace
{

// As many digits as a float needs to come back as it was.
std::string numbers(std::vector<float> const& values, unsigned int perLine)
{
    std::string text;
    for (std::size_t i = 0; i < values.size(); ++i)
        fmt::format_to(std::back_inserter(text), "{:.9g}{}", values[i], (i + 1) % perLine == 0 ? '\n' : ' ');
    return text;
}

} // namespace

float curve(double x)
{
    return static_cast<float>(std::pow(x, 1.0 / 2.2));
}

std::vector<float> column(unsigned int rows)
{
    std::vector<float> values(rows);
    for (unsigned int i = 0; i < rows; ++i)
        values[i] = curve(i / (rows - 1.0));
    return values;
}

void lookAt(double r, double g, double b, float* out)
{
    double const luma = 0.2126 * r + 0.7152 * g + 0.0722 * b;
    out[0] = curve(std::clamp(luma + 1.1 * (r - luma), 0.0, 1.0));
    out[1] = curve(std::clamp(luma + 1.0 * (g - luma), 0.0, 1.0));
    out[2] = curve(std::clamp(luma + 0.9 * (b - luma), 0.0, 1.0));
}

std::vector<float> grid(unsigned int points)
{
    std::vector<float> values;
    values.reserve(std::size_t{3} * points * points * points);
    for (unsigned int r = 0; r < points; ++r)
    {
        for (unsigned int g = 0; g < points; ++g)
        {
            for (unsigned int b = 0; b < points; ++b)
            {
                float out[3];
                lookAt(r / (points - 1.0), g / (points - 1.0), b / (points - 1.0), out);
                values.insert(values.end(), out, out + 3);
            }
        }
    }
    return values;
}

std::string table1DElement(std::string const& tag, unsigned int rows)
{
    return fmt::format("<{0} inBitDepth=\"32f\" outBitDepth=\"32f\"><Array dim=\"{1} 1\">\n{2}</Array></{0}>\n", tag, rows,
                       numbers(column(rows), 1));
}

std::string table3DElement(unsigned int points, std::string const& interpolation)
{
    return fmt::format("<LUT3D inBitDepth=\"32f\" outBitDepth=\"32f\" interpolation=\"{0}\"><Array dim=\"{1} {1} {1} 3\">\n{2}"
                       "</Array></LUT3D>\n",
                       interpolation, points, numbers(grid(points), 3));
}

void check(Tavrin::TavStatus const& status)
{
    if (status)
        return;
    std::fprintf(stderr, "%s\n", status.getErrorMessage());
    std::exit(1);
}

Tavrin::TransformPtr fromElements(std::string const& elements)
{
    std::string const document = "<ProcessList version=\"1.5\" id=\"bench\">\n" + elements + "</ProcessList>";
    Tavrin::TransformPtr transform;
    check(Tavrin::loadColorTransformFromBuffer(document.c_str(), transform));
    return transform;
}

Tavrin::TransformPtr table1D(unsigned int rows)
{
    return fromElements(table1DElement("LUT1D", rows));
}

Tavrin::TransformPtr table3D(unsigned int points, std::string const& interpolation)
{
    return fromElements(table3DElement(points, interpolation));
}

} // namespace Bench
