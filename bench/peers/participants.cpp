// Who takes part, a row each. TAVRIN_PEERS_... stand for libraries that were found when the program was configured.
#include "peers/peers.h"

#include <sstream>

namespace Bench
{

std::vector<Participant> const& participants()
{
    static std::vector<Participant> const all = {
        {"Tavrin", std::string("Tavrin ") + Tavrin::getVersion(), Role::Ours, tavrin},
#ifdef TAVRIN_PEERS_LITTLECMS
        {"Little CMS", littleCmsVersion(), Role::Peer, littleCms},
#endif
#ifdef TAVRIN_PEERS_OPENCOLORIO
        {"OpenColorIO", openColorIOVersion(), Role::Peer, openColorIO},
#endif
#ifdef TAVRIN_PEERS_ZIMG
        {"zimg", zimgVersion(), Role::Peer, zimg},
        {"zimg, exact", zimgVersion(), Role::Peer, zimgExact},
#endif
#ifdef TAVRIN_PEERS_FFMPEG
        {"ffmpeg", ffmpegVersion(), Role::Peer, ffmpegInterleaved},
        {"ffmpeg, planes", ffmpegVersion(), Role::Peer, ffmpegPlanes},
#endif
        {"memcpy", "the C library", Role::Copy, copyFrame},
    };
    return all;
}

std::vector<std::string> missingLibraries()
{
    std::istringstream names(TAVRIN_PEERS_MISSING);
    std::vector<std::string> all;
    for (std::string name; std::getline(names, name, ',');)
        all.push_back(name);
    return all;
}

} // namespace Bench
