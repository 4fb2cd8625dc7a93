// The command 'info': texts written by hand.
#include "programRun.h"
#include "support/scopedEnvironment.h"

#include <sstream>

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

constexpr char const* kFourMatrices = "<ProcessList version=\"1.5\" id=\"four\">\n"
                                      "    <Matrix name=\"a\" inBitDepth=\"10i\" outBitDepth=\"32f\">\n"
                                      "        <Array dim=\"3 3 3\">1 0 0  0 2 0  0 0 4</Array>\n"
                                      "    </Matrix>\n"
                                      "    <Matrix name=\"b\" inBitDepth=\"32f\" outBitDepth=\"32f\">\n"
                                      "        <Array dim=\"3 3 3\">1 0 0  0 1 0  0 0 1</Array>\n"
                                      "    </Matrix>\n"
                                      "    <Matrix name=\"c\" inBitDepth=\"32f\" outBitDepth=\"32f\">\n"
                                      "        <Array dim=\"3 3 3\">0 0.5 0  0.5 0 0  0 0 0.5</Array>\n"
                                      "    </Matrix>\n"
                                      "    <Matrix name=\"d\" inBitDepth=\"32f\" outBitDepth=\"32f\">\n"
                                      "        <Array dim=\"3 3 3\">3 0 0  0 3 0  0 0 3</Array>\n"
                                      "        <DynamicParameter param=\"LOOK_SWITCH\"/>\n"
                                      "    </Matrix>\n"
                                      "</ProcessList>\n";

// The lines that name an operator or its renderer.
std::string pipelineOf(Outcome const& outcome)
{
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    std::istringstream lines(outcome.out);
    std::string pipeline;
    for (std::string line; std::getline(lines, line);)
    {
        if (line == "  Matrix")
            pipeline += "Matrix ";
        if (line.rfind("    Renderer  ", 0) == 0)
            pipeline += "by " + line.substr(line.find_last_of(' ') + 1) + "; ";
    }
    return pipeline;
}

TEST_F(InfoCommand, OptimizedShowsWhatIsRenderedAtTheTransformsOwnDepths)
{
    writeText(folder / "four.ctf", kFourMatrices);
    const Outcome outcome = run({"info", "four.ctf", "--optimized", "90"});
    EXPECT_EQ(outcome.err, "");
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.out, "Transform\n"
                           "  Input Bit Depth   10i\n"
                           "  Output Bit Depth  32f\n"
                           "  Identifier        four\n"
                           "  Matrix\n"
                           "    Renderer          MatrixRenderer\n"
                           "    Name              acd\n"
                           "    Input Bit Depth   10i\n"
                           "    Output Bit Depth  32f\n"
                           "    Array Row 1       0.0000      3.0000      0.0000      0.0000      0.0000\n"
                           "    Array Row 2       1.5000      0.0000      0.0000      0.0000      0.0000\n"
                           "    Array Row 3       0.0000      0.0000      6.0000      0.0000      0.0000\n"
                           "    Array Row 4       0.0000      0.0000      0.0000      0.0010      0.0000\n");
}

TEST_F(InfoCommand, OptimizedGoesAsFarAsTheFlagsSay)
{
    writeText(folder / "four.ctf", kFourMatrices);
    std::string const scale = "Matrix by ScaleRenderer; ";
    std::string const mix = "Matrix by MatrixRenderer; ";
    EXPECT_EQ(pipelineOf(run({"info", "four.ctf", "--optimized", "101"})), scale + scale + mix + scale);
    EXPECT_EQ(pipelineOf(run({"info", "four.ctf", "--optimized", "96"})), scale + mix + scale);
    EXPECT_EQ(pipelineOf(run({"info", "four.ctf", "--optimized", "95"})), mix);
    // Dynamic operators are kept apart.
    EXPECT_EQ(pipelineOf(run({"info", "four.ctf", "--optimized", "2147483743"})), mix + scale);
}

TEST_F(InfoCommand, OptimizedObeysTheEnvironmentOfTheProcess)
{
    writeText(folder / "four.ctf", kFourMatrices);
    std::string const scale = "Matrix by ScaleRenderer; ";
    std::string const mix = "Matrix by MatrixRenderer; ";
    const auto pipelineUnder = [&](char const* variable, char const* value)
    {
        ScopedEnvironment const environment(variable, value);
        return pipelineOf(run({"info", "four.ctf", "--optimized", "90"}));
    };
    EXPECT_EQ(pipelineUnder("TAVRIN_OPTIMIZER_VALUE", "101"), scale + scale + mix + scale);
    EXPECT_EQ(pipelineUnder("TAVRIN_OPTIMIZER_VALUE", "-1"), mix);
    EXPECT_EQ(pipelineUnder("TAVRIN_OPTIMIZER_KEEP_DYNAMIC_OPS", "1"), mix + scale);
    EXPECT_EQ(pipelineUnder("TAVRIN_OPTIMIZER_KEEP_DYNAMIC_OPS", "0"), mix);

    // What is no number counts as 0, at which no list is ever simple enough.
    ScopedEnvironment const environment("TAVRIN_OPTIMIZER_VALUE", "fast");
    expectFailure(run({"info", "four.ctf", "--optimized", "90"}), 1,
                  "tavrin: cannot tell what 'four.ctf' holds: Attempt to apply Null optimizer action");
}

TEST_F(InfoCommand, OptimizedNeedsANumberFromOneOn)
{
    expectFailure(run({"info", "four.ctf", "--optimized", "0"}), 2, HasSubstr("--optimized: "));
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
