// Kernels of the colour decision.
#if defined(TAVRIN_RENDERER_CPU_CDL_OP_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef TAVRIN_RENDERER_CPU_CDL_OP_INL_H
#undef TAVRIN_RENDERER_CPU_CDL_OP_INL_H
#else
#define TAVRIN_RENDERER_CPU_CDL_OP_INL_H
#endif

#include "renderer/CPUCDLOp.h"
#include "renderer/limit-inl.h"
#include "renderer/vectorMath-inl.h"

#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace Rendering::HWY_NAMESPACE
{

namespace hn = hwy::HWY_NAMESPACE;

// The steps that the styles are made of, on red, green and blue.
template <class D, class V>
class CDLSteps
{
public:
    HWY_INLINE CDLSteps(D d, CDLParameters const& parameters, V& r, V& g, V& b) : m_d(d), m_p(parameters), m_v{&r, &g, &b} {}

    HWY_INLINE void ScaleIn() const
    {
        for (V* v : m_v)
            *v = hn::Mul(*v, hn::Set(m_d, m_p.inScale));
    }

    HWY_INLINE void Slope() const
    {
        for (int c = 0; c < 3; ++c)
            *m_v[c] = hn::Mul(*m_v[c], hn::Set(m_d, m_p.slope[c]));
    }

    HWY_INLINE void Offset() const
    {
        for (int c = 0; c < 3; ++c)
            *m_v[c] = hn::Add(*m_v[c], hn::Set(m_d, m_p.offset[c]));
    }

    // To 0 to 1; a NaN becomes 0.
    HWY_INLINE void Clamp() const
    {
        for (V* v : m_v)
            *v = AtMost(AtLeast(*v, hn::Zero(m_d)), hn::Set(m_d, 1.0F));
    }

    // The clamp and the power: the power's own choice of what is above 0 does for the lower clamp.
    HWY_INLINE void ClampedPower() const
    {
        for (int c = 0; c < 3; ++c)
        {
            const V v = *m_v[c];
            *m_v[c] = PowerWhere(m_d, hn::Gt(v, hn::Zero(m_d)), AtMost(v, hn::Set(m_d, 1.0F)), m_p.power[c]);
        }
    }

    // Negative values pass through.
    HWY_INLINE void OpenPower() const
    {
        for (int c = 0; c < 3; ++c)
        {
            const V v = *m_v[c];
            const V p = Power(m_d, v, m_p.power[c]);
            *m_v[c] = hn::IfThenElse(hn::Lt(v, hn::Zero(m_d)), v, p);
        }
    }

    HWY_INLINE void Saturation() const
    {
        // Luma of ITU-R BT.709. The added zero is the fourth lane's share, and turns a negative zero around.
        const V red = hn::Mul(*m_v[0], hn::Set(m_d, 0.2126F));
        const V green = hn::Mul(*m_v[1], hn::Set(m_d, 0.7152F));
        const V blue = hn::Mul(*m_v[2], hn::Set(m_d, 0.0722F));
        const V luma = hn::Add(hn::Add(red, green), hn::Add(blue, hn::Zero(m_d)));
        for (V* v : m_v)
            *v = hn::Add(luma, hn::Mul(hn::Set(m_d, m_p.saturation), hn::Sub(*v, luma)));
    }

    HWY_INLINE void ScaleOut() const
    {
        for (V* v : m_v)
            *v = hn::Mul(*v, hn::Set(m_d, m_p.outScale));
    }

private:
    D m_d;
    CDLParameters const& m_p;
    V* m_v[3];
};

template <bool kIsReverse, bool kClamps>
struct CDL : CDLParameters
{
    template <class D, class V>
    HWY_INLINE void operator()(D d, V& r, V& g, V& b, V& a) const
    {
        const CDLSteps<D, V> steps(d, *this, r, g, b);
        steps.ScaleIn();
        if constexpr (kIsReverse)
            Reverse(steps);
        else
            Forward(steps);
        if constexpr (kClamps)
            steps.Clamp();
        steps.ScaleOut();
        a = hn::Mul(a, hn::Set(d, alphaScale));
    }

private:
    template <class Steps>
    static HWY_INLINE void Forward(Steps const& steps)
    {
        steps.Slope();
        steps.Offset();
        RaiseToPower(steps);
        steps.Saturation();
    }

    template <class Steps>
    static HWY_INLINE void Reverse(Steps const& steps)
    {
        if constexpr (kClamps)
            steps.Clamp();
        steps.Saturation();
        RaiseToPower(steps);
        steps.Offset();
        steps.Slope();
    }

    template <class Steps>
    static HWY_INLINE void RaiseToPower(Steps const& steps)
    {
        if constexpr (kClamps)
            steps.ClampedPower();
        else
            steps.OpenPower();
    }
};

using CDLV1_2Fwd = CDL<false, true>;
using CDLV1_2Rev = CDL<true, true>;
using CDLNoClampFwd = CDL<false, false>;
using CDLNoClampRev = CDL<true, false>;

} // namespace Rendering::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif
