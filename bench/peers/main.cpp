// Measures Tavrin beside its peers: the same works, the same picture, one thread.
#include "peers/report.h"
#include "peers/row.h"

#include <CLI/CLI.hpp>
#include <benchmark/benchmark.h>

#include <cstdio>
#include <optional>
#include <regex>
#include <string>
#include <utility>
#include <vector>

namespace
{

struct Options
{
    std::string filter = ".";
    std::string json;
    Bench::Effort effort = {5, 0.05};
};

// The numbers of a row are only comparable when the repetitions of all participants alternate.
void initializeClock()
{
    std::string program = "tavrinPeers";
    std::string interleaving = "--benchmark_enable_random_interleaving=true";
    char* arguments[] = {program.data(), interleaving.data()};
    int count = 2;
    benchmark::Initialize(&count, arguments);
}

std::vector<Bench::Row> measureAll(Options const& options)
{
    std::regex const filter(options.filter);
    std::vector<Bench::Row> rows;
    for (Bench::Task const& task : Bench::tasks())
    {
        if (!std::regex_search(nameOf(task), filter))
            continue;
        std::optional<Bench::Row> row = measure(task, options.effort);
        if (!row)
            continue;
        printRow(*row);
        rows.push_back(std::move(*row));
    }
    return rows;
}

} // namespace

int main(int argc, char** argv)
{
    Options options;
    CLI::App app("Measures Tavrin beside its peers, row by row, and prints a table.");
    app.add_option("--filter", options.filter, "Regular expression for rows, as in \"matrix/RGBA32f\"");
    app.add_option("--json", options.json, "File to write the numbers to, for bench/plot");
    app.add_option("--repetitions", options.effort.repetitions, "Repetitions of which the median is taken")->capture_default_str();
    app.add_option("--seconds", options.effort.seconds, "Shortest time of one repetition")->capture_default_str();
    CLI11_PARSE(app, argc, argv);

    initializeClock();
    Bench::printHead();
    std::vector<Bench::Row> const rows = measureAll(options);
    if (options.json.empty() || writeJson(options.json, rows, options.effort))
        return 0;
    std::fprintf(stderr, "%s: can't be written\n", options.json.c_str());
    return 1;
}
