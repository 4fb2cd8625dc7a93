// From an operator list to the five texts of a fragment shader.
#include "renderer/GPURenderer.h"

#include "renderer/GPUOps.h"
#include "renderer/renderableOp.h"
#include "utils/errorMessage.h"
#include "utils/logger.h"
#include "utils/utils.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace Rendering
{

namespace
{

using Color::Op;
using GPUShaderUtils::requireGood;
using Tavrin::GPUAdaptor;
using Tavrin::GPUAdaptorPtr;
namespace ErrorIds = Color::ErrorIds;
namespace Module = Color::Module;

using MakeGPUOp = std::unique_ptr<GPUOp> (*)(GPUAdaptorPtr const& adaptor, Op const& op, unsigned int index);

constexpr std::array kGenerators = {
#define TAVRIN_OP(number, Class, name, Family)                                   \
    MakeGPUOp([](GPUAdaptorPtr const& adaptor, Op const& op, unsigned int index) \
              { return makeGPUOp(adaptor, static_cast<Color::Class const&>(op), index); }),
#include "transform/opTypes.def"
#undef TAVRIN_OP
};

// Null for an operator of a type beyond the list: it leaves no text.
std::unique_ptr<GPUOp> makeGenerator(GPUAdaptorPtr const& adaptor, Op const& op, unsigned int index)
{
    requireFinalized(op);
    auto const type = static_cast<std::size_t>(op.getOpType());
    return type < kGenerators.size() ? kGenerators[type](adaptor, op, index) : nullptr;
}

constexpr char const* kBanner = "//\n"
                                "// Fragment shader written by Tavrin\n"
                                "//\n";

// What stands for the name of the input texture.
constexpr std::string_view kNamePlace = "%s";

constexpr char const* kInputSampler = "uniform sampler2D %s;\n";

// The sampling line has a name of its own: an adaptor of this language calls its input texture so.
constexpr char const* kMainHeaderCg = "struct Input\n"
                                      "{\n"
                                      "  float2 texCoord : TEXCOORD0;\n"
                                      "  float2 pxlPosition : WPOS;\n"
                                      "};\n"
                                      "\n"
                                      "struct Output\n"
                                      "{\n"
                                      "  float4 color : COLOR0;\n"
                                      "};\n"
                                      "\n"
                                      "Output main(Input IN, uniform sampler2D %s)\n"
                                      "{\n"
                                      "  Output OUT;\n"
                                      "  float4 outColor = tex2D(frontTex, IN.texCoord).rgba;\n"
                                      "  float2 pixelCoord = IN.pxlPosition.xy;\n";

constexpr char const* kFooterCg = "\n"
                                  "  OUT.color = outColor;\n"
                                  "  return OUT;\n"
                                  "}\n";

constexpr char const* kMainHeaderGlsl = "\n"
                                        "void main(void)\n"
                                        "{\n"
                                        "  vec4 outColor = texture2D(%s, gl_TexCoord[0].xy).rgba;\n"
                                        "  vec2 pixelCoord = gl_FragCoord.xy;\n";

constexpr char const* kFooterGlsl = "\n"
                                    "  gl_FragColor = outColor;\n"
                                    "}\n";

// A name that an adaptor gives is trusted to be a name; a text that is longer than any name makes it is cut.
constexpr std::size_t kLongestText = 4095;

std::string withName(std::string text, char const* name)
{
    std::size_t const place = text.find(kNamePlace);
    if (place != std::string::npos)
        text.replace(place, kNamePlace.size(), name == nullptr ? "" : name);
    text.resize(std::min(text.size(), kLongestText));
    return text;
}

// The texts of one shader, from the operators to the adaptor.
class FragmentShader
{
public:
    explicit FragmentShader(GPUAdaptorPtr const& adaptor)
        : m_adaptor(adaptor), m_isCg(adaptor->getLanguage() == GPUAdaptor::LANGUAGE_CG)
    {
    }

    void build(Color::OpList const& ops)
    {
        m_shaderHeader = withName(std::string(kBanner) + (m_isCg ? "" : kInputSampler), m_adaptor->getInputTextureName());
        for (unsigned int i = 0; i < ops.size(); ++i)
            _add(ops.get(i), i);
        m_mainHeader = withName(m_isCg ? kMainHeaderCg : kMainHeaderGlsl, m_adaptor->getInputTextureName());
        m_footer = m_isCg ? kFooterCg : kFooterGlsl;
        _dump();
    }

    void link()
    {
        requireGood(m_adaptor->beginShader());
        requireGood(m_adaptor->compileShader(m_shaderHeader.c_str(), m_helperMethods.c_str(), m_mainHeader.c_str(),
                                             m_processing.c_str(), m_footer.c_str()));
    }

private:
    void _add(Op const& op, unsigned int index)
    {
        std::unique_ptr<GPUOp> const generator = makeGenerator(m_adaptor, op, index);
        if (generator == nullptr)
            return;
        generator->addResources();
        generator->addAttributeTextToShaderProgram(m_shaderHeader);
        generator->addHelperMethodTextToShaderProgram(m_helperMethods);
        generator->addProcessingTextToShaderProgram(m_processing);
    }

    // For people who wonder what their transform became.
    void _dump() const
    {
        char const* const value = Foundation::Utils::getEnv("TAVRIN_DUMP_SHADER");
        if (value == nullptr || *value == '\0')
            return;
        Color::Logger::log(Color::LOG_USER, "*************");
        for (std::string const* text : {&m_shaderHeader, &m_helperMethods, &m_mainHeader, &m_processing, &m_footer})
            Color::Logger::log(Color::LOG_USER, "%s", text->c_str());
    }

    std::string m_shaderHeader;
    std::string m_helperMethods;
    std::string m_mainHeader;
    std::string m_processing;
    std::string m_footer;
    GPUAdaptorPtr m_adaptor;
    bool m_isCg;
};

} // namespace

// Nobody is left to hear of a failure.
GPURenderer::~GPURenderer()
{
    if (m_adaptor.get() != nullptr)
        m_adaptor->releaseShader();
}

void GPURenderer::setGPUAdaptor(GPUAdaptorPtr& adaptor)
{
    m_adaptor = adaptor;
}

void GPURenderer::finalize(std::shared_ptr<Color::Transform> const& transform)
{
    if (transform == nullptr)
        throw Color::failure(ErrorIds::kRendererTransformNull, Module::kRenderer);
    if (m_adaptor.get() == nullptr)
        throw Color::failure(ErrorIds::kNoRenderer, Module::kGpuRenderer, "GPU");
    requireGood(m_adaptor->releaseShader());
    m_adaptor->resetResources();
    m_transform = transform;
    FragmentShader shader(m_adaptor);
    shader.build(transform->getOps());
    shader.link();
}

void GPURenderer::apply(unsigned int textureId, Tavrin::Vertices const& position, Tavrin::Vertices const& textureCoordinates) const
{
    requireGood(m_adaptor->drawFrame(textureId, position, textureCoordinates));
}

} // namespace Rendering
