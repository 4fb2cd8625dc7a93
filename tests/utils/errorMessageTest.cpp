// Failures: the table of messages, the exception that carries one, and the status that it becomes.
#include "utils/errorMessage.h"

#include "support/logCapture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <regex>
#include <stdexcept>
#include <utility>
#include <vector>

namespace
{

using Color::ErrorId;
using Color::ErrorMessage;
using Color::Exception;
using testing::ElementsAre;
using testing::EndsWith;
using testing::MatchesRegex;
using testing::Pair;
using testing::StartsWith;

namespace ErrorIds = Color::ErrorIds;
namespace Module = Color::Module;

constexpr ErrorId kUnknownId = 0x7f0001;

std::vector<std::pair<ErrorId, std::string>> promisedFormats()
{
    std::vector<std::pair<ErrorId, std::string>> rows;
    std::regex const lineEnd("\\\\n");
    std::ifstream file(TAVRIN_TEST_DATA "/errorFormats.txt");
    for (std::string line; std::getline(file, line);)
    {
        std::size_t const tab = line.find('\t');
        rows.emplace_back(static_cast<ErrorId>(std::stoul(line.substr(0, tab), nullptr, 16)),
                          std::regex_replace(line.substr(tab + 1), lineEnd, "\n"));
    }
    return rows;
}

std::vector<std::pair<ErrorId, std::string>> tableOfMessages()
{
    std::vector<std::pair<ErrorId, std::string>> rows;
    for (Color::Utils::ErrorFormat const* row = Color::Utils::allMsgs; row->id != 0; ++row)
    {
        rows.emplace_back(row->id, row->format);
    }
    return rows;
}

ErrorMessage build(char const* format)
{
    return ErrorMessage::buildMessage("TAG", Color::Component::Utilities, 0x110000, 0x110002, format);
}

TEST(ErrorTable, HoldsThePromisedIdsAndFormatsInOrder)
{
    auto const promised = promisedFormats();
    ASSERT_EQ(promised.size(), 218U);
    EXPECT_EQ(tableOfMessages(), promised);
}

TEST(ErrorTable, EndsWithIdZeroAndAnEmptyFormat)
{
    Color::Utils::ErrorFormat const& last = Color::Utils::allMsgs[promisedFormats().size()];
    EXPECT_EQ(last.id, 0U);
    EXPECT_STREQ(last.format, "");
}

TEST(ErrorTable, FindsTheFormatOfEveryId)
{
    for (auto const& [id, format] : promisedFormats())
    {
        if (format != "GPU Adaptor error: %1$s") // Its id is an earlier row's too.
        {
            EXPECT_EQ(ErrorMessage::getFormatStr(id), format);
        }
    }
}

TEST(ErrorTable, AnswersWithTheFirstOfTwoRowsWithOneId)
{
    EXPECT_STREQ(ErrorMessage::getFormatStr(0x830001), "Failure on fragment shader program compilation: %1$s");
}

TEST(ErrorTable, NamesAFewIdsAsTheyAre)
{
    EXPECT_EQ(ErrorIds::kRoiMismatch, 0x110001U);
    EXPECT_EQ(ErrorIds::kInvalidProperty, 0x130002U);
    EXPECT_EQ(ErrorIds::kEmptyTransform, 0x210008U);
    EXPECT_EQ(ErrorIds::kConfigurationLoaded, 0x2030005U);
}

TEST(ErrorTable, ReportsAnUnknownIdOnStandardError)
{
    testing::internal::CaptureStderr();
    EXPECT_EQ(ErrorMessage::getFormatStr(kUnknownId), nullptr);
    EXPECT_THAT(testing::internal::GetCapturedStderr(),
                MatchesRegex("utils/errorMessage\\([0-9]+\\): COLOR:UTILS: The error id 0x7f0001 is illegal\n"));
}

TEST(ErrorTable, ReportsAnIdWithAnEmptyFormatOnStandardError)
{
    testing::internal::CaptureStderr();
    EXPECT_STREQ(ErrorMessage::getFormatStr(0), "");
    EXPECT_THAT(testing::internal::GetCapturedStderr(),
                MatchesRegex("utils/errorMessage\\([0-9]+\\): COLOR:UTILS: The error id 0x0 is illegal\n"));
}

// Whoever throws with too few arguments, or with others than the format asks for, still gets a message.
TEST(ErrorTable, MakesAMessageOfEveryFormatWhateverTheArguments)
{
    for (auto const& [id, unused] : promisedFormats())
    {
        std::string const format = ErrorMessage::getFormatStr(id);
        SCOPED_TRACE(format);
        for (ErrorMessage const& message :
             {Color::errorMessage(id, Module::kUtils), Color::errorMessage(id, Module::kUtils, 1, 2.5, 3, 4, 5),
              Color::errorMessage(id, Module::kUtils, "a", "b", "c", "d", "e")})
        {
            EXPECT_THAT(message.getMessage(), StartsWith(format.substr(0, format.find('%'))));
            bool const isBroken = id == 0x480002;
            EXPECT_EQ(message.getMessage().find('%') != std::string::npos, isBroken) << message.getMessage();
        }
    }
}

TEST(ErrorTable, KeepsABrokenConversionAndFillsInTheOthers)
{
    EXPECT_EQ(Color::errorMessage(0x480002, Module::kXml, "Lab", "a.icc").getMessage(),
              "Unsupported ICC profile connection space %1$: a.icc");
}

TEST(ErrorTable, LeavesAnArgumentOutThatNobodyGave)
{
    EXPECT_EQ(Color::errorMessage(0x240011, Module::kLut1D).getMessage(), "Unrecognized Lut1D inverse style: ");
}

TEST(ErrorMessage, IsNoErrorByDefault)
{
    ErrorMessage const message;
    EXPECT_EQ(message.getId(), 0U);
    EXPECT_EQ(message.getMessage(), "No Error");
    EXPECT_EQ(message.getDetailedMessage(), "No Error");
    EXPECT_EQ(ErrorMessage::noErrorMsg().getId(), 0U);
    EXPECT_EQ(ErrorMessage::noErrorMsg().getMessage(), "No Error");
    EXPECT_EQ(ErrorMessage::noErrorMsg().getDetailedMessage(), "No Error");
}

TEST(ErrorMessage, PutsTheModuleBeforeTheDetailedText)
{
    ErrorMessage const message("COLOR:XML:ALL", Color::Component::Files, 0x410000, 0x410001, "Transform invalid");
    EXPECT_EQ(message.getId(), 0x410001U);
    EXPECT_EQ(message.getMessage(), "Transform invalid");
    EXPECT_EQ(message.getDetailedMessage(), "COLOR:XML:ALL: Transform invalid");
}

TEST(ErrorMessage, FillsInTheFormatOfItsId)
{
    ErrorMessage const message = Color::errorMessage(ErrorIds::kOpDepthMismatch, Module::kOpList, std::string("first"), "second");
    EXPECT_EQ(message.getId(), 0x26000aU);
    EXPECT_EQ(message.getMessage(), "Bit depth mismatch between op 'first' and op 'second'");
    EXPECT_EQ(message.getDetailedMessage(), "COLOR:TRANSFORM:OPLIST: Bit depth mismatch between op 'first' and op 'second'");
}

TEST(ErrorMessage, CutsTheTextAt1023Characters)
{
    EXPECT_EQ(build(std::string(1023, 'x').c_str()).getMessage(), std::string(1023, 'x'));
    EXPECT_EQ(build(std::string(1024, 'x').c_str()).getMessage(), std::string(1023, 'x'));
    std::string const path(5000, 'p');
    EXPECT_EQ(Color::errorMessage(0x420018, Module::kXmlReader, path).getMessage(),
              "File open failed: " + std::string(1023 - 18, 'p'));
}

TEST(ErrorMessage, IsEmptyForAnEmptyFormat)
{
    EXPECT_EQ(build("").getMessage(), "");
    EXPECT_EQ(build(nullptr).getMessage(), "");
    EXPECT_EQ(build(nullptr).getDetailedMessage(), "TAG: ");
    EXPECT_EQ(ErrorMessage("TAG", Color::Component::Utilities, 0, 1, nullptr).getMessage(), "");
}

TEST(ErrorMessage, JoinsTextsAndKeepsItsId)
{
    ErrorMessage first("ONE", Color::Component::Transform, 0x210000, 0x210008, "Empty transform");
    first += ErrorMessage("TWO", Color::Component::Files, 0x410000, 0x410001, "Transform invalid");
    EXPECT_EQ(first.getId(), 0x210008U);
    EXPECT_EQ(first.getMessage(), "Empty transform: Transform invalid");
    EXPECT_EQ(first.getDetailedMessage(), "ONE: Empty transform: TWO: Transform invalid");
}

TEST(ErrorMessage, TakesAnotherDetailedText)
{
    ErrorMessage message("TAG", Color::Component::Utilities, 0x110000, 0x110002, "Out of memory");
    message.setDetailedMsg("elsewhere");
    EXPECT_EQ(message.getMessage(), "Out of memory");
    EXPECT_EQ(message.getDetailedMessage(), "elsewhere");
}

TEST(Exception, HoldsNoErrorByDefault)
{
    EXPECT_EQ(Exception().getId(), 0U);
    EXPECT_EQ(Exception().getMessage(), "No Error");
}

TEST(Exception, IsNoStandardException)
{
    EXPECT_FALSE((std::is_base_of_v<std::exception, Exception>));
}

TEST(Exception, PutsTheSourcePositionBeforeTheDetailedTextAndLogsIt)
{
    LogCapture const log;
    Exception const exception("/home/builder/src/tavrin/src/renderer/CPURenderer.cpp", 12,
                              Color::errorMessage(ErrorIds::kEmptyTransform, Module::kTransform));
    std::string const detailed = "renderer/CPURenderer.cpp(12): COLOR:TRANSFORM:ALL: Empty transform";
    EXPECT_EQ(exception.getErrorMessage().getDetailedMessage(), detailed);
    EXPECT_EQ(exception.getMessage(), "Empty transform");
    EXPECT_THAT(log.lines(), ElementsAre(Pair(Color::LOG_DEBUG, detailed)));
}

TEST(Exception, NamesASourceFileWhateverFolderTheCompilerRanIn)
{
    LogCapture const log;
    for (char const* const file : {"src/xml/a.cpp", "../../src/xml/a.cpp", "/src/xml/a.cpp"})
    {
        EXPECT_THAT(Exception(file, 7, ErrorMessage()).getErrorMessage().getDetailedMessage(), StartsWith("xml/a.cpp(7): "));
    }
}

TEST(Exception, NamesAFileOutsideTheSourceFolderInFull)
{
    LogCapture const log;
    Exception("CPURenderer.cpp", 3, Color::errorMessage(ErrorIds::kOpNull, Module::kOpList));
    EXPECT_THAT(log.lines(), ElementsAre(Pair(Color::LOG_DEBUG, "CPURenderer.cpp(3): COLOR:TRANSFORM:OPLIST: Entry null")));
}

TEST(Exception, LogsPercentSignsOfForeignTextsAsTheyAre)
{
    LogCapture const log;
    Exception("a.cpp", 1, Color::errorMessage(0x420018, Module::kXmlReader, "100%s%n%d.ctf"));
    EXPECT_THAT(log.lines(), ElementsAre(Pair(Color::LOG_DEBUG, EndsWith("File open failed: 100%s%n%d.ctf"))));
}

TEST(Exception, AddsTheContextOfALaterFailure)
{
    LogCapture const log;
    Exception const first("a.cpp", 1, Color::errorMessage(ErrorIds::kArrayEmpty, Module::kTransform));
    Exception const both(first, Color::errorMessage(ErrorIds::kOpArrayIllegal, Module::kMatrix, "matrix"));
    EXPECT_EQ(both.getId(), 0x210004U);
    EXPECT_EQ(both.getMessage(), "Array content empty: Array content for matrix illegal");
    EXPECT_EQ(both.getErrorMessage().getDetailedMessage(),
              "a.cpp(1): COLOR:TRANSFORM:ALL: Array content empty: COLOR:TRANSFORM:MATRIX: Array content for matrix illegal");
    EXPECT_EQ(log.lines().size(), 1U);
}

TEST(Failure, KnowsWhereItWasThrown)
{
    LogCapture const log;
    int const line = __LINE__ + 1;
    Exception const exception = Color::failure(ErrorIds::kEmptyTransform, Module::kTransform);
    EXPECT_THAT(exception.getErrorMessage().getDetailedMessage(),
                EndsWith("errorMessageTest.cpp(" + std::to_string(line) + "): COLOR:TRANSFORM:ALL: Empty transform"));
}

TEST(Failure, KeepsTheIdOfItsCause)
{
    LogCapture const log;
    Exception const cause = Color::failure(ErrorIds::kArrayEmpty, Module::kTransform);
    Exception const exception = Color::failure(cause, ErrorIds::kOpArrayIllegal, Module::kMatrix, "matrix");
    EXPECT_EQ(exception.getId(), 0x210004U);
    EXPECT_EQ(exception.getMessage(), "Array content empty: Array content for matrix illegal");
}

TEST(StatusOf, IsGoodWhenNothingIsThrown)
{
    bool ran = false;
    Tavrin::TavStatus const status = Color::statusOf([&ran] { ran = true; });
    EXPECT_TRUE(ran);
    EXPECT_TRUE(status);
    EXPECT_EQ(status.getErrorMessage(), nullptr);
}

TEST(StatusOf, TellsIdAndShortTextOfAFailure)
{
    LogCapture const log;
    Tavrin::TavStatus const status = Color::statusOf([] { throw Color::failure(0x420018U, Module::kXmlReader, "/tmp/a.ctf"); });
    EXPECT_FALSE(status);
    EXPECT_EQ(status.getErrorCode(), 0x420018U);
    EXPECT_STREQ(status.getErrorMessage(), "File open failed: /tmp/a.ctf");
}

TEST(StatusOf, HasAnIdWithoutAMessageForAnEmptyFormat)
{
    LogCapture const log;
    Tavrin::TavStatus const status = Color::statusOf([] { throw Exception("a.cpp", 1, build("")); });
    EXPECT_EQ(status.getErrorCode(), 0x110002U);
    EXPECT_EQ(status.getErrorMessage(), nullptr);
    EXPECT_FALSE(status);
}

TEST(StatusOf, LetsOtherExceptionsPass)
{
    EXPECT_THROW(Color::statusOf([] { throw std::runtime_error("other"); }), std::runtime_error);
}

TEST(StatusOf, PrintsNothingOfAFailureAtTheUserLevel)
{
    testing::internal::CaptureStdout();
    Tavrin::TavStatus const status = Color::statusOf([] { throw Color::failure(ErrorIds::kOpNull, Module::kOpList); });
    std::fflush(stdout);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
    EXPECT_EQ(status.getErrorCode(), 0x260007U);
    EXPECT_STREQ(status.getErrorMessage(), "Entry null");
}

} // namespace
