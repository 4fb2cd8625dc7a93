// The families of CPU renderers, one per operator: each picks the renderer for an operator's parameters and appends it.
#ifndef TAVRIN_RENDERER_OP_RENDERERS_H
#define TAVRIN_RENDERER_OP_RENDERERS_H

#include "renderer/virtualRenderer.h"

namespace Color
{
#define TAVRIN_OP(number, Class, name, Family) class Class;
#include "transform/opTypes.def"
#undef TAVRIN_OP
} // namespace Color

namespace Rendering
{

// addAlgorithm appends at most one renderer; none drops the operator from the pipeline.
#define TAVRIN_OP(number, Class, name, Family)                                           \
    struct Family                                                                        \
    {                                                                                    \
        static void addAlgorithm(Color::Class const& op, TransformProcessor& processor); \
    };
#include "transform/opTypes.def"
#undef TAVRIN_OP

} // namespace Rendering

#endif
