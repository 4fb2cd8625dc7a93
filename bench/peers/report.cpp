// What was measured, as text and as JSON.
#include "peers/report.h"

#include <fmt/format.h>

#include <cstdio>
#include <string>

namespace Bench
{

namespace
{

char const* nameOf(Role role)
{
    switch (role)
    {
    case Role::Ours:
        return "ours";
    case Role::Peer:
        return "peer";
    case Role::Copy:
        return "copy";
    }
    return "";
}

std::string text(char const* format, std::optional<double> value)
{
    return value ? fmt::format(fmt::runtime(format), *value) : "";
}

Json jsonOf(Participant const& participant)
{
    return {{"name", participant.name}, {"release", participant.release}, {"role", nameOf(participant.role)}};
}

Json jsonOf(Result const& result)
{
    Json json = {{"participant", result.participant->name},
                 {"arrangement", result.arrangement == Arrangement::Planes ? "planes" : "interleaved"},
                 {"nanoseconds", result.timing.nanoseconds},
                 {"spread", result.timing.spread},
                 {"ratioToMemcpy", result.ratioToCopy},
                 {"sameWork", result.sameWork}};
    if (result.largestError)
        json["largestError"] = *result.largestError;
    if (result.ratioToBestPeer)
        json["ratioToBestPeer"] = *result.ratioToBestPeer;
    return json;
}

Json jsonOf(Row const& row)
{
    Json json = {{"work", row.task.work.name}, {"in", formatName(row.task.in)}, {"out", formatName(row.task.out)}};
    for (Result const& result : row.results)
        json["results"].push_back(jsonOf(result));
    return json;
}

} // namespace

void printHead()
{
    for (Participant const& participant : participants())
        fmt::print("{}: {}\n", participant.name, participant.release);
    for (std::string const& library : missingLibraries())
        fmt::print("{}: not installed when this program was built, and left out\n", library);
    fmt::print("\nOne thread, {} x {} pixels; ns a pixel (median), spread (quartiles), largest error (part of full signal).\n\n",
               kWidth, kHeight);
    fmt::print("| Work | Participant | ns a pixel | spread | x best peer | x memcpy | largest error |\n"
               "| --- | --- | --- | --- | --- | --- | --- |\n");
}

void printRow(Row const& row)
{
    for (Result const& result : row.results)
    {
        fmt::print("| {} | {} | {:.2f} | {:.0f} % | {} | {:.2f} | {}{} |\n", nameOf(row.task), result.participant->name,
                   result.timing.nanoseconds, 100.0 * result.timing.spread, text("{:.2f}", result.ratioToBestPeer),
                   result.ratioToCopy, text("{:.1e}", result.largestError), result.sameWork ? "" : " (another work)");
    }
    std::fflush(stdout);
}

Json jsonOf(std::vector<Row> const& rows, Effort const& effort)
{
    Json json = jsonHead("peers", effort);
    json["width"] = kWidth;
    json["height"] = kHeight;
    json["missing"] = missingLibraries();
    for (Participant const& participant : participants())
        json["participants"].push_back(jsonOf(participant));
    json["rows"] = Json::array();
    for (Row const& row : rows)
        json["rows"].push_back(jsonOf(row));
    return json;
}

} // namespace Bench
