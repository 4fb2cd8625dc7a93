// The texts of shaders, byte for byte: every operator and style in every language.
#include "renderer/GPURenderer.h"
#include "renderer/shaderSamples.h"
#include "support/expectedFile.h"
#include "support/recordingAdaptor.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <set>
#include <string>
#include <tuple>

using namespace Rendering;
using Tavrin::GPUAdaptor;

namespace
{

std::string folderOf(GPUAdaptor::ShaderLanguage language)
{
    static char const* const names[] = {"glsl", "cg", "mul"};
    return std::string(TAVRIN_TEST_DATA "/shaders/") + names[language];
}

std::string describe(RecordingAdaptor::Texts const& texts)
{
    return "== shaderHeader\n" + texts.shaderHeader + "== helperMethods\n" + texts.helperMethods + "== mainHeader\n" +
           texts.mainHeader + "== processing\n" + texts.processing + "== footer\n" + texts.footer;
}

class ShaderTexts : public testing::TestWithParam<std::tuple<ShaderSample, GPUAdaptor::ShaderLanguage>>
{
};

TEST_P(ShaderTexts, AreThoseOfTheFile)
{
    auto const& [sample, language] = GetParam();
    auto* const recorder = new RecordingAdaptor(language);
    Tavrin::GPUAdaptorPtr adaptor(recorder);
    GPURenderer renderer;
    renderer.setGPUAdaptor(adaptor);
    renderer.finalize(sample.makeTransform());
    expectFileHolds(folderOf(language) + "/" + sample.name + ".txt", describe(recorder->texts));
}

std::string nameOf(testing::TestParamInfo<ShaderTexts::ParamType> const& info)
{
    auto const& [sample, language] = info.param;
    return sample.name + "_" + std::filesystem::path(folderOf(language)).filename().string();
}

INSTANTIATE_TEST_SUITE_P(Samples, ShaderTexts,
                         testing::Combine(testing::ValuesIn(shaderSamples()),
                                          testing::Values(GPUAdaptor::LANGUAGE_GLSL, GPUAdaptor::LANGUAGE_CG,
                                                          GPUAdaptor::LANGUAGE_MUL)),
                         nameOf);

TEST(ShaderTextFiles, AreOneForEachSample)
{
    std::set<std::string> samples;
    for (ShaderSample const& sample : shaderSamples())
        samples.insert(sample.name + ".txt");
    std::set<std::string> files;
    for (auto const& entry : std::filesystem::directory_iterator(folderOf(GPUAdaptor::LANGUAGE_GLSL)))
        files.insert(entry.path().filename().string());
    EXPECT_EQ(files, samples);
}

} // namespace
