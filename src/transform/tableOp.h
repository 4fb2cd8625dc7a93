// What one- and three-dimensional tables share.
#ifndef TAVRIN_TRANSFORM_TABLE_OP_H
#define TAVRIN_TRANSFORM_TABLE_OP_H

#include "transform/array.h"
#include "transform/op.h"

namespace Color
{

// Tables hold red, green and blue.
inline constexpr unsigned int kTableComponents = 3;

// Refuses an array that is empty or holds a wrong number of values, in the operator's name.
void validateTable(Op const& op, Array const& array);

} // namespace Color

#endif
