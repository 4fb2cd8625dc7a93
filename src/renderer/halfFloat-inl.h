// Halfs to floats and back on vectors, with the same bits on every target.
#if defined(TAVRIN_RENDERER_HALF_FLOAT_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef TAVRIN_RENDERER_HALF_FLOAT_INL_H
#undef TAVRIN_RENDERER_HALF_FLOAT_INL_H
#else
#define TAVRIN_RENDERER_HALF_FLOAT_INL_H
#endif

#include <hwy/highway.h>

#include <cstdint>

HWY_BEFORE_NAMESPACE();
namespace Rendering::HWY_NAMESPACE
{

namespace hn = hwy::HWY_NAMESPACE;

// As many halfs, as they stand in memory, as a vector of floats has lanes.
template <class D>
using Halfs = hn::VFromD<hn::Rebind<std::uint16_t, D>>;

// Targets with conversions of their own take these, on whole vectors; the others reckon the same bits.
#if HWY_TARGET == HWY_AVX3 || HWY_TARGET == HWY_AVX2

template <class D>
HWY_INLINE hn::VFromD<D> HalfsToFloats(D, Halfs<D> halfs)
{
#if HWY_TARGET == HWY_AVX3
    return hn::VFromD<D>{_mm512_cvtph_ps(halfs.raw)};
#else
    return hn::VFromD<D>{_mm256_cvtph_ps(halfs.raw)};
#endif
}

template <class D>
HWY_INLINE Halfs<D> FloatsToHalfs(D, hn::VFromD<D> values)
{
    constexpr int kRound = _MM_FROUND_TO_NEAREST_INT | _MM_FROUND_NO_EXC;
#if HWY_TARGET == HWY_AVX3
    return Halfs<D>{_mm512_cvtps_ph(values.raw, kRound)};
#else
    return Halfs<D>{_mm256_cvtps_ph(values.raw, kRound)};
#endif
}

#endif

// The half patterns in 32-bit lanes as floats; exact. A signalling NaN becomes a quiet one.
template <class D, class VU = hn::VFromD<hn::RebindToUnsigned<D>>>
HWY_INLINE hn::VFromD<D> HalfBitsToFloat(D d, VU bits)
{
#if HWY_TARGET == HWY_AVX3
    return HalfsToFloats(d, Halfs<D>{_mm512_cvtepi32_epi16(bits.raw)});
#elif HWY_TARGET == HWY_AVX2
    return HalfsToFloats(d, Halfs<D>{_mm_packus_epi32(_mm256_castsi256_si128(bits.raw), _mm256_extracti128_si256(bits.raw, 1))});
#else
    const hn::RebindToUnsigned<D> du;
    const hn::RebindToSigned<D> di;
    const auto sign = hn::ShiftLeft<16>(hn::And(bits, hn::Set(du, 0x8000U)));
    const auto magnitude = hn::And(bits, hn::Set(du, 0x7fffU));

    // Exponents are biased by 127 instead of 15; those of infinity and NaN stand as far again above.
    const auto rebiased = hn::Add(hn::ShiftLeft<13>(magnitude), hn::Set(du, 112U << 23));
    const auto special = hn::Gt(hn::BitCast(di, magnitude), hn::Set(di, 0x7bff));
    const auto isNan = hn::Gt(hn::BitCast(di, magnitude), hn::Set(di, 0x7c00));
    auto result = hn::IfThenElse(hn::RebindMask(du, special), hn::Add(rebiased, hn::Set(du, 112U << 23)), rebiased);
    result = hn::IfThenElse(hn::RebindMask(du, isNan), hn::Or(result, hn::Set(du, 0x00400000U)), result);

    // Denormal halfs, and zero, are multiples of 2^-24.
    const auto isSmall = hn::Lt(hn::BitCast(di, magnitude), hn::Set(di, 0x400));
    const auto small = hn::Mul(hn::ConvertTo(d, hn::BitCast(di, magnitude)), hn::Set(d, 5.9604644775390625e-8F));
    result = hn::IfThenElse(hn::RebindMask(du, isSmall), hn::BitCast(du, small), result);
    return hn::BitCast(d, hn::Or(result, sign));
#endif
}

// Floats as half patterns in the low bits of 32-bit lanes: nearest, ties to even, overflow to infinity. A NaN stays one and quiet,
// with the upper bits of its payload.
template <class D>
HWY_INLINE hn::VFromD<hn::RebindToUnsigned<D>> FloatToHalfBits(D d, hn::VFromD<D> value)
{
#if HWY_TARGET == HWY_AVX3 || HWY_TARGET == HWY_AVX2
    return hn::PromoteTo(hn::RebindToUnsigned<D>(), FloatsToHalfs(d, value));
#else
    const hn::RebindToUnsigned<D> du;
    const hn::RebindToSigned<D> di;
    const auto bits = hn::BitCast(du, value);
    const auto sign = hn::And(bits, hn::Set(du, 0x80000000U));
    const auto magnitude = hn::Xor(bits, sign);
    const auto compared = hn::BitCast(di, magnitude); // No sign bit, so comparisons as signed numbers hold.

    // Normal halfs: the exponent is rebiased, and half a unit of the last place, less one for even numbers, carries into what
    // stays.
    const auto odd = hn::And(hn::ShiftRight<13>(magnitude), hn::Set(du, 1U));
    const auto rounded = hn::Add(hn::Add(magnitude, hn::Set(du, 0xc8000fffU)), odd);
    auto result = hn::ShiftRight<13>(rounded);

    // Below 2^-14: adding 0.5 leaves the multiple of 2^-24, rounded by the processor, in the low bits of the sum.
    const auto half = hn::Set(d, 0.5F);
    const auto denormal = hn::Sub(hn::BitCast(du, hn::Add(hn::BitCast(d, magnitude), half)), hn::BitCast(du, half));
    result = hn::IfThenElse(hn::RebindMask(du, hn::Lt(compared, hn::Set(di, 0x38800000))), denormal, result);

    // From 65536 on: infinity, or NaN.
    const auto infinity = hn::Set(du, 0x7c00U);
    const auto quietNan = hn::Or(hn::And(hn::ShiftRight<13>(magnitude), hn::Set(du, 0x3ffU)), hn::Set(du, 0x7e00U));
    const auto isNan = hn::Gt(compared, hn::Set(di, 0x7f800000));
    const auto isLarge = hn::Gt(compared, hn::Set(di, 0x477fffff));
    result = hn::IfThenElse(hn::RebindMask(du, isLarge), hn::IfThenElse(hn::RebindMask(du, isNan), quietNan, infinity), result);
    return hn::Or(result, hn::ShiftRight<16>(sign));
#endif
}

#if HWY_TARGET != HWY_AVX3 && HWY_TARGET != HWY_AVX2

template <class D>
HWY_INLINE hn::VFromD<D> HalfsToFloats(D d, Halfs<D> halfs)
{
    return HalfBitsToFloat(d, hn::PromoteTo(hn::RebindToUnsigned<D>(), halfs));
}

template <class D>
HWY_INLINE Halfs<D> FloatsToHalfs(D d, hn::VFromD<D> values)
{
    return hn::DemoteTo(hn::Rebind<std::uint16_t, D>(), hn::BitCast(hn::RebindToSigned<D>(), FloatToHalfBits(d, values)));
}

#endif

} // namespace Rendering::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif
