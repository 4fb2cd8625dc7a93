// Loads and stores of the formats that are used most, on a block of pixels.
#include "cases.h"
#include "inCache.h"
#include "samples.h"

#include "shared/frame.h"

#include "renderer/CPULut1DOp.h"
#include "renderer/codeTables.h"
#include "renderer/kernelsFormats.h"
#include "utils/utils.h"

#include <functional>
#include <memory>

namespace Bench
{

namespace
{

using Rendering::Block;
using Rendering::FormatFunctions;
using Tavrin::PixelFormat;

constexpr PixelFormat kFormats[] = {Tavrin::PF_RGBA_8i,  Tavrin::PF_RGBA_10i, Tavrin::PF_RGBA_16i, Tavrin::PF_RGBA_16f,
                                    Tavrin::PF_RGBA_32f, Tavrin::PF_ABGR_32f, Tavrin::PF_RGB_8i,   Tavrin::PF_RGB_16i,
                                    Tavrin::PF_RGB_16f,  Tavrin::PF_RGB_32f,  Tavrin::PF_RGB_10iP, Tavrin::PF_RGBA_10iP};

using Run = std::function<void(benchmark::State&)>;

void add(std::string const& name, PixelFormat format, Run const& run)
{
    addInCache(name + "/" + formatNames(format, format),
               [=](benchmark::State& state)
               {
                   fillSource(format);
                   run(state);
               });
}

void doNothing() {}

void addLoad(std::string const& name, PixelFormat format, Rendering::LoadFunction FormatFunctions::*load)
{
    add(name, format,
        [=](benchmark::State& state)
        {
            Rendering::LoadFunction const function = Rendering::getFormatFunctions(format).*load;
            PlacedBlock placed;
            Block& block = placed.block;
            runInCache(state, Block::kPixels, doNothing, [&] { function(sourceFrame(), {0, Block::kPixels}, block); });
        });
}

void addStore(PixelFormat format)
{
    add("store", format,
        [=](benchmark::State& state)
        {
            FormatFunctions const& functions = Rendering::getFormatFunctions(format);
            PlacedBlock placed;
            Block& block = placed.block;
            functions.load(sourceFrame(), {0, Block::kPixels}, block);
            runInCache(state, Block::kPixels, doNothing,
                       [&] {
                           functions.store(block, {0, Block::kPixels}, destinationFrame(), {sourceFrame(), 4});
                       });
        });
}

// A curve between codes of the format's depth.
std::shared_ptr<Rendering::Pipeline const> tableOf(PixelFormat format)
{
    return std::make_shared<Rendering::Pipeline const>(pipelineOf(curveElement(), format, format));
}

Rendering::Lut1DParameters const& entriesOf(Rendering::Pipeline const& table, PixelFormat format)
{
    Tavrin::BitDepth const depth = Color::Utils::depthOf(format);
    return *(*table.renderers)[0].getDirectEntries(depth, depth);
}

void addEntryStore(PixelFormat format)
{
    add("store entries", format,
        [table = tableOf(format), format](benchmark::State& state)
        {
            FormatFunctions const& functions = Rendering::getFormatFunctions(format);
            Rendering::Lut1DParameters const& entries = entriesOf(*table, format);
            PlacedBlock placed;
            Block& block = placed.block;
            functions.loadCodes(sourceFrame(), {0, Block::kPixels}, block);
            runInCache(state, Block::kPixels, doNothing,
                       [&] {
                           functions.storeEntries(entries, block, {0, Block::kPixels}, destinationFrame(), {sourceFrame(), 4});
                       });
        });
}

// Three tables, as a curve for each colour is.
void addCodeLine(PixelFormat format)
{
    add("bytes through tables", format,
        [table = tableOf(format), format](benchmark::State& state)
        {
            Rendering::CodeTables tables(format, format);
            tables.setEntries(entriesOf(*table, format));
            runInCache(state, Block::kPixels, doNothing,
                       [&] { tables.renderLine(sourceFrame(), destinationFrame(), Block::kPixels, false); });
        });
}

void addCodeLoad(PixelFormat format)
{
    add("load through tables", format,
        [format](benchmark::State& state)
        {
            Rendering::CodeFunctions const& functions = *Rendering::getCodeFunctions();
            Rendering::CodeValues const values(format);
            PlacedBlock placed;
            Block& block = placed.block;
            runInCache(state, Block::kPixels, doNothing,
                       [&] {
                           functions.load(values, sourceFrame(), {0, Block::kPixels}, block);
                       });
        });
}

} // namespace

void addFormats()
{
    for (PixelFormat const format : kFormats)
        addLoad("load", format, &FormatFunctions::load);
    for (PixelFormat const format : kFormats)
        addStore(format);
    for (PixelFormat const format : kFormats)
    {
        if (Color::Utils::depthOf(format) == Tavrin::BIT_DEPTH_32f)
            continue;
        addLoad("load codes", format, &FormatFunctions::loadCodes);
        addEntryStore(format);
    }
    if (Rendering::getCodeFunctions() == nullptr)
        return;
    for (PixelFormat const format : {Tavrin::PF_RGBA_8i, Tavrin::PF_RGB_8i})
    {
        addCodeLoad(format);
        addCodeLine(format);
    }
}

} // namespace Bench
