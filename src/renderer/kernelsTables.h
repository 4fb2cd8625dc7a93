// Table look-ups over blocks of pixels: the functions that run each kernel on the current target. The operators' own headers
// (CPULut1DOp.h and so on) hold the parameters.
#ifndef TAVRIN_RENDERER_KERNELS_TABLES_H
#define TAVRIN_RENDERER_KERNELS_TABLES_H

#include "renderer/block.h"

namespace Rendering
{

enum class TableKernel : unsigned int
{
#define TAVRIN_KERNEL(name, Parameters) name,
#include "renderer/tableKernels.def"
#undef TAVRIN_KERNEL
};

// The kernel's function for the current target.
BlockFunction getTableKernel(TableKernel kernel);

} // namespace Rendering

#endif
