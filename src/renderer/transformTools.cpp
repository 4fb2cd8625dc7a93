// Work on a whole operator list at rendering time.
#include "renderer/transformTools.h"

#include "renderer/CPURenderer.h"
#include "utils/errorMessage.h"

namespace Color::TransformTools
{

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

void evalTransform(float const* source, float* destination, unsigned int count, std::shared_ptr<Transform>& transform)
{
    setIntermediateBitdepth(Tavrin::BIT_DEPTH_32f, transform);
    transform->setInputBitDepth(Tavrin::BIT_DEPTH_32f);
    transform->setOutputBitDepth(Tavrin::BIT_DEPTH_32f);
    Rendering::CPURenderer renderer;
    renderer.finalize(transform, Tavrin::PF_RGB_32f, Tavrin::PF_RGB_32f);
    renderer.apply(source, destination, Tavrin::ROI(0, 0, count, 1), 0, 0);
}

} // namespace Color::TransformTools
