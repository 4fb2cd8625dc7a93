// The kernels of powers and logarithms, compiled for each target. They have a file of their own since gcc is told to leave their
// operations in the order of the source (src/CMakeLists.txt); that of other kernels is better left to it.
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "renderer/kernelsCurves.cpp"
#include "renderer/simdTargets-inl.h"

#include <hwy/foreach_target.h>

#include <hwy/highway.h>

#include "renderer/CPUCDLOp-inl.h"
#include "renderer/CPUExposureContrastOp-inl.h"
#include "renderer/CPUGammaOp-inl.h"
#include "renderer/CPULogOp-inl.h"
#include "renderer/blockLoop-inl.h"
#include "renderer/kernelsCurves.h"

#include <array>

HWY_BEFORE_NAMESPACE();
namespace Rendering::HWY_NAMESPACE
{

// In the order of their rows.
constexpr std::array kCurveKernels = {
#define TAVRIN_KERNEL(name, Parameters) &RunOverBlock<name, Parameters>,
#include "renderer/curveKernels.def"
#undef TAVRIN_KERNEL
};

} // namespace Rendering::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE

#include "renderer/simdTarget.h"

namespace Rendering
{

BlockFunction getCurveKernel(std::size_t row)
{
    static constexpr PerTarget<decltype(HWY_NAMESPACE::kCurveKernels)> kTables TAVRIN_PER_TARGET(kCurveKernels);
    return (*kTables[getSimdTarget()])[row];
}

} // namespace Rendering

#endif
