// A chain as viewers have it, over a frame, beside what its kernels take in the cache and what a copy of the frame takes.
#include "cases.h"
#include "inCache.h"
#include "samples.h"

#include "shared/frame.h"

#include "renderer/CPUSelector.h"

#include <cstring>
#include <memory>
#include <vector>

namespace Bench
{

namespace
{

using Rendering::Block;
using Tavrin::PixelFormat;

constexpr PixelFormat kFormats[] = {Tavrin::PF_RGBA_32f, Tavrin::PF_RGB_32f,  Tavrin::PF_RGBA_16f,
                                    Tavrin::PF_RGBA_16i, Tavrin::PF_RGB_10iP, Tavrin::PF_RGBA_8i};

std::string viewingChain()
{
    return logToLinElement() + matrixElement() + gridElement(33, "tetrahedral") + exposureElement();
}

// All kernels one after the other on one block.
double kernelsInCache(Rendering::Pipeline const& pipeline, PixelFormat format)
{
    Rendering::TransformProcessor const& renderers = *pipeline.renderers;
    std::vector<Rendering::LineParameters> rooms(renderers.size());
    std::vector<Rendering::LineKernel> kernels;
    for (std::size_t i = 0; i < renderers.size(); ++i)
        kernels.push_back(renderers[i].prepareLine(rooms[i]));
    Rendering::LoadFunction const load = Rendering::getFormatFunctions(format).load;
    PlacedBlock placed;
    Block& block = placed.block;
    CacheClock clock(Block::kPixels);
    for (int i = 0; i < 20; ++i)
        clock.measure(
            [&] {
                load(sourceFrame(), {0, Block::kPixels}, block);
            },
            [&]
            {
                for (Rendering::LineKernel const& kernel : kernels)
                    kernel.function(kernel.parameters, block, Block::kPixels, {0, 0},
                                    kernel.keepsAlpha ? Rendering::Outputs::Colors : Rendering::Outputs::ColorsAndAlpha);
            });
    return clock.nanosecondsPerPixel();
}

double nanosecondsPerPixel(std::chrono::steady_clock::time_point begin)
{
    return std::chrono::duration<double, std::nano>(std::chrono::steady_clock::now() - begin).count() / kPixels;
}

void runChain(benchmark::State& state, Rendering::Pipeline const& pipeline, PixelFormat format)
{
    fillSource(format);
    Rendering::CPUEngine const engine(format, format);
    Tavrin::ROI const roi(0, 0, kWidth, kHeight);
    std::size_t const bytes = kPixels * Tavrin::getPixelSizeInByte(format);
    double kernels = 0;
    double copy = 0;
    double frame = 0;
    for (auto _ : state)
    {
        kernels += kernelsInCache(pipeline, format);
        auto const beginOfCopy = std::chrono::steady_clock::now();
        std::memcpy(destinationFrame(), sourceFrame(), bytes);
        copy += nanosecondsPerPixel(beginOfCopy);
        auto const beginOfFrame = std::chrono::steady_clock::now();
        engine.apply(sourceFrame(), destinationFrame(), roi, 0, 0, *pipeline.renderers);
        double const nanoseconds = nanosecondsPerPixel(beginOfFrame);
        frame += nanoseconds;
        state.SetIterationTime(nanoseconds * kPixels * 1e-9);
    }
    double const count = static_cast<double>(state.iterations());
    state.counters["ns"] = frame / count;
    state.counters["kernels_ns"] = kernels / count;
    state.counters["copy_ns"] = copy / count;
    state.counters["ratio"] = frame / (kernels + copy);
}

} // namespace

void addChains()
{
    for (PixelFormat const format : kFormats)
    {
        auto const pipeline = std::make_shared<Rendering::Pipeline>(pipelineOf(viewingChain(), format, format));
        benchmark::RegisterBenchmark(("chain/log, matrix, 3D 33, exposure/" + formatNames(format, format)).c_str(),
                                     [=](benchmark::State& state) { runChain(state, *pipeline, format); })
            ->UseManualTime()
            ->Iterations(5);
    }
}

} // namespace Bench
