// Renderers of the matrix: a diagonal one needs no cross terms, one without offsets no additions.
#include "renderer/CPUMatrixOp.h"

#include "renderer/appendRenderer.h"
#include "renderer/opRenderers.h"
#include "transform/matrixOp.h"

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
