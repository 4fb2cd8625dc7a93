// Where things are on this machine.
#include "utils/locations.h"

#include "support/failure.h"
#include "support/ownPreferences.h"

#include <gtest/gtest.h>

#include <string>

using namespace Color::Utils;

namespace
{

// Nothing is overridden here; no file is touched.
class Locations : public OwnProcessTest
{
    ScopedEnvironment const m_system{"TAVRIN_OVERRIDE_SYSTEM_TRANSFORM_LOCATION", ""};
    ScopedEnvironment const m_config{"TAVRIN_OVERRIDE_CONFIG_PATH", ""};
    ScopedEnvironment const m_shared{"TAVRIN_OVERRIDE_SHARED_PATH", ""};
};

std::string const kDefaultSystem = "/opt/Norvane/Halvard/Tavrin/2015.0.pr36";
Failure const kEmpty{0x120003, "Path cannot be empty."};

} // namespace

TEST_F(Locations, HaveDefaults)
{
    EXPECT_EQ(getSystemPath(), kDefaultSystem);
    EXPECT_EQ(getSystemColorTransformPath(), kDefaultSystem + "/transforms");
    EXPECT_EQ(getConfigFilePath(), kDefaultSystem + "/tavrinConfig.xml");
    EXPECT_EQ(getDefaultSharedPath(), "/opt/Norvane/Halvard/Tavrin/Shared/transforms");
}

TEST_F(Locations, OfTheSystemsTransformsIsUnknownUntilTheConfigurationFileIsAskedFor)
{
    EXPECT_EQ(getSystemColorTransformPath(), "");
    EXPECT_NE(getDefaultSharedPath(), "");
    EXPECT_EQ(getSystemColorTransformPath(), "");
    EXPECT_NE(getConfigFilePath(), "");
    EXPECT_EQ(getSystemColorTransformPath(), kDefaultSystem + "/transforms");
}

TEST_F(Locations, AreWhatTheyAreSetTo)
{
    setSystemPath("/system/");
    setConfigFilePath("/config/file");
    setDefaultSharedPath("/shared");
    EXPECT_EQ(getSystemPath(), "/system/");
    EXPECT_EQ(getSystemColorTransformPath(), "/system/transforms");
    EXPECT_EQ(getConfigFilePath(), "/config/file");
    EXPECT_EQ(getDefaultSharedPath(), "/shared");
}

TEST_F(Locations, OfTheConfigurationFileFollowsTheSystem)
{
    setSystemPath("/system");
    EXPECT_EQ(getConfigFilePath(), "/system/tavrinConfig.xml");
}

TEST_F(Locations, OfTheSystemIsOverriddenByTheEnvironment)
{
    ScopedEnvironment const environment("TAVRIN_OVERRIDE_SYSTEM_TRANSFORM_LOCATION", "/other");
    EXPECT_EQ(getSystemPath(), "/other"); // The default is overridden too.
    setSystemPath("/system");
    EXPECT_EQ(getSystemPath(), "/other");
    EXPECT_EQ(getSystemColorTransformPath(), "/other/transforms");
}

TEST_F(Locations, OfTheConfigurationFileKeepsAnOverride)
{
    {
        ScopedEnvironment const environment("TAVRIN_OVERRIDE_CONFIG_PATH", "/other/file");
        setConfigFilePath("/config/file");
    }
    EXPECT_EQ(getConfigFilePath(), "/other/file");
}

TEST_F(Locations, OfTheSharedTransformsByDefaultIsNotOverridden)
{
    ScopedEnvironment const environment("TAVRIN_OVERRIDE_SHARED_PATH", "/other");
    setDefaultSharedPath("/shared");
    EXPECT_EQ(getDefaultSharedPath(), "/shared");
}

TEST_F(Locations, CannotBeEmptyEvenWhereTheyAreOverridden)
{
    ScopedEnvironment const config("TAVRIN_OVERRIDE_CONFIG_PATH", "/other");
    ScopedEnvironment const system("TAVRIN_OVERRIDE_SYSTEM_TRANSFORM_LOCATION", "/other");
    for (auto const set : {&setSystemPath, &setConfigFilePath, &setDefaultSharedPath})
    {
        EXPECT_EQ(failureOf([&] { set(nullptr); }), kEmpty);
        EXPECT_EQ(failureOf([&] { set(""); }), kEmpty);
    }
    EXPECT_EQ(getSystemColorTransformPath(), "");
}

TEST_F(Locations, OfTheMonitorProfileIsUnknownToTheSystem)
{
    EXPECT_EQ(getGraphicsMonitorPathFromOS(), "");
}
