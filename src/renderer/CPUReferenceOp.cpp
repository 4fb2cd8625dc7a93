// References have no renderer: the operators that they stand for take their place before renderers are made.
#include "renderer/opRenderers.h"
#include "renderer/renderableOp.h"

namespace Rendering
{

void ReferenceRenderer::addAlgorithm(Color::ReferenceOp const&, TransformProcessor&)
{
    refuseUnresolved();
}

} // namespace Rendering
