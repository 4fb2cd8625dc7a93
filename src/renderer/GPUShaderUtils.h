// What all generators of shader text share: lines, numbers, the words of each shader language, and the adaptor's failures.
#ifndef TAVRIN_RENDERER_GPU_SHADER_UTILS_H
#define TAVRIN_RENDERER_GPU_SHADER_UTILS_H

#include "utils/messageFormat.h"

#include <tavrin/gpuAdaptor.h>

#include <array>
#include <string>
#include <vector>

namespace Rendering::GPUShaderUtils
{

using ShaderLanguage = Tavrin::GPUAdaptor::ShaderLanguage;

// Throws a failure with the adaptor's words unless the status is good.
void requireGood(Tavrin::TavStatus const& status);

// The value as it goes to a texture: a part of full signal, and finite.
float textureValue(float codeValue, float valueRange);

// Three forms of numbers. A literal has a point if it is whole and has no exponent, so that it never reads as an integer.
std::string literal(float value);
std::string shortNumber(float value);
std::string preciseNumber(double value);

// The format filled in as formatMessage does.
template <class... Arguments>
std::string formatText(char const* format, Arguments const&... arguments)
{
    return Color::formatMessage(format, std::array<Color::MessageArgument, sizeof...(Arguments)>{arguments...});
}

// Statements, each on a line of its own, in the words of a language. A language that does not exist is a failure where its words
// are asked for.
class ShaderText
{
public:
    // One statement, put together from pieces.
    class ShaderLine
    {
    public:
        // Null adds nothing.
        ShaderLine& operator<<(char const* text);
        ShaderLine& operator<<(std::string const& text);
        ShaderLine& operator<<(unsigned int number);
        // As a literal.
        ShaderLine& operator<<(float number);

        void reset() { m_text.clear(); }
        std::string const& getText() const { return m_text; }

    private:
        std::string m_text;
    };

    explicit ShaderText(ShaderLanguage language) : m_language(language) {}

    // Of the lines that follow; two blanks a level.
    void setIndent(unsigned int levels) { m_indent = levels; }

    // The semicolon and the line end are added.
    void addLine(char const* text);
    void addLine(std::string const& text);
    void addLine(ShaderLine const& line);

    // Interpolation between two values, and samplers of one to three dimensions.
    char const* getLerp() const;
    char const* getTexture1D() const;
    char const* getTexture2D() const;
    char const* getTexture3D() const;

    void declareVar(char const* name, float value);
    void declareVec3f(char const* name, float x, float y, float z);
    void declareVec4f(char const* name, float x, float y, float z, float w);

    // lhs = matrix * rhs; the matrix has nine or sixteen values, in row order.
    void mat3Mul(char const* lhs, std::vector<float> const& matrix, char const* rhs);
    void mat4Mul(char const* lhs, std::vector<float> const& matrix, char const* rhs);

    std::string const& getText() const { return m_text; }

private:
    void _declareVector(char const* name, std::vector<float> const& values);
    void _matMul(char const* lhs, std::vector<float> const& matrix, char const* rhs, unsigned int dimension);

    ShaderLanguage m_language;
    unsigned int m_indent = 0;
    std::string m_text;
};

} // namespace Rendering::GPUShaderUtils

#endif
