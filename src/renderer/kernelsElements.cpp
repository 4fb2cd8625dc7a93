// Loops over the elements of lines, from any depth to any other, compiled for each target.
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "renderer/kernelsElements.cpp"
#include "renderer/simdTargets-inl.h"

#include <hwy/foreach_target.h>

#include <hwy/highway.h>

#include "renderer/elements-inl.h"
#include "renderer/kernelsElements.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <type_traits>

#ifndef TAVRIN_RENDERER_KERNELS_ELEMENTS_CPP_ONCE
#define TAVRIN_RENDERER_KERNELS_ELEMENTS_CPP_ONCE
namespace Rendering
{

// A member for each depth.
template <class T>
struct OfDepths
{
#define TAVRIN_BIT_DEPTH(name, maximum, bits, isFloat) T depth##name;
#include "utils/bitDepths.def"
#undef TAVRIN_BIT_DEPTH
};

using ElementLinesOfDepth = OfDepths<ElementLineFunction>; // by that of the destination
using ElementLineTable = OfDepths<ElementLinesOfDepth>;    // by that of the source

} // namespace Rendering
#endif

HWY_BEFORE_NAMESPACE();
namespace Rendering::HWY_NAMESPACE
{

namespace hn = hwy::HWY_NAMESPACE;

#if TAVRIN_PACKS_SATURATE

// ---------------------------------------------------------------- arithmetic

class Scaled
{
public:
    HWY_INLINE explicit Scaled(ElementArithmetic const& arithmetic) : m_scale(hn::Set(D(), arithmetic.scale)) {}

    // The values of a vector that stands so many elements behind the place.
    HWY_INLINE V operator()(V values, std::size_t) const { return hn::Mul(values, m_scale); }
    HWY_INLINE void Advance(std::size_t) {}

private:
    V m_scale;
};

class Dithered
{
public:
    HWY_INLINE explicit Dithered(ElementArithmetic const& arithmetic)
        : m_scale(hn::Set(D(), arithmetic.scale)),
          m_noise(arithmetic.noise),
          m_period(arithmetic.noisePeriod),
          m_place(arithmetic.noisePlace)
    {
    }

    HWY_INLINE V operator()(V values, std::size_t behind) const
    {
        return hn::Mul(hn::Add(values, hn::LoadU(D(), m_noise + m_place + behind)), m_scale);
    }
    HWY_INLINE void Advance(std::size_t elements)
    {
        m_place += elements;
        while (m_place >= m_period)
            m_place -= m_period;
    }

private:
    V m_scale;
    const float* m_noise;
    std::size_t m_period;
    std::size_t m_place;
};

// ---------------------------------------------------------------- elements

template <class Element>
HWY_INLINE V LoadValues(Narrow<typename Element::Type> elements)
{
    if constexpr (std::is_same_v<Element, Element_32f>)
        return elements;
    else if constexpr (std::is_same_v<Element, Element_16f>)
        return HalfsToFloats(D(), elements);
    else
        return Element::ToFloat(Widen<typename Element::Type>(elements));
}

// A vector of elements from four vectors of values, two, or one.
template <class Element>
HWY_INLINE auto ElementsOf(const V (&values)[1])
{
    return values[0];
}
template <class Element>
HWY_INLINE Shorts ElementsOf(const V (&values)[2])
{
    if constexpr (std::is_same_v<Element, Element_16f>)
        return hn::Combine(hn::Repartition<std::uint16_t, D>(), FloatsToHalfs(D(), values[1]), FloatsToHalfs(D(), values[0]));
    else
        return ShortsInOrder(Element::FromFloat(values[0]), Element::FromFloat(values[1]));
}
template <class Element>
HWY_INLINE Bytes ElementsOf(const V (&values)[4])
{
    return BytesInOrder(Element::FromFloat(values[0]), Element::FromFloat(values[1]), Element::FromFloat(values[2]),
                        Element::FromFloat(values[3]));
}

// ---------------------------------------------------------------- lines

template <class In, class Out, class Arithmetic>
class LineLoop
{
public:
    HWY_INLINE LineLoop(ElementArithmetic const& arithmetic, ElementLine const& line)
        : m_arithmetic(arithmetic),
          m_source(reinterpret_cast<const From*>(line.source)),
          m_destination(reinterpret_cast<To*>(line.destination)),
          m_count(line.count),
          m_ahead(line.source + std::min(kAhead, line.count * sizeof(From))),
          m_leftAhead(line.source + line.count * sizeof(From) - m_ahead),
          m_nextSource(line.nextSource)
    {
    }

    // Only whole lines of the cache go past it.
    HWY_INLINE void Run(bool streams)
    {
        constexpr std::size_t kInCacheLine = kCacheLine / sizeof(To);
        const std::size_t shift = reinterpret_cast<std::uintptr_t>(m_destination) % kCacheLine;
        if (streams && shift % sizeof(To) == 0)
        {
            Elements<false>(std::min((kCacheLine - shift) % kCacheLine / sizeof(To), m_count));
            Elements<true>(m_count / kInCacheLine * kInCacheLine);
        }
        Elements<false>(m_count);
    }

private:
    using From = typename In::Type;
    using To = typename Out::Type;
    using DFrom = hn::Rebind<From, D>;
    using DTo = hn::Repartition<To, D>;
    static constexpr std::size_t kElements = hn::MaxLanes(DTo());
    static constexpr std::size_t kLanes = hn::MaxLanes(D());
    // Bytes between what is being read and what is asked for.
    static constexpr std::size_t kAhead = 2048;

    template <bool kStream>
    HWY_INLINE void Elements(std::size_t count)
    {
        for (; count >= kElements; count -= kElements)
        {
            PrefetchAhead<kStream>();
            const auto elements = Reckon([this](std::size_t i) HWY_ATTR { return hn::LoadU(DFrom(), m_source + i); });
            if constexpr (kStream)
                hn::Stream(elements, DTo(), m_destination);
            else
                hn::StoreU(elements, DTo(), m_destination);
            Advance(kElements);
        }
        if (!kStream && count > 0)
            Part(count);
    }

    // Fewer elements than a vector holds.
    HWY_INLINE void Part(std::size_t count)
    {
        PrefetchAhead<false>();
#if TAVRIN_TRANSPOSE_AVX512
        // What lies beyond the elements is not even touched: it may be far away.
        const auto load = [=, this](std::size_t i) HWY_ATTR
        { return i < count ? hn::MaskedLoad(hn::FirstN(DFrom(), count - i), DFrom(), m_source + i) : hn::Zero(DFrom()); };
        hn::BlendedStore(Reckon(load), hn::FirstN(DTo(), count), DTo(), m_destination);
#else
        alignas(kCacheLine) From from[kElements] = {};
        alignas(kCacheLine) To to[kElements];
        std::memcpy(from, m_source, count * sizeof(From));
        hn::Store(Reckon([&from](std::size_t i) HWY_ATTR { return hn::Load(DFrom(), from + i); }), DTo(), to);
        std::memcpy(m_destination, to, count * sizeof(To));
#endif
        Advance(count);
    }

    template <class Load>
    HWY_INLINE auto Reckon(Load const& load)
    {
        V values[kElements / kLanes];
        for (std::size_t i = 0; i < kElements; i += kLanes)
            values[i / kLanes] = m_arithmetic(LoadValues<In>(load(i)), i);
        return ElementsOf<Out>(values);
    }

    HWY_INLINE void Advance(std::size_t count)
    {
        m_arithmetic.Advance(count);
        m_source += count;
        m_destination += count;
        m_count -= count;
    }

    template <bool kStream>
    HWY_INLINE void PrefetchAhead()
    {
        constexpr std::size_t kBytes = kElements * sizeof(From);
        if (m_leftAhead < static_cast<std::ptrdiff_t>(kBytes))
        {
            m_ahead = m_nextSource;
            m_leftAhead = PTRDIFF_MAX;
        }
        for (std::size_t i = 0; i < kBytes; i += kCacheLine)
            Prefetch<kStream>(m_ahead + i);
        m_ahead += kBytes;
        m_leftAhead -= kBytes;
    }

    Arithmetic m_arithmetic;
    const From* m_source;
    To* m_destination;
    std::size_t m_count;
    const std::uint8_t* m_ahead;
    std::ptrdiff_t m_leftAhead; // bytes of this line
    const std::uint8_t* m_nextSource;
};

template <class In, class Out>
void RunLine(ElementArithmetic const& arithmetic, ElementLine const& line)
{
    if (arithmetic.noise == nullptr)
        LineLoop<In, Out, Scaled>(arithmetic, line).Run(line.streams);
    else
        LineLoop<In, Out, Dithered>(arithmetic, line).Run(line.streams);
}

// Codes of 16 bits are read alike, whatever the highest one is.
template <class Element>
using ReadAs = std::conditional_t<std::is_same_v<typename Element::Entry, ShortEntry>, Element_16i, Element>;

template <class In, class Out>
constexpr ElementLineFunction lineOf()
{
    // Between floats blocks leave an alpha alone that is not scaled, down to the bits of its NaN.
    if constexpr (std::is_same_v<In, Element_32f> && std::is_same_v<Out, Element_32f>)
        return nullptr;
    else
        return &RunLine<ReadAs<In>, Out>;
}

#else

template <class In, class Out>
constexpr ElementLineFunction lineOf()
{
    return nullptr;
}

#endif

template <class In>
constexpr ElementLinesOfDepth linesFrom()
{
    return {
#define TAVRIN_BIT_DEPTH(name, maximum, bits, isFloat) lineOf<In, Element_##name>(),
#include "utils/bitDepths.def"
#undef TAVRIN_BIT_DEPTH
    };
}

constexpr ElementLineTable kElementLines = {
#define TAVRIN_BIT_DEPTH(name, maximum, bits, isFloat) linesFrom<Element_##name>(),
#include "utils/bitDepths.def"
#undef TAVRIN_BIT_DEPTH
};

} // namespace Rendering::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE

#include "renderer/pixelLayout.h"
#include "renderer/simdTarget.h"
#include "utils/utils.h"

namespace Rendering
{

namespace
{

template <class T>
T const& atDepth(OfDepths<T> const& all, Tavrin::BitDepth depth)
{
    switch (depth)
    {
#define TAVRIN_BIT_DEPTH(name, maximum, bits, isFloat) \
    case Tavrin::BIT_DEPTH_##name:                     \
        return all.depth##name;
#include "utils/bitDepths.def"
#undef TAVRIN_BIT_DEPTH
    default:
        return all.depth32f;
    }
}

} // namespace

ElementLineFunction getElementLineFunction(Tavrin::PixelFormat in, Tavrin::PixelFormat out)
{
    static constexpr PerTarget<ElementLineTable> kTables TAVRIN_PER_TARGET(kElementLines);
    if (layoutOf(in) != layoutOf(out) || isPacked(in) || isPacked(out))
        return nullptr;
    return atDepth(atDepth(*kTables[getSimdTarget()], Color::Utils::depthOf(in)), Color::Utils::depthOf(out));
}

} // namespace Rendering

#endif
