// Gamut map, hue vector and dither.
#include "frame.h"

#include <zimg.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

namespace Bench
{

namespace
{

std::string document(std::string const& operators)
{
    return "<ProcessList version=\"1.5\" id=\"look\">" + operators + "</ProcessList>";
}

Tavrin::TransformPtr gamutMap()
{
    return fromDocument(document(R"(<GamutMap inBitDepth="32f" outBitDepth="32f" style="dw3"/>)"));
}

Tavrin::TransformPtr hueVector(std::string const& style)
{
    return fromDocument(document("<HueVector inBitDepth=\"32f\" outBitDepth=\"32f\" style=\"" + style +
                                 R"("><HueVecParams style="chroma" center="30" width="90" amount="1.5"/></HueVector>)"));
}

Tavrin::TransformPtr dither(Tavrin::BitDepth in, Tavrin::BitDepth out)
{
    Tavrin::TransformPtr transform;
    Tavrin::CreateDitherTransform(in, out, out, transform);
    return transform;
}

// Ordered dithering of 16-bit to 8-bit RGB by zimg, whose pictures are planar.
class ZimgDither
{
public:
    ZimgDither()
    {
        zimg_image_format const source = format(ZIMG_PIXEL_WORD, 16);
        zimg_image_format const target = format(ZIMG_PIXEL_BYTE, 8);
        zimg_graph_builder_params params;
        zimg_graph_builder_params_default(&params, ZIMG_API_VERSION);
        params.dither_type = ZIMG_DITHER_ORDERED;
        m_graph.reset(zimg_filter_graph_build(&source, &target, &params));
        std::size_t temporarySize = 0;
        if (m_graph == nullptr || zimg_filter_graph_get_tmp_size(m_graph.get(), &temporarySize) != ZIMG_ERROR_SUCCESS)
        {
            char message[256];
            zimg_get_last_error(message, sizeof message);
            std::fprintf(stderr, "zimg: %s\n", message);
            std::exit(1);
        }
        m_temporary.reset(std::aligned_alloc(64, (temporarySize + 63) / 64 * 64));
    }

    void run() const
    {
        zimg_image_buffer_const source = {ZIMG_API_VERSION, {}};
        zimg_image_buffer target = {ZIMG_API_VERSION, {}};
        for (unsigned int plane = 0; plane < 3; ++plane)
        {
            source.plane[plane] = {sourceFrame() + plane * kPixels * 2, std::ptrdiff_t{kWidth} * 2, ZIMG_BUFFER_MAX};
            target.plane[plane] = {destinationFrame() + plane * kPixels, kWidth, ZIMG_BUFFER_MAX};
        }
        zimg_filter_graph_process(m_graph.get(), &source, &target, m_temporary.get(), nullptr, nullptr, nullptr, nullptr);
    }

private:
    static zimg_image_format format(zimg_pixel_type_e type, unsigned int depth)
    {
        zimg_image_format format;
        zimg_image_format_default(&format, ZIMG_API_VERSION);
        format.width = kWidth;
        format.height = kHeight;
        format.pixel_type = type;
        format.depth = depth;
        format.color_family = ZIMG_COLOR_RGB;
        format.matrix_coefficients = ZIMG_MATRIX_RGB;
        format.pixel_range = ZIMG_RANGE_FULL;
        return format;
    }

    struct FreeGraph
    {
        void operator()(zimg_filter_graph* graph) const { zimg_filter_graph_free(graph); }
    };
    struct FreeMemory
    {
        void operator()(void* memory) const { std::free(memory); }
    };

    std::unique_ptr<zimg_filter_graph, FreeGraph> m_graph;
    std::unique_ptr<void, FreeMemory> m_temporary;
};

} // namespace

void addLooks()
{
    for (Placement placement : {Placement::Separate, Placement::InPlace})
    {
        addRender("look/gamut map", gamutMap(), Tavrin::PF_RGBA_32f, Tavrin::PF_RGBA_32f, placement);
        addRender("look/hue vector", hueVector("YCH_Fwd"), Tavrin::PF_RGBA_32f, Tavrin::PF_RGBA_32f, placement);
        addRender("look/hue vector reverse", hueVector("YCH_Rev"), Tavrin::PF_RGBA_32f, Tavrin::PF_RGBA_32f, placement);
    }
    addRender("look/gamut map", gamutMap(), Tavrin::PF_RGBA_16f, Tavrin::PF_RGBA_16f);
    addRender("look/hue vector", hueVector("YCH_Fwd"), Tavrin::PF_RGBA_16f, Tavrin::PF_RGBA_16f);
    addRender("look/dither", dither(Tavrin::BIT_DEPTH_16i, Tavrin::BIT_DEPTH_8i), Tavrin::PF_RGBA_16i, Tavrin::PF_RGBA_8i);
    addRender("look/dither", dither(Tavrin::BIT_DEPTH_16i, Tavrin::BIT_DEPTH_8i), Tavrin::PF_RGB_16i, Tavrin::PF_RGB_8i);
    addRender("look/dither", dither(Tavrin::BIT_DEPTH_16f, Tavrin::BIT_DEPTH_10i), Tavrin::PF_RGBA_16f, Tavrin::PF_RGB_10iP);
    auto const zimg = std::make_shared<ZimgDither>();
    addWork(
        "look/dither from 16i, planes, zimg", Tavrin::PF_RGB_8i, [] { fillSource(Tavrin::PF_RGB_16i); }, [zimg] { zimg->run(); });
}

} // namespace Bench
