// Shader text and textures of a 1D table.
#include "renderer/GPULut1DOp.h"

#include "renderer/GPUOps.h"
#include "renderer/compose.h"
#include "renderer/hueKeepingText.h"
#include "utils/errorMessage.h"

#include <algorithm>
#include <iterator>
#include <vector>

namespace Rendering
{

namespace
{

using Color::Lut1DOp;
using GPUShaderUtils::formatText;
using GPUShaderUtils::requireGood;
using GPUShaderUtils::ShaderText;

// A table with no more rows is resampled.
constexpr unsigned int kFewRows = 255;

struct Channel
{
    char const* name;
    char component;
};

constexpr Channel kChannels[] = {{"red", 'r'}, {"green", 'g'}, {"blue", 'b'}};

// One column of a table.
struct ColorData
{
    std::string name;
    unsigned int length;
    std::vector<float> values;
};

std::unique_ptr<Lut1DOp> resampled(Lut1DOp const& op)
{
    std::unique_ptr<Lut1DOp> const domain = op.makeLookupDomain(Tavrin::BIT_DEPTH_12i);
    domain->setOutputBitDepth(op.getInputBitDepth());
    return Color::TransformTools::compose(*domain, op, Color::TransformTools::ComposeMethod::FirstGrid);
}

ColorData columnOf(Lut1DOp const& op, unsigned int channel, std::string const& name)
{
    float const range = Tavrin::getBitDepthValueRange(op.getOutputBitDepth());
    ColorData data{name, op.getArray().getDimension(), {}};
    data.values.reserve(data.length);
    for (unsigned int i = 0; i < data.length; ++i)
        data.values.push_back(GPUShaderUtils::textureValue(op.getArray().get(i * 3 + channel), range));
    return data;
}

// Rows of the width that overlap by one value, so that a filter along a row never has to cross to the next one. What does not
// fill a row follows, and copies of the last value fill what is left of the texture.
std::vector<float> foldedToRows(std::vector<float> const& values, unsigned int width, unsigned int height)
{
    std::size_t const step = width - 1;
    std::size_t const rest = values.size() % step;
    std::vector<float> folded;
    for (std::size_t i = 0; i == 0 || i + step < values.size(); i += step)
        folded.insert(folded.end(), values.begin() + i, values.begin() + std::min(i + width, values.size()));
    folded.insert(folded.end(), values.end() - rest, values.end());
    folded.resize(std::max(folded.size(), std::size_t{width} * height), values.back());
    return folded;
}

void acquireTexture(Tavrin::GPUAdaptor& adaptor, ColorData const& data, unsigned int width, unsigned int height)
{
    char const* const name = data.name.c_str();
    if (height < 2)
        return requireGood(adaptor.addTexture1D(name, data.values.data(), data.length));
    // Rows that overlap by one have to be longer than that.
    if (width < 2)
        throw Color::failure(Color::ErrorIds::kShaderCompilation, Color::Module::kGpuRenderer, "Unsupported texture width");
    std::vector<float> const folded = foldedToRows(data.values, width, height);
    requireGood(adaptor.addTexture2D(name, width, height, folded.data()));
}

// The place of a half's bit pattern: the numbers of the format's fields come from the value itself.
constexpr char const* kHalfPosition = "vec2 computePosition_%1$d(float f)\n"
                                      "{\n"
                                      "  float dep;\n"
                                      "  float abs_f = abs( f );\n"
                                      "  const float HALF_NRM_MIN = 6.10351562e-05;\n"
                                      "  if ( abs_f > HALF_NRM_MIN ) {\n"
                                      "    const float HALF_MAX = 65504.0;\n"
                                      "    const float neg_min_exp = 15.0;\n"
                                      "    vec3 fComp     = vec3( neg_min_exp );\n"
                                      "    float absarr   = min( abs_f, HALF_MAX );\n"
                                      "    fComp.x        = floor( log2( absarr ) );\n"
                                      "    float lower    = pow( 2.0, fComp.x );\n"
                                      "    fComp.y        = ( absarr - lower ) / lower;\n"
                                      "    const vec3 scale = vec3(1024.0);\n"
                                      "    dep = dot( fComp, scale);\n"
                                      "  } else {\n"
                                      "    const float HALF_DENRM_MAX = 6.09755515e-05;\n"
                                      "    dep = abs_f * 1023.0 / HALF_DENRM_MAX;\n"
                                      "  }\n"
                                      "\n"
                                      "  dep += step(f, 0.0) * 32768.0;\n"
                                      "\n"
                                      "  vec2 retVal;\n"
                                      "  retVal.y = floor(dep / %2$d.0);\n"
                                      "  retVal.x = dep - retVal.y * %2$d.0;\n"
                                      "\n"
                                      "  retVal.x = (retVal.x + 0.5) / %3$d.0;\n"
                                      "  retVal.y = (retVal.y + 0.5) / %4$d.0;\n"
                                      "  return retVal;\n"
                                      "}\n";

constexpr char const* kFoldedPosition = "vec2 computePosition_%1$d(float f)\n"
                                        "{\n"
                                        "  float dep = min( f, 1.0 ) * %5$d.0;\n"
                                        "\n"
                                        "  vec2 retVal;\n"
                                        "  retVal.y = float(int(dep/%2$d.0));\n"
                                        "  retVal.x = dep - retVal.y*%2$d.0;\n"
                                        "\n"
                                        "  retVal.x = (retVal.x + 0.5) / %3$d.0;\n"
                                        "  retVal.y = (retVal.y + 0.5) / %4$d.0;\n"
                                        "\n"
                                        "  return retVal;\n"
                                        "}\n";

} // namespace

GPULut1DOp::GPULut1DOp(Tavrin::GPUAdaptorPtr const& adaptor, Lut1DOp const& op, unsigned int index)
    : TypedGPUOp(adaptor, op, index), m_resampled(op.getArray().getDimension() <= kFewRows ? resampled(op) : nullptr)
{
    Lut1DOp const& table = _getTypedOp();
    m_halfDomain = table.isInputHalfDomain();
    m_singleLut = table.getArray().getNumColorComponents() == 1;
    m_hueAdjust = table.getHueAdjust() == Lut1DOp::HueAdjust::Dw3;
}

Color::Op const& GPULut1DOp::getOp() const
{
    return m_resampled == nullptr ? TypedGPUOp::getOp() : *m_resampled;
}

void GPULut1DOp::_addResources()
{
    requireGood(_getAdaptor().getTextureSize(_getDimension(), &m_width, &m_height));
    m_useTexture2D = m_height > 1;
    for (unsigned int channel = 0; channel < _getSamplerCount(); ++channel)
        acquireTexture(_getAdaptor(), columnOf(_getTypedOp(), channel, _getSamplerName(channel)), m_width, m_height);
}

void GPULut1DOp::_addAttributeTextToShaderProgram(std::string& text)
{
    for (unsigned int channel = 0; channel < _getSamplerCount(); ++channel)
        text += formatText("uniform sampler%sD %s;\n", _isFolded() ? "2" : "1", _getSamplerName(channel));
}

void GPULut1DOp::_addHelperMethodTextToShaderProgram(std::string& text)
{
    if (_isFolded())
        text += formatText(m_halfDomain ? kHalfPosition : kFoldedPosition, _getIndex(), m_width - 1, m_width, m_height,
                           _getDimension() - 1);
}

void GPULut1DOp::_addProcessingTextToShaderProgram(std::string& text)
{
    ShaderText before = _newText(2);
    ShaderText after = _newText(2);
    if (m_hueAdjust)
    {
        addOldChroma(before);
        addNewChroma(after);
    }
    text += before.getText();
    _addLookup(text);
    text += after.getText();
}

std::string GPULut1DOp::_getSamplerName(unsigned int channel) const
{
    return formatText("%s_%dSampler", kChannels[m_singleLut ? 0 : channel].name, _getIndex());
}

unsigned int GPULut1DOp::_getSamplerCount() const
{
    return m_singleLut ? 1 : static_cast<unsigned int>(std::size(kChannels));
}

void GPULut1DOp::_addLookup(std::string& text) const
{
    ShaderText const words = _newText(2);
    if (!_isFolded())
        text += formatText("    vec3 coords_%1$d = outColor.rgb;\n"
                           "    coords_%1$d = (coords_%1$d * vec3(%2$d.0) + vec3(0.5)) / vec3(%3$d.0);\n",
                           _getIndex(), _getDimension() - 1, _getDimension());
    for (unsigned int channel = 0; channel < std::size(kChannels); ++channel)
    {
        std::string const component(1, kChannels[channel].component);
        if (_isFolded())
            text += formatText("    outColor.%1$s = %2$s(%3$s, computePosition_%4$d(outColor.%1$s)).r;\n", component,
                               words.getTexture2D(), _getSamplerName(channel), _getIndex());
        else
            text += formatText("    outColor.%1$s = %2$s(%3$s, coords_%4$d.%1$s).r;\n", component, words.getTexture1D(),
                               _getSamplerName(channel), _getIndex());
    }
}

std::unique_ptr<GPUOp> makeGPUOp(Tavrin::GPUAdaptorPtr const& adaptor, Lut1DOp const& op, unsigned int index)
{
    return std::make_unique<GPULut1DOp>(adaptor, op, index);
}

} // namespace Rendering
