// 1D and 3D tables in several depths, the inverse, and the peers that do the same work: Little CMS with a device link of the same
// table.
#include "frame.h"
#include "tables.h"

#include <lcms2.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <memory>
#include <vector>

namespace Bench
{

float curve(double x)
{
    return static_cast<float>(std::pow(x, 1.0 / 2.2));
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

namespace
{

using Tavrin::PixelFormat;

constexpr PixelFormat kFormats[] = {Tavrin::PF_RGBA_8i, Tavrin::PF_RGBA_16i, Tavrin::PF_RGBA_16f, Tavrin::PF_RGBA_32f};

// With gain, each column is a curve of its own.
Tavrin::TransformPtr table1D(unsigned int rows, float gain = 1.0F)
{
    std::vector<float> columns[3];
    for (unsigned int i = 0; i < rows; ++i)
    {
        float value = curve(i / (rows - 1.0));
        for (std::vector<float>& column : columns)
        {
            column.push_back(value);
            value *= gain;
        }
    }
    Tavrin::TransformPtr transform;
    Tavrin::Create1DLutTransformFromFloat(Tavrin::BIT_DEPTH_32f, Tavrin::BIT_DEPTH_32f, rows, columns[0].data(), columns[1].data(),
                                          columns[2].data(), Tavrin::HALF_FLAGS_NONE, transform);
    return transform;
}

// A row for every half, as a fast inverse is sampled.
Tavrin::TransformPtr halfDomain()
{
    std::vector<float> column(65536);
    for (unsigned int i = 0; i < column.size(); ++i)
        column[i] = static_cast<float>(i) / 65535.0F;
    Tavrin::TransformPtr transform;
    Tavrin::Create1DLutTransformFromFloat(Tavrin::BIT_DEPTH_32f, Tavrin::BIT_DEPTH_32f, 65536, column.data(), column.data(),
                                          column.data(), Tavrin::HALF_FLAGS_INPUT_HALF_DOMAIN, transform);
    return transform;
}

std::string numbers(std::vector<float> const& values, unsigned int perLine)
{
    std::string text;
    char number[32];
    for (std::size_t i = 0; i < values.size(); ++i)
    {
        std::snprintf(number, sizeof number, "%.7g%c", values[i], (i + 1) % perLine == 0 ? '\n' : ' ');
        text += number;
    }
    return text;
}

// Documents name an interpolation; the factories do not.
Tavrin::TransformPtr table3D(unsigned int points, char const* interpolation)
{
    std::string const n = std::to_string(points);
    return fromDocument(R"(<ProcessList version="1.5" id="grid"><LUT3D inBitDepth="32f" outBitDepth="32f" interpolation=")" +
                        std::string(interpolation) + R"("><Array dim=")" + n + " " + n + " " + n + " 3\">\n" +
                        numbers(grid(points), 3) + "</Array></LUT3D></ProcessList>");
}

Tavrin::TransformPtr inverse1D(unsigned int rows)
{
    std::vector<float> column(rows);
    for (unsigned int i = 0; i < rows; ++i)
        column[i] = curve(i / (rows - 1.0));
    return fromDocument(R"(<ProcessList version="1.5" id="inverse"><InverseLUT1D inBitDepth="32f" outBitDepth="32f"><Array dim=")" +
                        std::to_string(rows) + " 1\">\n" + numbers(column, 1) + "</Array></InverseLUT1D></ProcessList>");
}

// ---------------------------------------------------------------- Little CMS

struct DeleteTransform
{
    void operator()(void* transform) const { cmsDeleteTransform(transform); }
};

cmsInt32Number sampleLook(cmsUInt16Number const in[], cmsUInt16Number out[], void*)
{
    float values[3];
    lookAt(in[0] / 65535.0, in[1] / 65535.0, in[2] / 65535.0, values);
    for (int c = 0; c < 3; ++c)
        out[c] = static_cast<cmsUInt16Number>(values[c] * 65535.0F + 0.5F);
    return 1;
}

// A device link that holds the grid; the library interpolates it in tetrahedra.
std::shared_ptr<void> deviceLink(unsigned int points, cmsUInt32Number format)
{
    cmsHPROFILE const profile = cmsCreateProfilePlaceholder(nullptr);
    cmsSetProfileVersion(profile, 4.3);
    cmsSetDeviceClass(profile, cmsSigLinkClass);
    cmsSetColorSpace(profile, cmsSigRgbData);
    cmsSetPCS(profile, cmsSigRgbData);
    cmsPipeline* const pipeline = cmsPipelineAlloc(nullptr, 3, 3);
    cmsStage* const stage = cmsStageAllocCLut16bit(nullptr, points, 3, 3, nullptr);
    cmsStageSampleCLut16bit(stage, sampleLook, nullptr, 0);
    cmsPipelineInsertStage(pipeline, cmsAT_BEGIN, stage);
    cmsWriteTag(profile, cmsSigAToB0Tag, pipeline);
    cmsPipelineFree(pipeline);
    cmsHTRANSFORM const transform = cmsCreateTransform(profile, format, nullptr, format, INTENT_PERCEPTUAL,
                                                       cmsFLAGS_NOCACHE | cmsFLAGS_COPY_ALPHA | cmsFLAGS_NOOPTIMIZE);
    cmsCloseProfile(profile);
    return {transform, DeleteTransform()};
}

void addLittleCms(unsigned int points, PixelFormat format, cmsUInt32Number cmsFormat)
{
    auto const link = std::make_shared<std::shared_ptr<void>>();
    addWork(
        "table/3D " + std::to_string(points) + " tetrahedral, Little CMS", format, [=] { *link = deviceLink(points, cmsFormat); },
        [=] { cmsDoTransform(link->get(), sourceFrame(), destinationFrame(), static_cast<cmsUInt32Number>(kPixels)); });
}

} // namespace

void addTables()
{
    for (PixelFormat format : kFormats)
    {
        for (unsigned int rows : {1024U, 4096U, 65536U})
            addRender("table/1D " + std::to_string(rows), table1D(rows), format, format);
        addRender("table/1D 4096, three curves", table1D(4096, 0.9F), format, format);
        for (unsigned int points : {17U, 33U, 65U})
        {
            addRender("table/3D " + std::to_string(points) + " tetrahedral", table3D(points, "tetrahedral"), format, format);
            addRender("table/3D " + std::to_string(points) + " trilinear", table3D(points, "trilinear"), format, format);
        }
    }
    addRender("table/1D half domain, as a fast inverse is", halfDomain(), Tavrin::PF_RGBA_32f, Tavrin::PF_RGBA_32f);
    addRender("table/inverse 1D 4096 exact", inverse1D(4096), Tavrin::PF_RGBA_32f, Tavrin::PF_RGBA_32f);
    addRender("table/inverse 1D 65536 exact", inverse1D(65536), Tavrin::PF_RGBA_32f, Tavrin::PF_RGBA_32f);
    addLittleCms(33, Tavrin::PF_RGBA_8i, TYPE_RGBA_8);
    addLittleCms(33, Tavrin::PF_RGBA_16i, TYPE_RGBA_16);
}

} // namespace Bench
