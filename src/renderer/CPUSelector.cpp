// The pixel engine's loops over lines and blocks.
#include "renderer/CPUSelector.h"

#include "renderer/CPULut1DOp.h"
#include "renderer/CPUMatrixOp.h"
#include "renderer/kernelsArithmetic.h"
#include "renderer/kernelsBytes.h"
#include "renderer/pixelLayout.h"
#include "utils/errorMessage.h"
#include "utils/utils.h"

#include <boost/container/small_vector.hpp>

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

// A renderer with what holds for the lines that are being rendered.
struct RunningRenderer
{
    LineKernel kernel;
    LineParameters parameters;
    // Some later renderer, or the destination, takes the alpha that this one gives.
    bool alphaIsRead;
    // All pixels have the same alpha, which is reckoned once for the line.
    bool alphaIsUniform;

    bool changesAlpha() const { return alphaIsRead && !kernel.keepsAlpha; }
    Outputs outputs() const { return changesAlpha() && !alphaIsUniform ? Outputs::ColorsAndAlpha : Outputs::Colors; }
};

using RunningRenderers = boost::container::small_vector<RunningRenderer, 16>;

void findReadersOfAlpha(TransformProcessor const& renderers, PixelFormat out, RunningRenderers& running)
{
    bool isRead = hasAlpha(layoutOf(out));
    for (std::size_t i = running.size(); i-- > 0;)
    {
        running[i].alphaIsRead = isRead;
        isRead = isRead || renderers[i].mixesAlpha();
    }
}

// A format without alpha gives all pixels the same one. In lines of a block or less there is nothing to win by that.
void findUniformAlpha(TransformProcessor const& renderers, PixelFormat in, unsigned int width, RunningRenderers& running)
{
    bool isUniform = !hasAlpha(layoutOf(in)) && width > Block::kPixels;
    for (std::size_t i = 0; i < running.size(); ++i)
    {
        isUniform = isUniform && !renderers[i].mixesAlpha() && !renderers[i].dependsOnPosition();
        running[i].alphaIsUniform = isUniform;
    }
}

// What the uniform alpha is behind the renderers that leave it so. What they make of the block's colours is of no interest.
float reckonUniformAlpha(RunningRenderers const& running, float alpha, Block& block)
{
    std::fill_n(block.alpha, Block::kPixels, alpha);
    for (RunningRenderer const& renderer : running)
    {
        if (renderer.alphaIsUniform && renderer.changesAlpha())
            renderer.kernel.function(renderer.kernel.parameters, block, 1, {0, 0}, Outputs::ColorsAndAlpha);
    }
    return block.alpha[0];
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

// A renderer that is bypassed still makes the change of depth that its place asks for.
class BypassScales
{
public:
    BypassScales(PixelFormat in, PixelFormat out)
        : m_inRange(Tavrin::getBitDepthValueRange(Color::Utils::depthOf(in))),
          m_outRange(Tavrin::getBitDepthValueRange(Color::Utils::depthOf(out))),
          m_function(getArithmeticKernel(ArithmeticKernel::Scale))
    {
    }

    LineKernel prepareLine(bool isFirst, bool isLast, LineParameters& room) const
    {
        float const floatRange = Tavrin::getBitDepthValueRange(Tavrin::BIT_DEPTH_32f);
        float const scale = (isLast ? m_outRange : floatRange) / (isFirst ? m_inRange : floatRange);
        return makeLineKernel(m_function, room.hold(ScaleParameters{{scale, scale, scale, scale}}));
    }

private:
    float m_inRange;
    float m_outRange;
    BlockFunction m_function;
};

// What the first renderer wants is asked for; a bypassed one takes values.
bool prepareLines(TransformProcessor const& renderers, BypassScales const& bypassScales, RunningRenderers& running)
{
    bool takesCodes = false;
    for (std::size_t i = 0; i < running.size(); ++i)
    {
        VirtualRenderer const& renderer = renderers[i];
        bool const isFirst = i == 0;
        bool const isBypassed = renderer.isBypassed();
        running[i].kernel = isBypassed ? bypassScales.prepareLine(isFirst, i + 1 == running.size(), running[i].parameters)
                                       : renderer.prepareLine(running[i].parameters);
        if (isFirst)
            takesCodes = !isBypassed && renderer.takesCodes();
    }
    return takesCodes;
}

void run(RunningRenderers const& running, Block& block, unsigned int count, ImagePosition position)
{
    for (RunningRenderer const& renderer : running)
        renderer.kernel.function(renderer.kernel.parameters, block, count, position, renderer.outputs());
}

// The tables of a lone renderer whose entries are all that the next line needs.
Lut1DParameters const* getDirectEntries(TransformProcessor const& renderers, PixelFormat in, PixelFormat out)
{
    if (renderers.size() != 1 || renderers[0].isBypassed())
        return nullptr;
    return renderers[0].getDirectEntries(Color::Utils::depthOf(in), Color::Utils::depthOf(out));
}

// Lines from 8 bits to 8 bits by way of entries alone, on targets that have a function for them. Alpha needs no scale then.
class ByteLines
{
public:
    ByteLines(PixelFormat in, PixelFormat out, bool streams)
        : m_function(_isOfBytes(in) && _isOfBytes(out) ? getByteLineFunction() : nullptr), m_in(in), m_out(out), m_streams(streams)
    {
    }

    explicit operator bool() const { return m_function != nullptr; }

    void render(Lut1DParameters const& entries, std::uint8_t const* source, std::uint8_t* destination, unsigned int count)
    {
        if (!m_layouts)
            m_layouts.emplace(m_in, m_out);
        m_function(*m_layouts, entries.table, source, destination, count, m_streams);
    }

private:
    static bool _isOfBytes(PixelFormat format) { return Color::Utils::depthOf(format) == Tavrin::BIT_DEPTH_8i; }

    ByteLineFunction m_function;
    PixelFormat m_in;
    PixelFormat m_out;
    bool m_streams;
    // Made when they are needed: they take as long as a hundred pixels.
    std::optional<ByteLayouts> m_layouts;
};

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
          m_bypassScales(in, out),
          m_byteLines(in, out, m_streams),
          m_running(renderers.size(), boost::container::default_init)
    {
        findReadersOfAlpha(renderers, out, m_running);
        findUniformAlpha(renderers, in, roi.width, m_running);
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
        if (entries == nullptr)
            _renderValues(line, lines);
        else if (m_byteLines)
            _renderBytes(*entries, line, lines);
        else
            _renderEntries(*entries, line, lines);
    }

    void _renderBytes(Lut1DParameters const& entries, unsigned int line, unsigned int lines)
    {
        for (unsigned int i = line; i < line + lines; ++i)
            m_byteLines.render(entries, m_source.line(i), m_destination.line(i), m_roi.width);
    }

    void _renderEntries(Lut1DParameters const& entries, unsigned int line, unsigned int lines)
    {
        EntryStoreFunction const store = m_streams ? m_store.streamEntries : m_store.storeEntries;
        for (unsigned int x = 0; x < m_roi.width; x += Block::kPixels)
        {
            _load(m_load.loadCodes, getMissingAlpha(m_in), x, line, lines);
            _store([&](auto const&... places) { store(entries, m_block, places...); }, x, line, lines);
        }
    }

    void _renderValues(unsigned int line, unsigned int lines)
    {
        LoadFunction const load = prepareLines(m_renderers, m_bypassScales, m_running) ? m_load.loadCodes : m_load.load;
        StoreFunction const store = m_streams ? m_store.stream : m_store.store;
        float const alpha = reckonUniformAlpha(m_running, getMissingAlpha(m_in), m_block);
        for (unsigned int x = 0; x < m_roi.width; x += Block::kPixels)
        {
            _load(load, alpha, x, line, lines);
            run(m_running, m_block, lines * _pixelsOfBlock(x), {m_roi.x + x, m_roi.y + line});
            _store([&](auto const&... places) { store(m_block, places...); }, x, line, lines);
        }
    }

    // Of each of its lines.
    unsigned int _pixelsOfBlock(unsigned int x) const { return std::min(m_roi.width - x, Block::kPixels); }

    void _load(LoadFunction load, float missingAlpha, unsigned int x, unsigned int line, unsigned int lines)
    {
        unsigned int const count = _pixelsOfBlock(x);
        for (unsigned int i = 0; i < lines; ++i)
            load(m_source.pixel(line + i, x), {i * count, count}, m_block, missingAlpha);
    }

    // Store is called with places of the block, where their pixels go, and which pixels to ask for meanwhile.
    template <class Store>
    void _store(Store const& store, unsigned int x, unsigned int line, unsigned int lines)
    {
        unsigned int const count = _pixelsOfBlock(x);
        for (unsigned int i = 0; i < lines; ++i)
            store(Places{i * count, count}, m_destination.pixel(line + i, x),
                  m_source.following(line + i, x + count, m_roi.width, lines));
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
    BypassScales m_bypassScales;
    ByteLines m_byteLines;
    RunningRenderers m_running;
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
            load(source.pixel(line, x), {0, count}, block, getMissingAlpha(sourceFormat));
            store(block, {0, count}, destination.pixel(line, x), source.following(line, x + count, sourceRoi.width));
        }
    }
}

} // namespace Rendering
