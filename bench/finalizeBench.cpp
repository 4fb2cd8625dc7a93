// What finalize costs: the optimizer, the merging of tables, and the building of renderers.
#include "cases.h"

#include <string>
#include <vector>

namespace Bench
{

namespace
{

using Tavrin::TransformPtr;

TransformPtr matrix()
{
    float const values[] = {0.9F, 0.1F, 0, 0.2F, 0.7F, 0.1F, 0, 0.1F, 0.9F};
    float const offsets[] = {0.01F, 0, 0};
    TransformPtr transform;
    Tavrin::CreateMatrixTransform(Tavrin::BIT_DEPTH_32f, Tavrin::BIT_DEPTH_32f, values, offsets, false, transform);
    return transform;
}

TransformPtr chain(std::vector<TransformPtr> const& transforms)
{
    TransformPtr all = transforms.front();
    for (std::size_t i = 1; i < transforms.size(); ++i)
    {
        TransformPtr both;
        Tavrin::concatenateTransforms(all, transforms[i], both);
        all = both;
    }
    return all;
}

// As the list stands, as it is simplified by default, and with everything merged.
void addAtThresholds(std::string const& name, TransformPtr const& transform)
{
    for (Tavrin::OptimizerFlags const threshold : {101U, 90U, 45U})
        addFinalize("finalize/" + name, transform, threshold);
}

} // namespace

void addFinalizes()
{
    addAtThresholds("64 matrices", chain(std::vector<TransformPtr>(64, matrix())));
    addAtThresholds("two 1D 4096", chain({table1D(4096), table1D(4096)}));
    addAtThresholds("matrix, 1D 4096, 3D 33, 1D 4096", chain({matrix(), table1D(4096), table3D(33), table1D(4096)}));
    for (unsigned int points : {33U, 65U})
        addAtThresholds("two 3D " + std::to_string(points), chain({table3D(points), table3D(points)}));
    addAtThresholds("3D 33, 3D 65", chain({table3D(33), table3D(65)}));
}

} // namespace Bench
