// Shader text of the range.
#include "renderer/GPUOps.h"

namespace Rendering
{

namespace
{

using Color::RangeOp;
using GPUShaderUtils::formatText;
using GPUShaderUtils::shortNumber;

// In parts of full signal.
float normalized(RangeOp const& op, double codeValue)
{
    return static_cast<float>(codeValue) / Tavrin::getBitDepthValueRange(op.getOutputBitDepth());
}

std::string scaleText(RangeOp const& op)
{
    float const depthScale =
        Tavrin::getBitDepthMaxValue(op.getOutputBitDepth()) / Tavrin::getBitDepthMaxValue(op.getInputBitDepth());
    return formatText("    outColor = outColor * vec4(%1$s,%1$s,%1$s,1.0);\n"
                      "    outColor = outColor + vec4(%2$s,%2$s,%2$s,0.0);\n",
                      shortNumber(static_cast<float>(op.getScale()) / depthScale), shortNumber(normalized(op, op.getOffset())));
}

// Alpha has no limits of its own but those of a half.
std::string lowerLimitText(RangeOp const& op)
{
    double const bound = op.minClips() ? op.getLowerBound() : op.getMinOutValue();
    return formatText("    outColor = max( outColor, vec4(%1$s,%1$s,%1$s,-65504.) );\n", shortNumber(normalized(op, bound)));
}

std::string upperLimitText(RangeOp const& op)
{
    double const bound = op.maxClips() ? op.getUpperBound() : op.getMaxOutValue();
    return formatText("    outColor = min( outColor, vec4(%1$s,%1$s,%1$s,65504.) );\n", shortNumber(normalized(op, bound)));
}

} // namespace

class GPURangeOp : public TypedGPUOp<RangeOp>
{
public:
    using TypedGPUOp::TypedGPUOp;

protected:
    void _addProcessingTextToShaderProgram(std::string& text) override
    {
        RangeOp const& op = _getTypedOp();
        if (op.scales(true))
            text += scaleText(op);
        if (op.minClips() || !op.minIsEmpty())
            text += lowerLimitText(op);
        if (op.maxClips() || !op.maxIsEmpty())
            text += upperLimitText(op);
    }
};

std::unique_ptr<GPUOp> makeGPUOp(Tavrin::GPUAdaptorPtr const& adaptor, RangeOp const& op, unsigned int index)
{
    return std::make_unique<GPURangeOp>(adaptor, op, index);
}

} // namespace Rendering
