// A chain of transforms, told by where they are.
#ifndef TAVRIN_XML_VIEWING_PIPELINE_H
#define TAVRIN_XML_VIEWING_PIPELINE_H

#include <string>
#include <vector>

namespace Color
{

// A file, or an alias that the preferences know.
struct ViewingPipelineStage
{
    std::string path;
    bool isAlias;

    bool operator==(ViewingPipelineStage const&) const = default;
};

struct ViewingPipeline : std::vector<ViewingPipelineStage>
{
    void appendPath(std::string const& path) { push_back({path, false}); }
    void appendAlias(std::string const& alias) { push_back({alias, true}); }
};

} // namespace Color

#endif
