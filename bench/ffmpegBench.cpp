// ffmpeg's table filters as a peer, each alone in a filter graph on one thread.
#include "frame.h"
#include "tables.h"

extern "C"
{
#include <libavfilter/avfilter.h>
#include <libavfilter/buffersink.h>
#include <libavfilter/buffersrc.h>
#include <libavutil/frame.h>
#include <libavutil/imgutils.h>
}

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>

#include <unistd.h>

namespace Bench
{

namespace
{

void check(int result, char const* what)
{
    if (result >= 0)
        return;
    std::fprintf(stderr, "ffmpeg: %s: error %d\n", what, result);
    std::exit(1);
}

// A table in a file of its own, which goes away with the object.
class TableFile
{
public:
    explicit TableFile(std::string const& text)
    {
        static int number = 0;
        m_path = std::filesystem::temp_directory_path() /
                 ("tavrinBench" + std::to_string(getpid()) + "-" + std::to_string(++number) + ".cube");
        std::ofstream(m_path) << text;
    }
    TableFile(TableFile const&) = delete;
    TableFile& operator=(TableFile const&) = delete;
    ~TableFile()
    {
        std::error_code ignored;
        std::filesystem::remove(m_path, ignored);
    }

    std::string path() const { return m_path.string(); }

private:
    std::filesystem::path m_path;
};

std::string line(float r, float g, float b)
{
    char text[64];
    std::snprintf(text, sizeof text, "%.7f %.7f %.7f\n", r, g, b);
    return text;
}

std::string cube1D(unsigned int rows)
{
    std::string text = "LUT_1D_SIZE " + std::to_string(rows) + "\n";
    for (unsigned int i = 0; i < rows; ++i)
    {
        float const value = curve(i / (rows - 1.0));
        text += line(value, value, value);
    }
    return text;
}

// Red varies fastest in these files.
std::string cube3D(unsigned int points)
{
    std::string text = "LUT_3D_SIZE " + std::to_string(points) + "\n";
    for (unsigned int b = 0; b < points; ++b)
    {
        for (unsigned int g = 0; g < points; ++g)
        {
            for (unsigned int r = 0; r < points; ++r)
            {
                float out[3];
                lookAt(r / (points - 1.0), g / (points - 1.0), b / (points - 1.0), out);
                text += line(out[0], out[1], out[2]);
            }
        }
    }
    return text;
}

class FilterGraph
{
public:
    FilterGraph(char const* filter, std::string const& arguments, AVPixelFormat format)
        : m_graph(avfilter_graph_alloc()), m_in(av_frame_alloc()), m_out(av_frame_alloc()), m_format(format)
    {
        m_graph->nb_threads = 1;
        std::string const source = "video_size=" + std::to_string(kWidth) + "x" + std::to_string(kHeight) +
                                   ":pix_fmt=" + std::to_string(format) + ":time_base=1/25";
        AVFilterContext* table = nullptr;
        check(avfilter_graph_create_filter(&m_source, avfilter_get_by_name("buffer"), "in", source.c_str(), nullptr, m_graph.get()),
              "buffer");
        check(
            avfilter_graph_create_filter(&table, avfilter_get_by_name(filter), "table", arguments.c_str(), nullptr, m_graph.get()),
            filter);
        check(avfilter_graph_create_filter(&m_sink, avfilter_get_by_name("buffersink"), "out", nullptr, nullptr, m_graph.get()),
              "buffersink");
        check(avfilter_link(m_source, 0, table, 0), "link");
        check(avfilter_link(table, 0, m_sink, 0), "link");
        check(avfilter_graph_config(m_graph.get(), nullptr), "graph");
        check(m_graph->nb_filters == 3 && av_buffersink_get_format(m_sink) == format ? 0 : -1, "a conversion of formats came in");
    }

    // Takes what the source frame holds, row by row and plane by plane.
    void fill() const
    {
        m_in->width = kWidth;
        m_in->height = kHeight;
        m_in->format = m_format;
        check(av_frame_get_buffer(m_in.get(), 0), "frame");
        unsigned char* from = sourceFrame();
        std::uint8_t* planes[4];
        int strides[4];
        av_image_fill_arrays(planes, strides, from, m_format, kWidth, kHeight, 1);
        av_image_copy(m_in->data, m_in->linesize, const_cast<std::uint8_t const**>(planes), strides, m_format, kWidth, kHeight);
    }

    void run() const
    {
        check(av_buffersrc_add_frame_flags(m_source, m_in.get(), AV_BUFFERSRC_FLAG_KEEP_REF), "in");
        check(av_buffersink_get_frame(m_sink, m_out.get()), "out");
        av_frame_unref(m_out.get());
    }

private:
    struct Free
    {
        void operator()(AVFilterGraph* graph) const { avfilter_graph_free(&graph); }
        void operator()(AVFrame* frame) const { av_frame_free(&frame); }
    };

    std::unique_ptr<AVFilterGraph, Free> m_graph;
    std::unique_ptr<AVFrame, Free> m_in;
    std::unique_ptr<AVFrame, Free> m_out;
    AVPixelFormat m_format;
    AVFilterContext* m_source = nullptr;
    AVFilterContext* m_sink = nullptr;
};

// The filters read their file when they are made, which is when the case begins to run.
void add(std::string const& name, std::string const& table, char const* filter, std::string const& interpolation)
{
    struct Format
    {
        Tavrin::PixelFormat ours;
        AVPixelFormat theirs;
        char const* suffix;
    };
    auto const text = std::make_shared<std::string>(table);
    for (Format const format :
         {Format{Tavrin::PF_RGBA_8i, AV_PIX_FMT_RGBA, ", ffmpeg"}, Format{Tavrin::PF_RGBA_16i, AV_PIX_FMT_RGBA64, ", ffmpeg"},
          Format{Tavrin::PF_RGB_32f, AV_PIX_FMT_GBRPF32, ", planes, ffmpeg"}})
    {
        auto const graph = std::make_shared<std::unique_ptr<FilterGraph>>();
        addWork(
            name + format.suffix, format.ours,
            [=]
            {
                TableFile const file(*text);
                *graph = std::make_unique<FilterGraph>(filter, "file=" + file.path() + ":interp=" + interpolation, format.theirs);
                (*graph)->fill();
            },
            [=] { (*graph)->run(); });
    }
}

} // namespace

void addFfmpeg()
{
    for (unsigned int rows : {1024U, 4096U, 65536U})
        add("table/1D " + std::to_string(rows), cube1D(rows), "lut1d", "linear");
    for (unsigned int points : {17U, 33U, 65U})
    {
        add("table/3D " + std::to_string(points) + " tetrahedral", cube3D(points), "lut3d", "tetrahedral");
        add("table/3D " + std::to_string(points) + " trilinear", cube3D(points), "lut3d", "trilinear");
    }
}

} // namespace Bench
