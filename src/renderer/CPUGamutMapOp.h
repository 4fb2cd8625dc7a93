// Parameters of the gamut map's kernel.
#ifndef TAVRIN_RENDERER_CPU_GAMUT_MAP_OP_H
#define TAVRIN_RENDERER_CPU_GAMUT_MAP_OP_H

namespace Rendering
{

struct GamutMapParameters
{
    float depthScale; // from the input depth's code values to the output depth's

    bool keepsAlpha() const { return depthScale == 1.0F; }
};

} // namespace Rendering

#endif
