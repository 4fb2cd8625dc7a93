// OpenColorIO's operators as ours.
#ifndef TAVRIN_XML_OCIO_OPS_H
#define TAVRIN_XML_OCIO_OPS_H

#include "ocio/opUtil.h"
#include "transform/opList.h"

namespace Color::OCIOUtil
{

// The operators of a processor, from 32f to 32f. Throws for one that has no counterpart here.
void appendOps(OpList& ops, OpUtil::Processor const& processor);

void appendCDLOp(OpList& ops, OpUtil::Cdl const& cdl);

} // namespace Color::OCIOUtil

#endif
