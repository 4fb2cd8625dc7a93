// All operator classes; for tables that are expanded from opTypes.def.
#ifndef TAVRIN_TRANSFORM_OPS_H
#define TAVRIN_TRANSFORM_OPS_H

#include "transform/CDLOp.h"
#include "transform/ditherOp.h"
#include "transform/exposureContrastOp.h"
#include "transform/gammaOp.h"
#include "transform/gamutMapOp.h"
#include "transform/hueVectorOp.h"
#include "transform/invLut1DOp.h"
#include "transform/logOp.h"
#include "transform/lut1DOp.h"
#include "transform/lut3DOp.h"
#include "transform/matrixOp.h"
#include "transform/rangeOp.h"
#include "transform/referenceOp.h"

#endif
