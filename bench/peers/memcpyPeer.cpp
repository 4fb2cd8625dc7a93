// A copy of as many bytes as the output has: what moving the pixels costs.
#include "peers/peers.h"

#include <cstring>

namespace Bench
{

std::optional<Runnable> copyFrame(Task const& task)
{
    unsigned char const* const source = picture(task.in, Arrangement::Interleaved);
    std::size_t const bytes = kPixels * Tavrin::getPixelSizeInByte(task.out);
    return Runnable{Arrangement::Interleaved, [=] { std::memcpy(destinationFrame(), source, bytes); }};
}

} // namespace Bench
