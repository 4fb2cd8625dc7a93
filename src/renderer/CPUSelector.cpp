// The pixel engine's loops over lines and blocks.
#include "renderer/CPUSelector.h"

#include "renderer/CPULut1DOp.h"
#include "renderer/cacheLine.h"
#include "renderer/codeTables.h"
#include "renderer/kernelsElements.h"
#include "renderer/pictureLines.h"
#include "renderer/pixelLayout.h"
#include "renderer/readAhead.h"
#include "renderer/runningRenderers.h"
#include "renderer/shortLines.h"
#include "renderer/valueTables.h"
#include "utils/errorMessage.h"
#include "utils/utils.h"

#include <algorithm>
#include <cstdint>
#include <optional>

namespace Rendering
{

namespace
{

SourceLines sourceLines(void const* pixels, PixelFormat format, ROI const& roi, unsigned int padding)
{
    return {static_cast<std::uint8_t const*>(pixels), format, roi, padding};
}

DestinationLines destinationLines(void* pixels, PixelFormat format, ROI const& roi, unsigned int padding)
{
    return {static_cast<std::uint8_t*>(pixels), format, roi, padding};
}

bool overlap(SourceLines const& source, DestinationLines const& destination)
{
    auto const begin = [](auto const& lines) { return reinterpret_cast<std::uintptr_t>(lines.line(0)); };
    auto const end = [](auto const& lines)
    { return reinterpret_cast<std::uintptr_t>(lines.pixel(lines.height() - 1, lines.width())); };
    return begin(source) < end(destination) && begin(destination) < end(source);
}

// A large picture apart from the source goes past the caches, whether it is rendered whole, in strips or in small regions.
bool wantsStreaming(SourceLines const& source, DestinationLines const& destination)
{
    return destination.isOfLargePicture() && !overlap(source, destination);
}

// Short lines share a block, as far as they fit in.
unsigned int linesOfABlock(TransformProcessor const& renderers, ROI const& roi)
{
    for (std::size_t i = 0; i < renderers.size(); ++i)
    {
        if (renderers[i].dependsOnPosition())
            return 1;
    }
    return std::max(Block::kPixels / roi.width, 1U);
}

// The tables of a lone renderer whose entries are all that the next line needs.
Lut1DParameters const* getDirectEntries(TransformProcessor const& renderers, PixelFormat in, PixelFormat out)
{
    if (renderers.size() != 1 || renderers[0].isBypassed())
        return nullptr;
    return renderers[0].getDirectEntries(Color::Utils::depthOf(in), Color::Utils::depthOf(out));
}

// Lines that are rendered together; if they are more than one, they share a block.
struct LineGroup
{
    unsigned int first;
    unsigned int count;

    unsigned int end() const { return first + count; }
};

// What holds for one call of the engine.
class EngineCall
{
public:
    EngineCall(SourceLines const& source, FormatFunctions const& load, DestinationLines const& destination,
               FormatFunctions const& store, PixelFormat in, PixelFormat out, ROI const& roi, TransformProcessor const& renderers,
               ValueTables const* valueTables)
        : m_source(source),
          m_destination(destination),
          m_load(load),
          m_store(store),
          m_in(in),
          m_out(out),
          m_roi(roi),
          m_renderers(renderers),
          m_streams(wantsStreaming(source, destination)),
          m_linesOfABlock(linesOfABlock(renderers, roi)),
          m_readAhead(source, m_linesOfABlock),
          m_elementLine(getElementLineFunction(in, out)),
          m_shortLine(m_streams ? getShortLineFunction(in, out) : nullptr),
          m_running(renderers, in, out),
          m_valueTables(valueTables),
          m_codeTables(in, out),
          m_usesCodeTables(m_codeTables.pay(std::size_t{roi.width} * roi.height))
    {
    }

    void render()
    {
        for (unsigned int line = 0; line < m_roi.height; line += m_linesOfABlock)
            _renderLines({line, std::min(m_roi.height - line, m_linesOfABlock)});
        if (m_streams)
            finishStreaming();
    }

private:
    // Of the ways that serve the first one is taken. All give the same bytes, and the last one serves always.
    void _renderLines(LineGroup lines)
    {
        if (_renderTable(lines))
            return;
        bool const areOther = m_running.prepareLines();
        if (_renderElements(lines))
            return;
        if (m_usesCodeTables)
            m_codeTables.reckon(m_running, areOther, m_block);
        if (_renderCodes(lines))
            return;
        _renderValues(lines);
    }

    // A lone table from codes to what the destination stores.
    bool _renderTable(LineGroup lines)
    {
        Lut1DParameters const* const entries = getDirectEntries(m_renderers, m_in, m_out);
        if (entries == nullptr)
            return false;
        if (m_codeTables.takeEntries())
        {
            m_codeTables.setEntries(*entries);
            _lookUpCodes(lines);
        }
        else if (m_usesCodeTables)
            return false;
        else if (m_shortLine != nullptr && _pixelsAreAligned(lines))
            _renderShorts(*entries, lines);
        else
            _renderEntries(*entries, lines);
        return true;
    }

    // A lone renderer to which all channels are alike.
    bool _renderElements(LineGroup lines)
    {
        auto const arithmetic = _getElementArithmetic(lines.first);
        if (!arithmetic)
            return false;
        std::size_t const count = std::size_t{m_roi.width} * channelsOf(layoutOf(m_in));
        for (unsigned int i = lines.first; i < lines.end(); ++i)
        {
            unsigned int const next = std::min(i + lines.count, m_roi.height - 1);
            m_elementLine(*arithmetic, {m_source.line(i), m_destination.line(i), count, m_source.line(next), m_streams});
        }
        return true;
    }

    // Renderers of which tables of bytes hold all that the destination stores.
    bool _renderCodes(LineGroup lines)
    {
        if (!m_codeTables.givePixels())
            return false;
        _lookUpCodes(lines);
        return true;
    }

    // All renderers, but for those whose work the load does.
    void _renderValues(LineGroup lines)
    {
        if (std::size_t const loaded = m_codeTables.renderers())
            return _renderBlocks([&](auto const&... places) { m_codeTables.load(places..., m_block); }, loaded, lines);
        if (std::size_t const loaded = m_valueTables == nullptr ? 0 : m_valueTables->renderersOf(m_running))
            return _renderBlocks([&](auto const&... places) { m_valueTables->load(places..., m_block); }, loaded, lines);
        LoadFunction const load = m_running.takesCodes() ? m_load.loadCodes : m_load.load;
        _renderBlocks([&](auto const&... places) { load(places..., m_block); }, 0, lines);
    }

    void _lookUpCodes(LineGroup lines)
    {
        for (unsigned int i = lines.first; i < lines.end(); ++i)
            m_codeTables.renderLine(m_source.line(i), m_destination.line(i), m_roi.width, m_streams);
    }

    void _renderShorts(Lut1DParameters const& entries, LineGroup lines)
    {
        for (unsigned int i = lines.first; i < lines.end(); ++i)
            m_shortLine(entries, m_source.line(i), m_destination.line(i), m_roi.width);
    }

    // Whether the destination's lines begin at multiples of the size of a pixel.
    bool _pixelsAreAligned(LineGroup lines) const
    {
        for (unsigned int i = lines.first; i < lines.end(); ++i)
        {
            if (reinterpret_cast<std::uintptr_t>(m_destination.line(i)) % m_destination.pixelBytes() != 0)
                return false;
        }
        return true;
    }

    void _renderEntries(Lut1DParameters const& entries, LineGroup lines)
    {
        EntryStoreFunction const store = m_streams ? m_store.streamEntries : m_store.storeEntries;
        _forEachPart(lines,
                     [&](Part const& part)
                     {
                         _load(part, [&](auto const&... places) { m_load.loadCodes(places..., m_block); });
                         _store(part, [&](auto const&... places) { store(entries, m_block, places...); });
                     });
    }

    std::optional<ElementArithmetic> _getElementArithmetic(unsigned int line) const
    {
        if (m_elementLine == nullptr)
            return std::nullopt;
        return m_running.getElementArithmetic(channelsOf(layoutOf(m_in)), {m_roi.x, m_roi.y + line});
    }

    // The renderers from one on; the load does what those before it do.
    template <class Load>
    void _renderBlocks(Load const& load, std::size_t firstRenderer, LineGroup lines)
    {
        StoreFunction const store = m_streams ? m_store.stream : m_store.store;
        _forEachPart(lines,
                     [&](Part const& part)
                     {
                         _load(part, load);
                         m_running.run(firstRenderer, m_running.size(), m_block, part.lines.count * part.count,
                                       {m_roi.x + part.x, m_roi.y + part.lines.first});
                         _store(part, [&](auto const&... places) { store(m_block, places...); });
                     });
    }

    // What the block holds at a time: so many pixels of each line.
    struct Part
    {
        LineGroup lines;
        unsigned int x;
        unsigned int count;
    };

    template <class Render>
    void _forEachPart(LineGroup lines, Render const& render)
    {
        unsigned int count = std::min(m_roi.width, _pixelsOfFirstBlock(lines.first));
        for (unsigned int x = 0; x < m_roi.width; x += count, count = std::min(m_roi.width - x, Block::kPixels))
            render(Part{lines, x, count});
    }

    // Whole lines of the cache go past it faster than parts. Where a part of the block begins within one, the store looks to it; of
    // long lines the blocks begin with one, where pixels ever do, so that none is stored in two parts.
    unsigned int _pixelsOfFirstBlock(unsigned int line) const
    {
        if (!m_streams || m_roi.width <= 2 * Block::kPixels)
            return Block::kPixels;
        std::size_t const pixelBytes = m_destination.pixelBytes();
        std::size_t const gap = bytesToCacheLine(m_destination.line(line), pixelBytes);
        return gap == 0 || gap % pixelBytes != 0 ? Block::kPixels : static_cast<unsigned int>(gap / pixelBytes);
    }

    // Load is called with where pixels come from, and with their places in the block.
    template <class Load>
    void _load(Part const& part, Load const& load)
    {
        for (unsigned int i = 0; i < part.lines.count; ++i)
            load(m_source.pixel(part.lines.first + i, part.x), Places{i * part.count, part.count});
    }

    // Store is called with places of the block, where their pixels go, and which pixels to ask for meanwhile.
    template <class Store>
    void _store(Part const& part, Store const& store)
    {
        for (unsigned int i = 0; i < part.lines.count; ++i)
        {
            unsigned int const line = part.lines.first + i;
            store(Places{i * part.count, part.count}, m_destination.pixel(line, part.x), m_readAhead.behind(line, part.x));
        }
    }

    SourceLines const& m_source;
    DestinationLines const& m_destination;
    FormatFunctions const& m_load;
    FormatFunctions const& m_store;
    PixelFormat m_in;
    PixelFormat m_out;
    ROI const& m_roi;
    TransformProcessor const& m_renderers;
    bool m_streams;
    unsigned int m_linesOfABlock;
    ReadAhead m_readAhead;
    // Null where channels do not stay in their places.
    ElementLineFunction m_elementLine;
    // Null where lines of 16-bit codes have no way of their own.
    ShortLineFunction m_shortLine;
    RunningRenderers m_running;
    // Null if there are none.
    ValueTables const* m_valueTables;
    CodeTables m_codeTables;
    bool m_usesCodeTables;
    Block m_block;
};

} // namespace

CPUEngine::CPUEngine(PixelFormat in, PixelFormat out)
    : m_in(in), m_out(out), m_source(getFormatFunctions(in)), m_destination(getFormatFunctions(out))
{
}

void CPUEngine::apply(void const* sourcePixels, void* destinationPixels, ROI const& roi, unsigned int sourcePadding,
                      unsigned int destinationPadding, TransformProcessor const& renderers, ValueTables const* valueTables) const
{
    if (roi.width == 0 || roi.height == 0)
        return;
    SourceLines const source = sourceLines(sourcePixels, m_in, roi, sourcePadding);
    DestinationLines const destination = destinationLines(destinationPixels, m_out, roi, destinationPadding);
    EngineCall(source, m_source, destination, m_destination, m_in, m_out, roi, renderers, valueTables).render();
}

void copyBuffer(void const* sourcePixels, PixelFormat sourceFormat, unsigned int sourcePadding, ROI const& sourceRoi,
                void* destinationPixels, PixelFormat destinationFormat, unsigned int destinationPadding, ROI const& destinationRoi)
{
    if (sourceRoi.width != destinationRoi.width)
        throw Color::failure(Color::ErrorIds::kRoiMismatch, Color::Module::kUtils, "source active width",
                             "destination active width");
    if (sourceRoi.height != destinationRoi.height)
        throw Color::failure(Color::ErrorIds::kRoiMismatch, Color::Module::kUtils, "source active height",
                             "destination active height");
    LoadFunction const load = getFormatFunctions(sourceFormat).load;
    StoreFunction const store = getFormatFunctions(destinationFormat).store;
    SourceLines const source = sourceLines(sourcePixels, sourceFormat, sourceRoi, sourcePadding);
    DestinationLines const destination = destinationLines(destinationPixels, destinationFormat, destinationRoi, destinationPadding);

    ReadAhead const readAhead(source, 1);
    Block block;
    for (unsigned int line = 0; line < sourceRoi.height; ++line)
    {
        for (unsigned int x = 0; x < sourceRoi.width; x += Block::kPixels)
        {
            unsigned int const count = std::min(sourceRoi.width - x, Block::kPixels);
            load(source.pixel(line, x), {0, count}, block);
            store(block, {0, count}, destination.pixel(line, x), readAhead.behind(line, x));
        }
    }
}

} // namespace Rendering
