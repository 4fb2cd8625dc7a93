// Files that appear whole or not at all.
#include "xml/wholeFile.h"

#include "support/failure.h"
#include "support/scopedUser.h"
#include "support/temporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <iterator>
#include <ostream>
#include <stdexcept>
#include <string>

namespace fs = std::filesystem;
using Color::Xml::Writer::writeWholeFile;

namespace
{

void writeText(std::string const& path, std::string const& text)
{
    writeWholeFile(path, [&](std::ostream& stream) { stream << text; });
}

Failure failureOfWriting(std::string const& path)
{
    return failureOf([&] { writeText(path, "new"); });
}

std::size_t entriesOf(fs::path const& folder)
{
    return static_cast<std::size_t>(std::distance(fs::directory_iterator(folder), fs::directory_iterator()));
}

// The folder is open to everybody, since some tests are somebody else.
class WholeFile : public testing::Test
{
protected:
    void SetUp() override { fs::permissions(m_folder.path(), fs::perms::all); }
    void TearDown() override { fs::permissions(m_folder.path(), fs::perms::all); }

    TemporaryFolder const m_folder;
};

} // namespace

TEST_F(WholeFile, IsNewOrTakesThePlaceOfAnother)
{
    std::string const path = m_folder.file("a");
    writeText(path, "first");
    EXPECT_EQ(contentOfFile(path), "first");
    writeText(path, "2nd");
    EXPECT_EQ(contentOfFile(path), "2nd");
    EXPECT_EQ(entriesOf(m_folder.path()), 1U);
}

TEST_F(WholeFile, StaysAsItWasUntilTheNewOneIsComplete)
{
    std::string const path = m_folder.write("a", "old");
    writeWholeFile(path,
                   [&](std::ostream& stream)
                   {
                       stream << "new" << std::flush;
                       EXPECT_EQ(contentOfFile(path), "old");
                   });
    EXPECT_EQ(contentOfFile(path), "new");
}

TEST_F(WholeFile, StaysAsItWasWhenTheWriterFails)
{
    std::string const path = m_folder.write("a", "old");
    auto const fail = [](std::ostream& stream)
    {
        stream << "half";
        throw std::runtime_error("stop");
    };
    EXPECT_THROW(writeWholeFile(path, fail), std::runtime_error);
    EXPECT_EQ(contentOfFile(path), "old");
    EXPECT_THROW(writeWholeFile(m_folder.file("b"), fail), std::runtime_error);
    EXPECT_EQ(entriesOf(m_folder.path()), 1U);
}

TEST_F(WholeFile, KeepsPermissionsAndSymbolicLinks)
{
    std::string const path = m_folder.write("a", "old");
    fs::permissions(path, fs::perms::owner_read | fs::perms::owner_write | fs::perms::others_read);
    fs::create_symlink("a", m_folder.file("link"));
    writeText(m_folder.file("link"), "new");
    EXPECT_TRUE(fs::is_symlink(m_folder.file("link")));
    EXPECT_EQ(contentOfFile(path), "new");
    EXPECT_EQ(fs::status(path).permissions(), fs::perms::owner_read | fs::perms::owner_write | fs::perms::others_read);
}

TEST_F(WholeFile, IsWrittenInPlaceWhereTheFolderTakesNoNewOne)
{
    std::string const path = m_folder.write("a", "old");
    fs::permissions(path, fs::perms::all);
    fs::permissions(m_folder.path(), fs::perms(0555));
    {
        ScopedUser const somebody;
        writeText(path, "new");
    }
    EXPECT_EQ(contentOfFile(path), "new");
}

TEST_F(WholeFile, MayBeADevice)
{
    writeText("/dev/null", "gone");
    EXPECT_FALSE(fs::is_regular_file("/dev/null"));
}

TEST_F(WholeFile, TellsThatAFileCannotBeOverwritten)
{
    std::string const path = m_folder.write("a", "old");
    fs::permissions(path, fs::perms(0444));
    ScopedUser const somebody;
    EXPECT_EQ(failureOfWriting(path), (Failure{0x430003, "Unable to overwrite existing file: '" + path + "'"}));
    EXPECT_EQ(contentOfFile(path), "old");
    EXPECT_EQ(entriesOf(m_folder.path()), 1U);
}

TEST_F(WholeFile, TellsThatAFolderTakesNone)
{
    fs::permissions(m_folder.path(), fs::perms(0555));
    std::string const path = m_folder.file("a");
    ScopedUser const somebody;
    EXPECT_EQ(failureOfWriting(path), (Failure{0x430002, "Unable to write file: '" + path + "'"}));
}

TEST_F(WholeFile, CannotBeAFolder)
{
    std::string const path = m_folder.file("folder");
    fs::create_directory(path);
    EXPECT_EQ(failureOfWriting(path), (Failure{0x430002, "Unable to write file: '" + path + "'"}));
}

TEST_F(WholeFile, TellsThatThePathLeadsNowhere)
{
    for (std::string const& path : {m_folder.file("missing/a"), m_folder.write("file", "") + "/a"})
        EXPECT_EQ(failureOfWriting(path), (Failure{0x430004, "Invalid file path: '" + path + "'"}));
}

TEST_F(WholeFile, TellsThatTheFileSystemRefusesALook)
{
    fs::create_directory(m_folder.file("closed"));
    fs::permissions(m_folder.file("closed"), fs::perms::none);
    std::string const path = m_folder.file("closed/a");
    Failure failure;
    {
        ScopedUser const somebody;
        failure = failureOfWriting(path);
    }
    fs::permissions(m_folder.file("closed"), fs::perms::owner_all);
    EXPECT_EQ(failure.id, 0x460004U);
    EXPECT_THAT(failure.words, testing::StartsWith("Filesystem error for '" + path + "': '"));
}

TEST_F(WholeFile, TellsThatTheDiskIsFull)
{
    EXPECT_EQ(failureOfWriting("/dev/full"), (Failure{0x430002, "Unable to write file: '/dev/full'"}));
}
