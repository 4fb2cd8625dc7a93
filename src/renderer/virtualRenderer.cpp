// Names of renderer kinds, and what renderers do unless they say otherwise.
#include "renderer/virtualRenderer.h"

namespace Rendering
{

char const* getRendererKindName(RendererKind kind)
{
    switch (kind)
    {
#define TAVRIN_RENDERER_KIND(number, name) \
    case RendererKind::name:               \
        return #name;
#include "renderer/rendererKinds.def"
#undef TAVRIN_RENDERER_KIND
    }
    return "";
}

bool VirtualRenderer::takesCodes() const
{
    return false;
}

bool VirtualRenderer::mixesAlpha() const
{
    return false;
}

bool VirtualRenderer::dependsOnPosition() const
{
    return false;
}

Lut1DParameters const* VirtualRenderer::getDirectEntries(Tavrin::BitDepth, Tavrin::BitDepth) const
{
    return nullptr;
}

} // namespace Rendering
