// One work between two formats, done by all who can: checked first, then timed in turns.
#ifndef TAVRIN_BENCH_PEERS_ROW_H
#define TAVRIN_BENCH_PEERS_ROW_H

#include "peers/participant.h"
#include "shared/clock.h"

#include <optional>
#include <string>
#include <vector>

namespace Bench
{

// "matrix/RGBA32f", or with both formats where they differ.
std::string nameOf(Task const& task);

// Every work in every format that it may be measured in. Those of one format follow each other, so that the picture is drawn once.
std::vector<Task> tasks();

struct Result
{
    Participant const* participant;
    Arrangement arrangement;
    // Of a pixel.
    Timing timing = {};
    // Against double precision, as a part of full signal, or of the value where that is larger. Nothing for a copy.
    std::optional<double> largestError = {};
    // The error is what rounding to the format explains, or a good approximation; otherwise it is another, easier work.
    bool sameWork = true;
    // To the fastest peer that does the same work; nothing where none does.
    std::optional<double> ratioToBestPeer = {};
    double ratioToCopy = 0.0;
};

struct Row
{
    Task task;
    std::vector<Result> results;
};

// Nothing where nobody takes part who needs this task: three channels are there for peers that work on planes.
std::optional<Row> measure(Task const& task, Effort const& effort);

} // namespace Bench

#endif
