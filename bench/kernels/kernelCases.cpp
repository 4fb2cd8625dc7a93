// Every kernel on a block of pixels.
#include "cases.h"
#include "inCache.h"
#include "samples.h"

#include "shared/frame.h"

#include "renderer/kernelsArithmetic.h"
#include "renderer/kernelsFormats.h"
#include "renderer/kernelsTables.h"

#include <cstdio>
#include <map>
#include <memory>

namespace Bench
{

namespace
{

using Rendering::Block;
using Rendering::BlockFunction;

// The names of kernels by their functions, for the kernels that no case has had yet.
std::map<BlockFunction, std::string> kernelNames()
{
    using Rendering::ArithmeticKernel;
    using Rendering::TableKernel;
    return {
#define TAVRIN_KERNEL(name, Parameters) {Rendering::getArithmeticKernel(ArithmeticKernel::name), #name},
#include "renderer/arithmeticKernels.def"
#include "renderer/curveKernels.def"
#undef TAVRIN_KERNEL
#define TAVRIN_KERNEL(name, Parameters) {Rendering::getTableKernel(TableKernel::name), #name},
#include "renderer/tableKernels.def"
#undef TAVRIN_KERNEL
    };
}

// Pixels are loaded into the block for every call, as they are for a renderer that stands first.
void runKernel(benchmark::State& state, Rendering::Pipeline const& pipeline, Tavrin::PixelFormat in, Rendering::Outputs outputs)
{
    Rendering::VirtualRenderer const& renderer = (*pipeline.renderers)[0];
    Rendering::LineParameters room;
    Rendering::LineKernel const kernel = renderer.prepareLine(room);
    Rendering::FormatFunctions const& format = Rendering::getFormatFunctions(in);
    Rendering::LoadFunction const load = renderer.takesCodes() ? format.loadCodes : format.load;
    fillSource(in);
    PlacedBlock placed;
    Block& block = placed.block;
    runInCache(
        state, Block::kPixels,
        [&] {
            load(sourceFrame(), {0, Block::kPixels}, block);
        },
        [&] {
            kernel.function(kernel.parameters, block, Block::kPixels, {0, 0}, outputs);
        });
}

} // namespace

bool addKernels()
{
    std::map<BlockFunction, std::string> names = kernelNames();
    for (Sample const& sample : kernelSamples())
    {
        auto const pipeline = std::make_shared<Rendering::Pipeline>(pipelineOf(sample.elements, sample.in, sample.out));
        Rendering::LineParameters room;
        auto const name = names.find((*pipeline->renderers)[0].prepareLine(room).function);
        if (name == names.end())
        {
            std::fprintf(stderr, "A kernel that another case has: %s\n", sample.elements.substr(0, 200).c_str());
            return false;
        }
        addInCache("kernel/" + name->second, [pipeline, in = sample.in](benchmark::State& state)
                   { runKernel(state, *pipeline, in, Rendering::Outputs::ColorsAndAlpha); });
        addInCache("colors/" + name->second, [pipeline, in = sample.in](benchmark::State& state)
                   { runKernel(state, *pipeline, in, Rendering::Outputs::Colors); });
        names.erase(name);
    }
    for (auto const& [function, name] : names)
        std::fprintf(stderr, "No case for the kernel %s\n", name.c_str());
    return names.empty();
}

} // namespace Bench
