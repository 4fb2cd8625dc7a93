// What grows: the cases of each series, ready to be timed.
#ifndef TAVRIN_BENCH_GROWTH_SERIES_H
#define TAVRIN_BENCH_GROWTH_SERIES_H

#include "shared/clock.h"

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

namespace Bench
{

struct Case
{
    double x;
    // Rendered by one call.
    std::size_t pixels;
    // Draws the picture and makes the transform ready; what it gives is timed.
    std::function<std::function<void()>()> prepare;
};

struct Line
{
    std::string name;
    std::vector<Case> cases;
};

struct Series
{
    std::string name; // a word
    std::string title;
    std::string quantity; // of x
    Clock clock;
    std::vector<Line> lines;
};

std::vector<Series> allSeries();

} // namespace Bench

#endif
