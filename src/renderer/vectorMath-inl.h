// Power, exponential and logarithm on vectors, by polynomials whose values are the same on every target.
#if defined(TAVRIN_RENDERER_VECTOR_MATH_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef TAVRIN_RENDERER_VECTOR_MATH_INL_H
#undef TAVRIN_RENDERER_VECTOR_MATH_INL_H
#else
#define TAVRIN_RENDERER_VECTOR_MATH_INL_H
#endif

#include "renderer/limit-inl.h"
#include "renderer/truncate-inl.h"

#include <hwy/highway.h>

#include <limits>

HWY_BEFORE_NAMESPACE();
namespace Rendering::HWY_NAMESPACE
{

namespace hn = hwy::HWY_NAMESPACE;

// The constant term of the exponential's polynomial.
inline constexpr float kExp2Constant = 1.0000026F;

// The polynomial of 2 to the power f, from 0 to 1.
template <class D, class V>
HWY_INLINE V Exp2OfFraction(D d, V f, V constantTerm)
{
    V p = hn::Add(hn::Mul(hn::Set(d, 0.013534168F), f), hn::Set(d, 0.05201146F));
    p = hn::Add(hn::Mul(p, f), hn::Set(d, 0.24144275F));
    p = hn::Add(hn::Mul(p, f), hn::Set(d, 0.69300383F));
    return hn::Add(hn::Mul(p, f), constantTerm);
}

// 2 to the power x, times what the polynomial's constant term is off its own. Exponents that have no place in a normal float are
// limited before the conversion to integer, whose result for them differs from target to target: at the limits the bits of the
// scale are those of zero and of infinity, which is what the power is below -126 and from 128 on. A NaN counts as the lower limit.
template <class D, class V = hn::VFromD<D>>
HWY_INLINE V LimitedExp2(D d, V x, V constantTerm)
{
    const hn::RebindToSigned<D> di;
    const V limited = AtMost(AtLeast(x, hn::Set(d, -126.5F)), hn::Set(d, 128.5F));
    // The integer part is one below for what is not at least 0, so that the fraction is in 0 to 1; for negative whole numbers it
    // is 1.
    const auto truncated = TruncateInRange(d, limited);
    const auto isNegative = hn::RebindMask(di, hn::Lt(limited, hn::Zero(d)));
    const auto integer = hn::Add(truncated, hn::VecFromMask(di, isNegative));
    const V p = Exp2OfFraction(d, hn::Sub(limited, hn::ConvertTo(d, integer)), constantTerm);
    const V scale = hn::BitCast(d, hn::ShiftLeft<23>(hn::Add(integer, hn::Set(di, 127))));
    return hn::Mul(scale, p);
}

// LimitedExp2 where the mask is set, zero elsewhere.
template <class D, class M, class V = hn::VFromD<D>>
HWY_INLINE V Exp2Where(D d, M isWanted, V x, V constantTerm)
{
#if HWY_TARGET <= HWY_AVX3
    if constexpr (sizeof(V) == 64)
    {
        // Rounding down and scaling by a power of two are one instruction each, which knows overflow. Negative whole numbers,
        // infinity and NaN are what they do not fit: these are found among the numbers that do not differ from their floor.
        const V floor = hn::Floor(x);
        const M hasNoFraction{_mm512_mask_cmp_ps_mask(isWanted.raw, x.raw, floor.raw, _CMP_EQ_UQ)};
        const bool fits = hn::AllFalse(d, hasNoFraction) ||
                          hn::AllFalse(d, hn::AndNot(hn::And(hn::Ge(x, hn::Zero(d)), hn::Lt(x, hn::Inf(d))), hasNoFraction));
        if (HWY_LIKELY(fits))
        {
            const V p = Exp2OfFraction(d, hn::Sub(x, floor), constantTerm);
            const M isNormal = hn::And(isWanted, hn::Gt(x, hn::Set(d, -126.0F)));
            return V{_mm512_maskz_scalef_ps(isNormal.raw, p.raw, floor.raw)};
        }
    }
#endif
    return hn::IfThenElseZero(isWanted, LimitedExp2(d, x, constantTerm));
}

// The one NaN that these functions give.
template <class D, class V = hn::VFromD<D>>
HWY_INLINE V QuietNaN(D d)
{
    return hn::BitCast(d, hn::Set(hn::RebindToUnsigned<D>(), 0x7fc00000U));
}

// 2 to the power x. A NaN gives the quiet NaN.
template <class D, class V = hn::VFromD<D>>
HWY_INLINE V Exp2(D d, V x)
{
    const auto isNumber = hn::Eq(x, x);
    return hn::IfThenElse(isNumber, Exp2Where(d, isNumber, x, hn::Set(d, kExp2Constant)), QuietNaN(d));
}

// A polynomial of the mantissa in 1 to 2, plus the exponent, whose field is handed in with the bits of x above it cleared.
template <class D, class VU, class V = hn::VFromD<D>>
HWY_INLINE V Log2OfMantissaAndExponent(D d, V x, VU exponentBits)
{
    const hn::RebindToUnsigned<D> du;
    const hn::RebindToSigned<D> di;
    const VU mantissa = hn::AndNot(hn::Set(du, 0x7f800000U), hn::BitCast(du, x));
    const V m = hn::BitCast(d, hn::Or(mantissa, hn::Set(du, 0x3f800000U)));
    const auto exponent = hn::Sub(hn::BitCast(di, hn::ShiftRight<23>(exponentBits)), hn::Set(di, 127));

    V p = hn::Sub(hn::Mul(hn::Set(d, 0.044873614F), m), hn::Set(d, 0.41656372F));
    p = hn::Add(hn::Mul(p, m), hn::Set(d, 1.6311488F));
    p = hn::Sub(hn::Mul(p, m), hn::Set(d, 3.550793F));
    p = hn::Add(hn::Mul(p, m), hn::Set(d, 5.091711F));
    p = hn::Sub(hn::Mul(p, m), hn::Set(d, 2.800364F));
    return hn::Add(p, hn::ConvertTo(d, exponent));
}

// The logarithm to base 2 of a positive, normal x. What it gives for other x means nothing, but is finite.
template <class D, class V = hn::VFromD<D>>
HWY_INLINE V Log2(D d, V x)
{
    const hn::RebindToUnsigned<D> du;
    return Log2OfMantissaAndExponent(d, x, hn::And(hn::BitCast(du, x), hn::Set(du, 0x7f800000U)));
}

// The same where nobody asks for the logarithm of an x whose sign is set.
template <class D, class V = hn::VFromD<D>>
HWY_INLINE V Log2OfPositive(D d, V x)
{
    return Log2OfMantissaAndExponent(d, x, hn::BitCast(hn::RebindToUnsigned<D>(), x));
}

// x to the power e where the mask is set, which it is for numbers above 0 alone; +0 elsewhere. A NaN as exponent gives the quiet
// NaN, by way of the constant term, which does not cost anything where one exponent stands for many x.
template <class D, class M, class V = hn::VFromD<D>>
HWY_INLINE V PowerWhere(D d, M isWanted, V x, float e)
{
    const float constantTerm = e == e ? kExp2Constant : std::numeric_limits<float>::quiet_NaN();
    return Exp2Where(d, isWanted, hn::Mul(hn::Set(d, e), Log2OfPositive(d, x)), hn::Set(d, constantTerm));
}

// x to the power e; +0 for every x that is not above 0, NaN included.
template <class D, class V = hn::VFromD<D>>
HWY_INLINE V Power(D d, V x, float e)
{
    return PowerWhere(d, hn::Gt(x, hn::Zero(d)), x, e);
}
template <class D, class V = hn::VFromD<D>>
HWY_INLINE V Power(D d, V x, V e)
{
    return hn::IfThenElseZero(hn::Gt(x, hn::Zero(d)), Exp2(d, hn::Mul(e, Log2OfPositive(d, x))));
}

} // namespace Rendering::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif
