// Transform files of other formats in the program: each kind is listed, shown and applied to a picture.
#include "pictureFiles.h"
#include "programRun.h"
#include "support/iccProfileBytes.h"
#include "support/scopedEnvironment.h"

#include <ostream>

using testing::HasSubstr;

namespace
{

struct OtherFormat
{
    std::string extension;
    std::string listed;    // A line of the list of formats, behind the extension.
    std::string content;   // Of a small file.
    std::string operation; // How the operator is called.
    float red;             // What becomes of a red of 0.5.
    float tolerance;
};

void PrintTo(OtherFormat const& format, std::ostream* out)
{
    *out << format.extension;
}

class OtherFormats : public ProgramTest, public testing::WithParamInterface<OtherFormat>
{
protected:
    void SetUp() override { writeText(folder / name(), GetParam().content); }
    std::string name() const { return "look." + GetParam().extension; }

private:
    // Profiles refer to an alias of the preferences, which the installed ones know.
    ScopedEnvironment const m_system{"TAVRIN_OVERRIDE_SYSTEM_TRANSFORM_LOCATION", TAVRIN_INSTALLATION};
    ScopedEnvironment const m_config{"TAVRIN_OVERRIDE_CONFIG_PATH", TAVRIN_INSTALLATION "/tavrinConfig.xml"};
};

std::string const kCorrection = "<ColorCorrection id='half'><SOPNode><Slope>0.5 1 1</Slope><Offset>0 0 0</Offset>"
                                "<Power>1 1 1</Power></SOPNode></ColorCorrection>";

// Powers are made of polynomials, to 16 bits.
constexpr float kPowerError = 0.25F / 65536.0F;

// A few roundings of values up to 1.
constexpr float kRounding = 3e-7F;

// 8 bits, halved and rounded down: between the rows 127 and 128 lies 63.5.
std::string halvingTable()
{
    std::string text = "LUT: 1 256 256\n";
    for (int i = 0; i < 256; ++i)
        text += std::to_string(i / 2) + "\n";
    return text;
}

// 10 bits, red falls by 50 a grid point: the eighth point is in the middle.
std::string fallingCube()
{
    std::string text;
    for (int i = 0; i < 17 * 17 * 17; ++i)
        text += std::to_string(1000 - i / 289 * 50) + " 0 0\n";
    return text;
}

// A device with a gamma of 2 whose primaries are what D50 makes of X, Y and Z of D65, so that these are its red, green and blue.
std::string xyzProfile()
{
    return XmlTest::ProfileBytes()
        .set("rXYZ", XmlTest::xyzTag(1.04788959, 0.02958442, -0.00925219))
        .set("gXYZ", XmlTest::xyzTag(0.02292064, 0.99048191, 0.01507304))
        .set("bXYZ", XmlTest::xyzTag(-0.05021831, -0.01707953, 0.75166893))
        .setCurves({0x200})
        .build();
}
constexpr float kRootOfHalf = 0.70710678F;
// Powers as above, and primaries that are rounded to 17 bits.
constexpr float kProfileError = kRootOfHalf / 65536.0F + 3.0F / 131072.0F;

std::vector<OtherFormat> const kFormats = {
    {"cdl", "CDL Reader: ASC CDL color decision list XML format",
     "<ColorDecisionList><ColorDecision>" + kCorrection + "</ColorDecision></ColorDecisionList>", "ASC CDL", 0.25F, kPowerError},
    {"ccc", "CDL Reader: ASC CDL color correction collection XML format",
     "<ColorCorrectionCollection>" + kCorrection + "</ColorCorrectionCollection>", "ASC CDL", 0.25F, kPowerError},
    {"cc", "CDL Reader: CDL fragment format", kCorrection, "ASC CDL", 0.25F, kPowerError},
    {"lut", "Ostrand LUT Reader: Ostrand 1d-LUT format", halvingTable(), "LUT 1D", 63.5F / 255.0F, kRounding},
    {"3dl", "Ostrand 3DL Reader: Ostrand 3d-LUT format", fallingCube(), "LUT 3D", 600.0F / 1023.0F, kRounding},
    {"icm", "ICC Profile Reader: ICC Profile file extension", xyzProfile(), "Matrix", kRootOfHalf, kProfileError},
    {"icc", "ICC Profile Reader: ICC Profile file extension", xyzProfile(), "Matrix", kRootOfHalf, kProfileError},
    {"pf", "ICC Profile Reader: ICC Profile file extension", xyzProfile(), "Matrix", kRootOfHalf, kProfileError},
};

} // namespace

TEST_P(OtherFormats, AreListed)
{
    Outcome const outcome = run({"formats"});
    EXPECT_EQ(outcome.status, 0);
    std::string const extension = "." + GetParam().extension;
    EXPECT_THAT(outcome.out, HasSubstr("\n  " + extension + std::string(11 - extension.size(), ' ') + GetParam().listed + "\n"));
}

TEST_P(OtherFormats, AreShown)
{
    Outcome const outcome = run({"info", name()});
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_THAT(outcome.out, HasSubstr("\n  " + GetParam().operation + "\n"));
}

TEST_P(OtherFormats, AreApplied)
{
    PictureFloat in(2, 1, 3);
    in.samples = {0.5F, 0.5F, 0.5F, 0.5F, 0.5F, 0.5F};
    writeExrFile(folder / "in.exr", in);
    Outcome const outcome = run({"apply", name(), "in.exr", "out.exr"});
    ASSERT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_NEAR(readExrFile<float>(folder / "out.exr").at(1, 0, 0), GetParam().red, GetParam().tolerance);
}

INSTANTIATE_TEST_SUITE_P(Read, OtherFormats, testing::ValuesIn(kFormats), [](auto const& info) { return info.param.extension; });
