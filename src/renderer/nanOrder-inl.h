// Sums and products of which it is settled what comes out where both operands are NaNs: the first one, made quiet. That is what the
// instructions of x86 do, but compilers swap operands at will.
#if defined(TAVRIN_RENDERER_NAN_ORDER_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef TAVRIN_RENDERER_NAN_ORDER_INL_H
#undef TAVRIN_RENDERER_NAN_ORDER_INL_H
#else
#define TAVRIN_RENDERER_NAN_ORDER_INL_H
#endif

#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace Rendering::HWY_NAMESPACE
{

namespace hn = hwy::HWY_NAMESPACE;

// TAVRIN_IN_ORDER(name, operation, instruction): the operation, as a function that keeps the order.
#undef TAVRIN_IN_ORDER
#if HWY_ARCH_X86 && HWY_COMPILER_GCC

// The instruction in both syntaxes of assemblers. Without AVX the result takes the place of the first operand.
#if HWY_TARGET == HWY_SCALAR
#define TAVRIN_INSTRUCTION(instruction) instruction "ss {%2, %0|%0, %2}"
#define TAVRIN_FIRST_OPERAND "0"
#elif HWY_TARGET == HWY_SSE4
#define TAVRIN_INSTRUCTION(instruction) instruction "ps {%2, %0|%0, %2}"
#define TAVRIN_FIRST_OPERAND "0"
#else
#define TAVRIN_INSTRUCTION(instruction) "v" instruction "ps {%2, %1, %0|%0, %1, %2}"
#define TAVRIN_FIRST_OPERAND "v"
#endif

// The second one may stay in memory; Clang would bring it there first.
#if HWY_COMPILER_CLANG
#define TAVRIN_SECOND_OPERAND "v"
#else
#define TAVRIN_SECOND_OPERAND "vm"
#endif

#define TAVRIN_IN_ORDER(name, operation, instruction)                        \
    template <class V>                                                       \
    HWY_INLINE V name(V a, V b)                                              \
    {                                                                        \
        V result;                                                            \
        asm(TAVRIN_INSTRUCTION(instruction) /* NOLINT(hicpp-no-assembler) */ \
            : "=v"(result.raw)                                               \
            : TAVRIN_FIRST_OPERAND(a.raw), TAVRIN_SECOND_OPERAND(b.raw));    \
        return result;                                                       \
    }

#else

#define TAVRIN_IN_ORDER(name, operation, instruction) \
    template <class V>                                \
    HWY_INLINE V name(V a, V b)                       \
    {                                                 \
        return hn::operation(a, b);                   \
    }

#endif

TAVRIN_IN_ORDER(AddInOrder, Add, "add")
TAVRIN_IN_ORDER(MulInOrder, Mul, "mul")

#undef TAVRIN_IN_ORDER
#undef TAVRIN_INSTRUCTION
#undef TAVRIN_FIRST_OPERAND
#undef TAVRIN_SECOND_OPERAND

} // namespace Rendering::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif
