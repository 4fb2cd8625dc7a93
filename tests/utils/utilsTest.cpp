// Small helpers and the layer over the system.
#include "utils/utils.h"

#include "support/temporaryFolder.h"
#include "utils/errorMessage.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <cstdint>
#include <cstring>
#include <fstream>
#include <limits>
#include <locale>
#include <set>

#include <pty.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace
{

using namespace Color::Utils;
using Color::Exception;
using testing::AllOf;
using testing::HasSubstr;
using testing::Property;
using testing::StartsWith;
using testing::Throws;

namespace System = Foundation::Utils;

std::string textOf(std::string const& path)
{
    std::ifstream file(path);
    return std::string(std::istreambuf_iterator<char>(file), {});
}

TEST(GenerateUUID, IsARandomUUIDOfTheUsualForm)
{
    // RFC 4122: version 4 (random) in the third group, variant 10 in the fourth.
    for (int i = 0; i < 20; ++i)
    {
        std::string const uuid = generateUUID();
        ASSERT_EQ(uuid.size(), 36U);
        for (std::size_t at = 0; at < uuid.size(); ++at)
        {
            bool const isDash = at == 8 || at == 13 || at == 18 || at == 23;
            EXPECT_TRUE(isDash ? uuid[at] == '-' : std::strchr("0123456789abcdef", uuid[at]) != nullptr) << uuid;
        }
        EXPECT_EQ(uuid[14], '4') << uuid;
        EXPECT_THAT("89ab", HasSubstr(uuid.substr(19, 1))) << uuid;
    }
}

TEST(GenerateUUID, IsNewEachTime)
{
    std::set<std::string> uuids;
    for (int i = 0; i < 1000; ++i)
    {
        uuids.insert(generateUUID());
    }
    EXPECT_EQ(uuids.size(), 1000U);
}

TEST(TrimString, TakesWhiteSpaceOffBothEnds)
{
    EXPECT_EQ(trimString(" \t\r\n\v\fa b\tc \t\r\n\v\f"), "a b\tc");
    EXPECT_EQ(trimString("a"), "a");
    EXPECT_EQ(trimString(""), "");
    EXPECT_EQ(trimString(" \n\t "), "");
    EXPECT_EQ(trimString("\xc3\xa0 "), "\xc3\xa0"); // UTF-8 whose last byte is a space in some single-byte sets
}

TEST(GetFileExtension, IsWhatFollowsTheLastDotOfTheFileName)
{
    EXPECT_EQ(getFileExtension("/a/b.c/look.ctf"), "ctf");
    EXPECT_EQ(getFileExtension("look.v2.CTF"), "CTF");
    EXPECT_EQ(getFileExtension("look."), "");
    EXPECT_EQ(getFileExtension("look"), "");
    EXPECT_EQ(getFileExtension(""), "");
    EXPECT_EQ(getFileExtension("/a.b/look"), "");
    EXPECT_EQ(getFileExtension("/a.b/"), "");
}

TEST(ValueString, HasSixSignificantDigits)
{
    EXPECT_EQ(valueString(0.0), "0");
    EXPECT_EQ(valueString(-0.0), "-0");
    EXPECT_EQ(valueString(1.0), "1");
    EXPECT_EQ(valueString(0.18), "0.18");
    EXPECT_EQ(valueString(1.0 / 3.0), "0.333333");
    EXPECT_EQ(valueString(-1234567.0), "-1.23457e+06");
    EXPECT_EQ(valueString(123456.0), "123456");
    EXPECT_EQ(valueString(0.00001), "1e-05");
    EXPECT_EQ(valueString(1.7976931348623157e308), "1.79769e+308");
    EXPECT_EQ(valueString(std::numeric_limits<double>::infinity()), "inf");
    EXPECT_EQ(valueString(std::numeric_limits<double>::quiet_NaN()), "nan");
}

TEST(FormatFloat, FillsAFieldOf12WithFourDecimals)
{
    EXPECT_EQ(formatFloat(0.0F), "      0.0000");
    EXPECT_EQ(formatFloat(1.0F), "      1.0000");
    EXPECT_EQ(formatFloat(-2.71828F), "     -2.7183");
    EXPECT_EQ(formatFloat(65504.0F), "  65504.0000");
    EXPECT_EQ(formatFloat(1234567.0F), "1234567.0000");
    EXPECT_EQ(formatFloat(std::numeric_limits<float>::infinity()), "         inf");
}

TEST(FormatFloat, UsesScientificNotationBelowATenThousandth)
{
    EXPECT_EQ(formatFloat(0.0001F), "      0.0001");
    EXPECT_EQ(formatFloat(0.00009F), "  9.0000e-05");
    EXPECT_EQ(formatFloat(-0.00001F), " -1.0000e-05");
    EXPECT_EQ(formatFloat(-0.0F), "     -0.0000");
}

TEST(FormatFloat, LetsALongNumberOverflowTheField)
{
    EXPECT_EQ(formatFloat(-std::numeric_limits<float>::max()), "-340282346638528859811704183484516925440.0000");
}

// A caller's process may print its numbers with a comma; files and messages of the library never do.
TEST(NumberTexts, DoNotFollowTheLocaleOfTheProcess)
{
    struct Comma : std::numpunct<char>
    {
        char do_decimal_point() const override { return ','; }
    };
    std::locale const previous = std::locale::global(std::locale(std::locale::classic(), new Comma));
    std::string const value = valueString(0.5);
    std::string const padded = formatFloat(0.5F);
    std::locale::global(previous);
    EXPECT_EQ(value, "0.5");
    EXPECT_EQ(padded, "      0.5000");
}

TEST(ValidateROI, TakesARegionThatFitsTheImage)
{
    EXPECT_NO_THROW(validateROI(Tavrin::ROI(0, 0, 4, 2)));
    EXPECT_NO_THROW(validateROI(Tavrin::ROI(0, 0, 0, 0, 0, 0)));
    EXPECT_NO_THROW(validateROI(Tavrin::ROI(1, 1, 4, 2, 5, 3)));
}

TEST(ValidateROI, LeavesStartOffsetsToTheCaller)
{
    EXPECT_NO_THROW(validateROI(Tavrin::ROI(100, 100, 4, 2, 5, 3)));
}

TEST(ValidateROI, RefusesAnActiveSizeBeyondTheImage)
{
    auto const fails = [](char const* start) {
        return Throws<Exception>(
            AllOf(Property(&Exception::getId, 0x110001U), Property(&Exception::getMessage, StartsWith(start))));
    };
    EXPECT_THAT([] { validateROI(Tavrin::ROI(0, 0, 6, 2, 5, 3)); }, fails("Mismatch between 'active width' and '"));
    EXPECT_THAT([] { validateROI(Tavrin::ROI(0, 0, 5, 4, 5, 3)); }, fails("Mismatch between 'active height' and '"));
    EXPECT_THAT([] { validateROI(Tavrin::ROI(0, 0, 6, 4, 5, 3)); }, fails("Mismatch between 'active width' and '"));
}

// The source position is the name below the folder of sources, with its extension.
TEST(ValidateROI, TellsTheLogWhereItFailed)
{
    try
    {
        validateROI(Tavrin::ROI(0, 0, 6, 2, 5, 3));
        FAIL();
    }
    catch (Exception const& exception)
    {
        EXPECT_THAT(exception.getErrorMessage().getDetailedMessage(),
                    testing::MatchesRegex("utils/utils\\.cpp\\([0-9]+\\): COLOR:UTILS:ALL: Mismatch between .*"));
    }
}

TEST(Names, OfDepthsAndFormatsAreKnownAtCompileTime)
{
    static_assert(std::string_view(BitDepthInfo<Tavrin::BIT_DEPTH_10i>::kName) == "10i");
    static_assert(std::string_view(PixelFormatInfo<Tavrin::PF_RGBA_10iP>::kName) == "PF_RGBA_10iP");
    static_assert(depthOf(Tavrin::PF_RGBA_10iP) == Tavrin::BIT_DEPTH_10i);
    static_assert(depthOf(Tavrin::PF_ABGR_32f) == Tavrin::BIT_DEPTH_32f);
}

TEST(SystemLayer, ComparesTextsWithoutRegardToCase)
{
    EXPECT_EQ(System::strcasecmp("Shared", "sHARED"), 0);
    EXPECT_LT(System::strcasecmp("abc", "ABD"), 0);
    EXPECT_GT(System::strcasecmp("abcd", "ABC"), 0);
    EXPECT_EQ(System::strncasecmp("abcX", "ABCY", 3), 0);
    EXPECT_NE(System::strncasecmp("abcX", "ABCY", 4), 0);
}

TEST(SystemLayer, TakesLogarithmsToBase2)
{
    EXPECT_EQ(System::log2(8.0), 3.0);
    EXPECT_EQ(System::log2(0.25), -2.0);
}

TEST(SystemLayer, PrintsIntoABufferAndCutsTheText)
{
    char buffer[5];
    EXPECT_EQ(System::snprintf(buffer, sizeof(buffer), "%s%d", "ab", 12), 4);
    EXPECT_STREQ(buffer, "ab12");
    EXPECT_EQ(System::snprintf(buffer, sizeof(buffer), "%s", "abcdef"), 6);
    EXPECT_STREQ(buffer, "abcd");
    EXPECT_EQ(System::sprintf(buffer, sizeof(buffer), "%d", 123456), 6);
    EXPECT_STREQ(buffer, "1234");
}

TEST(SystemLayer, SetsAndReadsTheEnvironment)
{
    EXPECT_EQ(System::getEnv("TAVRIN_TEST_UNSET_VARIABLE"), nullptr);
    EXPECT_TRUE(System::setEnv("TAVRIN_TEST_VARIABLE", "one"));
    EXPECT_STREQ(System::getEnv("TAVRIN_TEST_VARIABLE"), "one");
    EXPECT_TRUE(System::setEnv("TAVRIN_TEST_VARIABLE", "two"));
    EXPECT_STREQ(System::getEnv("TAVRIN_TEST_VARIABLE"), "two");
    EXPECT_FALSE(System::setEnv("", "value"));
    ::unsetenv("TAVRIN_TEST_VARIABLE");
}

TEST(SystemLayer, GivesMemoryOfTheAskedAlignment)
{
    for (std::size_t const alignment : {1, 2, 8, 16, 32, 64, 128, 4096})
    {
        for (std::size_t const size : {0, 1, 15, 16, 17, 1000})
        {
            void* const memory = System::alignedMalloc(size, alignment);
            ASSERT_NE(memory, nullptr) << size << ", " << alignment;
            EXPECT_EQ(reinterpret_cast<std::uintptr_t>(memory) % alignment, 0U) << size << ", " << alignment;
            std::memset(memory, 0xab, size);
            System::alignedFree(memory);
        }
    }
}

TEST(SystemLayer, GivesNoMemoryForSizesAndAlignmentsBeyondReason)
{
    EXPECT_EQ(System::alignedMalloc(16, 48), nullptr);
    EXPECT_EQ(System::alignedMalloc(std::numeric_limits<std::size_t>::max(), 16), nullptr);
    EXPECT_EQ(System::alignedMalloc(std::numeric_limits<std::size_t>::max() - 63, 64), nullptr);
    EXPECT_NO_THROW(System::alignedFree(nullptr));
}

TEST(SystemLayer, SleepsForWholeSeconds)
{
    auto const start = std::chrono::steady_clock::now();
    System::sleep(1);
    EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::seconds(1));
}

TEST(SystemLayer, ChangesTheModeOfAFile)
{
    TemporaryFolder const folder;
    std::string const path = folder.file("file");
    std::ofstream(path) << "text";
    struct stat status = {};
    EXPECT_TRUE(System::chmod(path.c_str(), 0400));
    ASSERT_EQ(::stat(path.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777U, 0400U);
    EXPECT_FALSE(System::chmod(folder.file("missing").c_str(), 0400));
}

TEST(SystemLayer, ReopensAFileUnderAnotherName)
{
    TemporaryFolder const folder;
    std::FILE* const first = std::fopen(folder.file("first").c_str(), "w");
    std::fputs("one", first);
    std::FILE* const second = System::freopen(folder.file("second").c_str(), "w", first);
    ASSERT_NE(second, nullptr);
    std::fputs("two", second);
    std::fclose(second);
    EXPECT_EQ(textOf(folder.file("first")), "one");
    EXPECT_EQ(textOf(folder.file("second")), "two");
}

// In a process of its own, whose terminal is a pair of pseudo terminals.
TEST(SystemLayer, SendsStandardOutputToAFileAndBackToTheTerminal)
{
    TemporaryFolder const folder;
    std::string const path = folder.file("output");
    int terminal = -1;
    pid_t const child = ::forkpty(&terminal, nullptr, nullptr, nullptr);
    if (child < 0)
        GTEST_SKIP() << "this machine has no pseudo terminals";
    if (child == 0)
    {
        System::redirectStdoutToFile(path.c_str());
        std::puts("to the file");
        System::restoreStdout();
        std::puts("to the terminal");
        std::fflush(stdout);
        ::_exit(0);
    }

    std::string shown;
    char buffer[256];
    for (ssize_t count; (count = ::read(terminal, buffer, sizeof(buffer))) > 0;) // Fails once the child has ended.
    {
        shown.append(buffer, static_cast<std::size_t>(count));
    }
    ::close(terminal);
    int status = -1;
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    EXPECT_EQ(status, 0);
    EXPECT_EQ(textOf(path), "to the file\n");
    EXPECT_EQ(shown, "to the terminal\r\n");
}

} // namespace
