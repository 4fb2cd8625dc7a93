// References to other files, as a caller makes and sees them.
#include "contentRecorder.h"
#include "support/ownPreferences.h"
#include "transformFixtures.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <string>

using namespace Tavrin;
using testing::ElementsAre;

namespace
{

// What the references lead to is there.
class CreateReferenceTransform : public OwnPreferencesTest
{
protected:
    void SetUp() override
    {
        OwnPreferencesTest::SetUp();
        if (IsSkipped())
            return;
        std::filesystem::create_directory(shared() + "/looks");
        std::string const warm = m_folder.write("shared/looks/warm.ctf", document(doubling()));
        for (char const* const alias : {"graphicsMonitor", "broadcastMonitor"})
            ASSERT_EQ(told(addAliasInPreferences(alias, warm.c_str(), BASE_PATH_NONE)), kGood);
    }

    static TransformPtr byPath(char const* path)
    {
        TransformPtr transform;
        EXPECT_EQ(told(CreateReferenceTransformFromPath(BIT_DEPTH_10i, BIT_DEPTH_16f, path, BASE_PATH_SHARED, transform)), kGood);
        return transform;
    }
    static TransformPtr byAlias(char const* alias)
    {
        TransformPtr transform;
        EXPECT_EQ(told(CreateReferenceTransformFromAlias(BIT_DEPTH_10i, BIT_DEPTH_16f, alias, transform)), kGood);
        return transform;
    }
};
using Reference = CreateReferenceTransform;

// The only operator, which is a reference between the depths of the fixture.
DisplayedOp referenceIn(TransformPtr const& transform)
{
    DisplayedOp const op = displayedOp(transform);
    EXPECT_EQ(op.name, "Reference");
    EXPECT_THAT(op.common, ElementsAre("Identifier: none", "Name: ", "Input Bit Depth: 10i", "Output Bit Depth: 16f"));
    return op;
}

TEST_F(CreateReferenceTransform, GivesAReferenceByPath)
{
    TransformPtr const transform = byPath("looks/warm.ctf");
    ASSERT_TRUE(transform);
    EXPECT_TRUE(transform->hasReferences());
    EXPECT_FALSE(transform->hasAliasReferencesToResolve());
    EXPECT_THAT(referenceIn(transform).own,
                ElementsAre("Base Path: Shared", "Path: looks/warm.ctf", "Resolved Path: " + shared() + "/looks/warm.ctf"));
}

TEST_F(CreateReferenceTransform, GivesAReferenceByAlias)
{
    TransformPtr const transform = byAlias("broadcastMonitor");
    ASSERT_TRUE(transform);
    EXPECT_TRUE(transform->hasReferences());
    EXPECT_FALSE(transform->hasAliasReferencesToResolve());
    EXPECT_THAT(referenceIn(transform).own, ElementsAre("Alias: broadcastMonitor"));
    EXPECT_TRUE(byAlias("currentMonitor")->hasAliasReferencesToResolve());
}

TEST_F(CreateReferenceTransform, GivesNewIdsEachTime)
{
    EXPECT_STRNE(byPath("looks/warm.ctf")->getId(), byPath("looks/warm.ctf")->getId());
    EXPECT_STRNE(byAlias("graphicsMonitor")->getId(), byAlias("graphicsMonitor")->getId());
}

TEST_F(CreateReferenceTransform, RefusesNullAndEmptyTextsAndLeavesTheHandle)
{
    TransformPtr transform = scaleBy(2.0F);
    Transform const* const before = transform.get();
    auto const fromPath = [&](char const* path)
    { return told(CreateReferenceTransformFromPath(BIT_DEPTH_8i, BIT_DEPTH_8i, path, BASE_PATH_VENDOR, transform)); };
    auto const fromAlias = [&](char const* alias)
    { return told(CreateReferenceTransformFromAlias(BIT_DEPTH_8i, BIT_DEPTH_8i, alias, transform)); };
    EXPECT_EQ(fromPath(nullptr), (Told{0x2030001, "NULL parameter: path"}));
    EXPECT_EQ(fromAlias(nullptr), (Told{0x2030001, "NULL parameter: alias"}));
    Told const noTarget{0x280001, "Reference 'none' requires Alias or Path attributes"};
    EXPECT_EQ(fromPath(""), noTarget);
    EXPECT_EQ(fromAlias(""), noTarget);
    EXPECT_EQ(CreateReferenceTransformFromAlias(BIT_DEPTH_8i, BIT_DEPTH_UNKNOWN, "a", transform).getErrorCode(), 0x210001U);
    EXPECT_EQ(transform.get(), before);
}

TEST_F(Reference, IsReadFromAFile)
{
    TransformPtr const transform =
        fromText(document("<Reference inBitDepth='32f' outBitDepth='32f' name='Screen' alias='graphicsMonitor'/>"));
    ASSERT_TRUE(transform);
    EXPECT_TRUE(transform->hasReferences());
    EXPECT_THAT(displayedOp(transform).own, testing::Contains("Alias: graphicsMonitor"));
}

} // namespace
