// Powers on AVX-512, where rounding down and scaling by a power of two are one instruction each: the logarithms of some vectors in
// turn with the exponentials of others.
#if defined(TAVRIN_RENDERER_QUICK_POWER_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef TAVRIN_RENDERER_QUICK_POWER_INL_H
#undef TAVRIN_RENDERER_QUICK_POWER_INL_H
#else
#define TAVRIN_RENDERER_QUICK_POWER_INL_H
#endif

#include "renderer/several-inl.h"
#include "renderer/vectorMath-inl.h"

#include <hwy/highway.h>

#include <array>
#include <cstddef>

HWY_BEFORE_NAMESPACE();
namespace Rendering::HWY_NAMESPACE
{

namespace hn = hwy::HWY_NAMESPACE;

#if HWY_TARGET <= HWY_AVX3
template <class V>
struct LogAndPower
{
    V log2;
    V exp2;
};

// The polynomials of the logarithms of some mantissas and of the powers of two of some fractions. What stands in turn here is in
// the processor's view together, and has nothing to wait for from each other; this order takes a compiler that keeps it.
template <class D, class V>
HWY_INLINE LogAndPower<V> Log2BesideExp2(D d, V const& mantissas, V const& fractions)
{
    V log2 = wide::Add(wide::Mul(hn::Set(d, kLog2OfMantissa[0]), mantissas), hn::Set(d, kLog2OfMantissa[1]));
    V exp2 = wide::Mul(hn::Set(d, kExp2OfFraction[0]), fractions);
    log2 = wide::Mul(log2, mantissas);
    for (std::size_t i = 1;; ++i)
    {
        log2 = wide::Add(log2, hn::Set(d, kLog2OfMantissa[i + 1]));
        exp2 = wide::Add(exp2, hn::Set(d, kExp2OfFraction[i]));
        if (i + 1 == kExp2OfFraction.size())
            return {log2, exp2};
        log2 = wide::Mul(log2, mantissas);
        exp2 = wide::Mul(exp2, fractions);
    }
}
#endif

} // namespace Rendering::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif
