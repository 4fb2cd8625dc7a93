// The command 'convert': texts written by hand.
#include "programRun.h"
#include "support/scopedEnvironment.h"

using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

namespace
{

constexpr char kOldRange[] = "<processlist id='a &amp; b'><range inBitDepth='8i' outBitDepth='10i'/></processlist>";
constexpr char kNewRange[] = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                             "<ProcessList version=\"1.3\" id=\"a &amp; b\">\n"
                             "    <Range inBitDepth=\"8i\" outBitDepth=\"10i\">\n"
                             "    </Range>\n"
                             "</ProcessList>\n";

std::string doubling()
{
    return "<Matrix inBitDepth='32f' outBitDepth='32f'><Array dim='3 3 3'>2 0 0 0 2 0 0 0 2</Array></Matrix>\n";
}

class ConvertCommand : public ProgramTest
{
protected:
    // A transform file of version 1.5 that holds these elements.
    void writeTransform(std::string const& name, std::string const& elements)
    {
        writeText(folder / name, "<ProcessList version='1.5' id='x'>\n" + elements + "</ProcessList>\n");
    }
};

TEST_F(ConvertCommand, WritesATransformFileAndTellsWhatItHolds)
{
    writeText(folder / "old.ctf", kOldRange);
    const Outcome outcome = run({"convert", "old.ctf", "new.ctf"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.err, "");
    EXPECT_EQ(outcome.out, "old.ctf -> new.ctf, 1 operator (Range), 156 bytes\n");
    EXPECT_EQ(readText(folder / "new.ctf"), kNewRange);
}

TEST_F(ConvertCommand, WritesInThePlaceOfWhatItRead)
{
    writeText(folder / "look.ctf", kOldRange);
    const Outcome outcome = run({"convert", "look.ctf", "look.ctf", "--quiet"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.out + outcome.err, "");
    EXPECT_EQ(readText(folder / "look.ctf"), kNewRange);
    EXPECT_THAT(folder.names(), ElementsAre("look.ctf"));
}

TEST_F(ConvertCommand, ReadsOtherTypesOfFiles)
{
    writeText(folder / "grade.cc", "<ColorCorrection id=\"shot 1\">\n"
                                   "<SOPNode><Slope>1 1 1</Slope><Offset>0 0 0.5</Offset><Power>1 1 1</Power></SOPNode>\n"
                                   "<SatNode><Saturation>0.75</Saturation></SatNode>\n"
                                   "</ColorCorrection>\n");
    const Outcome outcome = run({"convert", "grade.cc", "grade.ctf"});
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_THAT(outcome.out, StartsWith("grade.cc -> grade.ctf, 1 operator (ASC CDL), "));
    EXPECT_THAT(readText(folder / "grade.ctf"), HasSubstr("<Offset>0, 0, 0.5</Offset>"));
}

TEST_F(ConvertCommand, KeepsReferencesUnlessTheyAreToBeResolved)
{
    const ScopedEnvironment preferences("TAVRIN_OVERRIDE_CONFIG_PATH", (folder / "tavrinConfig.xml").c_str());
    writeTransform("inner.ctf", doubling() + doubling());
    const std::string reference = "<Reference inBitDepth='32f' outBitDepth='32f' path='" + (folder / "inner.ctf") + "'/>\n";
    writeTransform("outer.ctf", doubling() + reference);
    EXPECT_THAT(run({"convert", "outer.ctf", "same.ctf"}).out, HasSubstr(", 2 operators (Matrix, Reference), "));
    EXPECT_THAT(run({"convert", "outer.ctf", "flat.ctf", "--resolve"}).out, HasSubstr(", 3 operators (Matrix, Matrix, Matrix), "));
    EXPECT_THAT(run({"convert", "outer.ctf", "one.ctf", "--optimize", "90"}).out, HasSubstr(", 1 operator (Matrix), "));
    EXPECT_THAT(readText(folder / "one.ctf"), HasSubstr("\n              8               0               0\n"));
}

TEST_F(ConvertCommand, OptimizesOnRequest)
{
    writeTransform("two.ctf", doubling() + doubling());
    EXPECT_THAT(run({"convert", "two.ctf", "same.ctf"}).out, HasSubstr(", 2 operators (Matrix, Matrix), "));
    EXPECT_THAT(run({"convert", "two.ctf", "one.ctf", "--optimize", "90"}).out, HasSubstr(", 1 operator (Matrix), "));
    EXPECT_THAT(readText(folder / "one.ctf"), HasSubstr("\n              4               0               0\n"));
    EXPECT_THAT(run({"convert", "two.ctf", "kept.ctf", "--optimize", "101"}).out, HasSubstr(", 2 operators (Matrix, Matrix), "));
}

// A file without operators could not be read again.
TEST_F(ConvertCommand, WritesNothingWhereNoOperatorIsLeft)
{
    writeTransform("off.ctf", "<Range bypass='true' inBitDepth='32f' outBitDepth='32f'/>\n");
    expectFailure(run({"convert", "off.ctf", "out.ctf", "--optimize", "90"}), 1,
                  "tavrin: cannot optimize the transform: no operator is left");
    EXPECT_THAT(folder.names(), ElementsAre("off.ctf"));
}

TEST_F(ConvertCommand, RefusesToWriteAnythingButTransformFiles)
{
    writeText(folder / "old.ctf", kOldRange);
    for (std::string const out : {"new.cube", "new", "new.CTF"})
        expectFailure(run({"convert", "old.ctf", out}), 2,
                      "tavrin: cannot write '" + out + "': the name of a transform file ends in .ctf");
    EXPECT_THAT(folder.names(), ElementsAre("old.ctf"));
}

TEST_F(ConvertCommand, LeavesTheOldFileWhereItFails)
{
    writeText(folder / "old.ctf", kOldRange);
    writeText(folder / "bad.ctf", "<ProcessList version='1.5' id='x'>");
    expectFailure(run({"convert", "bad.ctf", "old.ctf"}), 1, StartsWith("tavrin: cannot load the transform 'bad.ctf': "));
    EXPECT_EQ(readText(folder / "old.ctf"), kOldRange);
    expectFailure(run({"convert", "old.ctf", "no/new.ctf"}), 1,
                  "tavrin: cannot write 'no/new.ctf': Invalid file path: 'no/new.ctf'");
}

TEST_F(ConvertCommand, LeavesTheOldFileOnAFullDisk)
{
    std::string table = "<LUT1D inBitDepth='32f' outBitDepth='32f'><Array dim='1000 1'>\n";
    for (int i = 0; i < 1000; ++i)
        table += "0.5\n";
    writeTransform("table.ctf", table + "</Array></LUT1D>\n");
    writeText(folder / "out.ctf", kOldRange);
    expectFailure(runProgram(folder, {"convert", "table.ctf", "out.ctf"}, 8192), 1,
                  "tavrin: cannot write 'out.ctf': Unable to write file: 'out.ctf'");
    EXPECT_EQ(readText(folder / "out.ctf"), kOldRange);
    EXPECT_THAT(folder.names(), ElementsAre("out.ctf", "table.ctf"));
}

TEST_F(ConvertCommand, MissingArgumentIsMisuse)
{
    expectFailure(run({"convert", "old.ctf"}), 2, "tavrin: OUT is required (see 'tavrin convert --help')");
}

} // namespace
