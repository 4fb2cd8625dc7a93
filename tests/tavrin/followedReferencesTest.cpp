// References that are followed, and aliases whose changes reach the transforms that depend on them.
#include <tavrin/tavrin.h>

#include "support/ownPreferences.h"
#include "transformFixtures.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <filesystem>
#include <numeric>
#include <string>
#include <thread>
#include <vector>

using namespace Tavrin;
using testing::StartsWith;

namespace
{

// Multiplies by this factor.
std::string scale(std::string const& factor)
{
    return "<Matrix inBitDepth='32f' outBitDepth='32f'>\n<Array dim='3 3 3'>\n" + factor + " 0 0\n0 " + factor + " 0\n0 0 " +
           factor + "\n</Array>\n</Matrix>\n";
}

std::string reference(std::string const& attributes, std::string const& children = "")
{
    return "<Reference inBitDepth='32f' outBitDepth='32f' " + attributes + ">" + children + "</Reference>\n";
}

std::string const kByAlias = reference("name='Look' alias='look'");

class FollowedReferences : public OwnPreferencesTest
{
protected:
    // The alias "look" stands for a file that multiplies by 2.
    void SetUp() override
    {
        OwnPreferencesTest::SetUp();
        if (!IsSkipped())
            setAlias("look", write("two.ctf", scale("2")));
    }

    std::string write(std::string const& name, std::string const& elements) const
    {
        return m_folder.write(name, document(elements));
    }
    static void setAlias(std::string const& alias, std::string const& path, BasePath basePath = BASE_PATH_NONE)
    {
        EXPECT_EQ(told(addAliasInPreferences(alias.c_str(), path.c_str(), basePath)), kGood);
    }
    static Told toldByLoad(std::string const& path, TransformPtr& transform)
    {
        return told(loadColorTransform(path.c_str(), transform));
    }
    // A transform from a file with these elements, not yet finalized.
    TransformPtr load(std::string const& elements) const
    {
        TransformPtr transform;
        EXPECT_EQ(toldByLoad(write("root.ctf", elements), transform), kGood);
        return transform;
    }
    static Told finalize(TransformPtr const& transform, ResolveFlags flags, OptimizerFlags more = 0)
    {
        return told(transform->finalize(PF_RGBA_32f, PF_RGBA_32f, RENDERER_CPU, OPTIMIZER_DEFAULT_THRESHOLD | more, flags));
    }
    TransformPtr finalized(std::string const& elements) const
    {
        TransformPtr const transform = load(elements);
        EXPECT_EQ(finalize(transform, RESOLVE_BROADCAST_MONITOR), kGood);
        return transform;
    }
    // What 1 becomes; 0 where nothing is rendered.
    static float gainOf(TransformPtr const& transform)
    {
        Pixels const pixels = render(transform, {1, 1, 1, 1});
        return pixels.empty() ? 0 : pixels.front();
    }
};

} // namespace

TEST_F(FollowedReferences, StandForTheOperatorsOfTheirFile)
{
    std::string const three = write("three.ctf", scale("3"));
    write("shared/five.ctf", scale("5"));
    write("system/transforms/seven.ctf", scale("7"));
    TransformPtr const transform =
        finalized(kByAlias + reference("path='" + three + "'") + reference("path='five.ctf' basePath='Shared'") +
                  reference("path='seven.ctf' basePath='Norvane'"));
    EXPECT_EQ(gainOf(transform), 2 * 3 * 5 * 7);
}

TEST_F(FollowedReferences, MayStandInATextOrBeMadeInCode)
{
    TransformPtr transform = fromText(document(kByAlias));
    ASSERT_EQ(told(finalizeForCpu(transform)), kGood);
    EXPECT_EQ(gainOf(transform), 2);
    ASSERT_EQ(told(CreateReferenceTransformFromAlias(BIT_DEPTH_32f, BIT_DEPTH_32f, "look", transform)), kGood);
    ASSERT_EQ(told(finalizeForCpu(transform)), kGood);
    EXPECT_EQ(gainOf(transform), 2);
    write("shared/five.ctf", scale("5"));
    ASSERT_EQ(told(CreateReferenceTransformFromPath(BIT_DEPTH_32f, BIT_DEPTH_32f, "five.ctf", BASE_PATH_SHARED, transform)), kGood);
    ASSERT_EQ(told(finalizeForCpu(transform)), kGood);
    EXPECT_EQ(gainOf(transform), 5);
}

TEST_F(FollowedReferences, FailTheLoadAndLeaveTheHandle)
{
    TransformPtr transform = scaleBy(4);
    Transform const* const before = transform.get();
    EXPECT_EQ(toldByLoad(write("a.ctf", reference("alias='nobody'")), transform), Told(0x120001, "Alias 'nobody' not found."));
    EXPECT_EQ(toldByLoad(write("a.ctf", reference("path='b.ctf'")), transform),
              Told(0x440001, "Reference missing Base Path attribute"));
    std::string const missing = m_folder.file("missing.ctf");
    EXPECT_EQ(toldByLoad(write("a.ctf", reference("name='Lost' path='" + missing + "'")), transform),
              Told(0x440003, "Failed to load reference Lost: No file found: '" + missing + "'"));
    std::string const itself = m_folder.file("a.ctf");
    EXPECT_EQ(toldByLoad(write("a.ctf", reference("path='" + itself + "'")), transform),
              Told(0x440002, "Reference cycle detected: '" + itself + "'"));
    EXPECT_EQ(transform.get(), before);
}

TEST_F(FollowedReferences, FailWhereTheSharedFolderIsOfNoUse)
{
    TransformPtr transform;
    std::string const root = write("root.ctf", reference("name='Look' path='a.ctf' basePath='Shared'"));
    std::string const path = shared() + "/a.ctf";
    std::string const failed = "Failed to load reference Look: ";
    EXPECT_EQ(toldByLoad(root, transform), Told(0x440003, failed + "No file found: '" + path + "'"));

    m_folder.write("shared/a.ctf", "no transform");
    EXPECT_THAT(toldByLoad(root, transform).second, StartsWith(failed + "XML Parsing error"));

    std::filesystem::remove_all(shared());
    EXPECT_EQ(toldByLoad(root, transform), Told(0x440003, failed + "No file found: '" + path + "'"));

    m_folder.write("shared", "a file in its place");
    EXPECT_EQ(toldByLoad(root, transform), Told(0x440003, failed + "No file found: '" + path + "'"));
}

TEST_F(FollowedReferences, FindSiblingsInTheInstallationOfTheirFile)
{
    std::filesystem::create_directories(m_folder.file("Norvane/Halvard/Tavrin/2014.1/transforms/display"));
    write("Norvane/Halvard/Tavrin/2014.1/transforms/three.ctf", scale("3"));
    std::string const path = write("Norvane/Halvard/Tavrin/2014.1/transforms/display/a.ctf",
                                   reference("path='three.ctf' basePath='Norvane'") + kByAlias);
    TransformPtr transform;
    ASSERT_EQ(toldByLoad(path, transform), kGood);
    TransformPtr const copy = transform->clone();
    for (TransformPtr const& each : {transform, copy})
    {
        ASSERT_EQ(told(finalizeForCpu(each)), kGood);
        EXPECT_EQ(gainOf(each), 2 * 3);
    }
    setAlias("look", write("five.ctf", scale("5")));
    EXPECT_EQ(gainOf(transform), 5 * 3);
    EXPECT_EQ(gainOf(copy), 5 * 3);
}

TEST_F(FollowedReferences, FollowTheirAlias)
{
    TransformPtr const transform = finalized(scale("10") + kByAlias);
    EXPECT_EQ(gainOf(transform), 20);
    setAlias("look", write("three.ctf", scale("3")));
    EXPECT_EQ(gainOf(transform), 30);
    write("shared/five.ctf", scale("5"));
    setAlias("look", "five.ctf", BASE_PATH_SHARED);
    EXPECT_EQ(gainOf(transform), 50);
}

TEST_F(FollowedReferences, FollowAliasesWithinTheirFiles)
{
    setAlias("inner", write("three.ctf", scale("3")));
    setAlias("look", write("outer.ctf", reference("alias='inner'") + scale("2")));
    TransformPtr const transform = finalized(kByAlias);
    EXPECT_EQ(gainOf(transform), 6);
    setAlias("inner", write("five.ctf", scale("5")));
    EXPECT_EQ(gainOf(transform), 10);
}

TEST_F(FollowedReferences, FollowAliasesThatComeInThroughAnotherOne)
{
    setAlias("inner", write("three.ctf", scale("3")));
    TransformPtr const transform = finalized(kByAlias);
    setAlias("look", write("outer.ctf", reference("alias='inner'")));
    EXPECT_EQ(gainOf(transform), 3);
    setAlias("inner", write("five.ctf", scale("5")));
    EXPECT_EQ(gainOf(transform), 5);

    // And leave an alias alone that has gone again.
    setAlias("look", m_folder.file("five.ctf"));
    std::filesystem::remove(m_folder.file("five.ctf"));
    setAlias("inner", m_folder.file("three.ctf"));
    EXPECT_EQ(gainOf(transform), 5);
}

TEST_F(FollowedReferences, RenderNothingWhileTheirAliasLeadsNowhere)
{
    TransformPtr const transform = finalized(kByAlias);
    setAlias("look", m_folder.file("missing.ctf"));
    EXPECT_EQ(told(transform->applyCPU(nullptr, ROI(0, 0, 1, 1), nullptr)), kNoCpuRenderer);
    EXPECT_FALSE(transform->clone());
    setAlias("look", m_folder.file("two.ctf"));
    EXPECT_EQ(gainOf(transform), 2);
}

TEST_F(FollowedReferences, CannotTakeOtherFlagsWhileTheyLeadNowhere)
{
    TransformPtr const transform = finalized(kByAlias);
    setAlias("look", m_folder.file("missing.ctf"));
    EXPECT_EQ(finalize(transform, RESOLVE_GRAPHICS_MONITOR), Told(0x2030004, "Transform has unresolved references."));
    setAlias("look", m_folder.file("two.ctf"));
    EXPECT_EQ(finalize(transform, RESOLVE_BROADCAST_MONITOR), kGood);
    EXPECT_EQ(gainOf(transform), 2);
    setAlias("look", write("three.ctf", scale("3")));
    EXPECT_EQ(gainOf(transform), 3);
}

TEST_F(FollowedReferences, ToTheCurrentMonitorFollowTheFlags)
{
    setAlias("graphicsMonitor", m_folder.file("two.ctf"));
    setAlias("broadcastMonitor", write("three.ctf", scale("3")));
    TransformPtr const transform = load(reference("alias='currentMonitor'"));
    EXPECT_TRUE(transform->hasAliasReferencesToResolve());
    EXPECT_EQ(finalize(transform, RESOLVE_BROADCAST_MONITOR), kGood);
    EXPECT_EQ(gainOf(transform), 3);
    EXPECT_EQ(finalize(transform, RESOLVE_GRAPHICS_MONITOR), kGood);
    EXPECT_EQ(gainOf(transform), 2);
    setAlias("graphicsMonitor", write("five.ctf", scale("5")));
    EXPECT_EQ(gainOf(transform), 5);
    EXPECT_EQ(finalize(transform, 2), Told(0x280003, "Reference 'Reference' not an alias"));
    EXPECT_EQ(finalize(transform, RESOLVE_GRAPHICS_MONITOR), kGood);
    EXPECT_EQ(gainOf(transform), 5);
}

TEST_F(FollowedReferences, ToTheCurrentMonitorFollowTheFlagsInCopiesToo)
{
    setAlias("graphicsMonitor", m_folder.file("two.ctf"));
    setAlias("broadcastMonitor", write("three.ctf", scale("3")));
    TransformPtr const transform = finalized(reference("alias='currentMonitor'"));
    TransformPtr joined;
    ASSERT_EQ(told(concatenateTransforms(transform, transform, joined)), kGood);
    TransformPtr const copy = transform->clone();
    for (auto const& [flags, gain] : {std::pair(RESOLVE_BROADCAST_MONITOR, 3.0F), std::pair(RESOLVE_GRAPHICS_MONITOR, 2.0F)})
    {
        EXPECT_EQ(finalize(copy, flags), kGood);
        EXPECT_EQ(gainOf(copy), gain);
        EXPECT_EQ(finalize(joined, flags), kGood);
        EXPECT_EQ(gainOf(joined), gain * gain);
    }
}

TEST_F(FollowedReferences, AreReadAnewWhenAskedTo)
{
    TransformPtr const transform = finalized(kByAlias);
    ASSERT_EQ(std::system(("sed -i 's/2 0 0/9 0 0/' '" + m_folder.file("two.ctf") + "'").c_str()), 0);
    EXPECT_EQ(told(finalizeForCpu(transform)), kGood);
    EXPECT_EQ(gainOf(transform), 2); // Still what was read.
    transform->update();
    EXPECT_EQ(gainOf(transform), 9);
}

TEST_F(FollowedReferences, AreResolvedButNotRenderedBeforeTheFirstFinalize)
{
    TransformPtr const transform = load(kByAlias);
    setAlias("look", write("three.ctf", scale("3")));
    EXPECT_EQ(told(transform->applyCPU(nullptr, ROI(0, 0, 1, 1), nullptr)), kNoCpuRenderer);
    EXPECT_EQ(told(finalizeForCpu(transform)), kGood);
    EXPECT_EQ(gainOf(transform), 3);
}

TEST_F(FollowedReferences, PassTheirSwitchOn)
{
    TransformPtr const transform = load(reference("alias='look'", "<DynamicParameter param='LOOK_SWITCH'/>"));
    ASSERT_EQ(finalize(transform, RESOLVE_BROADCAST_MONITOR, OPTIMIZER_KEEP_DYNAMIC), kGood);
    EXPECT_EQ(gainOf(transform), 2);
    DynamicProperty bypass;
    bypass.id = DynamicProperty::BYPASS;
    bypass.value = true;
    ASSERT_EQ(told(transform->setDynamicProperty(bypass)), kGood);
    EXPECT_EQ(gainOf(transform), 1);
    setAlias("look", write("three.ctf", scale("3"))); // The switch stays where it is.
    EXPECT_EQ(gainOf(transform), 1);
    bypass.value = false;
    ASSERT_EQ(told(transform->setDynamicProperty(bypass)), kGood);
    EXPECT_EQ(gainOf(transform), 3);
}

// Whatever is dropped when, a change of the alias reaches those that are left and nobody else.
TEST_F(FollowedReferences, AreDroppedInAnyOrder)
{
    std::string const two = m_folder.file("two.ctf");
    std::string const three = write("three.ctf", scale("3"));
    std::array<std::size_t, 4> order{0, 1, 2, 3};
    do
    {
        setAlias("look", two);
        std::array<TransformPtr, 4> transforms{finalized(kByAlias), TransformPtr(), fromText(document(kByAlias)), load(kByAlias)};
        transforms[1] = transforms[0]->clone();
        ASSERT_EQ(told(concatenateTransforms(transforms[0], transforms[2], transforms[3])), kGood);
        for (std::size_t const dropped : order)
        {
            transforms[dropped].reset();
            for (std::string const& path : {m_folder.file("missing.ctf"), three})
                setAlias("look", path);
            EXPECT_EQ(transforms[0] ? gainOf(transforms[0]) : 3, 3);
        }
    } while (std::next_permutation(order.begin(), order.end()));
}

TEST_F(FollowedReferences, AreDroppedWhileTheyLeadNowhere)
{
    TransformPtr transform = finalized(kByAlias);
    setAlias("look", m_folder.file("missing.ctf"));
    transform.reset();
    setAlias("look", m_folder.file("two.ctf"));
    transform = finalized(kByAlias);
    EXPECT_EQ(gainOf(transform), 2);
}

// Rendering is what must not overlap with a change.
TEST_F(FollowedReferences, AreLoadedAndFinalizedByThreadsWhileAnotherOneChangesTheirAlias)
{
    constexpr int kRounds = 20;
    // Not the file of the transform below, which is written while the threads read.
    std::string const root = write("readByThreads.ctf", kByAlias);
    std::string const paths[] = {m_folder.file("two.ctf"), write("three.ctf", scale("3"))};
    std::vector<std::thread> threads;
    for (int i = 0; i < 2; ++i)
    {
        threads.emplace_back(
            [&]
            {
                for (int round = 0; round < kRounds; ++round)
                {
                    TransformPtr transform;
                    EXPECT_EQ(toldByLoad(root, transform), kGood);
                    EXPECT_EQ(told(finalizeForCpu(transform)), kGood);
                }
            });
    }
    TransformPtr const kept = finalized(kByAlias);
    for (int round = 0; round < kRounds; ++round)
    {
        setAlias("look", paths[round % 2]);
        EXPECT_EQ(gainOf(kept), round % 2 == 0 ? 2 : 3);
    }
    for (std::thread& thread : threads)
        thread.join();
}
