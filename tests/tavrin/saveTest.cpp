// Transforms saved by callers.
#include "support/operatorElements.h"
#include "support/ownPreferences.h"
#include "transformFixtures.h"

#include <gmock/gmock.h>

#include <cstring>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <vector>

using namespace Tavrin;
using testing::AllOf;
using testing::Each;
using testing::HasSubstr;
using testing::Not;

namespace
{

// Keeps the pieces.
class Collector : public TransformWriterCallback
{
public:
    void write(char const* text, unsigned int length) override { m_pieces.emplace_back(text, length); }

    std::vector<std::string> const& pieces() const { return m_pieces; }
    std::string document() const
    {
        std::string text;
        for (std::string const& piece : m_pieces)
            text += piece;
        return text;
    }

private:
    std::vector<std::string> m_pieces;
};

std::string saved(TransformPtr const& transform)
{
    Collector collector;
    EXPECT_EQ(told(saveColorTransformToBuffer(collector, transform)), kGood);
    return collector.document();
}

// From below black to above white, each channel at a pace of its own, alpha too.
Pixels sweep()
{
    Pixels pixels;
    for (int i = -64; i <= 192; ++i)
    {
        auto const x = static_cast<float>(i) / 128.0F;
        pixels.insert(pixels.end(), {x, 1.0F - x, x * x, x * 0.5F + 0.25F});
    }
    return pixels;
}

Pixels renderedSweep(TransformPtr const& transform)
{
    Pixels pixels = sweep();
    EXPECT_EQ(told(finalizeForCpu(transform)), kGood);
    ROI const line(0, 0, static_cast<unsigned int>(pixels.size() / 4), 1);
    EXPECT_EQ(told(transform->applyCPU(pixels.data(), line, pixels.data())), kGood);
    return pixels;
}

bool haveTheSameBytes(Pixels const& a, Pixels const& b)
{
    return a.size() == b.size() && std::memcmp(a.data(), b.data(), a.size() * sizeof(float)) == 0;
}

Told const kTransformNull{0x430001, "Transform null"};

} // namespace

TEST(SaveColorTransform, WritesAFileThatCanBeRead)
{
    TemporaryFolder const folder;
    std::string const path = folder.file("a.ctf");
    TransformPtr const transform = scaleBy(2.0F);
    ASSERT_EQ(told(saveColorTransform(path.c_str(), true, transform)), kGood);
    TransformPtr read;
    ASSERT_EQ(told(loadColorTransform(path.c_str(), read)), kGood);
    EXPECT_STREQ(read->getId(), transform->getId());
    ASSERT_EQ(told(finalizeForCpu(read)), kGood);
    EXPECT_EQ(render(read, {0.25F, 0.5F, 0.0F, 1.0F}), (Pixels{0.5F, 1.0F, 0.0F, 1.0F}));
}

TEST(SaveColorTransform, ReplacesAFile)
{
    TemporaryFolder const folder;
    std::string const path = folder.write("a.ctf", std::string(10'000, 'x'));
    TransformPtr const transform = scaleBy(2.0F);
    ASSERT_EQ(told(saveColorTransform(path.c_str(), false, transform)), kGood);
    EXPECT_EQ(contentOfFile(path), saved(transform));
}

using SavedReferences = OwnPreferencesTest;

TEST_F(SavedReferences, AreWrittenAsTheyStandUnlessTheyAreToBeResolved)
{
    std::filesystem::create_directory(shared() + "/looks");
    m_folder.write("shared/looks/warm.ctf", document(doubling()));
    std::string const path = m_folder.file("a.ctf");
    TransformPtr const transform =
        fromText(document("<Reference inBitDepth='32f' outBitDepth='32f' path='looks/warm.ctf' basePath='Shared'/>"));
    ASSERT_TRUE(transform);
    ASSERT_EQ(told(saveColorTransform(path.c_str(), false, transform)), kGood);
    EXPECT_THAT(contentOfFile(path), HasSubstr("    <Reference inBitDepth=\"32f\" outBitDepth=\"32f\" path=\"looks/warm.ctf\" "
                                               "basePath=\"Shared\">\n    </Reference>\n"));
    ASSERT_EQ(told(saveColorTransform(path.c_str(), true, transform)), kGood);
    EXPECT_THAT(contentOfFile(path), AllOf(HasSubstr("<Matrix"), Not(HasSubstr("<Reference"))));
    EXPECT_EQ(saved(transform), contentOfFile(path));
}

TEST(SaveColorTransform, RefusesNullAndAnEmptyHandle)
{
    EXPECT_EQ(told(saveColorTransform(nullptr, true, scaleBy(2.0F))), (Told{0x2030001, "NULL parameter: path"}));
    for (bool const resolved : {false, true})
        EXPECT_EQ(told(saveColorTransform("/no/such/folder/a.ctf", resolved, TransformPtr())), kTransformNull);
}

TEST(SaveColorTransform, TellsWhyAFileCanNotBeWritten)
{
    TemporaryFolder const folder;
    std::string const missing = folder.file("no/a.ctf");
    EXPECT_EQ(told(saveColorTransform(missing.c_str(), true, scaleBy(2.0F))),
              (Told{0x430004, "Invalid file path: '" + missing + "'"}));
    std::string const itself = folder.path().string();
    EXPECT_EQ(told(saveColorTransform(itself.c_str(), true, scaleBy(2.0F))),
              (Told{0x430002, "Unable to write file: '" + itself + "'"}));
}

TEST(SaveColorTransformToBuffer, HandsOverTheDocument)
{
    TransformPtr const transform = fromText("<ProcessList id='an id' name='A name' version='1.2'>"
                                            "<Range inBitDepth='32f' outBitDepth='8i'/></ProcessList>");
    ASSERT_TRUE(transform);
    EXPECT_EQ(saved(transform), "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                                "<ProcessList version=\"1.3\" id=\"an id\" name=\"A name\">\n"
                                "    <Range inBitDepth=\"32f\" outBitDepth=\"8i\">\n"
                                "    </Range>\n"
                                "</ProcessList>\n");
}

// 65536 rows of 15 characters and a line end.
TEST(SaveColorTransformToBuffer, CutsALargeDocumentIntoPieces)
{
    std::vector<float> const column(65536, 0.5F);
    TransformPtr transform;
    ASSERT_EQ(told(Create1DLutTransformFromFloat(BIT_DEPTH_16f, BIT_DEPTH_32f, 65536, column.data(), column.data(), column.data(),
                                                 HALF_FLAGS_INPUT_HALF_DOMAIN, transform)),
              kGood);
    Collector collector;
    ASSERT_EQ(told(saveColorTransformToBuffer(collector, transform)), kGood);
    EXPECT_GT(collector.document().size(), 65536U * 3 * 16);
    EXPECT_GT(collector.pieces().size(), 1U);
    EXPECT_THAT(collector.pieces(), Each(testing::SizeIs(testing::AllOf(testing::Gt(0U), testing::Le(1U << 20U)))));
    TransformPtr const read = fromText(collector.document());
    ASSERT_TRUE(read);
    EXPECT_EQ(saved(read), collector.document());
}

TEST(SaveColorTransformToBuffer, RefusesAnEmptyHandle)
{
    Collector collector;
    EXPECT_EQ(told(saveColorTransformToBuffer(collector, TransformPtr())), kTransformNull);
    EXPECT_TRUE(collector.pieces().empty());
}

TEST(SaveColorTransformToBuffer, LetsACallersExceptionPassAndCallsNoMore)
{
    class Refusing : public TransformWriterCallback
    {
    public:
        void write(char const*, unsigned int) override
        {
            ++m_calls;
            throw std::runtime_error("enough");
        }
        int m_calls = 0;
    };
    Refusing refusing;
    EXPECT_THROW(saveColorTransformToBuffer(refusing, scaleBy(2.0F)), std::runtime_error);
    EXPECT_EQ(refusing.m_calls, 1);
}

TEST(SaveColorTransformToBuffer, KeepsEveryByteThatAnOperatorRenders)
{
    for (OperatorElements::Sample const& sample : OperatorElements::allSamples())
    {
        SCOPED_TRACE(sample.description);
        TransformPtr const first = fromText(sample.document);
        ASSERT_TRUE(first);
        TransformPtr const second = fromText(saved(first));
        ASSERT_TRUE(second);
        EXPECT_TRUE(haveTheSameBytes(renderedSweep(first), renderedSweep(second)));
    }
}
