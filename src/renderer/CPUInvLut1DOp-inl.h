// Kernel of the inverse 1D table: a binary search for every pixel, begun in the right bucket.
#if defined(TAVRIN_RENDERER_CPU_INV_LUT_1D_OP_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef TAVRIN_RENDERER_CPU_INV_LUT_1D_OP_INL_H
#undef TAVRIN_RENDERER_CPU_INV_LUT_1D_OP_INL_H
#else
#define TAVRIN_RENDERER_CPU_INV_LUT_1D_OP_INL_H
#endif

#include "renderer/CPUInvLut1DOp.h"
#include "renderer/block.h"
#include "renderer/curveLoop-inl.h"
#include "renderer/gather-inl.h"

#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace Rendering::HWY_NAMESPACE
{

namespace hn = hwy::HWY_NAMESPACE;

// How many vectors are searched together.
inline constexpr unsigned int kChunkVectors = 8;
inline constexpr std::size_t kChunkPixels = kChunkVectors * hn::MaxLanes(hn::ScalableTag<float>());

// A chunk of vectors is searched together, so that the steps of one do not wait for those of another.
struct SearchInverse : InvLut1DParameters
{
    void RunBlock(Block& block, unsigned int count, Outputs outputs) const
    {
        const std::size_t lanes = hn::Lanes(D());
        for (std::size_t begin = 0; begin < count; begin += kChunkPixels)
        {
            const std::size_t vectors = (HWY_MIN(kChunkPixels, count - begin) + lanes - 1) / lanes;
            SearchChunk(column[0], block.red + begin, vectors);
            SearchChunk(column[1], block.green + begin, vectors);
            SearchChunk(column[2], block.blue + begin, vectors);
        }
        if (outputs == Outputs::ColorsAndAlpha)
            ScalePlane(block.alpha, count, alphaScale);
    }

private:
    using D = hn::ScalableTag<float>;
    using DI = hn::RebindToSigned<D>;
    using V = hn::VFromD<D>;
    using VI = hn::VFromD<DI>;

    // Numbers of all pixels of a chunk, vector by vector.
    struct Numbers
    {
        HWY_INLINE VI Load(std::size_t vector) const { return hn::Load(DI(), values + vector * hn::Lanes(D())); }
        HWY_INLINE void Store(std::size_t vector, VI v) { hn::Store(v, DI(), values + vector * hn::Lanes(D())); }

        HWY_ALIGN std::int32_t values[kChunkPixels];
    };

    HWY_INLINE void SearchChunk(InverseColumn const& c, float* plane, std::size_t vectors) const
    {
        const D d;
        const std::size_t lanes = hn::Lanes(d);
        for (std::size_t i = 0; i < vectors; ++i)
            hn::Store(ClampToColumn(c, hn::Load(d, plane + i * lanes)), d, plane + i * lanes);
        Numbers low;
        LowerBounds(c, plane, vectors, low);
        Finish(c, plane, vectors, low);
    }

    // A NaN becomes the start of the table.
    static HWY_INLINE V ClampToColumn(InverseColumn const& c, V in)
    {
        const D d;
        const V first = hn::Set(d, c.first);
        const V last = hn::Set(d, c.last);
        const V v = hn::Mul(in, hn::Set(d, c.flipSign));
        const V notBelow = hn::IfThenElse(hn::Gt(v, first), v, first);
        return hn::IfThenElse(hn::Lt(notBelow, last), notBelow, last);
    }

    static HWY_INLINE VI BucketOf(InverseColumn const& c, V v)
    {
        const DI di;
        const VI number = hn::ShiftRight<kInverseIndexShift>(hn::BitCast(di, hn::Sub(v, hn::Set(D(), c.first))));
        const VI above = hn::Sub(number, hn::Set(di, c.lowestNumber - 1));
        return hn::Min(hn::Max(above, hn::Zero(di)), hn::Set(di, c.lastBucket));
    }

    static HWY_INLINE VI StartsAt(InverseColumn const& c, VI buckets)
    {
        return hn::BitCast(DI(), GatherBits<std::int32_t>(D(), c.starts, buckets));
    }

    // The first rows that are not less than the values, which lie between the first and the last row's.
    static HWY_INLINE void LowerBounds(InverseColumn const& c, float const* values, std::size_t vectors, Numbers& begin)
    {
        const D d;
        const DI di;
        const VI one = hn::Set(di, 1);
        Numbers end; // The answer is begin, end, or between them.
        Numbers middle;
        for (std::size_t i = 0; i < vectors; ++i)
        {
            const VI bucket = BucketOf(c, hn::Load(d, values + i * hn::Lanes(d)));
            begin.Store(i, bucket);
            end.Store(i, hn::Add(bucket, one));
        }
        for (std::size_t i = 0; i < vectors; ++i)
        {
            begin.Store(i, StartsAt(c, begin.Load(i)));
            end.Store(i, StartsAt(c, end.Load(i)));
        }
        for (std::int32_t step = 0; step < c.steps; ++step)
        {
            for (std::size_t i = 0; i < vectors; ++i)
                middle.Store(i, hn::ShiftRight<1>(hn::Add(begin.Load(i), end.Load(i))));
            for (std::size_t i = 0; i < vectors; ++i)
            {
                const V v = hn::Load(d, values + i * hn::Lanes(d));
                const auto isLess = hn::RebindMask(di, hn::Lt(Gather<FloatEntry>(d, c.values, middle.Load(i)), v));
                const auto isOpen = hn::Lt(begin.Load(i), end.Load(i));
                begin.Store(i, hn::IfThenElse(hn::And(isLess, isOpen), hn::Add(middle.Load(i), one), begin.Load(i)));
                end.Store(i, hn::IfThenElse(hn::AndNot(isLess, isOpen), middle.Load(i), end.Load(i)));
            }
        }
    }

    // From rows to outputs: the row below, and the fraction of the way to the next one.
    HWY_INLINE void Finish(InverseColumn const& c, float* plane, std::size_t vectors, Numbers& low) const
    {
        const D d;
        const DI di;
        const VI one = hn::Set(di, 1);
        Numbers high;
        for (std::size_t i = 0; i < vectors; ++i)
        {
            const VI row = low.Load(i);
            const VI below = hn::Sub(row, hn::IfThenElseZero(hn::Gt(row, hn::Zero(di)), one));
            low.Store(i, below);
            high.Store(i, hn::Min(hn::Add(below, one), hn::Set(di, c.lastRow)));
        }
        for (std::size_t i = 0; i < vectors; ++i)
        {
            const V v = hn::Load(d, plane + i * hn::Lanes(d));
            const V lowValue = Gather<FloatEntry>(d, c.values, low.Load(i));
            const V highValue = Gather<FloatEntry>(d, c.values, high.Load(i));
            const V quotient = hn::Div(hn::Sub(v, lowValue), hn::Sub(highValue, lowValue));
            const V fraction = hn::IfThenElseZero(hn::Gt(highValue, lowValue), quotient);
            const V row = hn::Add(hn::ConvertTo(d, low.Load(i)), hn::Set(d, c.startOffset));
            hn::Store(hn::Mul(hn::Add(row, fraction), hn::Set(d, scale)), d, plane + i * hn::Lanes(d));
        }
    }
};

} // namespace Rendering::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif
