// zimg as a peer: dither, changes of depth and a matrix on its planar pictures.
#include "frame.h"

#include <zimg.h>

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>

namespace Bench
{

namespace
{

// One side of a conversion: three planes of one type, in a frame of memory.
struct Planes
{
    zimg_pixel_type_e type;
    unsigned int depth;
    unsigned int bytes;
    zimg_matrix_coefficients_e matrix = ZIMG_MATRIX_RGB;
};

constexpr Planes kBytes = {ZIMG_PIXEL_BYTE, 8, 1};
constexpr Planes kWords = {ZIMG_PIXEL_WORD, 16, 2};
constexpr Planes kHalfs = {ZIMG_PIXEL_HALF, 16, 2};
constexpr Planes kFloats = {ZIMG_PIXEL_FLOAT, 32, 4};

zimg_image_format formatOf(Planes const& planes)
{
    zimg_image_format format;
    zimg_image_format_default(&format, ZIMG_API_VERSION);
    format.width = kWidth;
    format.height = kHeight;
    format.pixel_type = planes.type;
    format.depth = planes.depth;
    format.color_family = planes.matrix == ZIMG_MATRIX_RGB ? ZIMG_COLOR_RGB : ZIMG_COLOR_YUV;
    format.matrix_coefficients = planes.matrix;
    format.pixel_range = ZIMG_RANGE_FULL;
    return format;
}

class ZimgGraph
{
public:
    ZimgGraph(Planes const& in, Planes const& out, zimg_dither_type_e dither) : m_inBytes(in.bytes), m_outBytes(out.bytes)
    {
        zimg_image_format const source = formatOf(in);
        zimg_image_format const target = formatOf(out);
        zimg_graph_builder_params params;
        zimg_graph_builder_params_default(&params, ZIMG_API_VERSION);
        params.dither_type = dither;
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
            source.plane[plane] = {sourceFrame() + plane * kPixels * m_inBytes, std::ptrdiff_t{kWidth} * m_inBytes,
                                   ZIMG_BUFFER_MAX};
            target.plane[plane] = {destinationFrame() + plane * kPixels * m_outBytes, std::ptrdiff_t{kWidth} * m_outBytes,
                                   ZIMG_BUFFER_MAX};
        }
        zimg_filter_graph_process(m_graph.get(), &source, &target, m_temporary.get(), nullptr, nullptr, nullptr, nullptr);
    }

private:
    struct FreeGraph
    {
        void operator()(zimg_filter_graph* graph) const { zimg_filter_graph_free(graph); }
    };
    struct FreeMemory
    {
        void operator()(void* memory) const { std::free(memory); }
    };

    unsigned int m_inBytes;
    unsigned int m_outBytes;
    std::unique_ptr<zimg_filter_graph, FreeGraph> m_graph;
    std::unique_ptr<void, FreeMemory> m_temporary;
};

// The formats are those that hold as many bytes of the same type.
void add(std::string const& name, Tavrin::PixelFormat inFormat, Planes const& in, Tavrin::PixelFormat outFormat, Planes const& out,
         zimg_dither_type_e dither = ZIMG_DITHER_NONE)
{
    auto const graph = std::make_shared<ZimgGraph>(in, out, dither);
    std::string const from = inFormat == outFormat ? "" : " from " + formatNames(inFormat, inFormat);
    addWork(
        name + from + ", planes, zimg", outFormat, [inFormat] { fillSource(inFormat); }, [graph] { graph->run(); });
}

} // namespace

void addZimg()
{
    Planes luma = kFloats;
    luma.matrix = ZIMG_MATRIX_BT709;
    add("linear/matrix", Tavrin::PF_RGB_32f, kFloats, Tavrin::PF_RGB_32f, luma);
    add("linear/conversion", Tavrin::PF_RGB_8i, kBytes, Tavrin::PF_RGB_16f, kHalfs);
    add("linear/conversion", Tavrin::PF_RGB_16i, kWords, Tavrin::PF_RGB_32f, kFloats);
    add("linear/conversion", Tavrin::PF_RGB_32f, kFloats, Tavrin::PF_RGB_16i, kWords);
    add("look/dither", Tavrin::PF_RGB_16i, kWords, Tavrin::PF_RGB_8i, kBytes, ZIMG_DITHER_ORDERED);
}

} // namespace Bench
