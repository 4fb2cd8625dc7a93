// What is written appears whole or not at all, and what was there before stays until then.
#include "pictureFiles.h"
#include "programRun.h"

#include <csignal>
#include <filesystem>

#include <sys/stat.h>

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::HasSubstr;

namespace
{

// As a gtest parameter: the extension of the written file.
class OutputFiles : public ProgramTest, public testing::WithParamInterface<char const*>
{
protected:
    void SetUp() override
    {
        writeIdentityTransform(folder / "none.ctf");
        ASSERT_EQ(run({"chart", "in.exr", "--size", "160x90"}).status, 0);
        out = std::string("out.") + GetParam();
    }

    std::string out;
};

TEST_P(OutputFiles, AFullDiskLeavesTheOldFile)
{
    writeText(folder / out, "something old");
    // The picture needs more than that in every type.
    const Outcome outcome = runProgram(folder, {"apply", "none.ctf", "in.exr", out}, 2500);
    expectFailure(outcome, 1, "tavrin: cannot write '" + out + "': File too large");
    EXPECT_TRUE(readText(folder / out) == "something old");
    EXPECT_THAT(folder.names(), ElementsAre("in.exr", "none.ctf", out));
}

TEST_P(OutputFiles, AFullDiskLeavesNoNewFile)
{
    expectFailure(runProgram(folder, {"chart", out}, 2500), 1, "tavrin: cannot write '" + out + "': File too large");
    EXPECT_THAT(folder.names(), ElementsAre("in.exr", "none.ctf"));
}

TEST_P(OutputFiles, ReplaceAnOldFileAndKeepItsPermissions)
{
    writeText(folder / out, "something old");
    ASSERT_EQ(::chmod((folder / out).c_str(), 0640), 0);
    ASSERT_EQ(run({"apply", "none.ctf", "in.exr", out}).status, 0);
    EXPECT_GT(fs::file_size(folder / out), 2500u);
    EXPECT_EQ(fs::status(folder / out).permissions(), fs::perms(0640));
    EXPECT_THAT(folder.names(), ElementsAre("in.exr", "none.ctf", out));
}

INSTANTIATE_TEST_SUITE_P(Types, OutputFiles, testing::Values("dpx", "exr", "png", "tif"),
                         [](auto const& info) { return std::string(info.param); });

class OutputFile : public ProgramTest
{
protected:
    void SetUp() override
    {
        writeIdentityTransform(folder / "none.ctf");
        ASSERT_EQ(run({"chart", "in.exr", "--size", "160x90"}).status, 0);
    }
};

TEST_F(OutputFile, MayBeTheReadFile)
{
    const PictureHalf before = readExrFile<Imath::half>(folder / "in.exr");
    ASSERT_EQ(run({"apply", "none.ctf", "in.exr", "in.exr"}).status, 0);
    EXPECT_TRUE(readExrFile<Imath::half>(folder / "in.exr") == before);
}

TEST_F(OutputFile, IsLostOnNoFailureEvenWhenItIsTheReadFile)
{
    const std::string before = readText(folder / "in.exr");
    EXPECT_EQ(runProgram(folder, {"apply", "none.ctf", "in.exr", "in.exr"}, 2500).status, 1);
    EXPECT_TRUE(readText(folder / "in.exr") == before);
}

TEST_F(OutputFile, BehindASymbolicLinkIsReplacedThere)
{
    writeText(folder / "target.png", "something old");
    fs::create_symlink("target.png", folder / "link.png");
    ASSERT_EQ(run({"apply", "none.ctf", "in.exr", "link.png"}).status, 0);
    EXPECT_TRUE(fs::is_symlink(folder / "link.png"));
    EXPECT_EQ(readPngFile<std::uint16_t>(folder / "target.png").width, 160u);
}

TEST_F(OutputFile, InAMissingFolderIsRefused)
{
    expectFailure(run({"apply", "none.ctf", "in.exr", "gone/out.png"}), 1,
                  "tavrin: cannot write 'gone/out.png': No such file or directory");
    EXPECT_FALSE(fs::exists(folder / "gone"));
}

TEST_F(OutputFile, ThatIsAFolderIsRefused)
{
    fs::create_directory(folder / "out.png");
    expectFailure(run({"apply", "none.ctf", "in.exr", "out.png"}), 1, "tavrin: cannot write 'out.png': it is not a regular file");
}

TEST_F(OutputFile, GetsThePermissionsOfANewFile)
{
    ASSERT_EQ(run({"apply", "none.ctf", "in.exr", "out.png"}).status, 0);
    const mode_t mask = ::umask(0);
    ::umask(mask);
    EXPECT_EQ(fs::status(folder / "out.png").permissions(), fs::perms(0666 & ~mask));
}

TEST_F(OutputFile, ThatIsInterruptedLeavesNothingBehind)
{
    writeText(folder / "out.png", "something old");
    // Large enough to take its time to be written.
    const std::vector<std::string> arguments = {"chart", "out.png", "--size", "3000x3000"};
    EXPECT_EQ(interruptProgram(folder, arguments, ".tavrin-", SIGTERM), SIGTERM);
    EXPECT_THAT(folder.names(), ElementsAre("in.exr", "none.ctf", "out.png"));
    EXPECT_TRUE(readText(folder / "out.png") == "something old");
}

TEST_F(OutputFile, IsNotBegunWhenAReadFails)
{
    writeText(folder / "bad.exr", readText(folder / "in.exr").substr(0, 4000));
    EXPECT_EQ(run({"apply", "none.ctf", "bad.exr", "out.png"}).status, 1);
    EXPECT_THAT(folder.names(), ElementsAre("bad.exr", "in.exr", "none.ctf"));
}

} // namespace
