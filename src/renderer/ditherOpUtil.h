// The pattern of ordered noise: Bayer's matrices.
#ifndef TAVRIN_RENDERER_DITHER_OP_UTIL_H
#define TAVRIN_RENDERER_DITHER_OP_UTIL_H

#include <tavrin/vocabulary.h>

#include <cstdint>
#include <vector>

namespace Rendering::DitherOpUtil
{

using IntBayerMatrix = std::vector<std::uint16_t>; // In row order.

// Each number from 0 to dimension * dimension - 1 once, spread so that any two that follow each other lie far apart. The dimension
// is a power of two up to 256, where the numbers fill 16 bits. Lives for the whole run; may be called from any thread.
IntBayerMatrix const& getIntBayerMatrix(unsigned int dimension);

// Noise with a mean of zero that spans all but one part in dimension * dimension of the scale.
class BayerMatrix
{
public:
    // Dimension 0: no noise.
    BayerMatrix() = default;
    BayerMatrix(float scale, unsigned int dimension);

    std::uint32_t getDimension() const { return m_dimension; }
    // The values of a row; throws for a row that there is not.
    float const* operator[](int row) const;

private:
    std::uint32_t m_dimension = 0;
    std::vector<float> m_values;
};

// The dimension of the noise that pictures get.
unsigned int getMaskDim();

// One step of a depth as a part of full signal, a power of two. A half has ten bits between a number and its double.
float getStep(Tavrin::BitDepth depth);

// Noise of one step of the dither depth, in code values of the input depth; dimension 0 where dithering would be bypassed.
BayerMatrix getBayerMatrixInstance(Tavrin::BitDepth inDepth, Tavrin::BitDepth ditherDepth);

} // namespace Rendering::DitherOpUtil

#endif
