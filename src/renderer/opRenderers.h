// The families of CPU renderers, one per operator: each picks the renderer for an operator's parameters and appends it.
#ifndef TAVRIN_RENDERER_OP_RENDERERS_H
#define TAVRIN_RENDERER_OP_RENDERERS_H

#include "renderer/virtualRenderer.h"

namespace Color
{
#define TAVRIN_OP(number, Class, name, Family) class Class;
#define TAVRIN_OP_RESERVED(number, Class)
#include "transform/opTypes.def"
#undef TAVRIN_OP
#undef TAVRIN_OP_RESERVED
} // namespace Color

namespace Rendering
{

// addAlgorithm appends at most one renderer; none drops the operator from the pipeline.
#define TAVRIN_OP(number, Class, name, Family)                                           \
    struct Family                                                                        \
    {                                                                                    \
        static void addAlgorithm(Color::Class const& op, TransformProcessor& processor); \
    };
#define TAVRIN_OP_RESERVED(number, Class)
#include "transform/opTypes.def"
#undef TAVRIN_OP
#undef TAVRIN_OP_RESERVED

} // namespace Rendering

#endif
