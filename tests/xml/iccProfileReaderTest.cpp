// ICC profiles of displays.
#include "xml/iccProfileReader.h"

#include "support/iccProfileBytes.h"
#include "transform/gammaOp.h"
#include "transform/invLut1DOp.h"
#include "transform/lut1DOp.h"
#include "transform/matrixOp.h"
#include "transform/referenceOp.h"
#include "xml/documents.h"
#include "xml/iccProfile.h"
#include "xml/logLines.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

using namespace XmlTest;
using Color::ICCProfileReader;
using testing::ElementsAre;
using testing::IsEmpty;

namespace
{

Failure failureOfProfile(std::string const& bytes)
{
    return readFile<ICCProfileReader>(bytes, "a.icc").failure;
}

Failure failureOfProfile(ProfileBytes const& profile)
{
    return failureOfProfile(profile.build());
}

Failure refused(std::string const& reason)
{
    return {0x480007, "Error reading file: " + reason + " in <file>"};
}

Failure const kTransformModel = {0x480004, "Unsupported transform model in ICC profile: <file>"};
Failure const kMatrixTag = {0x480005, "Illegal matrix tag in ICC profile: <file>"};
Failure const kCurveTag = {0x480006, "Illegal curve tag in ICC profile: <file>"};

std::shared_ptr<Color::Transform> readProfile(ProfileBytes const& profile)
{
    Reading const reading = readFile<ICCProfileReader>(profile.build(), "a.icc");
    if (!reading.transform)
        throw std::runtime_error(reading.failure.words);
    return reading.transform;
}

// One of the four stages.
template <class Operator>
Operator const& stage(Color::Transform const& transform, unsigned int index)
{
    return dynamic_cast<Operator const&>(transform.getOps().get(index));
}

// What the log tells of a profile that is read all the same.
std::vector<std::string> warningsOf(std::string const& bytes)
{
    LogCapture const log;
    TemporaryFolder const folder;
    std::string const path = folder.write("a.icc", bytes);
    EXPECT_EQ(failureOf([&] { ICCProfileReader().parseFile(path); }), Failure());
    std::vector<std::string> lines = textsOf(log);
    for (std::string& line : lines)
        line = withShortFileName(line, path);
    return lines;
}

std::vector<std::string> warningsOf(ProfileBytes const& profile)
{
    return warningsOf(profile.build());
}

auto warns(std::string const& warning)
{
    return ElementsAre("Error reading file: " + warning + " in <file>");
}

// With the bytes at a place changed.
std::string with(std::string bytes, std::size_t offset, std::string const& change)
{
    return bytes.replace(offset, change.size(), change);
}

} // namespace

TEST(IccReader, TakesThreeExtensionsInTheirSpelling)
{
    ICCProfileReader const reader;
    EXPECT_STREQ(reader.getName(), "ICC Profile Reader");
    for (char const* path : {"a.icc", "a.icm", "/b/a.pf"})
        EXPECT_TRUE(reader.isFileSupported(path)) << path;
    for (char const* path : {"a.ICC", "a.ICM", "icc", "a.ic", "a", ""})
        EXPECT_FALSE(reader.isFileSupported(path)) << path;
    std::string const words = "ICC Profile file extension";
    EXPECT_THAT(ICCProfileReader::supportedFileFormats(),
                ElementsAre(testing::Pair("icm", words), testing::Pair("icc", words), testing::Pair("pf", words)));
}

TEST(IccReader, ReadsNothingFromMemory)
{
    EXPECT_EQ(readBuffer<ICCProfileReader>(ProfileBytes().build()).failure,
              (Failure{0x480001, "Internal - Unsupported buffer parsing by ICC reader"}));
}

TEST(IccReader, TellsAFileThatItCannotOpen)
{
    EXPECT_EQ(failureOf([] { ICCProfileReader().parseFile("/no/such/file.icc"); }),
              (Failure{0x420018, "File open failed: /no/such/file.icc"}));
}

TEST(IccTransform, GoesFromTheConnectionSpaceToTheDevice)
{
    auto const transform = readProfile(ProfileBytes());
    EXPECT_EQ(transform->getInputDescriptor(), "ICC XYZ PCS");
    EXPECT_EQ(transform->getOutputDescriptor(), "device RGB");
    ASSERT_EQ(transform->getOps().size(), 4U);
    for (unsigned int i = 0; i < 4; ++i)
    {
        EXPECT_EQ(transform->getOps().get(i).getInputBitDepth(), Tavrin::BIT_DEPTH_16f) << i;
        EXPECT_EQ(transform->getOps().get(i).getOutputBitDepth(), i < 3 ? Tavrin::BIT_DEPTH_16f : Tavrin::BIT_DEPTH_16i) << i;
    }
}

TEST(IccTransform, BeginsWithTheAdaptationOfWhite)
{
    auto const transform = readProfile(ProfileBytes());
    auto const& op = stage<Color::MatrixOp>(*transform, 0);
    EXPECT_THAT(op.getDescriptions().getList(), ElementsAre("Chromatic adaptation (Bradford) from D65 to ICC PCS D50"));
    EXPECT_THAT(op.getArray().getValues(),
                ElementsAre(1.0478895902633667F, 0.0229206420481205F, -0.050218306481838226F, 0, 0.029584422707557678F,
                            0.9904819130897522F, -0.017079530283808708F, 0, -0.009252188727259636F, 0.01507304236292839F,
                            0.7516689300537109F, 0, 0, 0, 0, 1));
}

// The product with the primaries in columns is the unit matrix, but for the rounding of products up to 3 to single precision.
TEST(IccTransform, GoesOnWithTheInverseOfThePrimaries)
{
    auto const transform = readProfile(ProfileBytes());
    auto const& op = stage<Color::MatrixOp>(*transform, 1);
    EXPECT_THAT(op.getDescriptions().getList(), ElementsAre("RGB primary matrix from ICC profile"));
    auto const fixed = [](double number) { return std::lround(number * 65536) / 65536.0; };
    double const primaries[3][3] = {{fixed(0.4361), fixed(0.3851), fixed(0.1431)},
                                    {fixed(0.2225), fixed(0.7169), fixed(0.0606)},
                                    {fixed(0.0139), fixed(0.0971), fixed(0.7141)}};
    for (unsigned int r = 0; r < 3; ++r)
    {
        for (unsigned int c = 0; c < 3; ++c)
        {
            double sum = 0;
            for (unsigned int k = 0; k < 3; ++k)
                sum += static_cast<double>(op.getArray().get(r * 4 + k)) * primaries[k][c];
            EXPECT_NEAR(sum, r == c, 2e-7) << r << c;
        }
    }
}

TEST(IccTransform, LeavesAPlaceForAGamutMapping)
{
    auto const transform = readProfile(ProfileBytes());
    auto const& op = stage<Color::ReferenceOp>(*transform, 2);
    EXPECT_EQ(op.getAlias(), "defaultGamutMap");
    EXPECT_TRUE(op.needsResolving());
}

TEST(IccCurves, OfOneEntryAreAGamma)
{
    ProfileBytes profile;
    profile.set("rTRC", curveTag({0x0233})).set("gTRC", curveTag({0x0100})).set("bTRC", curveTag({0x0299}) + "padding");
    auto const transform = readProfile(profile);
    auto const& op = stage<Color::GammaOp>(*transform, 3);
    EXPECT_EQ(op.getGammaStyle(), Color::GammaOp::GammaStyle::BasicRev);
    EXPECT_THAT(op.getRedParams(), ElementsAre(563.0 / 256.0));
    EXPECT_THAT(op.getGreenParams(), ElementsAre(1.0));
    EXPECT_THAT(op.getBlueParams(), ElementsAre(665.0 / 256.0));
    EXPECT_TRUE(op.isAlphaComponentIdentity());
    EXPECT_THAT(op.getDescriptions().getList(), ElementsAre("Tone response curve from ICC profile"));
}

TEST(IccCurves, OfNoEntriesAreStraight)
{
    auto const transform = readProfile(ProfileBytes().setCurves({}));
    auto const& op = stage<Color::Lut1DOp>(*transform, 3);
    EXPECT_EQ(op.getArray().getDimension(), 2U);
    EXPECT_TRUE(op.isIdentity());
    EXPECT_THAT(op.getArray().getValues(), ElementsAre(0, 0, 0, 65535, 65535, 65535));
    EXPECT_THAT(op.getDescriptions().getList(), ElementsAre("Tone response curve from ICC profile"));
}

TEST(IccCurves, OfSeveralEntriesAreSearchedBackwards)
{
    ProfileBytes profile;
    profile.set("rTRC", curveTag({0, 13107, 65535})).set("gTRC", curveTag({0, 32768, 65535})).set("bTRC", curveTag({1, 2, 3}));
    auto const transform = readProfile(profile);
    auto const& op = stage<Color::InvLut1DOp>(*transform, 3);
    EXPECT_THAT(op.getArray().getValues(),
                ElementsAre(0, 0, 1 / 65535.0F, 0.2F, 32768 / 65535.0F, 2 / 65535.0F, 1, 1, 3 / 65535.0F));
    EXPECT_THAT(op.getDescriptions().getList(), ElementsAre("Tone response curve from ICC profile"));
}

TEST(IccCurves, HaveTheSameNumberOfEntries)
{
    ProfileBytes profile;
    EXPECT_EQ(failureOfProfile(profile.set("rTRC", curveTag({0, 65535})).set("gTRC", curveTag({0, 5, 65535}))), kCurveTag);
    EXPECT_EQ(failureOfProfile(ProfileBytes().set("bTRC", curveTag({}))), kCurveTag);
}

TEST(IccCurves, AreNoFormulas)
{
    // The same gamma as a formula, which Little CMS presents like a curve of one entry.
    EXPECT_EQ(failureOfProfile(ProfileBytes().set("gTRC", tagOf("para", bytes32(0) + fixedPoint(2.2)))), kCurveTag);
    EXPECT_EQ(failureOfProfile(ProfileBytes().set("rTRC", xyzTag(1, 1, 1))), kCurveTag);
}

TEST(IccCurves, HaveAGammaThatIsOne)
{
    EXPECT_EQ(failureOfProfile(ProfileBytes().setCurves({0})), (Failure{0x210011, "Parameter 0.000000 < lower bound 1.000000"}));
}

TEST(IccCurves, MayNotClaimMoreThanTheyHave)
{
    EXPECT_EQ(failureOfProfile(ProfileBytes().set("rTRC", tagOf("curv", bytes32(3) + bytes16(0) + bytes16(65535)))),
              refused("tag 'rTRC' is shorter than its curve"));
    EXPECT_EQ(failureOfProfile(ProfileBytes().set("gTRC", tagOf("curv", bytes32(0xffffffff)))),
              refused("tag 'gTRC' is shorter than its curve"));
    EXPECT_EQ(failureOfProfile(ProfileBytes().set("bTRC", tagOf("curv", ""))), refused("tag 'bTRC' is shorter than its curve"));
}

TEST(IccCurves, MayNotHaveMoreEntriesThanATableHasRows)
{
    EXPECT_EQ(failureOfProfile(ProfileBytes().setCurves(std::vector<unsigned int>(Color::Lut1DOp::kMaxDimension + 1, 7))),
              kCurveTag);
}

TEST(IccPrimaries, AreOneColourEach)
{
    EXPECT_EQ(failureOfProfile(ProfileBytes().set("gXYZ", xyzTag(0.3, 0.6, 0.1) + std::string(12, '\0'))), kMatrixTag);
    EXPECT_EQ(failureOfProfile(ProfileBytes().set("gXYZ", tagOf("XYZ ", ""))), kMatrixTag);
    EXPECT_EQ(failureOfProfile(ProfileBytes().set("bXYZ", curveTag({1, 2, 3, 4}))), kMatrixTag);
    EXPECT_EQ(failureOfProfile(ProfileBytes().set("rXYZ", xyzTag(0.4361, 0.2225, 0.0139) + "padding")), Failure());
}

// As for every matrix that has no inverse.
TEST(IccPrimaries, ThatLieInAPlaneLeaveColoursAsTheyAre)
{
    auto const transform = readProfile(ProfileBytes().set("gXYZ", xyzTag(0, 0, 0)));
    EXPECT_TRUE(stage<Color::MatrixOp>(*transform, 1).isIdentity());
}

TEST(IccSpaces, AreXyzAndRgb)
{
    ProfileBytes profile;
    profile.deviceSpace = "CMYK";
    EXPECT_EQ(failureOfProfile(profile), (Failure{0x480003, "Unsupported ICC device color space CMYK: <file>"}));
    // The message has no conversion for the name of the space.
    profile.connectionSpace = "Lab ";
    EXPECT_THAT(failureOfProfile(profile).id, 0x480002U);
    EXPECT_THAT(failureOfProfile(profile).words, testing::StartsWith("Unsupported ICC profile connection space "));
    EXPECT_THAT(failureOfProfile(profile).words, testing::EndsWith(": <file>"));
}

TEST(IccTags, OfThePrimariesAndCurvesAreAllNeeded)
{
    for (char const* tag : {"rXYZ", "gXYZ", "bXYZ", "rTRC", "gTRC", "bTRC"})
        EXPECT_EQ(failureOfProfile(ProfileBytes().remove(tag)), kTransformModel) << tag;
}

TEST(IccChecks, FindNothingInAGoodProfile)
{
    EXPECT_THAT(warningsOf(ProfileBytes()), IsEmpty());
    ProfileBytes profile;
    profile.version = bytes32(0x04300000);
    EXPECT_THAT(warningsOf(profile), IsEmpty());
}

TEST(IccChecks, RefuseWhatIsNoProfile)
{
    std::string const bytes = ProfileBytes().build();
    EXPECT_EQ(failureOfProfile(""), refused("too short for a profile"));
    EXPECT_EQ(failureOfProfile(bytes.substr(0, 131)), refused("too short for a profile"));
    EXPECT_EQ(failureOfProfile(with(bytes, 36, "ACSP")), refused("no profile signature"));
    EXPECT_EQ(failureOfProfile(std::string(10000, '\xff')), refused("no profile signature"));
}

TEST(IccChecks, RefuseWhatIsCutOff)
{
    std::string const bytes = ProfileBytes().build();
    for (std::size_t length : {std::size_t{132}, std::size_t{200}, bytes.size() - 1})
        EXPECT_EQ(failureOfProfile(bytes.substr(0, length)), refused("shorter than its header says")) << length;
    EXPECT_EQ(failureOfProfile(with(bytes, 0, bytes32(132))), refused("tag directory cut off"));
    EXPECT_EQ(failureOfProfile(with(bytes, 0, bytes32(0))), refused("tag directory cut off"));
}

TEST(IccChecks, RefuseADirectoryThatCannotBe)
{
    std::string const bytes = ProfileBytes().build();
    auto const entry = [](std::size_t index) { return ProfileBytes::entryOffset(index); };
    Failure const outside = refused("tag 'gXYZ' lies outside of the profile");
    EXPECT_EQ(failureOfProfile(with(bytes, 128, bytes32(101))), refused("too many tags"));
    EXPECT_EQ(failureOfProfile(with(bytes, 128, bytes32(0xffffffff))), refused("too many tags"));
    EXPECT_EQ(failureOfProfile(with(bytes, entry(4) + 4, bytes32(0))), outside);
    EXPECT_EQ(failureOfProfile(with(bytes, entry(4) + 4, bytes32(0xfffffff8))), outside);
    EXPECT_EQ(failureOfProfile(with(bytes, entry(4) + 8, bytes32(0xffffffff))), outside);
    EXPECT_EQ(failureOfProfile(with(bytes, entry(4) + 8, bytes32(7))), outside);
    EXPECT_EQ(failureOfProfile(with(bytes, entry(5), "rXYZ")), refused("tag 'rXYZ' stands twice"));
    EXPECT_EQ(failureOfProfile(with(with(bytes, entry(5), "a\n b"), entry(5) + 4, bytes32(0))),
              refused("tag 'a? b' lies outside of the profile"));
}

// Whatever Little CMS has to say against a profile arrives in its own words.
TEST(IccChecks, RefuseWhatLittleCmsRefuses)
{
    ProfileBytes profile;
    profile.deviceClass = "disp";
    EXPECT_EQ(failureOfProfile(profile).id, 0x480007U);
    EXPECT_THAT(failureOfProfile(profile).words, testing::MatchesRegex("Error reading file: .+ in <file>"));
}

TEST(IccChecks, WarnOfAHeaderThatIsUnusual)
{
    ProfileBytes profile;
    profile.version = bytes32(0x01000000);
    EXPECT_THAT(warningsOf(profile), warns("unknown version 1"));
    profile = {};
    profile.date = bytes16(2024) + bytes16(13) + bytes16(7) + bytes16(12) + bytes16(0) + bytes16(0);
    EXPECT_THAT(warningsOf(profile), warns("illegal date of creation"));
    profile = {};
    profile.intent = bytes32(4);
    EXPECT_THAT(warningsOf(profile), warns("unknown rendering intent"));
    profile = {};
    profile.illuminant = bytes32(0xf351) + bytes32(0x10000) + bytes32(0x116cc);
    EXPECT_THAT(warningsOf(profile), warns("illuminant is not D50"));
}

TEST(IccChecks, WarnOfMissingTags)
{
    for (char const* tag : {"desc", "cprt", "wtpt"})
        EXPECT_THAT(warningsOf(ProfileBytes().remove(tag)), warns(std::string("tag '") + tag + "' is missing")) << tag;
}

TEST(IccChecks, TellAllWarningsTogether)
{
    ProfileBytes profile;
    profile.intent = bytes32(4);
    EXPECT_THAT(warningsOf(profile.remove("cprt").build() + "more"),
                warns("unknown rendering intent; longer than its header says; tag 'cprt' is missing"));
}

TEST(IccSignatures, AreTheirCharacters)
{
    EXPECT_EQ(Color::getSignatureName(0x58595a20), "XYZ");
    EXPECT_EQ(Color::getSignatureName(0x47524159), "GRAY");
    EXPECT_EQ(Color::getSignatureName(0x20412042), " A B");
    EXPECT_EQ(Color::getSignatureName(0x00ff7f41), "??"
                                                   "?A");
    EXPECT_EQ(Color::getSignatureName(0x20202020), "");
}
