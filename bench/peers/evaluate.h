// What a work gives for one pixel, in double precision: what all participants are compared with.
#ifndef TAVRIN_BENCH_PEERS_EVALUATE_H
#define TAVRIN_BENCH_PEERS_EVALUATE_H

#include "peers/work.h"

namespace Bench
{

Rgb evaluate(Work const& work, Rgb const& rgb);

} // namespace Bench

#endif
