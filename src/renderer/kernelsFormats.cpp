// Loads and stores of the 32 pixel formats, compiled once for each target.
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "renderer/kernelsFormats.cpp"
#include "renderer/simdTargets-inl.h"

#include <hwy/foreach_target.h>

#include <hwy/highway.h>

#include "renderer/CPULut1DOp.h"
#include "renderer/elements-inl.h"
#include "renderer/gather-inl.h"
#include "renderer/kernelsFormats.h"
#include "renderer/pixelLayout.h"
#include "renderer/transpose-inl.h"
#include "utils/errorMessage.h"
#include "utils/utils.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <type_traits>

#ifndef TAVRIN_RENDERER_KERNELS_FORMATS_CPP_ONCE
#define TAVRIN_RENDERER_KERNELS_FORMATS_CPP_ONCE
namespace Rendering
{

struct FormatTable
{
#define TAVRIN_PIXEL_FORMAT(layout, layoutCode, depth, depthCode, packed) FormatFunctions layout##_##depth;
#include <tavrin/pixelFormats.def>
#undef TAVRIN_PIXEL_FORMAT
};

} // namespace Rendering
#endif

HWY_BEFORE_NAMESPACE();
namespace Rendering::HWY_NAMESPACE
{

namespace hn = hwy::HWY_NAMESPACE;

// Four channels in memory order, or three and an unused one.
struct CodeChannels
{
    VU c0;
    VU c1;
    VU c2;
    VU c3;
};

constexpr std::size_t kMaxPixelBytes = 16;

// ---------------------------------------------------------------- four channels of 32 bits

// The four registers that Deinterleave takes, from floats in memory.
HWY_INLINE Channels LoadFourFloats(const float* p)
{
    const D d;
#if TAVRIN_TRANSPOSE_AVX512
    return Deinterleave(hn::LoadU(d, p), hn::LoadU(d, p + 16), hn::LoadU(d, p + 32), hn::LoadU(d, p + 48));
#elif HWY_TARGET == HWY_AVX2
    const auto pair = [p](int k)
    { return V{_mm256_insertf128_ps(_mm256_castps128_ps256(_mm_loadu_ps(p + 4 * k)), _mm_loadu_ps(p + 4 * k + 16), 1)}; };
    return Deinterleave(pair(0), pair(1), pair(2), pair(3));
#elif HWY_TARGET == HWY_SCALAR
    return {hn::LoadU(d, p), hn::LoadU(d, p + 1), hn::LoadU(d, p + 2), hn::LoadU(d, p + 3)};
#else
    Channels c;
    hn::LoadInterleaved4(d, p, c.c0, c.c1, c.c2, c.c3);
    return c;
#endif
}

template <bool kStream>
HWY_INLINE void StoreFourFloats(Channels const& c, float* p)
{
#if TAVRIN_TRANSPOSE_AVX512 || HWY_TARGET == HWY_AVX2
    const std::size_t lanes = hn::Lanes(D());
    V p0, p1, p2, p3;
    Interleave(c, p0, p1, p2, p3);
    StoreVector<kStream>(p0, p);
    StoreVector<kStream>(p1, p + lanes);
    StoreVector<kStream>(p2, p + 2 * lanes);
    StoreVector<kStream>(p3, p + 3 * lanes);
#elif HWY_TARGET == HWY_SCALAR
    StoreVector<false>(c.c0, p);
    StoreVector<false>(c.c1, p + 1);
    StoreVector<false>(c.c2, p + 2);
    StoreVector<false>(c.c3, p + 3);
#else
    hn::StoreInterleaved4(c.c0, c.c1, c.c2, c.c3, D(), p);
#endif
}

template <bool kStream>
HWY_INLINE void StoreThreeFloats(Channels const& c, float* p)
{
#if TAVRIN_TRANSPOSE_AVX512
    StoreVector<kStream>(InterleaveThree<0>(c), p);
    StoreVector<kStream>(InterleaveThree<1>(c), p + 16);
    StoreVector<kStream>(InterleaveThree<2>(c), p + 32);
#elif HWY_TARGET == HWY_SCALAR
    StoreVector<false>(c.c0, p);
    StoreVector<false>(c.c1, p + 1);
    StoreVector<false>(c.c2, p + 2);
#else
    hn::StoreInterleaved3(c.c0, c.c1, c.c2, D(), p);
#endif
}

// ---------------------------------------------------------------- pixels of 3 channels, and codes of 4

template <class T>
HWY_INLINE CodeChannels LoadCodes3(const T* p)
{
    const hn::Rebind<T, D> dt;
#if HWY_TARGET == HWY_SCALAR
    return {Widen<T>(hn::LoadU(dt, p)), Widen<T>(hn::LoadU(dt, p + 1)), Widen<T>(hn::LoadU(dt, p + 2)), hn::Zero(DU())};
#else
    hn::VFromD<decltype(dt)> n0, n1, n2;
    hn::LoadInterleaved3(dt, p, n0, n1, n2);
    return {Widen<T>(n0), Widen<T>(n1), Widen<T>(n2), hn::Zero(DU())};
#endif
}

#if HWY_TARGET == HWY_AVX2
// Twelve bytes in each half of a register, from which every channel takes its own into 32-bit lanes.
HWY_INLINE CodeChannels LoadCodes3(const std::uint8_t* p)
{
    const __m128i low = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p));
    const __m128i high = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p + 8)); // not beyond the pixels
    const __m256i pixels = _mm256_inserti128_si256(_mm256_castsi128_si256(low), high, 1);
    const auto channel = [pixels](int which)
    {
        constexpr int kZeros = -0x7f7f8000; // three bytes 0x80 above the one that is taken
        const __m256i places = _mm256_setr_epi32(0, 3, 6, 9, 4, 7, 10, 13);
        return VU{_mm256_shuffle_epi8(pixels, _mm256_add_epi32(places, _mm256_set1_epi32(kZeros + which)))};
    };
    return {channel(0), channel(1), channel(2), hn::Zero(DU())};
}
#endif

#if TAVRIN_PACKS_SATURATE

HWY_INLINE void StoreBlock(__m128i block, void* p)
{
    _mm_storeu_si128(static_cast<__m128i*>(p), block);
}

// Per block of 128 bits, four pixels of three bytes and four bytes that nobody wants; then the pixels of all blocks together.
HWY_INLINE void StoreCodes3(CodeChannels const& c, std::uint8_t* p)
{
    const hn::Repartition<std::uint8_t, D> du8;
    HWY_ALIGN static constexpr std::uint8_t kPixels[16] = {0, 4, 8, 1, 5, 9, 2, 6, 10, 3, 7, 11, 15, 15, 15, 15};
    const Bytes pixels = hn::TableLookupBytes(PackBytes(c.c0, c.c1, c.c2, c.c2), hn::LoadDup128(du8, kPixels));
#if TAVRIN_TRANSPOSE_AVX512
    const __m512i places = _mm512_setr_epi32(0, 1, 2, 4, 5, 6, 8, 9, 10, 12, 13, 14, 15, 15, 15, 15);
    const __m512i together = _mm512_permutexvar_epi32(places, pixels.raw);
    _mm256_storeu_si256(reinterpret_cast<__m256i*>(p), _mm512_castsi512_si256(together));
    StoreBlock(_mm512_extracti32x4_epi32(together, 2), p + 32);
#elif HWY_TARGET == HWY_AVX2
    const __m256i together = _mm256_permutevar8x32_epi32(pixels.raw, _mm256_setr_epi32(0, 1, 2, 4, 5, 6, 7, 7));
    StoreBlock(_mm256_castsi256_si128(together), p);
    _mm_storel_epi64(reinterpret_cast<__m128i*>(p + 16), _mm256_extracti128_si256(together, 1));
#else
    _mm_storel_epi64(reinterpret_cast<__m128i*>(p), pixels.raw);
    _mm_storeu_si32(p + 8, _mm_unpackhi_epi64(pixels.raw, pixels.raw));
#endif
}

#if TAVRIN_TRANSPOSE_AVX512

// For each lane of one of the registers that 16 pixels fill: what it takes of two that PackShorts gave, the first of the first two
// channels, the second of the others.
template <unsigned int kChannels>
struct PlacesOfShorts
{
    constexpr explicit PlacesOfShorts(unsigned int whichRegister) : place()
    {
        for (unsigned int lane = 0; lane < 32; ++lane)
        {
            const unsigned int pixel = (32 * whichRegister + lane) / kChannels % 16;
            const unsigned int channel = (32 * whichRegister + lane) % kChannels;
            place[lane] = static_cast<std::uint16_t>(channel / 2 * 32 + pixel / 4 * 8 + channel % 2 * 4 + pixel % 4);
        }
    }

    alignas(64) std::uint16_t place[32];
};

template <unsigned int kChannels, unsigned int kRegister>
HWY_INLINE __m512i InterleaveShorts(Shorts firstTwo, Shorts others)
{
    static constexpr PlacesOfShorts<kChannels> kPlaces(kRegister);
    return _mm512_permutex2var_epi16(firstTwo.raw, _mm512_load_si512(kPlaces.place), others.raw);
}

#endif

HWY_INLINE void StoreCodes3(CodeChannels const& c, std::uint16_t* p)
{
    const Shorts firstTwo = PackShorts(c.c0, c.c1);
    const Shorts third = PackShorts(c.c2, c.c2);
#if TAVRIN_TRANSPOSE_AVX512
    // Halves, none of which crosses a line of the cache where pixels begin on one.
    const __m512i low = InterleaveShorts<3, 0>(firstTwo, third);
    _mm256_storeu_si256(reinterpret_cast<__m256i*>(p), _mm512_castsi512_si256(low));
    _mm256_storeu_si256(reinterpret_cast<__m256i*>(p + 16), _mm512_extracti64x4_epi64(low, 1));
    _mm256_storeu_si256(reinterpret_cast<__m256i*>(p + 32), _mm512_castsi512_si256(InterleaveShorts<3, 1>(firstTwo, third)));
#else
    // Each block of 128 bits has four pixels, of 24 bytes.
    const hn::Repartition<std::uint8_t, D> du8;
    const hn::Repartition<std::uint16_t, D> du16;
    constexpr std::uint8_t kNone = 0x80;
    HWY_ALIGN static constexpr std::uint8_t kTwo[2][16] = {
        {0, 1, 8, 9, kNone, kNone, 2, 3, 10, 11, kNone, kNone, 4, 5, 12, 13},
        {kNone, kNone, 6, 7, 14, 15, kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone}};
    HWY_ALIGN static constexpr std::uint8_t kThird[2][16] = {
        {kNone, kNone, kNone, kNone, 0, 1, kNone, kNone, kNone, kNone, 2, 3, kNone, kNone, kNone, kNone},
        {4, 5, kNone, kNone, kNone, kNone, 6, 7, kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone}};
    const auto interleave = [&](int which) HWY_ATTR
    {
        return hn::Or(hn::TableLookupBytes(firstTwo, hn::BitCast(du16, hn::LoadDup128(du8, kTwo[which]))),
                      hn::TableLookupBytes(third, hn::BitCast(du16, hn::LoadDup128(du8, kThird[which]))));
    };
    const Shorts low = interleave(0);
    const Shorts high = interleave(1);
#if HWY_TARGET == HWY_AVX2
    StoreBlock(_mm256_castsi256_si128(low.raw), p);
    _mm_storel_epi64(reinterpret_cast<__m128i*>(p + 8), _mm256_castsi256_si128(high.raw));
    StoreBlock(_mm256_extracti128_si256(low.raw, 1), p + 12);
    _mm_storel_epi64(reinterpret_cast<__m128i*>(p + 20), _mm256_extracti128_si256(high.raw, 1));
#else
    StoreBlock(low.raw, p);
    _mm_storel_epi64(reinterpret_cast<__m128i*>(p + 8), high.raw);
#endif
#endif
}

#else

template <class T>
HWY_INLINE void StoreCodes3(CodeChannels const& c, T* p)
{
    const hn::Rebind<T, D> dt;
    const DI di;
    const auto n0 = hn::DemoteTo(dt, hn::BitCast(di, c.c0));
    const auto n1 = hn::DemoteTo(dt, hn::BitCast(di, c.c1));
    const auto n2 = hn::DemoteTo(dt, hn::BitCast(di, c.c2));
#if HWY_TARGET == HWY_SCALAR
    hn::StoreU(n0, dt, p);
    hn::StoreU(n1, dt, p + 1);
    hn::StoreU(n2, dt, p + 2);
#else
    hn::StoreInterleaved3(n0, n1, n2, dt, p);
#endif
}

#endif

// Four bytes a pixel: one 32-bit lane each.
HWY_INLINE CodeChannels LoadCodes4(const std::uint8_t* p)
{
    const DU du;
    const VU pixel = hn::LoadU(du, reinterpret_cast<const std::uint32_t*>(p));
    const VU mask = hn::Set(du, 0xffU);
    return {hn::And(pixel, mask), hn::And(hn::ShiftRight<8>(pixel), mask), hn::And(hn::ShiftRight<16>(pixel), mask),
            hn::ShiftRight<24>(pixel)};
}

#if TAVRIN_PACKS_SATURATE

template <bool kStream>
HWY_INLINE void StoreCodes4(CodeChannels const& c, std::uint8_t* p)
{
    const hn::Repartition<std::uint8_t, D> du8;
    HWY_ALIGN static constexpr std::uint8_t kPixels[16] = {0, 4, 8, 12, 1, 5, 9, 13, 2, 6, 10, 14, 3, 7, 11, 15};
    const Bytes pixels = hn::TableLookupBytes(PackBytes(c.c0, c.c1, c.c2, c.c3), hn::LoadDup128(du8, kPixels));
    StoreVector<kStream>(hn::BitCast(D(), pixels), reinterpret_cast<float*>(p));
}

#else

template <bool kStream>
HWY_INLINE void StoreCodes4(CodeChannels const& c, std::uint8_t* p)
{
    const VU pixel = hn::Or(hn::Or(c.c0, hn::ShiftLeft<8>(c.c1)), hn::Or(hn::ShiftLeft<16>(c.c2), hn::ShiftLeft<24>(c.c3)));
    StoreVector<kStream>(hn::BitCast(D(), pixel), reinterpret_cast<float*>(p));
}

#endif

// Eight bytes a pixel: two 32-bit lanes, each of two elements.
HWY_INLINE CodeChannels LoadCodes4(const std::uint16_t* p)
{
    const DU du;
    const std::uint32_t* const words = reinterpret_cast<const std::uint32_t*>(p);
#if HWY_TARGET == HWY_SCALAR
    const VU first = hn::LoadU(du, words);
    const VU second = hn::LoadU(du, words + 1);
#else
    const VU low = hn::LoadU(du, words);
    const VU high = hn::LoadU(du, words + hn::Lanes(du));
    const VU first = hn::ConcatEven(du, high, low);
    const VU second = hn::ConcatOdd(du, high, low);
#endif
    const VU mask = hn::Set(du, 0xffffU);
    return {hn::And(first, mask), hn::ShiftRight<16>(first), hn::And(second, mask), hn::ShiftRight<16>(second)};
}

#if TAVRIN_PACKS_SATURATE

template <bool kStream>
HWY_INLINE void StoreCodes4(CodeChannels const& c, std::uint16_t* p)
{
    const D d;
    float* const words = reinterpret_cast<float*>(p);
#if TAVRIN_TRANSPOSE_AVX512
    const Shorts firstTwo = PackShorts(c.c0, c.c1);
    const Shorts others = PackShorts(c.c2, c.c3);
    StoreVector<kStream>(V{_mm512_castsi512_ps(InterleaveShorts<4, 0>(firstTwo, others))}, words);
    StoreVector<kStream>(V{_mm512_castsi512_ps(InterleaveShorts<4, 1>(firstTwo, others))}, words + 16);
#else
    const hn::Repartition<std::uint16_t, D> du16;
    const Shorts even = PackShorts(c.c0, c.c2);
    const Shorts odd = PackShorts(c.c1, c.c3);
    const V firstTwo = hn::BitCast(d, hn::InterleaveLower(du16, even, odd));
    const V others = hn::BitCast(d, hn::InterleaveUpper(du16, even, odd));
    const V lower = hn::InterleaveLower(d, firstTwo, others);
    const V upper = hn::InterleaveUpper(d, firstTwo, others);
#if HWY_TARGET == HWY_AVX2
    StoreVector<kStream>(hn::ConcatLowerLower(d, upper, lower), words);
    StoreVector<kStream>(hn::ConcatUpperUpper(d, upper, lower), words + hn::Lanes(d));
#else
    StoreVector<kStream>(lower, words);
    StoreVector<kStream>(upper, words + hn::Lanes(d));
#endif
#endif
}

#else

template <bool kStream>
HWY_INLINE void StoreCodes4(CodeChannels const& c, std::uint16_t* p)
{
    const D d;
    float* const words = reinterpret_cast<float*>(p);
    const VU first = hn::Or(c.c0, hn::ShiftLeft<16>(c.c1));
    const VU second = hn::Or(c.c2, hn::ShiftLeft<16>(c.c3));
#if HWY_TARGET == HWY_SCALAR
    StoreVector<false>(hn::BitCast(d, first), words);
    StoreVector<false>(hn::BitCast(d, second), words + 1);
#else
    const DU du;
    StoreVector<kStream>(hn::BitCast(d, hn::InterleaveLower(du, first, second)), words);
    StoreVector<kStream>(hn::BitCast(d, hn::InterleaveUpper(du, first, second)), words + hn::Lanes(d));
#endif
}

#endif

// ---------------------------------------------------------------- formats

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

// ---------------------------------------------------------------- loops

// What a block is filled with.
struct Values
{
    template <class Format>
    static HWY_INLINE void LoadVector(const std::uint8_t* p, V& red, V& green, V& blue, V& alpha)
    {
        Format::Load(p, red, green, blue, alpha);
    }
};

struct Codes
{
    template <class Format>
    static HWY_INLINE void LoadVector(const std::uint8_t* p, V& red, V& green, V& blue, V& alpha)
    {
        VU r, g, b;
        Format::LoadCodes(p, r, g, b, alpha);
        red = hn::BitCast(D(), r);
        green = hn::BitCast(D(), g);
        blue = hn::BitCast(D(), b);
    }
};

static_assert(hn::MaxLanes(D()) <= Block::kGap);

// The last pixels of a line, fewer than a vector holds, on their way through a buffer that begins a line of the cache.
#if TAVRIN_TRANSPOSE_AVX512

// The bytes of a register that are among the first so many.
HWY_INLINE auto FirstBytes(std::size_t bytes)
{
    return hn::FirstN(hn::Repartition<std::uint8_t, D>(), std::min(bytes, kCacheLine));
}

HWY_INLINE void CopyIn(const std::uint8_t* p, std::size_t bytes, std::uint8_t* buffer)
{
    const hn::Repartition<std::uint8_t, D> du8;
    for (std::size_t i = 0; i < bytes; i += kCacheLine)
        hn::Store(hn::MaskedLoad(FirstBytes(bytes - i), du8, p + i), du8, buffer + i);
}

HWY_INLINE void CopyOut(const std::uint8_t* buffer, std::size_t bytes, std::uint8_t* p)
{
    const hn::Repartition<std::uint8_t, D> du8;
    for (std::size_t i = 0; i < bytes; i += kCacheLine)
        hn::BlendedStore(hn::Load(du8, buffer + i), FirstBytes(bytes - i), du8, p + i);
}

#else

HWY_INLINE void CopyIn(const std::uint8_t* p, std::size_t bytes, std::uint8_t* buffer)
{
    std::memcpy(buffer, p, bytes);
}

HWY_INLINE void CopyOut(const std::uint8_t* buffer, std::size_t bytes, std::uint8_t* p)
{
    std::memcpy(p, buffer, bytes);
}

#endif

template <class Format, class Content>
HWY_INLINE void LoadVector(const std::uint8_t* p, unsigned int at, Block& block)
{
    const D d;
    V red, green, blue, alpha;
    Content::template LoadVector<Format>(p, red, green, blue, alpha);
    hn::StoreU(red, d, block.red + at);
    hn::StoreU(green, d, block.green + at);
    hn::StoreU(blue, d, block.blue + at);
    hn::StoreU(alpha, d, block.alpha + at);
}

template <class Format, class Content>
void Load(void const* source, Places places, Block& block)
{
    const unsigned int lanes = static_cast<unsigned int>(hn::Lanes(D()));
    const std::uint8_t* p = static_cast<const std::uint8_t*>(source);
    const unsigned int end = places.first + places.count;
    unsigned int i = places.first;
    for (; i + lanes <= end; i += lanes, p += lanes * Format::kPixelBytes)
        LoadVector<Format, Content>(p, i, block);
    if (i < end)
    {
        alignas(64) std::uint8_t rest[hn::MaxLanes(D()) * kMaxPixelBytes] = {};
        CopyIn(p, (end - i) * Format::kPixelBytes, rest);
        LoadVector<Format, Content>(rest, i, block);
    }
}

// What is stored of a block, from some place on: its values, or the entries of tables that its codes stand for. The block's planes
// are read unaligned, since the first place may be any.
class ValuesOfBlock
{
public:
    HWY_INLINE ValuesOfBlock(Block const& block, unsigned int first) : m_block(block), m_first(first) {}

    template <class Format, bool kStream>
    HWY_INLINE void StoreVector(unsigned int index, std::uint8_t* p) const
    {
        const D d;
        const unsigned int at = m_first + index;
        Format::template Store<kStream>(hn::LoadU(d, m_block.red + at), hn::LoadU(d, m_block.green + at),
                                        hn::LoadU(d, m_block.blue + at), hn::LoadU(d, m_block.alpha + at), p);
    }

private:
    Block const& m_block;
    unsigned int m_first;
};

class EntriesOfBlock
{
public:
    HWY_INLINE EntriesOfBlock(Lut1DParameters const& tables, Block const& block, unsigned int first)
        : m_tables(tables), m_block(block), m_first(first)
    {
    }

    template <class Format, bool kStream>
    HWY_INLINE void StoreVector(unsigned int index, std::uint8_t* p) const
    {
        using T = typename Format::Entry::Type;
        const D d;
        const unsigned int at = m_first + index;
        const V alpha = hn::Mul(hn::LoadU(d, m_block.alpha + at), hn::Set(d, m_tables.alphaScale));
        Format::template StoreCodes<kStream>(Entries<T>(0, m_block.red + at), Entries<T>(1, m_block.green + at),
                                             Entries<T>(2, m_block.blue + at), alpha, p);
    }

private:
    template <class T>
    HWY_INLINE VU Entries(int channel, const float* codes) const
    {
        const D d;
        return GatherBits<T>(d, m_tables.table[channel], RowsOfCodes(d, hn::LoadU(d, codes), m_tables.maxIndex));
    }

    Lut1DParameters const& m_tables;
    Block const& m_block;
    unsigned int m_first;
};

// Asks for the source of as many pixels as a vector holds.
template <bool kStream>
HWY_INLINE void Prefetch(UpcomingPixels& upcoming)
{
    const std::uint8_t* const begin = static_cast<const std::uint8_t*>(upcoming.begin);
    const std::size_t bytes = hn::Lanes(D()) * upcoming.pixelBytes;
    for (std::size_t i = 0; i < bytes; i += kCacheLine)
        Prefetch<kStream>(begin + i);
    upcoming.begin = begin + bytes;
}

template <class Format, bool kStream, class Pixels>
HWY_INLINE void StorePart(Pixels const& pixels, unsigned int begin, unsigned int end, std::uint8_t* p, UpcomingPixels& upcoming)
{
    const unsigned int lanes = static_cast<unsigned int>(hn::Lanes(D()));
    unsigned int i = begin;
    for (; i + lanes <= end; i += lanes, p += lanes * Format::kPixelBytes)
    {
        Prefetch<kStream>(upcoming);
        pixels.template StoreVector<Format, kStream>(i, p);
    }
    if (i < end)
    {
        alignas(64) std::uint8_t rest[hn::MaxLanes(D()) * kMaxPixelBytes];
        pixels.template StoreVector<Format, false>(i, rest);
        CopyOut(rest, (end - i) * Format::kPixelBytes, p);
    }
}

// The bytes up to the first 64-byte boundary that a pixel begins on, if there is one.
HWY_INLINE std::size_t GapToLine(const std::uint8_t* p, std::size_t pixelBytes)
{
    std::size_t gap = (kCacheLine - reinterpret_cast<std::uintptr_t>(p) % kCacheLine) % kCacheLine;
    while (gap % pixelBytes != 0 && gap < 2 * kCacheLine) // those of three channels begin on every third one
        gap += kCacheLine;
    return gap;
}

// Pixels up to the boundary go the ordinary way, and so does everything where no pixel begins on one.
template <class Format, bool kStream, class Pixels>
HWY_INLINE void StorePixels(Pixels const& pixels, unsigned int count, void* destination, UpcomingPixels& upcoming)
{
    std::uint8_t* const p = static_cast<std::uint8_t*>(destination);
    if constexpr (kStream)
    {
        const std::size_t gap = GapToLine(p, Format::kPixelBytes);
        const unsigned int ordinary = static_cast<unsigned int>(gap / Format::kPixelBytes);
        if (gap % Format::kPixelBytes == 0 && ordinary < count)
        {
            StorePart<Format, false>(pixels, 0, ordinary, p, upcoming);
            StorePart<Format, true>(pixels, ordinary, count, p + gap, upcoming);
            return;
        }
    }
    StorePart<Format, false>(pixels, 0, count, p, upcoming);
}

template <class Format, bool kStream>
void Store(Block const& block, Places places, void* destination, UpcomingPixels upcoming)
{
    StorePixels<Format, kStream>(ValuesOfBlock(block, places.first), places.count, destination, upcoming);
}

template <class Format, bool kStream>
void StoreEntries(Lut1DParameters const& tables, Block const& block, Places places, void* destination, UpcomingPixels upcoming)
{
    StorePixels<Format, kStream>(EntriesOfBlock(tables, block, places.first), places.count, destination, upcoming);
}

template <class Format>
constexpr LoadFunction loadCodesOf()
{
    if constexpr (std::is_same_v<typename Format::Entry, FloatEntry>)
        return &Load<Format, Values>;
    else
        return &Load<Format, Codes>;
}

template <class Format>
constexpr FormatFunctions functionsOf()
{
    constexpr bool kCanStream = Format::kCanStream && HWY_TARGET != HWY_SCALAR;
    return {&Load<Format, Values>,      loadCodesOf<Format>(),        &Store<Format, false>,
            &Store<Format, kCanStream>, &StoreEntries<Format, false>, &StoreEntries<Format, kCanStream>};
}

constexpr FormatTable kFormats = {
#define TAVRIN_PIXEL_FORMAT(layout, layoutCode, depth, depthCode, packed) functionsOf<Format_##depth<Layout::layout>>(),
#include <tavrin/pixelFormats.def>
#undef TAVRIN_PIXEL_FORMAT
};

} // namespace Rendering::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE

#include "renderer/simdTarget.h"

namespace Rendering
{

FormatFunctions const& getFormatFunctions(PixelFormat format)
{
    static constexpr PerTarget<FormatTable> kTables TAVRIN_PER_TARGET(kFormats);
    FormatTable const& table = *kTables[getSimdTarget()];
    switch (format)
    {
#define TAVRIN_PIXEL_FORMAT(layout, layoutCode, depth, depthCode, packed) \
    case Tavrin::PF_##layout##_##depth:                                   \
        return table.layout##_##depth;
#include <tavrin/pixelFormats.def>
#undef TAVRIN_PIXEL_FORMAT
    case Tavrin::PF_UNKNOWN:
        break;
    }
    throw Color::failure(Color::ErrorIds::kIllegalPixelFormat, Color::Module::kUtils);
}

void finishStreaming()
{
    hwy::FlushStream();
}

} // namespace Rendering

#endif
