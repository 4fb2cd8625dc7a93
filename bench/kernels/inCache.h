// Times work on so little memory that it stays in the first-level cache, in nanoseconds and in cycles of the core.
#ifndef TAVRIN_BENCH_KERNELS_IN_CACHE_H
#define TAVRIN_BENCH_KERNELS_IN_CACHE_H

#include "renderer/block.h"

#include <benchmark/benchmark.h>

#include <chrono>
#include <cstddef>
#include <string>

namespace Bench
{

// A chain of operations that wait for each other, whose number of cycles is known: the clock of the core, which may be another one
// than that of the time stamps.
void runCycles();
constexpr int kCyclesOfRun = 6000;

// A block beside the pixels that are loaded into it and stored from it, which begin a page: where addresses are equal modulo 4096,
// loads wait for stores, and how much they do would change from run to run.
struct PlacedBlock
{
    alignas(4096) std::byte besideThePixels[2048];
    Rendering::Block block;
};

// Adds up times and gives them out for each pixel.
class CacheClock
{
public:
    explicit CacheClock(unsigned int pixels) : m_pixels(pixels) {}

    // Times one call of the work, which comes after the preparation: its effect on the memory is undone each time. The time of the
    // preparation is measured beside and taken off.
    template <class Prepare, class Work>
    double measure(Prepare const& prepare, Work const& work)
    {
        double const both = _secondsOf(
            [&]
            {
                prepare();
                work();
            });
        double const seconds = (both - _secondsOf(prepare)) / kCalls;
        auto const begin = std::chrono::steady_clock::now();
        runCycles();
        m_clockSeconds += _secondsSince(begin);
        m_seconds += seconds;
        ++m_measurements;
        return seconds;
    }

    double nanosecondsPerPixel() const { return m_seconds / m_measurements / m_pixels * 1e9; }
    double cyclesPerPixel() const { return nanosecondsPerPixel() * gigahertz(); }
    double gigahertz() const { return kCyclesOfRun * m_measurements / m_clockSeconds * 1e-9; }

private:
    static constexpr int kCalls = 200;

    static double _secondsSince(std::chrono::steady_clock::time_point begin)
    {
        return std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
    }

    template <class Work>
    static double _secondsOf(Work const& work)
    {
        auto const begin = std::chrono::steady_clock::now();
        for (int i = 0; i < kCalls; ++i)
        {
            work();
            benchmark::ClobberMemory();
        }
        return _secondsSince(begin);
    }

    unsigned int m_pixels;
    double m_seconds = 0;
    double m_clockSeconds = 0;
    double m_measurements = 0;
};

// The body of a benchmark: the work's time is that of the benchmark, and counters tell it for each pixel.
template <class Prepare, class Work>
void runInCache(benchmark::State& state, unsigned int pixels, Prepare const& prepare, Work const& work)
{
    CacheClock clock(pixels);
    for (auto _ : state)
        state.SetIterationTime(clock.measure(prepare, work));
    state.counters["ns"] = clock.nanosecondsPerPixel();
    state.counters["cycles"] = clock.cyclesPerPixel();
    state.counters["GHz"] = clock.gigahertz();
}

// Registers such a body. The number of measurements is fixed, since a time is but a small part of what it takes to measure it.
template <class Run>
void addInCache(std::string const& name, Run const& run)
{
    benchmark::RegisterBenchmark(name.c_str(), run)->UseManualTime()->Iterations(100);
}

} // namespace Bench

#endif
