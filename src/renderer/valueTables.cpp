// Tables in memory out of renderers.
#include "renderer/valueTables.h"

#include "renderer/everyElement.h"
#include "renderer/kernelsBytes.h"
#include "renderer/pixelLayout.h"

#include <algorithm>
#include <cstring>
#include <memory>
#include <new>

namespace Rendering
{

namespace
{

// A smaller region would hardly come back to the lines of the cache that its look-ups fetch.
constexpr std::size_t kLeastPixelsOfCall = 1024;

constexpr unsigned int kAlpha = 3;

// To reckon tables takes as long as to render a pixel for each entry. From these on what is spared is more than that.
std::size_t leastPixels(PixelFormat format)
{
    return std::size_t{4} * elementsOf(format);
}

// Where each colour, and alpha, stands in a pixel; alpha anywhere if there is none.
std::array<unsigned int, 4> channelPlaces(Layout layout)
{
    ChannelOrder const order = orderOf(layout);
    return {static_cast<unsigned int>(order.red), static_cast<unsigned int>(order.green), static_cast<unsigned int>(order.blue),
            static_cast<unsigned int>(std::max(order.alpha, 0))};
}

} // namespace

bool ValueTables::serve(PixelFormat in)
{
    bool const areInRegisters = isOfBytes(in) && getCodeFunctions() != nullptr;
    return !areInRegisters && getTableLoadFunction(in) != nullptr;
}

ValueTables::ValueTables(RunningRenderers const& renderers, std::size_t count, PixelFormat in)
    : m_work(renderers.work(count)), m_load(getTableLoadFunction(in))
{
    bool const wantsAlpha = hasAlpha(layoutOf(in)) && renderers.isAlphaReadBehind(count);
    m_tables.assign(wantsAlpha ? kAlpha + 1 : kAlpha, Table(elementsOf(in)));
    m_values.element = channelPlaces(layoutOf(in));
    _reckon(renderers, in);
    _share();
}

void ValueTables::_reckon(RunningRenderers const& renderers, PixelFormat in)
{
    Block block;
    reckonEveryElement(renderers, m_work.size(), in, block,
                       [&](unsigned int channel, float const* values, unsigned int first)
                       {
                           if (channel < m_tables.size())
                               std::memcpy(m_tables[channel].data() + first, values, Block::kPixels * sizeof(float));
                       });
    m_values.missingAlpha = block.alpha[0];
}

// Channels with equal tables look up in one of them, for which there is more room in the caches.
void ValueTables::_share()
{
    for (std::size_t channel = 0; channel < m_tables.size(); ++channel)
    {
        Table& table = m_tables[channel];
        auto const first = std::find(m_tables.begin(), m_tables.end(), table);
        m_values.table[channel] = first->data();
        if (&*first != &table)
            Table().swap(table);
    }
}

ValueTablesOnDemand::ValueTablesOnDemand(TransformProcessor const& renderers, PixelFormat in, PixelFormat out)
    : m_renderers(renderers), m_in(in), m_out(out)
{
}

ValueTablesOnDemand::~ValueTablesOnDemand()
{
    delete m_tables.load();
}

ValueTables const* ValueTablesOnDemand::get(std::size_t pixels)
{
    if (pixels < kLeastPixelsOfCall || !ValueTables::serve(m_in))
        return nullptr;
    if (ValueTables const* const tables = m_tables.load(std::memory_order_acquire))
        return tables;
    if (m_pixels.fetch_add(pixels, std::memory_order_relaxed) + pixels < leastPixels(m_in))
        return nullptr;
    m_pixels.store(0, std::memory_order_relaxed); // Another day there may be more to stand for: nothing is bypassed for ever.
    return _publish(_make());
}

ValueTables const* ValueTablesOnDemand::_make() const
{
    RunningRenderers renderers(m_renderers, m_in, m_out);
    renderers.prepareLines();
    std::size_t const count = renderers.lasting();
    if (renderers.areCheap(count))
        return nullptr;
    try
    {
        return new ValueTables(renderers, count, m_in);
    }
    catch (std::bad_alloc const&)
    {
        return nullptr; // Pictures can be rendered all the same.
    }
}

// Of two threads that made tables the second one takes those of the first.
ValueTables const* ValueTablesOnDemand::_publish(ValueTables const* tables)
{
    std::unique_ptr<ValueTables const> owned(tables);
    ValueTables const* published = nullptr;
    if (tables != nullptr && m_tables.compare_exchange_strong(published, tables))
        return owned.release();
    return published;
}

} // namespace Rendering
