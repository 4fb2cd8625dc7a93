// What was measured, as text and as JSON.
#include "growth/report.h"

#include <fmt/format.h>

#include <cstdio>

namespace Bench
{

namespace
{

Json jsonOf(Line const& line, std::vector<Timing> const& timings)
{
    Json json = {{"name", line.name}};
    for (std::size_t i = 0; i < timings.size(); ++i)
        json["points"].push_back({{"x", line.cases[i].x}, {"nanoseconds", timings[i].nanoseconds}, {"spread", timings[i].spread}});
    return json;
}

Json jsonOf(MeasuredSeries const& measured)
{
    Series const& series = measured.series;
    Json json = {{"name", series.name}, {"title", series.title}, {"quantity", series.quantity}};
    for (std::size_t i = 0; i < series.lines.size(); ++i)
        json["lines"].push_back(jsonOf(series.lines[i], measured.timings[i]));
    return json;
}

} // namespace

void print(MeasuredSeries const& measured)
{
    Series const& series = measured.series;
    fmt::print("\n{}: {} (ns a pixel)\n\n| {} |", series.name, series.title, series.quantity);
    for (Line const& line : series.lines)
        fmt::print(" {} |", line.name);
    fmt::print("\n| --- |");
    for (std::size_t i = 0; i < series.lines.size(); ++i)
        fmt::print(" --- |");
    for (std::size_t row = 0; row < series.lines.front().cases.size(); ++row)
    {
        fmt::print("\n| {:.0f} |", series.lines.front().cases[row].x);
        for (std::vector<Timing> const& column : measured.timings)
            fmt::print(" {:.2f} |", column[row].nanoseconds);
    }
    fmt::print("\n");
    std::fflush(stdout);
}

Json jsonOf(std::vector<MeasuredSeries> const& all, Effort const& effort)
{
    Json json = jsonHead("growth", effort);
    for (MeasuredSeries const& measured : all)
        json["series"].push_back(jsonOf(measured));
    return json;
}

} // namespace Bench
