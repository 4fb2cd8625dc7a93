// Measures what the engine is made of, each part in the cache: kernels, loads, stores; and chains beside the sum of their parts.
// --benchmark_out=FILE writes the numbers as JSON.
#include "cases.h"

#include "renderer/simdTarget.h"

#include <benchmark/benchmark.h>

#include <string>
#include <vector>

int main(int argc, char** argv)
{
    std::vector<char*> arguments(argv, argv + argc);
    std::string repetitions = "--benchmark_repetitions=5";
    std::string aggregates = "--benchmark_report_aggregates_only=true";
    std::string minTime = "--benchmark_min_time=0.01";
    arguments.insert(arguments.begin() + 1, {repetitions.data(), aggregates.data(), minTime.data()});
    int count = static_cast<int>(arguments.size());
    benchmark::Initialize(&count, arguments.data());
    benchmark::AddCustomContext("kind", "kernels");
    benchmark::AddCustomContext("target", Rendering::getSimdTargetName(Rendering::getSimdTarget()));
    bool const isComplete = Bench::addKernels();
    Bench::addFormats();
    Bench::addChains();
    benchmark::RunSpecifiedBenchmarks();
    return isComplete ? 0 : 1;
}
