// Transforms from files and from memory, as a caller sees it.
#include <tavrin/tavrin.h>

#include "support/temporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <utility>
#include <vector>

using namespace Tavrin;
using testing::ElementsAre;
using testing::Pair;

namespace
{

// Doubles a signal from 8i to 32f code values: 0 to 255 become 0 to 2.
std::string const kDoubling = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                              "<ProcessList version='1.3' id='doubling' name='Doubling'>\n"
                              "<Description>two</Description>\n<Description>times</Description>\n"
                              "<InputDescriptor>in</InputDescriptor><OutputDescriptor>out</OutputDescriptor>\n"
                              "<Matrix inBitDepth='32f' outBitDepth='32f'>\n"
                              "<Array dim='3 3 3'>\n2 0 0\n0 2 0\n0 0 2\n</Array>\n</Matrix>\n</ProcessList>\n";

class Extensions : public SupportedExtensionsCallBack
{
public:
    void addExtension(char const* extension, char const* description) override { m_rows.emplace_back(extension, description); }

    std::vector<std::pair<std::string, std::string>> m_rows;
};

class Formats : public SupportedFormatsCallBack
{
public:
    void addFormat(char const* extension, char const* description, char const* reader) override
    {
        m_rows.emplace_back(extension, description);
        m_readers.emplace_back(extension, reader);
    }

    std::vector<std::pair<std::string, std::string>> m_rows;
    std::vector<std::pair<std::string, std::string>> m_readers;
};

void expectFailure(TavStatus const& status, ErrorId id, std::string const& words)
{
    EXPECT_FALSE(status);
    EXPECT_EQ(status.getErrorCode(), id);
    EXPECT_STREQ(status.getErrorMessage(), words.c_str());
}

} // namespace

TEST(LoadedFiles, AreTransforms)
{
    TemporaryFolder const folder;
    TransformPtr transform;
    ASSERT_TRUE(loadColorTransform(folder.write("a.ctf", kDoubling).c_str(), transform));
    EXPECT_STREQ(transform->getId(), "doubling");
    EXPECT_STREQ(transform->getName(), "Doubling");
    EXPECT_STREQ(transform->getDescriptions(), "two\ntimes");
    EXPECT_STREQ(transform->getInputDescriptor(), "in");
    EXPECT_STREQ(transform->getOutputDescriptor(), "out");
    EXPECT_EQ(transform->getInputBitDepth(), BIT_DEPTH_32f);
    EXPECT_EQ(transform->getOutputBitDepth(), BIT_DEPTH_32f);
}

TEST(LoadedFiles, AreThrownAwayWithTheirHandle)
{
    TemporaryFolder const folder;
    TransformPtr transform;
    ASSERT_TRUE(loadColorTransform(folder.write("a.ctf", kDoubling).c_str(), transform));
    EXPECT_EQ(transform.getUseCount(), 1);
}

TEST(LoadedTexts, AreTransforms)
{
    TransformPtr transform;
    ASSERT_TRUE(loadColorTransformFromBuffer(kDoubling.c_str(), transform));
    EXPECT_STREQ(transform->getName(), "Doubling");
}

TEST(LoadedTexts, MayHoldNoOperators)
{
    TransformPtr transform;
    ASSERT_TRUE(loadColorTransformFromBuffer("<ProcessList id='a'/>", transform));
    EXPECT_STREQ(transform->getId(), "a");
}

TEST(LoadedTexts, TellLineZero)
{
    TransformPtr transform;
    expectFailure(loadColorTransformFromBuffer("<ProcessList id='a'>\n<Range inBitDepth='9i'/></ProcessList>", transform), 0x420009,
                  "Illegal 'Input Bit Depth' attribute '9i' in 'Range' line 0: ");
    expectFailure(loadColorTransformFromBuffer("", transform), 0x410001, "Transform invalid");
}

TEST(FailedLoading, LeavesTheHandleAsItWas)
{
    TemporaryFolder const folder;
    std::string const broken = folder.write("a.ctf", "<ProcessList id='a'>");
    TransformPtr transform;
    EXPECT_FALSE(loadColorTransform(broken.c_str(), transform));
    EXPECT_FALSE(transform);

    ASSERT_TRUE(loadColorTransformFromBuffer(kDoubling.c_str(), transform));
    Transform const* const before = transform.get();
    EXPECT_FALSE(loadColorTransform(broken.c_str(), transform));
    EXPECT_FALSE(loadColorTransform(nullptr, transform));
    EXPECT_FALSE(loadColorTransformFromBuffer("<ProcessList id='a'>", transform));
    EXPECT_FALSE(loadColorTransformFromBuffer(nullptr, transform));
    EXPECT_EQ(transform.get(), before);
    EXPECT_EQ(transform.getUseCount(), 1);
}

TEST(FailedLoading, TellsMissingArguments)
{
    TransformPtr transform;
    expectFailure(loadColorTransform(nullptr, transform), 0x2030001, "NULL parameter: path");
    expectFailure(loadColorTransformFromBuffer(nullptr, transform), 0x2030001, "NULL parameter: text");
}

TEST(FailedLoading, TellsWhatIsWrongWithThePath)
{
    TemporaryFolder const folder;
    TransformPtr transform;
    std::string const missing = folder.file("missing.ctf");
    expectFailure(loadColorTransform(missing.c_str(), transform), 0x460003, "No file found: '" + missing + "'");
    std::string const directory = folder.file("folder.ctf");
    std::filesystem::create_directory(directory);
    expectFailure(loadColorTransform(directory.c_str(), transform), 0x460002, "Not a file: '" + directory + "'");
    std::string const other = folder.write("a.CTF", kDoubling);
    expectFailure(loadColorTransform(other.c_str(), transform), 0x460001, "Unsupported file format: '" + other + "'");
    expectFailure(loadColorTransform("", transform), 0x460003, "No file found: ''");
}

TEST(FailedLoading, TellsWhatIsWrongWithTheFile)
{
    TemporaryFolder const folder;
    TransformPtr transform;
    std::string const path = folder.write("a.ctf", "<ProcessList id='a' version='1.3'>\n<Range inBitDepth='8i' outBitDepth='8i'>\n"
                                                   "<minInValue>1 2</minInValue></Range></ProcessList>");
    expectFailure(loadColorTransform(path.c_str(), transform), 0x420016,
                  "Range element: non-single value at 'minInValue' line 3: " + path);
    std::string const empty = folder.write("b.ctf", "<ProcessList id='a' version='1.3'/>");
    expectFailure(loadColorTransform(empty.c_str(), transform), 0x42001a, "No color operators found in file: " + empty);
    std::string const foreign = folder.write("c.xml", "<html/>");
    expectFailure(loadColorTransform(foreign.c_str(), transform), 0x410002, "Transform invalid: '" + foreign + "'");
}

TEST(FileSupport, IsToldByTheExtension)
{
    EXPECT_TRUE(isFileSupported("a.ctf"));
    EXPECT_TRUE(isFileSupported("/no/such/folder/a.xml"));
    EXPECT_FALSE(isFileSupported("a.CTF"));
    EXPECT_FALSE(isFileSupported("a.jpeg"));
    EXPECT_FALSE(isFileSupported(""));
    EXPECT_FALSE(isFileSupported(nullptr));
}

TEST(FileSupport, HasATableThatBeginsWithTheLibrarysOwnFormat)
{
    Extensions extensions;
    EXPECT_TRUE(getSupportedFileExtensions(extensions));
    ASSERT_FALSE(extensions.m_rows.empty());
    EXPECT_THAT(extensions.m_rows.front(), Pair("ctf", "ctf"));
    EXPECT_STREQ(getColorTransformFileExtension(), "ctf");
}

TEST(FileSupport, TellsTheReaderOfEachRowOfTheTable)
{
    Extensions extensions;
    EXPECT_TRUE(getSupportedFileExtensions(extensions));
    Formats formats;
    EXPECT_TRUE(getSupportedFileFormats(formats));
    EXPECT_EQ(formats.m_rows, extensions.m_rows);

    // What comes after depends on the libraries that this build has.
    std::vector<std::pair<std::string, std::string>> const own = {
        {"ctf", "Tavrin Transform Reader"},
        {"cdl", "CDL Reader"},
        {"ccc", "CDL Reader"},
        {"cc", "CDL Reader"},
        {"lut", "Ostrand LUT Reader"},
        {"3dl", "Ostrand 3DL Reader"},
        {"icm", "ICC Profile Reader"},
        {"icc", "ICC Profile Reader"},
        {"pf", "ICC Profile Reader"},
    };
    ASSERT_GE(formats.m_readers.size(), own.size());
    for (std::size_t i = own.size(); i < formats.m_readers.size(); ++i)
        EXPECT_EQ(formats.m_readers[i].second, "OpenColorIO Reader") << formats.m_readers[i].first;
    formats.m_readers.resize(own.size());
    EXPECT_EQ(formats.m_readers, own);
}

TEST(LoadedFiles, RenderPixels)
{
    TransformPtr transform;
    ASSERT_TRUE(loadColorTransformFromBuffer(kDoubling.c_str(), transform));
    ASSERT_TRUE(transform->finalize(PF_RGBA_32f, PF_RGBA_32f, RENDERER_CPU, OPTIMIZER_DEFAULT_THRESHOLD, RESOLVE_GRAPHICS_MONITOR));
    std::vector<float> const source = {0.25F, -0.5F, 3.0F, 0.75F};
    std::vector<float> result(4);
    ASSERT_TRUE(transform->applyCPU(source.data(), ROI(0, 0, 1, 1), result.data()));
    EXPECT_THAT(result, ElementsAre(0.5F, -1.0F, 6.0F, 0.75F));
}
