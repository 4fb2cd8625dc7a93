// Kernels of the matrix.
#if defined(TAVRIN_RENDERER_CPU_MATRIX_OP_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef TAVRIN_RENDERER_CPU_MATRIX_OP_INL_H
#undef TAVRIN_RENDERER_CPU_MATRIX_OP_INL_H
#else
#define TAVRIN_RENDERER_CPU_MATRIX_OP_INL_H
#endif

#include "renderer/CPUMatrixOp.h"
#include "renderer/scaleAndOffset-inl.h"

#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace Rendering::HWY_NAMESPACE
{

namespace hn = hwy::HWY_NAMESPACE;

struct Scale : ScaleParameters
{
    template <class D, class V>
    HWY_INLINE void operator()(D d, V& r, V& g, V& b, V& a) const
    {
        r = hn::Mul(r, hn::Set(d, scale[0]));
        g = hn::Mul(g, hn::Set(d, scale[1]));
        b = hn::Mul(b, hn::Set(d, scale[2]));
        a = hn::Mul(a, hn::Set(d, scale[3]));
    }
};

struct ScaleWithOffset : ScaleWithOffsetParameters
{
    template <class D, class V>
    HWY_INLINE void operator()(D d, V& r, V& g, V& b, V& a) const
    {
        r = ScaleAndOffset(d, r, scale[0], offset[0]);
        g = ScaleAndOffset(d, g, scale[1], offset[1]);
        b = ScaleAndOffset(d, b, scale[2], offset[2]);
        a = ScaleAndOffset(d, a, scale[3], offset[3]);
    }
};

// One output channel: the sum of the products of red and green, and that of blue and alpha, are added.
template <class D, class V>
HWY_INLINE V MatrixRow(D d, float const (&column)[4][4], int row, V r, V g, V b, V a)
{
    const V redGreen = hn::Add(hn::Mul(hn::Set(d, column[0][row]), r), hn::Mul(hn::Set(d, column[1][row]), g));
    const V blueAlpha = hn::Add(hn::Mul(hn::Set(d, column[2][row]), b), hn::Mul(hn::Set(d, column[3][row]), a));
    return hn::Add(redGreen, blueAlpha);
}

struct Matrix : MatrixParameters
{
    template <class D, class V>
    HWY_INLINE void operator()(D d, V& r, V& g, V& b, V& a) const
    {
        const V red = MatrixRow(d, column, 0, r, g, b, a);
        const V green = MatrixRow(d, column, 1, r, g, b, a);
        const V blue = MatrixRow(d, column, 2, r, g, b, a);
        a = MatrixRow(d, column, 3, r, g, b, a);
        r = red;
        g = green;
        b = blue;
    }
};

struct MatrixWithOffset : MatrixWithOffsetParameters
{
    template <class D, class V>
    HWY_INLINE void operator()(D d, V& r, V& g, V& b, V& a) const
    {
        const V red = hn::Add(MatrixRow(d, column, 0, r, g, b, a), hn::Set(d, offset[0]));
        const V green = hn::Add(MatrixRow(d, column, 1, r, g, b, a), hn::Set(d, offset[1]));
        const V blue = hn::Add(MatrixRow(d, column, 2, r, g, b, a), hn::Set(d, offset[2]));
        a = hn::Add(MatrixRow(d, column, 3, r, g, b, a), hn::Set(d, offset[3]));
        r = red;
        g = green;
        b = blue;
    }
};

} // namespace Rendering::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif
