// Lines, numbers and words of shader text.
#include "renderer/GPUShaderUtils.h"
#include "support/failure.h"

#include <gtest/gtest.h>

#include <limits>
#include <vector>

using namespace Rendering::GPUShaderUtils;
using Tavrin::GPUAdaptor;

namespace
{

constexpr auto kNoSuchLanguage = static_cast<ShaderLanguage>(3);

Failure const kNullText{0x830005, "Attempt to use null pointer passed to build shader text."};

// What every message of the adaptor's id begins with.
Failure shaderFailure(std::string const& words)
{
    return {0x830001, "Failure on fragment shader program compilation: " + words};
}

ShaderText textIn(ShaderLanguage language)
{
    return ShaderText(language);
}

TEST(ShaderNumbers, LiteralsOfWholeNumbersEndInAPoint)
{
    EXPECT_EQ(literal(1.0F), "1.");
    EXPECT_EQ(literal(16.0F), "16.");
    EXPECT_EQ(literal(-2.0F), "-2.");
    EXPECT_EQ(literal(0.0F), "0.");
    EXPECT_EQ(literal(0.25F), "0.25");
    EXPECT_EQ(literal(1.0F / 3.0F), "0.333333");
    EXPECT_EQ(literal(1e-8F), "1e-08");
}

// The value decides, not its digits: 10000001 is whole, 1.0000001 is not, whatever six digits show.
TEST(ShaderNumbers, TheValueItselfDecidesOnThePoint)
{
    EXPECT_EQ(literal(10000001.0F), "1e+07.");
    EXPECT_EQ(literal(1000000.0F), "1e+06.");
    EXPECT_EQ(literal(1.0000001F), "1");
}

TEST(ShaderNumbers, ShortOnesHaveSixDigitsAndNoPointOfTheirOwn)
{
    EXPECT_EQ(shortNumber(1.0F), "1");
    EXPECT_EQ(shortNumber(65504.0F), "65504");
    EXPECT_EQ(shortNumber(0.1F), "0.1");
    EXPECT_EQ(shortNumber(2.0F / 3.0F), "0.666667");
}

TEST(ShaderNumbers, PreciseOnesHaveSixteenDigits)
{
    EXPECT_EQ(preciseNumber(0.001), "0.001");
    EXPECT_EQ(preciseNumber(2.0), "2");
    EXPECT_EQ(preciseNumber(1.0 / 3.0), "0.3333333333333333");
    EXPECT_EQ(preciseNumber(0.1F), "0.1000000014901161"); // 13421773 / 2^27
    EXPECT_EQ(preciseNumber(std::numeric_limits<float>::min()), "1.175494350822288e-38");
}

TEST(ShaderNumbers, TextureValuesArePartsOfFullSignalAndFinite)
{
    constexpr float kLargest = std::numeric_limits<float>::max();
    constexpr float kInfinity = std::numeric_limits<float>::infinity();
    EXPECT_EQ(textureValue(51.0F, 255.0F), 51.0F / 255.0F);
    EXPECT_EQ(textureValue(kInfinity, 1023.0F), kLargest);
    EXPECT_EQ(textureValue(-kInfinity, 1023.0F), -kLargest);
    EXPECT_EQ(textureValue(std::numeric_limits<float>::quiet_NaN(), 1.0F), 0.0F);
}

TEST(ShaderLine, TakesTextsAndNumbers)
{
    ShaderText::ShaderLine line;
    line << "a" << std::string("b") << 3U << " " << 4.0F << " " << 0.5F << static_cast<char const*>(nullptr);
    EXPECT_EQ(line.getText(), "ab3 4. 0.5");
    line.reset();
    EXPECT_EQ(line.getText(), "");
}

TEST(ShaderText, IndentsLinesByTwoBlanksALevelAndEndsThem)
{
    ShaderText text = textIn(GPUAdaptor::LANGUAGE_GLSL);
    text.addLine("a = b");
    text.setIndent(1);
    text.addLine(std::string("c = d"));
    text.setIndent(3);
    text.addLine(ShaderText::ShaderLine() << "e = " << 1.0F);
    EXPECT_EQ(text.getText(), "a = b;\n  c = d;\n      e = 1.;\n");
}

TEST(ShaderText, DeclaresVariables)
{
    ShaderText text = textIn(GPUAdaptor::LANGUAGE_CG);
    text.declareVar("x", 2.0F);
    text.declareVec3f("y", 1.0F, 0.5F, -3.0F);
    text.declareVec4f("z", 0.0F, 1.0F, 2.0F, 0.125F);
    EXPECT_EQ(text.getText(), "float x = 2.;\n"
                              "vec3 y = vec3(1., 0.5, -3.);\n"
                              "vec4 z = vec4(0., 1., 2., 0.125);\n");
}

TEST(ShaderText, KnowsTheWordsOfEachLanguage)
{
    auto const words = [](ShaderLanguage language)
    {
        ShaderText const text(language);
        return std::vector<std::string>{text.getTexture1D(), text.getTexture2D(), text.getTexture3D(), text.getLerp()};
    };
    using Words = std::vector<std::string>;
    EXPECT_EQ(words(GPUAdaptor::LANGUAGE_GLSL), (Words{"texture1D", "texture2D", "texture3D", "mix"}));
    EXPECT_EQ(words(GPUAdaptor::LANGUAGE_CG), (Words{"tex1D", "tex2D", "tex3D", "lerp"}));
    EXPECT_EQ(words(GPUAdaptor::LANGUAGE_MUL), (Words{"texture1D", "texture2D", "texture3D", "lerp"}));
}

std::string product3(ShaderLanguage language)
{
    ShaderText text(language);
    text.mat3Mul("a", {0, 1, 2, 3, 4, 5, 6, 7, 8}, "b");
    return text.getText();
}

std::string product4(ShaderLanguage language)
{
    ShaderText text(language);
    text.mat4Mul("a", {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15}, "b");
    return text.getText();
}

// Columns come first in GLSL. The last language's parenthesis stays open.
TEST(ShaderText, MultipliesByMatricesInTheOrderOfEachLanguage)
{
    EXPECT_EQ(product3(GPUAdaptor::LANGUAGE_GLSL), "a = mat3(0., 3., 6., 1., 4., 7., 2., 5., 8.) * b;\n");
    EXPECT_EQ(product3(GPUAdaptor::LANGUAGE_CG), "a = mul(float3x3(0., 1., 2., 3., 4., 5., 6., 7., 8.), b);\n");
    EXPECT_EQ(product3(GPUAdaptor::LANGUAGE_MUL), "a = mul(float3x3(0., 1., 2., 3., 4., 5., 6., 7., 8.) * b;\n");
    EXPECT_EQ(product4(GPUAdaptor::LANGUAGE_GLSL),
              "a = mat4(0., 4., 8., 12., 1., 5., 9., 13., 2., 6., 10., 14., 3., 7., 11., 15.) * b;\n");
    EXPECT_EQ(product4(GPUAdaptor::LANGUAGE_CG),
              "a = mul(float4x4(0., 1., 2., 3., 4., 5., 6., 7., 8., 9., 10., 11., 12., 13., 14., 15.), b);\n");
    EXPECT_EQ(product4(GPUAdaptor::LANGUAGE_MUL),
              "a = mul(float4x4(0., 1., 2., 3., 4., 5., 6., 7., 8., 9., 10., 11., 12., 13., 14., 15.) * b;\n");
}

// The size is looked at before the language.
TEST(ShaderText, RefusesAMatrixOfAnotherSize)
{
    ShaderText text = textIn(kNoSuchLanguage);
    EXPECT_EQ(failureOf([&] { text.mat4Mul("a", std::vector<float>(15), "b"); }), shaderFailure("matrix not of size 16"));
    EXPECT_EQ(failureOf([&] { text.mat3Mul("a", std::vector<float>(16), "b"); }), shaderFailure("matrix not of size 9"));
}

TEST(ShaderText, RefusesAnUnknownLanguageWhereItsWordsAreNeeded)
{
    ShaderText text = textIn(kNoSuchLanguage);
    Failure const undefined = shaderFailure("undefined Shading language");
    text.addLine("a = b");
    text.declareVar("c", 1.0F);
    EXPECT_EQ(text.getText(), "a = b;\nfloat c = 1.;\n");
    EXPECT_EQ(failureOf([&] { text.getLerp(); }), undefined);
    EXPECT_EQ(failureOf([&] { text.getTexture1D(); }), undefined);
    EXPECT_EQ(failureOf([&] { text.getTexture2D(); }), undefined);
    EXPECT_EQ(failureOf([&] { text.getTexture3D(); }), undefined);
    EXPECT_EQ(failureOf([] { product3(kNoSuchLanguage); }), undefined);
    EXPECT_EQ(failureOf([] { product4(kNoSuchLanguage); }), undefined);
}

TEST(ShaderText, RefusesNullNames)
{
    ShaderText text = textIn(GPUAdaptor::LANGUAGE_GLSL);
    std::vector<float> const nine(9);
    std::vector<float> const sixteen(16);
    EXPECT_EQ(failureOf([&] { text.declareVar(nullptr, 1.0F); }), kNullText);
    EXPECT_EQ(failureOf([&] { text.declareVec3f(nullptr, 1.0F, 1.0F, 1.0F); }), kNullText);
    EXPECT_EQ(failureOf([&] { text.declareVec4f(nullptr, 1.0F, 1.0F, 1.0F, 1.0F); }), kNullText);
    EXPECT_EQ(failureOf([&] { text.mat3Mul(nullptr, nine, "b"); }), kNullText);
    EXPECT_EQ(failureOf([&] { text.mat3Mul("a", nine, nullptr); }), kNullText);
    EXPECT_EQ(failureOf([&] { text.mat4Mul(nullptr, sixteen, "b"); }), kNullText);
    EXPECT_EQ(failureOf([&] { text.mat4Mul("a", sixteen, nullptr); }), kNullText);
    EXPECT_EQ(text.getText(), "");
}

TEST(RequireGood, PassesOnTheAdaptorsWords)
{
    Tavrin::TavStatus status;
    EXPECT_EQ(failureOf([&] { requireGood(status); }), Failure());
    status.setErrorCode(7);
    EXPECT_EQ(failureOf([&] { requireGood(status); }), shaderFailure(""));
    status.setErrorMessage("no context");
    EXPECT_EQ(failureOf([&] { requireGood(status); }), shaderFailure("no context"));
}

} // namespace
