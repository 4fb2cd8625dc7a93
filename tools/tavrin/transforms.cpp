// Transforms from files, and pictures put through them.
#include "transforms.h"

#include "failure.h"

#include <algorithm>
#include <atomic>
#include <mutex>
#include <optional>
#include <thread>

namespace Program
{

namespace
{

// A strip takes some milliseconds at most: short enough to share the work evenly, long enough for the sharing not to count.
constexpr unsigned int kStripPixels = 1 << 17;

// The strips of a picture, taken by whichever thread is free, until one fails.
class StripWork
{
public:
    StripWork(Tavrin::Transform& transform, Image const& source, Image& target)
        : m_transform(transform),
          m_source(source),
          m_target(target),
          m_rowsPerStrip(std::max(1u, kStripPixels / std::max(1u, source.width)))
    {
    }

    unsigned int strips() const { return (m_source.height + m_rowsPerStrip - 1) / m_rowsPerStrip; }

    void run(RowReport const& report)
    {
        while (!m_failed)
        {
            const unsigned int first = m_next.fetch_add(1) * m_rowsPerStrip;
            if (first >= m_source.height)
                return;
            const unsigned int rows = std::min(m_rowsPerStrip, m_source.height - first);
            // The whole picture is told with each strip: some operators depend on a pixel's place in it.
            const Tavrin::ROI strip(0, first, m_source.width, rows, m_source.width, m_source.height);
            const Tavrin::TavStatus status = m_transform.applyCPU(m_source.pixels.get(), strip, m_target.pixels.get());
            if (!status)
                _fail(status);
            report(m_done += rows);
        }
    }

    // After all threads have ended.
    void check() const
    {
        if (m_failed)
            Program::check(m_status, "cannot apply the transform");
    }

private:
    void _fail(Tavrin::TavStatus const& status)
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_status = status;
        m_failed = true;
    }

    Tavrin::Transform& m_transform;
    Image const& m_source;
    Image& m_target;
    unsigned int m_rowsPerStrip;
    std::atomic<unsigned int> m_next{0};
    std::atomic<unsigned int> m_done{0};
    std::atomic<bool> m_failed{false};
    std::mutex m_mutex;
    Tavrin::TavStatus m_status;
};

void runOnThreads(StripWork& work, unsigned int threads, RowReport const& report)
{
    std::vector<std::thread> helpers;
    for (unsigned int i = 1; i < std::min(threads, work.strips()); ++i)
        helpers.emplace_back([&work] { work.run([](unsigned int) {}); });
    work.run(report);
    for (std::thread& helper : helpers)
        helper.join();
    work.check();
}

Image emptyLike(Image const& source, Tavrin::PixelFormat format)
{
    Image image = makeImage("the output", format, source.width, source.height);
    image.frame = source.frame;
    image.premultiplied = source.premultiplied;
    return image;
}

} // namespace

void check(Tavrin::TavStatus const& status, std::string const& what)
{
    if (status)
        return;
    char const* message = status.getErrorMessage();
    fail("{}: {}", what, message ? message : fmt::format("error {:#x}", status.getErrorCode()));
}

Tavrin::TransformPtr loadTransform(std::string const& path)
{
    Tavrin::TransformPtr transform;
    check(Tavrin::loadColorTransform(path.c_str(), transform), fmt::format("cannot load the transform '{}'", path));
    return transform;
}

Tavrin::TransformPtr joinTransforms(std::vector<Tavrin::TransformPtr> const& transforms)
{
    Tavrin::TransformPtr all;
    for (Tavrin::TransformPtr const& next : transforms)
    {
        const Tavrin::TransformPtr before = all;
        if (!before)
            all = next;
        else if (next)
            check(Tavrin::concatenateTransforms(before, next, all), "cannot join the transforms");
    }
    return all;
}

Image applyTransform(Tavrin::TransformPtr const& transform, Tavrin::OptimizerFlags flags, Image source, Tavrin::PixelFormat format,
                     unsigned int threads, RowReport const& report)
{
    check(transform->finalize(source.format, format, Tavrin::RENDERER_CPU, flags, Tavrin::RESOLVE_GRAPHICS_MONITOR),
          "cannot prepare the transform");
    if (source.format == format)
    {
        StripWork inPlace(*transform, source, source);
        runOnThreads(inPlace, threads, report);
        return source;
    }
    Image target = emptyLike(source, format);
    StripWork work(*transform, source, target);
    runOnThreads(work, threads, report);
    return target;
}

} // namespace Program
