// The loop of kernels whose channels do not know each other: plane by plane, several vectors together.
#if defined(TAVRIN_RENDERER_CURVE_LOOP_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef TAVRIN_RENDERER_CURVE_LOOP_INL_H
#undef TAVRIN_RENDERER_CURVE_LOOP_INL_H
#else
#define TAVRIN_RENDERER_CURVE_LOOP_INL_H
#endif

#include "renderer/block.h"
#include "renderer/quickPower-inl.h"
#include "renderer/several-inl.h"
#include "renderer/vectorMath-inl.h"

#include <hwy/highway.h>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <type_traits>

HWY_BEFORE_NAMESPACE();
namespace Rendering::HWY_NAMESPACE
{

namespace hn = hwy::HWY_NAMESPACE;

// So many that the pipeline has enough to do, and so few that they find room in the registers.
inline constexpr std::size_t kCurveVectors = 4;

// Takes a step at all places of a plane: several vectors at a time, and what remains one by one.
template <std::size_t kVectors, class Step>
HWY_INLINE void TakeStep(Step const& step, std::size_t count)
{
    const std::size_t lanes = hn::Lanes(hn::ScalableTag<float>());
    std::size_t i = 0;
    for (; i + kVectors * lanes <= count; i += kVectors * lanes)
        step.template At<kVectors>(i);
    for (; i < count; i += lanes)
        step.template At<1>(i);
}

template <class Kernel>
inline constexpr bool kIsCurve = requires(Kernel const& kernel, hn::VFromD<hn::ScalableTag<float>> value)
{
    kernel.Curve(hn::ScalableTag<float>(), value, std::size_t{});
};

template <class Kernel>
inline constexpr bool kIsPower = requires(Kernel const& kernel, hn::VFromD<hn::ScalableTag<float>> value)
{
    kernel.Argument(hn::ScalableTag<float>(), value, std::size_t{});
};

template <class Kernel>
inline constexpr bool kTellsWhetherNormal = requires(Kernel const& kernel)
{
    kernel.ArePowersNormal();
};

HWY_INLINE float* PlaneOf(Block& block, std::size_t channel)
{
    float* const planes[] = {block.red, block.green, block.blue, block.alpha};
    return planes[channel];
}

// A whole curve.
template <class Kernel>
struct CurveStep
{
    Kernel const& kernel;
    std::size_t channel;
    float* plane;

    template <std::size_t kVectors>
    HWY_INLINE void At(std::size_t i) const
    {
        const hn::ScalableTag<float> d;
        StoreVectors(kernel.Curve(d, LoadVectors<kVectors>(d, plane + i), channel), d, plane + i);
    }
};

// The argument of a power. Where Finish wants it, it takes the place of the values.
template <std::size_t kVectors, class Kernel>
HWY_INLINE auto ArgumentAt(Kernel const& kernel, std::size_t channel, float* values)
{
    const hn::ScalableTag<float> d;
    const auto argument = kernel.Argument(d, LoadVectors<kVectors>(d, values), channel);
    if constexpr (Kernel::kWantsArgument)
        StoreVectors(argument, d, values);
    return argument;
}

// The two steps of a power.
template <class Kernel>
struct ToExponentStep
{
    Kernel const& kernel;
    std::size_t channel;
    float* plane;
    float* exponents;

    template <std::size_t kVectors>
    HWY_INLINE void At(std::size_t i) const
    {
        const hn::ScalableTag<float> d;
        const auto argument = ArgumentAt<kVectors>(kernel, channel, plane + i);
        const float e = kernel.Exponent(channel);
        StoreVectors(ExponentOfPower<Kernel::kIsArgumentPositive>(d, argument, Log2(d, argument), e == e ? e : 0.0F), d,
                     exponents + i);
    }
};

template <class Kernel>
struct FromExponentStep
{
    Kernel const& kernel;
    std::size_t channel;
    float* plane;
    float const* exponents;

    template <std::size_t kVectors>
    HWY_INLINE void At(std::size_t i) const
    {
        const hn::ScalableTag<float> d;
        const auto power = PowerOfExponent(d, LoadVectors<kVectors>(d, exponents + i), kernel.Exponent(channel));
        StoreVectors(kernel.Finish(d, LoadVectors<kVectors>(d, plane + i), power, channel), d, plane + i);
    }
};

// The loop of each step needs so few registers, and its operations wait so little for each other, that both take less time than one
// loop.
template <class Kernel>
HWY_INLINE void RunPowerInSteps(Kernel const& kernel, std::size_t channel, float* plane, Block& block, std::size_t count)
{
    TakeStep<kCurveVectors>(ToExponentStep<Kernel>{kernel, channel, plane, block.interim}, count);
    TakeStep<kCurveVectors>(FromExponentStep<Kernel>{kernel, channel, plane, block.interim}, count);
}

#if HWY_TARGET <= HWY_AVX3
// A power whose values are its arguments already.
template <class Kernel>
struct OfArgument : Kernel
{
    template <class D, class V>
    HWY_INLINE V Argument(D, V const& in, std::size_t /*channel*/) const
    {
        return in;
    }
};

// A power whose steps overlap: while some vectors get their logarithms, those before them go through the exponential. The powers
// are by numbers, and those of a kernel that tells whether they are normal are.
template <class Kernel>
struct QuickPower
{
    Kernel const& kernel;
    Block& block;
    float* planes[4];

    // Vectors that follow each other in a channel's plane.
    struct Place
    {
        std::size_t channel;
        float* values;
    };

    template <class V>
    HWY_INLINE V ExponentsOf(std::size_t channel, V const& arguments, V const& log2) const
    {
        constexpr bool kArePositive = Kernel::kIsArgumentPositive || kTellsWhetherNormal<Kernel>;
        return ExponentOfPower<kArePositive>(hn::ScalableTag<float>(), arguments, log2, kernel.Exponent(channel));
    }

    template <std::size_t kVectors>
    HWY_INLINE auto StartAt(Place place) const
    {
        const auto arguments = ArgumentAt<kVectors>(kernel, place.channel, place.values);
        return ExponentsOf(place.channel, arguments, Log2(hn::ScalableTag<float>(), arguments));
    }

    template <std::size_t kVectors, class V>
    HWY_INLINE void FinishAt(Place place, V const& exponents) const
    {
        const V fractions = FractionsOf(exponents);
        StoreAt<kVectors>(place, exponents, fractions, Polynomial(hn::ScalableTag<float>(), kExp2OfFraction, fractions));
    }

    // Both: finishes a place and starts the next one, whose exponents it gives.
    template <std::size_t kVectors, class V>
    HWY_INLINE V FinishAndStartAt(Place place, V const& exponents, Place next) const
    {
        const hn::ScalableTag<float> d;
        const V arguments = ArgumentAt<kVectors>(kernel, next.channel, next.values);
        const V mantissas = MantissaOfNormal(d, arguments);
        const V fractions = FractionsOf(exponents);
        const auto both = Log2BesideExp2(d, mantissas, fractions);
        const V log2 = PlusExponent(d, arguments, mantissas, both.log2);
        const V nextExponents = ExponentsOf(next.channel, arguments, log2);
        StoreAt<kVectors>(place, exponents, fractions, both.exp2);
        return nextExponents;
    }

    template <class V>
    static HWY_INLINE V FractionsOf(V const& exponents)
    {
        return wide::Sub(exponents, wide::Floor(exponents));
    }

    // The results, from the powers of two of the exponents' fractions, unless there may be a negative whole number among the
    // exponents: its fraction would have to be 1 rather than 0.
    template <std::size_t kVectors, class V>
    HWY_INLINE void StoreAt(Place place, V const& exponents, V const& fractions, V const& exp2) const
    {
        const hn::ScalableTag<float> d;
        if (HWY_UNLIKELY(!AreAboveZero(d, fractions)))
            return RunSlowly(place, kVectors * hn::Lanes(d));
        V power;
        if constexpr (kTellsWhetherNormal<Kernel>)
            power = Scaled(exp2, exponents);
        else
            power = ScaledIfNormal(exp2, exponents);
        StoreVectors(kernel.Finish(d, LoadVectors<kVectors>(d, place.values), power, place.channel), d, place.values);
    }

    HWY_NOINLINE void RunSlowly(Place place, std::size_t count) const
    {
        if constexpr (Kernel::kWantsArgument)
            RunPowerInSteps(OfArgument<Kernel>{kernel}, place.channel, place.values, block, count);
        else
            RunPowerInSteps(kernel, place.channel, place.values, block, count);
    }

    // The planes from a channel on to another, excluded.
    HWY_NOINLINE void Run(std::size_t channel, std::size_t end, std::size_t count) const
    {
        const std::size_t lanes = hn::Lanes(hn::ScalableTag<float>());
        const std::size_t whole = count - count % (kCurveVectors * lanes);
        if (whole != 0)
            RunWhole(channel, end, whole);
        for (; channel < end; ++channel)
            for (std::size_t i = whole; i < count; i += lanes)
                FinishAt<1>({channel, planes[channel] + i}, StartAt<1>({channel, planes[channel] + i}));
    }

    // The same for a multiple of the vectors that are worked on together. All planes are one row of places.
    HWY_INLINE void RunWhole(std::size_t channel, std::size_t end, std::size_t count) const
    {
        constexpr std::size_t kVectors = kCurveVectors;
        Place place{channel, planes[channel]};
        auto exponents = StartAt<kVectors>(place);
        std::size_t i = 0;
        for (;;)
        {
            i += kVectors * hn::Lanes(hn::ScalableTag<float>());
            if (i == count)
            {
                i = 0;
                if (++channel == end)
                    break;
            }
            const Place next{channel, planes[channel] + i};
            exponents = FinishAndStartAt<kVectors>(place, exponents, next);
            place = next;
        }
        FinishAt<kVectors>(place, exponents);
    }
};

// Whether all powers are such as QuickPower wants them.
template <class Kernel>
HWY_INLINE bool ArePowersQuick(Kernel const& kernel, std::size_t channel, std::size_t end)
{
    bool are = true;
    if constexpr (kTellsWhetherNormal<Kernel>)
        are = kernel.ArePowersNormal();
    for (; channel < end; ++channel)
        are = are && kernel.Exponent(channel) == kernel.Exponent(channel);
    return are;
}
#endif

template <class Kernel>
HWY_INLINE void RunPowers(Kernel const& kernel, std::size_t channel, std::size_t end, Block& block, std::size_t count)
{
#if HWY_TARGET <= HWY_AVX3
    if (HWY_LIKELY(ArePowersQuick(kernel, channel, end)))
    {
        const QuickPower<Kernel> power{kernel, block, {block.red, block.green, block.blue, block.alpha}};
        return power.Run(channel, end, count);
    }
#endif
    for (; channel < end; ++channel)
        RunPowerInSteps(kernel, channel, PlaneOf(block, channel), block, count);
}

// Replaces the values of the planes from a channel on to another, excluded, by those of a curve, an operation Curve(d, values,
// channel) on one vector or several. A kernel that is a power has three operations instead: Argument(d, values, channel) gives what
// is raised to the power of Exponent(channel), and Finish(d, values, power, channel) makes the result of that. kWantsArgument tells
// that Finish gets the argument in place of the values, and kIsArgumentPositive that arguments are above 0 wherever the result
// depends on the power. It may have a fourth, ArePowersNormal(), which tells that arguments and powers are normal numbers there.
template <class Kernel>
HWY_INLINE void RunCurvesOf(Kernel const& kernel, std::size_t channel, std::size_t end, Block& block, std::size_t count)
{
    if constexpr (kIsPower<Kernel>)
        RunPowers(kernel, channel, end, block, count);
    else
    {
        for (; channel < end; ++channel)
            TakeStep<kCurveVectors>(CurveStep<Kernel>{kernel, channel, PlaneOf(block, channel)}, count);
    }
}

template <class Kernel>
HWY_INLINE void RunColorCurves(Kernel const& kernel, Block& block, std::size_t count)
{
    RunCurvesOf(kernel, 0, 3, block, count);
}

// Whether the vectors that hold the values are bit for bit the same, and of one value.
HWY_INLINE bool IsUniform(float const* plane, std::size_t count)
{
    const hn::ScalableTag<std::int32_t> di;
    std::int32_t first;
    std::memcpy(&first, plane, sizeof first);
    auto difference = hn::Zero(di);
    for (std::size_t i = 0; i < count; i += hn::Lanes(di))
    {
        const auto values = hn::Load(di, reinterpret_cast<std::int32_t const*>(plane + i));
        difference = hn::Or(difference, hn::Xor(values, hn::Set(di, first)));
    }
    return hn::AllTrue(di, hn::Eq(difference, hn::Zero(di)));
}

HWY_INLINE void ScalePlane(float* plane, std::size_t count, float scale)
{
    const hn::ScalableTag<float> d;
    for (std::size_t i = 0; i < count; i += hn::Lanes(d))
        hn::Store(hn::Mul(hn::Load(d, plane + i), hn::Set(d, scale)), d, plane + i);
}

// The curve of a plane whose values are all the same: one vector's work.
template <class Kernel>
HWY_INLINE void RunUniformCurve(Kernel const& kernel, std::size_t channel, float* plane, Block& block, std::size_t count)
{
    const hn::ScalableTag<float> d;
    RunCurvesOf(kernel, channel, channel + 1, block, 1);
    const auto value = hn::Load(d, plane);
    for (std::size_t i = hn::Lanes(d); i < count; i += hn::Lanes(d))
        hn::Store(value, d, plane + i);
}

// All channels of a kernel with curves. Where the parameters have a scale for alpha, that has no curve. Pictures without holes have
// one alpha all over; it comes first, so that the colours begin while it is reckoned.
template <class Kernel>
HWY_INLINE void RunCurves(Kernel const& kernel, Block& block, std::size_t count, Outputs outputs)
{
    constexpr std::size_t kAlpha = 3;
    std::size_t channels = 3;
    if (outputs == Outputs::ColorsAndAlpha)
    {
        if constexpr (requires { kernel.alphaScale; })
            ScalePlane(block.alpha, count, kernel.alphaScale);
        else if (IsUniform(block.alpha, count))
            RunUniformCurve(kernel, kAlpha, block.alpha, block, count);
        else
            channels = 4;
    }
    RunCurvesOf(kernel, 0, channels, block, count);
}

} // namespace Rendering::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif
