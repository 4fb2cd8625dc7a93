// The pixel engine's loops over lines and blocks.
#include "renderer/CPUSelector.h"

#include "renderer/CPULut1DOp.h"
#include "renderer/codeTables.h"
#include "renderer/kernelsElements.h"
#include "renderer/pixelLayout.h"
#include "renderer/runningRenderers.h"
#include "renderer/shortLines.h"
#include "utils/errorMessage.h"
#include "utils/utils.h"

#include <algorithm>
#include <cstdint>
#include <optional>

namespace Rendering
{

namespace
{

// From this size on a separate destination picture would push everything else out of the caches, and so goes past them, whether it
// is rendered whole, in strips or in small regions.
constexpr std::size_t kStreamedBytes = std::size_t{4} << 20;

constexpr std::size_t kCacheLine = 64;

// The lines of one side of a call.
template <class Byte>
class Lines
{
public:
    // The row step, and the offset of the first pixel, are counted in unsigned 32-bit arithmetic.
    Lines(Byte* pixels, PixelFormat format, ROI const& roi, unsigned int padding)
        : m_stride(roi.imageWidth * Tavrin::getPixelSizeInByte(format) + padding),
          m_pixelBytes(Tavrin::getPixelSizeInByte(format)),
          m_first(pixels + (roi.y * m_stride + roi.x * m_pixelBytes))
    {
    }

    unsigned int pixelBytes() const { return m_pixelBytes; }
    Byte* line(unsigned int index) const { return m_first + std::size_t{index} * m_stride; }
    Byte* pixel(unsigned int lineIndex, unsigned int x) const { return line(lineIndex) + std::size_t{x} * m_pixelBytes; }

    // What is read a block after the one that begins with x; of that one, most is on its way. A block holds so many lines: if they
    // are short and share it, what is read next.
    UpcomingPixels following(unsigned int lineIndex, unsigned int x, unsigned int width, unsigned int lines = 1) const
    {
        if (lines > 1)
            return {line(lineIndex + lines), m_pixelBytes};
        unsigned int const ahead = x + Block::kPixels;
        return {ahead < width ? pixel(lineIndex, ahead) : pixel(lineIndex + 1, ahead - width), m_pixelBytes};
    }

private:
    unsigned int m_stride;
    unsigned int m_pixelBytes;
    Byte* m_first;
};

using SourceLines = Lines<std::uint8_t const>;
using DestinationLines = Lines<std::uint8_t>;

SourceLines sourceLines(void const* pixels, PixelFormat format, ROI const& roi, unsigned int padding)
{
    return {static_cast<std::uint8_t const*>(pixels), format, roi, padding};
}

DestinationLines destinationLines(void* pixels, PixelFormat format, ROI const& roi, unsigned int padding)
{
    return {static_cast<std::uint8_t*>(pixels), format, roi, padding};
}

bool overlap(SourceLines const& source, DestinationLines const& destination, ROI const& roi)
{
    auto const begin = [](auto const& lines) { return reinterpret_cast<std::uintptr_t>(lines.line(0)); };
    auto const end = [&roi](auto const& lines) { return reinterpret_cast<std::uintptr_t>(lines.pixel(roi.height - 1, roi.width)); };
    return begin(source) < end(destination) && begin(destination) < end(source);
}

bool wantsStreaming(SourceLines const& source, DestinationLines const& destination, ROI const& roi)
{
    std::size_t const bytes = std::size_t{roi.imageWidth} * roi.imageHeight * destination.pixelBytes();
    return bytes >= kStreamedBytes && !overlap(source, destination, roi);
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

// What holds for one call of the engine.
class EngineCall
{
public:
    EngineCall(SourceLines const& source, FormatFunctions const& load, DestinationLines const& destination,
               FormatFunctions const& store, PixelFormat in, PixelFormat out, ROI const& roi, TransformProcessor const& renderers)
        : m_source(source),
          m_destination(destination),
          m_load(load),
          m_store(store),
          m_in(in),
          m_out(out),
          m_roi(roi),
          m_renderers(renderers),
          m_streams(wantsStreaming(source, destination, roi)),
          m_elementLine(getElementLineFunction(in, out)),
          m_shortLine(m_streams ? getShortLineFunction(in, out) : nullptr),
          m_running(renderers, in, out),
          m_codeTables(in, out),
          m_usesCodeTables(m_codeTables.pay(std::size_t{roi.width} * roi.height))
    {
    }

    void render()
    {
        unsigned int const maxLines = linesOfABlock(m_renderers, m_roi);
        for (unsigned int line = 0; line < m_roi.height; line += maxLines)
            _renderLines(line, std::min(m_roi.height - line, maxLines));
        if (m_streams)
            finishStreaming();
    }

private:
    // So many lines from one on, which share a block if they are more than one.
    void _renderLines(unsigned int line, unsigned int lines)
    {
        Lut1DParameters const* const entries = getDirectEntries(m_renderers, m_in, m_out);
        if (entries != nullptr && m_codeTables.takeEntries())
        {
            m_codeTables.setEntries(*entries);
            return _renderCodes(line, lines);
        }
        if (entries != nullptr && !m_usesCodeTables)
            return _renderEntries(*entries, line, lines);

        bool const areOther = m_running.prepareLines();
        if (auto const arithmetic = _getElementArithmetic(line))
            return _renderElements(*arithmetic, line, lines);
        if (m_usesCodeTables)
            m_codeTables.reckon(m_running, areOther, m_load, m_block);
        if (m_codeTables.givePixels())
            return _renderCodes(line, lines);
        _renderValues(line, lines);
    }

    void _renderCodes(unsigned int line, unsigned int lines)
    {
        for (unsigned int i = line; i < line + lines; ++i)
            m_codeTables.renderLine(m_source.line(i), m_destination.line(i), m_roi.width, m_streams);
    }

    void _renderEntries(Lut1DParameters const& entries, unsigned int line, unsigned int lines)
    {
        if (m_shortLine != nullptr && _pixelsAreAligned(line, lines))
            return _renderShorts(entries, line, lines);
        EntryStoreFunction const store = m_streams ? m_store.streamEntries : m_store.storeEntries;
        _forEachPart(line, lines,
                     [&](Part const& part)
                     {
                         _load(part, [&](auto const&... places) { m_load.loadCodes(places..., m_block); });
                         _store(part, [&](auto const&... places) { store(entries, m_block, places...); });
                     });
    }

    void _renderShorts(Lut1DParameters const& entries, unsigned int line, unsigned int lines)
    {
        for (unsigned int i = line; i < line + lines; ++i)
            m_shortLine(entries, m_source.line(i), m_destination.line(i), m_roi.width);
    }

    // Whether the destination's lines begin at multiples of the size of a pixel.
    bool _pixelsAreAligned(unsigned int line, unsigned int lines) const
    {
        for (unsigned int i = line; i < line + lines; ++i)
        {
            if (reinterpret_cast<std::uintptr_t>(m_destination.line(i)) % m_destination.pixelBytes() != 0)
                return false;
        }
        return true;
    }

    std::optional<ElementArithmetic> _getElementArithmetic(unsigned int line) const
    {
        if (m_elementLine == nullptr)
            return std::nullopt;
        return m_running.getElementArithmetic(channelsOf(layoutOf(m_in)), {m_roi.x, m_roi.y + line});
    }

    void _renderElements(ElementArithmetic const& arithmetic, unsigned int line, unsigned int lines)
    {
        std::size_t const count = std::size_t{m_roi.width} * channelsOf(layoutOf(m_in));
        for (unsigned int i = line; i < line + lines; ++i)
        {
            unsigned int const next = std::min(i + lines, m_roi.height - 1);
            m_elementLine(arithmetic, {m_source.line(i), m_destination.line(i), count, m_source.line(next), m_streams});
        }
    }

    void _renderValues(unsigned int line, unsigned int lines)
    {
        if (m_codeTables.renderers() > 0)
            return _renderBlocks([&](auto const&... places) { m_codeTables.load(places..., m_block); }, line, lines);
        LoadFunction const load = m_running.takesCodes() ? m_load.loadCodes : m_load.load;
        _renderBlocks([&](auto const&... places) { load(places..., m_block); }, line, lines);
    }

    // The renderers whose work the load does not do.
    template <class Load>
    void _renderBlocks(Load const& load, unsigned int line, unsigned int lines)
    {
        StoreFunction const store = m_streams ? m_store.stream : m_store.store;
        _forEachPart(line, lines,
                     [&](Part const& part)
                     {
                         _load(part, load);
                         m_running.run(m_codeTables.renderers(), m_running.size(), m_block, part.lines * part.count,
                                       {m_roi.x + part.x, m_roi.y + part.line});
                         _store(part, [&](auto const&... places) { store(m_block, places...); });
                     });
    }

    // What the block holds at a time: so many pixels of each of some lines.
    struct Part
    {
        unsigned int line;
        unsigned int lines;
        unsigned int x;
        unsigned int count;
    };

    template <class Render>
    void _forEachPart(unsigned int line, unsigned int lines, Render const& render)
    {
        unsigned int count = std::min(m_roi.width, _pixelsOfFirstBlock(line));
        for (unsigned int x = 0; x < m_roi.width; x += count, count = std::min(m_roi.width - x, Block::kPixels))
            render(Part{line, lines, x, count});
    }

    // Whole lines of the cache go past it faster than parts, so of long lines the blocks that stream begin with one, where pixels
    // ever do.
    unsigned int _pixelsOfFirstBlock(unsigned int line) const
    {
        if (!m_streams || m_roi.width <= 2 * Block::kPixels)
            return Block::kPixels;
        auto const address = reinterpret_cast<std::uintptr_t>(m_destination.line(line));
        unsigned int pixels = 0;
        while (pixels < kCacheLine && (address + std::size_t{pixels} * m_destination.pixelBytes()) % kCacheLine != 0)
            ++pixels;
        // None are before a line of the cache, or no pixel begins on one.
        return pixels % kCacheLine == 0 ? Block::kPixels : pixels;
    }

    // Load is called with where pixels come from, and with their places in the block.
    template <class Load>
    void _load(Part const& part, Load const& load)
    {
        for (unsigned int i = 0; i < part.lines; ++i)
            load(m_source.pixel(part.line + i, part.x), Places{i * part.count, part.count});
    }

    // Store is called with places of the block, where their pixels go, and which pixels to ask for meanwhile.
    template <class Store>
    void _store(Part const& part, Store const& store)
    {
        for (unsigned int i = 0; i < part.lines; ++i)
            store(Places{i * part.count, part.count}, m_destination.pixel(part.line + i, part.x),
                  m_source.following(part.line + i, part.x + part.count, m_roi.width, part.lines));
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
    // Null where channels do not stay in their places.
    ElementLineFunction m_elementLine;
    // Null where lines of 16-bit codes have no way of their own.
    ShortLineFunction m_shortLine;
    RunningRenderers m_running;
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
                      unsigned int destinationPadding, TransformProcessor const& renderers) const
{
    if (roi.width == 0 || roi.height == 0)
        return;
    SourceLines const source = sourceLines(sourcePixels, m_in, roi, sourcePadding);
    DestinationLines const destination = destinationLines(destinationPixels, m_out, roi, destinationPadding);
    EngineCall(source, m_source, destination, m_destination, m_in, m_out, roi, renderers).render();
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

    Block block;
    for (unsigned int line = 0; line < sourceRoi.height; ++line)
    {
        for (unsigned int x = 0; x < sourceRoi.width; x += Block::kPixels)
        {
            unsigned int const count = std::min(sourceRoi.width - x, Block::kPixels);
            load(source.pixel(line, x), {0, count}, block);
            store(block, {0, count}, destination.pixel(line, x), source.following(line, x + count, sourceRoi.width));
        }
    }
}

} // namespace Rendering
