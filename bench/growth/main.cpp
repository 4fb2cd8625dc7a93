// Measures how the time of a pixel grows, series by series.
#include "growth/report.h"

#include <regex>
#include <vector>

namespace
{

Bench::MeasuredSeries measure(Bench::Series const& series, Bench::Effort const& effort)
{
    Bench::MeasuredSeries measured = {series, {}};
    for (Bench::Line const& line : series.lines)
    {
        measured.timings.emplace_back();
        for (Bench::Case const& c : line.cases)
            measured.timings.back().push_back(Bench::timingsOf({c.prepare()}, c.pixels, effort, series.clock).front());
    }
    return measured;
}

std::vector<Bench::MeasuredSeries> measureAll(Bench::Options const& options)
{
    std::regex const filter(options.filter);
    std::vector<Bench::MeasuredSeries> all;
    for (Bench::Series const& series : Bench::allSeries())
    {
        if (!std::regex_search(series.name, filter))
            continue;
        all.push_back(measure(series, options.effort));
        print(all.back());
    }
    return all;
}

} // namespace

int main(int argc, char** argv)
{
    Bench::Options const options =
        Bench::parseOptions(argc, argv, "Measures how the time of a pixel grows with the picture, the pipeline and its tables.",
                            "series, as in \"width|threads\"", {5, 0.02});
    Bench::initializeClock("tavrinGrowth");
    std::vector<Bench::MeasuredSeries> const all = measureAll(options);
    if (!options.json.empty())
        Bench::save(jsonOf(all, options.effort), options.json);
    return 0;
}
