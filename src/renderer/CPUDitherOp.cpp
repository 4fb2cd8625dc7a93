// Renderer of the dither.
#include "renderer/CPUDitherOp.h"

#include "renderer/CPUMatrixOp.h"
#include "renderer/ditherOpUtil.h"
#include "renderer/kernelsArithmetic.h"
#include "renderer/opRenderers.h"
#include "transform/ditherOp.h"

#include <vector>

namespace Rendering
{

namespace
{

using DitherOpUtil::BayerMatrix;

// Each row followed by its start, as often as the kernel wants it.
std::vector<float> extendedRows(BayerMatrix const& matrix)
{
    unsigned int const dimension = matrix.getDimension();
    std::vector<float> rows;
    for (unsigned int row = 0; row < dimension; ++row)
    {
        float const* const values = matrix[static_cast<int>(row)];
        for (unsigned int column = 0; column < dimension + DitherParameters::kRowExtension; ++column)
            rows.push_back(values[column % dimension]);
    }
    return rows;
}

// Depths are those of the operator's place: of the formats at the two ends of the pipeline, 32f inside.
float depthScale(Color::DitherOp const& op)
{
    return Tavrin::getBitDepthMaxValue(op.getOutputBitDepth()) / Tavrin::getBitDepthMaxValue(op.getInputBitDepth());
}

class OrderedDither : public VirtualRenderer
{
public:
    explicit OrderedDither(Color::DitherOp const& op) : OrderedDither(op, matrixOf(op)) {}

    RendererKind getOpType() const override { return RendererKind::DitherRenderer; }

    bool dependsOnPosition() const override { return !m_noise.empty(); }

    LineKernel prepareLine(LineParameters&) const override
    {
        if (m_noise.empty())
            return makeLineKernel(m_scaleFunction, m_scaleParameters);
        return makeLineKernel(m_ditherFunction, m_ditherParameters);
    }

private:
    static BayerMatrix matrixOf(Color::DitherOp const& op)
    {
        return DitherOpUtil::getBayerMatrixInstance(op.getInputBitDepth(), op.getDitherBitDepth());
    }

    OrderedDither(Color::DitherOp const& op, BayerMatrix const& matrix)
        : VirtualRenderer(op),
          m_noise(extendedRows(matrix)),
          m_ditherFunction(getArithmeticKernel(ArithmeticKernel::Dither)),
          m_ditherParameters{m_noise.data(), matrix.getDimension() - 1, depthScale(op)},
          m_scaleFunction(getArithmeticKernel(ArithmeticKernel::Scale)),
          m_scaleParameters{{depthScale(op), depthScale(op), depthScale(op), depthScale(op)}}
    {
    }

    std::vector<float> m_noise;
    BlockFunction m_ditherFunction;
    DitherParameters m_ditherParameters;
    // For a dither that has no noise to add.
    BlockFunction m_scaleFunction;
    ScaleParameters m_scaleParameters;
};

} // namespace

// A dither without noise keeps its place in the pipeline and changes the depth.
void DitherRenderer::addAlgorithm(Color::DitherOp const& op, TransformProcessor& processor)
{
    processor.append(std::make_unique<OrderedDither>(op));
}

} // namespace Rendering
