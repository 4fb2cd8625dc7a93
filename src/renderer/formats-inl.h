// The pixel formats: how a vector of pixels comes from memory, as values or as codes, and goes there.
#if defined(TAVRIN_RENDERER_FORMATS_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef TAVRIN_RENDERER_FORMATS_INL_H
#undef TAVRIN_RENDERER_FORMATS_INL_H
#else
#define TAVRIN_RENDERER_FORMATS_INL_H
#endif

#include "renderer/elements-inl.h"
#include "renderer/gather-inl.h"
#include "renderer/interleave-inl.h"
#include "renderer/pixelLayout.h"
#include "renderer/transpose-inl.h"

#include <hwy/highway.h>

#include <cstddef>
#include <cstdint>

HWY_BEFORE_NAMESPACE();
namespace Rendering::HWY_NAMESPACE
{

namespace hn = hwy::HWY_NAMESPACE;

// The channel of memory that holds each colour, and back.
template <Layout kLayout, class C, class Value>
HWY_INLINE C InMemoryOrder(Value red, Value green, Value blue, Value alpha)
{
    constexpr ChannelOrder order = orderOf(kLayout);
    if constexpr (order.red == 0)
        return {red, green, blue, alpha};
    else if constexpr (order.red == 2)
        return {blue, green, red, alpha};
    else
        return {alpha, blue, green, red};
}

template <Layout kLayout, class C, class Value>
HWY_INLINE void InColorOrder(C const& c, Value& red, Value& green, Value& blue, Value& alpha)
{
    constexpr ChannelOrder order = orderOf(kLayout);
    if constexpr (order.red == 0)
    {
        red = c.c0;
        green = c.c1;
        blue = c.c2;
        alpha = c.c3;
    }
    else if constexpr (order.red == 2)
    {
        red = c.c2;
        green = c.c1;
        blue = c.c0;
        alpha = c.c3;
    }
    else
    {
        alpha = c.c0;
        blue = c.c1;
        green = c.c2;
        red = c.c3;
    }
}

// What formats of codes have in common. Format has operations for codes: LoadCodes(p, red, green, blue, alpha) and
// StoreCodes<kStream>(red, green, blue, alpha, p), where alpha is a value, which may be anything where there is none.
template <class Format, class Element, Layout kLayout>
struct ValuesOfCodes
{
    // Pixels without alpha are opaque.
    static HWY_INLINE V AlphaValue(VU code)
    {
        return hasAlpha(kLayout) ? Element::ToFloat(code) : hn::Set(D(), Element::kFullSignal);
    }

    static HWY_INLINE void Load(const std::uint8_t* p, V& red, V& green, V& blue, V& alpha)
    {
        VU r, g, b;
        Format::LoadCodes(p, r, g, b, alpha);
        red = Element::ToFloat(r);
        green = Element::ToFloat(g);
        blue = Element::ToFloat(b);
    }

    template <bool kStream>
    static HWY_INLINE void Store(V red, V green, V blue, V alpha, std::uint8_t* p)
    {
        Format::template StoreCodes<kStream>(Element::FromFloat(red), Element::FromFloat(green), Element::FromFloat(blue), alpha,
                                             p);
    }
};

// Integer elements and halfs.
template <Layout kLayout, class Element>
struct CodeFormat : ValuesOfCodes<CodeFormat<kLayout, Element>, Element, kLayout>
{
    using T = typename Element::Type;
    using Entry = typename Element::Entry;
    static constexpr std::size_t kPixelBytes = channelsOf(kLayout) * sizeof(T);
    static constexpr bool kCanStream = hasAlpha(kLayout);

    static HWY_INLINE void LoadCodes(const std::uint8_t* p, VU& red, VU& green, VU& blue, V& alpha)
    {
        const T* const elements = reinterpret_cast<const T*>(p);
        VU a;
        if constexpr (hasAlpha(kLayout))
            InColorOrder<kLayout>(LoadCodes4(elements), red, green, blue, a);
        else
            InColorOrder<kLayout>(LoadCodes3(elements), red, green, blue, a);
        alpha = CodeFormat::AlphaValue(a);
    }

    template <bool kStream>
    static HWY_INLINE void StoreCodes(VU red, VU green, VU blue, V alpha, std::uint8_t* p)
    {
        T* const elements = reinterpret_cast<T*>(p);
        const VU a = hasAlpha(kLayout) ? Element::FromFloat(alpha) : hn::Zero(DU());
        const CodeChannels c = InMemoryOrder<kLayout, CodeChannels>(red, green, blue, a);
        if constexpr (hasAlpha(kLayout))
            StoreCodes4<kStream>(c, elements);
        else
            StoreCodes3(c, elements);
    }
};

template <Layout kLayout>
struct FloatFormat
{
    using Entry = FloatEntry;
    static constexpr std::size_t kPixelBytes = channelsOf(kLayout) * sizeof(float);
    static constexpr bool kCanStream = hasAlpha(kLayout) || TAVRIN_TRANSPOSE_AVX512; // where vectors are stored one by one

    static HWY_INLINE void Load(const std::uint8_t* p, V& red, V& green, V& blue, V& alpha)
    {
        const D d;
        const float* const elements = reinterpret_cast<const float*>(p);
        if constexpr (hasAlpha(kLayout))
        {
            InColorOrder<kLayout>(LoadFourFloats(elements), red, green, blue, alpha);
        }
        else
        {
            Channels c;
            c.c3 = hn::Set(d, Element_32f::kFullSignal);
#if HWY_TARGET == HWY_SCALAR
            c.c0 = hn::LoadU(d, elements);
            c.c1 = hn::LoadU(d, elements + 1);
            c.c2 = hn::LoadU(d, elements + 2);
#else
            hn::LoadInterleaved3(d, elements, c.c0, c.c1, c.c2);
#endif
            InColorOrder<kLayout>(c, red, green, blue, alpha);
        }
    }

    template <bool kStream>
    static HWY_INLINE void Store(V red, V green, V blue, V alpha, std::uint8_t* p)
    {
        float* const elements = reinterpret_cast<float*>(p);
        const Channels c = InMemoryOrder<kLayout, Channels>(red, green, blue, alpha);
        if constexpr (hasAlpha(kLayout))
            StoreFourFloats<kStream>(c, elements);
        else
            StoreThreeFloats<kStream>(c, elements);
    }

    // Entries are values.
    template <bool kStream>
    static HWY_INLINE void StoreCodes(VU red, VU green, VU blue, V alpha, std::uint8_t* p)
    {
        const D d;
        Store<kStream>(hn::BitCast(d, red), hn::BitCast(d, green), hn::BitCast(d, blue), alpha, p);
    }
};

template <Layout kLayout>
struct HalfFormat : CodeFormat<kLayout, Element_16f>
{
};

#if TAVRIN_TRANSPOSE_AVX512 || HWY_TARGET == HWY_AVX2

// Four halfs a pixel: values take the processor's conversion on whole pixels, then the transposes of floats.
template <Layout kLayout>
requires(hasAlpha(kLayout)) struct HalfFormat<kLayout> : CodeFormat<kLayout, Element_16f>
{
    static HWY_INLINE void Load(const std::uint8_t* p, V& red, V& green, V& blue, V& alpha)
    {
#if TAVRIN_TRANSPOSE_AVX512
        const auto pixels = [p](int k)
        { return HalfsToFloats(D(), Halfs<D>{_mm256_loadu_si256(reinterpret_cast<const __m256i*>(p + 32 * k))}); };
#else
        const auto pixels = [p](int k)
        {
            const __m128i first = _mm_loadl_epi64(reinterpret_cast<const __m128i*>(p + 8 * k));
            const __m128i fourth = _mm_loadl_epi64(reinterpret_cast<const __m128i*>(p + 8 * k + 32));
            return HalfsToFloats(D(), Halfs<D>{_mm_unpacklo_epi64(first, fourth)});
        };
#endif
        InColorOrder<kLayout>(Deinterleave(pixels(0), pixels(1), pixels(2), pixels(3)), red, green, blue, alpha);
    }

    template <bool kStream>
    static HWY_INLINE void Store(V red, V green, V blue, V alpha, std::uint8_t* p)
    {
        V p0, p1, p2, p3;
        Interleave(InMemoryOrder<kLayout, Channels>(red, green, blue, alpha), p0, p1, p2, p3);
        StorePair<kStream>(p0, p1, p);
        StorePair<kStream>(p2, p3, p + 4 * hn::Lanes(D()));
    }

private:
    template <bool kStream>
    static HWY_INLINE void StorePair(V low, V high, std::uint8_t* p)
    {
        const D d;
        const hn::Repartition<std::uint16_t, D> dt;
        const Shorts both = hn::Combine(dt, FloatsToHalfs(d, high), FloatsToHalfs(d, low));
        StoreVector<kStream>(hn::BitCast(d, both), reinterpret_cast<float*>(p));
    }
};

// Three halfs a pixel: values take the processor's conversion on planes.
template <Layout kLayout>
requires(!hasAlpha(kLayout)) struct HalfFormat<kLayout> : CodeFormat<kLayout, Element_16f>
{
    static HWY_INLINE void Load(const std::uint8_t* p, V& red, V& green, V& blue, V& alpha)
    {
        const D d;
        const hn::Rebind<std::uint16_t, D> dn;
        Halfs<D> n0, n1, n2;
        hn::LoadInterleaved3(dn, reinterpret_cast<const std::uint16_t*>(p), n0, n1, n2);
        const Channels c = {HalfsToFloats(d, n0), HalfsToFloats(d, n1), HalfsToFloats(d, n2), hn::Set(d, Element_16f::kFullSignal)};
        InColorOrder<kLayout>(c, red, green, blue, alpha);
    }

    template <bool kStream>
    static HWY_INLINE void Store(V red, V green, V blue, V alpha, std::uint8_t* p)
    {
        const D d;
        const Channels c = InMemoryOrder<kLayout, Channels>(red, green, blue, alpha);
        hn::StoreInterleaved3(FloatsToHalfs(d, c.c0), FloatsToHalfs(d, c.c1), FloatsToHalfs(d, c.c2),
                              hn::Rebind<std::uint16_t, D>(), reinterpret_cast<std::uint16_t*>(p));
    }
};

#endif

// One big-endian word of ten bits a colour; alpha's two bits are taken and given as they stand.
template <Layout kLayout>
struct PackedFormat : ValuesOfCodes<PackedFormat<kLayout>, Element_10i, kLayout>
{
    using Element = Element_10i;
    using Entry = Element::Entry;
    static constexpr std::size_t kPixelBytes = 4;
    static constexpr bool kCanStream = true;

    static HWY_INLINE VU SwapBytes(VU word)
    {
        const DU du;
#if TAVRIN_PACKS_SATURATE
        HWY_ALIGN static constexpr std::uint8_t kSwapped[16] = {3, 2, 1, 0, 7, 6, 5, 4, 11, 10, 9, 8, 15, 14, 13, 12};
        const hn::Repartition<std::uint8_t, D> du8;
        return hn::BitCast(du, hn::TableLookupBytes(hn::BitCast(du8, word), hn::LoadDup128(du8, kSwapped)));
#else
        return hn::Or(hn::Or(hn::ShiftLeft<24>(word), hn::And(hn::ShiftLeft<8>(word), hn::Set(du, 0x00ff0000U))),
                      hn::Or(hn::And(hn::ShiftRight<8>(word), hn::Set(du, 0x0000ff00U)), hn::ShiftRight<24>(word)));
#endif
    }

    // What packing does for other formats.
    static HWY_INLINE VU NotBelowZero(VU code)
    {
        const DI di;
        return TAVRIN_PACKS_SATURATE ? hn::BitCast(DU(), hn::Max(hn::BitCast(di, code), hn::Zero(di))) : code;
    }

    static HWY_INLINE void LoadCodes(const std::uint8_t* p, VU& red, VU& green, VU& blue, V& alpha)
    {
        const DU du;
        const VU word = SwapBytes(hn::LoadU(du, reinterpret_cast<const std::uint32_t*>(p)));
        const VU mask = hn::Set(du, 0x3ffU);
        red = hn::ShiftRight<22>(word);
        green = hn::And(hn::ShiftRight<12>(word), mask);
        blue = hn::And(hn::ShiftRight<2>(word), mask);
        alpha = PackedFormat::AlphaValue(hn::And(word, hn::Set(du, 3U)));
    }

    template <bool kStream>
    static HWY_INLINE void StoreCodes(VU red, VU green, VU blue, V alpha, std::uint8_t* p)
    {
        VU word = hn::Or(hn::ShiftLeft<22>(NotBelowZero(red)),
                         hn::Or(hn::ShiftLeft<12>(NotBelowZero(green)), hn::ShiftLeft<2>(NotBelowZero(blue))));
        if constexpr (hasAlpha(kLayout))
            word = hn::Or(word, hn::And(NotBelowZero(Element::FromFloat(alpha)), hn::Set(DU(), 3U)));
        StoreVector<kStream>(hn::BitCast(D(), SwapBytes(word)), reinterpret_cast<float*>(p));
    }
};

template <Layout kLayout>
using Format_8i = CodeFormat<kLayout, Element_8i>;
template <Layout kLayout>
using Format_10i = CodeFormat<kLayout, Element_10i>;
template <Layout kLayout>
using Format_12i = CodeFormat<kLayout, Element_12i>;
template <Layout kLayout>
using Format_16i = CodeFormat<kLayout, Element_16i>;
template <Layout kLayout>
using Format_10iP = PackedFormat<kLayout>;
template <Layout kLayout>
using Format_16f = HalfFormat<kLayout>;
template <Layout kLayout>
using Format_32f = FloatFormat<kLayout>;

} // namespace Rendering::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif
