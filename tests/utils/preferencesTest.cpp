// Where a site keeps its transforms, and what short names (aliases) stand for.
#include "utils/preferences.h"

#include "support/failure.h"
#include "support/ownPreferences.h"
#include "utils/locations.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <tuple>
#include <vector>

using namespace Color;
using Tavrin::BASE_PATH_NONE;
using Tavrin::BASE_PATH_SHARED;
using Tavrin::BASE_PATH_VENDOR;
using testing::ElementsAre;
using testing::IsEmpty;

namespace
{

using Row = std::tuple<std::string, std::string, Tavrin::BasePath>;

std::vector<Row> rowsOf(ReferenceTable const& table)
{
    std::vector<Row> rows;
    for (auto const& [alias, info] : table.getAliasInfoMap())
        rows.emplace_back(alias, info.getPath(), info.getBasePath());
    return rows;
}

class Counter : public Observer
{
public:
    void update() override { ++m_updates; }

    int m_updates = 0;
};

Failure notFound(std::string const& alias)
{
    return {0x120001, "Alias '" + alias + "' not found."};
}

} // namespace

TEST(ReferenceTables, KeepAliasesInTheirOrder)
{
    ReferenceTable table;
    table.addAlias("z", {"/1", BASE_PATH_NONE});
    table.addAlias("a", {"2", BASE_PATH_SHARED});
    EXPECT_THAT(rowsOf(table), ElementsAre(Row("a", "2", BASE_PATH_SHARED), Row("z", "/1", BASE_PATH_NONE)));
    EXPECT_EQ(table.findAlias("a").getPath(), "2");
}

TEST(ReferenceTables, ReplaceAnAlias)
{
    ReferenceTable table;
    table.addAlias("a", {"1", BASE_PATH_SHARED});
    table.addAlias("a", {"/2", BASE_PATH_NONE});
    EXPECT_THAT(rowsOf(table), ElementsAre(Row("a", "/2", BASE_PATH_NONE)));
}

TEST(ReferenceTables, RefuseEmptyTexts)
{
    ReferenceTable table;
    EXPECT_EQ(failureOf([&] { table.addAlias("", {"", BASE_PATH_NONE}); }), (Failure{0x120002, "Alias cannot be empty."}));
    EXPECT_EQ(failureOf([&] { table.addAlias("a", {"", BASE_PATH_NONE}); }), (Failure{0x120003, "Path cannot be empty."}));
    EXPECT_THAT(rowsOf(table), IsEmpty());
}

TEST(ReferenceTables, RefuseUnknownAliases)
{
    ReferenceTable table;
    Counter observer;
    EXPECT_EQ(failureOf([&] { table.findAlias("a"); }), notFound("a"));
    EXPECT_EQ(failureOf([&] { table.findAlias(""); }), notFound(""));
    EXPECT_EQ(failureOf([&] { table.registerAlias("a", &observer); }), notFound("a"));
    EXPECT_EQ(failureOf([&] { table.deregisterAlias("a", &observer); }), notFound("a"));
}

TEST(ReferenceTables, TellObserversOfTheirAliasAlone)
{
    ReferenceTable table;
    Counter observer;
    table.addAlias("a", {"/1", BASE_PATH_NONE});
    table.addAlias("b", {"/1", BASE_PATH_NONE});
    table.registerAlias("a", &observer);
    table.addAlias("b", {"/2", BASE_PATH_NONE});
    EXPECT_EQ(observer.m_updates, 0);
    table.addAlias("a", {"/2", BASE_PATH_NONE});
    table.addAlias("a", {"/2", BASE_PATH_NONE}); // Told, though nothing is new.
    EXPECT_EQ(observer.m_updates, 2);
    table.deregisterAlias("a", &observer);
    table.addAlias("a", {"/3", BASE_PATH_NONE});
    EXPECT_EQ(observer.m_updates, 2);
}

TEST(ReferenceTables, DoNothingForAnEmptyAlias)
{
    ReferenceTable table;
    Counter observer;
    EXPECT_NO_THROW(table.registerAlias("", &observer));
    EXPECT_NO_THROW(table.deregisterAlias("", &observer));
}

TEST(ReferenceTables, TakeTheObserversOfANewAliasAndKeepThoseOfAnOldOne)
{
    ReferenceTable table;
    Counter first;
    Counter second;
    ReferenceTable::AliasInfo info("/1", BASE_PATH_NONE);
    info.addObserver(&first);
    table.addAlias("a", info);
    EXPECT_EQ(first.m_updates, 0);

    ReferenceTable::AliasInfo other("/2", BASE_PATH_NONE);
    other.addObserver(&second);
    table.addAlias("a", other);
    EXPECT_EQ(first.m_updates, 1);
    EXPECT_EQ(second.m_updates, 0);
}

TEST(PlainPreferences, BeginEmpty)
{
    Preferences const preferences;
    EXPECT_EQ(preferences.getStoredSharedPath(), "");
    EXPECT_THAT(rowsOf(preferences.getReferenceTable()), IsEmpty());
    EXPECT_FALSE(preferences.getAutoConfigureMonitorProfile());
}

TEST(PlainPreferences, HaveTheAliasesOfTheLibraryByDefault)
{
    Preferences const preferences("/shared", "/system");
    EXPECT_EQ(preferences.getStoredSharedPath(), "/shared");
    EXPECT_THAT(rowsOf(preferences.getReferenceTable()),
                ElementsAre(Row("OutputToSceneBridge", "/system/misc/identity.ctf", BASE_PATH_NONE),
                            Row("SceneToOutputBridge", "/system/RRT+ODT/ACES_to_CIE-XYZ_v0.1.1.ctf", BASE_PATH_NONE),
                            Row("broadcastMonitor", "/system/display/broadcast/CIE-XYZ_to_HD-video.ctf", BASE_PATH_NONE),
                            Row("defaultLook", "/system/misc/identity.ctf", BASE_PATH_NONE),
                            Row("graphicsMonitor", "/system/interchange/sRGB/CIE-XYZ_to_sRGB.ctf", BASE_PATH_NONE)));
}

TEST(PlainPreferences, KeepTheSharedPathUnderAnOverride)
{
    Preferences preferences;
    preferences.setSharedPath("/shared");
    {
        ScopedEnvironment const environment("TAVRIN_OVERRIDE_SHARED_PATH", "/other");
        EXPECT_EQ(preferences.getSharedPath(), "/other");
        EXPECT_EQ(preferences.getStoredSharedPath(), "/shared");
    }
    ScopedEnvironment const environment("TAVRIN_OVERRIDE_SHARED_PATH", "");
    EXPECT_EQ(preferences.getSharedPath(), "/shared");
}

TEST(PlainPreferences, RefuseAnEmptySharedPath)
{
    Preferences preferences;
    EXPECT_EQ(failureOf([&] { preferences.setSharedPath(""); }), (Failure{0x120005, "Shared path cannot be empty."}));
}

TEST(PlainPreferences, PassObserversToTheTable)
{
    Preferences preferences("/shared", "/system");
    Counter observer;
    preferences.registerAlias("defaultLook", &observer);
    preferences.getReferenceTable().addAlias("defaultLook", {"/a", BASE_PATH_NONE});
    preferences.deregisterAlias("defaultLook", &observer);
    preferences.getReferenceTable().addAlias("defaultLook", {"/b", BASE_PATH_NONE});
    EXPECT_EQ(observer.m_updates, 1);
}

TEST(GraphicsMonitor, FollowsTheSystemOnlyWhereThatIsWanted)
{
    Preferences preferences("/shared", "/system");
    EXPECT_FALSE(preferences.syncGraphicsMonitor("/profile.icc"));
    preferences.setAutoConfigureMonitorProfile(true);
    EXPECT_FALSE(preferences.syncGraphicsMonitor(""));
    EXPECT_EQ(preferences.getReferenceTable().findAlias("graphicsMonitor").getPath(),
              "/system/interchange/sRGB/CIE-XYZ_to_sRGB.ctf");
    EXPECT_TRUE(preferences.syncGraphicsMonitor("/profile.icc"));
    EXPECT_EQ(preferences.getReferenceTable().findAlias("graphicsMonitor").getPath(), "/profile.icc");
    EXPECT_FALSE(preferences.syncGraphicsMonitor("/profile.icc"));
}

TEST(GraphicsMonitor, LosesItsBasePathWhereItFollowsTheSystem)
{
    Preferences preferences;
    preferences.setAutoConfigureMonitorProfile(true);
    preferences.getReferenceTable().addAlias("graphicsMonitor", {"/profile.icc", BASE_PATH_VENDOR});
    EXPECT_TRUE(preferences.syncGraphicsMonitor("/profile.icc"));
    EXPECT_EQ(preferences.getReferenceTable().findAlias("graphicsMonitor").getBasePath(), BASE_PATH_NONE);
}

TEST(GraphicsMonitor, CannotFollowWithoutItsAlias)
{
    Preferences preferences;
    preferences.setAutoConfigureMonitorProfile(true);
    EXPECT_EQ(failureOf([&] { preferences.syncGraphicsMonitor("/profile.icc"); }), notFound("graphicsMonitor"));
}

class DefaultPaths : public OwnPreferencesTest
{
};

TEST_F(DefaultPaths, AreThereForThreeAliases)
{
    // Nothing has asked for the system's folder before.
    EXPECT_EQ(Utils::getDefaultPathForAlias("broadcastMonitor"), systemTransforms() + "/display/broadcast/CIE-XYZ_to_HD-video.ctf");
    EXPECT_EQ(Utils::getDefaultPathForAlias("defaultLook"), systemTransforms() + "/misc/identity.ctf");
    EXPECT_EQ(Utils::getDefaultPathForAlias("graphicsMonitor"), systemTransforms() + "/interchange/sRGB/CIE-XYZ_to_sRGB.ctf");
}

TEST_F(DefaultPaths, StayWhatTheyWereAtFirst)
{
    std::string const before = Utils::getDefaultPathForAlias("defaultLook");
    ScopedEnvironment const environment("TAVRIN_OVERRIDE_SYSTEM_TRANSFORM_LOCATION", "/other");
    Utils::setSystemPath("/other");
    EXPECT_EQ(Utils::getDefaultPathForAlias("defaultLook"), before);
}

TEST_F(DefaultPaths, AreThereForNoOtherAlias)
{
    for (std::string const alias : {"SceneToOutputBridge", "OutputToSceneBridge", "defaultlook"})
    {
        EXPECT_EQ(failureOf([&] { Utils::getDefaultPathForAlias(alias.c_str()); }),
                  (Failure{0x120004, "No default path for alias '" + alias + "'"}));
    }
    for (char const* const alias : {"", static_cast<char const*>(nullptr)})
        EXPECT_EQ(failureOf([&] { Utils::getDefaultPathForAlias(alias); }), (Failure{0x120002, "Alias cannot be empty."}));
}
