// Tables of a smooth curve, for benchmarks that do not care what is in a table.
#ifndef TAVRIN_BENCH_CURVES_H
#define TAVRIN_BENCH_CURVES_H

#include <tavrin/tavrin.h>

namespace Bench
{

// Between 32-bit floats: one column of so many rows for all channels.
Tavrin::TransformPtr curveTable(unsigned int rows);

// The same curve on each channel, with so many points on an axis.
Tavrin::TransformPtr curveGrid(unsigned int points);

} // namespace Bench

#endif
