// One work between two formats, done by all who can.
#include "peers/row.h"

#include "peers/evaluate.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <functional>
#include <limits>
#include <utility>
#include <vector>

namespace Bench
{

namespace
{

struct Entrant
{
    Participant const* participant;
    Runnable runnable;
};

constexpr Tavrin::PixelFormat kFormats[] = {Tavrin::PF_RGBA_8i,  Tavrin::PF_RGBA_10iP, Tavrin::PF_RGBA_16i,
                                            Tavrin::PF_RGBA_16f, Tavrin::PF_RGBA_32f,  Tavrin::PF_RGB_8i,
                                            Tavrin::PF_RGB_16i,  Tavrin::PF_RGB_16f,   Tavrin::PF_RGB_32f};

std::vector<Entrant> entrants(Task const& task)
{
    std::vector<Entrant> all;
    for (Participant const& participant : participants())
    {
        if (std::optional<Runnable> runnable = participant.make(task))
            all.push_back({&participant, std::move(*runnable)});
    }
    return all;
}

bool onPlanes(Entrant const& entrant)
{
    return entrant.runnable.arrangement == Arrangement::Planes;
}

// ---------------------------------------------------------------- the check

// Some hundreds of pixels from all over the frame.
constexpr std::size_t kCheckedStep = 16411;

// Integers cannot say what lies beyond full signal.
double expected(double value, Tavrin::PixelFormat format)
{
    return Tavrin::isIntegerDepth(depthOf(format)) ? std::clamp(value, 0.0, 1.0) : value;
}

// As a part of full signal, or of the value where that is larger. What is not finite is as far off as can be.
double errorOf(double value, double wanted)
{
    double const error = std::abs(value - wanted) / std::max(1.0, std::abs(wanted));
    return std::isfinite(error) ? error : std::numeric_limits<double>::max();
}

// The source's alpha is 1, and nobody changes it.
double errorOf(Pixel const& pixel, Rgb const& wanted, Tavrin::PixelFormat format)
{
    double largest = errorOf(pixel.alpha, 1.0);
    for (std::size_t c = 0; c < wanted.size(); ++c)
        largest = std::max(largest, errorOf(pixel.color[c], expected(wanted[c], format)));
    return largest;
}

double largestError(Task const& task, Runnable const& runnable)
{
    // What is not written stays NaN, or full signal.
    std::memset(destinationFrame(), 0xff, kPixels * Tavrin::getPixelSizeInByte(task.out));
    runnable.run();
    runnable.deliver();
    unsigned char const* const source = picture(task.in, Arrangement::Interleaved);
    double largest = 0.0;
    for (std::size_t i = 0; i < kPixels; i += kCheckedStep)
    {
        Rgb const wanted = evaluate(task.work, pixelAt(source, task.in, Arrangement::Interleaved, i).color);
        Pixel const got = pixelAt(destinationFrame(), task.out, runnable.arrangement, i);
        largest = std::max(largest, errorOf(got, wanted, task.out));
    }
    return largest;
}

// One and a half codes: participants may round in any way. Floats may come from approximations and through 16 bits.
double tolerance(Tavrin::PixelFormat format)
{
    constexpr double kApproximation = 1e-3;
    Tavrin::BitDepth const depth = depthOf(format);
    double const code = Tavrin::isIntegerDepth(depth) ? 1.0 / static_cast<double>(Tavrin::getBitDepthMaxValue(depth)) : 0.0;
    return std::max(1.5 * code, kApproximation);
}

Result checked(Task const& task, Entrant const& entrant)
{
    Result result = {entrant.participant, entrant.runnable.arrangement};
    if (entrant.participant->role == Role::Copy)
        return result;
    result.largestError = largestError(task, entrant.runnable);
    result.sameWork = *result.largestError <= tolerance(task.out);
    return result;
}

// ---------------------------------------------------------------- the times

// What threads of a library did counts too.
std::vector<Timing> timingsOf(std::vector<Entrant> const& entrants, Effort const& effort)
{
    std::vector<std::function<void()>> works;
    for (Entrant const& entrant : entrants)
        works.push_back(entrant.runnable.run);
    return timingsOf(works, kPixels, effort, Clock::Processor);
}

std::optional<double> fastest(std::vector<Result> const& results, Role role)
{
    std::optional<double> best;
    for (Result const& result : results)
    {
        if (result.participant->role == role && result.sameWork)
            best = std::min(best.value_or(result.timing.nanoseconds), result.timing.nanoseconds);
    }
    return best;
}

void setRatios(std::vector<Result>& results)
{
    std::optional<double> const peer = fastest(results, Role::Peer);
    double const copy = fastest(results, Role::Copy).value();
    for (Result& result : results)
    {
        result.ratioToCopy = result.timing.nanoseconds / copy;
        if (peer)
            result.ratioToBestPeer = result.timing.nanoseconds / *peer;
    }
}

} // namespace

std::string nameOf(Task const& task)
{
    return task.work.name + "/" + formatNames(task.in, task.out);
}

std::vector<Task> tasks()
{
    std::vector<Task> all;
    for (Tavrin::PixelFormat const format : kFormats)
    {
        for (Work const& work : works())
        {
            if (work.formats.empty())
                all.push_back({work, format, format});
        }
    }
    for (Work const& work : works())
    {
        for (FormatPair const& pair : work.formats)
            all.push_back({work, pair.in, pair.out});
    }
    return all;
}

std::optional<Row> measure(Task const& task, Effort const& effort)
{
    std::vector<Entrant> const all = entrants(task);
    if (Tavrin::getNumChannels(task.in) == 3 && std::none_of(all.begin(), all.end(), onPlanes))
        return std::nullopt;
    Row row = {task, {}};
    for (Entrant const& entrant : all)
        row.results.push_back(checked(task, entrant));
    std::vector<Timing> const timings = timingsOf(all, effort);
    for (std::size_t i = 0; i < timings.size(); ++i)
        row.results[i].timing = timings[i];
    setRatios(row.results);
    return row;
}

} // namespace Bench
