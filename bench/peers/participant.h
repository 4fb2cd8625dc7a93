// Who takes part, and what each has to bring.
#ifndef TAVRIN_BENCH_PEERS_PARTICIPANT_H
#define TAVRIN_BENCH_PEERS_PARTICIPANT_H

#include "peers/picture.h"
#include "peers/work.h"

#include <tavrin/tavrin.h>

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace Bench
{

// A work on a frame from one format to another.
struct Task
{
    Work const& work;
    Tavrin::PixelFormat in;
    Tavrin::PixelFormat out;
};

// A work that is ready to be timed, from the picture to the destination frame. What it holds goes with it.
struct Runnable
{
    Arrangement arrangement;
    std::function<void()> run;
    // Brings the result into the destination frame, untimed, for participants that keep frames of their own.
    std::function<void()> deliver = [] {};
};

enum class Role
{
    Ours,
    Peer,
    // Moves as many bytes and does nothing else.
    Copy
};

struct Participant
{
    std::string name;
    // Name and version of the library.
    std::string release;
    Role role;
    // Nothing where it can't do the work between these formats.
    std::function<std::optional<Runnable>(Task const&)> make;
};

// All that were there when the program was built.
std::vector<Participant> const& participants();

// Libraries that were not.
std::vector<std::string> missingLibraries();

} // namespace Bench

#endif
