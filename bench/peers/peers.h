// What the participants' files give.
#ifndef TAVRIN_BENCH_PEERS_PEERS_H
#define TAVRIN_BENCH_PEERS_PEERS_H

#include "peers/participant.h"

namespace Bench
{

std::optional<Runnable> copyFrame(Task const& task);
std::optional<Runnable> tavrin(Task const& task);
std::optional<Runnable> littleCms(Task const& task);
std::optional<Runnable> openColorIO(Task const& task);
std::optional<Runnable> ffmpegInterleaved(Task const& task);
std::optional<Runnable> ffmpegPlanes(Task const& task);
// With the gammas that it may approximate, and with those that it computes unless it is told otherwise.
std::optional<Runnable> zimg(Task const& task);
std::optional<Runnable> zimgExact(Task const& task);

std::string littleCmsVersion();
std::string openColorIOVersion();
std::string ffmpegVersion();
std::string zimgVersion();

} // namespace Bench

#endif
