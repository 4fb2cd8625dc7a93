// Times of works, taken by Google Benchmark.
#include "shared/clock.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <utility>

namespace Bench
{

namespace
{

// Keeps the time of every repetition by the name of the benchmark, and prints nothing.
class Recorder : public benchmark::BenchmarkReporter
{
public:
    explicit Recorder(Clock clock) : m_clock(clock) {}

    bool ReportContext(Context const&) override { return true; }
    void ReportRuns(std::vector<Run> const& runs) override
    {
        for (Run const& run : runs)
        {
            if (run.run_type == Run::RT_Iteration)
                m_times[run.run_name.function_name].push_back(m_clock == Clock::Wall ? run.GetAdjustedRealTime()
                                                                                     : run.GetAdjustedCPUTime());
        }
    }

    std::vector<double> const& timesOf(std::string const& name) const { return m_times.at(name); }

private:
    Clock m_clock;
    std::map<std::string, std::vector<double>> m_times;
};

double quantile(std::vector<double> const& sorted, double part)
{
    double const at = part * static_cast<double>(sorted.size() - 1);
    std::size_t const below = static_cast<std::size_t>(at);
    return std::lerp(sorted[below], sorted[std::min(below + 1, sorted.size() - 1)], at - static_cast<double>(below));
}

Timing timingOf(std::vector<double> times, std::size_t parts)
{
    std::sort(times.begin(), times.end());
    double const median = quantile(times, 0.5);
    return {median / static_cast<double>(parts), (quantile(times, 0.75) - quantile(times, 0.25)) / median};
}

void registerWork(std::string const& name, std::function<void()> const& work, Effort const& effort, Clock clock)
{
    auto const loop = [work](benchmark::State& state)
    {
        for (auto _ : state)
            work();
    };
    auto* const benchmark = benchmark::RegisterBenchmark(name.c_str(), loop)
                                ->Repetitions(static_cast<int>(effort.repetitions))
                                ->MinTime(effort.seconds);
    if (clock == Clock::Wall)
        benchmark->UseRealTime();
    else
        benchmark->MeasureProcessCPUTime();
}

} // namespace

void initializeClock(std::string program)
{
    std::string interleaving = "--benchmark_enable_random_interleaving=true";
    char* arguments[] = {program.data(), interleaving.data(), nullptr};
    int count = 2;
    benchmark::Initialize(&count, arguments);
}

std::vector<Timing> timingsOf(std::vector<std::function<void()>> const& works, std::size_t parts, Effort const& effort, Clock clock)
{
    benchmark::ClearRegisteredBenchmarks();
    for (std::size_t i = 0; i < works.size(); ++i)
        registerWork(std::to_string(i), works[i], effort, clock);
    Recorder recorder(clock);
    benchmark::RunSpecifiedBenchmarks(&recorder, ".");
    benchmark::ClearRegisteredBenchmarks();
    std::vector<Timing> timings;
    for (std::size_t i = 0; i < works.size(); ++i)
        timings.push_back(timingOf(recorder.timesOf(std::to_string(i)), parts));
    return timings;
}

} // namespace Bench
