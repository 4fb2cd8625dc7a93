// What renderers on either side refuse to render.
#include "renderer/renderableOp.h"

#include "utils/errorMessage.h"

namespace Rendering
{

namespace ErrorIds = Color::ErrorIds;
namespace Module = Color::Module;

void requireFinalized(Color::Op const& op)
{
    if (op.getBypass()->getValue() && !op.getBypass()->isDynamic())
        throw Color::failure(ErrorIds::kUnfinalizedTransform, Module::kRenderer);
}

void refuseUnresolved()
{
    throw Color::failure(ErrorIds::kUnresolvedTransform, Module::kRenderer);
}

} // namespace Rendering
