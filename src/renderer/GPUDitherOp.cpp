// Shader text and texture of the dither. Alpha gets noise too.
#include "renderer/GPUOps.h"
#include "renderer/ditherOpUtil.h"
#include "utils/errorMessage.h"

#include <algorithm>
#include <vector>

namespace Rendering
{

namespace
{

using Color::DitherOp;
using GPUShaderUtils::requireGood;
using GPUShaderUtils::ShaderText;

// All rows, one behind the other.
std::vector<float> maskValues(Tavrin::BitDepth depth)
{
    unsigned int const dimension = DitherOpUtil::getMaskDim();
    DitherOpUtil::BayerMatrix const mask(DitherOpUtil::getStep(depth), dimension);
    float const* const first = mask[0];
    return {first, first + std::size_t{dimension} * dimension};
}

} // namespace

// A dither that has no noise to add leaves nothing.
class GPUDitherOp : public TypedGPUOp<DitherOp>
{
public:
    GPUDitherOp(Tavrin::GPUAdaptorPtr const& adaptor, DitherOp const& op, unsigned int index)
        : TypedGPUOp(adaptor, op, index), m_samplerName(GPUShaderUtils::formatText("bayer_%dSampler", index))
    {
    }

protected:
    void _addResources() override
    {
        if (_getTypedOp().isIdentity())
            return;
        std::vector<float> values = maskValues(_getTypedOp().getDitherBitDepth());
        unsigned int height = 0;
        requireGood(_getAdaptor().getTextureSize(static_cast<unsigned int>(values.size()), &m_maskWidth, &height));
        if (height >= 2)
            throw Color::failure(Color::ErrorIds::kShaderCompilation, Color::Module::kGpuRenderer, "Unsupported bayer matrix size");
        values.resize(std::max<std::size_t>(values.size(), m_maskWidth)); // An adaptor may answer with a wider row.
        requireGood(_getAdaptor().addTexture1D(m_samplerName.c_str(), values.data(), m_maskWidth));
    }

    void _addAttributeTextToShaderProgram(std::string& text) override
    {
        if (_getTypedOp().isIdentity())
            return;
        ShaderText lines = _newText(0);
        lines.addLine("uniform sampler1D " + m_samplerName);
        text += lines.getText();
    }

    void _addProcessingTextToShaderProgram(std::string& text) override
    {
        if (_getTypedOp().isIdentity())
            return;
        auto const dimension = static_cast<float>(DitherOpUtil::getMaskDim());
        ShaderText lines = _newText(2);
        lines.addLine(ShaderText::ShaderLine() << "vec2 dep = floor(mod(pixelCoord, " << dimension << "))");
        lines.addLine(ShaderText::ShaderLine()
                      << "float lookup = (dep.y * " << dimension << " + dep.x) / " << static_cast<float>(m_maskWidth));
        lines.addLine(ShaderText::ShaderLine()
                      << "float offset = " << lines.getTexture1D() << "(" << m_samplerName << ", lookup).r");
        for (char const* const component : {"r", "g", "b", "a"})
            lines.addLine(ShaderText::ShaderLine() << "outColor." << component << " += offset");
        text += lines.getText();
    }

private:
    std::string m_samplerName;
    unsigned int m_maskWidth = 0;
};

std::unique_ptr<GPUOp> makeGPUOp(Tavrin::GPUAdaptorPtr const& adaptor, DitherOp const& op, unsigned int index)
{
    return std::make_unique<GPUDitherOp>(adaptor, op, index);
}

} // namespace Rendering
