// Arithmetic that is the same for all channels, so that it can be done without telling them apart.
#ifndef TAVRIN_RENDERER_ELEMENT_ARITHMETIC_H
#define TAVRIN_RENDERER_ELEMENT_ARITHMETIC_H

namespace Rendering
{

// Each element x of a line becomes (x + noise) * scale, or x * scale where there is no noise.
struct ElementArithmetic
{
    float scale;
    // From the line's first element on: a period of noise from any place of it on, and as many more values as a vector may take.
    float const* noise = nullptr;
    unsigned int noisePeriod = 0;
    unsigned int noisePlace = 0;
};

} // namespace Rendering

#endif
