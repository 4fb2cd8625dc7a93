// What was measured, as text and as JSON.
#ifndef TAVRIN_BENCH_GROWTH_REPORT_H
#define TAVRIN_BENCH_GROWTH_REPORT_H

#include "growth/series.h"
#include "shared/program.h"

#include <vector>

namespace Bench
{

struct MeasuredSeries
{
    Series series;
    // Of a pixel: for each line of the series, for each of its cases.
    std::vector<std::vector<Timing>> timings;
};

// A row for each x, a column for each line.
void print(MeasuredSeries const& measured);

Json jsonOf(std::vector<MeasuredSeries> const& all, Effort const& effort);

} // namespace Bench

#endif
