// Runs the benchmarks and ends with a table of nanoseconds of processor time a pixel and of ratios to memcpy, and one of
// milliseconds a call.
#include "cases.h"

#include <benchmark/benchmark.h>

#include <cstdio>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace Bench
{
void addFiles();
void addFinalizes();
void addGrades();
void addLinear();
void addLooks();
void addTables();
} // namespace Bench

namespace
{

// One frame of each pixel size.
void addCopies()
{
    for (Tavrin::PixelFormat format : {Tavrin::PF_RGBA_8i, Tavrin::PF_RGBA_16i, Tavrin::PF_RGBA_32f, Tavrin::PF_RGB_16i})
        Bench::addCopy(format);
}

class TableReporter : public benchmark::ConsoleReporter
{
public:
    void ReportRuns(std::vector<Run> const& runs) override
    {
        ConsoleReporter::ReportRuns(runs);
        for (Run const& run : runs)
        {
            if (run.aggregate_name != "median" || run.error_occurred)
                continue;
            std::string const name = run.run_name.function_name;
            auto const counter = run.counters.find("bytes");
            if (counter == run.counters.end())
            {
                m_calls.emplace_back(name, run.GetAdjustedCPUTime() * 1e-6);
                continue;
            }
            double const bytes = counter->second;
            double const nanoseconds = run.GetAdjustedCPUTime() / static_cast<double>(Bench::kPixels);
            if (name.rfind("memcpy/", 0) == 0)
                m_memcpy[bytes] = nanoseconds;
            m_rows.push_back({name, bytes, nanoseconds});
        }
    }

    // Ratios are to a copy of as many bytes a pixel as the output has.
    void printTables() const
    {
        std::printf("\n| Work | ns a pixel | x memcpy |\n| --- | --- | --- |\n");
        for (Row const& row : m_rows)
        {
            auto const copy = m_memcpy.find(row.bytes);
            std::printf("| %s | %.2f | ", row.name.c_str(), row.nanoseconds);
            if (copy == m_memcpy.end())
                std::printf("|\n");
            else
                std::printf("%.2f |\n", row.nanoseconds / copy->second);
        }
        std::printf("\n| Call | ms |\n| --- | --- |\n");
        for (auto const& [name, milliseconds] : m_calls)
            std::printf("| %s | %.3f |\n", name.c_str(), milliseconds);
    }

private:
    struct Row
    {
        std::string name;
        double bytes;
        double nanoseconds;
    };

    std::map<double, double> m_memcpy;
    std::vector<Row> m_rows;
    // Work without pixels, in milliseconds.
    std::vector<std::pair<std::string, double>> m_calls;
};

} // namespace

int main(int argc, char** argv)
{
    std::vector<char*> arguments(argv, argv + argc);
    std::string repetitions = "--benchmark_repetitions=5";
    std::string aggregates = "--benchmark_report_aggregates_only=true";
    std::string minTime = "--benchmark_min_time=0.1";
    arguments.insert(arguments.begin() + 1, {repetitions.data(), aggregates.data(), minTime.data()});
    int count = static_cast<int>(arguments.size());
    benchmark::Initialize(&count, arguments.data());
    addCopies();
    Bench::addLinear();
    Bench::addGrades();
    Bench::addLooks();
    Bench::addTables();
    Bench::addFinalizes();
    Bench::addFiles();
    TableReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    reporter.printTables();
    return 0;
}
