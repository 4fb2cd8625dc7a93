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
#include <cstdint>
#include <cstring>
#include <limits>
#include <type_traits>

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

// Alpha that is the same all over.
struct OneAlpha
{
    float value;
    float* plane;

    HWY_INLINE void LoadVector(std::size_t pixel) const
    {
        const hn::ScalableTag<float> d;
        hn::StoreU(hn::Set(d, value), d, plane + pixel);
    }
};

// Whole vectors of pixels on their way to a block, from one of its places on.
struct Run
{
    const std::uint8_t* pixels;
    std::size_t first;
    std::size_t count;
};

template <class Element, std::size_t kPixelBytes, class Alpha>
HWY_INLINE void LoadRun(ElementValues const& values, Run const& run, Alpha const& alpha, Block& block)
{
    using ChannelOfRun = Channel<Element, kPixelBytes>;
    const ChannelOfRun red(values, 0, run.pixels, block.red + run.first);
    const ChannelOfRun green(values, 1, run.pixels, block.green + run.first);
    const ChannelOfRun blue(values, 2, run.pixels, block.blue + run.first);
    for (std::size_t i = 0; i < run.count; i += hn::Lanes(hn::ScalableTag<float>()))
    {
        red.LoadVector(i);
        green.LoadVector(i);
        blue.LoadVector(i);
        alpha.LoadVector(i);
    }
}

template <class Pixel>
HWY_INLINE Pixel PixelAt(const std::uint8_t* pixels, std::size_t index)
{
    Pixel pixel;
    hwy::CopyBytes<sizeof pixel>(pixels + index * sizeof pixel, &pixel);
    return pixel;
}

template <class Pixel>
HWY_INLINE hn::Vec<hn::ScalableTag<Pixel>> PixelsAt(const std::uint8_t* pixels, std::size_t index)
{
    const hn::ScalableTag<Pixel> d;
#if HWY_TARGET == HWY_SCALAR
    return hn::Set(d, PixelAt<Pixel>(pixels, index));
#else
    return hn::BitCast(d, hn::LoadU(hn::Repartition<std::uint8_t, decltype(d)>(), pixels + index * sizeof(Pixel)));
#endif
}

// Whether the pixels differ nowhere where the mask has bits.
template <class Pixel>
HWY_INLINE bool AreAlike(Run const& run, Pixel mask)
{
    const hn::ScalableTag<Pixel> d;
    const auto first = hn::Set(d, PixelAt<Pixel>(run.pixels, 0));
    auto difference = hn::Zero(d);
    for (std::size_t i = 0; i < run.count; i += hn::Lanes(d))
        difference = hn::Or(difference, hn::Xor(PixelsAt<Pixel>(run.pixels, i), first));
    return hn::AllTrue(d, hn::Eq(hn::And(difference, hn::Set(d, mask)), hn::Zero(d)));
}

// The same for pixels with alpha; most pictures have one alpha all over.
template <class Element>
HWY_INLINE void LoadRunWithAlpha(ElementValues const& values, Run const& run, Block& block)
{
    using Pixel = std::conditional_t<sizeof(Element) == 1, std::uint32_t, std::uint64_t>;
    const unsigned int shift = values.element[3] * 8 * sizeof(Element);
    float* const plane = block.alpha + run.first;
    if (AreAlike(run, static_cast<Pixel>(Pixel{std::numeric_limits<Element>::max()} << shift)))
    {
        OneAlpha alpha{0, plane};
        const Element element = static_cast<Element>(PixelAt<Pixel>(run.pixels, 0) >> shift);
        hwy::CopyBytes<sizeof alpha.value>(values.table[3] + element, &alpha.value);
        LoadRun<Element, sizeof(Pixel)>(values, run, alpha, block);
    }
    else
        LoadRun<Element, sizeof(Pixel)>(values, run, Channel<Element, sizeof(Pixel)>(values, 3, run.pixels, plane), block);
}

template <class Element, unsigned int kElements>
HWY_INLINE void LoadAnyRun(ElementValues const& values, Run const& run, Block& block)
{
    if (kElements == 4 && values.table[3] != nullptr)
        LoadRunWithAlpha<Element>(values, run, block);
    else
        LoadRun<Element, kElements * sizeof(Element)>(values, run, OneAlpha{values.missingAlpha, block.alpha + run.first}, block);
}

// The last pixels, fewer than a vector holds, come by way of a buffer that has room for as many.
template <class Element, unsigned int kElements>
void LoadThroughTables(ElementValues const& values, void const* source, Places places, Block& block)
{
    constexpr std::size_t kPixelBytes = kElements * sizeof(Element);
    const std::uint8_t* const pixels = static_cast<const std::uint8_t*>(source);
    const std::size_t lanes = hn::Lanes(hn::ScalableTag<float>());
    const std::size_t rest = places.count % lanes;
    const std::size_t whole = places.count - rest;
    if (whole != 0)
        LoadAnyRun<Element, kElements>(values, {pixels, places.first, whole}, block);
    if (rest != 0)
    {
        std::uint8_t last[hn::MaxLanes(hn::ScalableTag<float>()) * kPixelBytes] = {};
        std::memcpy(last, pixels + whole * kPixelBytes, rest * kPixelBytes);
        LoadAnyRun<Element, kElements>(values, {last, places.first + whole, lanes}, block);
    }
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
