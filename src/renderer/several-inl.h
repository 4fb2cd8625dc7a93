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

template <class T>
concept Single = kCountOf<T>
== 0;

// The vector of a place; what is not several, a tag or a constant, is the same at each place.
template <std::size_t kPlace, class T>
HWY_INLINE auto const& At(T const& argument)
{
    if constexpr (Single<T>)
        return argument;
    else
        return argument.each[kPlace];
}

template <std::size_t kPlace, class Function, class... Arguments>
HWY_INLINE auto CallAt(Function const& function, Arguments const&... arguments)
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

// The functions on vectors, for one vector or several.
namespace wide
{

#define TAVRIN_WIDE(name)                                                                                  \
    template <class... Arguments>                                                                          \
    HWY_INLINE auto name(Arguments const&... arguments)                                                    \
    {                                                                                                      \
        return AtEach([](auto const&... vectors) HWY_ATTR { return hn::name(vectors...); }, arguments...); \
    }
TAVRIN_WIDE(Add)
TAVRIN_WIDE(And)
TAVRIN_WIDE(AndNot)
TAVRIN_WIDE(BitCast)
TAVRIN_WIDE(ConvertTo)
TAVRIN_WIDE(Eq)
TAVRIN_WIDE(Floor)
TAVRIN_WIDE(Ge)
TAVRIN_WIDE(Gt)
TAVRIN_WIDE(IfThenElse)
TAVRIN_WIDE(IfThenElseZero)
TAVRIN_WIDE(Lt)
TAVRIN_WIDE(Max)
TAVRIN_WIDE(Min)
TAVRIN_WIDE(Mul)
TAVRIN_WIDE(Or)
TAVRIN_WIDE(RebindMask)
TAVRIN_WIDE(Sub)
TAVRIN_WIDE(VecFromMask)
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

template <class D, class M>
HWY_INLINE bool AllFalse(D d, M mask)
{
    return hn::AllFalse(d, mask);
}
template <class D, class M, std::size_t kCount>
HWY_INLINE bool AllFalse(D d, Several<M, kCount> const& masks)
{
    M any = masks.each[0];
    for (std::size_t i = 1; i < kCount; ++i)
        any = hn::Or(any, masks.each[i]);
    return hn::AllFalse(d, any);
}

} // namespace wide

} // namespace Rendering::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif
