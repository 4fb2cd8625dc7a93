// What programs that measure series of works share: their options, and the file that they write.
#ifndef TAVRIN_BENCH_SHARED_PROGRAM_H
#define TAVRIN_BENCH_SHARED_PROGRAM_H

#include "shared/clock.h"

#include <nlohmann/json.hpp>

#include <string>

namespace Bench
{

struct Options
{
    // Regular expression for what is measured.
    std::string filter = ".";
    // Nothing is written where it is empty.
    std::string json;
    Effort effort;
};

// The command line's, and the given ones where it is silent. Ends the program where it asks for help, or is wrong.
Options parseOptions(int argc, char const* const* argv, std::string const& description, std::string const& filtered,
                     Effort const& effort);

using Json = nlohmann::ordered_json;

// What a file of measurements begins with.
Json jsonHead(std::string const& kind, Effort const& effort);

// Ends the program with a message where the file can't be written.
void save(Json const& json, std::string const& path);

} // namespace Bench

#endif
