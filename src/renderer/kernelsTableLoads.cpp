// The loads through tables in memory, compiled for each target.
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "renderer/kernelsTableLoads.cpp"
#include "renderer/simdTargets-inl.h"

#include <hwy/foreach_target.h>

#include <hwy/highway.h>

#include "renderer/gather-inl.h"
#include "renderer/kernelsTableLoads.h"
#include "renderer/pixelLayout.h"

#include <cstddef>
#include <cstring>

#ifndef TAVRIN_RENDERER_KERNELS_TABLE_LOADS_CPP_ONCE
#define TAVRIN_RENDERER_KERNELS_TABLE_LOADS_CPP_ONCE
namespace Rendering
{

// By the bits of an element.
struct TableLoads
{
    TableLoadFunction of8Bits;
    TableLoadFunction of16Bits;
};

} // namespace Rendering
#endif

HWY_BEFORE_NAMESPACE();
namespace Rendering::HWY_NAMESPACE
{

namespace hn = hwy::HWY_NAMESPACE;

// A channel of pixels that begin so many bytes apart.
template <class Element, std::size_t kPixelBytes>
class Channel
{
public:
    HWY_INLINE Channel(ElementValues const& values, unsigned int channel, const std::uint8_t* pixels, float* plane)
        : m_table(values.table[channel]), m_elements(pixels + values.element[channel] * sizeof(Element)), m_plane(plane)
    {
    }

    HWY_INLINE void LoadVector(std::size_t pixel) const
    {
        const hn::ScalableTag<float> d;
        const RowsInMemory<Element, kPixelBytes> rows{m_elements + pixel * kPixelBytes};
        hn::StoreU(hn::BitCast(d, GatherBitsOf<std::uint32_t>(d, m_table, rows)), d, m_plane + pixel);
    }

private:
    const std::uint32_t* m_table;
    const std::uint8_t* m_elements;
    float* m_plane;
};

// Whole vectors of pixels.
template <class Element, std::size_t kPixelBytes, bool kHasAlpha>
HWY_INLINE void LoadVectors(ElementValues const& values, const std::uint8_t* pixels, std::size_t first, std::size_t count,
                            Block& block)
{
    using ChannelOfPixels = Channel<Element, kPixelBytes>;
    const hn::ScalableTag<float> d;
    const ChannelOfPixels red(values, 0, pixels, block.red + first);
    const ChannelOfPixels green(values, 1, pixels, block.green + first);
    const ChannelOfPixels blue(values, 2, pixels, block.blue + first);
    const ChannelOfPixels alpha(values, 3, pixels, block.alpha + first);
    for (std::size_t i = 0; i < count; i += hn::Lanes(d))
    {
        red.LoadVector(i);
        green.LoadVector(i);
        blue.LoadVector(i);
        if constexpr (kHasAlpha)
            alpha.LoadVector(i);
        else
            hn::StoreU(hn::Set(d, values.missingAlpha), d, block.alpha + first + i);
    }
}

template <class Element, std::size_t kPixelBytes, bool kHasAlpha>
HWY_INLINE void LoadPixels(ElementValues const& values, const std::uint8_t* pixels, Places places, Block& block)
{
    const std::size_t lanes = hn::Lanes(hn::ScalableTag<float>());
    const std::size_t rest = places.count % lanes;
    const std::size_t whole = places.count - rest;
    LoadVectors<Element, kPixelBytes, kHasAlpha>(values, pixels, places.first, whole, block);
    if (rest != 0)
    {
        std::uint8_t last[hn::MaxLanes(hn::ScalableTag<float>()) * kPixelBytes] = {};
        std::memcpy(last, pixels + whole * kPixelBytes, rest * kPixelBytes);
        LoadVectors<Element, kPixelBytes, kHasAlpha>(values, last, places.first + whole, lanes, block);
    }
}

template <class Element, unsigned int kElements>
void LoadThroughTables(ElementValues const& values, void const* source, Places places, Block& block)
{
    constexpr std::size_t kPixelBytes = kElements * sizeof(Element);
    const std::uint8_t* const pixels = static_cast<const std::uint8_t*>(source);
    if (values.table[3] == nullptr)
        LoadPixels<Element, kPixelBytes, false>(values, pixels, places, block);
    else
        LoadPixels<Element, kPixelBytes, true>(values, pixels, places, block);
}

// Of pixels without alpha and with it.
constexpr TableLoads kTableLoads[] = {{&LoadThroughTables<std::uint8_t, 3>, &LoadThroughTables<std::uint16_t, 3>},
                                      {&LoadThroughTables<std::uint8_t, 4>, &LoadThroughTables<std::uint16_t, 4>}};

} // namespace Rendering::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE

#include "renderer/simdTarget.h"

namespace Rendering
{

TableLoadFunction getTableLoadFunction(Tavrin::PixelFormat format)
{
    static constexpr PerTarget<TableLoads[2]> kLoads TAVRIN_PER_TARGET(kTableLoads);
    TableLoads const& loads = (*kLoads[getSimdTarget()])[hasAlpha(layoutOf(format)) ? 1 : 0];
    switch (isPacked(format) ? 0 : Tavrin::getPixelSizeInByte(format) / channelsOf(layoutOf(format)))
    {
    case 1:
        return loads.of8Bits;
    case 2:
        return loads.of16Bits;
    default:
        return nullptr;
    }
}

} // namespace Rendering

#endif
