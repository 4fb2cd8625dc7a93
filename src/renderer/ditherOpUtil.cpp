// The pattern of ordered noise: Bayer's matrices (B. E. Bayer, "An optimum method for two-level rendition of continuous-tone
// pictures", 1973).
#include "renderer/ditherOpUtil.h"

#include "transform/ditherOp.h"
#include "utils/errorMessage.h"

#include <array>
#include <bit>
#include <cmath>
#include <mutex>

namespace Rendering::DitherOpUtil
{

namespace
{

constexpr std::array<unsigned int, 4> kBase = {0, 2, 3, 1}; // 2 by 2, in row order

// Four copies of the smaller matrix, its numbers four apart, each copy filling another of the gaps.
IntBayerMatrix doubled(IntBayerMatrix const& smaller, unsigned int half)
{
    unsigned int const dimension = 2 * half;
    IntBayerMatrix matrix(std::size_t{dimension} * dimension);
    for (unsigned int i = 0; i < dimension; ++i)
    {
        for (unsigned int j = 0; j < dimension; ++j)
            matrix[i * dimension + j] =
                static_cast<std::uint16_t>(kBase[(j / half) + 2 * (i / half)] + 4U * smaller[(i % half) * half + j % half]);
    }
    return matrix;
}

constexpr unsigned int kLargestDimension = 256;

} // namespace

IntBayerMatrix const& getIntBayerMatrix(unsigned int dimension)
{
    // By the logarithm of the dimension. Entries never change once they are there, so references to them stay good.
    static std::array<IntBayerMatrix, std::bit_width(kLargestDimension)> matrices = {IntBayerMatrix{0}};
    static std::mutex mutex;

    std::lock_guard<std::mutex> const lock(mutex);
    std::size_t const level = std::bit_width(dimension) - 1U;
    for (std::size_t i = 1; i <= level; ++i)
    {
        if (matrices.at(i).empty())
            matrices[i] = doubled(matrices[i - 1], 1U << (i - 1));
    }
    return matrices.at(level);
}

BayerMatrix::BayerMatrix(float scale, unsigned int dimension) : m_dimension(dimension)
{
    IntBayerMatrix const& numbers = getIntBayerMatrix(dimension);
    auto const count = static_cast<float>(numbers.size());
    m_values.reserve(numbers.size());
    for (std::uint16_t const number : numbers)
        m_values.push_back(((static_cast<float>(number) + 0.5F) / count - 0.5F) * scale);
}

float const* BayerMatrix::operator[](int row) const
{
    if (row < 0 || static_cast<std::uint32_t>(row) >= m_dimension)
        throw Color::failure(Color::ErrorIds::kBayerRow, Color::Module::kRenderer);
    return m_values.data() + static_cast<std::size_t>(row) * m_dimension;
}

unsigned int getMaskDim()
{
    return 16;
}

float getStep(Tavrin::BitDepth depth)
{
    unsigned int const bits = depth == Tavrin::BIT_DEPTH_16f ? 10 : Tavrin::getBitDepthPrecision(depth);
    return std::ldexp(1.0F, -static_cast<int>(bits));
}

BayerMatrix getBayerMatrixInstance(Tavrin::BitDepth inDepth, Tavrin::BitDepth ditherDepth)
{
    if (Color::DitherOp::wouldDitherBeBypassed(inDepth, ditherDepth))
        return {};
    return {Tavrin::getBitDepthMaxValue(inDepth) / Tavrin::getBitDepthMaxValue(ditherDepth), getMaskDim()};
}

} // namespace Rendering::DitherOpUtil
