// Times of works, taken by Google Benchmark.
#ifndef TAVRIN_BENCH_SHARED_CLOCK_H
#define TAVRIN_BENCH_SHARED_CLOCK_H

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

namespace Bench
{

struct Effort
{
    unsigned int repetitions;
    // At least so long is each repetition.
    double seconds;
};

struct Timing
{
    // Median of the repetitions.
    double nanoseconds;
    // From the lower to the upper quartile, as a part of the median.
    double spread;
};

enum class Clock
{
    Processor, // of all threads of the program together
    Wall
};

// Once, before anything is timed.
void initializeClock(std::string program);

// Of a call of each, divided by the number of parts that the call has. Repetitions come in random order, so that whatever disturbs
// the machine for a while disturbs all works.
std::vector<Timing> timingsOf(std::vector<std::function<void()>> const& works, std::size_t parts, Effort const& effort,
                              Clock clock);

} // namespace Bench

#endif
