// Lines and numbers of shader text, and the words of each shader language.
#include "renderer/GPUShaderUtils.h"

#include "utils/errorMessage.h"
#include "utils/numerics.h"
#include "utils/utils.h"

#include <cmath>

namespace Rendering::GPUShaderUtils
{

namespace
{

namespace ErrorIds = Color::ErrorIds;
namespace Module = Color::Module;

struct LanguageWords
{
    char const* texture1D;
    char const* texture2D;
    char const* texture3D;
    char const* lerp;
    // Around the coefficients of a matrix, with its dimension, and behind the vector.
    char const* beforeMatrix;
    char const* afterMatrix;
    char const* afterVector;
    bool hasColumnMajorMatrices;
};

// In the order of the languages' numbers. The last one leaves a parenthesis open: its users complete the text.
constexpr LanguageWords kLanguages[] = {
    {"texture1D", "texture2D", "texture3D", "mix", " = mat%1$d(", ") * ", "", true},
    {"tex1D", "tex2D", "tex3D", "lerp", " = mul(float%1$dx%1$d(", "), ", ")", false},
    {"texture1D", "texture2D", "texture3D", "lerp", " = mul(float%1$dx%1$d(", ") * ", "", false},
};

LanguageWords const& wordsOf(ShaderLanguage language)
{
    if (language >= std::size(kLanguages))
        throw Color::failure(ErrorIds::kShaderCompilation, Module::kGpuRenderer, "undefined Shading language");
    return kLanguages[language];
}

char const* requireText(char const* text)
{
    if (text == nullptr)
        throw Color::failure(ErrorIds::kShaderTextNull, Module::kGpuRenderer);
    return text;
}

// Separated by commas.
std::string literals(std::vector<float> const& values)
{
    std::string text;
    for (float const value : values)
        text += (text.empty() ? "" : ", ") + literal(value);
    return text;
}

std::vector<float> transposed(std::vector<float> const& matrix, unsigned int dimension)
{
    std::vector<float> result;
    for (unsigned int column = 0; column < dimension; ++column)
    {
        for (unsigned int row = 0; row < dimension; ++row)
            result.push_back(matrix[row * dimension + column]);
    }
    return result;
}

} // namespace

void requireGood(Tavrin::TavStatus const& status)
{
    if (!status)
        throw Color::failure(ErrorIds::kShaderCompilation, Module::kGpuRenderer, status.getErrorMessage());
}

float textureValue(float codeValue, float valueRange)
{
    return Foundation::Numerics::sanitizeFloat(codeValue / valueRange);
}

// The value itself decides on the point, not its digits: one that is rounded to a whole number has none.
std::string literal(float value)
{
    return shortNumber(value) + (std::trunc(value) == value ? "." : "");
}

std::string shortNumber(float value)
{
    return Color::Utils::valueString(value);
}

std::string preciseNumber(double value)
{
    return Color::Utils::valueString(value, 16);
}

ShaderText::ShaderLine& ShaderText::ShaderLine::operator<<(char const* text)
{
    if (text != nullptr)
        m_text += text;
    return *this;
}

ShaderText::ShaderLine& ShaderText::ShaderLine::operator<<(std::string const& text)
{
    m_text += text;
    return *this;
}

ShaderText::ShaderLine& ShaderText::ShaderLine::operator<<(unsigned int number)
{
    m_text += std::to_string(number);
    return *this;
}

ShaderText::ShaderLine& ShaderText::ShaderLine::operator<<(float number)
{
    m_text += literal(number);
    return *this;
}

void ShaderText::addLine(char const* text)
{
    addLine(ShaderLine() << text);
}

void ShaderText::addLine(std::string const& text)
{
    m_text += std::string(2 * std::size_t{m_indent}, ' ') + text + ";\n";
}

void ShaderText::addLine(ShaderLine const& line)
{
    addLine(line.getText());
}

char const* ShaderText::getLerp() const
{
    return wordsOf(m_language).lerp;
}

char const* ShaderText::getTexture1D() const
{
    return wordsOf(m_language).texture1D;
}

char const* ShaderText::getTexture2D() const
{
    return wordsOf(m_language).texture2D;
}

char const* ShaderText::getTexture3D() const
{
    return wordsOf(m_language).texture3D;
}

void ShaderText::declareVar(char const* name, float value)
{
    addLine(ShaderLine() << "float " << requireText(name) << " = " << value);
}

void ShaderText::declareVec3f(char const* name, float x, float y, float z)
{
    _declareVector(name, {x, y, z});
}

void ShaderText::declareVec4f(char const* name, float x, float y, float z, float w)
{
    _declareVector(name, {x, y, z, w});
}

void ShaderText::mat3Mul(char const* lhs, std::vector<float> const& matrix, char const* rhs)
{
    if (matrix.size() != 9)
        throw Color::failure(ErrorIds::kShaderCompilation, Module::kGpuRenderer, "matrix not of size 9");
    _matMul(lhs, matrix, rhs, 3);
}

void ShaderText::mat4Mul(char const* lhs, std::vector<float> const& matrix, char const* rhs)
{
    if (matrix.size() != 16)
        throw Color::failure(ErrorIds::kShaderCompilation, Module::kGpuRenderer, "matrix not of size 16");
    _matMul(lhs, matrix, rhs, 4);
}

void ShaderText::_declareVector(char const* name, std::vector<float> const& values)
{
    std::string const type = "vec" + std::to_string(values.size());
    addLine(ShaderLine() << type << " " << requireText(name) << " = " << type << "(" << literals(values) << ")");
}

void ShaderText::_matMul(char const* lhs, std::vector<float> const& matrix, char const* rhs, unsigned int dimension)
{
    requireText(lhs);
    requireText(rhs);
    LanguageWords const& words = wordsOf(m_language);
    std::string const coefficients = literals(words.hasColumnMajorMatrices ? transposed(matrix, dimension) : matrix);
    addLine(ShaderLine() << lhs << formatText(words.beforeMatrix, dimension) << coefficients << words.afterMatrix << rhs
                         << words.afterVector);
}

} // namespace Rendering::GPUShaderUtils
