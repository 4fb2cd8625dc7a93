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

// The noise with each value so many times.
class SpreadNoise
{
public:
    SpreadNoise(BayerMatrix const& matrix, unsigned int times)
        : m_rows(matrix.getDimension()), m_period(matrix.getDimension() * times)
    {
        for (unsigned int row = 0; row < m_rows; ++row)
        {
            float const* const values = matrix[static_cast<int>(row)];
            for (unsigned int place = 0; place < m_period + DitherNoise::kRowExtension; ++place)
                m_values.push_back(values[place % m_period / times]);
        }
    }

    DitherNoise get() const { return {m_values.data(), m_rows, m_period}; }
    bool empty() const { return m_values.empty(); }

private:
    unsigned int m_rows;
    unsigned int m_period;
    std::vector<float> m_values;
};

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

    bool dependsOnPosition() const override { return !m_ofPixels.empty(); }

    LineKernel prepareLine(LineParameters&) const override
    {
        if (m_ofPixels.empty())
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
          m_ofPixels(matrix, 1),
          m_ofThree(matrix, 3),
          m_ofFour(matrix, 4),
          m_ditherFunction(getArithmeticKernel(ArithmeticKernel::Dither)),
          m_ditherParameters{m_ofPixels.get(), m_ofThree.get(), m_ofFour.get(), depthScale(op)},
          m_scaleFunction(getArithmeticKernel(ArithmeticKernel::Scale)),
          m_scaleParameters{{depthScale(op), depthScale(op), depthScale(op), depthScale(op)}}
    {
    }

    SpreadNoise m_ofPixels;
    SpreadNoise m_ofThree;
    SpreadNoise m_ofFour;
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
