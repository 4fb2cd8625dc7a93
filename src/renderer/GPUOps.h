// The generators of shader text, one for each operator; each is made in the operator's own file, GPU<Operator>.cpp.
#ifndef TAVRIN_RENDERER_GPU_OPS_H
#define TAVRIN_RENDERER_GPU_OPS_H

#include "renderer/GPUOp.h"
#include "transform/ops.h"

#include <memory>

namespace Rendering
{

#define TAVRIN_OP(number, Class, name, Family) \
    std::unique_ptr<GPUOp> makeGPUOp(Tavrin::GPUAdaptorPtr const& adaptor, Color::Class const& op, unsigned int index);
#include "transform/opTypes.def"
#undef TAVRIN_OP

} // namespace Rendering

#endif
