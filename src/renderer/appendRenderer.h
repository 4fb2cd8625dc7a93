// Appends the renderer of an operator whose parameters never change.
#ifndef TAVRIN_RENDERER_APPEND_RENDERER_H
#define TAVRIN_RENDERER_APPEND_RENDERER_H

#include "renderer/kernelsArithmetic.h"
#include "renderer/virtualRenderer.h"

#include <memory>

namespace Rendering
{

// Parameters are those of the kernel.
template <RendererKind kKind, class Parameters>
void appendStatic(Color::Op const& op, TransformProcessor& processor, ArithmeticKernel kernel, Parameters const& parameters)
{
    processor.append(std::make_unique<StaticRenderer<kKind, Parameters>>(op, getArithmeticKernel(kernel), parameters));
}

} // namespace Rendering

#endif
