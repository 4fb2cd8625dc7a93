// Shader text and texture of a 3D table. The texture's first axis is blue, as the table's values are stored.
#include "renderer/GPUOps.h"

#include <vector>

namespace Rendering
{

namespace
{

using Color::Lut3DOp;
using GPUShaderUtils::formatText;

std::string samplerName(unsigned int index)
{
    return formatText("lut3d_%dSampler", index);
}

// By the texture's own linear filter.
std::string trilinearText(char const* texture3D, unsigned int index, unsigned int dimension)
{
    return formatText("    vec3 coords_%1$d = (outColor.zyx * vec3(%2$d.0) + vec3(0.5)) / vec3(%3$d.0);\n"
                      "    outColor.rgb = %4$s(lut3d_%1$dSampler, coords_%1$d).rgb;\n",
                      index, dimension - 1, dimension, texture3D);
}

// One of the six tetrahedra of a cell. Its corners lie on a way from the cell's first corner to its last, along the axis of the
// largest fraction first and along that of the smallest last; in the offsets the axes are the texture's.
struct Tetrahedron
{
    char const* test;
    char const* secondCorner;
    char const* thirdCorner;
    char largest;
    char middle;
    char smallest;
};

constexpr Tetrahedron kRedAboveGreen[] = {
    {"if (frac.g >= frac.b) {", "0, 0, incr", "0, incr, incr", 'r', 'g', 'b'},
    {"else if (frac.r >= frac.b) {", "0, 0, incr", "incr, 0, incr", 'r', 'b', 'g'},
    {"else {", "incr, 0, 0", "incr, 0, incr", 'b', 'r', 'g'},
};

constexpr Tetrahedron kRedBelowGreen[] = {
    {"if (frac.g <= frac.b) {", "incr, 0, 0", "incr, incr, 0", 'b', 'g', 'r'},
    {"else if (frac.r >= frac.b) {", "0, incr, 0", "0, incr, incr", 'g', 'r', 'b'},
    {"else {", "0, incr, 0", "incr, incr, 0", 'g', 'b', 'r'},
};

std::string tetrahedronText(Tetrahedron const& tetrahedron, char const* texture3D, unsigned int index)
{
    return formatText("      %1$s\n"
                      "        nextInd = baseInd + vec3( %2$s);\n"
                      "        vec3 v2 = %7$s(lut3d_%8$dSampler, nextInd).rgb;\n"
                      "        nextInd = baseInd + vec3( %3$s);\n"
                      "        vec3 v3 = %7$s(lut3d_%8$dSampler, nextInd).rgb;\n"
                      "        f1 = vec3( 1.) - frac.%4$s;\n"
                      "        vec3 f2 = vec3( frac.%4$s - frac.%5$s);\n"
                      "        vec3 f3 = vec3( frac.%5$s - frac.%6$s);\n"
                      "        f4 = vec3( frac.%6$s);\n"
                      "        outColor.rgb = (f2 * v2) + (f3 * v3);\n"
                      "      }\n",
                      tetrahedron.test, tetrahedron.secondCorner, tetrahedron.thirdCorner, std::string(1, tetrahedron.largest),
                      std::string(1, tetrahedron.middle), std::string(1, tetrahedron.smallest), texture3D, index);
}

// Written out, on texels as they are.
std::string tetrahedralText(char const* texture3D, unsigned int index, unsigned int dimension)
{
    std::string text = formatText("    vec3 coords = outColor.rgb * vec3(%3$d.0);\n"
                                  "    vec3 baseInd = floor( coords );\n"
                                  "    vec3 frac = coords - baseInd;\n"
                                  "    baseInd = ( baseInd.zyx + vec3(0.5)) / vec3(%4$d.0);\n"
                                  "    float incr = 1. / (%4$d.0);\n"
                                  "    vec3 f1;\n"
                                  "    vec3 f4;\n"
                                  "    vec3 v1 = %1$s(lut3d_%2$dSampler, baseInd).rgb;\n"
                                  "    vec3 nextInd = baseInd + vec3( incr, incr, incr);\n"
                                  "    vec3 v4 = %1$s(lut3d_%2$dSampler, nextInd).rgb;\n",
                                  texture3D, index, dimension - 1, dimension);
    text += "    if (frac.r >= frac.g) {\n";
    for (Tetrahedron const& tetrahedron : kRedAboveGreen)
        text += tetrahedronText(tetrahedron, texture3D, index);
    text += "    }\n"
            "    else {\n";
    for (Tetrahedron const& tetrahedron : kRedBelowGreen)
        text += tetrahedronText(tetrahedron, texture3D, index);
    text += "    }\n"
            "    outColor.rgb = outColor.rgb + (f1 * v1) + (f4 * v4);\n";
    return text;
}

} // namespace

class GPULut3DOp : public TypedGPUOp<Lut3DOp>
{
public:
    GPULut3DOp(Tavrin::GPUAdaptorPtr const& adaptor, Lut3DOp const& op, unsigned int index)
        : TypedGPUOp(adaptor, op, index), m_tetrahedral(op.getInterpolation() == Lut3DOp::InterpolationAlgo::Tetrahedral)
    {
    }

protected:
    // Whether the adaptor takes the texture is not asked: without it the picture is wrong, but there is one.
    void _addResources() override
    {
        Lut3DOp const& op = _getTypedOp();
        float const range = Tavrin::getBitDepthValueRange(op.getOutputBitDepth());
        std::vector<float> values = op.getArray().getValues();
        for (float& value : values)
            value = GPUShaderUtils::textureValue(value, range);
        _getAdaptor().addTexture3D(samplerName(_getIndex()).c_str(), op.getArray().getDimension(), !m_tetrahedral, values.data(),
                                   static_cast<unsigned int>(values.size()));
    }

    void _addAttributeTextToShaderProgram(std::string& text) override
    {
        text += "uniform sampler3D " + samplerName(_getIndex()) + ";\n";
    }

    void _addProcessingTextToShaderProgram(std::string& text) override
    {
        GPUShaderUtils::ShaderText const words = _newText(2);
        auto const interpolation = m_tetrahedral ? tetrahedralText : trilinearText;
        text += interpolation(words.getTexture3D(), _getIndex(), _getTypedOp().getArray().getDimension());
    }

private:
    bool m_tetrahedral;
};

std::unique_ptr<GPUOp> makeGPUOp(Tavrin::GPUAdaptorPtr const& adaptor, Lut3DOp const& op, unsigned int index)
{
    return std::make_unique<GPULut3DOp>(adaptor, op, index);
}

} // namespace Rendering
