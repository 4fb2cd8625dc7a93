// What renderers on either side refuse to render.
#ifndef TAVRIN_RENDERER_RENDERABLE_OP_H
#define TAVRIN_RENDERER_RENDERABLE_OP_H

#include "transform/op.h"

namespace Rendering
{

// Throws for an operator with a static bypass. The flat copy and the optimizer leave such operators out; meeting one means that
// optimization was held back.
void requireFinalized(Color::Op const& op);

// For an operator that nothing can be drawn with: a reference that was not flattened.
[[noreturn]] void refuseUnresolved();

} // namespace Rendering

#endif
