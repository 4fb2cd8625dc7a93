// Pixels of three or four channels in memory as a register for each channel, and back.
#if defined(TAVRIN_RENDERER_INTERLEAVE_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef TAVRIN_RENDERER_INTERLEAVE_INL_H
#undef TAVRIN_RENDERER_INTERLEAVE_INL_H
#else
#define TAVRIN_RENDERER_INTERLEAVE_INL_H
#endif

#include "renderer/elements-inl.h"
#include "renderer/transpose-inl.h"

#include <hwy/highway.h>

#include <cstddef>
#include <cstdint>

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

HWY_INLINE void Store128(__m128i bits, void* p)
{
    _mm_storeu_si128(static_cast<__m128i*>(p), bits);
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
    Store128(_mm512_extracti32x4_epi32(together, 2), p + 32);
#elif HWY_TARGET == HWY_AVX2
    const __m256i together = _mm256_permutevar8x32_epi32(pixels.raw, _mm256_setr_epi32(0, 1, 2, 4, 5, 6, 7, 7));
    Store128(_mm256_castsi256_si128(together), p);
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
    Store128(_mm256_castsi256_si128(low.raw), p);
    _mm_storel_epi64(reinterpret_cast<__m128i*>(p + 8), _mm256_castsi256_si128(high.raw));
    Store128(_mm256_extracti128_si256(low.raw, 1), p + 12);
    _mm_storel_epi64(reinterpret_cast<__m128i*>(p + 20), _mm256_extracti128_si256(high.raw, 1));
#else
    Store128(low.raw, p);
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

} // namespace Rendering::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif
