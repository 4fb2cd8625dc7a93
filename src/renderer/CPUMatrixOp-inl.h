// Kernels of the matrix.
#if defined(TAVRIN_RENDERER_CPU_MATRIX_OP_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef TAVRIN_RENDERER_CPU_MATRIX_OP_INL_H
#undef TAVRIN_RENDERER_CPU_MATRIX_OP_INL_H
#else
#define TAVRIN_RENDERER_CPU_MATRIX_OP_INL_H
#endif

#include "renderer/CPUMatrixOp.h"
#include "renderer/nanOrder-inl.h"

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
        r = MulInOrder(hn::Set(d, scale[0]), r);
        g = MulInOrder(hn::Set(d, scale[1]), g);
        b = MulInOrder(hn::Set(d, scale[2]), b);
        a = MulInOrder(hn::Set(d, scale[3]), a);
    }
};

struct ScaleWithOffset : ScaleWithOffsetParameters
{
    template <class D, class V>
    HWY_INLINE void operator()(D d, V& r, V& g, V& b, V& a) const
    {
        r = Channel(d, r, 0);
        g = Channel(d, g, 1);
        b = Channel(d, b, 2);
        a = Channel(d, a, 3);
    }

private:
    template <class D, class V>
    HWY_INLINE V Channel(D d, V value, int channel) const
    {
        return AddInOrder(MulInOrder(hn::Set(d, scale[channel]), value), hn::Set(d, offset[channel]));
    }
};

// One output channel: the sum of the products of red and green, and that of blue and alpha, are added. Of several NaNs green's
// comes out first, then red's, alpha's and blue's.
template <class D, class V>
HWY_INLINE V MatrixRow(D d, float const (&column)[4][4], int row, V r, V g, V b, V a)
{
    const V redGreen = AddInOrder(MulInOrder(g, hn::Set(d, column[1][row])), MulInOrder(r, hn::Set(d, column[0][row])));
    const V blueAlpha = AddInOrder(MulInOrder(a, hn::Set(d, column[3][row])), MulInOrder(b, hn::Set(d, column[2][row])));
    return AddInOrder(redGreen, blueAlpha);
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
        const V red = AddInOrder(MatrixRow(d, column, 0, r, g, b, a), hn::Set(d, offset[0]));
        const V green = AddInOrder(MatrixRow(d, column, 1, r, g, b, a), hn::Set(d, offset[1]));
        const V blue = AddInOrder(MatrixRow(d, column, 2, r, g, b, a), hn::Set(d, offset[2]));
        a = AddInOrder(MatrixRow(d, column, 3, r, g, b, a), hn::Set(d, offset[3]));
        r = red;
        g = green;
        b = blue;
    }
};

} // namespace Rendering::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif
