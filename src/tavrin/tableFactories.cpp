// The public factories of tables: one for each type of values.
#include <tavrin/transformFactory.h>

#include "tavrin/requireParameter.h"
#include "tavrin/transformImpl.h"
#include "transform/transformFactory.h"
#include "utils/errorMessage.h"

namespace Tavrin
{

namespace
{

template <class Value>
TavStatus create1DLut(BitDepth input, BitDepth output, unsigned int size, Value const* red, Value const* green, Value const* blue,
                      HalfFlags halfFlags, TransformPtr& transform)
{
    return Color::statusOf(
        [&]
        {
            requireParameter(red, "red");
            requireParameter(green, "green");
            requireParameter(blue, "blue");
            transform.reset(new Impl::Transform(Color::Create1DLutTransform(input, output, size, red, green, blue, halfFlags)));
        });
}

template <class Value>
TavStatus create3DLut(BitDepth input, BitDepth output, unsigned int gridSize, Value const* values, TransformPtr& transform)
{
    return Color::statusOf(
        [&]
        {
            requireParameter(values, "values");
            transform.reset(new Impl::Transform(Color::Create3DLutTransform(input, output, gridSize, values)));
        });
}

} // namespace

#define TAVRIN_TABLE_FACTORIES(Name, Value)                                                                                       \
    TavStatus Create1DLutTransformFrom##Name(BitDepth input, BitDepth output, unsigned int size, Value const* red,                \
                                             Value const* green, Value const* blue, HalfFlags halfFlags, TransformPtr& transform) \
    {                                                                                                                             \
        return create1DLut(input, output, size, red, green, blue, halfFlags, transform);                                          \
    }                                                                                                                             \
    TavStatus Create3DLutTransformFrom##Name(BitDepth input, BitDepth output, unsigned int gridSize, Value const* values,         \
                                             TransformPtr& transform)                                                             \
    {                                                                                                                             \
        return create3DLut(input, output, gridSize, values, transform);                                                           \
    }
TAVRIN_TABLE_FACTORIES(Short, unsigned short)
TAVRIN_TABLE_FACTORIES(Int, unsigned int)
TAVRIN_TABLE_FACTORIES(Float, float)
#undef TAVRIN_TABLE_FACTORIES

} // namespace Tavrin
