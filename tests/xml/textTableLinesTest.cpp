// Lines of plain-text tables.
#include "xml/textTableLines.h"

#include "support/temporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <climits>
#include <string>
#include <vector>

using Color::scanInteger;
using Color::TextTableLines;
using Color::ToolsStripBlank;
using testing::ElementsAre;

namespace
{

std::vector<std::string> linesOf(std::string const& content, TextTableLines::LineEnd lineEnd = TextTableLines::LineEnd::LineFeed)
{
    TemporaryFolder const folder;
    TextTableLines lines(folder.write("a", content), lineEnd);
    std::vector<std::string> all;
    for (std::string line; lines.read(line);)
        all.push_back(line);
    EXPECT_EQ(lines.getLineNumber(), static_cast<int>(all.size()));
    return all;
}

} // namespace

TEST(StrippedBlanks, AreThoseAtTheEndsAndTabsAreBlanks)
{
    EXPECT_EQ(ToolsStripBlank(" \t a\tb  c \t"), "a b  c");
    EXPECT_EQ(ToolsStripBlank("\t \t"), "");
    EXPECT_EQ(ToolsStripBlank(""), "");
    EXPECT_EQ(ToolsStripBlank("\r a"), "\r a");
}

TEST(TableLines, EndAtLineFeeds)
{
    EXPECT_THAT(linesOf("a\n\n b \nc"), ElementsAre("a", "", "b", "c"));
    EXPECT_THAT(linesOf("a\r\nb\n"), ElementsAre("a\r", "b"));
    EXPECT_THAT(linesOf("a\r\nb \r\n\r\n", TextTableLines::LineEnd::CarriageReturnAndLineFeed), ElementsAre("a", "b", ""));
    EXPECT_THAT(linesOf(""), ElementsAre());
}

TEST(TableLines, ComeInPiecesWhenTheyAreLong)
{
    EXPECT_THAT(linesOf(std::string(450, 'x') + "\ny"),
                ElementsAre(std::string(199, 'x'), std::string(199, 'x'), std::string(52, 'x'), "y"));
}

TEST(TableLines, EndAtANul)
{
    EXPECT_THAT(linesOf(std::string("a\0b\nc", 5)), ElementsAre("a", "c"));
}

TEST(TableLines, OfAMissingFileAreNotOpen)
{
    EXPECT_FALSE(TextTableLines("/no/such/file", TextTableLines::LineEnd::LineFeed).isOpen());
}

TEST(TableLines, MayBeLookedForByTheirContent)
{
    TemporaryFolder const folder;
    TextTableLines lines(folder.write("a", "\n# one\n\n#two\nthree\n"), TextTableLines::LineEnd::LineFeed);
    std::string line;
    ASSERT_TRUE(lines.readFilled(line));
    EXPECT_EQ(line, "# one");
    ASSERT_TRUE(lines.readContent(line));
    EXPECT_EQ(line, "three");
    EXPECT_EQ(lines.getLineNumber(), 5);
    EXPECT_FALSE(lines.readContent(line));
}

TEST(TableIntegers, AreScannedOneAfterAnother)
{
    std::string_view text = " 12\t-3 +4x5";
    std::vector<int> numbers;
    for (int number = 0; scanInteger(text, number);)
        numbers.push_back(number);
    EXPECT_THAT(numbers, ElementsAre(12, -3, 4));
    EXPECT_EQ(text, "x5");
}

TEST(TableIntegers, NeedADigit)
{
    for (std::string_view text : {"", "  ", "-", "+-1", "- 1", "a1", ".5"})
    {
        int number = 7;
        EXPECT_FALSE(scanInteger(text, number)) << text;
        EXPECT_EQ(number, 7) << text;
    }
}

TEST(TableIntegers, StopAtTheEndsOfTheRange)
{
    auto const scanned = [](std::string_view text)
    {
        int number = 0;
        EXPECT_TRUE(scanInteger(text, number));
        EXPECT_EQ(text, "");
        return number;
    };
    EXPECT_EQ(scanned("2147483647"), INT_MAX);
    EXPECT_EQ(scanned("2147483648"), INT_MAX);
    EXPECT_EQ(scanned("-99999999999999999999999"), INT_MIN);
    EXPECT_EQ(scanned("0000000000000000000000012"), 12);
}
