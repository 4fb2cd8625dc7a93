// A few vectors that the same is done to, step by step. A processor has tens of operations in view; of a long formula on one vector
// nearly all of them wait for the one before, while those on several vectors have nothing to wait for.
#if defined(TAVRIN_RENDERER_SEVERAL_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef TAVRIN_RENDERER_SEVERAL_INL_H
#undef TAVRIN_RENDERER_SEVERAL_INL_H
#else
#define TAVRIN_RENDERER_SEVERAL_INL_H
#endif

#include <hwy/highway.h>

#include <algorithm>
#include <cstddef>
#include <utility>

HWY_BEFORE_NAMESPACE();
namespace Rendering::HWY_NAMESPACE
{

namespace hn = hwy::HWY_NAMESPACE;

// Vectors, or masks.
template <class V, std::size_t kCount>
struct Several
{
    V each[kCount];
};

template <class T>
inline constexpr std::size_t kCountOf = 0;
template <class V, std::size_t kCount>
inline constexpr std::size_t kCountOf<Several<V, kCount>> = kCount;

// The vector of a place; what is not several, a tag or a constant, is the same at each place.
template <std::size_t kPlace, class T>
HWY_INLINE auto const& At(T const& argument)
{
    if constexpr (kCountOf<T> != 0)
        return argument.each[kPlace];
    else
        return argument;
}

template <std::size_t kPlace, class Function, class... Arguments>
HWY_INLINE decltype(auto) CallAt(Function const& function, Arguments const&... arguments)
{
    return function(At<kPlace>(arguments)...);
}

template <class Function, std::size_t... kPlaces, class... Arguments>
HWY_INLINE auto CallAtPlaces(std::index_sequence<kPlaces...>, Function const& function, Arguments const&... arguments)
{
    using Result = decltype(CallAt<0>(function, arguments...));
    return Several<Result, sizeof...(kPlaces)>{{CallAt<kPlaces>(function, arguments...)...}};
}

// What a function of vectors gives at each place; where all arguments are single, what it gives of these.
template <class Function, class... Arguments>
HWY_INLINE auto AtEach(Function const& function, Arguments const&... arguments)
{
    constexpr std::size_t kCount = std::max({kCountOf<Arguments>...});
    if constexpr (kCount == 0)
        return function(arguments...);
    else
        return CallAtPlaces(std::make_index_sequence<kCount>(), function, arguments...);
}

template <class Function, std::size_t... kPlaces, class... Arguments>
HWY_INLINE void DoAtPlaces(std::index_sequence<kPlaces...>, Function const& function, Arguments const&... arguments)
{
    (CallAt<kPlaces>(function, arguments...), ...);
}

// Hands the vectors of each place to a function that gives nothing.
template <class Function, class... Arguments>
HWY_INLINE void ForEach(Function const& function, Arguments const&... arguments)
{
    constexpr std::size_t kCount = std::max({std::size_t{1}, kCountOf<Arguments>...});
    DoAtPlaces(std::make_index_sequence<kCount>(), function, arguments...);
}

template <std::size_t... kPlaces, class D>
HWY_INLINE auto LoadAtPlaces(std::index_sequence<kPlaces...>, D d, float const* from)
{
    return Several<hn::VFromD<D>, sizeof...(kPlaces)>{{hn::Load(d, from + kPlaces * hn::Lanes(d))...}};
}

// So many vectors that follow each other in memory; one is a plain vector.
template <std::size_t kCount, class D>
HWY_INLINE auto LoadVectors(D d, float const* from)
{
    if constexpr (kCount == 1)
        return hn::Load(d, from);
    else
        return LoadAtPlaces(std::make_index_sequence<kCount>(), d, from);
}

template <class V, class D>
HWY_INLINE void StoreVectors(V const& vector, D d, float* to)
{
    hn::Store(vector, d, to);
}
template <class V, std::size_t kCount, class D>
HWY_INLINE void StoreVectors(Several<V, kCount> const& vectors, D d, float* to)
{
    for (std::size_t i = 0; i < kCount; ++i)
        hn::Store(vectors.each[i], d, to + i * hn::Lanes(d));
}

// How many vectors a kernel wants together; it may tell.
template <class Kernel, std::size_t kUsual>
constexpr std::size_t VectorsOf()
{
    if constexpr (requires { Kernel::kVectors; })
        return Kernel::kVectors;
    else
        return kUsual;
}

// The functions on vectors, for one vector or several.
namespace wide
{

#define TAVRIN_WIDE(name)                                                                                  \
    template <class... Arguments>                                                                          \
    HWY_INLINE auto name(Arguments const&... arguments)                                                    \
    {                                                                                                      \
        return AtEach([](auto const&... vectors) HWY_ATTR { return hn::name(vectors...); }, arguments...); \
    }
TAVRIN_WIDE(Abs)
TAVRIN_WIDE(Add)
TAVRIN_WIDE(And)
TAVRIN_WIDE(AndNot)
TAVRIN_WIDE(BitCast)
TAVRIN_WIDE(ConvertTo)
TAVRIN_WIDE(CopySign)
TAVRIN_WIDE(Div)
TAVRIN_WIDE(Eq)
TAVRIN_WIDE(Floor)
TAVRIN_WIDE(Ge)
TAVRIN_WIDE(Gt)
TAVRIN_WIDE(IfThenElse)
TAVRIN_WIDE(IfThenElseZero)
TAVRIN_WIDE(IfThenZeroElse)
TAVRIN_WIDE(Lt)
TAVRIN_WIDE(Max)
TAVRIN_WIDE(Min)
TAVRIN_WIDE(Mul)
TAVRIN_WIDE(MulAdd)
TAVRIN_WIDE(Neg)
TAVRIN_WIDE(Or)
TAVRIN_WIDE(RebindMask)
TAVRIN_WIDE(Sub)
TAVRIN_WIDE(VecFromMask)
TAVRIN_WIDE(Xor)
#undef TAVRIN_WIDE

template <int kBits, class V>
HWY_INLINE auto ShiftLeft(V const& vectors)
{
    return AtEach([](auto const& v) HWY_ATTR { return hn::ShiftLeft<kBits>(v); }, vectors);
}

template <int kBits, class V>
HWY_INLINE auto ShiftRight(V const& vectors)
{
    return AtEach([](auto const& v) HWY_ATTR { return hn::ShiftRight<kBits>(v); }, vectors);
}

} // namespace wide

} // namespace Rendering::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif
