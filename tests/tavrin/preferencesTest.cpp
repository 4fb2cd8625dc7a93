// Locations, preferences and aliases, as a caller sees them.
#include <tavrin/tavrin.h>

#include "support/ownPreferences.h"
#include "transformFixtures.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>

using namespace Tavrin;
using testing::HasSubstr;
using testing::Not;

namespace
{

// A null or empty argument is what each of these names.
Told const kPathEmpty{0x120003, "Path cannot be empty."};
Told nullParameter(std::string const& name)
{
    return {0x2030001, "NULL parameter: " + name};
}
Told notFound(std::string const& alias)
{
    return {0x120001, "Alias '" + alias + "' not found."};
}

// Nothing but what configurePaths is told.
class ConfiguredPaths : public OwnPreferencesTest
{
    ScopedEnvironment const m_system{"TAVRIN_OVERRIDE_SYSTEM_TRANSFORM_LOCATION", ""};
    ScopedEnvironment const m_config{"TAVRIN_OVERRIDE_CONFIG_PATH", ""};
    ScopedEnvironment const m_shared{"TAVRIN_OVERRIDE_SHARED_PATH", ""};
};

class PublicPreferences : public OwnPreferencesTest
{
protected:
    struct Alias
    {
        Told told;
        std::string path;
        BasePath basePath = BASE_PATH_NONE;
    };
    static Alias find(char const* name)
    {
        char const* path = "";
        Alias alias;
        alias.told = told(findAliasInPreferences(name, path, alias.basePath));
        alias.path = path;
        return alias;
    }
    static std::string sharedPath()
    {
        char const* path = "";
        EXPECT_EQ(told(getSharedColorTransformPath(path)), kGood);
        return path;
    }
    static bool isAutomatic()
    {
        bool value = false;
        EXPECT_EQ(told(getAutoConfigureMonitorProfile(value)), kGood);
        return value;
    }
};

} // namespace

TEST_F(ConfiguredPaths, AreUsed)
{
    ASSERT_EQ(told(configurePaths(systemPath().c_str(), configFile().c_str(), shared().c_str())), kGood);
    EXPECT_EQ(getSystemColorTransformPath(), systemTransforms());
    EXPECT_EQ(getConfigFilePath(), configFile());
    EXPECT_EQ(getDefaultSharedColorTransformPath(), shared());
    char const* path = "";
    ASSERT_EQ(told(getSharedColorTransformPath(path)), kGood);
    EXPECT_EQ(path, shared());
    EXPECT_THAT(configuration(), HasSubstr("<SharedHome dir=\"" + shared() + "\" />"));
}

TEST_F(ConfiguredPaths, CannotBeEmpty)
{
    for (char const* const none : {static_cast<char const*>(nullptr), ""})
    {
        EXPECT_EQ(told(configurePaths(none, "/b", "/c")), kPathEmpty);
        EXPECT_EQ(told(configurePaths("/a", none, "/c")), kPathEmpty);
        EXPECT_EQ(told(configurePaths("/a", "/b", none)), kPathEmpty);
    }
}

TEST_F(ConfiguredPaths, ComeTooLateOnceThePreferencesAreLoaded)
{
    ASSERT_EQ(told(configurePaths(systemPath().c_str(), configFile().c_str(), shared().c_str())), kGood);
    char const* path = "";
    ASSERT_EQ(told(getSharedColorTransformPath(path)), kGood);
    EXPECT_EQ(told(configurePaths("/a", "/b", "/c")), Told(0x2030005, "The Tavrin configuration file is already loaded"));
    EXPECT_EQ(getConfigFilePath(), configFile());
}

TEST_F(PublicPreferences, TellTheSystemsTransformsOnceTheConfigurationFileWasAskedFor)
{
    EXPECT_STREQ(getSystemColorTransformPath(), "");
    EXPECT_EQ(getConfigFilePath(), configFile());
    EXPECT_EQ(getSystemColorTransformPath(), systemTransforms());
}

TEST_F(PublicPreferences, ComeBeforeConfiguredPathsInTheEnvironment)
{
    ASSERT_EQ(told(configurePaths("/a", "/b", "/c")), kGood);
    EXPECT_EQ(getSystemColorTransformPath(), systemTransforms());
    EXPECT_EQ(getConfigFilePath(), configFile());
    EXPECT_STREQ(getDefaultSharedColorTransformPath(), "/c");
}

TEST_F(PublicPreferences, StoreTheSharedPathAndNotItsOverride)
{
    ASSERT_EQ(told(setSharedColorTransformPath("/site")), kGood);
    EXPECT_EQ(sharedPath(), shared());
    EXPECT_THAT(configuration(), HasSubstr("<SharedHome dir=\"/site\" />"));
    EXPECT_THAT(configuration(), Not(HasSubstr(shared())));
    ScopedEnvironment const environment("TAVRIN_OVERRIDE_SHARED_PATH", "");
    EXPECT_EQ(sharedPath(), "/site");
}

TEST_F(PublicPreferences, RefuseASharedPathThatIsNone)
{
    EXPECT_EQ(told(setSharedColorTransformPath(nullptr)), nullParameter("path"));
    EXPECT_EQ(told(setSharedColorTransformPath("")), Told(0x120005, "Shared path cannot be empty."));
}

TEST_F(PublicPreferences, AddAndReplaceAliases)
{
    EXPECT_EQ(find("mine").told, notFound("mine"));
    ASSERT_EQ(told(addAliasInPreferences("mine", "a.ctf", BASE_PATH_SHARED)), kGood);
    EXPECT_EQ(find("mine").path, "a.ctf");
    EXPECT_EQ(find("mine").basePath, BASE_PATH_SHARED);
    EXPECT_THAT(configuration(), HasSubstr("<Ref alias=\"mine\" path=\"a.ctf\" basePath=\"Shared\" />"));
    ASSERT_EQ(told(addAliasInPreferences("mine", "/b.ctf", BASE_PATH_NONE)), kGood);
    EXPECT_EQ(find("mine").path, "/b.ctf");
    EXPECT_EQ(find("mine").basePath, BASE_PATH_NONE);
    EXPECT_THAT(configuration(), HasSubstr("<Ref alias=\"mine\" path=\"/b.ctf\" />"));
}

TEST_F(PublicPreferences, RefuseAliasesThatAreNone)
{
    EXPECT_EQ(find(nullptr).told, nullParameter("alias"));
    EXPECT_EQ(told(addAliasInPreferences(nullptr, nullptr, BASE_PATH_NONE)), nullParameter("alias"));
    EXPECT_EQ(told(addAliasInPreferences("a", nullptr, BASE_PATH_NONE)), nullParameter("path"));
    EXPECT_EQ(told(addAliasInPreferences("", "/a", BASE_PATH_NONE)), Told(0x120002, "Alias cannot be empty."));
    EXPECT_EQ(told(addAliasInPreferences("a", "", BASE_PATH_NONE)), kPathEmpty);
    EXPECT_EQ(told(addAliasInPreferences("a", "/a", static_cast<BasePath>(3))), Told(0x2020004, "Invalid parameter"));
    EXPECT_EQ(find("a").told, notFound("a"));
}

// They would make the configuration file one that can't be read, and the next start would replace it by the defaults.
TEST_F(PublicPreferences, RefuseCharactersThatTheFileCannotHold)
{
    EXPECT_EQ(told(addAliasInPreferences("a\n", "/a", BASE_PATH_NONE)), Told(0x420008, "Characters 'a\n' illegal"));
    EXPECT_EQ(told(addAliasInPreferences("a", "/\x01", BASE_PATH_NONE)), Told(0x420008, "Characters '/\x01' illegal"));
    EXPECT_EQ(told(setSharedColorTransformPath("/caf\xe9")), Told(0x420008, "Characters '/caf\xe9' illegal"));
    EXPECT_EQ(find("a").told, notFound("a"));
}

TEST_F(PublicPreferences, KnowTheFilesThatComeWithTheLibrary)
{
    char const* path = "";
    ASSERT_EQ(told(getDefaultPathForAlias("defaultLook", path)), kGood);
    EXPECT_EQ(path, systemTransforms() + "/misc/identity.ctf");
    EXPECT_EQ(find("defaultLook").path, path);
    EXPECT_EQ(told(getDefaultPathForAlias("SceneToOutputBridge", path)),
              Told(0x120004, "No default path for alias 'SceneToOutputBridge'"));
    EXPECT_EQ(told(getDefaultPathForAlias(nullptr, path)), Told(0x120002, "Alias cannot be empty."));
}

TEST_F(PublicPreferences, WriteTheFileOnlyWhenTheMonitorsProfileChangesItsWay)
{
    ASSERT_EQ(told(setAutoConfigureMonitorProfile(true)), kGood);
    EXPECT_THAT(configuration(), HasSubstr("<AutoConfigure graphicsMonitor=\"true\" />"));
    EXPECT_TRUE(isAutomatic());
    std::filesystem::remove(configFile());
    ASSERT_EQ(told(setAutoConfigureMonitorProfile(true)), kGood);
    EXPECT_FALSE(std::filesystem::exists(configFile()));
}

TEST_F(PublicPreferences, RestoreTheMonitorThatIsNoLongerAutomatic)
{
    ASSERT_EQ(told(setAutoConfigureMonitorProfile(true)), kGood);
    ASSERT_EQ(told(addAliasInPreferences("graphicsMonitor", "mine.ctf", BASE_PATH_SHARED)), kGood);
    ASSERT_EQ(told(setAutoConfigureMonitorProfile(false)), kGood);
    EXPECT_FALSE(isAutomatic());
    EXPECT_EQ(find("graphicsMonitor").path, systemTransforms() + "/interchange/sRGB/CIE-XYZ_to_sRGB.ctf");
    EXPECT_EQ(find("graphicsMonitor").basePath, BASE_PATH_NONE);
    EXPECT_THAT(configuration(), HasSubstr("<AutoConfigure graphicsMonitor=\"false\" />"));
}

TEST_F(PublicPreferences, TellThatTheyCannotBeSaved)
{
    ASSERT_EQ(sharedPath(), shared());
    std::filesystem::remove(configFile());
    std::filesystem::create_directory(configFile());
    EXPECT_EQ(told(setSharedColorTransformPath("/site")), Told(0x430002, "Unable to write file: '" + configFile() + "'"));
}
