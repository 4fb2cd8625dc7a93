// An inverse 1D table as an ordinary one.
#ifndef TAVRIN_RENDERER_INV_LUT_UTIL_H
#define TAVRIN_RENDERER_INV_LUT_UTIL_H

#include "transform/invLut1DOp.h"

#include <memory>

namespace Rendering::InvLutUtil
{

// The exact inverse, sampled at every value that the input depth can take: 65536 rows of a half domain for a float depth, a row for
// each code of an integer one. For the GPU the samples are those of 12 bits, 4096 rows, unless the table reaches outside its
// depth's range.
std::unique_ptr<Color::Lut1DOp> makeFastLut1D(Color::InvLut1DOp const& op, bool forGPU);

} // namespace Rendering::InvLutUtil

#endif
