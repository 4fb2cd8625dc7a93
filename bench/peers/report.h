// What was measured, as text and as JSON.
#ifndef TAVRIN_BENCH_PEERS_REPORT_H
#define TAVRIN_BENCH_PEERS_REPORT_H

#include "peers/row.h"
#include "shared/program.h"

#include <vector>

namespace Bench
{

// Who takes part and who can't, and the head of the table.
void printHead();
void printRow(Row const& row);

Json jsonOf(std::vector<Row> const& rows, Effort const& effort);

} // namespace Bench

#endif
