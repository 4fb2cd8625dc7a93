// The program as a whole: help, version, formats, and what is no command.
#include "programRun.h"

#include <tavrin/version.h>

using testing::AllOf;
using testing::HasSubstr;

namespace
{

using Program = ProgramTest;

TEST_F(Program, TellsItsVersion)
{
    const Outcome outcome = run({"--version"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.out, "tavrin " TAVRIN_VERSION_STRING "\n");
}

TEST_F(Program, HelpListsTheCommands)
{
    const Outcome outcome = run({"--help"});
    EXPECT_EQ(outcome.status, 0);
    for (char const* command : {"\n  apply ", "\n  info ", "\n  convert ", "\n  chart ", "\n  formats ", "\n  templates "})
        EXPECT_THAT(outcome.out, HasSubstr(command));
}

TEST_F(Program, HelpOfEachCommandHasItsUsageAndAnExample)
{
    const std::vector<std::vector<std::string>> expected = {{"apply", "Usage: tavrin apply [OPTIONS] [TRANSFORM...] IN OUT\n"},
                                                            {"info", "Usage: tavrin info [OPTIONS] TRANSFORM\n"},
                                                            {"chart", "Usage: tavrin chart [OPTIONS] OUT\n"},
                                                            {"formats", "Usage: tavrin formats [OPTIONS]\n"},
                                                            {"templates", "Usage: tavrin templates [OPTIONS]\n"}};
    for (std::vector<std::string> const& command : expected)
    {
        const Outcome outcome = run({command[0], "--help"});
        EXPECT_EQ(outcome.status, 0);
        EXPECT_THAT(outcome.out, AllOf(HasSubstr(command[1]), HasSubstr("Example"), HasSubstr("\n  tavrin " + command[0])));
    }
}

TEST_F(Program, WithoutACommandIsMisuse)
{
    expectFailure(run({}), 2, "tavrin: a command is missing (see 'tavrin --help')");
}

TEST_F(Program, UnknownCommandIsNamed)
{
    expectFailure(run({"aply", "a", "b"}), 2, "tavrin: 'aply' is no command (see 'tavrin --help')");
}

TEST_F(Program, FormatsListsPicturesAndTransforms)
{
    const Outcome outcome = run({"formats"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.out.substr(0, outcome.out.find("\n\n")),
              "Pictures, read and written:\n"
              "  .exr       OpenEXR: scene-linear film and television pictures\n"
              "             written as RGB 16f, RGBA 16f, RGB 32f, RGBA 32f\n"
              "  .png       PNG: display pictures\n"
              "             written as RGB 8i, RGBA 8i, RGB 16i, RGBA 16i\n"
              "  .tif .tiff TIFF: pictures of any depth\n"
              "             written as RGB 8i, RGBA 8i, RGB 16i, RGBA 16i, RGB 16f, RGBA 16f, RGB 32f, RGBA 32f\n"
              "  .dpx       DPX: film scans and digital intermediates\n"
              "             written as RGB 10iP, RGB 12i, RGBA 12i, RGB 16i, RGBA 16i");
    EXPECT_THAT(outcome.out, HasSubstr("\n\nTransforms, read:\n  .ctf       Tavrin Transform Reader: ctf\n"));
}

TEST_F(Program, AnOutputThatCannotBePrintedIsAFailure)
{
    // A full device for the standard output, by the shell's redirection.
    const int status = std::system(TAVRIN_PROGRAM " formats >/dev/full 2>/dev/null");
    EXPECT_EQ(WEXITSTATUS(status), 1);
}

} // namespace
