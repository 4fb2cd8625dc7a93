// Gamut map, hue vector and dither.
#include "cases.h"

#include <string>

namespace Bench
{

namespace
{

Tavrin::TransformPtr gamutMap()
{
    return fromElements(R"(<GamutMap inBitDepth="32f" outBitDepth="32f" style="dw3"/>)");
}

Tavrin::TransformPtr hueVector(std::string const& style)
{
    return fromElements("<HueVector inBitDepth=\"32f\" outBitDepth=\"32f\" style=\"" + style +
                        R"("><HueVecParams style="chroma" center="30" width="90" amount="1.5"/></HueVector>)");
}

Tavrin::TransformPtr dither(Tavrin::BitDepth in, Tavrin::BitDepth out)
{
    Tavrin::TransformPtr transform;
    Tavrin::CreateDitherTransform(in, out, out, transform);
    return transform;
}

} // namespace

void addLooks()
{
    for (Placement placement : {Placement::Separate, Placement::InPlace})
    {
        addRender("look/gamut map", gamutMap(), Tavrin::PF_RGBA_32f, Tavrin::PF_RGBA_32f, placement);
        addRender("look/hue vector", hueVector("YCH_Fwd"), Tavrin::PF_RGBA_32f, Tavrin::PF_RGBA_32f, placement);
        addRender("look/hue vector reverse", hueVector("YCH_Rev"), Tavrin::PF_RGBA_32f, Tavrin::PF_RGBA_32f, placement);
    }
    addRender("look/gamut map", gamutMap(), Tavrin::PF_RGBA_16f, Tavrin::PF_RGBA_16f);
    addRender("look/hue vector", hueVector("YCH_Fwd"), Tavrin::PF_RGBA_16f, Tavrin::PF_RGBA_16f);
    addRender("look/dither", dither(Tavrin::BIT_DEPTH_16i, Tavrin::BIT_DEPTH_8i), Tavrin::PF_RGBA_16i, Tavrin::PF_RGBA_8i);
    addRender("look/dither", dither(Tavrin::BIT_DEPTH_16i, Tavrin::BIT_DEPTH_8i), Tavrin::PF_RGB_16i, Tavrin::PF_RGB_8i);
    addRender("look/dither", dither(Tavrin::BIT_DEPTH_16f, Tavrin::BIT_DEPTH_10i), Tavrin::PF_RGBA_16f, Tavrin::PF_RGB_10iP);
}

} // namespace Bench
