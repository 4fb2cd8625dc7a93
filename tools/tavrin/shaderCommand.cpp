// tavrin shader TRANSFORM...: the fragment shader of a transform, and what goes with it.
#include "command.h"
#include "options.h"
#include "text.h"
#include "transforms.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include <algorithm>
#include <iterator>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace Program
{

namespace
{

using Tavrin::GPUAdaptor;
using Tavrin::TavStatus;

// A line of the table at the end: a name and words about it.
struct Row
{
    std::string name;
    std::string words;
};

// Draws nothing, and keeps what it gets as texts for people.
class Collector : public GPUAdaptor
{
public:
    Collector(ShaderLanguage language, unsigned int widestTexture)
        : GPUAdaptor(language, PIPELINE_DEFAULT), m_widestTexture(std::max(2u, widestTexture))
    {
    }

    std::string const& shader() const { return m_shader; }
    std::vector<Row> const& textures() const { return m_textures; }
    std::vector<Row> const& uniforms() const { return m_uniforms; }

    TavStatus beginShader() override { return {}; }
    TavStatus releaseShader() override { return {}; }
    TavStatus compileShader(char const* shaderHeader, char const* helperMethods, char const* mainHeader, char const* processing,
                            char const* footer) override
    {
        m_shader = fmt::format("{}{}{}{}{}", shaderHeader, helperMethods, mainHeader, processing, footer);
        return {};
    }
    TavStatus addUniform(Tavrin::DynamicProperty::Ids, bool isDynamic, char const* name, bool isBoolean, void const* value) override
    {
        const std::string number =
            isBoolean ? (*static_cast<bool const*>(value) ? "1" : "0") : fmt::format("{:g}", *static_cast<double const*>(value));
        m_uniforms.push_back({name, number + (isDynamic ? ", may change" : "")});
        return {};
    }
    // Rows overlap by one value.
    TavStatus getTextureSize(unsigned int length, unsigned int* width, unsigned int* height) override
    {
        const bool isFolded = length > m_widestTexture;
        *width = isFolded ? m_widestTexture : length;
        *height = isFolded ? (length - 1) / (m_widestTexture - 1) + 1 : 1;
        return {};
    }
    TavStatus addTexture1D(char const* name, float const*, unsigned int length) override
    {
        return _addTexture(name, fmt::format("1D, {}", length));
    }
    TavStatus addTexture2D(char const* name, unsigned int width, unsigned int height, float const*) override
    {
        return _addTexture(name, fmt::format("2D, {} x {}", width, height));
    }
    TavStatus addTexture3D(char const* name, unsigned int edgeLength, bool linear, float const*, unsigned int) override
    {
        return _addTexture(name, fmt::format("3D, {0} x {0} x {0}, {1}", edgeLength, linear ? "linear" : "nearest"));
    }
    TavStatus resetResources() override { return {}; }
    char const* getInputTextureName() override { return "frontTex"; }
    TavStatus drawFrame(unsigned int, Tavrin::Vertices const&, Tavrin::Vertices const&) override { return {}; }

private:
    TavStatus _addTexture(char const* name, std::string words)
    {
        m_textures.push_back({name, std::move(words)});
        return {};
    }

    unsigned int m_widestTexture;
    std::string m_shader;
    std::vector<Row> m_textures;
    std::vector<Row> m_uniforms;
};

struct Options
{
    std::vector<std::string> paths;
    std::optional<GPUAdaptor::ShaderLanguage> language;
    unsigned int width = 4096;
};

// As comments, so that what is printed is a shader as a whole.
void printTable(char const* title, std::vector<Row> const& rows)
{
    std::size_t width = 0;
    for (Row const& row : rows)
        width = std::max(width, row.name.size());
    fmt::print("//\n// {}{}\n", title, rows.empty() ? ": none" : "");
    for (Row const& row : rows)
        fmt::print("//   {:{}}  {}\n", row.name, width, row.words);
}

void print(Options const& options)
{
    std::vector<Tavrin::TransformPtr> transforms;
    std::transform(options.paths.begin(), options.paths.end(), std::back_inserter(transforms), loadTransform);
    const Tavrin::TransformPtr transform = joinTransforms(transforms);
    auto* const collector = new Collector(options.language.value_or(GPUAdaptor::LANGUAGE_GLSL), options.width);
    Tavrin::GPUAdaptorPtr adaptor(collector);
    check(transform->setGPUAdaptor(adaptor), "cannot prepare the transform");
    check(transform->finalize(Tavrin::PF_RGBA_32f, Tavrin::PF_RGBA_32f, Tavrin::RENDERER_GPU, Tavrin::OPTIMIZER_DEFAULT_THRESHOLD,
                              Tavrin::RESOLVE_GRAPHICS_MONITOR),
          "cannot prepare the transform");
    for (std::size_t begin = 0; begin < collector->shader().size();)
    {
        const std::size_t end = collector->shader().find('\n', begin);
        fmt::print("{}\n", printable(collector->shader().substr(begin, end - begin)));
        begin = end + 1;
    }
    printTable("Textures of 32-bit floats", collector->textures());
    printTable("Uniforms", collector->uniforms());
}

void setUp(CLI::App& command)
{
    const auto options = std::make_shared<Options>();
    command.add_option("TRANSFORM...", options->paths, "Transform files in the order in which they apply")->required();
    addChoice<GPUAdaptor::ShaderLanguage>(
        command, "--language", options->language,
        {{"glsl", GPUAdaptor::LANGUAGE_GLSL}, {"cg", GPUAdaptor::LANGUAGE_CG}, {"mul", GPUAdaptor::LANGUAGE_MUL}},
        "Language of the shader (default: glsl)")
        ->option_text("glsl|cg|mul");
    command.add_option("--width", options->width, "Width of the widest texture; longer tables are folded\nto rows (default: 4096)")
        ->check(CLI::Range(256, 32768))
        ->option_text("N");
    command.callback([options] { print(*options); });
}

} // namespace

const Command shaderCommand = {"shader", "Print the fragment shader of a transform",
                               "The shader is followed by its textures and uniforms, as comments. The input\n"
                               "picture is the texture 'frontTex'.\n\n"
                               "Examples:\n"
                               "  tavrin shader look.ctf\n"
                               "  tavrin shader exposure.ctf look.ctf --language cg",
                               setUp};

} // namespace Program
