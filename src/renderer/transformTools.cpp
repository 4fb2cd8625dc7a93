// Work on a whole operator list before it is rendered.
#include "renderer/transformTools.h"

#include "utils/errorMessage.h"

namespace Color::TransformTools
{

void optimize(std::shared_ptr<Transform>&, Tavrin::OptimizerFlags) {}

void setIntermediateBitdepth(BitDepth depth, std::shared_ptr<Transform>& transform)
{
    if (transform == nullptr)
        throw failure(ErrorIds::kRendererTransformNull, Module::kRenderer);
    OpList& ops = transform->getOps();
    if (ops.empty())
        throw failure(ErrorIds::kRendererTransformEmpty, Module::kRenderer);
    for (unsigned int i = 0; i < ops.size(); ++i)
    {
        if (i > 0)
            ops.get(i).setInputBitDepth(depth);
        if (i + 1 < ops.size())
            ops.get(i).setOutputBitDepth(depth);
    }
}

} // namespace Color::TransformTools
