// The command 'info': texts written by hand.
#include "programRun.h"

using testing::HasSubstr;

namespace
{

using InfoCommand = ProgramTest;

TEST_F(InfoCommand, TellsEverythingOfATransformAligned)
{
    writeText(folder / "look.ctf", "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                                   "<ProcessList version=\"1.3\" id=\"0815\" name=\"A look\">\n"
                                   "    <Description>Warmer</Description>\n"
                                   "    <Description>and darker</Description>\n"
                                   "    <InputDescriptor>Scene-linear</InputDescriptor>\n"
                                   "    <OutputDescriptor>8-bit codes</OutputDescriptor>\n"
                                   "    <Matrix id=\"m1\" name=\"Warmth\" inBitDepth=\"16f\" outBitDepth=\"32f\">\n"
                                   "        <Description>Less blue</Description>\n"
                                   "        <Array dim=\"3 4 3\">\n"
                                   "            1 0 0 -0.125  0 0.5 0 0  0 -12.5 0.25 0\n"
                                   "        </Array>\n"
                                   "    </Matrix>\n"
                                   "    <Range inBitDepth=\"32f\" outBitDepth=\"8i\" bypass=\"true\">\n"
                                   "        <minInValue>0.5</minInValue>\n"
                                   "        <minOutValue>16</minOutValue>\n"
                                   "        <maxInValue>1</maxInValue>\n"
                                   "        <maxOutValue>235</maxOutValue>\n"
                                   "    </Range>\n"
                                   "</ProcessList>\n");
    const Outcome outcome = run({"info", "look.ctf"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.err, "");
    EXPECT_EQ(outcome.out, "Transform\n"
                           "  Description 1      Warmer\n"
                           "  Description 2      and darker\n"
                           "  Input Descriptor   Scene-linear\n"
                           "  Output Descriptor  8-bit codes\n"
                           "  Input Bit Depth    16f\n"
                           "  Output Bit Depth   8i\n"
                           "  Nickname           A look\n"
                           "  Identifier         0815\n"
                           "  Matrix\n"
                           "    Identifier        m1\n"
                           "    Name              Warmth\n"
                           "    Input Bit Depth   16f\n"
                           "    Output Bit Depth  32f\n"
                           "    Description 1     Less blue\n"
                           "    Array Row 1       1.0000      0.0000      0.0000      0.0000     -0.1250\n"
                           "    Array Row 2       0.0000      0.5000      0.0000      0.0000      0.0000\n"
                           "    Array Row 3       0.0000    -12.5000      0.2500      0.0000      0.0000\n"
                           "    Array Row 4       0.0000      0.0000      0.0000      1.0000      0.0000\n"
                           "  Range\n"
                           "    Input Bit Depth   32f\n"
                           "    Output Bit Depth  8i\n"
                           "    Bypass            true\n"
                           "    Min Input Value   0.5000\n"
                           "    Min Output Value  16.0000\n"
                           "    Max Input Value   1.0000\n"
                           "    Max Output Value  235.0000\n");
}

TEST_F(InfoCommand, LongTablesAreShownByTheirEndsUnlessAllIsAskedFor)
{
    std::string rows;
    for (int i = 0; i < 32; ++i)
        rows += i < 16 ? "0.25 " : "0.5 ";
    writeText(folder / "table.ctf", "<ProcessList version=\"1.3\" id=\"x\">\n"
                                    "    <LUT1D inBitDepth=\"32f\" outBitDepth=\"32f\">\n"
                                    "        <Array dim=\"32 1\">" +
                                        rows +
                                        "</Array>\n"
                                        "    </LUT1D>\n"
                                        "</ProcessList>\n");
    const Outcome ends = run({"info", "table.ctf"});
    EXPECT_EQ(ends.status, 0) << ends.err;
    EXPECT_THAT(ends.out, testing::EndsWith("    Array Row 4       0.2500      0.2500      0.2500\n"
                                            "    ... 24 more ...\n"
                                            "    Array Row 29      0.5000      0.5000      0.5000\n"
                                            "    Array Row 30      0.5000      0.5000      0.5000\n"
                                            "    Array Row 31      0.5000      0.5000      0.5000\n"
                                            "    Array Row 32      0.5000      0.5000      0.5000\n"));
    const Outcome all = run({"info", "--all", "table.ctf"});
    for (int row = 1; row <= 32; ++row)
        EXPECT_THAT(all.out, HasSubstr("    Array Row " + std::to_string(row) + " ")) << row;
}

TEST_F(InfoCommand, ControlCharactersOfAFileDoNotReachTheTerminal)
{
    writeText(folder / "odd.ctf", "<ProcessList version=\"1.3\" id=\"x&#x9b;y\" name=\"two&#10;lines\">\n"
                                  "    <Range inBitDepth=\"32f\" outBitDepth=\"32f\"/>\n"
                                  "</ProcessList>\n");
    const Outcome outcome = run({"info", "odd.ctf"});
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_THAT(outcome.out, HasSubstr("Nickname          two lines\n"));
    EXPECT_THAT(outcome.out, HasSubstr("Identifier        x?y\n"));
}

TEST_F(InfoCommand, MissingFileIsNamed)
{
    expectFailure(run({"info", "gone.ctf"}), 1, "tavrin: cannot load the transform 'gone.ctf': No file found: 'gone.ctf'");
}

TEST_F(InfoCommand, MissingArgumentIsMisuse)
{
    expectFailure(run({"info"}), 2, "tavrin: TRANSFORM is required (see 'tavrin info --help')");
}

} // namespace
