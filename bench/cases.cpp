// How a case of tavrinBench is registered.
#include "cases.h"

#include <benchmark/benchmark.h>

#include <cstdint>
#include <cstring>

namespace Bench
{

namespace
{

void setCounters(benchmark::State& state, std::size_t bytes)
{
    state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations() * kPixels));
    state.counters["bytes"] = static_cast<double>(bytes);
}

} // namespace

void addRender(std::string const& name, Tavrin::TransformPtr const& transform, Tavrin::PixelFormat in, Tavrin::PixelFormat out,
               Placement placement)
{
    bool const inPlace = placement == Placement::InPlace;
    benchmark::RegisterBenchmark(
        (name + "/" + formatNames(in, out) + (inPlace ? " in place" : "")).c_str(),
        [=](benchmark::State& state)
        {
            constexpr Tavrin::OptimizerFlags kNoOptimization = 101;
            check(transform->finalize(in, out, Tavrin::RENDERER_CPU, kNoOptimization, Tavrin::RESOLVE_GRAPHICS_MONITOR));
            fillSource(in);
            unsigned char* const destination = inPlace ? sourceFrame() : destinationFrame();
            Tavrin::ROI const roi(0, 0, kWidth, kHeight);
            for (auto _ : state)
                check(transform->applyCPU(sourceFrame(), roi, destination));
            setCounters(state, Tavrin::getPixelSizeInByte(out));
        });
}

void addCall(std::string const& name, std::function<Tavrin::TavStatus()> const& call)
{
    benchmark::RegisterBenchmark(name.c_str(),
                                 [=](benchmark::State& state)
                                 {
                                     for (auto _ : state)
                                         check(call());
                                 });
}

void addFinalize(std::string const& name, Tavrin::TransformPtr const& transform, Tavrin::OptimizerFlags flags)
{
    addCall(name + ", threshold " + std::to_string(flags),
            [=]
            {
                return transform->finalize(Tavrin::PF_RGBA_32f, Tavrin::PF_RGBA_32f, Tavrin::RENDERER_CPU, flags,
                                           Tavrin::RESOLVE_GRAPHICS_MONITOR);
            });
}

void addCopy(Tavrin::PixelFormat format)
{
    benchmark::RegisterBenchmark(("memcpy/" + formatName(format)).c_str(),
                                 [=](benchmark::State& state)
                                 {
                                     std::size_t const pixelBytes = Tavrin::getPixelSizeInByte(format);
                                     for (auto _ : state)
                                         std::memcpy(destinationFrame(), sourceFrame(), kPixels * pixelBytes);
                                     setCounters(state, pixelBytes);
                                 });
}

} // namespace Bench
