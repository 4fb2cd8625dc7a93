// Between registers of whole pixels, four floats each, and one register per channel.
#if defined(TAVRIN_RENDERER_TRANSPOSE_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef TAVRIN_RENDERER_TRANSPOSE_INL_H
#undef TAVRIN_RENDERER_TRANSPOSE_INL_H
#else
#define TAVRIN_RENDERER_TRANSPOSE_INL_H
#endif

#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace Rendering::HWY_NAMESPACE
{

namespace hn = hwy::HWY_NAMESPACE;

// The widest vector of floats, and the integers beside it.
using D = hn::ScalableTag<float>;
using DU = hn::RebindToUnsigned<D>;
using DI = hn::RebindToSigned<D>;
using V = hn::VFromD<D>;
using VU = hn::VFromD<DU>;
using VI = hn::VFromD<DI>;

// Four channels in memory order, or three and an unused one.
struct Channels
{
    V c0;
    V c1;
    V c2;
    V c3;
};

#undef TAVRIN_TRANSPOSE_AVX512
#if HWY_TARGET == HWY_AVX3
#define TAVRIN_TRANSPOSE_AVX512 1
#else
#define TAVRIN_TRANSPOSE_AVX512 0
#endif

#if TAVRIN_TRANSPOSE_AVX512

// Registers of four whole pixels each, in order, become channels in pixel order; eight shuffles.
HWY_INLINE Channels Deinterleave(V p0, V p1, V p2, V p3)
{
    const __m512i first = _mm512_setr_epi32(0, 4, 8, 12, 16, 20, 24, 28, 1, 5, 9, 13, 17, 21, 25, 29);
    const __m512i second = _mm512_setr_epi32(2, 6, 10, 14, 18, 22, 26, 30, 3, 7, 11, 15, 19, 23, 27, 31);
    const __m512 c01low = _mm512_permutex2var_ps(p0.raw, first, p1.raw);
    const __m512 c23low = _mm512_permutex2var_ps(p0.raw, second, p1.raw);
    const __m512 c01high = _mm512_permutex2var_ps(p2.raw, first, p3.raw);
    const __m512 c23high = _mm512_permutex2var_ps(p2.raw, second, p3.raw);
    return {V{_mm512_shuffle_f32x4(c01low, c01high, 0x44)}, V{_mm512_shuffle_f32x4(c01low, c01high, 0xee)},
            V{_mm512_shuffle_f32x4(c23low, c23high, 0x44)}, V{_mm512_shuffle_f32x4(c23low, c23high, 0xee)}};
}

// The way back.
HWY_INLINE void Interleave(Channels const& c, V& p0, V& p1, V& p2, V& p3)
{
    const __m512i low = _mm512_setr_epi32(0, 16, 1, 17, 2, 18, 3, 19, 4, 20, 5, 21, 6, 22, 7, 23);
    const __m512i high = _mm512_setr_epi32(8, 24, 9, 25, 10, 26, 11, 27, 12, 28, 13, 29, 14, 30, 15, 31);
    const __m512i lowPairs = _mm512_setr_epi64(0, 8, 1, 9, 2, 10, 3, 11);
    const __m512i highPairs = _mm512_setr_epi64(4, 12, 5, 13, 6, 14, 7, 15);
    const __m512d c01low = _mm512_castps_pd(_mm512_permutex2var_ps(c.c0.raw, low, c.c1.raw));
    const __m512d c23low = _mm512_castps_pd(_mm512_permutex2var_ps(c.c2.raw, low, c.c3.raw));
    const __m512d c01high = _mm512_castps_pd(_mm512_permutex2var_ps(c.c0.raw, high, c.c1.raw));
    const __m512d c23high = _mm512_castps_pd(_mm512_permutex2var_ps(c.c2.raw, high, c.c3.raw));
    p0 = V{_mm512_castpd_ps(_mm512_permutex2var_pd(c01low, lowPairs, c23low))};
    p1 = V{_mm512_castpd_ps(_mm512_permutex2var_pd(c01low, highPairs, c23low))};
    p2 = V{_mm512_castpd_ps(_mm512_permutex2var_pd(c01high, lowPairs, c23high))};
    p3 = V{_mm512_castpd_ps(_mm512_permutex2var_pd(c01high, highPairs, c23high))};
}

// For each lane of one of the three registers that 16 pixels of three channels fill: what it takes of the first two channels, 16
// and more standing for the second, and then of these and the third.
struct PlacesOfThree
{
    constexpr explicit PlacesOfThree(int whichRegister) : ofFirstTwo(), withThird()
    {
        for (int lane = 0; lane < 16; ++lane)
        {
            const int pixel = (16 * whichRegister + lane) / 3;
            const int channel = (16 * whichRegister + lane) % 3;
            ofFirstTwo[lane] = channel == 1 ? 16 + pixel : pixel;
            withThird[lane] = channel == 2 ? 16 + pixel : lane;
        }
    }

    alignas(64) int ofFirstTwo[16];
    alignas(64) int withThird[16];
};

// Three channels as a register of whole pixels in memory order.
template <int kRegister>
HWY_INLINE V InterleaveThree(Channels const& c)
{
    static constexpr PlacesOfThree kPlaces(kRegister);
    const __m512 two = _mm512_permutex2var_ps(c.c0.raw, _mm512_load_si512(kPlaces.ofFirstTwo), c.c1.raw);
    return V{_mm512_permutex2var_ps(two, _mm512_load_si512(kPlaces.withThird), c.c2.raw)};
}

#elif HWY_TARGET != HWY_SCALAR

// A register holds one pixel, or on AVX2 pixels k and k + 4; in-lane shuffles then leave the channels in pixel order.
HWY_INLINE Channels Deinterleave(V p0, V p1, V p2, V p3)
{
    const D d;
    const hn::RepartitionToWide<DU> du64;
    const auto c01low = hn::BitCast(du64, hn::InterleaveLower(d, p0, p1));
    const auto c23low = hn::BitCast(du64, hn::InterleaveUpper(d, p0, p1));
    const auto c01high = hn::BitCast(du64, hn::InterleaveLower(d, p2, p3));
    const auto c23high = hn::BitCast(du64, hn::InterleaveUpper(d, p2, p3));
    return {hn::BitCast(d, hn::InterleaveLower(du64, c01low, c01high)), hn::BitCast(d, hn::InterleaveUpper(du64, c01low, c01high)),
            hn::BitCast(d, hn::InterleaveLower(du64, c23low, c23high)), hn::BitCast(d, hn::InterleaveUpper(du64, c23low, c23high))};
}

#if HWY_TARGET == HWY_AVX2
// The way back, two pixels a register, in order.
HWY_INLINE void Interleave(Channels const& c, V& p01, V& p23, V& p45, V& p67)
{
    const D d;
    const hn::RepartitionToWide<DU> du64;
    const auto c01low = hn::BitCast(du64, hn::InterleaveLower(d, c.c0, c.c1));
    const auto c23low = hn::BitCast(du64, hn::InterleaveLower(d, c.c2, c.c3));
    const auto c01high = hn::BitCast(du64, hn::InterleaveUpper(d, c.c0, c.c1));
    const auto c23high = hn::BitCast(du64, hn::InterleaveUpper(d, c.c2, c.c3));
    const V p04 = hn::BitCast(d, hn::InterleaveLower(du64, c01low, c23low));
    const V p15 = hn::BitCast(d, hn::InterleaveUpper(du64, c01low, c23low));
    const V p26 = hn::BitCast(d, hn::InterleaveLower(du64, c01high, c23high));
    const V p37 = hn::BitCast(d, hn::InterleaveUpper(du64, c01high, c23high));
    p01 = hn::ConcatLowerLower(d, p15, p04);
    p23 = hn::ConcatLowerLower(d, p37, p26);
    p45 = hn::ConcatUpperUpper(d, p15, p04);
    p67 = hn::ConcatUpperUpper(d, p37, p26);
}
#endif

#endif

#if HWY_TARGET != HWY_SCALAR

// Which pixel of a vector stands in a group of four lanes of the register that Deinterleave takes.
constexpr int PixelInRegister(int whichRegister, int group)
{
    return TAVRIN_TRANSPOSE_AVX512 ? 4 * whichRegister + group : whichRegister + 4 * group;
}

// One value per pixel becomes four equal lanes per pixel, for the pixels of one register.
template <int kRegister>
HWY_INLINE V SpreadOverChannels(V perPixel)
{
#if TAVRIN_TRANSPOSE_AVX512
    const __m512i pixels = _mm512_setr_epi32(0, 0, 0, 0, 1, 1, 1, 1, 2, 2, 2, 2, 3, 3, 3, 3);
    return V{_mm512_permutexvar_ps(_mm512_add_epi32(pixels, _mm512_set1_epi32(4 * kRegister)), perPixel.raw)};
#else
    return hn::Broadcast<kRegister>(perPixel);
#endif
}

#endif

} // namespace Rendering::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif
