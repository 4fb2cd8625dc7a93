// Measures Tavrin beside its peers: the same works, the same picture, one thread.
#include "peers/report.h"
#include "peers/row.h"

#include <optional>
#include <regex>
#include <utility>
#include <vector>

namespace
{

std::vector<Bench::Row> measureAll(Bench::Options const& options)
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
    Bench::Options const options =
        Bench::parseOptions(argc, argv, "Measures Tavrin beside its peers, row by row, and prints a table.",
                            "rows, as in \"matrix/RGBA32f\"", {5, 0.05});
    Bench::initializeClock("tavrinPeers");
    Bench::printHead();
    std::vector<Bench::Row> const rows = measureAll(options);
    if (!options.json.empty())
        Bench::save(jsonOf(rows, options.effort), options.json);
    return 0;
}
