// Tables of 256 entries out of renderers.
#include "renderer/codeTables.h"

#include "renderer/CPULut1DOp.h"
#include "renderer/pixelLayout.h"
#include "utils/utils.h"

#include <cstring>

namespace Rendering
{

namespace
{

// To reckon tables takes as long as some hundreds of pixels.
constexpr std::size_t kLeastPixels = 4096;

bool isOfBytes(PixelFormat format)
{
    return Color::Utils::depthOf(format) == Tavrin::BIT_DEPTH_8i;
}

// Pixels of as many codes as a block holds, from one on; in a pixel all channels are the same.
class CodePixels
{
public:
    CodePixels(unsigned int firstCode, unsigned int pixelBytes)
    {
        for (unsigned int i = 0; i < Block::kPixels; ++i)
        {
            std::uint32_t const pixel = (firstCode + i) * 0x01010101U; // The next one covers what is too much.
            std::memcpy(m_bytes + i * pixelBytes, &pixel, sizeof pixel);
        }
    }

    std::uint8_t const* begin() const { return m_bytes; }

private:
    std::uint8_t m_bytes[4 * Block::kPixels];
};

} // namespace

CodeTables::CodeTables(PixelFormat in, PixelFormat out)
    : m_in(in), m_out(out), m_functions(isOfBytes(in) ? getCodeFunctions() : nullptr)
{
}

bool CodeTables::pay(std::size_t pixels) const
{
    return m_functions != nullptr && pixels >= kLeastPixels;
}

bool CodeTables::takeEntries() const
{
    return m_functions != nullptr && isOfBytes(m_out);
}

// Alpha needs no scale between bytes.
void CodeTables::setEntries(Lut1DParameters const& entries)
{
    if (m_setEntries == &entries)
        return;
    m_setEntries = &entries;
    if (!m_entries)
        m_entries.emplace(m_in, m_out);
    ChannelOrder const order = orderOf(layoutOf(m_out));
    CodeEntries::Tables tables{};
    tables[static_cast<unsigned int>(order.red)] = static_cast<std::uint8_t const*>(entries.table[0]);
    tables[static_cast<unsigned int>(order.green)] = static_cast<std::uint8_t const*>(entries.table[1]);
    tables[static_cast<unsigned int>(order.blue)] = static_cast<std::uint8_t const*>(entries.table[2]);
    m_entries->setTables(tables);
}

void CodeTables::reckon(RunningRenderers const& renderers, bool areOther, FormatFunctions const& source,
                        FormatFunctions const& destination, Block& block)
{
    if (!areOther && m_setEntries == nullptr)
        return;
    m_setEntries = nullptr;
    m_renderers = renderers.channelwise();
    m_givePixels = m_renderers == renderers.size() && CodeEntries::serve(m_out);
    LoadFunction const load = renderers.takesCodes() ? source.loadCodes : source.load;
    if (m_givePixels)
        _reckonEntries(renderers, load, destination.store, block);
    else if (m_renderers > 0)
        _reckonValues(renderers, load, block);
}

void CodeTables::_reckonValues(RunningRenderers const& renderers, LoadFunction load, Block& block)
{
    if (!m_values)
        m_values.emplace(m_in);
    _reckonCodes(renderers, load, block,
                 [&](unsigned int firstCode)
                 {
                     float const* const planes[] = {block.red, block.green, block.blue, block.alpha};
                     for (unsigned int channel = 0; channel < 4; ++channel)
                         m_functions->setValues(planes[channel], m_values->table[channel], firstCode);
                 });
    m_values->missingAlpha = block.alpha[0];
}

void CodeTables::_reckonEntries(RunningRenderers const& renderers, LoadFunction load, StoreFunction store, Block& block)
{
    if (!m_entries)
        m_entries.emplace(m_in, m_out);
    _reckonCodes(renderers, load, block, [&](unsigned int firstCode) { _storeEntries(block, store, firstCode); });
    m_entries->setTables({m_bytes[0][0], m_bytes[1][0], m_bytes[2][0], m_bytes[3][0]});
}

void CodeTables::_storeEntries(Block const& block, StoreFunction store, unsigned int firstCode)
{
    unsigned int const entryBytes = m_entries->entryBytes;
    unsigned int const pixelBytes = m_entries->channels * entryBytes;
    std::uint8_t pixels[8 * Block::kPixels];
    store(block, {0, Block::kPixels}, pixels, {pixels, 0});
    for (unsigned int byte = 0; byte < pixelBytes; ++byte)
    {
        std::uint8_t* const table = m_bytes[byte / entryBytes][byte % entryBytes] + firstCode;
        for (unsigned int i = 0; i < Block::kPixels; ++i)
            table[i] = pixels[i * pixelBytes + byte];
    }
}

template <class Take>
void CodeTables::_reckonCodes(RunningRenderers const& renderers, LoadFunction load, Block& block, Take const& take) const
{
    for (unsigned int firstCode = 0; firstCode < kCodes; firstCode += Block::kPixels)
    {
        CodePixels const pixels(firstCode, Tavrin::getPixelSizeInByte(m_in));
        load(pixels.begin(), {0, Block::kPixels}, block);
        renderers.run(0, m_renderers, block, Block::kPixels, {0, 0});
        take(firstCode);
    }
}

} // namespace Rendering
