// What was measured, as text and as JSON.
#ifndef TAVRIN_BENCH_PEERS_REPORT_H
#define TAVRIN_BENCH_PEERS_REPORT_H

#include "peers/row.h"

#include <string>
#include <vector>

namespace Bench
{

// Who takes part and who can't, and the head of the table.
void printHead();
void printRow(Row const& row);

// False when the file can't be written.
bool writeJson(std::string const& path, std::vector<Row> const& rows, Effort const& effort);

} // namespace Bench

#endif
