// The command 'prefs', with all locations in the folder of the test.
#include "programRun.h"
#include "support/scopedEnvironment.h"

#include <filesystem>

using testing::HasSubstr;

namespace
{

class PrefsCommand : public ProgramTest
{
protected:
    PrefsCommand()
    {
        // What the library wants of an installation before it looks at shared transforms.
        std::filesystem::create_directories(folder / "system/transforms");
        std::filesystem::create_directory(folder / "shared");
    }

    // What the program prints when it does its work.
    std::string outputOf(std::vector<std::string> const& arguments)
    {
        const Outcome outcome = run(arguments);
        EXPECT_EQ(outcome.status, 0);
        EXPECT_EQ(outcome.err, "");
        return outcome.out;
    }
    std::string configuration() const { return readText(folder / "tavrinConfig.xml"); }

    const ScopedEnvironment m_system{"TAVRIN_OVERRIDE_SYSTEM_TRANSFORM_LOCATION", (folder / "system").c_str()};
    const ScopedEnvironment m_config{"TAVRIN_OVERRIDE_CONFIG_PATH", (folder / "tavrinConfig.xml").c_str()};
    const ScopedEnvironment m_shared{"TAVRIN_OVERRIDE_SHARED_PATH", ""};
};

TEST_F(PrefsCommand, ShowsLocationsAndTheAliasesThatTheLibraryAsksFor)
{
    const std::string transforms = folder / "system/transforms";
    EXPECT_EQ(outputOf({"prefs", "show"}), "Configuration file    " + folder / "tavrinConfig.xml" +
                                               "\n"
                                               "Installed transforms  " +
                                               transforms +
                                               "\n"
                                               "Shared transforms     /opt/Norvane/Halvard/Tavrin/Shared/transforms\n"
                                               "graphicsMonitor       " +
                                               transforms +
                                               "/interchange/sRGB/CIE-XYZ_to_sRGB.ctf\n"
                                               "broadcastMonitor      " +
                                               transforms +
                                               "/display/broadcast/CIE-XYZ_to_HD-video.ctf\n"
                                               "defaultLook           " +
                                               transforms +
                                               "/misc/identity.ctf\n"
                                               "SceneToOutputBridge   " +
                                               transforms +
                                               "/RRT+ODT/ACES_to_CIE-XYZ_v0.1.1.ctf\n"
                                               "OutputToSceneBridge   " +
                                               transforms + "/misc/identity.ctf\n");
}

TEST_F(PrefsCommand, SetsAnAliasToAFileWhereverTheProgramRuns)
{
    EXPECT_EQ(outputOf({"prefs", "set-alias", "mine", "looks/../a.ctf"}), "");
    EXPECT_EQ(outputOf({"prefs", "show", "mine"}), "mine                  " + folder / "a.ctf" + "\n");
    EXPECT_EQ(outputOf({"prefs", "set-alias", "mine", "/b.ctf"}), "");
    EXPECT_EQ(outputOf({"prefs", "show", "mine", "mine"}), "mine                  /b.ctf\nmine                  /b.ctf\n");
}

TEST_F(PrefsCommand, SetsAnAliasBelowAKnownFolder)
{
    EXPECT_EQ(outputOf({"prefs", "set-alias", "mine", "a.ctf", "--in", "shared"}), "");
    EXPECT_EQ(outputOf({"prefs", "show", "mine"}), "mine                  a.ctf (Shared)\n");
    EXPECT_EQ(outputOf({"prefs", "set-alias", "mine", "b.ctf", "--in", "installed"}), "");
    EXPECT_EQ(outputOf({"prefs", "show", "mine"}), "mine                  b.ctf (Norvane)\n");
    EXPECT_THAT(configuration(), HasSubstr("<Ref alias=\"mine\" path=\"b.ctf\" basePath=\"Norvane\" />"));
}

TEST_F(PrefsCommand, SetsAnAliasThatTransformsFollow)
{
    writeIdentityTransform(folder / "identity.ctf");
    writeText(folder / "look.ctf", "<ProcessList version=\"1.3\" id=\"a\">"
                                   "<Reference inBitDepth=\"32f\" outBitDepth=\"32f\" alias=\"mine\"/></ProcessList>");
    expectFailure(run({"info", "look.ctf"}), 1, HasSubstr("Alias 'mine' not found."));
    outputOf({"prefs", "set-alias", "mine", "identity.ctf"});
    EXPECT_THAT(outputOf({"info", "look.ctf"}), HasSubstr("mine"));
}

TEST_F(PrefsCommand, SetsTheFolderOfSharedTransforms)
{
    // The catalogs are made anew, which wants more than an empty installation; the path is stored all the same.
    run({"prefs", "set-shared", "shared"});
    EXPECT_THAT(configuration(), HasSubstr("<SharedHome dir=\"" + folder / "shared" + "\" />"));
    EXPECT_THAT(outputOf({"prefs", "show"}), HasSubstr("Shared transforms     " + folder / "shared" + "\n"));
}

TEST_F(PrefsCommand, TellsWhatCannotBeDone)
{
    expectFailure(run({"prefs", "show", "nobody"}), 1, HasSubstr("'nobody' stands for: Alias 'nobody' not found."));
    expectFailure(run({"prefs", "set-alias", "", "/a.ctf"}), 1, HasSubstr("Alias cannot be empty."));
    const ScopedEnvironment nowhere("TAVRIN_OVERRIDE_CONFIG_PATH", "/dev/null/tavrinConfig.xml");
    expectFailure(run({"prefs", "show"}), 1, HasSubstr("Invalid file path: '/dev/null/tavrinConfig.xml'"));
}

TEST_F(PrefsCommand, NeedsToBeToldWhatToDo)
{
    EXPECT_EQ(run({"prefs"}).status, 2);
    EXPECT_EQ(run({"prefs", "forget"}).status, 2);
    EXPECT_EQ(run({"prefs", "set-alias", "mine"}).status, 2);
    EXPECT_EQ(run({"prefs", "set-alias", "mine", "a.ctf", "--in", "elsewhere"}).status, 2);
    EXPECT_EQ(run({"prefs", "set-shared"}).status, 2);
}

} // namespace
