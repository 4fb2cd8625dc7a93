// An adaptor that draws nothing and writes down what it is asked for.
#ifndef TAVRIN_TESTS_SUPPORT_RECORDING_ADAPTOR_H
#define TAVRIN_TESTS_SUPPORT_RECORDING_ADAPTOR_H

#include <tavrin/gpuAdaptor.h>

#include <optional>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

class RecordingAdaptor : public Tavrin::GPUAdaptor
{
public:
    struct Uniform
    {
        Tavrin::DynamicProperty::Ids id;
        bool isDynamic;
        std::string name;
        bool isBoolean;
        void const* value;
    };

    // Sizes along axes that a texture has not are 0.
    struct Texture
    {
        std::string name;
        unsigned int width;
        unsigned int height;
        unsigned int depth;
        bool linear;
        std::vector<float> values;
    };

    struct Texts
    {
        std::string shaderHeader;
        std::string helperMethods;
        std::string mainHeader;
        std::string processing;
        std::string footer;
    };

    using Size = std::pair<unsigned int, unsigned int>;

    explicit RecordingAdaptor(ShaderLanguage language = LANGUAGE_GLSL) : GPUAdaptor(language, PIPELINE_DEFAULT) {}

    // The operation of this name fails from now on, with the words "out of " and its name; "" lets all succeed.
    std::string failing;
    // The longest row of a texture.
    unsigned int widestTexture = 1024;
    // What getTextureSize answers instead.
    std::optional<Size> answeredSize;
    std::string inputTextureName = "frontTex";

    // The names of the operations that were called, with the name of the uniform or texture, or the size that was asked for.
    std::vector<std::string> calls;
    std::vector<Uniform> uniforms;
    std::vector<Texture> textures;
    Texts texts;

    Tavrin::TavStatus beginShader() override { return _note("beginShader"); }
    Tavrin::TavStatus releaseShader() override { return _note("releaseShader"); }
    Tavrin::TavStatus compileShader(char const* shaderHeader, char const* helperMethods, char const* mainHeader,
                                    char const* processing, char const* footer) override
    {
        texts = {shaderHeader, helperMethods, mainHeader, processing, footer};
        return _note("compileShader");
    }
    Tavrin::TavStatus addUniform(Tavrin::DynamicProperty::Ids id, bool isDynamic, char const* name, bool isBoolean,
                                 void const* value) override
    {
        uniforms.push_back({id, isDynamic, name, isBoolean, value});
        return _note("addUniform", name);
    }
    Tavrin::TavStatus getTextureSize(unsigned int length, unsigned int* width, unsigned int* height) override
    {
        std::tie(*width, *height) = answeredSize.value_or(_sizeOf(length));
        return _note("getTextureSize", std::to_string(length));
    }
    Tavrin::TavStatus addTexture1D(char const* name, float const* values, unsigned int length) override
    {
        textures.push_back({name, length, 0, 0, false, {values, values + length}});
        return _note("addTexture1D", name);
    }
    Tavrin::TavStatus addTexture2D(char const* name, unsigned int width, unsigned int height, float const* values) override
    {
        textures.push_back({name, width, height, 0, false, {values, values + std::size_t{width} * height}});
        return _note("addTexture2D", name);
    }
    Tavrin::TavStatus addTexture3D(char const* name, unsigned int edgeLength, bool linear, float const* values,
                                   unsigned int count) override
    {
        textures.push_back({name, edgeLength, edgeLength, edgeLength, linear, {values, values + count}});
        return _note("addTexture3D", name);
    }
    Tavrin::TavStatus resetResources() override
    {
        uniforms.clear();
        textures.clear();
        return _note("resetResources");
    }
    char const* getInputTextureName() override
    {
        _note("getInputTextureName");
        return inputTextureName.c_str();
    }
    Tavrin::TavStatus drawFrame(unsigned int texture, Tavrin::Vertices const&, Tavrin::Vertices const&) override
    {
        return _note("drawFrame", std::to_string(texture));
    }

private:
    // Rows overlap by one value.
    Size _sizeOf(unsigned int length) const
    {
        if (length <= widestTexture)
            return {length, 1};
        unsigned int const step = widestTexture - 1;
        return {widestTexture, (length + step - 1) / step};
    }

    Tavrin::TavStatus _note(std::string const& operation, std::string const& subject = "")
    {
        calls.push_back(subject.empty() ? operation : operation + " " + subject);
        Tavrin::TavStatus status;
        if (operation == failing)
        {
            status.setErrorCode(1);
            status.setErrorMessage(("out of " + operation).c_str());
        }
        return status;
    }
};

#endif
