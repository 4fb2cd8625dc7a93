// Pictures of 8 or 16 bits a channel have few values. What the first renderers make of these is reckoned once, when so many pixels
// have come that it pays, and looked up from then on.
#ifndef TAVRIN_RENDERER_VALUE_TABLES_H
#define TAVRIN_RENDERER_VALUE_TABLES_H

#include "renderer/block.h"
#include "renderer/kernelsTableLoads.h"
#include "renderer/runningRenderers.h"

#include <tavrin/vocabulary.h>

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace Rendering
{

using Tavrin::PixelFormat;

// Tables for those renderers of a row, from the first one on, that see each channel for itself and do the same for all lines. They
// hold bit for bit what the renderers give, and never change.
class ValueTables
{
public:
    // Whether there are any for a format: those of 8 bits are left to tables in registers, where the target has these.
    static bool serve(PixelFormat in);

    // For the first so many of some renderers, as they are prepared.
    ValueTables(RunningRenderers const& renderers, std::size_t count, PixelFormat in);
    ValueTables(ValueTables const&) = delete;
    ValueTables& operator=(ValueTables const&) = delete;

    // How many renderers the tables stand for; none unless these are prepared to do what they did when the tables were reckoned.
    std::size_t renderersOf(RunningRenderers const& renderers) const { return renderers.beginWith(m_work) ? m_work.size() : 0; }

    // Loads pixels as the renderers leave them.
    void load(void const* source, Places places, Block& block) const { m_load(m_values, source, places, block); }

private:
    using Table = std::vector<std::uint32_t>;

    void _reckon(RunningRenderers const& renderers, PixelFormat in);
    void _share();

    std::vector<Work> m_work;
    // Of red, green, blue, and alpha if there is one that somebody reads; empty where another one holds the same.
    std::vector<Table> m_tables;
    ElementValues m_values{};
    TableLoadFunction m_load;
};

// The tables of one row of renderers. Any number of threads may ask at once; none waits for another.
class ValueTablesOnDemand
{
public:
    // The renderers must outlive this.
    ValueTablesOnDemand(TransformProcessor const& renderers, PixelFormat in, PixelFormat out);
    ~ValueTablesOnDemand();
    ValueTablesOnDemand(ValueTablesOnDemand const&) = delete;
    ValueTablesOnDemand& operator=(ValueTablesOnDemand const&) = delete;

    // Those for a call that renders so many pixels; null if it is better off without, or if there are none yet.
    ValueTables const* get(std::size_t pixels);

private:
    ValueTables const* _make() const;
    ValueTables const* _publish(ValueTables const* tables);

    TransformProcessor const& m_renderers;
    PixelFormat m_in;
    PixelFormat m_out;
    std::atomic<std::size_t> m_pixels = 0;
    std::atomic<ValueTables const*> m_tables = nullptr;
};

} // namespace Rendering

#endif
