// ffmpeg's table filters, each alone in a filter graph on one thread.
#include "peers/peers.h"
#include "shared/tables.h"

#include <fmt/format.h>

extern "C"
{
#include <libavfilter/avfilter.h>
#include <libavfilter/buffersink.h>
#include <libavfilter/buffersrc.h>
#include <libavutil/frame.h>
#include <libavutil/imgutils.h>
}

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>

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

// ---------------------------------------------------------------- the table as a file

// A table in a file of its own, which goes away with the object.
class TableFile
{
public:
    explicit TableFile(std::string const& text)
        : m_path(std::filesystem::temp_directory_path() / fmt::format("tavrinPeers{}.cube", getpid()))
    {
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

void appendRow(std::string& text, float r, float g, float b)
{
    fmt::format_to(std::back_inserter(text), "{:.9g} {:.9g} {:.9g}\n", r, g, b);
}

// What a filter is called and told, and the text of its table.
struct Filter
{
    char const* name;
    char const* interpolation;
    std::string table;
};

struct FilterMaker
{
    std::optional<Filter> operator()(Table1D const& table) const
    {
        std::string text = fmt::format("LUT_1D_SIZE {}\n", table.rows);
        for (float const value : column(table.rows))
            appendRow(text, value, value, value);
        return Filter{"lut1d", "linear", std::move(text)};
    }

    // Red varies fastest in these files.
    std::optional<Filter> operator()(Table3D const& table) const
    {
        unsigned int const n = table.points;
        std::vector<float> const values = grid(n);
        std::string text = fmt::format("LUT_3D_SIZE {}\n", n);
        for (unsigned int i = 0; i < n * n * n; ++i)
        {
            float const* const entry = &values[((i % n * n + i / n % n) * n + i / n / n) * 3];
            appendRow(text, entry[0], entry[1], entry[2]);
        }
        return Filter{"lut3d", table.interpolation == Interpolation::Tetrahedral ? "tetrahedral" : "trilinear", std::move(text)};
    }

    template <class Other>
    std::optional<Filter> operator()(Other const&) const
    {
        return std::nullopt;
    }
};

std::optional<Filter> filterOf(Work const& work)
{
    return work.operators.size() == 1 ? std::visit(FilterMaker(), work.operators.front()) : std::nullopt;
}

// ---------------------------------------------------------------- frames and the graph

struct Format
{
    Tavrin::PixelFormat ours;
    Arrangement arrangement;
    AVPixelFormat theirs;
};

constexpr Format kFormats[] = {
    {Tavrin::PF_RGB_8i, Arrangement::Interleaved, AV_PIX_FMT_RGB24},
    {Tavrin::PF_RGB_16i, Arrangement::Interleaved, AV_PIX_FMT_RGB48},
    {Tavrin::PF_RGBA_8i, Arrangement::Interleaved, AV_PIX_FMT_RGBA},
    {Tavrin::PF_RGBA_16i, Arrangement::Interleaved, AV_PIX_FMT_RGBA64},
    {Tavrin::PF_RGB_8i, Arrangement::Planes, AV_PIX_FMT_GBRP},
    {Tavrin::PF_RGB_16i, Arrangement::Planes, AV_PIX_FMT_GBRP16},
    {Tavrin::PF_RGB_32f, Arrangement::Planes, AV_PIX_FMT_GBRPF32},
    {Tavrin::PF_RGBA_8i, Arrangement::Planes, AV_PIX_FMT_GBRAP},
    {Tavrin::PF_RGBA_16i, Arrangement::Planes, AV_PIX_FMT_GBRAP16},
    {Tavrin::PF_RGBA_32f, Arrangement::Planes, AV_PIX_FMT_GBRAPF32},
};

// One of our frames as the library sees it. Its planes are green, blue, red and alpha.
struct Image
{
    Image(unsigned char* frame, Format const& format)
    {
        check(av_image_fill_arrays(planes, strides, frame, format.theirs, kWidth, kHeight, 1), "frame");
        if (format.arrangement == Arrangement::Planes)
            std::rotate(planes, planes + 1, planes + 3);
    }

    std::uint8_t* planes[4];
    int strides[4];
};

class FilterGraph
{
public:
    FilterGraph(Filter const& filter, Format const& format)
        : m_graph(avfilter_graph_alloc()), m_in(av_frame_alloc()), m_out(av_frame_alloc()), m_format(format)
    {
        TableFile const file(filter.table);
        m_graph->nb_threads = 1;
        m_source = add("buffer",
                       fmt::format("video_size={}x{}:pix_fmt={}:time_base=1/25", kWidth, kHeight, static_cast<int>(format.theirs)));
        AVFilterContext* const table = add(filter.name, fmt::format("file={}:interp={}", file.path(), filter.interpolation));
        m_sink = add("buffersink", "");
        check(avfilter_link(m_source, 0, table, 0), "link");
        check(avfilter_link(table, 0, m_sink, 0), "link");
        check(avfilter_graph_config(m_graph.get(), nullptr), "graph");
        check(m_graph->nb_filters == 3 && av_buffersink_get_format(m_sink) == format.theirs ? 0 : -1,
              "a conversion of formats came in");
        fill();
    }

    void run() const
    {
        av_frame_unref(m_out.get());
        check(av_buffersrc_add_frame_flags(m_source, m_in.get(), AV_BUFFERSRC_FLAG_KEEP_REF), "in");
        check(av_buffersink_get_frame(m_sink, m_out.get()), "out");
    }

    void deliver() const
    {
        Image const image(destinationFrame(), m_format);
        av_image_copy(const_cast<std::uint8_t**>(image.planes), const_cast<int*>(image.strides),
                      const_cast<std::uint8_t const**>(m_out->data), m_out->linesize, m_format.theirs, kWidth, kHeight);
    }

private:
    struct Free
    {
        void operator()(AVFilterGraph* graph) const { avfilter_graph_free(&graph); }
        void operator()(AVFrame* frame) const { av_frame_free(&frame); }
    };

    AVFilterContext* add(char const* filter, std::string const& arguments)
    {
        AVFilterContext* context = nullptr;
        check(
            avfilter_graph_create_filter(&context, avfilter_get_by_name(filter), filter, arguments.c_str(), nullptr, m_graph.get()),
            filter);
        return context;
    }

    void fill() const
    {
        m_in->width = kWidth;
        m_in->height = kHeight;
        m_in->format = m_format.theirs;
        check(av_frame_get_buffer(m_in.get(), 0), "frame");
        Image image(picture(m_format.ours, m_format.arrangement), m_format);
        av_image_copy(m_in->data, m_in->linesize, const_cast<std::uint8_t const**>(image.planes), image.strides, m_format.theirs,
                      kWidth, kHeight);
    }

    std::unique_ptr<AVFilterGraph, Free> m_graph;
    std::unique_ptr<AVFrame, Free> m_in;
    std::unique_ptr<AVFrame, Free> m_out;
    Format m_format;
    AVFilterContext* m_source = nullptr;
    AVFilterContext* m_sink = nullptr;
};

std::optional<Runnable> runnable(Task const& task, Arrangement arrangement)
{
    auto const format =
        std::find_if(std::begin(kFormats), std::end(kFormats),
                     [&](Format const& candidate) { return candidate.ours == task.in && candidate.arrangement == arrangement; });
    std::optional<Filter> const filter = filterOf(task.work);
    if (format == std::end(kFormats) || task.in != task.out || !filter)
        return std::nullopt;
    auto const graph = std::make_shared<FilterGraph const>(*filter, *format);
    return Runnable{arrangement, [=] { graph->run(); }, [=] { graph->deliver(); }};
}

} // namespace

std::string ffmpegVersion()
{
    return fmt::format("ffmpeg {}", av_version_info());
}

std::optional<Runnable> ffmpegInterleaved(Task const& task)
{
    return runnable(task, Arrangement::Interleaved);
}

std::optional<Runnable> ffmpegPlanes(Task const& task)
{
    return runnable(task, Arrangement::Planes);
}

} // namespace Bench
