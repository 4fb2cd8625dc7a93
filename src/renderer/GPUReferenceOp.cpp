// References have no shader text: the operators that they stand for take their place before a shader is written.
#include "renderer/GPUOps.h"
#include "renderer/renderableOp.h"

namespace Rendering
{

std::unique_ptr<GPUOp> makeGPUOp(Tavrin::GPUAdaptorPtr const&, Color::ReferenceOp const&, unsigned int)
{
    refuseUnresolved();
}

} // namespace Rendering
