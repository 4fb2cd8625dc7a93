// Tables of 256 entries out of renderers.
#include "renderer/codeTables.h"

#include "renderer/CPULut1DOp.h"
#include "renderer/everyElement.h"
#include "utils/utils.h"

#include <cstring>

namespace Rendering
{

namespace
{

// To reckon tables takes as long as some hundreds of pixels, and up to thousands where the renderers have little to do.
constexpr std::size_t kLeastPixels = 4096;

// Values of one channel as the pixels of a depth store them.
class EntryStore
{
public:
    explicit EntryStore(Tavrin::BitDepth depth)
        : m_load(getFormatFunctions(Tavrin::PF_RGBA_32f).load), m_store(getFormatFunctions(_rgbaOf(depth)).store)
    {
    }

    // Takes a plane of a block, the values of codes from one on, into the tables of lower and upper bytes.
    void operator()(float const* values, unsigned int entryBytes, std::uint8_t (&table)[2][kCodes], unsigned int firstCode) const
    {
        if (entryBytes == 1)
            return _store(values, table[0] + firstCode);
        std::uint16_t entries[Block::kPixels];
        _store(values, entries);
        for (unsigned int i = 0; i < Block::kPixels; ++i)
        {
            table[0][firstCode + i] = static_cast<std::uint8_t>(entries[i]);
            table[1][firstCode + i] = static_cast<std::uint8_t>(entries[i] >> 8);
        }
    }

private:
    static PixelFormat _rgbaOf(Tavrin::BitDepth depth)
    {
        constexpr unsigned int kRgba = static_cast<unsigned int>(Tavrin::PF_RGBA_32f) & ~Color::Utils::kBitDepthMask;
        return static_cast<PixelFormat>(kRgba | static_cast<unsigned int>(depth));
    }

    // Four values that follow each other are taken for a pixel, so that they follow each other when they are stored.
    void _store(float const* values, void* entries) const
    {
        constexpr Places kPixels = {0, Block::kPixels / 4};
        Block pixels;
        m_load(values, kPixels, pixels);
        m_store(pixels, kPixels, entries, {entries, 0});
    }

    LoadFunction m_load;
    StoreFunction m_store;
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
    auto const table = [&](int channel) { return static_cast<std::uint8_t const*>(entries.table[channel]); };
    m_entries->setTables({table(0), table(1), table(2), nullptr});
}

void CodeTables::reckon(RunningRenderers const& renderers, bool areOther, Block& block)
{
    if (!areOther && m_setEntries == nullptr)
        return;
    m_setEntries = nullptr;
    m_renderers = renderers.channelwise();
    m_givePixels = m_renderers == renderers.size() && CodeEntries::serve(m_out);
    if (m_givePixels)
        return _reckonEntries(renderers, block);
    if (renderers.areCheap(m_renderers))
        m_renderers = 0;
    else
        _reckonValues(renderers, block);
}

void CodeTables::_reckonValues(RunningRenderers const& renderers, Block& block)
{
    if (!m_values)
        m_values.emplace(m_in);
    reckonEveryElement(renderers, m_renderers, m_in, block,
                       [&](unsigned int channel, float const* values, unsigned int firstCode)
                       { m_functions->setValues(values, m_values->table[channel], firstCode); });
    m_values->missingAlpha = block.alpha[0];
}

void CodeTables::_reckonEntries(RunningRenderers const& renderers, Block& block)
{
    if (!m_entries)
        m_entries.emplace(m_in, m_out);
    EntryStore const store(Color::Utils::depthOf(m_out));
    reckonEveryElement(renderers, m_renderers, m_in, block,
                       [&](unsigned int channel, float const* values, unsigned int firstCode)
                       { store(values, m_entries->entryBytes, m_bytes[channel], firstCode); });
    m_entries->setTables({m_bytes[0][0], m_bytes[1][0], m_bytes[2][0], m_bytes[3][0]});
}

} // namespace Rendering
