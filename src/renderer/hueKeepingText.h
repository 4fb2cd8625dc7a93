// Lines that gamut map and hue-keeping tables have in common: the spread of a colour before and after its components change.
#ifndef TAVRIN_RENDERER_HUE_KEEPING_TEXT_H
#define TAVRIN_RENDERER_HUE_KEEPING_TEXT_H

#include "renderer/GPUShaderUtils.h"

namespace Rendering
{

// Keeps the chroma, which is the largest component less the smallest, and what each component has above the smallest.
void addOldChroma(GPUShaderUtils::ShaderText& text);

// Puts the middle component back to where it was between the two others.
void addNewChroma(GPUShaderUtils::ShaderText& text);

} // namespace Rendering

#endif
