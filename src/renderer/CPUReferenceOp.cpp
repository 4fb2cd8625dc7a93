// References have no renderer: the operators that they stand for take their place before renderers are made.
#include "renderer/opRenderers.h"
#include "transform/referenceOp.h"
#include "utils/errorMessage.h"

namespace Rendering
{

void ReferenceRenderer::addAlgorithm(Color::ReferenceOp const&, TransformProcessor&)
{
    throw Color::failure(Color::ErrorIds::kUnresolvedTransform, Color::Module::kRenderer);
}

} // namespace Rendering
