// Shader text of the matrix.
#include "renderer/GPUOps.h"

namespace Rendering
{

namespace
{

using Color::MatrixOp;
using GPUShaderUtils::formatText;
using GPUShaderUtils::shortNumber;

bool isNull(MatrixOp::Offsets const& offsets)
{
    return !offsets.isNotNull();
}

// Red, green and blue of a diagonal matrix; alpha stays, whatever the matrix says.
std::string scaleText(std::vector<float> const& matrix)
{
    return formatText("    outColor = vec4(%s,%s,%s,1.0) * outColor;\n", shortNumber(matrix[0]), shortNumber(matrix[5]),
                      shortNumber(matrix[10]));
}

std::string offsetText(MatrixOp::Offsets const& offsets)
{
    return formatText("    outColor = vec4(%s,%s,%s,%s) + outColor;\n", shortNumber(offsets[0]), shortNumber(offsets[1]),
                      shortNumber(offsets[2]), shortNumber(offsets[3]));
}

} // namespace

class GPUMatrixOp : public TypedGPUOp<MatrixOp>
{
public:
    using TypedGPUOp::TypedGPUOp;

protected:
    void _addProcessingTextToShaderProgram(std::string& text) override
    {
        MatrixOp const& op = _getTypedOp();
        std::vector<float> matrix = op.getArray().getValues();
        MatrixOp::Offsets offsets = op.getOffsets();
        _normalize(matrix, offsets);
        if (!op.isEye() && op.isDiagonal())
            text += scaleText(matrix);
        else if (!op.isEye())
            text += _matrixText(matrix);
        if (!isNull(offsets))
            text += offsetText(offsets);
    }

private:
    // From code values to parts of full signal. Between equal ranges nothing is done, so offsets of an integer depth stay code
    // values.
    void _normalize(std::vector<float>& matrix, MatrixOp::Offsets& offsets) const
    {
        MatrixOp const& op = _getTypedOp();
        float const outRange = Tavrin::getBitDepthValueRange(op.getOutputBitDepth());
        float const ratio = Tavrin::getBitDepthValueRange(op.getInputBitDepth()) / outRange;
        if (ratio == 1.0F)
            return;
        for (float& coefficient : matrix)
            coefficient *= ratio;
        offsets.scale(1.0F / outRange);
    }

    std::string _matrixText(std::vector<float> const& matrix) const
    {
        GPUShaderUtils::ShaderText text = _newText(2);
        text.mat4Mul("outColor", matrix, "outColor");
        return text.getText();
    }
};

std::unique_ptr<GPUOp> makeGPUOp(Tavrin::GPUAdaptorPtr const& adaptor, MatrixOp const& op, unsigned int index)
{
    return std::make_unique<GPUMatrixOp>(adaptor, op, index);
}

} // namespace Rendering
