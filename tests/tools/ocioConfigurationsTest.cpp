// Menus of an OpenColorIO configuration, and pictures put through what it says.
#include "pictureFiles.h"
#include "programRun.h"
#include "support/ocioConfig.h"

using testing::HasSubstr;

namespace
{

class Configurations : public ProgramTest
{
protected:
    void SetUp() override
    {
        std::ofstream(folder / "config.ocio") << OcioConfig::text();
        if (run({"templates", "--ocio", "config.ocio"}).err.find("has no OpenColorIO") != std::string::npos)
            GTEST_SKIP() << "this build has no OpenColorIO";
    }
};

} // namespace

TEST_F(Configurations, AreListed)
{
    const Outcome outcome = run({"templates", "--ocio", "config.ocio"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.err, "");
    EXPECT_EQ(outcome.out,
              "Working spaces, --working:\n  linear\n  video\n  bright\n  tables\n"
              "\nViews, --view:\n  Film (screen)\n  Raw (screen)\n  Film (wall)\n  Soft (dim) (wall)\n  Look (wall)\n");
}

TEST_F(Configurations, AreApplied)
{
    PictureFloat in(2, 1, 3);
    in.samples = {0.5F, 2.0F, 0.32F, 0.0F, 8.0F, 0.02F};
    writeExrFile(folder / "in.exr", in);
    const Outcome outcome =
        run({"apply", "--ocio", "config.ocio", "--working", "bright", "--view", "Film (screen)", "in.exr", "out.exr"});
    ASSERT_EQ(outcome.status, 0) << outcome.err;
    const PictureFloat out = readExrFile<float>(folder / "out.exr");
    for (std::size_t i = 0; i < in.samples.size(); ++i)
        EXPECT_NEAR(out.samples[i], std::sqrt(in.samples[i] / 2.0), 4e-5) << i;
}

TEST_F(Configurations, TellWhatIsWrong)
{
    expectFailure(run({"templates", "--ocio", "missing.ocio"}), 1,
                  "tavrin: cannot use the configuration: Missing OpenColorIO config file: missing.ocio");
    expectFailure(run({"apply", "--ocio", "config.ocio", "--working", "dark", "--view", "Film (screen)", "in.exr", "out.exr"}), 2,
                  "tavrin: --working: there is no 'dark' (see 'tavrin templates')");
    expectFailure(run({"apply", "--ocio", "config.ocio", "--input", "video", "--working", "linear", "--view", "Film (wall)",
                       "in.exr", "out.exr"}),
                  2, "tavrin: --input: configurations have no input spaces, only --working and --view");
    const Outcome outcome =
        run({"apply", "--ocio", "config.ocio", "--working", "linear", "--view", "Look (wall)", "in.exr", "out.exr"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.err, HasSubstr("missing.spi3d"));
}
