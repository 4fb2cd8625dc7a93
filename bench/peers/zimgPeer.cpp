// zimg: conversions between spaces and depths, on planes. Instructions of 64 bytes, which it uses when it is told to, make it
// faster wherever there is a curve and no slower elsewhere.
#include "peers/peers.h"

#include <zimg.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <memory>

namespace Bench
{

namespace
{

std::optional<zimg_pixel_type_e> pixelTypeOf(Tavrin::PixelFormat format)
{
    if (isPacked(format))
        return std::nullopt;
    switch (depthOf(format))
    {
    case Tavrin::BIT_DEPTH_8i:
        return ZIMG_PIXEL_BYTE;
    case Tavrin::BIT_DEPTH_16i:
        return ZIMG_PIXEL_WORD;
    case Tavrin::BIT_DEPTH_16f:
        return ZIMG_PIXEL_HALF;
    case Tavrin::BIT_DEPTH_32f:
        return ZIMG_PIXEL_FLOAT;
    default:
        return std::nullopt;
    }
}

zimg_image_format formatOf(Tavrin::PixelFormat format)
{
    zimg_image_format result;
    zimg_image_format_default(&result, ZIMG_API_VERSION);
    result.width = kWidth;
    result.height = kHeight;
    result.pixel_type = pixelTypeOf(format).value();
    result.depth = Tavrin::getBitDepthPrecision(depthOf(format));
    result.pixel_range = ZIMG_RANGE_FULL;
    return result;
}

zimg_image_format formatOf(Tavrin::PixelFormat format, Space const& space)
{
    zimg_image_format result = formatOf(format);
    result.color_family = ZIMG_COLOR_RGB;
    result.matrix_coefficients = ZIMG_MATRIX_RGB;
    result.transfer_characteristics = space.linear ? ZIMG_TRANSFER_LINEAR : ZIMG_TRANSFER_IEC_61966_2_1;
    result.color_primaries = space.gamut == Gamut::Rec709 ? ZIMG_PRIMARIES_BT709 : ZIMG_PRIMARIES_BT2020;
    return result;
}

[[noreturn]] void fail()
{
    char message[256];
    zimg_get_last_error(message, sizeof message);
    std::fprintf(stderr, "zimg: %s\n", message);
    std::exit(1);
}

void check(zimg_error_code_e error)
{
    if (error != ZIMG_ERROR_SUCCESS)
        fail();
}

class Graph
{
public:
    Graph(zimg_image_format const& in, zimg_image_format const& out, zimg_dither_type_e dither, bool approximate)
    {
        zimg_graph_builder_params params;
        zimg_graph_builder_params_default(&params, ZIMG_API_VERSION);
        params.cpu_type = ZIMG_CPU_AUTO_64B;
        params.dither_type = dither;
        params.allow_approximate_gamma = approximate ? 1 : 0;
        m_graph.reset(zimg_filter_graph_build(&in, &out, &params));
        if (m_graph == nullptr)
            fail();
        std::size_t size = 0;
        check(zimg_filter_graph_get_tmp_size(m_graph.get(), &size));
        m_temporary.reset(std::aligned_alloc(kAlignment, (size + kAlignment - 1) / kAlignment * kAlignment));
    }

    void run(zimg_image_buffer_const const& source, zimg_image_buffer const& target) const
    {
        check(zimg_filter_graph_process(m_graph.get(), &source, &target, m_temporary.get(), nullptr, nullptr, nullptr, nullptr));
    }

private:
    static constexpr std::size_t kAlignment = 64;

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

template <class Buffer>
Buffer bufferOf(unsigned char* frame, Tavrin::PixelFormat format, std::size_t firstPlane, std::size_t planes)
{
    Buffer buffer = {ZIMG_API_VERSION, {}};
    std::size_t const bytes = channelBytes(format);
    for (std::size_t i = 0; i < planes; ++i)
        buffer.plane[i] = {frame + (firstPlane + i) * kPixels * bytes, static_cast<std::ptrdiff_t>(kWidth * bytes),
                           ZIMG_BUFFER_MAX};
    return buffer;
}

// A graph from so many planes of the picture to those of the destination.
std::function<void()> runOf(std::shared_ptr<Graph const> const& graph, Task const& task, std::size_t firstPlane, std::size_t planes)
{
    auto const source = bufferOf<zimg_image_buffer_const>(picture(task.in, Arrangement::Planes), task.in, firstPlane, planes);
    auto const target = bufferOf<zimg_image_buffer>(destinationFrame(), task.out, firstPlane, planes);
    return [=] { graph->run(source, target); };
}

template <class T>
bool has(Work const& work)
{
    return std::any_of(work.operators.begin(), work.operators.end(),
                       [](Operator const& op) { return std::holds_alternative<T>(op); });
}

// Alpha goes through a graph of its own: beside the colours, in theirs, it takes twice as long as they do.
std::optional<Runnable> runnable(Task const& task, bool approximate)
{
    bool const dithers = has<Dither>(task.work);
    std::optional<Conversion> const conversion = dithers ? Conversion() : conversionOf(task.work);
    if (!conversion || !pixelTypeOf(task.in) || !pixelTypeOf(task.out))
        return std::nullopt;
    auto const graph = [&](zimg_image_format const& in, zimg_image_format const& out)
    { return std::make_shared<Graph const>(in, out, dithers ? ZIMG_DITHER_ORDERED : ZIMG_DITHER_NONE, approximate); };
    auto const colors = runOf(graph(formatOf(task.in, conversion->from), formatOf(task.out, conversion->to)), task, 0, 3);
    if (Tavrin::getNumChannels(task.in) == 3)
        return Runnable{Arrangement::Planes, colors};
    auto const alpha = runOf(graph(formatOf(task.in), formatOf(task.out)), task, 3, 1);
    return Runnable{Arrangement::Planes, [=]
                    {
                        colors();
                        alpha();
                    }};
}

} // namespace

std::string zimgVersion()
{
    unsigned int version[3];
    zimg_get_version_info(&version[0], &version[1], &version[2]);
    return "zimg " + std::to_string(version[0]) + "." + std::to_string(version[1]) + "." + std::to_string(version[2]);
}

std::optional<Runnable> zimg(Task const& task)
{
    return runnable(task, true);
}

// Without a curve it is the same as the other one.
std::optional<Runnable> zimgExact(Task const& task)
{
    return has<SrgbCurve>(task.work) ? runnable(task, false) : std::nullopt;
}

} // namespace Bench
