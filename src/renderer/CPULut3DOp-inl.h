// Kernels of the 3D table. Positions are reckoned for a vector of pixels; entries are then fetched whole, a pixel for each four
// lanes, and come back as planes at the end.
#if defined(TAVRIN_RENDERER_CPU_LUT_3D_OP_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef TAVRIN_RENDERER_CPU_LUT_3D_OP_INL_H
#undef TAVRIN_RENDERER_CPU_LUT_3D_OP_INL_H
#else
#define TAVRIN_RENDERER_CPU_LUT_3D_OP_INL_H
#endif

#include "renderer/CPULut1DOp-inl.h"
#include "renderer/CPULut3DOp.h"
#include "renderer/transpose-inl.h"
#include "renderer/truncate-inl.h"

#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace Rendering::HWY_NAMESPACE
{

namespace hn = hwy::HWY_NAMESPACE;

// Where a vector of pixels lies on one axis: the lower grid position, the fraction above it, and the distance in floats to the
// entry at the higher position, which is 0 at the top of the grid.
struct AxisPosition
{
    V low;
    V fraction;
    VI step;
};

HWY_INLINE AxisPosition PositionOnAxis(Lut3DParameters const& table, V in, std::int32_t stride)
{
    const D d;
    const DI di;
    const V x = ClampToRows(d, hn::Mul(in, hn::Set(d, table.indexScale)), table.maxIndex);
    const V low = hn::ConvertTo(d, TruncateInRange(d, x));
    const auto isBelowTop = hn::RebindMask(di, hn::Lt(low, hn::Set(d, table.maxIndex)));
    return {low, hn::Sub(x, low), hn::IfThenElseZero(isBelowTop, hn::Set(di, stride))};
}

struct CellPosition
{
    HWY_INLINE CellPosition(Lut3DParameters const& table, V r, V g, V b)
        : red(PositionOnAxis(table, r, 4 * table.dimension * table.dimension)),
          green(PositionOnAxis(table, g, 4 * table.dimension)),
          blue(PositionOnAxis(table, b, 4))
    {
        // Grids have at most 129 points an axis, so these numbers are exact.
        const D d;
        const V dimension = hn::Set(d, static_cast<float>(table.dimension));
        const V entry = hn::Add(hn::Mul(hn::Add(hn::Mul(red.low, dimension), green.low), dimension), blue.low);
        origin = hn::ShiftLeft<2>(TruncateInRange(d, entry));
    }

    AxisPosition red;
    AxisPosition green;
    AxisPosition blue;
    VI origin; // of the entry at the lower positions, in floats
};

// ---------------------------------------------------------------- formulas

// Each of these works on one channel of a vector of pixels, or on all channels of a few pixels: the values it is given decide.

// Between two values; both weights are needed, since the order of operations is fixed.
HWY_INLINE V Mix(V low, V high, V fraction, V rest)
{
    return hn::Add(hn::Mul(low, rest), hn::Mul(high, fraction));
}

// Corners are numbered by the axes that are at their higher position: red 4, green 2, blue 1. Blue is interpolated first, red last.
HWY_INLINE V MixTrilinear(V const (&corner)[8], V red, V green, V blue)
{
    const V one = hn::Set(D(), 1.0F);
    const V restOfBlue = hn::Sub(one, blue);
    const V restOfGreen = hn::Sub(one, green);
    const V near =
        Mix(Mix(corner[0], corner[1], blue, restOfBlue), Mix(corner[2], corner[3], blue, restOfBlue), green, restOfGreen);
    const V far = Mix(Mix(corner[4], corner[5], blue, restOfBlue), Mix(corner[6], corner[7], blue, restOfBlue), green, restOfGreen);
    return Mix(near, far, red, hn::Sub(one, red));
}

// The corners on the way from the lowest to the highest, a step for each axis in the order of the fractions, which come in the same
// order. The step of red is added to the first corner, then the sum of the other two.
template <class M>
HWY_INLINE V SumTetrahedral(V const (&corner)[4], V const (&fraction)[3], M redIsFirst, M redIsLast)
{
    const V first = hn::Mul(fraction[0], hn::Sub(corner[1], corner[0]));
    const V second = hn::Mul(fraction[1], hn::Sub(corner[2], corner[1]));
    const V third = hn::Mul(fraction[2], hn::Sub(corner[3], corner[2]));
    const V red = hn::IfThenElse(redIsFirst, first, hn::IfThenElse(redIsLast, third, second));
    const V oneOther = hn::IfThenElse(redIsFirst, second, first);
    const V another = hn::IfThenElse(redIsLast, second, third);
    return hn::Add(hn::Add(corner[0], red), hn::Add(oneOther, another));
}

// ---------------------------------------------------------------- cells

// What the eight corners of a vector of pixels need.
struct TrilinearCell
{
    static constexpr int kCorners = 8;
    static constexpr int kWeights = 3;

    HWY_INLINE explicit TrilinearCell(CellPosition const& p)
        : corner{p.origin,
                 hn::Add(p.origin, p.blue.step),
                 hn::Add(p.origin, p.green.step),
                 hn::Add(hn::Add(p.origin, p.green.step), p.blue.step),
                 hn::Add(p.origin, p.red.step),
                 hn::Add(hn::Add(p.origin, p.red.step), p.blue.step),
                 hn::Add(hn::Add(p.origin, p.red.step), p.green.step),
                 hn::Add(hn::Add(hn::Add(p.origin, p.red.step), p.green.step), p.blue.step)},
          weight{p.red.fraction, p.green.fraction, p.blue.fraction}
    {
    }

    static HWY_INLINE V Evaluate(V const (&values)[kCorners], V const (&weights)[kWeights])
    {
        return MixTrilinear(values, weights[0], weights[1], weights[2]);
    }

    VI corner[kCorners];
    V weight[kWeights];
};

// The four corners of the tetrahedron that each pixel lies in. The comparisons, in their order, decide how ties fall.
struct TetrahedralCell
{
    static constexpr int kCorners = 4;
    static constexpr int kWeights = 5;

    HWY_INLINE explicit TetrahedralCell(CellPosition const& p)
    {
        const D d;
        const DI di;
        const V r = p.red.fraction;
        const V g = p.green.fraction;
        const V b = p.blue.fraction;
        const auto greenUpToRed = hn::Le(g, r);
        const auto blueUpToGreen = hn::Le(b, g);
        const auto redUpToBlue = hn::Le(r, b);

        // Green is first where it exceeds red and blue does not exceed it, and last where red is not below it and blue exceeds it.
        const auto greenIsFirst = hn::AndNot(greenUpToRed, blueUpToGreen);
        const auto greenIsLast = hn::AndNot(blueUpToGreen, greenUpToRed);
        const auto redIsFirst = hn::And(greenUpToRed, hn::Or(blueUpToGreen, hn::Not(redUpToBlue)));
        const auto redIsLast = hn::And(hn::Not(greenUpToRed), hn::Or(hn::Not(blueUpToGreen), redUpToBlue));

        const auto pick = [&](auto isRed, auto isGreen)
        {
            const auto step = hn::IfThenElse(hn::RebindMask(di, isGreen), p.green.step, p.blue.step);
            return hn::IfThenElse(hn::RebindMask(di, isRed), p.red.step, step);
        };
        const auto pickFraction = [&](auto isRed, auto isGreen) { return hn::IfThenElse(isRed, r, hn::IfThenElse(isGreen, g, b)); };
        const auto redIsMiddle = hn::Not(hn::Or(redIsFirst, redIsLast));
        const auto greenIsMiddle = hn::Not(hn::Or(greenIsFirst, greenIsLast));

        corner[0] = p.origin;
        corner[1] = hn::Add(corner[0], pick(redIsFirst, greenIsFirst));
        corner[2] = hn::Add(corner[1], pick(redIsMiddle, greenIsMiddle));
        corner[3] = hn::Add(corner[2], pick(redIsLast, greenIsLast));
        weight[0] = pickFraction(redIsFirst, greenIsFirst);
        weight[1] = pickFraction(redIsMiddle, greenIsMiddle);
        weight[2] = pickFraction(redIsLast, greenIsLast);
        weight[3] = hn::VecFromMask(d, redIsFirst);
        weight[4] = hn::VecFromMask(d, redIsLast);
    }

    static HWY_INLINE V Evaluate(V const (&values)[kCorners], V const (&weights)[kWeights])
    {
        const V fractions[3] = {weights[0], weights[1], weights[2]};
        return SumTetrahedral(values, fractions, hn::MaskFromVec(weights[3]), hn::MaskFromVec(weights[4]));
    }

    VI corner[kCorners];
    V weight[kWeights];
};

// ---------------------------------------------------------------- loop

#if HWY_TARGET == HWY_SCALAR

// Without vectors of four lanes: channel by channel.
template <class Cell>
HWY_INLINE Channels LookUp3D(float const* entries, Cell const& cell)
{
    const auto channel = [&](int which)
    {
        V values[Cell::kCorners];
        for (int i = 0; i < Cell::kCorners; ++i)
            values[i] = Gather<FloatEntry>(D(), entries + which, cell.corner[i]);
        return Cell::Evaluate(values, cell.weight);
    };
    return {channel(0), channel(1), channel(2), hn::Zero(D())};
}

#else

// Makes the compiler leave an array in memory. It would otherwise pull each element out of the vector that was stored there, which
// costs two to three instructions where a load costs one.
HWY_INLINE void KeepInMemory(void const* array)
{
#if HWY_COMPILER_GCC || HWY_COMPILER_CLANG
    asm volatile("" : : "r"(array) : "memory"); // NOLINT(hicpp-no-assembler)
#else
    (void)array;
#endif
}

// The entries of the pixels of one register, whole.
template <int kRegister>
HWY_INLINE V LoadEntries(float const* entries, std::int32_t const* offsets)
{
    const auto entry = [&](int group) { return entries + offsets[PixelInRegister(kRegister, group)]; };
#if HWY_TARGET == HWY_AVX3
    const __m256 low = _mm256_insertf128_ps(_mm256_castps128_ps256(_mm_load_ps(entry(0))), _mm_load_ps(entry(1)), 1);
    const __m256 high = _mm256_insertf128_ps(_mm256_castps128_ps256(_mm_load_ps(entry(2))), _mm_load_ps(entry(3)), 1);
    return V{_mm512_insertf32x8(_mm512_castps256_ps512(low), high, 1)};
#elif HWY_TARGET == HWY_AVX2
    return V{_mm256_insertf128_ps(_mm256_castps128_ps256(_mm_load_ps(entry(0))), _mm_load_ps(entry(1)), 1)};
#else
    return hn::Load(D(), entry(0));
#endif
}

template <int kRegister, class Cell>
HWY_INLINE V LookUpRegister(float const* entries, std::int32_t const (&offsets)[Cell::kCorners][hn::MaxLanes(D())],
                            Cell const& cell)
{
    V values[Cell::kCorners];
    for (int i = 0; i < Cell::kCorners; ++i)
        values[i] = LoadEntries<kRegister>(entries, offsets[i]);
    V weights[Cell::kWeights];
    for (int i = 0; i < Cell::kWeights; ++i)
        weights[i] = SpreadOverChannels<kRegister>(cell.weight[i]);
    return Cell::Evaluate(values, weights);
}

template <class Cell>
HWY_INLINE Channels LookUp3D(float const* entries, Cell const& cell)
{
    HWY_ALIGN std::int32_t offsets[Cell::kCorners][hn::MaxLanes(D())];
    for (int i = 0; i < Cell::kCorners; ++i)
        hn::Store(cell.corner[i], DI(), offsets[i]);
    KeepInMemory(offsets);
    return Deinterleave(LookUpRegister<0>(entries, offsets, cell), LookUpRegister<1>(entries, offsets, cell),
                        LookUpRegister<2>(entries, offsets, cell), LookUpRegister<3>(entries, offsets, cell));
}

#endif

template <class Cell>
struct Interpolate3D : Lut3DParameters
{
    HWY_INLINE void operator()(D d, V& r, V& g, V& b, V& a) const
    {
        const Channels c = LookUp3D(entries, Cell(CellPosition(*this, r, g, b)));
        r = c.c0;
        g = c.c1;
        b = c.c2;
        a = hn::Mul(a, hn::Set(d, alphaScale));
    }
};

using Trilinear = Interpolate3D<TrilinearCell>;
using Tetrahedral = Interpolate3D<TetrahedralCell>;

} // namespace Rendering::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif
