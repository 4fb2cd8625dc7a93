// Renderers of the matrix: a diagonal one needs no cross terms, one without offsets no additions.
#include "renderer/CPUMatrixOp.h"

#include "renderer/CPULut1DOp.h"
#include "renderer/appendRenderer.h"
#include "renderer/kernelsBytes.h"
#include "renderer/opRenderers.h"
#include "transform/matrixOp.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <memory>

namespace Rendering
{

namespace
{

using Color::MatrixOp;

template <class Parameters>
void readScales(MatrixOp const& op, Parameters& parameters)
{
    unsigned int const dimension = op.getArray().getDimension();
    for (unsigned int channel = 0; channel < 4; ++channel)
        parameters.scale[channel] = op.getArray().get(channel * (dimension + 1));
}

template <class Parameters>
void readColumns(MatrixOp const& op, Parameters& parameters)
{
    unsigned int const dimension = op.getArray().getDimension();
    for (unsigned int column = 0; column < 4; ++column)
    {
        for (unsigned int row = 0; row < 4; ++row)
            parameters.column[column][row] = op.getArray().get(row * dimension + column);
    }
}

template <class Parameters>
void readOffsets(MatrixOp const& op, Parameters& parameters)
{
    for (unsigned int channel = 0; channel < 4; ++channel)
        parameters.offset[channel] = op.getOffsets()[channel];
}

// A scale from 8 bits to 8 bits that leaves alpha alone. There is an entry for every byte, so that a target that looks bytes up
// need not reckon; what the entries hold is what the kernel and the store make of each byte. Large regions have such tables made
// while they are rendered, whatever the renderers; for small ones, which that does not pay for, these lie ready.
class ByteScaleRenderer : public StaticRenderer<RendererKind::ScaleRenderer, ScaleParameters>
{
public:
    ByteScaleRenderer(MatrixOp const& op, ScaleParameters const& parameters)
        : StaticRenderer(op, getArithmeticKernel(ArithmeticKernel::Scale), parameters),
          m_entries{},
          m_tables{{m_entries[0].data(), m_entries[1].data(), m_entries[2].data()}, 0.0F, kMax, 1.0F}
    {
        for (unsigned int channel = 0; channel < 3; ++channel)
        {
            for (unsigned int byte = 0; byte < m_entries[channel].size(); ++byte)
                m_entries[channel][byte] = _stored(static_cast<float>(byte) * parameters.scale[channel]);
        }
    }

    Lut1DParameters const* getDirectEntries(Tavrin::BitDepth input, Tavrin::BitDepth output) const override
    {
        return input == Tavrin::BIT_DEPTH_8i && output == Tavrin::BIT_DEPTH_8i ? &m_tables : nullptr;
    }

    static bool serves(MatrixOp const& op, ScaleParameters const& parameters)
    {
        return op.getInputBitDepth() == Tavrin::BIT_DEPTH_8i && op.getOutputBitDepth() == Tavrin::BIT_DEPTH_8i &&
               parameters.scale[3] == 1.0F && getCodeFunctions() != nullptr;
    }

private:
    static constexpr float kMax = 255.0F;

    static std::uint8_t _stored(float value)
    {
        float const rounded = value + 0.5F;
        return static_cast<std::uint8_t>(rounded > 0.0F ? std::min(rounded, kMax) : 0.0F);
    }

    std::array<std::array<std::uint8_t, 256>, 3> m_entries;
    Lut1DParameters m_tables;
};

void appendDiagonal(MatrixOp const& op, TransformProcessor& processor)
{
    if (op.getOffsets().isNotNull())
    {
        ScaleWithOffsetParameters parameters;
        readScales(op, parameters);
        readOffsets(op, parameters);
        return appendStatic<RendererKind::ScaleWithOffsetRenderer>(op, processor, ArithmeticKernel::ScaleWithOffset, parameters);
    }
    ScaleParameters parameters;
    readScales(op, parameters);
    if (ByteScaleRenderer::serves(op, parameters))
        return processor.append(std::make_unique<ByteScaleRenderer>(op, parameters));
    appendStatic<RendererKind::ScaleRenderer>(op, processor, ArithmeticKernel::Scale, parameters);
}

} // namespace

void MatrixRenderer::addAlgorithm(MatrixOp const& op, TransformProcessor& processor)
{
    if (op.isDiagonal())
        return appendDiagonal(op, processor);
    if (op.getOffsets().isNotNull())
    {
        MatrixWithOffsetParameters parameters;
        readColumns(op, parameters);
        readOffsets(op, parameters);
        return appendStatic<RendererKind::MatrixWithOffsetRenderer>(op, processor, ArithmeticKernel::MatrixWithOffset, parameters);
    }
    MatrixParameters parameters;
    readColumns(op, parameters);
    appendStatic<RendererKind::MatrixRenderer>(op, processor, ArithmeticKernel::Matrix, parameters);
}

} // namespace Rendering
