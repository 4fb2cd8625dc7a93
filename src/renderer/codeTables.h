// Pictures of 8-bit codes have 256 values a channel: what the first renderers make of these is reckoned once and then looked up.
#ifndef TAVRIN_RENDERER_CODE_TABLES_H
#define TAVRIN_RENDERER_CODE_TABLES_H

#include "renderer/block.h"
#include "renderer/kernelsBytes.h"
#include "renderer/kernelsFormats.h"
#include "renderer/runningRenderers.h"

#include <tavrin/vocabulary.h>

#include <cstddef>
#include <cstdint>
#include <optional>

namespace Rendering
{

struct Lut1DParameters;

// Tables for the renderers of one call that see each channel for itself, from the first one on. On targets that have a look-up for
// them, and bit for bit what the renderers give.
class CodeTables
{
public:
    CodeTables(PixelFormat in, PixelFormat out);

    // Whether it is worth while to reckon tables for so many pixels.
    bool pay(std::size_t pixels) const;

    // Whether a table's own entries, which need no reckoning, give the pixels.
    bool takeEntries() const;
    void setEntries(Lut1DParameters const& entries);

    // Reckons the tables of the lines that were prepared, which may be like the lines before. What becomes of the block is of no
    // interest.
    void reckon(RunningRenderers const& renderers, bool areOther, Block& block);

    // How many renderers the tables stand for.
    std::size_t renderers() const { return m_renderers; }
    // Whether that is all of them, and the tables hold what the destination stores.
    bool givePixels() const { return m_givePixels; }

    // Loads pixels as the renderers leave them.
    void load(void const* source, Places places, Block& block) const { m_functions->load(*m_values, source, places, block); }
    // Where the tables give pixels.
    void renderLine(std::uint8_t const* source, std::uint8_t* destination, std::size_t count, bool streams) const
    {
        m_functions->renderLine(*m_entries, source, destination, count, streams);
    }

private:
    void _reckonValues(RunningRenderers const& renderers, Block& block);
    void _reckonEntries(RunningRenderers const& renderers, Block& block);

    PixelFormat m_in;
    PixelFormat m_out;
    // Null where there is nothing to look up in.
    CodeFunctions const* m_functions;
    // What stands in the tables instead of what was reckoned.
    Lut1DParameters const* m_setEntries = nullptr;
    std::size_t m_renderers = 0;
    bool m_givePixels = false;
    // Made when they are needed: they take as long as a hundred pixels.
    std::optional<CodeValues> m_values;
    std::optional<CodeEntries> m_entries;
    // Entries of red, green, blue and alpha.
    alignas(64) std::uint8_t m_bytes[4][2][kCodes];
};

} // namespace Rendering

#endif
