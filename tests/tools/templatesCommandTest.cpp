// The command 'templates', and pictures put through what it lists.
#include "pictureFiles.h"
#include "programRun.h"
#include "support/colorimetry.h"
#include "support/scopedEnvironment.h"

#include <filesystem>

using testing::HasSubstr;

namespace
{

// The program with an installation of its own in the test's folder. Tests of the program know of no other.
class Templates : public ProgramTest
{
protected:
    Templates()
    {
        std::filesystem::create_directories(folder / "system");
        std::filesystem::create_directory(folder / "shared");
        std::filesystem::create_directory_symlink(TAVRIN_INSTALLATION "/transforms", folder / "system/transforms");
        std::filesystem::copy_file(TAVRIN_INSTALLATION "/tavrinConfig.xml", folder / "system/tavrinConfig.xml");
    }

private:
    ScopedEnvironment const m_system{"TAVRIN_OVERRIDE_SYSTEM_TRANSFORM_LOCATION", (folder / "system").c_str()};
    ScopedEnvironment const m_config{"TAVRIN_OVERRIDE_CONFIG_PATH", ""};
    ScopedEnvironment const m_shared{"TAVRIN_OVERRIDE_SHARED_PATH", (folder / "shared").c_str()};
};

void expectPicture(PictureFloat const& picture, double value)
{
    for (float const sample : picture.samples)
        EXPECT_NEAR(sample, value, 1e-4);
}

class TemplatesApplied : public Templates
{
protected:
    // A mid-grey.
    TemplatesApplied()
    {
        PictureFloat grey(2, 1, 3);
        grey.samples.assign(6, 0.18F);
        writeExrFile(folder / "in.exr", grey);
    }

    PictureFloat apply(std::vector<std::string> options)
    {
        std::vector<std::string> arguments = {"apply"};
        arguments.insert(arguments.end(), options.begin(), options.end());
        arguments.insert(arguments.end(), {"in.exr", "out.exr"});
        const Outcome outcome = run(arguments);
        EXPECT_EQ(outcome.status, 0) << outcome.err;
        EXPECT_EQ(outcome.err, "");
        return readExrFile<float>(folder / "out.exr");
    }
};

TEST_F(Templates, AreListed)
{
    const Outcome outcome = run({"templates"});
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_EQ(outcome.err, "");
    EXPECT_EQ(outcome.out, "Input spaces, --input:\n"
                           "  ACES2065-1\n"
                           "  ACEScct\n"
                           "  ACEScg\n"
                           "  ARRI LogC3 EI 800\n"
                           "  ARRI LogC4\n"
                           "  CIE-XYZ\n"
                           "  Cineon film scan, Rec. 709\n"
                           "  Display P3\n"
                           "  HD video\n"
                           "  Linear Rec. 709\n"
                           "  Panasonic V-Log\n"
                           "  RED Log3G10\n"
                           "  Sony S-Log3 S-Gamut3.Cine\n"
                           "  sRGB\n"
                           "\n"
                           "Working spaces, --working:\n"
                           "  ACES2065-1\n"
                           "  ACEScg\n"
                           "  Display P3\n"
                           "  HD video\n"
                           "  Linear Rec. 709\n"
                           "  sRGB\n"
                           "\n"
                           "Views, --view:\n"
                           "  Display P3\n"
                           "  HD video\n"
                           "  Log\n"
                           "  Monitor\n"
                           "  Raw\n"
                           "  sRGB\n");
}

TEST_F(Templates, OfAnotherProductAreNone)
{
    const Outcome outcome = run({"templates", "--product", "Another"});
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_EQ(outcome.out, "Input spaces, --input:\n\nWorking spaces, --working:\n\nViews, --view:\n");
}

TEST_F(Templates, WithoutAnInstallationAreAFailure)
{
    std::filesystem::remove_all(folder / "system");
    expectFailure(run({"templates"}), 1,
                  "tavrin: cannot load the installed transforms: Tavrin package is not installed: " + (folder / "system"));
}

TEST_F(TemplatesApplied, LeadFromAnInputThroughAWorkingSpaceToAView)
{
    // The tone curve gives a mid-grey the light 0.12.
    expectPicture(apply({"--input", "Linear Rec. 709", "--working", "ACEScg", "--view", "sRGB"}), Colorimetry::srgbEncode(0.12));
}

TEST_F(TemplatesApplied, LeadFromAnInputToAWorkingSpace)
{
    expectPicture(apply({"--input", "Linear Rec. 709", "--working", "ACEScg"}), 0.18);
}

TEST_F(TemplatesApplied, LeadFromAWorkingSpaceToAView)
{
    expectPicture(apply({"--working", "ACEScg", "--view", "HD video"}), std::pow(0.12, 1.0 / 2.4));
}

TEST_F(TemplatesApplied, LetTransformFilesApplyInTheWorkingSpace)
{
    // A third of a mid-grey of 0.54.
    writeMatrixTransform(folder / "triple.ctf", "3 0 0  0 3 0  0 0 3");
    writeMatrixTransform(folder / "third.ctf", "0.33333333 0 0  0 0.33333333 0  0 0 0.33333333");
    expectPicture(apply({"--working", "ACEScg", "--view", "sRGB", "triple.ctf", "third.ctf"}), Colorimetry::srgbEncode(0.12));
    writeMatrixTransform(folder / "half.ctf", "0.5 0 0  0 0.5 0  0 0 0.5");
    const PictureFloat dark = apply({"--working", "ACEScg", "--view", "sRGB", "half.ctf"});
    expectPicture(apply({"--working", "ACEScg", "--view", "sRGB", "--exposure", "-1"}), static_cast<double>(dark.samples[0]));
}

TEST_F(TemplatesApplied, TakeExposure)
{
    writeMatrixTransform(folder / "half.ctf", "0.5 0 0  0 0.5 0  0 0 0.5");
    expectPicture(apply({"--working", "ACEScg", "--view", "sRGB", "half.ctf", "--exposure", "1"}), Colorimetry::srgbEncode(0.12));
}

TEST_F(TemplatesApplied, NameASpaceThatIsNotInTheMenus)
{
    expectFailure(run({"apply", "--working", "None", "--view", "sRGB", "in.exr", "out.exr"}), 2,
                  "tavrin: --working: there is no 'None' (see 'tavrin templates')");
    expectFailure(run({"apply", "--working", "ACEScg", "--view", "srgb", "in.exr", "out.exr"}), 2,
                  "tavrin: --view: there is no 'srgb' (see 'tavrin templates')");
    expectFailure(run({"apply", "--working", "ACEScg", "--input", "", "in.exr", "out.exr"}), 2,
                  "tavrin: --input: there is no '' (see 'tavrin templates')");
}

TEST_F(TemplatesApplied, NeedAWorkingSpace)
{
    for (char const* const option : {"--input", "--view"})
    {
        expectFailure(run({"apply", option, "sRGB", "in.exr", "out.exr"}), 2,
                      HasSubstr(std::string(option) + " requires --working"));
    }
}

TEST_F(TemplatesApplied, NeedMoreThanAWorkingSpace)
{
    expectFailure(run({"apply", "--working", "ACEScg", "in.exr", "out.exr"}), 2,
                  "tavrin: --working needs --input or --view (see 'tavrin apply --help')");
}

// Moved as it is, with the program in it.
TEST_F(Templates, ComeWithTheProgram)
{
    namespace fs = std::filesystem;
    const ScopedEnvironment none("TAVRIN_OVERRIDE_SYSTEM_TRANSFORM_LOCATION", "");
    fs::create_directory(folder / "share");
    fs::rename(folder / "system", folder / "share/tavrin");
    fs::create_directory(folder / "bin");
    fs::copy_file(TAVRIN_PROGRAM, folder / "bin/tavrin");
    EXPECT_EQ(std::system(("'" + (folder / "bin/tavrin") + "' templates >'" + (folder / "out") + "'").c_str()), 0);
    EXPECT_THAT(readText(folder / "out"), HasSubstr("  ACEScg\n"));
}

} // namespace
