// Parameters of OpenColorIO's logarithm in terms of ours.
#ifndef TAVRIN_XML_OCIO_UTIL_H
#define TAVRIN_XML_OCIO_UTIL_H

#include "transform/logOp.h"

namespace Color::OCIOUtil
{

// k * log(m * x + b, base) + kb as gamma, refWhite, refBlack, highlight and shadow, in single precision. False for a plain
// logarithm, one whose k and m are 1 and whose b and kb are 0.
bool getLogParams(LogOp::Params& params, float k, float m, float b, float kb, float base);

} // namespace Color::OCIOUtil

#endif
