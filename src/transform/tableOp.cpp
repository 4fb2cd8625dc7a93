// What one- and three-dimensional tables share.
#include "transform/tableOp.h"

#include "utils/errorMessage.h"

namespace Color
{

void validateTable(Op const& op, Array const& array)
{
    try
    {
        array.validate();
    }
    catch (Exception const&)
    {
        throw failure(ErrorIds::kOpArrayIllegal, Module::kTransform, op.getMeaningfullIdentifier());
    }
}

} // namespace Color
