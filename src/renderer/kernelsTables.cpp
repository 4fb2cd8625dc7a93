// The table kernels of all operators, compiled for each target. The look-ups stand in the operators' own files (CPULut1DOp-inl.h
// and so on); here they come together, since the headers of the instruction sets are dear to compile.
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "renderer/kernelsTables.cpp"
#include "renderer/simdTargets-inl.h"

#include <hwy/foreach_target.h>

#include <hwy/highway.h>

#include "renderer/CPUInvLut1DOp-inl.h"
#include "renderer/CPULut1DOp-inl.h"
#include "renderer/CPULut3DOp-inl.h"
#include "renderer/blockLoop-inl.h"
#include "renderer/kernelsTables.h"

#include <array>
#include <cstddef>

HWY_BEFORE_NAMESPACE();
namespace Rendering::HWY_NAMESPACE
{

using LookUpByte = PerChannel<LookUp<ByteEntry>>;
using LookUpShort = PerChannel<LookUp<ShortEntry>>;
using LookUpHalf = PerChannel<LookUp<HalfEntry>>;
using LookUpFloat = PerChannel<LookUp<FloatEntry>>;
using InterpolateRows = PerChannel<Interpolate>;
using InterpolateHalfs = PerChannel<HalfCode>;
using LookUpHueAdjust = HueAdjusted<LookUp<FloatEntry>, OfCode>;
using LookUpHalfCodesHueAdjust = HueAdjusted<LookUp<FloatEntry>, OfHalfCode>;
using InterpolateRowsHueAdjust = HueAdjusted<Interpolate, AsItIs>;
using InterpolateHalfsHueAdjust = HueAdjusted<HalfCode, AsItIs>;

// In the order of their numbers.
constexpr std::array kTableKernels = {
#define TAVRIN_KERNEL(name, Parameters) &RunOverBlock<name, Parameters>,
#include "renderer/tableKernels.def"
#undef TAVRIN_KERNEL
};

} // namespace Rendering::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE

#include "renderer/simdTarget.h"

namespace Rendering
{

BlockFunction getTableKernel(TableKernel kernel)
{
    static constexpr PerTarget<decltype(HWY_NAMESPACE::kTableKernels)> kTables TAVRIN_PER_TARGET(kTableKernels);
    return (*kTables[getSimdTarget()])[static_cast<std::size_t>(kernel)];
}

} // namespace Rendering

#endif
