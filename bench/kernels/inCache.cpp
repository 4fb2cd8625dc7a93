// The clock of the core.
#include "inCache.h"

#include <cstdint>

namespace Bench
{

void runCycles()
{
    // Two operations of a cycle each for each line, on every processor of the last decades.
    std::uint64_t x = 1;
    benchmark::DoNotOptimize(x);
    for (int i = 0; i < kCyclesOfRun / 6; ++i)
    {
        x ^= x << 13;
        x ^= x >> 7;
        x ^= x << 17;
    }
    benchmark::DoNotOptimize(x);
}

} // namespace Bench
