// Lines that gamut map and hue-keeping tables have in common.
#include "renderer/hueKeepingText.h"

namespace Rendering
{

void addOldChroma(GPUShaderUtils::ShaderText& text)
{
    text.addLine("vec3 maxval = max( outColor.rgb, max( outColor.gbr, outColor.brg))");
    text.addLine("vec3 minval = min( outColor.rgb, min( outColor.gbr, outColor.brg))");
    text.addLine("float oldChroma = max(1e-8, maxval.r - minval.r)");
    text.addLine("vec3 delta = outColor.rgb - minval");
}

void addNewChroma(GPUShaderUtils::ShaderText& text)
{
    text.addLine("vec3 maxval2 = max( outColor.rgb, max( outColor.gbr, outColor.brg))");
    text.addLine("vec3 minval2 = min( outColor.rgb, min( outColor.gbr, outColor.brg))");
    text.addLine("float newChroma = maxval2.r - minval2.r");
    text.addLine("outColor.rgb = minval2.r + delta * newChroma / oldChroma");
}

} // namespace Rendering
